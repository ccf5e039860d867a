// Defines convertBlocks for ZR_PCM_ISA. Included by the files that are compiled for that one
// instruction set. They call no function that other files have as well: the linker could choose the
// copy that only some machines can run.

#pragma once

#include <algorithm>

#include "Helper/pcm/Samples.h"
#include "Helper/pcm/Vector.h"

namespace android::pcm {

// Which bytes of a vector are picked, alike for each lane.
struct Mask {
    bool used = false;
    uint8_t bytes[32];

    constexpr Mask() : bytes() { std::fill_n(bytes, sizeof(bytes), kNoByte); }
};

// A lane takes 16 samples from as many vectors as an old one has bytes to as many as a new one has.
template <typename Conversion>
struct Masks {
    static constexpr size_t kFrom = Conversion::kFrom, kTo = Conversion::kTo;
    Mask ofNewFromOld[kTo][kFrom];

    constexpr Masks() {
        for (size_t at = 0; at < 16 * kTo; ++at) {
            const int origin = Conversion::kOrigin[at % kTo];
            if (origin == kZero) continue;
            const size_t old = at / kTo * kFrom + static_cast<size_t>(origin);
            Mask& mask = ofNewFromOld[at / 16][old / 16];
            mask.used = true;
            mask.bytes[at % 16] = mask.bytes[16 + at % 16] = static_cast<uint8_t>(old % 16);
        }
    }
};

template <typename Conversion>
constexpr Masks<Conversion> kMasks;

template <typename Vec, Step kStep>
ZR_PCM_INLINE auto applyToAll(typename Vec::Vector numbers) {
    if constexpr (kStep == Step::kFlipSign8) return Vec::flipSign8(numbers);
    if constexpr (kStep == Step::kFloatToInt24) return Vec::int24FromFloat(numbers);
    if constexpr (kStep == Step::kInt32ToFloat) return Vec::floatFromInt32(numbers);
    if constexpr (kStep == Step::kNone) return numbers;
}

// Reads all of the block before it writes any.
template <typename Vec, typename Conversion>
ZR_PCM_INLINE void convertBlock(const uint8_t* from, uint8_t* to) {
    constexpr size_t kFrom = Conversion::kFrom, kTo = Conversion::kTo;
    // Whether the lanes of a vector are neighbours in memory, or else those of 16 samples.
    constexpr size_t kBytes = sizeof(typename Vec::Vector);
    constexpr bool kWhole = kBytes == 16 || (kFrom == kTo && 16 % kFrom == 0);

    typename Vec::Vector old[kFrom], made[kTo], picked;
#pragma GCC unroll 4
    for (size_t i = 0; i < kFrom; ++i) {
        if constexpr (kWhole) {
            load(from + i * kBytes, old[i]);
        } else {
            old[i] = Vec::loadLanes(from + i * 16, from + (i + kFrom) * 16);
        }
        old[i] = applyToAll<Vec, Conversion::kBefore>(old[i]);
    }
#pragma GCC unroll 4
    for (size_t i = 0; i < kTo; ++i) {
        bool first = true;
#pragma GCC unroll 4
        for (size_t k = 1; k <= kFrom; ++k) {
            const size_t j = kFrom - k;
            const Mask& mask = kMasks<Conversion>.ofNewFromOld[i][j];
            if (!mask.used) continue;
            load(mask.bytes, picked);
            made[i] = first ? Vec::pick(old[j], picked) : Vec::pickMore(made[i], old[j], picked);
            first = false;
        }
        made[i] = applyToAll<Vec, Conversion::kAfter>(made[i]);
    }
    if constexpr (kWhole) {
        storeAll(to, made, std::make_index_sequence<kTo>());
    } else {
        Vec::storeLanes(to, made);
    }
}

template <Isa kIsa, typename Conversion>
void convertBlocks(const uint8_t* from, uint8_t* to, size_t blocks, From order) {
    constexpr ptrdiff_t kFrom = kBlockSamples<kIsa> * Conversion::kFrom;
    constexpr ptrdiff_t kTo = kBlockSamples<kIsa> * Conversion::kTo;
    ptrdiff_t step = 1;
    if (order == From::kLast) {
        from -= kFrom;
        to -= kTo;
        step = -1;
    }
    for (; blocks > 0; --blocks, from += step * kFrom, to += step * kTo) {
        // What takes longer to work out than to read waits for memory that nobody fetches ahead.
        if constexpr (Conversion::kBefore == Step::kFloatToInt24) Vectors<kIsa>::fetch(from, to);
        convertBlock<Vectors<kIsa>, Conversion>(from, to);
    }
}

#define ZR_PCM_BLOCKS(name, kOrder, ...)                                                        \
    template void convertBlocks<Isa::ZR_PCM_ISA, __VA_ARGS__>(const uint8_t*, uint8_t*, size_t, \
                                                              From);
ZR_PCM_CONVERSIONS(ZR_PCM_BLOCKS)

}  // namespace android::pcm
