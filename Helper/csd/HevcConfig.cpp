#include "Helper/csd/HevcConfig.h"

#include <algorithm>

#include "Helper/base/ByteWriter.h"
#include "Helper/csd/NalUnits.h"

namespace android::csd {
namespace {

// nal_unit_type, ITU-T H.265 Table 7-1
constexpr uint8_t kNalVps = 32;
constexpr uint8_t kNalSps = 33;
constexpr uint8_t kNalPps = 34;

constexpr size_t kRecordHeaderSize = 23;
constexpr size_t kRecordLengthSize = 21;  // constantFrameRate to lengthSizeMinusOne
constexpr size_t kArrayHeaderSize = 5;    // with the length of the one unit in it
constexpr uint8_t kConfigurationVersion = 1;

// What the record copies out of the SPS: general_profile_space to general_level_idc.
constexpr size_t kSpsProfile = 3;
constexpr size_t kProfileTierLevelSize = 12;

void appendArray(base::ByteWriter& record, uint8_t nalType, Bytes unit) {
    record.u8(nalType);                              // array_completeness 0, NAL_unit_type
    record.u16(1);                                   // numNalus
    record.u16(static_cast<uint16_t>(unit.size()));  // nalUnitLength
    record.bytes(unit);                              // nalUnit
}

Bytes prefixOf(size_t lengthSize) {
    static constexpr std::array<uint8_t, 4> kStartCode = {0, 0, 0, 1};
    return lengthSize < 3 ? Bytes(kStartCode).first(lengthSize)
                          : Bytes(kStartCode).last(lengthSize);
}

}  // namespace

HevcUnits findHevcUnits(Bytes stream) {
    HevcUnits found;
    while (!found.vps || !found.sps || !found.pps) {
        const NalStep step = nextNalUnit(stream, true);
        if (step.result != NalWalk::kFound) break;
        const unsigned type = hevcNalType(step.unit);
        if (type == kNalVps && !found.vps) found.vps = step.unit;
        if (type == kNalSps && !found.sps) found.sps = step.unit;
        if (type == kNalPps && !found.pps) found.pps = step.unit;
        stream = step.rest;
    }
    return found;
}

std::optional<std::vector<uint8_t>> makeHevcRecord(std::optional<Bytes> vps, Bytes sps, Bytes pps) {
    const Bytes first = vps.value_or(Bytes());
    if (std::max({first.size(), sps.size(), pps.size()}) > UINT16_MAX) return std::nullopt;

    base::ByteWriter record(kRecordHeaderSize + 3 * kArrayHeaderSize + first.size() + sps.size() +
                            pps.size());
    record.u8(kConfigurationVersion);  // configurationVersion
    for (size_t i = 0; i < kProfileTierLevelSize; ++i) {
        record.u8(base::byteAt(sps, kSpsProfile + i));  // general_profile_space … general_level_idc
    }
    record.u16(0xF000);  // reserved '1111', min_spatial_segmentation_idc 0
    record.u8(0xFC);     // reserved '111111', parallelismType 0
    record.u8(0xFD);     // reserved '111111', chromaFormat 1
    record.u8(0xF8);     // reserved '11111', bitDepthLumaMinus8 0
    record.u8(0xF8);     // reserved '11111', bitDepthChromaMinus8 0
    record.u16(0);       // avgFrameRate
    record.u8(3);  // constantFrameRate, numTemporalLayers, temporalIdNested, lengthSizeMinusOne 3
    record.u8(vps ? 3 : 2);  // numOfArrays
    if (vps) appendArray(record, kNalVps, *vps);
    appendArray(record, kNalSps, sps);
    appendArray(record, kNalPps, pps);
    return record.take();
}

HevcRecordResult HevcParameterSetStream::assign(Bytes record) {
    if (record.size() < kRecordHeaderSize || record[0] != kConfigurationVersion) {
        return HevcRecordResult::kMalformed;
    }
    base::ByteReader reader(record.subspan(kRecordLengthSize));
    const Bytes prefix = prefixOf((reader.u8() & 3u) + 1);  // …, lengthSizeMinusOne
    const unsigned numOfArrays = reader.u8();
    for (unsigned j = 0; j < numOfArrays; ++j) {
        const unsigned nalType = reader.u8() & 0x3Fu;  // array_completeness, NAL_unit_type
        const unsigned numNalus = reader.u16();
        const bool isWanted = nalType >= kNalVps && nalType <= kNalPps;
        // Behind the end of the record there are empty units, of which only the wanted ones count.
        for (unsigned i = 0; i < numNalus && (isWanted || !reader.atEnd()); ++i) {
            const size_t nalUnitLength = reader.u16();
            const Bytes nalUnit = reader.bytes(nalUnitLength);
            if (isWanted && !append(prefix, nalUnit, nalUnitLength))
                return HevcRecordResult::kMalformed;
        }
    }
    return mSize == 0 ? HevcRecordResult::kEmpty : HevcRecordResult::kStream;
}

bool HevcParameterSetStream::append(Bytes prefix, Bytes present, size_t unitSize) {
    if (prefix.size() + unitSize > kCapacity - mSize) return false;
    auto end = std::ranges::copy(prefix, mBytes.begin() + static_cast<ptrdiff_t>(mSize)).out;
    end = std::ranges::copy(present, end).out;
    std::fill_n(end, unitSize - present.size(), uint8_t{0});
    mSize += prefix.size() + unitSize;
    return true;
}

}  // namespace android::csd
