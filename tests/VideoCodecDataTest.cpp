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
    // Width and height, little-endian, and a profile byte.
    const auto vc1 = [&data](const std::string& tail) {
        return "vc1-sequence-header: " + data + tail + "), use-arbitrary-mode: int32(0)";
    };
    switch (code) {
        case 101:
        case 102:
        case 119:
        case 120:
        case 123:
        case 124:
        case 125:
        case 126:
            // ES_Descriptor, DecoderConfigDescriptor of objectTypeIndication 20,
            // DecoderSpecificInfo
            return "esds: data(0319000000041420" + std::string(24, '0') + "05050142001eff)";
        case 104: return "csd-avc: " + data + ")";
        case 105:
        case 110: return vc1("00050000d002000002");
        case 106:
        case 107: return vc1("02");
        case 108: return vc1("00050000d002000000");
        case 109: return vc1("00050000d002000001");
        case 121: return "theora-codec-specific-data: " + data + ")";
        case 129: return "5 \"no sps found !!!\"\ncsd-hevc: " + data + ")";
        default: return "";
    }
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
        EXPECT_EQ(test::fatalText([&] {
                      helper->setVC1SeqHeader(data.data(), &tooLarge, &info, format.get());
                  }),
                  isVc1 ? "Helper/MediaExtractorHelper size arithmetic overflow" : "")
                << code;
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

// ITU-T H.264 7.3.2.1.1 and H.265 7.3.2.2.1, with the right offset of the crop or window given.
Bytes avcSps(uint32_t right) {
    test::BitWriter bits;
    bits.u(32, 0x6742001F).ue(0).ue(0).ue(2).ue(1).u(1, 0);
    return bits.ue(19).ue(14).u(3, 0b111).ue(0).ue(right).ue(0).ue(0).finish();
}
Bytes hevcSps(uint32_t right) {
    test::BitWriter bits;
    bits.u(24, 0x420101).u(48, 0x0160FFFFFFFF).u(48, 0xFFFFFFFFFF5D).ue(0).ue(1);
    bits.ue(320).ue(240).u(1, 1).ue(0).ue(right).ue(0).ue(0);
    return bits.u(32, ~0u).finish();  // the two last bytes do not count
}

// The models compare the sizes; here is when they are written.
TEST(VideoCodecData, SizeIsWrittenBeforeItIsCropped) {
    using Size = std::pair<int32_t, int32_t>;
    using android::MediaExtractorHelper;
    const struct {
        decltype(&MediaExtractorHelper::FindAVCDimensions) find;
        Bytes sps;
        Size size;
        bool isFatal;
    } cases[] = {
            {&MediaExtractorHelper::FindAVCDimensions, avcSps(2), {316, 240}, false},
            {&MediaExtractorHelper::FindAVCDimensions, avcSps(161), {320, 240}, true},
            {&MediaExtractorHelper::FindHEVCDimensions, hevcSps(2), {318, 240}, false},
            {&MediaExtractorHelper::FindHEVCDimensions, hevcSps(321), {320, 240}, true},
            {&MediaExtractorHelper::FindHEVCDimensions, {0x42, 1}, {-1, -1}, false},
            {&MediaExtractorHelper::FindHEVCDimensions, {0x42}, {-1, -1}, true},
    };
    for (const auto& [find, sps, size, isFatal] : cases) {
        const android::sp<android::ABuffer> buffer = new android::ABuffer(sps.size());
        std::ranges::copy(sps, buffer->data());
        Size found{-1, -1};
        const auto call = [&] { (*helper.*find)(buffer, &found.first, &found.second); };
        EXPECT_EQ(test::fatalText(call) != "", isFatal) << testing::PrintToString(sps);
        EXPECT_EQ(found, size) << testing::PrintToString(sps);
    }
}

}  // namespace
