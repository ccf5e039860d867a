// Comparison of HEVC configuration data with a model, from the raw bytes to all that can be seen.

#include "model/CodecDataModel.h"

namespace {

using test::Bytes;
using test::Seen;

// ---- Model

using Picture = std::optional<std::pair<int64_t, int64_t>>;

// Without emulation prevention bytes, ITU-T H.265 7.3.1.1. The last two bytes are not looked at.
Bytes modelPayload(const Bytes& sps) {
    Bytes payload;
    for (size_t i = 2; i + 2 < sps.size(); ++i) {
        payload.push_back(sps[i]);
        if (sps[i] != 0 || sps[i + 1] != 0 || sps[i + 2] != 3) continue;
        payload.push_back(0);
        i += 2;
    }
    return payload;
}

// Width and height, ITU-T H.265 7.3.2.2.1, with the window in luma samples; empty where the process
// ends.
Picture modelPicture(const Bytes& sps) {
    if (sps.size() < 2) return std::nullopt;
    if (sps.size() == 2) return std::pair{0, 0};
    const Bytes payload = modelPayload(sps);
    test::Bits bits(payload.data(), payload.size());
    bits.skipBits(4);
    const unsigned subLayers = bits.getBits(3);
    bits.skipBits(1 + 88 + 8);  // with general_profile_space to general_level_idc
    unsigned subLayerBits = 0;
    for (unsigned i = 0; i < subLayers; ++i) {
        if (bits.bit() == 1) subLayerBits += 88;
        if (bits.bit() == 1) subLayerBits += 8;
    }
    if (subLayers > 0) bits.skipBits(2 * (8 - subLayers));
    bits.skipBits(subLayerBits);
    bits.ue();
    if (bits.ue() == 3) bits.bit();
    int64_t width = bits.ue(), height = bits.ue();
    if (width > INT32_MAX || height > INT32_MAX) return std::nullopt;
    if (bits.bit() == 0) return std::pair{width, height};
    for (int64_t* side : {&width, &width, &height, &height}) *side -= bits.ue();
    if (width < 0 || height < 0) return std::nullopt;
    return std::pair{width, height};
}

Seen modelConfig(const Bytes& data) {
    if (data.empty()) return {-1, ""};
    const std::string missing = "5 \"no sps found !!!\"";  // said of a PPS, too
    std::vector<std::optional<Bytes>> units;
    for (const unsigned type : {32u, 33u, 34u}) {
        units.push_back(test::modelFind(data, 0x7e, type << 1));
    }
    if (!units[1]) return {-1, missing + "\ncsd-hevc: " + test::dataText(data)};
    const Picture picture = modelPicture(*units[1]);
    if (!picture) return {};
    if (!units[2]) return {-1, missing};

    Bytes record{1};
    for (size_t i = 3; i < 15; ++i) record.push_back(i < units[1]->size() ? (*units[1])[i] : 0);
    test::append(record, {0xf0, 0, 0xfc, 0xfd, 0xf8, 0xf8, 0, 0, 3});
    record.push_back(units[0] ? 3 : 2);
    for (uint8_t i = 0; i < 3; ++i) {
        if (!units[i]) continue;
        if (units[i]->size() > 65535) return {-1, ""};
        test::append(record, {static_cast<uint8_t>(32 + i), 0, 1});
        test::appendWithLength(record, *units[i]);
    }
    const char* const names[] = {"Unknown", "Main Profile", "Main 10 profile",
                                 "Main Still Picture profile"};
    const unsigned profile = record[1] % 32;
    const auto [width, height] = *picture;
    std::ostringstream out;
    out << "mime: string(video/hevc), csd-hevc: " << test::dataText(record) << ", width: int32("
        << width << "), height: int32(" << height << ")\n4 \"found HEVC codec config (" << width
        << " x " << height << ", " << names[profile < 4 ? profile : 0] << "-profile level "
        << record[12] / 10 << '.' << record[12] % 10 << ")\"";
    return {0, out.str()};
}

// ---- Input

// Mostly small numbers; among the constraint flags zeros, as in real ones, with and without
// emulation prevention.
Bytes randomSps(test::Random& random) {
    test::BitWriter bits;
    const uint32_t subLayers = random.oneIn(2) ? 0 : random.below(8);
    bits.u(4, random.any()).u(3, subLayers).u(1, 1);
    bits.u(8, random.oneIn(2) ? random.below(4) : random.byte()).u(32, random.any());
    for (int i = 0; i < 6; ++i) bits.u(8, random.of({0, 0, 0, 1, 2, 3, random.byte()}));
    bits.u(8, random.byte());
    uint32_t subLayerBits = 0;
    for (uint32_t i = 0; i < 2 * subLayers; ++i) {
        const uint32_t present = random.below(2);
        bits.u(1, present);
        if (present) subLayerBits += i % 2 == 0 ? 88u : 8u;
    }
    if (subLayers > 0) bits.u(2 * (8 - subLayers), 0);
    for (; subLayerBits > 0; subLayerBits -= 8) bits.u(8, random.byte());
    const uint32_t chroma = random.below(5);
    bits.ue(0).ue(chroma);
    if (chroma == 3) bits.u(1, random.any());
    for (int i = 0; i < 2; ++i) bits.ue(random.oneIn(8) ? random.anyCount() : random.below(4096));
    bits.u(1, random.any());
    for (int i = 0; i < 6; ++i) bits.ue(random.oneIn(16) ? random.anyCount() : random.below(40));
    return test::withEmulationPrevention({0x42, 1}, bits.finish(), random.oneIn(4) ? 0 : 3);
}

Bytes randomConfig(test::Random& random) {
    Bytes vps = random.bytes(1 + random.below(20)), pps = random.bytes(1 + random.below(20));
    vps[0] = static_cast<uint8_t>(0x40 | random.of({0, 1, 0x80}));
    pps[0] = static_cast<uint8_t>(0x44 | random.of({0, 1, 0x80}));
    const Bytes sps = randomSps(random);
    Bytes data = test::randomStream(random, {vps, sps, sps, pps});
    random.damage(data, 5);
    return data;
}

// ---- Comparison

int32_t configure(const Bytes& data, AMediaFormat* format) {
    return test::helper->MakeHEVCCodecSpecificData(data.data(), data.size(), format);
}

TEST(HevcModel, Configurations) {
    test::compareMany(randomConfig, configure, modelConfig, {"fatal 0", "-1 1", "-1 2", "0 2"});
    test::compareLong({0x40, 0x42, 0x44}, configure, modelConfig);
}

}  // namespace
