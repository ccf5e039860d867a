#include "inspect/collection/RunProgress.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>

namespace inspect {
namespace {

namespace fs = std::filesystem;

std::string inTime(double seconds) {
    const auto whole = static_cast<int64_t>(std::ceil(seconds));
    if (whole < 60) return std::to_string(whole) + " s";
    if (whole < 3600) return std::to_string(whole / 60) + " min";
    return std::to_string(whole / 3600) + " h " + std::to_string(whole / 60 % 60) + " min";
}

}  // namespace

// What comes through a pipe can be read once only.
RunProgress::RunProgress(const FileSources& sources) {
    std::error_code ignored;
    const bool isReadAgain = sources.list.empty() ||
                             (sources.list != "-" && fs::is_regular_file(sources.list, ignored));
    if (mLine.isTerminal() && isReadAgain) mCounter.emplace(sources);
}

void RunProgress::show(uint64_t done, uint64_t skipped, uint64_t notPlaying) {
    if (!mLine.isDue()) return;
    constexpr int kCountedAtATime = 5000;
    for (int i = 0; i < kCountedAtATime && mCounter && !mIsCounted; i++) {
        mIsCounted = !mCounter->next();
        if (!mIsCounted) mTotal++;
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - mBegin).count();
    const double rate = static_cast<double>(done - std::min(done, skipped)) / seconds;
    std::string text = std::to_string(done);
    if (mIsCounted) text += " of " + std::to_string(mTotal);
    text += "  " + std::to_string(std::lround(rate)) + "/s";
    if (mIsCounted && rate > 0) {
        text += "  " + inTime(static_cast<double>(mTotal - std::min(done, mTotal)) / rate) +
                " left";
    }
    text += "  " + std::to_string(notPlaying) + " do not play";
    const auto share = static_cast<double>(done) / static_cast<double>(mTotal);
    mLine.show(mIsCounted ? std::optional(share) : std::nullopt, text);
}

}  // namespace inspect
