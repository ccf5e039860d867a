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

TEST(VideoCodecData, Vc1SequenceHeader) {
    const std::string size = "00050000d0020000";  // 1280 and 720, little-endian
    const struct {
        uint32_t codecType;
        std::string tail;
    } cases[] = {{105, size + "02"}, {106, "02"},        {107, "02"},
                 {108, size + "00"}, {109, size + "01"}, {110, size + "02"}};
    const Bytes header = {0x4E, 0x29, 0x1A, 1};
    for (const auto& c : cases) {
        const Format format;
        android::TrackInfo info = track(c.codecType);
        size_t bytes = header.size();
        EXPECT_EQ(helper->setVC1SeqHeader(header.data(), &bytes, &info, format.get()), 0);
        EXPECT_EQ(format.text(), "vc1-sequence-header: data(4e291a01" + c.tail +
                                         "), use-arbitrary-mode: int32(0)");
        EXPECT_EQ(bytes, 4u);
    }
    for (const uint32_t other : {104u, 111u}) {
        const Format format;
        android::TrackInfo info = track(other);
        size_t bytes = header.size();
        EXPECT_EQ(helper->setVC1SeqHeader(header.data(), &bytes, &info, format.get()), 0);
        EXPECT_EQ(format.text(), "");
    }
}

TEST(VideoCodecData, EachCodecTakesItsForm) {
    const Bytes avc = {1, 0x42, 0, 0x1E, 0xFF};  // a finished record: stored as it is
    for (uint32_t code = 0; code < 320; ++code) {
        const char* key = nullptr;
        if ((code >= 101 && code <= 102) || (code >= 119 && code <= 120) ||
            (code >= 123 && code <= 126)) {
            key = "esds: data(0319000000041420";
        } else if (code == 104) {
            key = "csd-avc: data(0142001eff)";
        } else if (code >= 105 && code <= 110) {
            key = "vc1-sequence-header: data(0142001eff";
        } else if (code == 121) {
            key = "theora-codec-specific-data: data(0142001eff)";
        } else if (code == 129) {
            key = "csd-hevc: data(0142001eff)";
        }
        const Format format;
        android::TrackInfo info = track(code);
        size_t size = avc.size();
        const test::LogCapture log;
        EXPECT_EQ(helper->setVideoConfig(&info, avc.data(), size, format.get()),
                  code == 129 ? -1 : 0)
                << code;
        EXPECT_EQ(size, avc.size());
        if (key == nullptr) {
            EXPECT_EQ(format.text(), "") << code;
        } else {
            EXPECT_EQ(format.text().substr(0, std::string(key).size()), key) << code;
        }
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
