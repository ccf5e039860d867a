// The terminal, and on it how far a long reading is.

#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace inspect {

// How wide the terminal behind a descriptor is: as COLUMNS says, or as it says itself. 0 = there is
// none, or it does not say.
size_t terminalColumns(int descriptor);

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
