// The terminal, and on it how far a long reading is.

#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace inspect {

// How wide the terminal behind a descriptor is: as COLUMNS says, or as it says itself. 0 = there is
// none, or it does not say.
size_t terminalColumns(int descriptor);

// One line of standard error that is written again and again and leaves no trace; for what takes a
// while, and only on a terminal.
class StatusLine {
public:
    StatusLine();
    ~StatusLine() { hide(); }
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;

    bool isTerminal() const { return mIsTerminal; }
    bool isDue() const;  // a new text is
    // share: of all that is to be done, 0 to 1, as a bar before the text; none = nobody knows.
    void show(std::optional<double> share, const std::string& text);
    void hide();

private:
    using Clock = std::chrono::steady_clock;

    bool mIsTerminal;
    bool mIsShown = false;
    Clock::time_point mNext;
};

// How far a long reading is.
class Progress {
public:
    // In bytes; 0 = nobody knows how many there will be.
    Progress(const std::string& name, int64_t total);

    void show(int64_t done);

private:
    std::string mName;
    int64_t mTotal;
    StatusLine mLine;
};

}  // namespace inspect
