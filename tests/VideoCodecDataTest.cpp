#include <gtest/gtest.h>

#include "support/Platform.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/TrackInfo.h"

namespace {

using android::MediaExtractorHelper;
using android::sp;
using test::Bytes;
using test::Format;

const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

android::TrackInfo track(uint32_t codecType) {
    android::TrackInfo info{};
    info.trackType = android::kTrackTypeVideo;
    info.codecType = codecType;
    info.video = {.width = 1280, .height = 720, .bitRate = 1, .frameRate = 1, .hasSyncFrame = 1};
    return info;
}

std::string vc1Tail(uint32_t codecType) {
    const std::string size = "00050000d0020000";  // 1280 and 720, little-endian
    switch (codecType) {
        case 106:
        case 107: return "02";
        case 108: return size + "00";
        case 109: return size + "01";
        default: return size + "02";
    }
}

// What is stored of a finished AVC or HEVC record, and of any other five bytes.
std::string expected(uint32_t code) {
    const std::string data = "data(0142001eff";
    if (code == 104) return "csd-avc: " + data + ")";
    if (code >= 105 && code <= 110) {
        return "vc1-sequence-header: " + data + vc1Tail(code) + "), use-arbitrary-mode: int32(0)";
    }
    if (code == 121) return "theora-codec-specific-data: " + data + ")";
    if (code == 129) return "csd-hevc: " + data + ")";
    for (const uint32_t mpeg : {101u, 102u, 119u, 120u, 123u, 124u, 125u, 126u}) {
        // ES_Descriptor, DecoderConfigDescriptor of objectTypeIndication 20, DecoderSpecificInfo
        if (code == mpeg)
            return "esds: data(0319000000041420" + std::string(24, '0') + "05050142001eff)";
    }
    return "";
}

TEST(VideoCodecData, EachCodecTakesItsForm) {
    const Bytes data = {1, 0x42, 0, 0x1E, 0xFF};
    for (uint32_t code = 0; code < 320; ++code) {
        const Format format, direct;
        android::TrackInfo info = track(code);
        size_t size = data.size();
        const test::LogCapture log;
        EXPECT_EQ(helper->setVideoConfig(&info, data.data(), size, format.get()),
                  code == 129 ? -1 : 0)
                << code;
        EXPECT_EQ(format.text(), expected(code)) << code;
        EXPECT_EQ(helper->setVC1SeqHeader(data.data(), &size, &info, direct.get()), 0);
        EXPECT_EQ(direct.text(), code >= 105 && code <= 110 ? expected(code) : "") << code;
        EXPECT_EQ(size, data.size());
    }
}

TEST(VideoCodecData, StatusOfAvcIsPassedOn) {
    const Format format;
    android::TrackInfo info = track(104);
    const Bytes spsAlone = {0, 0, 1, 0x67, 0x42, 0, 0x1E};
    size_t size = spsAlone.size();
    EXPECT_EQ(helper->setVideoConfig(&info, spsAlone.data(), size, format.get()), -1);
    EXPECT_EQ(format.text(), "");
}

}  // namespace
