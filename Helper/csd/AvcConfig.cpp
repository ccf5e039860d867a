#include "Helper/csd/AvcConfig.h"

#include <algorithm>
#include <array>

#include "Helper/base/ByteWriter.h"
#include "Helper/base/Checked.h"
#include "Helper/csd/NalUnits.h"

namespace android::csd {
namespace {

// nal_unit_type, ITU-T H.264 Table 7-1
constexpr unsigned kNalSps = 7;
constexpr unsigned kNalPps = 8;

constexpr size_t kLengthSize = 2;
constexpr uint8_t kSpsHeader = 0x67;  // nal_ref_idc 3, nal_unit_type 7

}  // namespace

AvcUnits findAvcUnits(Bytes stream) {
    AvcUnits found;
    while (!found.sps || !found.pps) {
        const NalStep step = nextNalUnit(stream, true);
        if (step.result != NalWalk::kFound) break;
        const unsigned type = avcNalType(step.unit);
        if (type == kNalSps && !found.sps) found.sps = step.unit;
        if (type == kNalPps && !found.pps) found.pps = step.unit;
        stream = step.rest;
    }
    return found;
}

std::optional<AvcParameterSets> splitAvcLengthPrefixed(Bytes data) {
    const size_t spsSize = base::bigEndianAt(data, 0, kLengthSize);
    if (base::checkedSub(data.size(), 2 * kLengthSize) < spsSize) return std::nullopt;
    if (data[kLengthSize] != kSpsHeader) return std::nullopt;

    base::ByteReader reader(data.subspan(kLengthSize));
    const Bytes sps = reader.bytes(spsSize);
    const size_t ppsSize = reader.u16();
    return AvcParameterSets{sps, reader.bytes(ppsSize), ppsSize};
}

std::optional<std::vector<uint8_t>> makeAvcRecord(const AvcParameterSets& sets) {
    const auto& [sps, pps, ppsSize] = sets;
    if (sps.size() > UINT16_MAX || ppsSize > UINT16_MAX) return std::nullopt;

    base::ByteWriter record(sps.size() + ppsSize + 11);
    record.bytes(std::to_array<uint8_t>({
            1,                     // configurationVersion
            base::byteAt(sps, 1),  // AVCProfileIndication
            base::byteAt(sps, 2),  // profile_compatibility
            base::byteAt(sps, 3),  // AVCLevelIndication
            0xFD,                  // reserved '111111', lengthSizeMinusOne 1
            0xE1,                  // reserved '111', numOfSequenceParameterSets 1
    }));
    record.u16(static_cast<uint16_t>(sps.size()));  // sequenceParameterSetLength
    record.bytes(sps);                              // sequenceParameterSetNALUnit
    record.u8(1);                                   // numOfPictureParameterSets
    record.u16(static_cast<uint16_t>(ppsSize));     // pictureParameterSetLength
    record.bytes(pps);                              // pictureParameterSetNALUnit
    record.zeros(ppsSize - pps.size());
    return record.take();
}

}  // namespace android::csd
