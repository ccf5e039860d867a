#include "inspect/base/Progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "inspect/base/Utf8.h"

namespace inspect {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 500ms;
constexpr auto kInterval = 100ms;
constexpr const char* kEraseLine = "\r\x1b[K";

std::string bar(double share, size_t columns) {
    const size_t width = std::min<size_t>(columns / 4, 30);
    const auto filled = static_cast<size_t>(share * static_cast<double>(width));
    return '[' + std::string(filled, '#') + std::string(width - filled, '.') + "] " +
           std::to_string(static_cast<int>(share * 100)) + " %  ";
}

}  // namespace

size_t terminalColumns(int descriptor) {
    if (isatty(descriptor) == 0) return 0;
    const char* columns = std::getenv("COLUMNS");
    const long asked = columns != nullptr ? std::strtol(columns, nullptr, 10) : 0;
    if (asked > 0) return static_cast<size_t>(asked);
    winsize size{};
    return ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

StatusLine::StatusLine()
    : mIsTerminal(isatty(STDERR_FILENO) != 0), mNext(Clock::now() + kPatience) {}

bool StatusLine::isDue() const {
    return mIsTerminal && Clock::now() >= mNext;
}

// The last column stays free: some terminals go to the next line behind it.
void StatusLine::show(std::optional<double> share, const std::string& text) {
    constexpr size_t kUsualColumns = 80;
    size_t columns = terminalColumns(STDERR_FILENO);
    if (columns == 0) columns = kUsualColumns;
    const std::string line = share ? bar(std::clamp(*share, 0., 1.), columns) + text : text;
    std::cerr << kEraseLine << firstColumns(line, columns - 1) << std::flush;
    mIsShown = true;
    mNext = Clock::now() + kInterval;
}

void StatusLine::hide() {
    if (mIsShown) std::cerr << kEraseLine << std::flush;
    mIsShown = false;
}

Progress::Progress(const std::string& name, int64_t total) : mName(escaped(name)), mTotal(total) {}

void Progress::show(int64_t done) {
    if (!mLine.isDue()) return;
    if (mTotal == 0) {
        mLine.show({}, std::to_string(done >> 20) + " MiB  " + mName);
    } else {
        mLine.show(static_cast<double>(done) / static_cast<double>(mTotal), mName);
    }
}

}  // namespace inspect
