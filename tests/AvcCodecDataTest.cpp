#include <gtest/gtest.h>

#include "support/BitWriter.h"
#include "support/Platform.h"
#include "support/Units.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::MediaExtractorHelper;
using android::sp;
using test::BitWriter;
using test::Bytes;
using test::Format;
using test::kStartCode;
using test::length16;
using test::Line;
using test::operator+;

const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

const Bytes kPps = {0x68, 0xEB, 0xE3, 0xCB};

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
Bytes makeSps(const Picture& picture, uint8_t profile = 66, int chroma = -1) {
    BitWriter bits = spsHead(profile);
    if (chroma >= 0) {
        bits.ue(static_cast<uint32_t>(chroma));
        if (chroma == 3) bits.u(1, 0);     // separate_colour_plane_flag
        bits.ue(0).ue(0).u(1, 0).u(1, 0);  // bit depths, bypass, seq_scaling_matrix_present_flag
    }
    return appendPicture(bits, picture).finish();
}

std::string sizeText(const Bytes& sps) {
    const sp<android::ABuffer> buffer = new android::ABuffer(sps.size());
    std::copy(sps.begin(), sps.end(), buffer->data());
    int32_t width = -1;
    int32_t height = -1;
    helper->FindAVCDimensions(buffer, &width, &height);
    return std::to_string(width) + "x" + std::to_string(height);
}

int32_t store(const Bytes& data, const Format& format) {
    size_t size = data.size();
    const int32_t status = helper->setAVCCSeqHeader(data.data(), size, nullptr, format.get());
    EXPECT_EQ(size, data.size());
    return status;
}

TEST(AvcDimensions, Table) {
    const struct {
        Bytes sps;
        const char* size;
    } cases[] = {
            {makeSps({}), "320x240"},
            {makeSps({.widthInMbs = 120, .heightInMapUnits = 34, .frameMbsOnly = false}),
             "1920x1088"},
            {makeSps({.widthInMbs = 120,
                      .heightInMapUnits = 68,
                      .cropping = true,
                      .crop = {0, 0, 0, 4}}),
             "1920x1080"},
            {makeSps({.widthInMbs = 120,
                      .heightInMapUnits = 34,
                      .frameMbsOnly = false,
                      .cropping = true,
                      .crop = {0, 0, 0, 2}}),
             "1920x1080"},
            // crop units: 4:0:0 1x1, 4:2:0 2x2, 4:2:2 2x1, 4:4:4 1x1
            {makeSps({.cropping = true, .crop = {1, 2, 3, 4}}, 100, 0), "317x233"},
            {makeSps({.cropping = true, .crop = {1, 2, 3, 4}}, 100, 1), "314x226"},
            {makeSps({.cropping = true, .crop = {1, 2, 3, 4}}, 122, 2), "314x233"},
            {makeSps({.cropping = true, .crop = {1, 2, 3, 4}}, 244, 3), "317x233"},
            // 118 carries chroma fields, but they are not read: none may be written for it.
            {makeSps({}, 118), "320x240"},
            {makeSps({.cropping = true, .crop = {20, 140, 0, 120}}), "0x0"},
            // Nothing but zero bits: one macroblock wide, one field pair high.
            {{0x67}, "16x32"},
            {{}, "16x32"},
    };
    for (const auto& c : cases) {
        const test::LogCapture log;
        EXPECT_EQ(sizeText(c.sps), c.size) << testing::PrintToString(c.sps);
        EXPECT_TRUE(log.lines().empty());
    }
}

TEST(AvcDimensions, ScalingListsAreReadUnsigned) {
    // delta_scale: a code number of 248 leads to nextScale 0 (8 + 248 + 256) and ends the list; as
    // se(v) it would be -124 and the list would go on.
    BitWriter bits = spsHead(100);
    bits.ue(1).ue(0).ue(0).u(1, 0).u(1, 1);
    bits.u(1, 1).ue(248);  // a list that ends at once
    bits.u(1, 1);          // a list of 16 entries
    for (int i = 0; i < 16; ++i) bits.ue(0);
    bits.u(6, 0);  // the other six lists are absent
    const test::LogCapture log;
    EXPECT_EQ(sizeText(appendPicture(bits, {}).finish()), "320x240");
    EXPECT_EQ(log.lines(), (std::vector<Line>{{5, "seq_scaling_matrix_present_flag != 0u"}}));
}

TEST(AvcDimensions, HostileCycleCountEnds) {
    BitWriter bits = spsHead(66);
    bits.ue(0).ue(1).u(1, 0).ue(0).ue(0).ue(0xFFFFFFFE);
    EXPECT_EQ(sizeText(bits.finish()), "16x32");
}

TEST(AvcDimensions, ImpossibleSizesAreFatal) {
    const Bytes cases[] = {
            makeSps({.cropping = true, .crop = {0, 161, 0, 0}}),
            makeSps({.cropping = true, .crop = {0, 0, 60, 61}}),
            makeSps({.cropping = true, .crop = {0xFFFFFFFE, 2, 0, 0}}),
            makeSps({.cropping = true, .crop = {0x80000000, 0, 0, 0}}),
            makeSps({.widthInMbs = 1u << 27}),
            makeSps({.heightInMapUnits = 1u << 27}),
            makeSps({.heightInMapUnits = 1u << 26, .frameMbsOnly = false}),
            makeSps({.widthInMbs = 0xFFFFFFFF}),
    };
    for (const Bytes& sps : cases) {
        EXPECT_NE(test::fatalText([&] { sizeText(sps); }), "") << testing::PrintToString(sps);
    }
    EXPECT_EQ(sizeText(makeSps({.widthInMbs = (1u << 27) - 1})), "2147483632x240");
}

TEST(AvcRecord, FromAnnexB) {
    const Bytes sps = makeSps({});
    const Format format;
    const test::LogCapture log;
    EXPECT_EQ(store(kStartCode + sps + kStartCode + kPps, format), 0);

    Bytes record = {1, 66, 0, 31, 0xFD, 0xE1};
    record = record + length16(sps.size()) + sps + Bytes{1} + length16(kPps.size()) + kPps;
    EXPECT_EQ(format.buffer("csd-avc"), record);
    EXPECT_EQ(
            format.text().substr(format.text().find("), ") + 3),
            "width: int32(320), height: int32(240), stride: int32(320), slice-height: int32(240)");
    EXPECT_EQ(log.lines(),
              (std::vector<Line>{{4, "found AVC codec config (320 x 240, 66-profile level 3.1)"}}));
}

TEST(AvcRecord, FromLengthPrefixedForm) {
    const Bytes sps = makeSps({});
    const struct {
        Bytes tail;  // after the SPS
        Bytes pps;   // in the record
    } cases[] = {
            {length16(4) + kPps, kPps},
            {length16(6) + kPps, kPps + Bytes{0, 0}},  // trusted: what is missing is zero
            {length16(2) + kPps, {0x68, 0xEB}},
            {length16(0), {}},
    };
    for (const auto& c : cases) {
        const Format format;
        EXPECT_EQ(store(length16(sps.size()) + sps + c.tail, format), 0);
        const Bytes record = Bytes{1, 66, 0, 31, 0xFD, 0xE1} + length16(sps.size()) + sps +
                             Bytes{1} + length16(c.pps.size()) + c.pps;
        EXPECT_EQ(format.buffer("csd-avc"), record);
        EXPECT_EQ(format.int32("slice-height"), 240);
    }
}

TEST(AvcRecord, ShortSpsHasZerosInTheCopiedFields) {
    const Format format;
    EXPECT_EQ(store({0, 0, 1, 0x67, 0x42, 0, 0, 1, 0x68, 0xEE}, format), 0);
    EXPECT_EQ(format.buffer("csd-avc"),
              (Bytes{1, 0x42, 0, 0, 0xFD, 0xE1, 0, 2, 0x67, 0x42, 1, 0, 2, 0x68, 0xEE}));
}

TEST(AvcRecord, AnythingElseIsStoredAsItIs) {
    const Bytes cases[] = {
            {1, 0x64, 0, 0x1F, 0xFF, 0xE1, 0, 4, 0x67, 0x64, 0, 0x1F, 1, 0, 1, 0x68},
            length16(3) + Bytes{0x68, 0x42, 0, 0, 0},  // no SPS header
            length16(4) + Bytes{0x67, 0x42, 0, 0, 0},  // no room for a PPS length
            {0, 0, 0, 1},
    };
    for (const Bytes& data : cases) {
        const Format format;
        const test::LogCapture log;
        EXPECT_EQ(store(data, format), 0);
        EXPECT_EQ(format.buffer("csd-avc"), data);
        EXPECT_EQ(host::formatEntries(format.get()).size(), 1u);
        EXPECT_TRUE(log.lines().empty());
    }
}

TEST(AvcRecord, Failures) {
    const Bytes longSps = makeSps({}) + Bytes(65536, 0xFF);
    const struct {
        Bytes data;
        std::vector<Line> lines;
    } cases[] = {
            {{}, {{6, "setAVCCSeqHeader size <= 0"}}},
            {kStartCode + makeSps({}), {}},
            {kStartCode + longSps + kStartCode + kPps, {}},
            {kStartCode + makeSps({}) + kStartCode + kPps + Bytes(65536, 0xFF), {}},
    };
    for (const auto& c : cases) {
        const Format format;
        const test::LogCapture log;
        EXPECT_EQ(store(c.data, format), -1);
        EXPECT_EQ(format.text(), "");
        EXPECT_EQ(log.lines(), c.lines);
    }
}

TEST(AvcRecord, LessThanTwoLengthsIsFatal) {
    for (const Bytes& data : {Bytes{1}, Bytes{0, 0}, Bytes{0, 0, 0x67}}) {
        const Format format;
        EXPECT_NE(test::fatalText([&] { store(data, format); }), "");
        EXPECT_EQ(format.text(), "");
    }
}

}  // namespace
