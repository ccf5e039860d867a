// NAL units in an Annex B byte stream (ITU-T H.264 and H.265, Annex B).

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Helper/base/ByteReader.h"

namespace android::csd {

using base::Bytes;

// 00 00 01; the zeros that may stand before it belong to no unit.
inline constexpr size_t kStartCodeSize = 3;

// The offset of the first 00 00 01 in the data, or data.size() when there is none.
size_t findStartCode(Bytes data);

// The same by the plainest loop: the reference for the function above.
size_t findStartCodeReference(Bytes data);

enum class NalWalk {
    kFound,
    kEnd,        // nothing more to deliver
    kMalformed,  // the data do not open with a start code
};

struct NalStep {
    NalWalk result;
    Bytes unit;  // without start code and trailing zeros, but at least its first byte; may be empty
    Bytes rest;  // what the next step takes; empty, with a null pointer, after the last unit
};

// Takes the first unit off a stream that opens with two or more zero bytes and a 01. A unit that
// reaches the end of the data has no start code after it: it counts only if atEndOfStream.
// On anything but kFound `rest` is what was given.
NalStep nextNalUnit(Bytes stream, bool atEndOfStream);

// nal_unit_type from the header byte; an empty unit has a header byte of 0.
inline unsigned avcNalType(Bytes unit) {
    return base::byteAt(unit, 0) & 0x1Fu;
}
inline unsigned hevcNalType(Bytes unit) {
    return (base::byteAt(unit, 0) >> 1) & 0x3Fu;
}

// The first unit of the stream whose type is the wanted one. A piece of the stream that is no unit
// ends the search.
template <typename TypeOf>
std::optional<Bytes> findNalUnit(Bytes stream, unsigned type, TypeOf typeOf) {
    for (;;) {
        const NalStep step = nextNalUnit(stream, true);
        if (step.result != NalWalk::kFound) return std::nullopt;
        if (typeOf(step.unit) == type) return step.unit;
        stream = step.rest;
    }
}

}  // namespace android::csd
