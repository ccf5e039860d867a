#include <cstddef>
#include <cstring>

#include "support/Helper.h"
#include "zrcodecparser/TrackInfo.h"

namespace {

using android::TrackInfo;
using test::Format;
using test::helper;

// Container parsers are compiled apart from this library.
static_assert(offsetof(TrackInfo, codecType) == 4 && offsetof(TrackInfo, video.height) == 12);
static_assert(offsetof(TrackInfo, audio.bitRate) == 20 &&
              offsetof(TrackInfo, audio.language) == 32);
static_assert(offsetof(TrackInfo, text.textLanguage) == 24);
static_assert(sizeof(TrackInfo) == 56 && std::is_trivially_copyable_v<TrackInfo>);
static_assert(std::is_aggregate_v<TrackInfo> && std::is_standard_layout_v<TrackInfo>);
static_assert(sizeof(android::MediaExtractorHelper) == sizeof(android::RefBase) + sizeof(void*));

// What setTrackMeta stores and logs.
std::string described(TrackInfo info, bool useArbitraryMode = false) {
    const Format format;
    return test::trace(format, [&] {
        EXPECT_EQ(helper->setTrackMeta(&info, format.get(), useArbitraryMode), 0);
    });
}

TrackInfo track(uint32_t type, uint32_t codec) {
    return {.trackType = type, .codecType = codec, .zeros = {}};
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
    info.video = {640, 360, 900000, 25, 7};
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

TrackInfo audioTrack(uint32_t codec, uint32_t bits, const char* language) {
    TrackInfo info = track(android::kTrackTypeAudio, codec);
    info.audio = {2, 48000, bits, 0x01020304, 65535, language, {0, 1, 2, 3, 4, 5, 6, 7}, {8, 9}};
    return info;
}

TEST(TrackMeta, Audio) {
    EXPECT_EQ(described(audioTrack(206, 8, "deu")),
              "max-input-size: int32(1048576), real-sample-rate: int32(48000), "
              "real-sample-bits: int32(8), sample-rate: int32(48000), channel-count: int32(2), "
              "bitrate: int32(16909060), "
              "bits-per-sample: int32(8), Sample-Bits: int32(8), pcm-encoding: int32(3), "
              "wma-bits-per-sample: int32(8), wma-block-align: int32(65535), "
              "wma-vir-pkt-size: int32(65535), language: string(deu), mime: string(audio/raw)");
    EXPECT_EQ(described(audioTrack(228, 0, "")),
              "max-input-size: int32(1048576), real-sample-rate: int32(48000), "
              "real-sample-bits: int32(0), sample-rate: int32(48000), channel-count: int32(2), "
              "bitrate: int32(16909060), "
              "wma-bits-per-sample: int32(0), wma-block-align: int32(65535), "
              "wma-vir-pkt-size: int32(65535), csd-1: data(0001020304050607), "
              "csd-2: data(0809000000000000), language: string(), mime: string(audio/opus)");
    // The caller's word on how samples are cut counts for video tracks only.
    for (const bool mode : {false, true}) {
        const std::string video = described(audioTrack(102, 0, "x"), mode);
        EXPECT_TRUE(video.ends_with("mime: string(video/mp4v-es), use-arbitrary-mode: int32(0)"));
    }
    const struct {
        uint32_t codec, bits;
        const char* keys;
    } widths[] = {
            {206, 4, "4), pcm-encoding: int32(2), wma-bits-per-sample: int32(8), wma-block"},
            {206, 24, "24), pcm-encoding: int32(2), wma-bits-per-sample: int32(24), wma-block"},
            {208, 8, "8), pcm-encoding: int32(2), wma-bits-per-sample: int32(8), wma-block"},
            {208, 17, "17), pcm-encoding: int32(2), wma-bits-per-sample: int32(24), wma-block"},
            {208, ~0u, "-1), pcm-encoding: int32(2), wma-bits-per-sample: int32(0), wma-block"},
            {222, 0, "16909060), csd-0: data(04030201), wma-bits-per-sample: int32(0), wma-block"},
    };
    for (const auto& [codec, bits, keys] : widths) {
        const std::string text = described(audioTrack(codec, bits, nullptr));
        EXPECT_NE(text.find(keys), std::string::npos) << text;
        EXPECT_NE(text.find("language: string(und)"), std::string::npos) << text;
    }
}

TEST(TrackMeta, Text) {
    const struct {
        uint32_t codec;
        TrackInfo::Text text;
        const char* keys;
    } cases[] = {
            {301, {0, 0, "xx", "e"}, ", language: string(e), mime: string(application/x-subrip)"},
            {302, {0, 1, "xx", "eng"}, ", language: string(eng), mime: string(text/ssa)"},
            {303, {0, 0, "xx", nullptr}, ", mime: string(text/ass)"},
            {300, {0, 0, "xx", "eng"}, ", mime: string(audio/notsupport)"},
            {304, {0, 0, "xx", "eng"}, ", mime: string(audio/notsupport)"},
            {301, {1, 0, "fra", "eng"}, ", language: string(fra), mime: string(text/xsub)"},
            {301, {1, 0, nullptr, "eng"}, ", mime: string(text/xsub)"},
            {301, {9, 1, "fra", "eng"}, ", language: string(fra), mime: string(audio/notsupport)"},
    };
    for (const auto& c : cases) {
        TrackInfo info = track(android::kTrackTypeText, c.codec);
        info.text = c.text;
        EXPECT_EQ(described(info), std::string("max-input-size: int32(1048576)") + c.keys);
    }
}

TEST(TrackMeta, UnknownKind) {
    const std::string head =
            "6 \"Function setTrackMeta line 1233 : Failed with error ffffffea \n\"\n"
            "6 \"Track type : ";
    for (const int type : {0, 4, -2}) {
        EXPECT_EQ(described(track(static_cast<uint32_t>(type), 104)),
                  head + std::to_string(type) + "\"\nmime: string(audio/notsupport)");
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
