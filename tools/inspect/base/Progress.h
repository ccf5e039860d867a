// How far a long reading is, on standard error.

#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace inspect {

// Says nothing unless standard error is a terminal and the reading takes a while; one line, which
// leaves no trace.
class Progress {
public:
    // In bytes; 0 = nobody knows how many there will be.
    Progress(const std::string& name, int64_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(int64_t done);

private:
    using Clock = std::chrono::steady_clock;

    std::string mName;
    int64_t mTotal;
    bool mIsTerminal;
    bool mIsShown = false;
    Clock::time_point mNext;
};

}  // namespace inspect
