// Streams of parts behind start codes 00 00 01, and the bytes that keep these out of the parts.

#pragma once

#include <optional>

#include "inspect/base/Bytes.h"

namespace inspect {

// The offset of the first start code at or behind the given offset whose code byte is there too.
std::optional<size_t> findStartCode(Bytes data, size_t from);

// The first bytes of a unit of H.264 or H.265 without the emulation prevention bytes among them
// (ITU-T H.264 7.3.1, ITU-T H.265 7.3.1.1); fewer where it ends. rawSize is what they take with
// these.
struct Payload {
    ByteVector bytes;
    size_t rawSize = 0;
};
Payload payloadOf(Bytes unit, size_t sizeBytes);

}  // namespace inspect
