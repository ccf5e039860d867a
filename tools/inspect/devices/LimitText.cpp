#include "inspect/devices/LimitText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>

#include "inspect/devices/Draft.h"

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
template <typename Value>
std::optional<std::pair<Value, Value>> readEnds(std::string_view text, Value least, Value most,
                                                std::optional<Value> (*read)(std::string_view)) {
    const size_t dash = text.find('-');
    const std::string_view first = trimmed(text.substr(0, dash));
    const std::string_view last = dash == text.npos ? first : trimmed(text.substr(dash + 1));
    if (first.empty() && last.empty()) return {};
    const auto from = first.empty() ? least : read(first);
    const auto to = last.empty() ? most : read(last);
    if (!from || !to) return {};
    return std::pair(*from, *to);
}

std::optional<std::vector<Range>> readRanges(std::string_view text) {
    std::vector<Range> ranges;
    for (bool isLast = false; !isLast;) {
        const size_t comma = text.find(',');
        isLast = comma == text.npos;
        const auto ends = readEnds(text.substr(0, comma), Range().from, Range().to, readNumber);
        if (!ends || ends->first > ends->second || ranges.size() == kMaxItems) return {};
        ranges.push_back({ends->first, ends->second});
        text.remove_prefix(isLast ? text.size() : comma + 1);
    }
    return ranges;
}

// All return whether the text is right; they set nothing where it is not.

template <auto kMember, auto kRead>
bool set(Limits& limits, std::string_view text) {
    auto value = kRead(text);
    if (value) limits.*kMember = std::move(*value);
    return value.has_value();
}

template <auto kMember>
bool setRange(Limits& limits, std::string_view text) {
    const auto ranges = readRanges(text);
    if (!ranges) return false;
    limits.*kMember = {std::ranges::min(*ranges, {}, &Range::from).from,
                       std::ranges::max(*ranges, {}, &Range::to).to};
    return true;
}

bool setSides(Limits& limits, std::string_view text) {
    const auto ends = readEnds(text, Size{0, 0}, Size{Range().to, Range().to}, readSize);
    if (!ends) return false;
    const auto& [from, to] = *ends;
    if (from.width > to.width || from.height > to.height) return false;
    limits.width = {from.width, to.width};
    limits.height = {from.height, to.height};
    return true;
}

struct LimitRow {
    std::string_view name;
    bool (*set)(Limits& limits, std::string_view text);
};

constexpr auto kRows = std::to_array<LimitRow>({
        {"size", setSides},
        {"alignment", set<&Limits::alignment, readSize>},
        {"block-size", set<&Limits::blockSize, readSize>},
        {"block-count", setRange<&Limits::blockCount>},
        {"blocks-per-second", setRange<&Limits::blocksPerSecond>},
        {"frame-rate", setRange<&Limits::frameRate>},
        {"bitrate", setRange<&Limits::bitRate>},
        {"channel-count", setRange<&Limits::channelCount>},
        {"sample-rate", set<&Limits::sampleRates, readRanges>},
});

bool isHint(std::string_view name) {
    return name == "concurrent-instances" || name == "quality" || name == "complexity" ||
           name.ends_with("-aspect-ratio") || name.starts_with("performance-point-") ||
           name.starts_with("measured-frame-rate-");
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
    const auto row = std::ranges::find(kRows, name, &LimitRow::name);
    if (row == kRows.end()) return isHint(name) ? LimitResult::kTaken : LimitResult::kUnknown;
    return row->set(limits, value) ? LimitResult::kTaken : LimitResult::kBroken;
}

bool setProfileLevels(Limits& limits, std::string_view text) {
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
    if (pairs.empty()) return false;
    limits.profileLevels = std::move(pairs);
    return true;
}

void setFeature(Decoder& decoder, std::string_view name, bool isRequired, bool isOn) {
    if (name == "can-swap-width-height") decoder.limits.canSwapSides = isOn;
    const bool isSpecial = name == "secure-playback" || name == "tunneled-playback";
    if (isSpecial && isRequired) {
        decoder.whyIgnored = "serves only what asks for " + std::string(name);
    }
}

}  // namespace inspect
