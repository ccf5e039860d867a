#include "inspect/devices/Profiles.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>

#include "inspect/devices/ProfileTables.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

using namespace android;

// clang-format off
constexpr auto kCodecs = std::to_array<CodecProfiles>({
    {"AVC",           ZRE_MEDIA_MIMETYPE_VIDEO_AVC,   "h264",       kAvcProfiles,   kAvcLevels,   16},
    {"HEVC",          ZRE_MEDIA_MIMETYPE_VIDEO_HEVC,  "hevc",       kHevcProfiles,  kHevcLevels,  1, true},
    {"MPEG-4 Visual", ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4, "mpeg4",      kMpeg4Profiles, kMpeg4Levels, 16},
    {"H.263",         ZRE_MEDIA_MIMETYPE_VIDEO_H263,  "h263",       kH263Profiles,  kH263Levels},
    {"MPEG-2",        ZRE_MEDIA_MIMETYPE_VIDEO_MPEG2, "mpeg2video", kMpeg2Profiles, kMpeg2Levels},
    {"VP9",           ZRE_MEDIA_MIMETYPE_VIDEO_VP9,   "vp9",        kVp9Profiles,   kVp9Levels},
    {"AV1",           ZRE_MEDIA_MIMETYPE_VIDEO_AV1,   "av1",        kAv1Profiles,   kAv1Levels},
    {"AAC",           ZRE_MEDIA_MIMETYPE_AUDIO_AAC,   "aac",        kAacProfiles,   {}},
});
// clang-format on

bool is(const CodecProfiles& codec, std::string_view name) {
    return codec.name == name;
}

// ITU-T H.264 A.2.4.2: the High profile for progressive pictures without B slices
int toldApart(const CodecProfiles& codec, int profile, const Indication& stream) {
    constexpr unsigned kSets4And5 = 0x0C;
    const bool isConstrainedHigh = is(codec, "AVC") && profile == FF_PROFILE_H264_HIGH &&
                                   (stream.constraints & kSets4And5) == kSets4And5;
    const bool isAv1Main10 =
            is(codec, "AV1") && profile == FF_PROFILE_AV1_MAIN && stream.bitDepth > 8;
    return isConstrainedHigh ? kConstrainedHigh : isAv1Main10 ? kAv1Main10 : profile;
}

// ITU-T H.264 A.3.1: old profiles tell level 1b from 1.1 by a flag.
bool isLevel1b(const Indication& stream) {
    const int profile = stream.profile.value_or(0) & 0xFF;
    const bool isOld = profile == FF_PROFILE_H264_BASELINE || profile == FF_PROFILE_H264_MAIN ||
                       profile == FF_PROFILE_H264_EXTENDED;
    return isOld && stream.level == 11 && (stream.constraints & 0x10) != 0;
}

int levelToldApart(const CodecProfiles& codec, int level, const Indication& stream) {
    if (is(codec, "AVC") && isLevel1b(stream)) return kAvcLevel1b;
    const bool isMpeg4Simple =
            is(codec, "MPEG-4 Visual") && stream.profile == FF_PROFILE_MPEG4_SIMPLE;
    return isMpeg4Simple && level == 4 ? kMpeg4Level4a : level;
}

std::string nameOfOther(const CodecProfiles& codec, int profile) {
    const AVCodecDescriptor* descriptor =
            avcodec_descriptor_get_by_name(std::string(codec.codec).c_str());
    const char* name =
            descriptor != nullptr ? avcodec_profile_name(descriptor->id, profile) : nullptr;
    return name != nullptr ? name : "profile " + std::to_string(profile);
}

std::string hexText(int64_t number) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "0x%llx", static_cast<unsigned long long>(number));
    return text.data();
}

template <typename Rows>
std::string nameIn(const Rows& rows, int64_t number) {
    const auto row = std::ranges::find_if(rows, [&](const auto& r) { return r.number == number; });
    return row != rows.end() ? std::string(row->name) : hexText(number);
}

constexpr const char* kHighTier = " High tier";

// One bit a level, the first that of the Main tier.
bool isHighTier(const CodecProfiles& codec, int64_t number) {
    return codec.hasTiers && std::bit_width(static_cast<uint64_t>(number)) % 2 == 0;
}

}  // namespace

const CodecProfiles* profilesOfMime(std::string_view mime) {
    const auto found = std::ranges::find_if(
            kCodecs, [&](const CodecProfiles& each) { return isSameMime(each.mime, mime); });
    return found != kCodecs.end() ? &*found : nullptr;
}

const CodecProfiles* profilesOfCodec(std::string_view codec) {
    const auto found = std::ranges::find_if(
            kCodecs, [&](const CodecProfiles& each) { return codec.starts_with(each.codec); });
    return found != kCodecs.end() ? &*found : nullptr;
}

bool isSameMime(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::ranges::equal(one, other, {}, lower, lower);
}

std::optional<Rank> profileOf(const CodecProfiles& codec, const Indication& stream) {
    if (!stream.profile || *stream.profile < 0) return {};
    const bool isAv1Main = is(codec, "AV1") && stream.profile == FF_PROFILE_AV1_MAIN;
    if (isAv1Main && !stream.bitDepth) return {};
    const int profile = toldApart(codec, *stream.profile, stream);
    const auto row = std::ranges::find(codec.profiles, profile, &ProfileRow::profile);
    if (row == codec.profiles.end()) return Rank{nameOfOther(codec, *stream.profile), {}};
    return Rank{std::string(row->name), row->number};
}

std::optional<Rank> levelOf(const CodecProfiles& codec, const Indication& stream) {
    if (!stream.level || *stream.level < 0) return {};
    const int level = levelToldApart(codec, *stream.level, stream);
    const auto row = std::ranges::find(codec.levels, level, &LevelRow::level);
    if (row != codec.levels.end()) {
        const bool isHigh = codec.hasTiers && stream.isHighTier;
        return Rank{std::string(row->name) + (isHigh ? kHighTier : ""), row->number << isHigh};
    }
    if (*stream.level == 0 || codec.levels.empty()) return {};
    return Rank{"number " + std::to_string(*stream.level), {}};
}

std::string profileName(const CodecProfiles& codec, int64_t number) {
    return nameIn(codec.profiles, number);
}

std::string levelName(const CodecProfiles& codec, int64_t number) {
    for (const LevelRow& row : codec.levels) {
        if (codec.hasTiers && 2 * row.number == number) return std::string(row.name) + kHighTier;
    }
    return nameIn(codec.levels, number);
}

int bitDepthOf(const CodecProfiles& codec, int64_t profile) {
    const auto row = std::ranges::find(codec.profiles, profile, &ProfileRow::number);
    return row != codec.profiles.end() ? row->bitDepth : 0;
}

bool takesProfile(const CodecProfiles& codec, int64_t listed, int64_t asked) {
    const auto row = std::ranges::find(codec.profiles, listed, &ProfileRow::number);
    return listed == asked || (asked > 0 && row != codec.profiles.end() &&
                               std::ranges::count(row->contained, asked) > 0);
}

bool takesLevel(const CodecProfiles& codec, int64_t listed, int64_t asked) {
    if (codec.levels.empty()) return true;
    return listed >= asked && (isHighTier(codec, listed) || !isHighTier(codec, asked));
}

int levelsBetween(const CodecProfiles& codec, int64_t listed, int64_t asked) {
    int between = 0;
    for (const LevelRow& row : codec.levels) {
        for (int tier = 0; tier <= (codec.hasTiers ? 1 : 0); tier++) {
            const int64_t number = row.number << tier;
            between += (number < asked ? 1 : 0) - (number < listed ? 1 : 0);
        }
    }
    return std::max(between, 1);
}

}  // namespace inspect
