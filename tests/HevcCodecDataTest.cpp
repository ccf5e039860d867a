#include <gtest/gtest.h>

#include "platform/MetaData.h"
#include "support/BitWriter.h"
#include "support/Platform.h"
#include "support/Units.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::MediaCodecHelper;
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

const Bytes kVps = {0x40, 1, 0x0C, 0xFF};
const Bytes kPps = {0x44, 1, 0xC1, 0x73};

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

Bytes makeSps(const Sps& sps) {
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
    Bytes unit = {0x42, 1};
    unsigned zeros = 0;
    for (const uint8_t byte : bits.finish()) {
        if (zeros >= 2 && byte <= 3) {  // emulation_prevention_three_byte
            unit.push_back(3);
            zeros = 0;
        }
        unit.push_back(byte);
        zeros = byte == 0 ? zeros + 1 : 0;
    }
    // What a reader that stops at the window does not need, so that the two last bytes do not
    // count.
    return unit + Bytes{0xAA, 0xAA};
}

std::string sizeText(const Bytes& sps) {
    const sp<android::ABuffer> buffer = new android::ABuffer(sps.size());
    std::copy(sps.begin(), sps.end(), buffer->data());
    int32_t width = -1;
    int32_t height = -1;
    helper->FindHEVCDimensions(buffer, &width, &height);
    return std::to_string(width) + "x" + std::to_string(height);
}

TEST(HevcDimensions, Table) {
    const struct {
        Bytes sps;
        const char* size;
    } cases[] = {
            {makeSps({}), "1920x1088"},
            // The window counts in luma samples whatever the chroma format.
            {makeSps({.window = true, .offsets = {0, 0, 0, 4}}), "1920x1084"},
            {makeSps({.chroma = 3, .window = true, .offsets = {1, 2, 3, 4}}), "1917x1081"},
            {makeSps({.window = true, .offsets = {1920, 0, 0, 1088}}), "0x0"},
            {makeSps({.maxSubLayersMinus1 = 1, .subLayerFlags = 3}), "1920x1088"},
            {makeSps({.maxSubLayersMinus1 = 6, .subLayerFlags = 0b111001001011}), "1920x1088"},
            {makeSps({.width = 0x7FFFFFFF, .height = 1}), "2147483647x1"},
            {{0x42, 1}, "-1x-1"},
            {{0x42, 1, 0xFF, 0xFF}, "0x0"},  // the last two bytes count as zero
            {{0x42, 1, 0xFF, 0xFF, 0xFF}, "0x0"},
    };
    for (const auto& c : cases) EXPECT_EQ(sizeText(c.sps), c.size) << testing::PrintToString(c.sps);
}

TEST(HevcDimensions, LastTwoBytesCountAsZero) {
    // Without emulation prevention the height ends in the 150th bit, the 21st byte of the unit.
    const Bytes sps = makeSps({.constraints = 0x910101010101});
    EXPECT_EQ(sizeText(Bytes(sps.begin(), sps.begin() + 23)), "1920x1088");
    EXPECT_EQ(sizeText(Bytes(sps.begin(), sps.begin() + 22)), "1920x1087");
}

TEST(HevcDimensions, ImpossibleSizesAreFatal) {
    const Bytes cases[] = {
            makeSps({.window = true, .offsets = {0, 1921, 0, 0}}),
            makeSps({.window = true, .offsets = {0, 0, 1000, 89}}),
            makeSps({.window = true, .offsets = {0xFFFFFFFE, 2, 0, 0}}),
            makeSps({.width = 0x80000000}),
            makeSps({.height = 0xFFFFFFFE}),
            {0x42},
    };
    for (const Bytes& sps : cases) {
        EXPECT_NE(test::fatalText([&] { sizeText(sps); }), "") << testing::PrintToString(sps);
    }
}

Bytes record(const Bytes& sps, const std::vector<Bytes>& units) {
    Bytes bytes = {1};
    bytes.insert(bytes.end(), sps.begin() + 3, sps.begin() + 15);
    bytes = bytes +
            Bytes{0xF0, 0, 0xFC, 0xFD, 0xF8, 0xF8, 0, 0, 3, static_cast<uint8_t>(units.size())};
    for (const Bytes& unit : units) {
        bytes = bytes + Bytes{static_cast<uint8_t>(unit[0] >> 1), 0, 1} + length16(unit.size()) +
                unit;
    }
    return bytes;
}

TEST(HevcRecord, FromAnnexB) {
    // Profile, tier and level are copied as they stand, emulation prevention bytes included: with
    // zeros among the constraint flags, another byte is taken for the level.
    const struct {
        bool withVps;
        uint64_t constraints;
        const char* level;
    } cases[] = {{true, 0x910101010101, "9.3"},
                 {false, 0x910101010101, "9.3"},
                 {true, 0x900000000000, "0.3"}};
    for (const auto& c : cases) {
        const Bytes sps = makeSps({.profile = 2,
                                   .window = true,
                                   .offsets = {0, 0, 0, 4},
                                   .constraints = c.constraints});
        const Format format;
        const test::LogCapture log;
        const Bytes vps = c.withVps ? kStartCode + kVps : Bytes();
        const Bytes data =
                kStartCode + kPps + kStartCode + sps + vps + kStartCode + Bytes{0x26, 1, 7};
        EXPECT_EQ(helper->MakeHEVCCodecSpecificData(data.data(), data.size(), format.get()), 0);
        const auto units = c.withVps ? std::vector{kVps, sps, kPps} : std::vector{sps, kPps};
        EXPECT_EQ(format.buffer("csd-hevc"), record(sps, units));
        const std::string text = format.text();
        EXPECT_EQ(text.substr(0, 35), "mime: string(video/hevc), csd-hevc:");
        EXPECT_EQ(text.substr(text.find("), w") + 3), "width: int32(1920), height: int32(1084)");
        const Line found{4, "found HEVC codec config (1920 x 1084, Main 10 profile-profile level " +
                                    std::string(c.level) + ")"};
        EXPECT_EQ(log.lines(), std::vector<Line>{found});
    }
}

TEST(HevcRecord, Failures) {
    const Bytes sps = makeSps({});
    const Line noSps{5, "no sps found !!!"};
    const struct {
        Bytes data;
        bool stored;
        std::vector<Line> lines;
    } cases[] = {
            {{}, false, {}},
            {kStartCode + kVps + kStartCode + kPps, true, {noSps}},
            {{1, 2, 3}, true, {noSps}},
            {kStartCode + kVps + kStartCode + sps, false, {noSps}},
            {kStartCode + sps + Bytes(65536, 0xFF) + kStartCode + kPps, false, {}},
            {kStartCode + kVps + Bytes(65536, 0xFF) + kStartCode + sps + kStartCode + kPps,
             false,
             {}},
    };
    for (const auto& c : cases) {
        const Format format;
        const test::LogCapture log;
        EXPECT_EQ(helper->MakeHEVCCodecSpecificData(c.data.data(), c.data.size(), format.get()),
                  -1);
        EXPECT_EQ(host::formatEntries(format.get()).size(), c.stored ? 1u : 0u);
        EXPECT_EQ(format.buffer("csd-hevc"), c.stored ? std::optional(c.data) : std::nullopt);
        EXPECT_EQ(log.lines(), c.lines);
    }
}

TEST(HevcRecord, ProfileNames) {
    EXPECT_STREQ(helper->HEVCProfileToString(1), "Main Profile");
    EXPECT_STREQ(helper->HEVCProfileToString(2), "Main 10 profile");
    EXPECT_STREQ(helper->HEVCProfileToString(3), "Main Still Picture profile");
    for (const uint8_t other : Bytes{0, 4, 33, 255}) {
        EXPECT_STREQ(helper->HEVCProfileToString(other), "Unknown");
    }
}

struct Parsed {
    int32_t status;
    std::optional<Bytes> stream;
};

Parsed parse(const Bytes& data) {
    const sp<android::MetaData> meta = new android::MetaData;
    Parsed parsed{MediaCodecHelper::parseHEVCCodecSpecificData(meta, data.data(), data.size()), {}};
    uint32_t type = 0;
    const void* bytes = nullptr;
    size_t size = 0;
    if (meta->findData(0x68637364 /* hcsd */, &type, &bytes, &size)) {
        EXPECT_EQ(type, 0x68766363u /* hvcc */);
        const auto* first = static_cast<const uint8_t*>(bytes);
        parsed.stream = Bytes(first, first + size);
    }
    return parsed;
}

// A record header with a lengthSizeMinusOne and numOfArrays, and what follows it.
Bytes header(uint8_t lengthSizeMinusOne, uint8_t numOfArrays, const Bytes& arrays) {
    Bytes bytes(23);
    bytes[0] = 1;
    bytes[21] = lengthSizeMinusOne;
    bytes[22] = numOfArrays;
    return bytes + arrays;
}

TEST(HevcRecord, BackToAStream) {
    const Bytes arrays = Bytes{0xA1, 0, 2, 0, 3, 0x42, 1, 7, 0, 2, 0x42, 1}  // two SPS, complete
                         + Bytes{39, 0, 1, 0, 2, 0x4E, 1}                    // SEI, stepped over
                         + Bytes{0x22, 0, 1, 0, 2, 0x44, 1};
    const Bytes prefixes[] = {{0}, {0, 0}, {0, 0, 1}, {0, 0, 0, 1}};
    for (uint8_t i = 0; i < 4; ++i) {
        const Parsed parsed = parse(header(static_cast<uint8_t>(0xFC + i), 3, arrays));
        EXPECT_EQ(parsed.status, 0);
        const Bytes& prefix = prefixes[i];
        const Bytes stream =
                prefix + Bytes{0x42, 1, 7} + prefix + Bytes{0x42, 1} + prefix + Bytes{0x44, 1};
        EXPECT_EQ(parsed.stream, stream);
    }
}

TEST(HevcRecord, DamagedRecords) {
    const Bytes stream1024 = Bytes{0, 0, 0, 1} + Bytes(1020, 0x55);
    const struct {
        Bytes data;
        int32_t status;
        std::optional<Bytes> stream;
    } cases[] = {
            {Bytes(22), -1007, {}},
            {Bytes(23), -1007, {}},  // version 0
            {header(3, 0, {}), -1, {}},
            {header(3, 255, {}), -1, {}},  // arrays past the end are of type 0 and empty
            {header(3, 1, {39, 0xFF, 0xFF, 0xFF, 0xFF}), -1, {}},
            {header(3, 1, {0x21, 0, 1, 0, 4, 0x42, 1}), 0, Bytes{0, 0, 0, 1, 0x42, 1, 0, 0}},
            {header(3, 1, {0x21, 0, 2, 0, 1, 0x42}), 0, Bytes{0, 0, 0, 1, 0x42, 0, 0, 0, 1}},
            {header(0, 1, {0x21, 0xFF, 0xFF}), -1007, {}},  // 65535 empty units
            {header(3, 1, Bytes{0x20, 0, 1, 0x03, 0xFC} + Bytes(1020, 0x55)), 0, stream1024},
            {header(3, 1, Bytes{0x20, 0, 1, 0x03, 0xFD} + Bytes(1021, 0x55)), -1007, {}},
            {header(3, 1, {0x20, 0, 1, 0xFF, 0xFF}), -1007, {}},
    };
    for (const auto& c : cases) {
        const Parsed parsed = parse(c.data);
        EXPECT_EQ(parsed.status, c.status) << testing::PrintToString(c.data);
        EXPECT_EQ(parsed.stream, c.stream) << testing::PrintToString(c.data);
    }
}

}  // namespace
