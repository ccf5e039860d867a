#include "inspect/devices/Judge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <optional>
#include <utility>

#include "inspect/devices/Profiles.h"

namespace inspect {
namespace {

std::string numberText(double value) {
    std::array<char, 350> text{};
    std::snprintf(text.data(), text.size(), "%.3f", value);
    std::string number(text.data());
    number.erase(number.find_last_not_of('0') + 1);
    if (number.ends_with('.')) number.pop_back();
    return number;
}

std::string numberText(int64_t value) {
    return std::to_string(value);
}

std::string sizeText(int64_t width, int64_t height) {
    const auto text = [](int64_t side) { return side == Range{}.to ? "any" : numberText(side); };
    return text(width) + "x" + text(height);
}

// Doublings from the value to the range; zero inside.
double excessOf(double value, const Range& range) {
    const auto doublings = [](double more, double less) {
        return std::log2((more + 1) / (std::max(less, 0.0) + 1));
    };
    const auto from = static_cast<double>(range.from);
    const auto to = static_cast<double>(range.to);
    if (value < from) return doublings(from, value);
    return value > to ? doublings(value, to) : 0;
}

// What a track asks where a decoder has a limit to one number.
struct Asked {
    std::vector<double> values;     // beyond when each is
    const char* lacking = nullptr;  // why there are none
};

constexpr const char* kNoSize = "the picture size of the file is not known";

Asked one(const std::optional<int64_t>& value, const char* lacking) {
    if (!value) return {{}, lacking};
    return {{static_cast<double>(*value)}};
}

Asked frameRates(const TrackFacts& facts, const Limits&) {
    if (!facts.frameRate) return {{}, "the frame rate of the file is not known"};
    Asked asked = {{*facts.frameRate}};
    const bool isOther = facts.baseFrameRate && facts.baseFrameRate != facts.frameRate;
    if (isOther) asked.values.push_back(*facts.baseFrameRate);
    return asked;
}

int64_t unitsIn(int64_t length, int64_t unit) {
    return length / unit + (length % unit > 0 ? 1 : 0);
}

Asked blocks(const TrackFacts& facts, const Limits& limits) {
    const auto& block = limits.blockSize;
    if (!block || block->width <= 0 || block->height <= 0) {
        return {{}, "the block size of this decoder is not known"};
    }
    if (!facts.width || !facts.height) return {{}, kNoSize};
    return {{static_cast<double>(unitsIn(*facts.width, block->width)) *
             static_cast<double>(unitsIn(*facts.height, block->height))}};
}

Asked blockRates(const TrackFacts& facts, const Limits& limits) {
    Asked asked = blocks(facts, limits);
    if (asked.lacking != nullptr) return asked;
    Asked rates = frameRates(facts, limits);
    for (double& each : rates.values) each *= asked.values.front();
    return rates;
}

Asked bitRate(const TrackFacts& facts, const Limits&) {
    return one(facts.bitRate, "the bit rate of the file is not known");
}

Asked channels(const TrackFacts& facts, const Limits&) {
    return one(facts.channelCount, "the channels of the file are not known");
}

struct JudgedLimit {
    const char* what;
    const char* unit;  // of several: with the s at the front of the rest
    const char* unitRest;
    std::optional<Range> Limits::*range;
    Asked (*asked)(const TrackFacts& facts, const Limits& limits);
};

constexpr auto kLimits = std::to_array<JudgedLimit>({
        {"blocks", "block", "s a picture", &Limits::blockCount, blocks},
        {"blocks a second", "block", "s a second", &Limits::blocksPerSecond, blockRates},
        {"frame rate", "frame", "s a second", &Limits::frameRate, frameRates},
        {"bit rate", "bit", "s a second", &Limits::bitRate, bitRate},
        {"channels", "channel", "s", &Limits::channelCount, channels},
});

bool isAnyKnown(const Limits& limits) {
    return limits.width || limits.height || !limits.sampleRates.empty() ||
           !limits.profileLevels.empty() ||
           std::ranges::any_of(kLimits,
                               [&](const JudgedLimit& row) { return bool(limits.*row.range); });
}

void judgeSize(const TrackFacts& facts, const Limits& limits, Judgement& judgement) {
    if (!limits.width && !limits.height) return;
    if (!facts.width || !facts.height) return judgement.lack(kNoSize);
    const auto aligned = [](int64_t length, int64_t unit) {
        return unit > 1 ? unitsIn(length, unit) * unit : length;
    };
    const int64_t width = aligned(*facts.width, limits.alignment.width);
    const int64_t height = aligned(*facts.height, limits.alignment.height);
    const Range wide = limits.width.value_or(Range{});
    const Range high = limits.height.value_or(Range{});
    const auto excessAs = [&](int64_t across, int64_t up) {
        return std::max(excessOf(static_cast<double>(across), wide),
                        excessOf(static_cast<double>(up), high));
    };
    double excess = excessAs(width, height);
    if (limits.canSwapSides) excess = std::min(excess, excessAs(height, width));
    if (excess <= 0) return;
    std::string asked = sizeText(*facts.width, *facts.height);
    const std::string rounded = sizeText(width, height);
    if (rounded != asked) asked += ", rounded up to " + rounded;
    std::vector<std::string> taken;
    if (width < wide.from || height < high.from) {
        taken.push_back("no less than " + sizeText(wide.from, high.from));
    }
    if (width > wide.to || height > high.to) {
        taken.push_back("up to " + sizeText(wide.to, high.to));
    }
    judgement.beyond.push_back(
            {"size", asked, listed(taken) + (limits.canSwapSides ? " or turned" : ""), excess});
}

void judgeNumber(const JudgedLimit& row, const TrackFacts& facts, const Limits& limits,
                 Judgement& judgement) {
    const std::optional<Range>& range = limits.*row.range;
    if (!range) return;
    const auto [values, lacking] = row.asked(facts, limits);
    if (lacking != nullptr) return judgement.lack(lacking);
    std::vector<std::string> texts;
    double excess = kOtherTools;
    for (const double value : values) {
        excess = std::min(excess, excessOf(value, *range));
        texts.push_back(numberText(value));
    }
    if (excess <= 0) return;
    const auto counted = [&](const std::string& number) {
        return number + " " + row.unit + (row.unitRest + (number == "1" ? 1 : 0));
    };
    const bool isAbove = values.front() > static_cast<double>(range->to);
    judgement.beyond.push_back({row.what, counted(listed(texts)),
                                isAbove ? "up to " + counted(numberText(range->to))
                                        : "no less than " + counted(numberText(range->from)),
                                excess});
}

void judgeSampleRate(const TrackFacts& facts, const Limits& limits, Judgement& judgement) {
    if (limits.sampleRates.empty()) return;
    if (!facts.sampleRate) return judgement.lack("the sample rate of the file is not known");
    std::vector<std::string> texts;
    double excess = kOtherTools;
    for (const Range& each : limits.sampleRates) {
        excess = std::min(excess, excessOf(static_cast<double>(*facts.sampleRate), each));
        texts.push_back(numberText(each.from));
        if (each.to != each.from) texts.back().append("-").append(numberText(each.to));
    }
    if (excess <= 0) return;
    judgement.beyond.push_back(
            {"sample rate", numberText(*facts.sampleRate) + " Hz", listed(texts) + " Hz", excess});
}

// The farthest of a decoder's misses counts, then their number.
std::pair<double, size_t> missOf(const Refusal& refusal) {
    double most = 0;
    for (const Shortfall& each : refusal.judgement.beyond) most = std::max(most, each.excess);
    return {most, refusal.judgement.beyond.size()};
}

}  // namespace

void Judgement::lack(const std::string& what) {
    if (std::ranges::count(unknown, what) == 0) unknown.push_back(what);
}

Judgement judge(const TrackFacts& facts, const Decoder& decoder) {
    const Limits& limits = decoder.limits;
    Judgement judgement;
    if (!isAnyKnown(limits)) {
        judgement.lack("nothing is known of this decoder but its type");
        return judgement;
    }
    judgeProfile(facts, decoder, judgement);
    judgeSize(facts, limits, judgement);
    for (const JudgedLimit& each : kLimits) judgeNumber(each, facts, limits, judgement);
    judgeSampleRate(facts, limits, judgement);
    return judgement;
}

Choice chooseDecoder(const TrackFacts& facts, std::string_view mime,
                     std::span<const Decoder> decoders) {
    Choice choice;
    std::vector<Refusal> ignored;
    for (const Decoder& each : decoders) {
        if (!isSameMime(each.type, mime)) continue;
        if (!each.whyIgnored.empty()) {
            ignored.push_back({&each, {}});
        } else if (choice.taken == nullptr) {
            Judgement judgement = judge(facts, each);
            if (judgement.isTaken()) {
                choice.taken = &each;
                choice.judgement = std::move(judgement);
            } else {
                choice.refused.push_back({&each, std::move(judgement)});
            }
        }
    }
    std::ranges::stable_sort(choice.refused, {}, missOf);
    std::ranges::move(ignored, std::back_inserter(choice.refused));
    return choice;
}

std::string sentence(const Refusal& refusal) {
    const Decoder& decoder = *refusal.decoder;
    if (!decoder.whyIgnored.empty()) return decoder.name + " does not count: " + decoder.whyIgnored;
    std::vector<std::string> asked;
    std::vector<std::string> taken;
    for (const Shortfall& each : refusal.judgement.beyond) {
        asked.push_back(each.asked);
        taken.push_back(each.taken);
    }
    return listed(asked) + "; " + decoder.name + " takes " + listed(taken);
}

std::string listed(const std::vector<std::string>& words) {
    std::string text;
    for (size_t i = 0; i < words.size(); i++) {
        if (i > 0) text += i + 1 == words.size() ? " and " : ", ";
        text += words[i];
    }
    return text;
}

}  // namespace inspect
