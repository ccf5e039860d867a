#include "inspect/records/StandardNames.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>

#include "inspect/media/LibAv.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/pixdesc.h>
}

namespace inspect {
namespace {

std::string numbered(std::string what, uint64_t number) {
    return what.append(" ").append(std::to_string(number));
}

std::string profileName(AVCodecID codec, uint64_t profile) {
    const char* name = avcodec_profile_name(codec, static_cast<int>(profile));
    return name != nullptr ? name : numbered("profile", profile);
}

// Of a number that libavutil numbers in the same way; no enumeration holds one beyond its end.
template <typename Number>
std::string nameBelow(Number end, uint64_t number, const char* (*nameOf)(Number)) {
    const bool isIn = number < static_cast<unsigned>(end);
    const char* name = isIn ? nameOf(static_cast<Number>(number)) : nullptr;
    return name != nullptr ? name : "reserved";
}

}  // namespace

std::string nameOf(NameList names, uint64_t number, const std::string& otherwise) {
    const std::string name = number < names.size() ? names[number] : "";
    return name.empty() ? otherwise : name;
}

std::string tenthsText(uint64_t tenths) {
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

std::string hexText(uint64_t flags) {
    std::array<char, 20> text{};
    std::snprintf(text.data(), text.size(), "0x%" PRIx64, flags);
    return text.data();
}

std::string avcProfileName(uint64_t profileIdc) {
    return profileName(AV_CODEC_ID_H264, profileIdc);
}

std::string avcLevelText(uint64_t profileIdc, uint64_t constraints, uint64_t levelIdc) {
    const bool isOld = profileIdc == 66 || profileIdc == 77 || profileIdc == 88;
    if (levelIdc == 9 || (isOld && levelIdc == 11 && (constraints & 0x10) != 0)) return "1b";
    return tenthsText(levelIdc);
}

std::string hevcProfileName(uint64_t profileIdc) {
    return profileName(AV_CODEC_ID_HEVC, profileIdc);
}

std::string hevcLevelText(uint64_t levelIdc) {
    return tenthsText(levelIdc / 3);
}

std::string hevcUnitName(uint64_t unitType) {
    constexpr const char* kFrom32[] = {"VPS", "SPS", "PPS", "", "", "", "", "SEI", "suffix SEI"};
    return nameOf(kFrom32, unitType - 32, numbered("unit of type", unitType));
}

std::string chromaText(uint64_t chromaFormatIdc) {
    constexpr const char* kFormats[] = {"monochrome", "4:2:0", "4:2:2", "4:4:4"};
    return nameOf(kFormats, chromaFormatIdc, "reserved");
}

std::string primariesText(uint64_t colourPrimaries) {
    return nameBelow(AVCOL_PRI_NB, colourPrimaries, av_color_primaries_name);
}

std::string transferText(uint64_t characteristics) {
    return nameBelow(AVCOL_TRC_NB, characteristics, av_color_transfer_name);
}

std::string matrixText(uint64_t matrixCoefficients) {
    return nameBelow(AVCOL_SPC_NB, matrixCoefficients, av_color_space_name);
}

std::string luminanceText(uint64_t tenThousandths) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%g cd/m2",
                  static_cast<double>(tenThousandths) / 10000);
    return text.data();
}

std::string sizeText(uint64_t width, uint64_t height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

std::string lengthsText(uint64_t lengthSizeMinusOne) {
    return std::to_string(lengthSizeMinusOne + 1) + "-byte lengths";
}

std::string visualProfileName(uint64_t indication) {
    const uint64_t level = indication & 0xF;
    const char* name = avcodec_profile_name(AV_CODEC_ID_MPEG4, static_cast<int>(indication >> 4));
    if (name == nullptr) return "another profile";
    std::string text(name);
    text.resize(std::min(text.size(), text.rfind(" Profile")));
    text += ", level ";
    if (indication == 0x04) return text + "4a";
    if (indication == 0xF7) return text + "3b";
    return text + std::to_string(indication == 0x08 ? 0 : level);
}

std::string visualStartCodeName(uint64_t code) {
    constexpr const char* kFromB0[] = {"visual_object_sequence",
                                       "visual_object_sequence_end",
                                       "user_data",
                                       "group_of_vop",
                                       "",
                                       "visual_object",
                                       "vop"};
    if (code < 0x20) return numbered("video_object", code);
    if (code < 0x30) return numbered("video_object_layer", code - 0x20);
    return nameOf(kFromB0, code - 0xB0, numbered("start code", code));
}

std::string mpeg2StartCodeName(uint64_t code) {
    constexpr const char* kFromB2[] = {"user_data",    "sequence_header",  "", "extension", "",
                                       "sequence_end", "group_of_pictures"};
    if (code == 0) return "picture";
    return nameOf(kFromB2, code - 0xB2, numbered("start code", code));
}

std::string channelText(uint64_t channels) {
    return std::to_string(channels) + (channels == 1 ? " channel" : " channels");
}

std::string speakersText(uint64_t channelMask) {
    std::string text;
    for (uint64_t bit = 0; bit < 32; bit++) {
        if ((channelMask >> bit & 1) == 0) continue;
        std::array<char, 64> name{};
        av_channel_description(name.data(), name.size(), static_cast<AVChannel>(bit));
        text += (text.empty() ? "" : ", ") + std::string(name.data());
    }
    return text.empty() ? "no speakers" : text;
}

}  // namespace inspect
