// The sequence header of VC-1 and WMV tracks, with what their decoders need besides.

#pragma once

#include <optional>
#include <vector>

#include "Helper/base/ByteReader.h"

namespace android::csd {

// The container's sequence header (SMPTE ST 421 Annex J) with the picture's width and height,
// 32-bit little-endian, and a profile byte behind it; for WMV 7 and 8 with the profile byte alone.
// Empty for a code that is none of kCodecTypeWmv to kCodecTypeVc1Advanced.
std::optional<std::vector<uint8_t>> makeVc1SequenceHeader(uint32_t codecType, base::Bytes header,
                                                          uint32_t width, uint32_t height);

}  // namespace android::csd
