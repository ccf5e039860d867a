#include "inspect/base/Progress.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>

#include "inspect/base/Utf8.h"

namespace inspect {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 500ms;
constexpr auto kInterval = 100ms;
constexpr const char* kEraseLine = "\r\x1b[K";

}  // namespace

Progress::Progress(const std::string& name, int64_t total)
    : mName(escaped(name)),
      mTotal(std::max<int64_t>(total, 1)),
      mIsTerminal(isatty(STDERR_FILENO) != 0),
      mNext(Clock::now() + kPatience) {}

Progress::~Progress() {
    if (mIsShown) std::cerr << kEraseLine << std::flush;
}

void Progress::show(int64_t done) {
    if (!mIsTerminal) return;
    const auto now = Clock::now();
    if (now < mNext) return;
    constexpr size_t kWidth = 30;
    const double share =
            std::clamp(static_cast<double>(done) / static_cast<double>(mTotal), 0., 1.);
    const auto filled = static_cast<size_t>(share * kWidth);
    std::cerr << kEraseLine << '[' << std::string(filled, '#') << std::string(kWidth - filled, '.')
              << "] " << static_cast<int>(share * 100) << " %  " << mName << std::flush;
    mIsShown = true;
    mNext = now + kInterval;
}

}  // namespace inspect
