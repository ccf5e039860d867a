#include "support/Helper.h"

namespace {

using test::Bytes;
using test::helper;

TEST(KeyFrame, Samples) {
    const char* const ptype = "5 \"[PTYPE]H263 StartCode and NOT Iframe\"";
    const char* const opptype = "5 \"[PLUSPTYPE with OPPTYPE]H263 StartCode and NOT Iframe\"";
    const char* const plusPtype = "5 \"[PLUSPTYPE]H263 StartCode and NOT Iframe\"";
    const struct {
        int codecType;
        Bytes sample;
        bool isKey;
        const char* trace = "";
    } cases[] = {
            // MPEG-4: vop_coding_type of the first VOP, which a group of VOPs may precede
            {102, {0, 0, 1, 0xB6, 0x10}, true},
            {102, {0, 0, 1, 0xB6, 0x3F}, true},
            {102, {0, 0, 1, 0xB6, 0x40}, false},
            {102, {0, 0, 1, 0xB3, 0, 0x10, 7, 0, 0, 1, 0xB6, 0}, true},
            {102, {0, 0, 1, 0xB6, 0x50, 0, 0, 1, 0xB6, 0x10}, false},
            {102, {0, 0, 0, 0, 1, 0xB6, 0x10}, true},
            {102, {0, 0, 1, 0xB6}, false},
            {102, {0, 0, 1, 0xB3, 0x10}, false},
            // H.264: any IDR slice whose header byte is not the last byte
            {104, {0, 0, 0, 1, 9, 0xF0, 0, 0, 0, 1, 0x65, 0x88}, true},
            {104, {0, 0, 1, 0x25, 0}, true},
            {104, {0, 0, 1, 0x41, 0x9A}, false},
            {104, {0, 0, 1, 0x65}, false},
            {104, {0, 0, 1, 0x41, 0, 0, 1, 0x65}, false},
            {104, {0, 0, 2, 0x65, 0}, false},
            // H.263: PTYPE; PLUSPTYPE with OPPTYPE; PLUSPTYPE without
            {103, {0, 0, 0x80, 2, 0x09}, true},
            {103, {0, 0, 0x83, 2, 0x0A}, false, ptype},
            {103, {0, 0, 0x80, 2, 0x1C, 0x80, 0xFF, 0x03}, true},
            {103, {0, 0, 0x80, 2, 0x1C, 0x80, 0xFF, 0x04}, false, opptype},
            {103, {0, 0, 0x80, 2, 0x1C, 0x80, 0xFF, 0x10}, false, opptype},
            {103, {0, 0, 0x80, 2, 0x1E, 0x0F, 0, 0x04}, true},
            {103, {0, 0, 0x80, 2, 0x1C, 0x10}, false, plusPtype},
            {103, {0, 0, 0x80, 2, 0x1C, 0x40}, false, plusPtype},
            {103, {0, 0, 0x80, 2, 0x1D, 0x40}, false, plusPtype},
            {103, {0, 0, 0x80}, true},  // what is missing is zero
            {103, {0, 0, 0x84, 2, 0x08}, false},
            {103, {0, 1, 0x80, 2, 0x08}, false},
            {103, {0}, false},
    };
    for (const auto& c : cases) {
        const auto look = [&c] {
            EXPECT_EQ(helper->isKeyFrame(c.sample.data(), c.sample.size(), c.codecType), c.isKey);
        };
        EXPECT_EQ(test::trace({}, look), c.trace)
                << c.codecType << testing::PrintToString(c.sample);
    }
}

TEST(KeyFrame, ByCodec) {
    // A key frame by each of the three rules at once is impossible; MPEG-4 and H.264 can be joined.
    const Bytes sample = {0, 0, 1, 0xB6, 0x10, 0, 0, 1, 0x65, 0};
    for (int code = -1; code < 240; ++code) {
        const bool byMpeg4 = code == 102 || code == 120 || (code >= 123 && code <= 126);
        EXPECT_EQ(helper->isKeyFrame(sample.data(), sample.size(), code), byMpeg4 || code == 104)
                << code;
        EXPECT_FALSE(helper->isKeyFrame(nullptr, 5, code)) << code;
        EXPECT_FALSE(helper->isKeyFrame(sample.data(), 0, code)) << code;
    }
}

}  // namespace
