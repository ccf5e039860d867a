// The profiles and levels of codecs, in their standards' numbers and in the platform's.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "inspect/devices/TrackFacts.h"

namespace inspect {

struct ProfileRow {
    int64_t number;  // of the platform's class CodecProfileLevel
    std::string_view name;
    int profile;                         // libavcodec's number; below zero: it has none
    int bitDepth;                        // the most bits of a sample
    std::array<int64_t, 2> contained{};  // numbers that a decoder of this one takes too
};

struct LevelRow {
    int64_t number;
    std::string_view name;
    int level;            // as the bitstream has it, with what tells apart those of one value
    int64_t picture = 0;  // the most of a picture, and of the pictures of a second; 0: nothing is
    int64_t second = 0;   // written in this level
    int64_t bitRate = 0;  // bits a second, for those who write it; 0 = no matter
};

struct CodecProfiles {
    std::string_view name;   // for a person
    std::string_view mime;   // of decoders
    std::string_view codec;  // how libavcodec's names for it begin
    std::span<const ProfileRow> profiles;
    std::span<const LevelRow> levels;  // from low to high; none: levels say nothing
    int64_t unit = 1;                  // pictures count in squares of so many samples a side
    bool hasTiers = false;             // twice the number of a level is its High tier
};

// Null of others; letter case does not matter in a MIME type.
const CodecProfiles* profilesOfMime(std::string_view mime);
const CodecProfiles* profilesOfCodec(std::string_view codec);  // libavcodec's name

bool isSameMime(std::string_view one, std::string_view other);

// What a stream says about itself.
struct Indication {
    std::optional<int> profile = {};  // libavcodec's numbers
    std::optional<int> level = {};
    std::optional<int64_t> bitDepth = {};
    unsigned constraints = 0;  // of AVC: constraint_set0_flag is 0x80
    bool isHighTier = false;   // of HEVC
};

// Nothing where the stream does not tell.
std::optional<Rank> profileOf(const CodecProfiles& codec, const Indication& stream);
std::optional<Rank> levelOf(const CodecProfiles& codec, const Indication& stream);

// Of numbers in a decoder's list.
std::string profileName(const CodecProfiles& codec, int64_t number);
std::string levelName(const CodecProfiles& codec, int64_t number);
int bitDepthOf(const CodecProfiles& codec, int64_t profile);  // the most; 0 = unknown

// Whether a decoder takes the asked number that has the other in its list.
bool takesProfile(const CodecProfiles& codec, int64_t listed, int64_t asked);
bool takesLevel(const CodecProfiles& codec, int64_t listed, int64_t asked);

// How many steps the asked level lies above the other; at least one.
int levelsBetween(const CodecProfiles& codec, int64_t listed, int64_t asked);

}  // namespace inspect
