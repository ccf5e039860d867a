#include "inspect/records/StandardNames.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace inspect {
namespace {

struct Name {
    uint8_t number;
    std::string_view text;
};

constexpr auto kAvcProfiles = std::to_array<Name>({
        {44, "CAVLC 4:4:4 Intra"},
        {66, "Baseline"},
        {77, "Main"},
        {83, "Scalable Baseline"},
        {86, "Scalable High"},
        {88, "Extended"},
        {100, "High"},
        {110, "High 10"},
        {118, "Multiview High"},
        {122, "High 4:2:2"},
        {128, "Stereo High"},
        {244, "High 4:4:4 Predictive"},
});

constexpr auto kHevcProfiles = std::to_array<Name>({
        {1, "Main"},
        {2, "Main 10"},
        {3, "Main Still Picture"},
        {4, "Range Extensions"},
});

constexpr auto kHevcUnits = std::to_array<Name>({
        {32, "VPS"},
        {33, "SPS"},
        {34, "PPS"},
        {39, "SEI"},
        {40, "suffix SEI"},
});

constexpr auto kVisualProfiles = std::to_array<Name>({
        {0x01, "Simple, level 1"},
        {0x02, "Simple, level 2"},
        {0x03, "Simple, level 3"},
        {0x04, "Simple, level 4a"},
        {0x05, "Simple, level 5"},
        {0x08, "Simple, level 0"},
        {0x21, "Core, level 1"},
        {0x22, "Core, level 2"},
        {0x32, "Main, level 2"},
        {0x33, "Main, level 3"},
        {0x34, "Main, level 4"},
        {0xF0, "Advanced Simple, level 0"},
        {0xF1, "Advanced Simple, level 1"},
        {0xF2, "Advanced Simple, level 2"},
        {0xF3, "Advanced Simple, level 3"},
        {0xF4, "Advanced Simple, level 4"},
        {0xF5, "Advanced Simple, level 5"},
        {0xF7, "Advanced Simple, level 3b"},
});

constexpr auto kVisualStartCodes = std::to_array<Name>({
        {0xB0, "visual_object_sequence"},
        {0xB1, "visual_object_sequence_end"},
        {0xB2, "user_data"},
        {0xB3, "group_of_vop"},
        {0xB5, "visual_object"},
        {0xB6, "vop"},
});

constexpr auto kMpeg2StartCodes = std::to_array<Name>({
        {0x00, "picture"},
        {0xB2, "user_data"},
        {0xB3, "sequence_header"},
        {0xB5, "extension"},
        {0xB7, "sequence_end"},
        {0xB8, "group_of_pictures"},
});

constexpr auto kAacObjectTypes = std::to_array<Name>({
        {1, "AAC Main"},
        {2, "AAC LC"},
        {3, "AAC SSR"},
        {4, "AAC LTP"},
        {5, "HE-AAC"},
        {23, "AAC LD"},
        {29, "HE-AAC v2"},
        {31, "escape"},
        {36, "ALS"},
        {39, "AAC ELD"},
        {42, "USAC"},
});

constexpr auto kAacSampleRates = std::to_array<uint32_t>(
        {96000, 88200, 64000, 48000, 44100, 32000, 24000, 22050, 16000, 12000, 11025, 8000, 7350});

constexpr auto kAacChannels = std::to_array<unsigned>({0, 1, 2, 3, 4, 5, 6, 8});

// By bit, the lowest first.
constexpr auto kSpeakers = std::to_array<std::string_view>(
        {"front left", "front right", "front centre", "low frequency", "back left", "back right",
         "front left of centre", "front right of centre", "back centre", "side left",
         "side right"});

std::string nameOf(std::span<const Name> names, unsigned number, const std::string& otherwise) {
    const auto found = std::ranges::find(names, number, &Name::number);
    return found != names.end() ? std::string(found->text) : otherwise;
}

std::string numbered(std::string what, unsigned number) {
    return what.append(" ").append(std::to_string(number));
}

std::string decimal(unsigned tenths) {
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

}  // namespace

std::string avcProfileName(unsigned profileIdc) {
    return nameOf(kAvcProfiles, profileIdc, numbered("profile", profileIdc));
}

std::string avcLevelText(unsigned profileIdc, unsigned constraints, unsigned levelIdc) {
    const bool isOld = profileIdc == 66 || profileIdc == 77 || profileIdc == 88;
    if (levelIdc == 9 || (isOld && levelIdc == 11 && (constraints & 0x10) != 0)) return "1b";
    return decimal(levelIdc);
}

std::string hevcProfileName(unsigned profileIdc) {
    return nameOf(kHevcProfiles, profileIdc, numbered("profile", profileIdc));
}

std::string hevcLevelText(unsigned levelIdc) {
    return decimal(levelIdc / 3);
}

std::string hevcUnitName(unsigned unitType) {
    return nameOf(kHevcUnits, unitType, numbered("unit of type", unitType));
}

std::string lengthsText(unsigned lengthSizeMinusOne) {
    return std::to_string(lengthSizeMinusOne + 1) + "-byte lengths";
}

std::string visualProfileName(unsigned indication) {
    return nameOf(kVisualProfiles, indication, "another profile");
}

std::string visualStartCodeName(unsigned code) {
    if (code < 0x20) return numbered("video_object", code);
    if (code < 0x30) return numbered("video_object_layer", code - 0x20);
    return nameOf(kVisualStartCodes, code, numbered("start code", code));
}

std::string mpeg2StartCodeName(unsigned code) {
    return nameOf(kMpeg2StartCodes, code, numbered("start code", code));
}

std::string aacObjectTypeName(unsigned type) {
    return nameOf(kAacObjectTypes, type, numbered("object type", type));
}

uint32_t aacSampleRate(unsigned index) {
    return index < kAacSampleRates.size() ? kAacSampleRates[index] : 0;
}

std::string aacSampleRateText(unsigned index) {
    const uint32_t rate = aacSampleRate(index);
    return rate > 0 ? std::to_string(rate) + " Hz" : "no table rate";
}

std::string aacChannelsText(unsigned configuration) {
    const bool isKnown = configuration > 0 && configuration < kAacChannels.size();
    return isKnown ? channelText(kAacChannels[configuration])
                   : numbered("channel configuration", configuration);
}

std::string channelText(uint64_t channels) {
    return std::to_string(channels) + (channels == 1 ? " channel" : " channels");
}

std::string speakersText(uint32_t channelMask) {
    std::string text;
    for (size_t i = 0; i < kSpeakers.size(); i++) {
        if ((channelMask >> i & 1) == 0) continue;
        text += (text.empty() ? "" : ", ") + std::string(kSpeakers[i]);
    }
    return text.empty() ? "no speakers" : text;
}

}  // namespace inspect
