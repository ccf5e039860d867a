#include <gtest/gtest.h>

#include "model/Random.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using test::Bytes;
using test::Format;

const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

// ISO/IEC 14496-1 8.3.3, in at most four groups of seven bits.
Bytes sizeField(size_t value) {
    size_t groups = 1;
    while (groups < 4 && value >> (7 * groups) != 0) ++groups;
    Bytes field;
    for (size_t i = groups; i > 0; --i) {
        const size_t more = i > 1 ? 0x80 : 0;
        field.push_back(static_cast<uint8_t>(more | ((value >> (7 * (i - 1))) & 0x7f)));
    }
    return field;
}

Bytes descriptor(uint8_t tag, const Bytes& body) {
    Bytes bytes{tag};
    test::append(bytes, sizeField(body.size()));
    test::append(bytes, body);
    return bytes;
}

// From the innermost descriptor outwards: ISO/IEC 14496-1 7.2.6.7, 7.2.6.6 and 7.2.6.5.
Bytes esDescriptor(const Bytes& data, bool isAudio) {
    Bytes decoderConfig(13, 0), es(3, 0);
    decoderConfig[0] = isAudio ? 0x40 : 0x20;
    test::append(decoderConfig, descriptor(0x05, data));
    test::append(es, descriptor(0x04, decoderConfig));
    return descriptor(0x03, es);
}

TEST(AudioDataModel, SizeFields) {
    test::Random random(1);
    for (int i = 0; i < 20000; ++i) {
        const size_t value = (uint64_t{random.any()} << 32) >> random.below(64);
        Bytes expected(random.below(5), 0xaa), actual(12, 0xaa);
        size_t offset = expected.size();
        test::append(expected, sizeField(value));
        ASSERT_EQ(helper->bytesForSize(value), expected.size() - offset) << value;
        helper->storeSize(actual.data(), offset, value);
        ASSERT_EQ(offset, expected.size()) << value;
        expected.resize(actual.size(), 0xaa);
        ASSERT_EQ(actual, expected) << value;
    }
}

TEST(AudioDataModel, EsDescriptors) {
    test::Random random(2);
    for (size_t edge : {50u, 1u << 7, 1u << 14, 1u << 21}) {  // where fields grow by a byte
        for (size_t size = edge - 50; size < edge + 5; ++size) {
            const bool isAudio = random.oneIn(2);
            Bytes data = random.bytes(std::min(size, size_t{20000}));
            data.resize(size, 0xff);
            size_t given = size;
            const Format format;
            ASSERT_EQ(helper->setESDS(data.data(), &given, format.get(), isAudio), 0) << size;
            ASSERT_EQ(given, size);
            ASSERT_TRUE(format.buffer(AMEDIAFORMAT_KEY_ESDS) == esDescriptor(data, isAudio))
                    << size << " bytes, audio " << isAudio;
        }
    }
}

int32_t modelVorbis(const Bytes& data, AMediaFormat* format) {
    const auto at = [&](size_t i) { return i < data.size() ? data[i] : 0; };
    if (data.size() < 2 || data[0] != 2) return -1007;
    size_t offset = 1, sizes[2] = {0, 0};
    for (size_t& size : sizes) {
        uint8_t byte;
        do {
            if (offset == data.size()) return -1007;
            byte = data[offset++];
            size += byte;
        } while (byte == 0xff);
    }
    const size_t comment = offset + sizes[0], setup = comment + sizes[1];
    if (setup > data.size() || at(offset) != 1) return -1007;
    AMediaFormat_setBuffer(format, "csd-0", data.data() + offset, sizes[0]);
    if (at(comment) != 3 || at(setup) != 5) return -10001;
    AMediaFormat_setBuffer(format, "csd-1", data.data() + setup, data.size() - setup);
    return 0;
}

// Three laced packets, often damaged.
Bytes vorbisBlock(test::Random& random) {
    Bytes block{2}, packets;
    for (uint8_t type : Bytes{1, 3, 5}) {
        Bytes packet = random.bytes(random.of({0, 1, 5, 30, 254, 255, 256, 510, 600}));
        if (!packet.empty() && !random.oneIn(12)) packet[0] = type;
        if (type != 5) block.resize(block.size() + packet.size() / 255, 0xff);
        if (type != 5) block.push_back(static_cast<uint8_t>(packet.size() % 255));
        test::append(packets, packet);
    }
    test::append(block, packets);
    random.damage(block, 8);
    return block;
}

TEST(AudioDataModel, VorbisHeaders) {
    std::map<int32_t, int> seen;
    for (uint32_t seed = 0; seed < 4000; ++seed) {
        test::Random random(seed);
        const Bytes block = vorbisBlock(random);
        size_t size = block.size();
        const Format expected, actual;
        const int32_t status = modelVorbis(block, expected.get());
        ASSERT_EQ(helper->setVorbisCodecSpecificData(block.data(), &size, actual.get()), status)
                << test::describe(seed, block);
        ASSERT_EQ(test::stored(actual), test::stored(expected)) << test::describe(seed, block);
        ++seen[status];
    }
    for (int32_t status : {0, -1007, -10001}) EXPECT_GT(seen[status], 300) << status;
}

}  // namespace
