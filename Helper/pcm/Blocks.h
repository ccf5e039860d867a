// Defines the converters of blocks for ZR_PCM_ISA. Included by the files that are compiled for that
// one instruction set. They call no function that other files have as well: the linker could choose
// the copy that only some machines can run.

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
template <Conversion kName>
struct Masks {
    static constexpr size_t kFrom = kRow<kName>.from, kTo = kRow<kName>.to;
    Mask ofNewFromOld[kTo][kFrom];

    constexpr Masks() {
        for (size_t at = 0; at < 16 * kTo; ++at) {
            const int origin = kRow<kName>.origin[at % kTo];
            if (origin == kZero) continue;
            const size_t old = at / kTo * kFrom + static_cast<size_t>(origin);
            Mask& mask = ofNewFromOld[at / 16][old / 16];
            mask.used = true;
            mask.bytes[at % 16] = mask.bytes[16 + at % 16] = static_cast<uint8_t>(old % 16);
        }
    }
};

template <Conversion kName>
constexpr Masks<kName> kMasks;

template <typename Vec, Step kStep>
ZR_PCM_INLINE auto applyToAll(typename Vec::Vector numbers) {
    if constexpr (kStep == Step::kFlipSign8) return Vec::flipSign8(numbers);
    if constexpr (kStep == Step::kToInt24) return Vec::int24FromFloat(numbers);
    if constexpr (kStep == Step::kToFloat) return Vec::floatFromInt32(numbers);
    if constexpr (kStep == Step::kNone) return numbers;
}

// Reads all of the block before it writes any.
template <Isa kIsa, Conversion kName>
ZR_PCM_INLINE void convertBlock(const uint8_t* from, uint8_t* to) {
    using Vec = Vectors<kIsa>;
    using Vector = typename Vec::Vector;
    constexpr size_t kFrom = kRow<kName>.from, kTo = kRow<kName>.to, kBytes = sizeof(Vector);
    // Whether the lanes of a vector are neighbours in memory, or else those of 16 samples.
    constexpr bool kWhole = kBytes == 16 || (kFrom == kTo && 16 % kFrom == 0);
    // As many samples as a vector has bytes, once or several times.
    constexpr size_t kGroups = kBlockSamples<kIsa> / kBytes;

    constexpr size_t kOld = kGroups * kFrom, kMade = kGroups * kTo;

    Vector old[kOld], made[kMade], picked;
#pragma GCC unroll 8
    for (size_t i = 0; i < kOld; ++i) {
        if constexpr (kWhole) {
            load(from + i * kBytes, old[i]);
        } else {
            old[i] = Vec::loadLanes(from + i * 16, from + (i + kFrom) * 16);
        }
        old[i] = applyToAll<Vec, kRow<kName>.before>(old[i]);
    }
#pragma GCC unroll 8
    for (size_t i = 0; i < kMade; ++i) {
        const Vector* group = old + i / kTo * kFrom;
        bool first = true;
#pragma GCC unroll 4
        for (size_t k = 1; k <= kFrom; ++k) {
            const size_t j = kFrom - k;
            const Mask& mask = kMasks<kName>.ofNewFromOld[i % kTo][j];
            if (!mask.used) continue;
            load(mask.bytes, picked);
            made[i] =
                    first ? Vec::pick(group[j], picked) : Vec::pickMore(made[i], group[j], picked);
            first = false;
        }
        made[i] = applyToAll<Vec, kRow<kName>.after>(made[i]);
    }
    if constexpr (kWhole) {
        storeAll(to, made, std::make_index_sequence<kMade>());
    } else {
        static_assert(kGroups == 1);
        Vec::storeLanes(to, made);
    }
}

template <Isa kIsa, Conversion kName>
ZR_PCM_INLINE void convertNext(const uint8_t*& from, uint8_t*& to, ptrdiff_t step) {
    // What takes longer to work out than to read waits for memory that nobody fetches ahead.
    if constexpr (kRow<kName>.before == Step::kToInt24) Vectors<kIsa>::fetch(from, to);
    convertBlock<kIsa, kName>(from, to);
    from += step * static_cast<ptrdiff_t>(kBlockSamples<kIsa> * kRow<kName>.from);
    to += step * static_cast<ptrdiff_t>(kBlockSamples<kIsa> * kRow<kName>.to);
}

template <Isa kIsa, Conversion kName>
static void convertBlocks(const uint8_t* from, uint8_t* to, size_t blocks, From order) {
    constexpr const Row& row = kRow<kName>;
    ptrdiff_t step = 1;  // a constant where the row's order is kFirst, as then are all its runs'
    if (row.order == From::kLast && order == From::kLast) {
        from -= kBlockSamples<kIsa> * row.from;
        to -= kBlockSamples<kIsa> * row.to;
        step = -1;
    }
    // A block of a few instructions takes as long as the loop around it, more or less as that lies
    // in memory.
    if constexpr (row.from == row.to && row.to != 3) {
        for (; blocks >= 4; blocks -= 4) {
            convertNext<kIsa, kName>(from, to, step);
            convertNext<kIsa, kName>(from, to, step);
            convertNext<kIsa, kName>(from, to, step);
            convertNext<kIsa, kName>(from, to, step);
        }
    }
    for (; blocks > 0; --blocks) convertNext<kIsa, kName>(from, to, step);
}

template <Isa kIsa, size_t... kNames>
constexpr BlockConverters blockConverters(std::index_sequence<kNames...>) {
    return {convertBlocks<kIsa, Conversion{kNames}>...};
}

constexpr const BlockConverters ZR_PCM_BLOCKS =
        blockConverters<Isa::ZR_PCM_ISA>(std::make_index_sequence<kRows.size()>());

}  // namespace android::pcm
