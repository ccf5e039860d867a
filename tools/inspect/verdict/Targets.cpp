#include "inspect/verdict/Targets.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "inspect/devices/Profiles.h"
#include "inspect/media/LibAv.h"
#include "inspect/verdict/TrackFacts.h"
#include "inspect/verdict/Verdict.h"
#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

struct VideoTarget {
    const char* words;
    const char* codec;  // libavcodec's name
    uint32_t type;      // android::CodecType
    int profile;        // libavcodec's number
    const char* encoder;
    const char* profileArgument = nullptr;  // null = none
    bool isToldLevel = false;               // else the encoder finds it itself
};

// libx265 takes the High tier where it is allowed more bits.
// clang-format off
constexpr auto kVideoTargets = std::to_array<VideoTarget>({
    {"H.264 High",     "h264",  kCodecTypeAvc,   FF_PROFILE_H264_HIGH,    "libx264", "high", true},
    {"H.264 Main",     "h264",  kCodecTypeAvc,   FF_PROFILE_H264_MAIN,    "libx264", "main", true},
    {"H.264 Baseline", "h264",  kCodecTypeAvc,   FF_PROFILE_H264_CONSTRAINED_BASELINE,
                                                                          "libx264", "baseline", true},
    {"H.265 Main",     "hevc",  kCodecTypeHevc,  FF_PROFILE_HEVC_MAIN,    "libx265", "main"},
    {"VP9",            "vp9",   kCodecTypeVp9,   FF_PROFILE_VP9_0,        "libvpx-vp9"},
    {"VP8",            "vp8",   kCodecTypeVp8,   FF_PROFILE_UNKNOWN,      "libvpx"},
    {"MPEG-4 Simple",  "mpeg4", kCodecTypeMpeg4, FF_PROFILE_MPEG4_SIMPLE, "mpeg4",   "0",    true},
});
// clang-format on

constexpr std::array kFrameRates = {0.0, 60.0, 30.0, 15.0};  // 0 = as it is
constexpr std::array kScales = {1.0, 0.75, 0.5, 0.375, 0.25, 0.125};

uint32_t even(double length) {
    return std::max(2u, static_cast<uint32_t>(length / 2) * 2);
}

using Options = std::vector<std::string>;

void add(Options& options, const char* name, const std::string& value) {
    options.insert(options.end(), {name, value});
}

// Frames at no steady distance come at the average one.
double steadyRate(const Stream::Video& video) {
    const bool isSteady = video.baseFrameRate < 1.01 * video.averageFrameRate;
    return isSteady || video.averageFrameRate <= 0
                   ? 0
                   : std::max(1.0, std::round(video.averageFrameRate));
}

void setRate(double rate, Target& out) {
    Stream::Video& video = out.stream.video;
    video.frameRate = static_cast<uint32_t>(rate);
    video.averageFrameRate = video.baseFrameRate = rate;
    add(out.options, "-r", std::to_string(video.frameRate));
    out.words += ", " + std::to_string(video.frameRate) + " frames a second";
}

void setSize(double scale, Target& out) {
    Stream::Video& video = out.stream.video;
    const Stream::Video before = video;
    video.width = even(video.width * scale);
    video.height = even(video.height * scale);
    if (video.width == before.width && video.height == before.height) return;
    const std::string width = std::to_string(video.width);
    const std::string height = std::to_string(video.height);
    add(out.options, "-filter", "scale=" + width + ":" + height);
    out.words += ", " + width + "x" + height;
}

// The lowest level that holds the video; null when none does.
const LevelRow* levelFor(const CodecProfiles& codec, const Stream::Video& video) {
    const auto across = [&](int64_t length) { return (length + codec.unit - 1) / codec.unit; };
    const int64_t picture = across(video.width) * across(video.height);
    const double rate = video.averageFrameRate > 0 ? video.averageFrameRate : video.frameRate;
    const double second = std::ceil(static_cast<double>(picture) * std::max(rate, 1.0));
    const auto found = std::ranges::find_if(codec.levels, [&](const LevelRow& level) {
        return picture <= level.picture && second <= static_cast<double>(level.second);
    });
    return found != codec.levels.end() ? &*found : nullptr;
}

// The stream in this codec; nothing when no level of the codec holds it. rate: 0 = as it is.
std::optional<Target> videoTarget(const Stream& from, const VideoTarget& target, double scale,
                                  double rate) {
    const bool isSizeKnown = from.video.width > 0 && from.video.height > 0;
    if (!isSizeKnown || (rate > 0 && rate >= from.video.averageFrameRate)) return {};
    Target out{{"-c", target.encoder, "-pix_fmt", "yuv420p"}, target.words, from};
    setSize(scale, out);
    if (rate == 0) rate = steadyRate(from.video);
    if (rate > 0) setRate(rate, out);
    if (target.profileArgument != nullptr) add(out.options, "-profile", target.profileArgument);
    out.stream.level.reset();
    if (const CodecProfiles* codec = profilesOfCodec(target.codec)) {
        const LevelRow* level = levelFor(*codec, out.stream.video);
        if (level == nullptr) return {};
        if (target.isToldLevel) add(out.options, "-level", std::string(level->name));
        out.stream.level = level->level;
    }
    out.stream.codec = target.codec;
    out.stream.codecType = static_cast<uint32_t>(target.type);
    out.stream.profile = target.profile;
    out.stream.video.bitDepth = 8;
    out.stream.bitRate = 0;
    return out;
}

struct AudioTarget {
    const char* words;
    const char* codec;
    uint32_t type;
    int profile;
    const char* encoder;
    uint32_t channels;  // at most
    std::array<uint32_t, 4> rates;
    uint32_t bitsPerSample;
    uint32_t kilobitsAChannel;  // 0 = as it comes
};

// clang-format off
constexpr auto kAudioTargets = std::to_array<AudioTarget>({
    {"AAC LC", "aac",    kCodecTypeAac,    FF_PROFILE_AAC_LOW, "aac",        6, {48000, 44100, 22050, 8000}, 0, 64},
    {"MP3",    "mp3",    kCodecTypeMp3,    FF_PROFILE_UNKNOWN, "libmp3lame", 2, {48000, 44100, 22050, 8000}, 0, 64},
    {"Opus",   "opus",   kCodecTypeOpus,   FF_PROFILE_UNKNOWN, "libopus",    6, {48000}, 0, 64},
    {"Vorbis", "vorbis", kCodecTypeVorbis, FF_PROFILE_UNKNOWN, "libvorbis",  6, {48000, 44100, 22050, 8000}, 0, 64},
    {"FLAC",   "flac",   kCodecTypeFlac,   FF_PROFILE_UNKNOWN, "flac",       6, {96000, 48000, 44100, 8000}, 16, 0},
    {"PCM of 16 bits",
               "pcm_s16le", kCodecTypePcm, FF_PROFILE_UNKNOWN, "pcm_s16le",  6, {96000, 48000, 44100, 8000}, 16, 0},
});
// clang-format on

constexpr std::array<uint32_t, 4> kChannelCounts = {0, 6, 2, 1};  // 0 = as they are
constexpr std::array<uint32_t, 6> kSampleRates = {0, 96000, 48000, 44100, 22050, 8000};

// Nothing when the codec does not hold so many channels or this rate.
std::optional<Target> audioTarget(const Stream& from, const AudioTarget& target, uint32_t channels,
                                  uint32_t rate) {
    const bool isFewer = channels > 0 && channels < from.audio.channelCount;
    constexpr uint32_t kMostPlaced = 8;  // loudspeakers whose places their number tells
    if (isFewer && from.audio.channelCount > kMostPlaced) return {};
    if ((channels > 0 && !isFewer) || rate == from.audio.sampleRate) return {};
    Target out{{"-c", target.encoder}, target.words, from};
    Stream::Audio& audio = out.stream.audio;
    if (rate > 0) {
        audio.sampleRate = rate;
        add(out.options, "-ar", std::to_string(rate));
        out.words += ", " + std::to_string(rate) + " Hz";
    }
    if (isFewer) {
        audio.channelCount = channels;
        add(out.options, "-ac", std::to_string(channels));
        out.words += ", " + std::to_string(channels) + (channels == 1 ? " channel" : " channels");
    }
    if (audio.channelCount == 0 || audio.channelCount > target.channels) return {};
    if (std::ranges::count(target.rates, audio.sampleRate) == 0) return {};
    out.stream.bitRate = target.kilobitsAChannel * audio.channelCount * 1000;
    if (out.stream.bitRate > 0) add(out.options, "-b", std::to_string(out.stream.bitRate));
    if (target.type == kCodecTypeFlac) add(out.options, "-sample_fmt", "s16");
    out.stream.codec = target.codec;
    out.stream.codecType = static_cast<uint32_t>(target.type);
    out.stream.profile = target.profile;
    out.stream.level.reset();
    audio.bitsPerSample = target.bitsPerSample;
    return out;
}

// Well below the decoder's limit, where it has one, and what the level allows: an encoder keeps to
// a rate over a while only.
void limitBitRate(const std::optional<Range>& taken, Target& target) {
    if (target.stream.kind != Kind::kVideo || !taken) return;
    constexpr int64_t kEnough = 40'000'000;
    int64_t most = taken->to / 2;
    const CodecProfiles* codec = profilesOfCodec(target.stream.codec);
    const LevelRow* level = codec != nullptr ? levelFor(*codec, target.stream.video) : nullptr;
    if (level != nullptr && level->bitRate > 0) most = std::min(most, level->bitRate);
    if (most >= kEnough) return;
    if (target.options[1].starts_with("libvpx")) {
        add(target.options, "-b", std::to_string(most / 2));
    } else {
        add(target.options, "-maxrate", std::to_string(most));
        add(target.options, "-bufsize", std::to_string(most / 10));
    }
}

bool takes(const PretendedDevice& device, Target& target) {
    const TrackFacts facts = factsOf(target.stream, {});
    const Verdict verdict = judge(target.stream, kHasWholeFrames, facts, {}, device);
    if (!plays(verdict.play)) return false;
    limitBitRate(verdict.bitRate, target);
    return true;
}

// Those of the stream's own codec first.
template <typename List>
std::vector<typename List::value_type> sorted(const List& targets, const Stream& stream) {
    std::vector<typename List::value_type> all(targets.begin(), targets.end());
    std::stable_partition(all.begin(), all.end(),
                          [&](const auto& each) { return each.type == stream.codecType; });
    return all;
}

}  // namespace

std::optional<Target> findTarget(const Stream& stream, const PretendedDevice& device,
                                 const IsKept& isKept) {
    // The first of two changes is the dearer one.
    const auto search = [&](const auto& targets, const auto& dear, const auto& cheap,
                            const auto& make) -> std::optional<Target> {
        const auto ownFirst = sorted(targets, stream);
        for (const auto& first : dear) {
            for (const auto& second : cheap) {
                for (const auto& each : ownFirst) {
                    std::optional<Target> target = make(stream, each, first, second);
                    if (target && isKept(target->stream) && takes(device, *target)) return target;
                }
            }
        }
        return {};
    };
    if (stream.kind == Kind::kVideo)
        return search(kVideoTargets, kScales, kFrameRates, videoTarget);
    if (stream.kind == Kind::kAudio) {
        return search(kAudioTargets, kChannelCounts, kSampleRates, audioTarget);
    }
    return {};
}

}  // namespace inspect
