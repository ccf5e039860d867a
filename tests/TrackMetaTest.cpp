#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "support/Platform.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/TrackInfo.h"

namespace {

using android::MediaExtractorHelper;
using android::sp;
using android::TrackInfo;
using test::Format;
using test::Line;

// Container parsers are compiled apart from this library.
static_assert(offsetof(TrackInfo, codecType) == 4);
static_assert(offsetof(TrackInfo, video.width) == 8);
static_assert(offsetof(TrackInfo, video.height) == 12);
static_assert(offsetof(TrackInfo, audio.bitRate) == 20);
static_assert(offsetof(TrackInfo, audio.blockAlign) == 24);
static_assert(offsetof(TrackInfo, audio.language) == 32);
static_assert(offsetof(TrackInfo, text.textLanguage) == 24);
static_assert(sizeof(TrackInfo) == 56 && std::is_trivially_copyable_v<TrackInfo>);
static_assert(std::is_aggregate_v<TrackInfo> && std::is_standard_layout_v<TrackInfo>);
static_assert(sizeof(MediaExtractorHelper) == sizeof(android::RefBase) + sizeof(void*));

const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

std::string described(TrackInfo info, bool useArbitraryMode = false) {
    const Format format;
    EXPECT_EQ(helper->setTrackMeta(&info, format.get(), useArbitraryMode), 0);
    return format.text();
}

TrackInfo track(uint32_t type, uint32_t codec) {
    TrackInfo info;
    info.trackType = type;
    info.codecType = codec;
    return info;
}

TEST(TrackMeta, ANewRecordIsZeroFromEndToEnd) {
    alignas(TrackInfo) char memory[sizeof(TrackInfo)];
    for (const bool listed : {false, true}) {
        std::memset(memory, 0x5A, sizeof(memory));
        listed ? new (memory) TrackInfo{} : new (memory) TrackInfo;
        EXPECT_EQ(std::string(memory, sizeof(memory)), std::string(sizeof(memory), 0)) << listed;
    }
}

TEST(TrackMeta, Video) {
    TrackInfo info = track(android::kTrackTypeVideo, 104);
    info.video = {
            .width = 640, .height = 360, .bitRate = 900000, .frameRate = 25, .hasSyncFrame = 7};
    const std::string head =
            "max-input-size: int32(1880064), width: int32(640), height: int32(360), "
            "stride: int32(640), slice-height: int32(360), bitrate: int32(900000)";
    EXPECT_EQ(described(info), head + ", exist-sync-frame: int32(1), frame-rate: int32(25), "
                                      "mime: string(video/avc)");
    info.video.frameRate = 0;
    info.video.hasSyncFrame = 0;
    EXPECT_EQ(described(info), head + ", mime: string(video/avc)");
    info.codecType = 102;
    EXPECT_EQ(described(info, true),
              head + ", mime: string(video/mp4v-es), use-arbitrary-mode: int32(1)");
}

std::string audioText(const char* csd0, const char* width, int wma, const char* csd12,
                      const char* language, const char* mime) {
    return std::string(
                   "max-input-size: int32(1048576), real-sample-rate: int32(48000), "
                   "real-sample-bits: ") +
           "int32(" + width + "), sample-rate: int32(48000), channel-count: int32(2), " +
           "bitrate: int32(16909060)" + csd0 +
           (std::strcmp(width, "0") == 0
                    ? ""
                    : std::string(", bits-per-sample: int32(") + width + "), Sample-Bits: int32(" +
                              width + "), pcm-encoding: int32(" +
                              (std::strcmp(mime, "audio/raw") == 0 && std::strcmp(width, "8") == 0
                                       ? "3)"
                                       : "2)")) +
           ", wma-bits-per-sample: int32(" + std::to_string(wma) +
           "), wma-block-align: int32(65535), wma-vir-pkt-size: int32(65535)" + csd12 +
           ", language: string(" + language + "), mime: string(" + mime + ")";
}

TEST(TrackMeta, Audio) {
    const struct {
        uint32_t codec;
        uint32_t bits;
        const char* language;
        std::string text;
    } cases[] = {
            {206, 8, "deu", audioText("", "8", 8, "", "deu", "audio/raw")},
            {206, 24, nullptr, audioText("", "24", 24, "", "und", "audio/raw")},
            {208, 8, nullptr, audioText("", "8", 8, "", "und", "audio/vorbis")},
            {208, 17, nullptr, audioText("", "17", 24, "", "und", "audio/vorbis")},
            {208, 0, nullptr, audioText("", "0", 0, "", "und", "audio/vorbis")},
            {208, 0xFFFFFFFF, nullptr, audioText("", "-1", 0, "", "und", "audio/vorbis")},
            {222, 0, nullptr,
             audioText(", csd-0: data(04030201)", "0", 0, "", "und", "audio/notsupport")},
            {228, 0, "",
             audioText("", "0", 0, ", csd-1: data(0001020304050607), csd-2: data(08090a0b0c0d0e0f)",
                       "", "audio/opus")},
    };
    for (const auto& c : cases) {
        TrackInfo info = track(android::kTrackTypeAudio, c.codec);
        info.audio.channelCount = 2;
        info.audio.sampleRate = 48000;
        info.audio.bitsPerSample = c.bits;
        info.audio.bitRate = 0x01020304;
        info.audio.blockAlign = 65535;
        info.audio.language = c.language;
        for (uint8_t i = 0; i < 8; ++i) {
            info.audio.codecDelay[i] = i;
            info.audio.seekPreRoll[i] = static_cast<uint8_t>(8 + i);
        }
        EXPECT_EQ(described(info), c.text) << c.codec;
    }
}

TEST(TrackMeta, Text) {
    const struct {
        uint32_t codec;
        TrackInfo::Text text;
        const char* keys;
    } cases[] = {
            {301,
             {0, 0, "xx", "eng"},
             ", language: string(eng), mime: string(application/x-subrip)"},
            {302, {0, 1, "xx", "eng"}, ", language: string(eng), mime: string(text/ssa)"},
            {303, {0, 0, "xx", "eng"}, ", language: string(eng), mime: string(text/ass)"},
            {303, {0, 0, "xx", nullptr}, ", mime: string(text/ass)"},
            {300, {0, 0, "xx", "eng"}, ", mime: string(audio/notsupport)"},
            {304, {0, 0, "xx", "eng"}, ", mime: string(audio/notsupport)"},
            {301, {1, 0, "fra", "eng"}, ", language: string(fra), mime: string(text/xsub)"},
            {301, {1, 0, nullptr, "eng"}, ", mime: string(text/xsub)"},
            {301, {9, 1, "fra", "eng"}, ", language: string(fra), mime: string(audio/notsupport)"},
    };
    for (const auto& c : cases) {
        const test::LogCapture log;
        TrackInfo info = track(android::kTrackTypeText, c.codec);
        info.text = c.text;
        EXPECT_EQ(described(info), std::string("max-input-size: int32(1048576)") + c.keys);
        EXPECT_TRUE(log.lines().empty());
    }
}

TEST(TrackMeta, UnknownKind) {
    for (const uint32_t type : {0u, 4u, 0xFFFFFFFEu}) {
        const test::LogCapture log;
        EXPECT_EQ(described(track(type, 104)), "mime: string(audio/notsupport)");
        const std::vector<Line> expected = {
                {6, "Function setTrackMeta line 1233 : Failed with error ffffffea \n"},
                {6, "Track type : " + std::to_string(static_cast<int32_t>(type))}};
        EXPECT_EQ(log.lines(), expected);
    }
}

TEST(TrackMeta, FileKinds) {
    const char* const mimes[] = {"video/avi",   "video/x-matroska", "video/x-ms-asf", "video/mp4",
                                 "audio/ac3",   "audio/dts",        "video/x-flv",    "video/ogg",
                                 "audio/qcelp", "video/rm"};
    for (int i = 0; i < 10; ++i) {
        const Format format;
        EXPECT_EQ(helper->setFileMeta(300 + i, format.get()), 0);
        EXPECT_EQ(format.text(), std::string("mime: string(") + mimes[i] + ")");
    }
    for (const int kind : {299, 310, -1}) {
        const Format format;
        EXPECT_EQ(helper->setFileMeta(kind, format.get()), -10000);
        EXPECT_EQ(format.text(), "");
    }
}

TEST(TrackMeta, TimesAndLargestSample) {
    const Format format;
    EXPECT_EQ(helper->getMaxInputBuffer(format.get()), 0);
    AMediaFormat_setInt32(format.get(), "max-input-size", 4711);
    EXPECT_EQ(helper->getMaxInputBuffer(format.get()), 4711);
    EXPECT_EQ(helper->setDuration(-1, format.get()), 0);
    EXPECT_EQ(helper->setCurrentTime(int64_t{1} << 40, format.get()), 0);
    EXPECT_EQ(helper->setEndTime(3, format.get()), 0);
    EXPECT_EQ(format.int64("durationUs"), -1);
    EXPECT_EQ(format.int64("timeUs"), int64_t{1} << 40);
    EXPECT_EQ(format.int64("end-of-text"), 3);
}

}  // namespace
