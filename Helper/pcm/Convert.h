// Conversions of runs of samples, named after what they read and write; see Samples.h for each.
//
// Each does what its plain loop does, forward or backward, also where destination and source
// overlap; nothing but the samples is read or written. Runs of more bytes than a size can tell are
// fatal.

#pragma once

#include <cstddef>
#include <cstdint>

namespace android::pcm {

using Converter = void(const uint8_t* from, uint8_t* to, size_t samples);

// Backward.
Converter signed8ToInt16, unsigned8ToInt16, int24ToFloat;

// Forward.
Converter int24ToInt16, bigInt24ToInt16, int32ToInt16;
Converter int32ToInt24, int32ToBigInt24, floatToInt24, floatToBigInt24;
Converter int32ToFloat, bigInt32ToFloat;
Converter int24ToInt32, bigInt24ToInt32;
Converter swap16, swap24, swap32;

}  // namespace android::pcm
