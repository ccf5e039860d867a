// Conversions of runs of samples, named after what they read and write; see Samples.h for each.

#pragma once

#include <cstddef>
#include <cstdint>

namespace android::pcm {

enum class Conversion {
    // Backward, the last sample first.
    kSigned8ToInt16,
    kUnsigned8ToInt16,
    kInt24ToFloat,
    // Forward.
    kInt24ToInt16,
    kBigInt24ToInt16,
    kInt32ToInt16,
    kInt32ToInt24,
    kInt32ToBigInt24,
    kFloatToInt24,
    kFloatToBigInt24,
    kInt32ToFloat,
    kBigInt32ToFloat,
    kInt24ToInt32,
    kBigInt24ToInt32,
    kSwap16,
    kSwap24,
    kSwap32,
};

// Does what a plain loop does, forward or backward, also where destination and source overlap;
// nothing but the samples is read or written. Runs of more bytes than a size can tell are fatal.
void convert(Conversion conversion, const uint8_t* from, uint8_t* to, size_t samples);

}  // namespace android::pcm
