// Whether a decoder takes a track by what it says of itself, and if not, what is beyond it.

#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/devices/Decoder.h"
#include "inspect/devices/TrackFacts.h"

namespace inspect {

struct Shortfall {
    std::string what;   // "size", "frame rate", "level" ...
    std::string asked;  // by the track: "2700x2400", "AVC High 10, level 4.0"
    std::string taken;  // by the decoder: "up to 1920x1088", "High up to 5.1"
    double excess = 0;  // how far beyond, as a number of doublings
};

struct Judgement {
    std::vector<Shortfall> beyond;
    std::vector<std::string> unknown;  // "the frame rate of the file is not known"

    bool isTaken() const { return beyond.empty(); }
    void lack(const std::string& what);  // adds to what is unknown, once
};

// The excess of a profile that the decoder does not have; a level counts half a doubling.
inline constexpr double kOtherTools = 100;

// Adds what the decoder's list of profiles and levels says. Codecs without profiles pass.
void judgeProfile(const TrackFacts& facts, const Decoder& decoder, Judgement& judgement);

// Limits of which the file or the decoder does not tell enough are never exceeded. A frame rate is
// beyond only when the average and, where known, the base frame rate are.
Judgement judge(const TrackFacts& facts, const Decoder& decoder);

struct Refusal {
    const Decoder* decoder = nullptr;
    Judgement judgement;  // nothing is beyond a decoder that does not count
};

struct Choice {
    const Decoder* taken = nullptr;  // null: none takes the track
    Judgement judgement;             // of the one taken
    // Of those before it in the order, the nearest miss first; behind them those that do not count,
    // wherever they stand.
    std::vector<Refusal> refused;
};

// Among a device's decoders those of one MIME type have a say. Points into them.
Choice chooseDecoder(const TrackFacts& facts, std::string_view mime,
                     std::span<const Decoder> decoders);

// "2700x2400; c2.example.hevc takes up to 1920x1088", or why the decoder does not count
std::string sentence(const Refusal& refusal);

std::string listed(const std::vector<std::string>& words);  // "a, b and c"

}  // namespace inspect
