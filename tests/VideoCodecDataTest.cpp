#include <set>

#include "support/BitWriter.h"
#include "support/Helper.h"
#include "zrcodecparser/TrackInfo.h"

namespace {

using test::Bytes;
using test::Format;
using test::helper;

android::TrackInfo track(uint32_t codecType) {
    android::TrackInfo info{};
    info.trackType = android::kTrackTypeVideo;
    info.codecType = codecType;
    info.video = {.width = 1280, .height = 720, .bitRate = 1, .frameRate = 1, .hasSyncFrame = 1};
    return info;
}

// What is stored of a finished AVC or HEVC record, and of any other five bytes.
std::string expected(uint32_t code) {
    const std::string data = "data(0142001eff";
    if (code == 104) return "csd-avc: " + data + ")";
    if (code == 121) return "theora-codec-specific-data: " + data + ")";
    if (code == 129) return "5 \"no sps found !!!\"\ncsd-hevc: " + data + ")";
    if (code >= 105 && code <= 110) {  // width and height, little-endian, and a profile byte
        const char* const tails[] = {
                "00050000d002000002", "02", "02", "00050000d002000000", "00050000d002000001",
                "00050000d002000002"};
        return "vc1-sequence-header: " + data + tails[code - 105] +
               "), use-arbitrary-mode: int32(0)";
    }
    // ES_Descriptor, DecoderConfigDescriptor of objectTypeIndication 20, DecoderSpecificInfo
    const std::set<uint32_t> mpeg{101, 102, 119, 120, 123, 124, 125, 126};
    if (!mpeg.contains(code)) return "";
    return "esds: data(0319000000041420" + std::string(24, '0') + "05050142001eff)";
}

TEST(VideoCodecData, EachCodecTakesItsForm) {
    const Bytes data = {1, 0x42, 0, 0x1E, 0xFF};
    for (uint32_t code = 0; code < 320; ++code) {
        const Format format, direct;
        android::TrackInfo info = track(code);
        size_t size = data.size(), tooLarge = SIZE_MAX;
        const auto configure = [&] {
            EXPECT_EQ(helper->setVideoConfig(&info, data.data(), size, format.get()),
                      code == 129 ? -1 : 0);
        };
        EXPECT_EQ(test::trace(format, configure), expected(code)) << code;
        const bool isVc1 = code >= 105 && code <= 110;
        EXPECT_EQ(helper->setVC1SeqHeader(data.data(), &size, &info, direct.get()), 0);
        EXPECT_EQ(direct.text(), isVc1 ? expected(code) : "") << code;
        EXPECT_EQ(size, data.size());
        const auto overflow = [&] {
            helper->setVC1SeqHeader(data.data(), &tooLarge, &info, format.get());
        };
        EXPECT_EQ(test::fatalText(overflow),
                  isVc1 ? "Helper/MediaExtractorHelper size arithmetic overflow" : "")
                << code;
    }
}

// The models compare sizes; here is what is written of one that cannot be cropped.
TEST(VideoCodecData, SizeIsWrittenBeforeItIsCropped) {
    test::BitWriter avc, hevc;
    avc.u(32, 0x6742001F).ue(0).ue(0).ue(2).ue(1).u(1, 0);             // ITU-T H.264 7.3.2.1.1
    avc.ue(19).ue(14).u(3, 0b111).ue(0).ue(161).ue(0).ue(0);           // crop right of 322
    hevc.u(24, 0x420101).u(48, 0x0160FFFFFFFF).u(48, 0xFFFFFFFFFF5D);  // ITU-T H.265 7.3.2.2.1
    hevc.ue(0).ue(1).ue(320).ue(240).u(1, 1).ue(0).ue(321).ue(0).ue(0).u(24, ~0u);
    using android::MediaExtractorHelper;
    using Size = std::pair<int32_t, int32_t>;
    const struct {
        decltype(&MediaExtractorHelper::FindAVCDimensions) find;
        Bytes sps;
        Size size;
    } cases[] = {
            {&MediaExtractorHelper::FindAVCDimensions, avc.finish(), {320, 240}},
            {&MediaExtractorHelper::FindHEVCDimensions, hevc.finish(), {320, 240}},
            {&MediaExtractorHelper::FindHEVCDimensions, {0x42}, {-1, -1}},
            {&MediaExtractorHelper::FindHEVCDimensions, {0x42, 1}, {-1, -1}},
    };
    for (const auto& c : cases) {
        const android::sp<android::ABuffer> buffer = new android::ABuffer(c.sps.size());
        std::ranges::copy(c.sps, buffer->data());
        Size found{-1, -1};
        const auto call = [&] { (*helper.*c.find)(buffer, &found.first, &found.second); };
        EXPECT_EQ(test::fatalText(call) == "", c.sps.size() == 2) << testing::PrintToString(c.sps);
        EXPECT_EQ(found, c.size) << testing::PrintToString(c.sps);
    }
}

}  // namespace
