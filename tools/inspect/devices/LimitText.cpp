#include "inspect/devices/LimitText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>

#include "inspect/devices/Source.h"

namespace inspect {
namespace {

constexpr int64_t kMaxNumber = 1'000'000'000'000;
constexpr int64_t kMaxSide = 1'000'000;
constexpr size_t kMaxItems = 64;  // of a list

std::optional<int64_t> readNumber(std::string_view text) {
    text = trimmed(text);
    int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end || number < 0 || number > kMaxNumber) return {};
    return number;
}

std::optional<Size> readSize(std::string_view text) {
    const size_t cross = text.find_first_of("x*");
    if (cross == text.npos) return {};
    const auto width = readNumber(text.substr(0, cross));
    const auto height = readNumber(text.substr(cross + 1));
    if (!width || !height || *width < 1 || *height < 1) return {};
    if (*width > kMaxSide || *height > kMaxSide) return {};
    return Size{*width, *height};
}

// "a-b", "a-", "-b", or "a" for "a-a".
std::optional<std::pair<std::string_view, std::string_view>> splitRange(std::string_view text) {
    const size_t dash = text.find('-');
    if (dash == text.npos) return std::pair(text, text);
    const auto ends = std::pair(trimmed(text.substr(0, dash)), trimmed(text.substr(dash + 1)));
    if (ends.first.empty() && ends.second.empty()) return {};
    return ends;
}

std::optional<Range> readRange(std::string_view text) {
    const auto ends = splitRange(text);
    if (!ends) return {};
    const auto from = ends->first.empty() ? Range().from : readNumber(ends->first);
    const auto to = ends->second.empty() ? Range().to : readNumber(ends->second);
    if (!from || !to || *from > *to) return {};
    return Range{*from, *to};
}

// Empty for a broken one.
std::vector<Range> readRanges(std::string_view text) {
    std::vector<Range> ranges;
    for (bool isLast = false; !isLast;) {
        const size_t comma = text.find(',');
        isLast = comma == text.npos;
        const auto range = readRange(text.substr(0, comma));
        if (!range || ranges.size() == kMaxItems) return {};
        ranges.push_back(*range);
        text.remove_prefix(isLast ? text.size() : comma + 1);
    }
    return ranges;
}

bool setSides(Limits& limits, std::string_view text) {
    const auto ends = splitRange(text);
    if (!ends) return false;
    const auto from = ends->first.empty() ? Size{0, 0} : readSize(ends->first);
    const auto to = ends->second.empty() ? Size{Range().to, Range().to} : readSize(ends->second);
    if (!from || !to || from->width > to->width || from->height > to->height) return false;
    limits.width = {from->width, to->width};
    limits.height = {from->height, to->height};
    return true;
}

constexpr auto kRangeLimits =
        std::to_array<std::pair<std::string_view, std::optional<Range> Limits::*>>({
                {"block-count", &Limits::blockCount},
                {"blocks-per-second", &Limits::blocksPerSecond},
                {"frame-rate", &Limits::frameRate},
                {"bitrate", &Limits::bitRate},
                {"channel-count", &Limits::channelCount},
        });

// False for what is no such limit; the outcome is in isSet.
bool isRangeLimit(Limits& limits, std::string_view name, std::string_view value, bool& isSet) {
    for (const auto& [known, member] : kRangeLimits) {
        if (name != known) continue;
        const std::vector<Range> ranges = readRanges(value);
        isSet = !ranges.empty();
        if (!isSet) return true;
        Range all = ranges[0];
        for (const Range& each : ranges) {
            all = {std::min(all.from, each.from), std::max(all.to, each.to)};
        }
        limits.*member = all;
        return true;
    }
    return false;
}

bool isHint(std::string_view name) {
    return name == "concurrent-instances" || name == "quality" || name == "complexity" ||
           name.ends_with("-aspect-ratio") || name.starts_with("performance-point-") ||
           name.starts_with("measured-frame-rate-");
}

LimitResult resultOf(bool isSet) {
    return isSet ? LimitResult::kSet : LimitResult::kBroken;
}

// Takes a number off the front, decimal or with 0x.
std::optional<int64_t> takeNumber(std::string_view& text) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const char* const first = text.data() + (isHex ? 2 : 0);
    uint32_t number = 0;
    const auto [rest, error] =
            std::from_chars(first, text.data() + text.size(), number, isHex ? 16 : 10);
    if (rest == first) return {};
    text.remove_prefix(static_cast<size_t>(rest - text.data()));
    if (error != std::errc()) return {};
    return number;
}

}  // namespace

LimitResult setLimit(Limits& limits, std::string_view name, std::string_view value) {
    bool isSet = false;
    if (isRangeLimit(limits, name, value, isSet)) return resultOf(isSet);
    if (name == "size") return resultOf(setSides(limits, value));
    if (name == "alignment" || name == "block-size") {
        const auto size = readSize(value);
        if (!size) return LimitResult::kBroken;
        if (name == "alignment") {
            limits.alignment = *size;
        } else {
            limits.blockSize = *size;
        }
        return LimitResult::kSet;
    }
    if (name == "sample-rate") {
        std::vector<Range> rates = readRanges(value);
        if (rates.empty()) return LimitResult::kBroken;
        limits.sampleRates = std::move(rates);
        return LimitResult::kSet;
    }
    return isHint(name) ? LimitResult::kIgnored : LimitResult::kUnknown;
}

std::vector<ProfileLevel> readProfileLevels(std::string_view text) {
    std::vector<ProfileLevel> pairs;
    while (!text.empty() && pairs.size() < kMaxItems) {
        if (text[0] == '(') text.remove_prefix(std::min(text.find(')'), text.size()));
        const auto profile = takeNumber(text);
        if (profile && text.starts_with('/')) {
            text.remove_prefix(1);
            if (const auto level = takeNumber(text)) pairs.push_back({*profile, *level});
        } else if (!profile && !text.empty()) {
            text.remove_prefix(1);
        }
    }
    return pairs;
}

void requireFeature(Decoder& decoder, std::string_view feature) {
    if (feature == "secure-playback" || feature == "tunneled-playback") {
        decoder.whyIgnored = "serves only what asks for " + std::string(feature);
    }
}

}  // namespace inspect
