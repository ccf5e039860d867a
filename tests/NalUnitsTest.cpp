#include "Helper/csd/NalUnits.h"

#include "Helper/base/BitReader.h"
#include "support/Helper.h"

namespace {

using android::MediaExtractorHelper;
using test::Bytes;
using test::helper;

// The models walk many streams; here is one of each kind, with both meanings of its end.
TEST(NalUnits, Walk) {
    const struct {
        Bytes stream;
        std::vector<Bytes> units;
        int endStatus;
        size_t withoutEnd;  // how many of the units come without the end of data counting as one
    } cases[] = {
            {{0, 0, 1, 0x67, 0xAA, 0, 0, 1, 0x68, 0xBB}, {{0x67, 0xAA}, {0x68, 0xBB}}, -1, 1},
            // Zeros before a start code, and at the end, belong to no unit.
            {{0, 0, 0, 1, 0x67, 0, 0, 0, 0, 1, 0x68, 0xBB, 0}, {{0x67}, {0x68, 0xBB}}, -1, 1},
            {{0, 0, 1, 0, 0, 0}, {{0}}, -1, 0},
            // A 01 that two zeros do not precede divides nothing.
            {{0, 0, 1, 1, 2, 0, 1, 0, 0, 2}, {{1, 2, 0, 1, 0, 0, 2}}, -1, 0},
            // A last unit of no or one byte ends the walk undelivered.
            {{0, 0, 1, 0x67, 0, 0, 1}, {{0x67}}, -1, 1},
            {{0, 0, 1, 0x67, 0, 0, 1, 0x68}, {{0x67}}, -1, 1},
            {{0, 0, 1}, {{}}, -1, 0},
            {{0, 0, 0, 0}, {}, -1, 0},
            {{}, {}, -1, 0},
            {{0, 1, 0x67}, {}, -1007, 0},
            {{0, 0, 0x67}, {}, -1007, 0},
    };
    for (const auto& c : cases) {
        for (const bool atEnd : {true, false}) {
            const uint8_t* data = c.stream.data();
            size_t size = c.stream.size();
            const uint8_t* start = c.stream.data();
            size_t count = 99;
            std::vector<Bytes> units;
            int status;
            while ((status = helper->getNextNALUnit(&data, &size, &start, &count, atEnd)) == 0) {
                units.emplace_back(start, start + count);
            }
            std::vector<Bytes> expected = c.units;
            if (!atEnd) expected.resize(c.withoutEnd);
            EXPECT_EQ(units, expected) << testing::PrintToString(c.stream);
            EXPECT_EQ(status, c.endStatus) << testing::PrintToString(c.stream);
            EXPECT_EQ(start, nullptr);
            EXPECT_EQ(count, 0u);
        }
    }
}

// Every place of a start code, and of what is almost one, in sizes that cross all block borders.
TEST(NalUnits, FastScanEqualsReference) {
    for (const Bytes& filling : {Bytes{0xFF}, Bytes{0, 1}, Bytes{0}, Bytes{1, 0}}) {
        for (const Bytes& pattern : {Bytes{0, 0, 1}, Bytes{0, 0, 2}, Bytes{0, 1}, {0, 0, 0, 1}}) {
            for (size_t size = 0; size < 200; size += size < 24 ? 1 : 7) {
                Bytes clean(size);
                for (size_t i = 0; i < size; ++i) clean[i] = filling[i % filling.size()];
                for (size_t at = 0; at + pattern.size() <= size; ++at) {
                    Bytes data = clean;
                    std::copy(pattern.begin(), pattern.end(), data.begin() + static_cast<long>(at));
                    for (const size_t count : {size, size - 1}) {  // what lies behind is not read
                        const android::csd::Bytes bytes(data.data(), count);
                        ASSERT_EQ(android::csd::findStartCode(bytes),
                                  android::csd::findStartCodeReference(bytes))
                                << count << " bytes, pattern at " << at;
                    }
                }
            }
        }
    }
}

TEST(NalUnits, FindTakesTheFirstOfItsType) {
    const Bytes avc = {0, 0, 1, 0x68, 0xEE, 0, 0, 1, 0x67, 0x11, 0, 0, 0, 1, 0x27, 0x22};
    const Bytes hevc = {0, 0, 1, 0x40, 1, 0, 0, 1, 0x42, 1, 7, 0, 0, 1, 0x42, 2, 8};
    const struct {
        decltype(&MediaExtractorHelper::FindNAL) find;
        Bytes stream;
        unsigned type;
        std::optional<Bytes> unit;
    } cases[] = {
            {&MediaExtractorHelper::FindNAL, avc, 7, Bytes{0x67, 0x11}},
            {&MediaExtractorHelper::FindNAL, {0, 0, 1}, 0, Bytes()},  // no bytes count as type 0
            {&MediaExtractorHelper::FindHEVCNAL, hevc, 33, Bytes{0x42, 1, 7}},
            {&MediaExtractorHelper::FindHEVCNAL, hevc, 2, {}},
    };
    for (const auto& c : cases) {
        size_t stopOffset = 4711;
        const auto found = (*helper.*c.find)(c.stream.data(), c.stream.size(), c.type, &stopOffset);
        EXPECT_EQ(stopOffset, 4711u);
        EXPECT_EQ(found != nullptr, c.unit.has_value()) << c.type;
        if (found == nullptr || !c.unit) continue;
        EXPECT_EQ(Bytes(found->data(), found->data() + found->size()), c.unit);
        EXPECT_EQ(found->capacity(), found->size());
    }
}

TEST(NalUnits, ExpGolomb) {
    const struct {
        Bytes bits;
        unsigned value;
    } cases[] = {
            {{0x80}, 0},                                         // 1
            {{0x40}, 1},                                         // 010
            {{0x60}, 2},                                         // 011
            {{0x38}, 6},                                         // 00111
            {{0, 0, 0, 1, 0xFF, 0xFF, 0xFF, 0xFE}, 0xFFFFFFFE},  // 31 zeros
            {{0, 0, 0, 0, 0x80, 0, 0, 0, 0x80}, 0},              // 32 zeros, suffix 1
            {{0, 0, 0, 0, 0x80, 0, 0, 0, 0}, 0xFFFFFFFF},        // 32 zeros, suffix 0
            {{0, 0, 0, 0, 0x40, 0xFF, 0xFF, 0xFF, 0xFF}, 0},     // 33 zeros
            {{0}, 0},                                            // no end in sight
            {{}, 0},
    };
    for (const auto& c : cases) {
        android::ABitReader reader(c.bits.data(), c.bits.size());
        EXPECT_EQ(helper->parseUE(&reader), c.value) << testing::PrintToString(c.bits);
        EXPECT_EQ(android::base::BitReader(c.bits).ue(), c.value) << testing::PrintToString(c.bits);
    }
}

}  // namespace
