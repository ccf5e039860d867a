#include <gtest/gtest.h>

#include "Helper/csd/AvcSps.h"
#include "support/BitWriter.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using namespace android::csd;
using test::BitWriter;
using Data = test::Bytes;

// seq_parameter_set_data, ITU-T H.264 7.3.2.1.1, from log2_max_frame_num_minus4 on.
struct Picture {
    uint32_t widthInMbs = 20;
    uint32_t heightInMapUnits = 15;
    bool frameMbsOnly = true;
    bool cropping = false;
    uint32_t crop[4] = {};  // left, right, top, bottom
};

BitWriter& appendPicture(BitWriter& bits, const Picture& picture) {
    bits.ue(0).ue(2);    // log2_max_frame_num_minus4, pic_order_cnt_type
    bits.ue(1).u(1, 0);  // max_num_ref_frames, gaps_in_frame_num_value_allowed_flag
    bits.ue(picture.widthInMbs - 1).ue(picture.heightInMapUnits - 1);
    bits.u(1, picture.frameMbsOnly);
    if (!picture.frameMbsOnly) bits.u(1, 0);  // mb_adaptive_frame_field_flag
    bits.u(1, 1).u(1, picture.cropping);      // direct_8x8_inference_flag
    if (picture.cropping) {
        for (const uint32_t offset : picture.crop) bits.ue(offset);
    }
    return bits.u(1, 0);  // vui_parameters_present_flag
}

BitWriter spsHead(uint8_t profile) {
    BitWriter bits;
    bits.u(8, 0x67).u(8, profile).u(8, 0).u(8, 31).ue(0);  // header, profile, flags, level, id
    return bits;
}

// An SPS of a profile without chroma fields, or with them and the given chroma_format_idc.
Data makeSps(const Picture& picture, uint8_t profile = 66, int chroma = -1) {
    BitWriter bits = spsHead(profile);
    if (chroma >= 0) {
        bits.ue(static_cast<uint32_t>(chroma));
        if (chroma == 3) bits.u(1, 0);     // separate_colour_plane_flag
        bits.ue(0).ue(0).u(1, 0).u(1, 0);  // bit depths, bypass, seq_scaling_matrix_present_flag
    }
    return appendPicture(bits, picture).finish();
}

std::string sizeText(const Data& unit) {
    const AvcSps sps = parseAvcSps(unit);
    PictureSize size = codedSize(sps);
    if (sps.frame_cropping_flag) size = croppedSize(sps, size);
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

TEST(AvcSps, PictureSize) {
    const Picture fields{.widthInMbs = 120, .heightInMapUnits = 34, .frameMbsOnly = false};
    Picture hd{.widthInMbs = 120, .heightInMapUnits = 68, .cropping = true, .crop = {0, 0, 0, 4}};
    const Picture crop1234{.cropping = true, .crop = {1, 2, 3, 4}};
    const struct {
        Data sps;
        const char* size;
    } cases[] = {
            {makeSps({}), "320x240"},
            {makeSps(fields), "1920x1088"},
            {makeSps(hd), "1920x1080"},
            // crop units: 4:0:0 1x1, 4:2:0 2x2, 4:2:2 2x1, 4:4:4 1x1
            {makeSps(crop1234, 100, 0), "317x233"},
            {makeSps(crop1234, 100, 1), "314x226"},
            {makeSps(crop1234, 122, 2), "314x233"},
            {makeSps(crop1234, 244, 3), "317x233"},
            // 118 carries chroma fields, but they are not read: none may be written for it.
            {makeSps({}, 118), "320x240"},
            {makeSps({.cropping = true, .crop = {20, 140, 0, 120}}), "0x0"},
            {makeSps({.widthInMbs = (1u << 27) - 1}), "2147483632x240"},
            // Nothing but zero bits: one macroblock wide, one field pair high.
            {{0x67}, "16x32"},
            {{}, "16x32"},
            // num_ref_frames_in_pic_order_cnt_cycle of a hostile SPS
            {spsHead(66).ue(0).ue(1).u(1, 0).ue(0).ue(0).ue(0xFFFFFFFE).finish(), "16x32"},
    };
    for (const auto& c : cases) EXPECT_EQ(sizeText(c.sps), c.size) << testing::PrintToString(c.sps);
}

TEST(AvcSps, ImpossibleSizesAreFatal) {
    const Picture cases[] = {
            {.cropping = true, .crop = {0, 161, 0, 0}},
            {.cropping = true, .crop = {0, 0, 60, 61}},
            {.cropping = true, .crop = {0xFFFFFFFE, 2, 0, 0}},
            {.cropping = true, .crop = {0x80000000, 0, 0, 0}},
            {.widthInMbs = 1u << 27},
            {.heightInMapUnits = 1u << 27},
            {.heightInMapUnits = 1u << 26, .frameMbsOnly = false},
            {.widthInMbs = 0xFFFFFFFF},
            {.widthInMbs = 0},  // 2^32, as no code number can say
    };
    for (const Picture& picture : cases) {
        const Data sps = makeSps(picture);
        EXPECT_NE(test::fatalText([&] { sizeText(sps); }), "") << testing::PrintToString(sps);
    }
}

TEST(AvcSps, SizeIsWrittenBeforeItIsCropped) {
    const Data sps = makeSps({.cropping = true, .crop = {0, 161, 0, 0}});
    const android::sp<android::ABuffer> buffer = new android::ABuffer(sps.size());
    std::copy(sps.begin(), sps.end(), buffer->data());
    const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;
    int32_t width = -1, height = -1;
    EXPECT_NE(test::fatalText([&] { helper->FindAVCDimensions(buffer, &width, &height); }), "");
    EXPECT_EQ(std::pair(width, height), std::pair(320, 240));
}

}  // namespace
