#include <set>

#include "Helper/csd/EsDescriptor.h"
#include "support/Helper.h"

namespace {

using test::Bytes;
using test::Format;
using test::fromHex;
using test::helper;

const char* const kOverflow = "Helper/MediaExtractorHelper size arithmetic overflow";

// Bytes that count up, so that a field read at the wrong offset shows.
Bytes counting(size_t size) {
    Bytes data(size);
    for (size_t i = 0; i < size; ++i) data[i] = static_cast<uint8_t>(0x80 + i);
    return data;
}

const std::string kVorbisFailed = "6 \" fail to setting vorbis codec private data\"";

// The status, and what is stored and logged in the order in which it happens.
void expectTrace(uint32_t codecType, const Bytes& data, int32_t status, const std::string& trace) {
    SCOPED_TRACE(testing::Message() << codecType << ", " << testing::PrintToString(data));
    const Format format;
    size_t size = data.size();
    const auto call = [&] {
        EXPECT_EQ(helper->setAudioConfig(codecType, data.data(), &size, format.get()), status);
    };
    EXPECT_EQ(test::trace(format, call), trace);
    EXPECT_EQ(size, data.size());
    if (data.empty() || trace.empty() || trace.starts_with("6 ")) return;

    // A caller may hand in what an earlier call stored: the first store ends the life of the bytes.
    const std::string stores = trace.substr(0, trace.find('\n'));
    const std::string key = stores.substr(0, stores.find(':'));
    const Format own;
    AMediaFormat_setBuffer(own.get(), key.c_str(), data.data(), data.size());
    void* bytes = nullptr;
    ASSERT_TRUE(AMediaFormat_getBuffer(own.get(), key.c_str(), &bytes, &size));
    EXPECT_EQ(helper->setAudioConfig(codecType, static_cast<uint8_t*>(bytes), &size, own.get()),
              status);
    EXPECT_EQ(own.text(), stores);
}

// ISO/IEC 14496-1 7.2.6.5, 7.2.6.6, 7.2.6.7, with the three sizes given.
Bytes descriptor(const char* es, const char* config, const char* type, const char* info,
                 const Bytes& data) {
    Bytes bytes = fromHex(std::string("03") + es + "0000 00" + "04" + config + type +
                          "00 000000 00000000 00000000" + "05" + info);
    bytes.insert(bytes.end(), data.begin(), data.end());
    return bytes;
}

// Around the values at which one of the three sizes needs another byte.
TEST(AudioCodecData, EsDescriptors) {
    const struct {
        size_t size;
        const char *es, *config, *info;
    } cases[] = {
            {107, "7F", "7A", "6B"},
            {108, "81 00", "7B", "6C"},
            {113, "81 06", "81 00", "71"},
            {128, "81 16", "81 10", "81 00"},
            {16384, "81 80 18", "81 80 11", "81 80 00"},
    };
    for (const auto& [size, es, config, info] : cases) {
        const Bytes data = counting(size);
        EXPECT_EQ(android::csd::makeEsDescriptor(data, android::csd::ObjectType::kAudio14496_3),
                  descriptor(es, config, "40", info, data));
    }
}

TEST(AudioCodecData, DescriptorsOfAudioAndVideo) {
    const Bytes config = {0x12, 0x10};
    const Bytes audio = descriptor("16", "11", "40", "02", config);
    const Bytes video = descriptor("16", "11", "20", "02", config);
    expectTrace(201, config, 0, "esds: " + test::dataText(audio));
    const Format format;
    size_t size = config.size(), tooLarge = SIZE_MAX;
    EXPECT_EQ(helper->setESDS(config.data(), &size, format.get(), false), 0);
    EXPECT_EQ(format.buffer("esds"), video);
    EXPECT_EQ(size, 2u);
    const auto overflow = [&] { helper->setESDS(config.data(), &tooLarge, format.get(), false); };
    EXPECT_EQ(test::fatalText(overflow), kOverflow);

    Bytes made(24, 0xEE);
    EXPECT_TRUE(helper->MakeAACCodecSpecificData(config.data(), &size, made.data()));
    EXPECT_EQ(made, audio);
    EXPECT_EQ(std::exchange(size, 99), 24u);
    EXPECT_EQ(helper->setAACCodecSpecificData(config.data(), &size, format.get()), 0);
    EXPECT_EQ(format.buffer("csd-0"), audio);
    EXPECT_EQ(size, 24u);

    // The form with sizes of one byte: of 320, 315 and 300 the low 8 bits are written.
    const Bytes data = counting(300);
    size = data.size();
    Bytes out(22 + size);
    helper->makeESDS(data.data(), &size, out.data());
    EXPECT_EQ(out, descriptor("40", "3B", "20", "2C", data));
    EXPECT_EQ(size, 300u);
}

TEST(AudioCodecData, ExpandableSizes) {
    const struct {
        size_t value;
        const char* field;
    } cases[] = {
            {0, "00"},
            {127, "7F"},
            {128, "81 00"},
            {16383, "FF 7F"},
            {16384, "81 80 00"},
            {0x1FFFFF, "FF FF 7F"},
            {0x200000, "81 80 80 00"},
            {0x0FFFFFFF, "FF FF FF 7F"},
            {0x10000001, "80 80 80 01"},  // more than the field can say
    };
    for (const auto& [value, field] : cases) {
        const Bytes expected = fromHex(std::string("EE EE EE EE EE") + field);
        EXPECT_EQ(helper->bytesForSize(value), expected.size() - 5) << value;
        Bytes out(expected.size(), 0xEE);
        size_t offset = 5;
        helper->storeSize(out.data(), offset, value);
        EXPECT_EQ(offset, expected.size()) << value;
        EXPECT_EQ(out, expected) << value;
    }
    for (const size_t value : {0u, 300u}) {  // the offset behind the field is out of reach
        Bytes out(8, 0xEE);
        size_t offset = 0 - helper->bytesForSize(value);
        EXPECT_EQ(test::fatalText([&] { helper->storeSize(&out[4], offset, value); }), kOverflow);
        EXPECT_EQ(out, Bytes(8, 0xEE)) << value;
    }
}

TEST(AudioCodecData, Flac) {
    // Block header; of STREAMINFO (RFC 9639 8.2) the block sizes 4096 and 4608, the frame sizes
    // 66051 and 197121, and 8 further bytes.
    const std::string block = "80000022100012000102030302010ac442f000000000";
    const std::string sizes =
            ", min-block-size: int32(4096), max-block-size: int32(4608), "
            "min-frame-size: int32(66051), max-frame-size: int32(197121)";
    const std::string cases[][2] = {
            {"664c6143" + block, sizes},
            {"466c4163" + block, sizes},  // "FlAc"
            {"664c6143" + block + "00", sizes},
            {"664c6143" + block.substr(2), ""},
            {"664c6158" + block, ""},  // "fLaX"
            {"", ""},
    };
    for (const auto& [data, keys] : cases) {
        expectTrace(207, fromHex(data), 0, "flac-codec-specific-data: data(" + data + ")" + keys);
    }
}

TEST(AudioCodecData, WindowsMedia) {
    using Keys = std::vector<std::string>;
    const Keys v12{"encode-opt"}, pro{"channel-mask", "adv-enc-opt1", "adv-enc-opt2", "encode-opt"};
    const Keys voice{"channel-mask",   "encode-opt",       "adv-enc-opt1",
                     "voice-enc-opt1", "voice-enc-opt2_0", "voice-enc-opt2_1"};
    const std::string incorrect = "6 \"ExtraData size(17) is incorrect\"\n";
    const struct {
        uint32_t codecType;
        size_t size;
        Keys keys;
        std::vector<int> values;
        std::string log = "";
    } cases[] = {
            // Little-endian fields of 0x80, 0x81, 0x82, ...: 0x8382, as int32 0x85848382
            {210, 4, v12, {33666}},
            {211, 6, v12, {34180}},
            {212, 18, pro, {-2054913150, -1987541114, -1920169078, 36750}},
            {213, 18, pro, {-2054913150, -1987541114, -1920169078, 36750}},
            {212, 17, pro, {0, 0, 0, 0}, incorrect},
            {213, 17, pro, {0, 0, 0, 0}, incorrect},
            {214, 30, voice, {-2054913150, 36750, 37264, -1785425006, -1718052970, -1650680934}},
            // 18 bytes are enough; what lies past them is zero.
            {214, 18, voice, {-2054913150, 36750, 37264, 0, 0, 0}},
            {214, 20, voice, {-2054913150, 36750, 37264, 37778, 0, 0}},
            {214, 17, voice, {0, 0, 0, 0, 0, 0}, incorrect},
    };
    for (const auto& [codecType, size, keys, values, log] : cases) {
        std::string stores;
        for (size_t i = 0; i < keys.size(); ++i) {
            stores += (i == 0 ? "wma-" : ", wma-") + keys[i] + ": int32(" +
                      std::to_string(values.at(i)) + ")";
        }
        expectTrace(codecType, counting(size), 0, log + stores);
    }
    const std::string refused = "6 \"WMA Error case : please check parsing\"";
    expectTrace(210, counting(3), -1, refused);
    expectTrace(211, counting(5), -1, refused);
}

TEST(AudioCodecData, WholeBlocksAndNothing) {
    expectTrace(218, {7, 8, 9}, 0, "adpcm-codec-specific-data: data(070809)");
    expectTrace(228, {7, 8, 9}, 0, "csd-0: data(070809)");
    const std::set<uint32_t> stored = {201, 207, 208, 210, 211, 212, 213, 214, 218, 228};
    for (uint32_t code = 0; code < 310; ++code) {
        if (stored.contains(code)) continue;
        const Format format;
        const auto call = [&] {
            EXPECT_EQ(helper->setAudioConfig(code, nullptr, nullptr, format.get()), 0) << code;
        };
        EXPECT_EQ(test::trace(format, call), "") << code;
    }
}

// A packet count less one, two sizes, packets of types 1, 3 and 5 (Vorbis I 4.2.1).
TEST(AudioCodecData, Vorbis) {
    const std::string first = "01" + std::string(2 * 299, 'a');   // 300 bytes: FF 2D
    const std::string second = "03" + std::string(2 * 254, 'b');  // 255 bytes: FF 00
    const struct {
        std::string block;
        int32_t status;
        std::string trace;
    } cases[] = {
            {"02 02 01 0111 03 055566", 0, "csd-0: data(0111), csd-1: data(055566)"},
            {"02 FF2D 01" + first + "03 0555", 0, "csd-0: data(" + first + "), csd-1: data(0555)"},
            {"02 FE 01" + first.substr(0, 2 * 254) + "03 05", 0,
             "csd-0: data(" + first.substr(0, 2 * 254) + "), csd-1: data(05)"},
            {"02 02 FF00 0111" + second + "05", 0, "csd-0: data(0111), csd-1: data(05)"},
            {"", -1007, kVorbisFailed},
            {"02", -1007, kVorbisFailed},
            {"03 01 01 01 03 05", -1007, kVorbisFailed},
            {"02 FF FF", -1007, kVorbisFailed},           // the first size never ends
            {"02 01", -1007, kVorbisFailed},              // no second size
            {"02 01 FF", -1007, kVorbisFailed},           // the second size never ends
            {"02 01 01 03 03 05", -1007, kVorbisFailed},  // no identification header
            {"02 01 02 01 03", -1007, kVorbisFailed},     // sizes past the end
            {"02 03 00 01 03", -1007, kVorbisFailed},     // the first alone is past the end
            {"02 00 00", -1007, kVorbisFailed},           // nothing behind the sizes
            {"02 01 01 01 04 05", -10001, "csd-0: data(01)\n" + kVorbisFailed},
            {"02 01 01 01 03 04", -10001, "csd-0: data(01)\n" + kVorbisFailed},
            {"02 01 01 01 03", -10001, "csd-0: data(01)\n" + kVorbisFailed},  // no setup header
            {"02 07 00 01020304050607", -10001, "csd-0: data(01020304050607)\n" + kVorbisFailed},
            {"02 00 01 01 03 05", -10001, "csd-0: data()\n" + kVorbisFailed},
    };
    for (const auto& [text, status, trace] : cases) {
        const Bytes block = fromHex(text);
        expectTrace(208, block, 0, trace);
        const Format format;
        size_t size = block.size();
        EXPECT_EQ(helper->setVorbisCodecSpecificData(block.data(), &size, format.get()), status)
                << text;
    }
}

}  // namespace
