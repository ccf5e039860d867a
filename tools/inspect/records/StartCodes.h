// Streams of parts behind start codes 00 00 01.

#pragma once

#include <optional>

#include "inspect/base/Bytes.h"

namespace inspect {

// The offset of the first start code at or behind the given offset whose code byte is there too.
std::optional<size_t> findStartCode(Bytes data, size_t from);

}  // namespace inspect
