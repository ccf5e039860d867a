#include "inspect/callers/Targets.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "inspect/callers/TrackFacts.h"
#include "inspect/callers/Verdict.h"
#include "inspect/media/LibAv.h"
#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

// The lowest level that holds a picture, and the pictures of a second, is written.
struct Level {
    int level;             // as the bitstream has it
    const char* argument;  // as the encoder takes it
    int64_t picture;
    int64_t second;
};

// ITU-T H.264 table A-1, in macroblocks.
constexpr auto kAvcLevels = std::to_array<Level>({
        {10, "1.0", 99, 1485},
        {11, "1.1", 396, 3000},
        {12, "1.2", 396, 6000},
        {13, "1.3", 396, 11880},
        {21, "2.1", 792, 19800},
        {22, "2.2", 1620, 20250},
        {30, "3.0", 1620, 40500},
        {31, "3.1", 3600, 108000},
        {32, "3.2", 5120, 216000},
        {40, "4.0", 8192, 245760},
        {42, "4.2", 8704, 522240},
        {50, "5.0", 22080, 589824},
        {51, "5.1", 36864, 983040},
        {52, "5.2", 36864, 2073600},
        {60, "6.0", 139264, 4177920},
        {61, "6.1", 139264, 8355840},
        {62, "6.2", 139264, 16711680},
});

// ITU-T H.265 table A.8, in luma samples; the encoder finds the level itself.
constexpr auto kHevcLevels = std::to_array<Level>({
        {30, nullptr, 36864, 552960},
        {60, nullptr, 122880, 3686400},
        {63, nullptr, 245760, 7372800},
        {90, nullptr, 552960, 16588800},
        {93, nullptr, 983040, 33177600},
        {120, nullptr, 2228224, 66846720},
        {123, nullptr, 2228224, 133693440},
        {150, nullptr, 8912896, 267386880},
        {153, nullptr, 8912896, 534773760},
        {156, nullptr, 8912896, 1069547520},
});

// ISO/IEC 14496-2 table N.1, in macroblocks.
constexpr auto kSimpleLevels = std::to_array<Level>({
        {1, "1", 99, 1485},
        {3, "3", 396, 11880},
        {5, "5", 1620, 40500},
});

struct VideoTarget {
    const char* words;
    const char* codec;  // libavcodec's name
    CodecType type;
    int profile;  // libavcodec's number
    const char* encoder;
    const char* profileArgument;  // null = none
    std::span<const Level> levels;
    int64_t unit;  // of the levels: a square of so many samples a side
};

constexpr auto kVideoTargets = std::to_array<VideoTarget>({
        {"H.264 High", "h264", kCodecTypeAvc, FF_PROFILE_H264_HIGH, "libx264", "high", kAvcLevels,
         16},
        {"H.264 Main", "h264", kCodecTypeAvc, FF_PROFILE_H264_MAIN, "libx264", "main", kAvcLevels,
         16},
        {"H.264 Baseline", "h264", kCodecTypeAvc, FF_PROFILE_H264_CONSTRAINED_BASELINE, "libx264",
         "baseline", kAvcLevels, 16},
        {"H.265 Main", "hevc", kCodecTypeHevc, FF_PROFILE_HEVC_MAIN, "libx265", "main", kHevcLevels,
         1},
        {"VP9", "vp9", kCodecTypeVp9, FF_PROFILE_VP9_0, "libvpx-vp9", nullptr, {}, 1},
        {"VP8", "vp8", kCodecTypeVp8, FF_PROFILE_UNKNOWN, "libvpx", nullptr, {}, 1},
        {"MPEG-4 Simple", "mpeg4", kCodecTypeMpeg4, FF_PROFILE_MPEG4_SIMPLE, "mpeg4", "0",
         kSimpleLevels, 16},
});

constexpr std::array kFrameRates = {0.0, 60.0, 30.0, 15.0};  // 0 = as it is
constexpr std::array kScales = {1.0, 0.75, 0.5, 0.375, 0.25, 0.125};

const Level* levelFor(const VideoTarget& target, const Stream::Video& video) {
    const auto across = [&](int64_t length) { return (length + target.unit - 1) / target.unit; };
    const int64_t picture = across(video.width) * across(video.height);
    const double rate = video.averageFrameRate > 0 ? video.averageFrameRate : video.frameRate;
    const double second = std::ceil(static_cast<double>(picture) * std::max(rate, 1.0));
    const auto found = std::ranges::find_if(target.levels, [&](const Level& level) {
        return picture <= level.picture && second <= static_cast<double>(level.second);
    });
    return found != target.levels.end() ? &*found : nullptr;
}

uint32_t even(double length) {
    return std::max(2u, static_cast<uint32_t>(length / 2) * 2);
}

std::string sizeText(const Stream::Video& video) {
    return std::to_string(video.width) + "x" + std::to_string(video.height);
}

// The stream in this codec; nothing when no level of the codec holds it.
std::optional<Target> videoTarget(const Stream& from, const VideoTarget& target, double scale,
                                  double rate) {
    Target out{{"-c", target.encoder}, target.words, from};
    Stream::Video& video = out.stream.video;
    video.width = even(from.video.width * scale);
    video.height = even(from.video.height * scale);
    const bool isSlower = rate > 0 && rate < from.video.averageFrameRate;
    if (rate > 0 && !isSlower) return {};
    if (isSlower) {
        video.frameRate = static_cast<uint32_t>(rate);
        video.averageFrameRate = video.baseFrameRate = rate;
    }
    const Level* level = levelFor(target, video);
    if (!target.levels.empty() && level == nullptr) return {};

    const auto add = [&](const char* name, const std::string& value) {
        out.options.insert(out.options.end(), {name, value});
    };
    add("-pix_fmt", "yuv420p");
    if (target.profileArgument != nullptr) add("-profile", target.profileArgument);
    if (level != nullptr && level->argument != nullptr) {
        add("-level", level->argument);
        out.words.append(" ").append(level->argument);
    }
    if (video.width != from.video.width || video.height != from.video.height) {
        add("-filter", "scale=" + std::to_string(video.width) + ":" + std::to_string(video.height));
        out.words += ", " + sizeText(video);
    }
    if (isSlower) add("-r", std::to_string(video.frameRate));
    if (isSlower) out.words += ", " + std::to_string(video.frameRate) + " frames a second";
    out.stream.codec = target.codec;
    out.stream.codecType = target.type;
    out.stream.profile = target.profile;
    out.stream.level.reset();
    if (level != nullptr) out.stream.level = level->level;
    video.bitDepth = 8;
    out.stream.bitRate = 0;
    return out;
}

struct AudioTarget {
    const char* words;
    const char* codec;
    CodecType type;
    int profile;
    const char* encoder;
    uint32_t channels;  // at most
    std::array<uint32_t, 4> rates;
    uint32_t bitsPerSample;
    uint32_t kilobitsAChannel;  // 0 = as it comes
};

constexpr auto kAudioTargets = std::to_array<AudioTarget>({
        {"AAC LC",
         "aac",
         kCodecTypeAac,
         FF_PROFILE_AAC_LOW,
         "aac",
         6,
         {48000, 44100, 22050, 8000},
         0,
         64},
        {"MP3",
         "mp3",
         kCodecTypeMp3,
         FF_PROFILE_UNKNOWN,
         "libmp3lame",
         2,
         {48000, 44100, 22050, 8000},
         0,
         64},
        {"Opus", "opus", kCodecTypeOpus, FF_PROFILE_UNKNOWN, "libopus", 6, {48000}, 0, 64},
        {"Vorbis",
         "vorbis",
         kCodecTypeVorbis,
         FF_PROFILE_UNKNOWN,
         "libvorbis",
         6,
         {48000, 44100, 22050, 8000},
         0,
         64},
        {"FLAC",
         "flac",
         kCodecTypeFlac,
         FF_PROFILE_UNKNOWN,
         "flac",
         6,
         {96000, 48000, 44100, 8000},
         16,
         0},
        {"PCM of 16 bits",
         "pcm_s16le",
         kCodecTypePcm,
         FF_PROFILE_UNKNOWN,
         "pcm_s16le",
         6,
         {96000, 48000, 44100, 8000},
         16,
         0},
});

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
    const auto add = [&](const char* name, const std::string& value) {
        out.options.insert(out.options.end(), {name, value});
    };
    Stream::Audio& audio = out.stream.audio;
    if (rate > 0) {
        audio.sampleRate = rate;
        add("-ar", std::to_string(rate));
        out.words += ", " + std::to_string(rate) + " Hz";
    }
    if (isFewer) {
        audio.channelCount = channels;
        add("-ac", std::to_string(channels));
        out.words += ", " + std::to_string(channels) + (channels == 1 ? " channel" : " channels");
    }
    if (audio.channelCount == 0 || audio.channelCount > target.channels) return {};
    if (std::ranges::count(target.rates, audio.sampleRate) == 0) return {};
    out.stream.bitRate = target.kilobitsAChannel * audio.channelCount * 1000;
    if (out.stream.bitRate > 0) add("-b", std::to_string(out.stream.bitRate));
    if (target.type == kCodecTypeFlac) add("-sample_fmt", "s16");
    out.stream.codec = target.codec;
    out.stream.codecType = target.type;
    out.stream.profile = target.profile;
    out.stream.level.reset();
    audio.bitsPerSample = target.bitsPerSample;
    return out;
}

// Below the decoder's limit, where it has one: what an encoder is asked for comes out roughly.
void limitBitRate(const std::string& decoder, const PretendedDevice& device, Target& target) {
    const auto& all = device.description.decoders;
    const auto found = std::ranges::find(all, decoder, &Decoder::name);
    if (target.stream.kind != Kind::kVideo || found == all.end() || !found->limits.bitRate) return;
    constexpr int64_t kEnough = 40'000'000;
    const int64_t most = found->limits.bitRate->to / 5 * 4;
    if (most >= kEnough) return;
    target.options.insert(target.options.end(),
                          {"-maxrate", std::to_string(most), "-bufsize", std::to_string(most / 2)});
}

bool takes(const PretendedDevice& device, Target& target) {
    constexpr bool kHasWholeFrames = true;
    const TrackFacts facts = factsOf(target.stream, {});
    const Verdict verdict = judge(target.stream, kHasWholeFrames, facts, {}, device);
    if (!plays(verdict.play)) return false;
    limitBitRate(verdict.decoder, device, target);
    return true;
}

// Those of the stream's own codec first.
template <typename List>
std::vector<typename List::value_type> sorted(const List& targets, const Stream& stream) {
    std::vector<typename List::value_type> all(targets.begin(), targets.end());
    std::ranges::stable_partition(all, [&](const auto& target) {
        return static_cast<uint32_t>(target.type) == stream.codecType;
    });
    return all;
}

}  // namespace

std::optional<Target> findTarget(const Stream& stream, const PretendedDevice& device,
                                 const IsKept& isKept) {
    // The first of two changes is the dearer one.
    const auto search = [&](const auto& targets, const auto& dear, const auto& cheap,
                            const auto& make) -> std::optional<Target> {
        for (const auto& first : dear) {
            for (const auto& second : cheap) {
                for (const auto& each : sorted(targets, stream)) {
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
