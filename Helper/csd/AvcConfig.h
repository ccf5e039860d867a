// The AVC decoder configuration record (ISO/IEC 14496-15 5.3.3.1.2, box avcC) and the shapes in
// which containers hand over what goes into it.

#pragma once

#include <optional>
#include <vector>

#include "Helper/base/ByteReader.h"

namespace android::csd {

using base::Bytes;

// Offsets of bytes that the record shares with the SPS; they are the same in both.
inline constexpr size_t kAvcRecordProfile = 1;
inline constexpr size_t kAvcRecordLevel = 3;

// What goes into a record. The PPS may be longer than the bytes that are there; the rest is zero.
struct AvcParameterSets {
    Bytes sps;
    Bytes pps;
    size_t ppsSize;
};

// The first SPS and the first PPS of an Annex B stream, as far as there are such.
struct AvcUnits {
    std::optional<Bytes> sps;
    std::optional<Bytes> pps;
};
AvcUnits findAvcUnits(Bytes stream);

// Splits the form of one SPS and one PPS, each behind a 16-bit big-endian length. Empty when the
// data are not of this form: the SPS leaves no room for the length of a PPS, or does not begin with
// 67. Once the SPS fits, the form is trusted: the PPS may claim more than the data hold. Fatal when
// the data are shorter than 4 bytes.
std::optional<AvcParameterSets> splitAvcLengthPrefixed(Bytes data);

// The record, with 2-byte NAL unit lengths. Empty when a unit is longer than the record's 16-bit
// lengths can say. Of an SPS shorter than the fields copied from it the missing bytes are zero.
std::optional<std::vector<uint8_t>> makeAvcRecord(const AvcParameterSets& sets);

}  // namespace android::csd
