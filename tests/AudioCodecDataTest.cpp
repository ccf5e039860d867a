#include <gtest/gtest.h>

#include <set>

#include "support/Platform.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::MediaExtractorHelper;
using android::sp;
using test::Bytes;
using test::Format;
using test::Line;

const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

const Bytes kAacDescriptor = {3, 22, 0, 0, 0, 4, 17, 0x40, 0, 0, 0,    0,
                              0, 0,  0, 0, 0, 0, 0,  0,    5, 2, 0x12, 0x10};

int32_t store(uint32_t codecType, const Bytes& data, const Format& format) {
    size_t size = data.size();
    const int32_t status = helper->setAudioConfig(codecType, data.data(), &size, format.get());
    EXPECT_EQ(size, data.size());
    return status;
}

// Bytes that count up, so that a field read at the wrong offset shows.
Bytes counting(size_t size) {
    Bytes data(size);
    for (size_t i = 0; i < size; ++i) data[i] = static_cast<uint8_t>(0x80 + i);
    return data;
}

TEST(AudioCodecData, EsDescriptorSizes) {
    const struct {
        size_t size;
        Bytes head;  // up to ES_ID
        size_t total;
    } cases[] = {
            {2, {3, 22}, 24},
            {107, {3, 127}, 129},
            {108, {3, 0x81, 0x00}, 131},
            {113, {3, 0x81, 0x06}, 137},  // the middle size needs its second byte: 128
            {200, {3, 0x81, 0x5E}, 225},
            {20000, {3, 0x81, 0x9C, 0x38}, 20028},
    };
    for (const auto& c : cases) {
        const Format format;
        const Bytes data = counting(c.size);
        EXPECT_EQ(store(201, data, format), 0);
        const Bytes esds = format.buffer("esds").value_or(Bytes());
        ASSERT_EQ(esds.size(), c.total);
        EXPECT_EQ(Bytes(esds.begin(), esds.begin() + static_cast<long>(c.head.size())), c.head);
        EXPECT_EQ(Bytes(esds.end() - static_cast<long>(c.size), esds.end()), data);
    }
}

TEST(AudioCodecData, DescriptorsOfAudioAndVideo) {
    const Bytes config = {0x12, 0x10};
    Format format;
    EXPECT_EQ(store(201, config, format), 0);
    EXPECT_EQ(format.buffer("esds"), kAacDescriptor);

    size_t size = config.size();
    EXPECT_EQ(helper->setESDS(config.data(), &size, format.get(), false), 0);
    Bytes visual = kAacDescriptor;
    visual[7] = 0x20;
    EXPECT_EQ(format.buffer("esds"), visual);

    Bytes fixed(24, 0xEE);
    helper->makeESDS(config.data(), &size, fixed.data());
    EXPECT_EQ(fixed, visual);
    EXPECT_EQ(size, 2u);

    Bytes made(24, 0xEE);
    size = 99;
    EXPECT_TRUE(helper->MakeAACCodecSpecificData(config.data(), &size, made.data()));
    EXPECT_EQ(made, kAacDescriptor);
    EXPECT_EQ(size, 24u);

    size = 99;
    EXPECT_EQ(helper->setAACCodecSpecificData(config.data(), &size, format.get()), 0);
    EXPECT_EQ(format.buffer("csd-0"), kAacDescriptor);
    EXPECT_EQ(size, 24u);
}

TEST(AudioCodecData, FixedDescriptorKeepsLowBytesOfItsSizes) {
    const Bytes data = counting(300);
    size_t size = data.size();
    Bytes out(300 + 22);
    helper->makeESDS(data.data(), &size, out.data());
    EXPECT_EQ(out[1], 320 & 0xFF);
    EXPECT_EQ(out[6], 315 & 0xFF);
    EXPECT_EQ(out[21], 300 & 0xFF);
    EXPECT_EQ(out.back(), data.back());
}

TEST(AudioCodecData, ExpandableSizes) {
    const struct {
        size_t value;
        Bytes bytes;
    } cases[] = {
            {0, {0}},
            {127, {0x7F}},
            {128, {0x81, 0x00}},
            {300, {0x82, 0x2C}},
            {16383, {0xFF, 0x7F}},
            {16384, {0x81, 0x80, 0x00}},
            {0x1FFFFF, {0xFF, 0xFF, 0x7F}},
            {0x200000, {0x81, 0x80, 0x80, 0x00}},
            {0x0FFFFFFF, {0xFF, 0xFF, 0xFF, 0x7F}},
            {0x10000001, {0x80, 0x80, 0x80, 0x01}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(helper->bytesForSize(c.value), c.bytes.size()) << c.value;
        Bytes out(5 + c.bytes.size(), 0xEE);
        size_t offset = 5;
        helper->storeSize(out.data(), offset, c.value);
        EXPECT_EQ(offset, out.size()) << c.value;
        EXPECT_EQ(Bytes(out.begin() + 5, out.end()), c.bytes) << c.value;
    }
}

TEST(AudioCodecData, SizeFieldPastTheLastOffsetWritesNothing) {
    for (const size_t value : {size_t{0}, size_t{300}}) {
        Bytes out(8, 0xEE);
        size_t offset = 0 - helper->bytesForSize(value);
        EXPECT_EQ(test::fatalText([&] { helper->storeSize(&out[4], offset, value); }),
                  "Helper/MediaExtractorHelper size arithmetic overflow");
        EXPECT_EQ(out, Bytes(8, 0xEE)) << value;
    }
}

// A caller may hand in what an earlier call stored: the store ends the life of those bytes.
TEST(AudioCodecData, InputIsTheFormatsOwnBuffer) {
    const Bytes flac = {'f',  'L',  'a', 'C',  0x80, 0, 0, 34, 0x10, 0, 0x12, 0, 0,
                        0x03, 0xE8, 0,   0x1F, 0x40, 0, 0, 0,  0,    0, 0,    0, 0};
    const struct {
        uint32_t codecType;
        const char* key;
        Bytes data;
        std::string text;
    } cases[] = {
            {208, "csd-0", {2, 2, 1, 1, 0x11, 3, 5, 0x55}, "csd-0: data(0111), csd-1: data(0555)"},
            {207, "flac-codec-specific-data", flac,
             "flac-codec-specific-data: "
             "data(664c614380000022100012000003e8001f400000000000000000), "
             "min-block-size: int32(4096), max-block-size: int32(4608), "
             "min-frame-size: int32(1000), max-frame-size: int32(8000)"},
            {212, "wma-channel-mask", Bytes(18, 1),
             "wma-channel-mask: int32(16843009), wma-adv-enc-opt1: int32(16843009), "
             "wma-adv-enc-opt2: int32(16843009), wma-encode-opt: int32(257)"},
    };
    for (const auto& c : cases) {
        const Format format;
        AMediaFormat_setBuffer(format.get(), c.key, c.data.data(), c.data.size());
        void* own = nullptr;
        size_t size = 0;
        ASSERT_TRUE(AMediaFormat_getBuffer(format.get(), c.key, &own, &size));
        const auto* data = static_cast<const uint8_t*>(own);
        EXPECT_EQ(helper->setAudioConfig(c.codecType, data, &size, format.get()), 0);
        EXPECT_EQ(format.text(), c.text);
    }
}

TEST(AudioCodecData, Flac) {
    const auto block = [](std::string marker, size_t size) {
        Bytes data = counting(size);
        std::copy(marker.begin(), marker.end(), data.begin());
        return data;
    };
    const char* const sizes =
            "min-block-size: int32(34953), max-block-size: int32(35467), "
            "min-frame-size: int32(9211278), max-frame-size: int32(9408657)";
    const struct {
        Bytes data;
        const char* keys;
    } cases[] = {
            {block("fLaC", 34), sizes},
            {block("FlAc", 26), sizes},
            {block("fLaC", 25), nullptr},
            {block("fLaX", 34), nullptr},
            {{}, nullptr},
    };
    for (const auto& c : cases) {
        const Format format;
        EXPECT_EQ(store(207, c.data, format), 0);
        EXPECT_EQ(format.buffer("flac-codec-specific-data"), c.data);
        const std::string text = format.text();
        EXPECT_EQ(text.substr(text.find(')') + 1),
                  c.keys == nullptr ? "" : std::string(", ") + c.keys);
    }
}

TEST(AudioCodecData, WindowsMedia) {
    // Little-endian fields of 0x80, 0x81, 0x82, ...: 0x8382 = 33666, 0x85848382 as int32 is below
    // 0.
    const std::string pro =
            "wma-channel-mask: int32(-2054913150), wma-adv-enc-opt1: int32(-1987541114), "
            "wma-adv-enc-opt2: int32(-1920169078), wma-encode-opt: int32(36750)";
    const std::string proZero =
            "wma-channel-mask: int32(0), wma-adv-enc-opt1: int32(0), wma-adv-enc-opt2: int32(0), "
            "wma-encode-opt: int32(0)";
    const std::string voiceHead =
            "wma-channel-mask: int32(-2054913150), wma-encode-opt: int32(36750), "
            "wma-adv-enc-opt1: int32(37264), ";
    const struct {
        uint32_t codecType;
        size_t size;
        int32_t status;
        std::string keys;
        const char* error;
    } cases[] = {
            {210, 4, 0, "wma-encode-opt: int32(33666)", nullptr},
            {210, 3, -1, "", "WMA Error case : please check parsing"},
            {211, 6, 0, "wma-encode-opt: int32(34180)", nullptr},
            {211, 5, -1, "", "WMA Error case : please check parsing"},
            {212, 18, 0, pro, nullptr},
            {213, 30, 0, pro, nullptr},
            {212, 10, 0, proZero, "ExtraData size(10) is incorrect"},
            {213, 17, 0, proZero, "ExtraData size(17) is incorrect"},
            {214, 30, 0,
             voiceHead + "wma-voice-enc-opt1: int32(-1785425006), wma-voice-enc-opt2_0: "
                         "int32(-1718052970), wma-voice-enc-opt2_1: int32(-1650680934)",
             nullptr},
            // 18 bytes are enough; what lies past them is zero.
            {214, 18, 0,
             voiceHead + "wma-voice-enc-opt1: int32(0), wma-voice-enc-opt2_0: int32(0), "
                         "wma-voice-enc-opt2_1: int32(0)",
             nullptr},
            {214, 20, 0,
             voiceHead + "wma-voice-enc-opt1: int32(37778), wma-voice-enc-opt2_0: int32(0), "
                         "wma-voice-enc-opt2_1: int32(0)",
             nullptr},
            {214, 0, 0,
             "wma-channel-mask: int32(0), wma-encode-opt: int32(0), wma-adv-enc-opt1: int32(0), "
             "wma-voice-enc-opt1: int32(0), wma-voice-enc-opt2_0: int32(0), "
             "wma-voice-enc-opt2_1: int32(0)",
             "ExtraData size(0) is incorrect"},
    };
    for (const auto& c : cases) {
        const Format format;
        const test::LogCapture log;
        EXPECT_EQ(store(c.codecType, counting(c.size), format), c.status) << c.codecType;
        EXPECT_EQ(format.text(), c.keys) << c.codecType << ", " << c.size;
        std::vector<Line> lines;
        if (c.error != nullptr) lines.push_back({6, c.error});
        EXPECT_EQ(log.lines(), lines) << c.codecType << ", " << c.size;
    }
}

TEST(AudioCodecData, WholeBlocksAndNothing) {
    const Bytes data = {7, 8, 9};
    const std::set<uint32_t> stored = {201, 207, 208, 210, 211, 212, 213, 214, 218, 228};
    for (uint32_t code = 0; code < 310; ++code) {
        if (stored.contains(code)) continue;
        const Format format;
        EXPECT_EQ(helper->setAudioConfig(code, nullptr, nullptr, format.get()), 0) << code;
        EXPECT_EQ(format.text(), "") << code;
    }
    const Format format;
    EXPECT_EQ(store(218, data, format), 0);
    EXPECT_EQ(store(228, data, format), 0);
    EXPECT_EQ(format.text(), "adpcm-codec-specific-data: data(070809), csd-0: data(070809)");
}

TEST(AudioCodecData, Vorbis) {
    Bytes longFirst(300, 0x41);
    longFirst[0] = 1;
    Bytes laced = {2, 0xFF, 45, 1};
    laced.insert(laced.end(), longFirst.begin(), longFirst.end());
    laced.insert(laced.end(), {3, 5, 0x55});
    const struct {
        Bytes block;
        int32_t status;
        std::optional<Bytes> csd0;
        std::optional<Bytes> csd1;
    } cases[] = {
            {{2, 2, 1, 1, 0x11, 3, 5, 0x55}, 0, Bytes{1, 0x11}, Bytes{5, 0x55}},
            {laced, 0, longFirst, Bytes{5, 0x55}},
            {{}, -1007, {}, {}},
            {{2}, -1007, {}, {}},
            {{3, 1, 1, 1, 3, 5}, -1007, {}, {}},
            {{2, 0xFF, 0xFF}, -1007, {}, {}},     // the first run never ends
            {{2, 1}, -1007, {}, {}},              // no second run
            {{2, 1, 0xFF}, -1007, {}, {}},        // the second run never ends
            {{2, 1, 1, 3, 3, 5}, -1007, {}, {}},  // no identification header
            {{2, 1, 2, 1, 3}, -1007, {}, {}},     // sizes past the end
            {{2, 0, 0}, -1007, {}, {}},           // nothing behind the sizes
            {{2, 1, 1, 1, 4, 5}, -10001, Bytes{1}, {}},
            {{2, 1, 1, 1, 3, 4}, -10001, Bytes{1}, {}},
            {{2, 1, 1, 1, 3}, -10001, Bytes{1}, {}},  // no setup header
            {{2, 0, 1, 1, 3, 5}, -10001, Bytes{}, {}},
    };
    for (const auto& c : cases) {
        const Format format;
        size_t size = c.block.size();
        EXPECT_EQ(helper->setVorbisCodecSpecificData(c.block.data(), &size, format.get()), c.status)
                << testing::PrintToString(c.block);
        EXPECT_EQ(format.buffer("csd-0"), c.csd0) << testing::PrintToString(c.block);
        EXPECT_EQ(format.buffer("csd-1"), c.csd1) << testing::PrintToString(c.block);

        const test::LogCapture log;
        EXPECT_EQ(store(208, c.block, Format()), 0);
        std::vector<Line> lines;
        if (c.status < 0) lines.push_back({6, " fail to setting vorbis codec private data"});
        EXPECT_EQ(log.lines(), lines) << testing::PrintToString(c.block);
    }
}

}  // namespace
