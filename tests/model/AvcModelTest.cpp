// Comparison of AVC configuration data with a model, from the raw bytes to all that can be seen.

#include "model/AvcPicture.h"
#include "model/CodecDataModel.h"
#include "zrcodecparser/TrackInfo.h"

namespace {

using test::Bits;
using test::Bytes;
using test::Seen;

// ---- Model

Seen modelConfig(const Bytes& data) {
    if (data.empty()) return {-1, "6 \"setAVCCSeqHeader size <= 0\""};
    const auto from = [&](size_t begin, size_t size) {  // zeros where there is nothing
        Bytes bytes(data.begin() + static_cast<ptrdiff_t>(std::min(begin, data.size())),
                    data.end());
        bytes.resize(size);
        return bytes;
    };
    std::optional<Bytes> sps = test::modelFind(data, 0x1f, 7), pps;
    const bool annexB = sps.has_value();
    if (!annexB) {
        if (data.size() < 4) return {};
        const size_t length = data[0] * 256u + data[1];
        if (data.size() - 4 < length || data[2] != 0x67) {
            return {0, "csd-avc: " + test::dataText(data)};
        }
        sps = from(2, length);
        pps = from(4 + length, data[2 + length] * 256u + data[3 + length]);
    }
    std::string trace;
    const auto picture = test::modelPicture(*sps, trace);
    if (!picture) return {std::nullopt, trace};
    if (annexB) pps = test::modelFind(data, 0x1f, 8);
    if (!pps || sps->size() > 65535 || pps->size() > 65535) return {-1, trace};

    Bytes record = *sps;
    record.resize(4);
    record[0] = 1;
    test::append(record, {0xfd, 0xe1});
    test::appendWithLength(record, *sps);
    record.push_back(1);
    test::appendWithLength(record, *pps);
    const auto [width, height] = *picture;
    std::ostringstream out;
    out << trace << (trace.empty() ? "" : "\n") << "csd-avc: " << test::dataText(record)
        << ", width: int32(" << width << "), height: int32(" << height << "), stride: int32("
        << width << "), slice-height: int32(" << height << ")\n4 \"found AVC codec config ("
        << width << " x " << height << ", " << +record[1] << "-profile level " << record[3] / 10
        << '.' << record[3] % 10 << ")\"";
    return {0, out.str()};
}

// ---- Input

// Flags and code numbers, mostly small ones: enough like a real one to reach every field.
Bytes randomSps(test::Random& random) {
    test::BitWriter bits;
    bits.u(8, 0x67);
    bits.u(8, random.of({44, 83, 86, 100, 110, 122, 244, 66, 77, 88, 118, 128, random.byte()}));
    bits.u(16, random.any()).ue(random.below(32));
    for (uint32_t fields = random.below(random.oneIn(4) ? 300 : 60); fields > 0; --fields) {
        if (random.oneIn(3)) bits.u(1, random.any());
        bits.ue(random.oneIn(16) ? random.anyCount() : random.below(random.oneIn(2) ? 4 : 120));
    }
    return bits.finish();
}

// A stream, the form with lengths, or neither.
Bytes randomConfig(test::Random& random) {
    const Bytes sps = randomSps(random);
    Bytes pps = random.bytes(1 + random.below(20)), data;
    pps[0] = 0x68;
    const uint32_t shape = random.below(5);
    if (shape < 2) data = test::randomStream(random, {sps, pps});
    if (shape >= 2) test::appendWithLength(data, sps);
    if (shape >= 2) test::appendWithLength(data, pps);
    if (shape == 4) data[random.below(3)] = random.byte();
    random.damage(data, 5);
    return data;
}

// ---- Comparison

int32_t configure(const Bytes& data, AMediaFormat* format) {
    android::TrackInfo info{.trackType = 1, .codecType = 104, .zeros = {}};
    size_t size = data.size();
    const int32_t status = test::helper->setVideoConfig(&info, data.data(), size, format);
    EXPECT_EQ(size, data.size());
    return status;
}

TEST(AvcModel, Configurations) {
    test::compareMany(randomConfig, configure, modelConfig, {"fatal 0", "-1 0", "0 1", "0 2"});
    test::compareLong({0x67, 0x68}, configure, modelConfig);
}

}  // namespace
