#include "inspect/records/StandardNames.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <string_view>

#include "inspect/media/LibAv.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/pixdesc.h>
}

namespace inspect {
namespace {

struct Name {
    uint8_t number;
    std::string_view text;
};

constexpr auto kHevcUnits = std::to_array<Name>({
        {32, "VPS"},
        {33, "SPS"},
        {34, "PPS"},
        {39, "SEI"},
        {40, "suffix SEI"},
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

std::string nameOf(std::span<const Name> names, unsigned number, const std::string& otherwise) {
    const auto found = std::ranges::find(names, number, &Name::number);
    return found != names.end() ? std::string(found->text) : otherwise;
}

std::string numbered(std::string what, unsigned number) {
    return what.append(" ").append(std::to_string(number));
}

std::string profileName(AVCodecID codec, unsigned profile) {
    const char* name = avcodec_profile_name(codec, static_cast<int>(profile));
    return name != nullptr ? name : numbered("profile", profile);
}

// Of a number that libavutil numbers in the same way; no enumeration holds one beyond its end.
template <typename Number>
std::string nameBelow(Number end, unsigned number, const char* (*nameOf)(Number)) {
    const bool isIn = number < static_cast<unsigned>(end);
    const char* name = isIn ? nameOf(static_cast<Number>(number)) : nullptr;
    return name != nullptr ? name : "reserved";
}

std::string decimal(unsigned tenths) {
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

}  // namespace

std::string avcProfileName(unsigned profileIdc) {
    return profileName(AV_CODEC_ID_H264, profileIdc);
}

std::string avcLevelText(unsigned profileIdc, unsigned constraints, unsigned levelIdc) {
    const bool isOld = profileIdc == 66 || profileIdc == 77 || profileIdc == 88;
    if (levelIdc == 9 || (isOld && levelIdc == 11 && (constraints & 0x10) != 0)) return "1b";
    return decimal(levelIdc);
}

std::string hevcProfileName(unsigned profileIdc) {
    return profileName(AV_CODEC_ID_HEVC, profileIdc);
}

std::string hevcLevelText(unsigned levelIdc) {
    return decimal(levelIdc / 3);
}

std::string hevcUnitName(unsigned unitType) {
    return nameOf(kHevcUnits, unitType, numbered("unit of type", unitType));
}

std::string chromaText(unsigned chromaFormatIdc) {
    constexpr auto kFormats = std::to_array<const char*>({"monochrome", "4:2:0", "4:2:2", "4:4:4"});
    return chromaFormatIdc < kFormats.size() ? kFormats[chromaFormatIdc] : "reserved";
}

std::string primariesText(unsigned colourPrimaries) {
    return nameBelow(AVCOL_PRI_NB, colourPrimaries, av_color_primaries_name);
}

std::string transferText(unsigned characteristics) {
    return nameBelow(AVCOL_TRC_NB, characteristics, av_color_transfer_name);
}

std::string matrixText(unsigned matrixCoefficients) {
    return nameBelow(AVCOL_SPC_NB, matrixCoefficients, av_color_space_name);
}

std::string luminanceText(unsigned tenThousandths) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%g cd/m2", tenThousandths / 10000.0);
    return text.data();
}

std::string sizeText(uint64_t width, uint64_t height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

std::string lengthsText(unsigned lengthSizeMinusOne) {
    return std::to_string(lengthSizeMinusOne + 1) + "-byte lengths";
}

std::string visualProfileName(unsigned indication) {
    const unsigned level = indication & 0xF;
    const char* name = avcodec_profile_name(AV_CODEC_ID_MPEG4, static_cast<int>(indication >> 4));
    if (name == nullptr) return "another profile";
    std::string text(name);
    text = text.substr(0, text.rfind(" Profile")) + ", level ";
    if (indication == 0x04) return text + "4a";
    if (indication == 0xF7) return text + "3b";
    return text + std::to_string(indication == 0x08 ? 0 : level);
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
    for (unsigned bit = 0; bit < 32; bit++) {
        if ((channelMask >> bit & 1) == 0) continue;
        std::array<char, 64> name{};
        av_channel_description(name.data(), name.size(), static_cast<AVChannel>(bit));
        text += (text.empty() ? "" : ", ") + std::string(name.data());
    }
    return text.empty() ? "no speakers" : text;
}

}  // namespace inspect
