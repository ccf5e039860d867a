#include <gtest/gtest.h>

#include "Helper/csd/HevcSps.h"
#include "platform/MetaData.h"
#include "support/BitWriter.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using namespace android::csd;
using android::sp;
using test::BitWriter;
using test::operator+;
using Data = test::Bytes;

const sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

// seq_parameter_set_rbsp, ITU-T H.265 7.3.2.2.1
struct Sps {
    unsigned maxSubLayersMinus1 = 0;
    unsigned subLayerFlags = 0;  // profile and level present, two bits a sub-layer
    unsigned profile = 1;
    uint32_t chroma = 1;
    uint32_t width = 1920;
    uint32_t height = 1088;
    bool window = false;
    uint32_t offsets[4] = {};  // left, right, top, bottom
    uint64_t constraints = 0x900000000000;
};

Data makeSps(const Sps& sps) {
    BitWriter bits;
    bits.u(4, 0).u(3, sps.maxSubLayersMinus1).u(1, 1);
    bits.u(2, 0).u(1, 0).u(5, sps.profile).u(32, 0x60010101).u(48, sps.constraints).u(8, 93);
    const unsigned n = sps.maxSubLayersMinus1;
    bits.u(2 * n, sps.subLayerFlags);
    if (n > 0) bits.u(2 * (8 - n), 0);
    for (unsigned i = 0; i < n; ++i) {
        const unsigned flags = sps.subLayerFlags >> (2 * (n - 1 - i)) & 3;
        if (flags & 2) bits.u(44, 0x80000000000 + i).u(44, 0xFFFFFFFFFFF);
        if (flags & 1) bits.u(8, 0xFF);
    }
    bits.ue(0).ue(sps.chroma);
    if (sps.chroma == 3) bits.u(1, 0);
    bits.ue(sps.width).ue(sps.height).u(1, sps.window);
    if (sps.window) {
        for (const uint32_t offset : sps.offsets) bits.ue(offset);
    }
    bits.ue(0).ue(0);
    // The two last bytes do not count, and nothing that is needed stands there.
    return test::withEmulationPrevention({0x42, 1}, bits.finish()) + Data{0xAA, 0xAA};
}

std::string sizeText(const Data& unit) {
    const HevcSps sps = parseHevcSps(unit);
    PictureSize size = codedSize(sps);
    if (sps.conformance_window_flag) size = croppedSize(sps, size);
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

// Without emulation prevention the height ends in the 150th bit, the 21st byte of the unit.
Data cut(size_t size) {
    Data sps = makeSps({.constraints = 0x910101010101});
    sps.resize(size);
    return sps;
}

TEST(HevcSps, PictureSize) {
    const struct {
        Data sps;
        const char* size;
    } cases[] = {
            {makeSps({}), "1920x1088"},
            // The window counts in luma samples whatever the chroma format.
            {makeSps({.window = true, .offsets = {0, 0, 0, 4}}), "1920x1084"},
            {makeSps({.chroma = 3, .window = true, .offsets = {1, 2, 3, 4}}), "1917x1081"},
            {makeSps({.window = true, .offsets = {1920, 0, 0, 1088}}), "0x0"},
            {makeSps({.maxSubLayersMinus1 = 1, .subLayerFlags = 3}), "1920x1088"},
            {makeSps({.maxSubLayersMinus1 = 6, .subLayerFlags = 0b111001001011}), "1920x1088"},
            {makeSps({.maxSubLayersMinus1 = 7, .subLayerFlags = 0x3FFF}), "1920x1088"},
            {makeSps({.width = 0x7FFFFFFF, .height = 1}), "2147483647x1"},
            // The last two bytes count as zero.
            {cut(23), "1920x1088"},
            {cut(22), "1920x1087"},
            {{0x42, 1, 0xFF, 0xFF}, "0x0"},
            {{0x42, 1, 0xFF, 0xFF, 0xFF}, "0x0"},
    };
    for (const auto& c : cases) EXPECT_EQ(sizeText(c.sps), c.size) << testing::PrintToString(c.sps);
}

TEST(HevcSps, ImpossibleSizesAreFatal) {
    const Data cases[] = {
            makeSps({.window = true, .offsets = {0, 1921, 0, 0}}),
            makeSps({.window = true, .offsets = {0, 0, 1000, 89}}),
            makeSps({.window = true, .offsets = {0xFFFFFFFE, 2, 0, 0}}),
            makeSps({.width = 0x80000000}),
            makeSps({.height = 0xFFFFFFFE}),
            {0x42},
    };
    for (const Data& sps : cases) {
        EXPECT_NE(test::fatalText([&] { sizeText(sps); }), "") << testing::PrintToString(sps);
    }
}

TEST(HevcSps, WhatIsWritten) {
    const struct {
        Data sps;
        std::pair<int32_t, int32_t> size;
        bool fatal;
    } cases[] = {
            {{0x42, 1}, {-1, -1}, false},
            {makeSps({.window = true, .offsets = {0, 0, 0, 4}}), {1920, 1084}, false},
            {makeSps({.window = true, .offsets = {0, 1921, 0, 0}}), {1920, 1088}, true},
    };
    for (const auto& c : cases) {
        const sp<android::ABuffer> buffer = new android::ABuffer(c.sps.size());
        std::copy(c.sps.begin(), c.sps.end(), buffer->data());
        std::pair<int32_t, int32_t> size{-1, -1};
        const auto find = [&] { helper->FindHEVCDimensions(buffer, &size.first, &size.second); };
        EXPECT_EQ(test::fatalText(find) != "", c.fatal);
        EXPECT_EQ(size, c.size);
    }
}

TEST(HevcRecord, ProfileNames) {
    EXPECT_STREQ(helper->HEVCProfileToString(1), "Main Profile");
    EXPECT_STREQ(helper->HEVCProfileToString(2), "Main 10 profile");
    EXPECT_STREQ(helper->HEVCProfileToString(3), "Main Still Picture profile");
    for (const uint8_t other : Data{0, 4, 33, 255}) {
        EXPECT_STREQ(helper->HEVCProfileToString(other), "Unknown");
    }
}

// A record header with a lengthSizeMinusOne and numOfArrays, and what follows it.
Data header(uint8_t lengthSizeMinusOne, uint8_t numOfArrays, const Data& arrays) {
    Data bytes(23);
    bytes[0] = 1;
    bytes[21] = lengthSizeMinusOne;
    bytes[22] = numOfArrays;
    return bytes + arrays;
}

// The status, and what is stored of the record.
using Parsed = std::pair<int32_t, std::optional<Data>>;
Parsed parse(const Data& data) {
    const sp<android::MetaData> meta = new android::MetaData;
    const int32_t status =
            android::MediaCodecHelper::parseHEVCCodecSpecificData(meta, data.data(), data.size());
    uint32_t type = 0;
    const void* bytes = nullptr;
    size_t size = 0;
    if (!meta->findData(0x68637364 /* hcsd */, &type, &bytes, &size)) return {status, {}};
    EXPECT_EQ(type, 0x68766363u /* hvcc */);
    const auto* first = static_cast<const uint8_t*>(bytes);
    return {status, Data(first, first + size)};
}

TEST(HevcRecord, BackToAStream) {
    const Data arrays = Data{0xA1, 0, 2, 0, 3, 0x42, 1, 7, 0, 2, 0x42, 1}  // two SPS, complete
                        + Data{39, 0, 1, 0, 2, 0x4E, 1}                    // SEI, stepped over
                        + Data{0x22, 0, 1, 0, 2, 0x44, 1};
    const Data prefixes[] = {{0}, {0, 0}, {0, 0, 1}, {0, 0, 0, 1}};
    for (uint8_t i = 0; i < 4; ++i) {
        Data stream;
        for (const Data& unit : {Data{0x42, 1, 7}, Data{0x42, 1}, Data{0x44, 1}}) {
            stream = stream + prefixes[i] + unit;
        }
        EXPECT_EQ(parse(header(static_cast<uint8_t>(0xFC + i), 3, arrays)), Parsed(0, stream));
    }
}

TEST(HevcRecord, DamagedRecords) {
    const Data longest = Data(1020, 0x55);
    Data version2 = header(3, 1, {0x21, 0, 1, 0, 1, 0x42});
    version2[0] = 2;
    const struct {
        Data data;
        Parsed parsed;
    } cases[] = {
            {Data{1} + Data(21), {-1007, {}}},
            {version2, {-1007, {}}},
            {header(3, 0, {}), {-1, {}}},
            {header(3, 255, {}), {-1, {}}},  // arrays past the end are of type 0 and empty
            {header(3, 1, {39, 0xFF, 0xFF, 0xFF, 0xFF}), {-1, {}}},
            {header(3, 1, {0x21, 0, 1, 0, 4, 0x42, 1}), {0, {{0, 0, 0, 1, 0x42, 1, 0, 0}}}},
            {header(3, 1, {0x21, 0, 2, 0, 1, 0x42}), {0, {{0, 0, 0, 1, 0x42, 0, 0, 0, 1}}}},
            {header(0, 1, {0x21, 0xFF, 0xFF}), {-1007, {}}},  // 65535 empty units
            {header(3, 1, Data{0x20, 0, 1, 3, 0xFC} + longest), {0, Data{0, 0, 0, 1} + longest}},
            {header(3, 1, Data{0x20, 0, 1, 3, 0xFD, 1} + longest), {-1007, {}}},
            {header(3, 1, {0x20, 0, 1, 0xFF, 0xFF}), {-1007, {}}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parse(c.data), c.parsed) << testing::PrintToString(c.data);
}

}  // namespace
