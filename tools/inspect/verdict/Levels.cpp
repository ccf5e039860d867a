#include "inspect/verdict/Levels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace inspect {
namespace {

// ITU-T H.264 table A-1, in macroblocks.
constexpr auto kAvcRows = std::to_array<Level>({
        {10, "1.0", 99, 1485},
        {11, "1.1", 396, 3000},
        {12, "1.2", 396, 6000},
        {13, "1.3", 396, 11880},
        {21, "2.1", 792, 19800},
        {22, "2.2", 1620, 20250},
        {30, "3.0", 1620, 40500},
        {31, "3.1", 3600, 108000},
        {32, "3.2", 5120, 216000},
        {40, "4.0", 8192, 245760},
        {42, "4.2", 8704, 522240},
        {50, "5.0", 22080, 589824},
        {51, "5.1", 36864, 983040},
        {52, "5.2", 36864, 2073600},
        {60, "6.0", 139264, 4177920},
        {61, "6.1", 139264, 8355840},
        {62, "6.2", 139264, 16711680},
});

// ITU-T H.265 tables A.8 and A.9, in luma samples. The encoder finds the level itself, and takes
// the High tier where it is allowed more bits.
constexpr auto kHevcRows = std::to_array<Level>({
        {30, nullptr, 36864, 552960, 128'000},
        {60, nullptr, 122880, 3686400, 1500'000},
        {63, nullptr, 245760, 7372800, 3000'000},
        {90, nullptr, 552960, 16588800, 6000'000},
        {93, nullptr, 983040, 33177600, 10000'000},
        {120, nullptr, 2228224, 66846720, 12000'000},
        {123, nullptr, 2228224, 133693440, 20000'000},
        {150, nullptr, 8912896, 267386880, 25000'000},
        {153, nullptr, 8912896, 534773760, 40000'000},
        {156, nullptr, 8912896, 1069547520, 60000'000},
});

// VP9 Annex A, in luma samples; the encoder finds the level itself.
constexpr auto kVp9Rows = std::to_array<Level>({
        {10, nullptr, 36864, 829440},
        {11, nullptr, 73728, 2764800},
        {20, nullptr, 122880, 4608000},
        {21, nullptr, 245760, 9216000},
        {30, nullptr, 552960, 20736000},
        {31, nullptr, 983040, 36864000},
        {40, nullptr, 2228224, 83558400},
        {41, nullptr, 2228224, 160432128},
        {50, nullptr, 8912896, 311951360},
        {51, nullptr, 8912896, 588251136},
        {52, nullptr, 8912896, 1176502272},
});

// ISO/IEC 14496-2 table N.1, in macroblocks.
constexpr auto kSimpleRows = std::to_array<Level>({
        {1, "1", 99, 1485},
        {3, "3", 396, 11880},
        {5, "5", 1620, 40500},
});

}  // namespace

const LevelTable kAvcBounds = {kAvcRows, 16};
const LevelTable kHevcBounds = {kHevcRows, 1};
const LevelTable kVp9Bounds = {kVp9Rows, 1};
const LevelTable kSimpleBounds = {kSimpleRows, 16};

const Level* levelFor(const LevelTable& table, const Stream::Video& video) {
    const auto across = [&](int64_t length) { return (length + table.unit - 1) / table.unit; };
    const int64_t picture = across(video.width) * across(video.height);
    const double rate = video.averageFrameRate > 0 ? video.averageFrameRate : video.frameRate;
    const double second = std::ceil(static_cast<double>(picture) * std::max(rate, 1.0));
    const auto found = std::ranges::find_if(table.levels, [&](const Level& level) {
        return picture <= level.picture && second <= static_cast<double>(level.second);
    });
    return found != table.levels.end() ? &*found : nullptr;
}

}  // namespace inspect
