// The HEVC decoder configuration record (ISO/IEC 14496-15 8.3.3.1.2, box hvcC): made from an Annex
// B stream, and turned back into one.

#pragma once

#include <array>
#include <optional>
#include <vector>

#include "Helper/base/ByteReader.h"

namespace android::csd {

using base::Bytes;

// Offsets in the record.
inline constexpr size_t kHevcRecordProfile = 1;  // general_profile_space, _tier_flag, _profile_idc
inline constexpr size_t kHevcRecordLevel = 12;   // general_level_idc

// The first units of their kind in an Annex B stream, as far as there are such.
struct HevcUnits {
    std::optional<Bytes> vps;
    std::optional<Bytes> sps;
    std::optional<Bytes> pps;
};
HevcUnits findHevcUnits(Bytes stream);

// The record, with 4-byte NAL unit lengths. Of the SPS it holds profile, tier and level as they
// stand; chroma format and bit depths are deliberately those of 8-bit 4:2:0 whatever the SPS says.
// Empty when a unit is longer than the record's 16-bit lengths can say.
std::optional<std::vector<uint8_t>> makeHevcRecord(std::optional<Bytes> vps, Bytes sps, Bytes pps);

enum class HevcRecordResult {
    kStream,     // the stream holds at least one parameter set
    kEmpty,      // no VPS, SPS or PPS in the record
    kMalformed,  // too short, of another version, or more than the stream has room for
};

// An Annex B stream of the record's parameter sets in their order, each behind as many bytes as the
// record's NAL unit lengths have: a start code where that is 3 or 4, zeros where it is 1 or 2.
class HevcParameterSetStream {
public:
    // Of one record. Arrays and units that run past its end read as zero there.
    HevcRecordResult assign(Bytes record);
    Bytes bytes() const { return Bytes(mBytes).first(mSize); }

private:
    bool append(Bytes prefix, Bytes present, size_t unitSize);

    static constexpr size_t kCapacity = 1024;
    std::array<uint8_t, kCapacity> mBytes;
    size_t mSize = 0;
};

}  // namespace android::csd
