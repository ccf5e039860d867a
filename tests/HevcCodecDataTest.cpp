#include "platform/MetaData.h"
#include "support/BitWriter.h"
#include "support/Helper.h"
#include "zrcodecparser/MediaCodecHelper.h"

namespace {

using android::sp;
using test::operator+;
using Data = test::Bytes;

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
    const Data full = header(3, 1, Data{0x20, 0, 1, 3, 0xFC} + longest);
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
            {header(3, 2, {31, 0, 1, 0, 1, 0x3E, 35, 0, 1, 0, 1, 0x46}), {-1, {}}},
            {header(3, 1, {39, 0xFF, 0xFF, 0xFF, 0xFF}), {-1, {}}},
            {header(3, 1, {0x21, 0, 1, 0, 1, 0x42, 0x22, 0, 1, 0, 1, 0x44}),
             {0, {{0, 0, 0, 1, 0x42}}}},
            {header(3, 1, {0x21, 0, 1, 0, 4, 0x42, 1}), {0, {{0, 0, 0, 1, 0x42, 1, 0, 0}}}},
            {header(3, 1, {0x21, 0, 2, 0, 1, 0x42}), {0, {{0, 0, 0, 1, 0x42, 0, 0, 0, 1}}}},
            {header(0, 1, {0x21, 0xFF, 0xFF}), {-1007, {}}},  // 65535 empty units
            {full, {0, Data{0, 0, 0, 1} + longest}},
            {header(3, 1, Data{0x20, 0, 1, 3, 0xFD, 1} + longest), {-1007, {}}},
            {header(3, 1, {0x20, 0, 1, 0xFF, 0xFF}), {-1007, {}}},
    };
    for (const auto& c : cases) {
        parse(full);  // what it leaves behind is not to show
        EXPECT_EQ(parse(c.data), c.parsed) << testing::PrintToString(c.data);
    }
}

}  // namespace
