// The conversions, a row each, and what becomes of a single sample. Whatever converts several
// samples at a time gives what this gives, bit for bit.

#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Helper/pcm/Convert.h"

namespace android::pcm {

// Numbers stand in memory as the machine has them.
static_assert(std::endian::native == std::endian::little);

// Whether the first or the last sample of a run comes first.
enum class From { kFirst, kLast };

// What is done to a number before its bytes are put in another order, or after. A new step has five
// places: here, apply() below for a single number, applyToAll() in Blocks.h, and its form for
// vectors in Vector.h, once for x86-64 and once for AArch64.
enum class Step { kNone, kFlipSign8, kToInt24, kToFloat };

constexpr int kZero = -1;

struct Row {
    Conversion name;
    From order;
    Step before;
    size_t from;                // bytes of a sample
    size_t to;                  // bytes of a new sample
    std::array<int, 4> origin;  // of each of these, which byte of the old one it is, or kZero
    Step after;
};

// Deliberately, kInt32ToBigInt24 takes the lower 24 bits and kFloatToBigInt24 the sign and the
// upper 16, other than the little-endian forms.
// clang-format off
constexpr auto kRows = [] {
    using enum Conversion;
    using enum From;
    using enum Step;
    return std::to_array<Row>({
        // name             order   before    from to origin           after
        {kSigned8ToInt16,   kLast,  kNone,      1, 2, {kZero, 0},       kNone},
        {kUnsigned8ToInt16, kLast,  kFlipSign8, 1, 2, {kZero, 0},       kNone},
        {kInt24ToFloat,     kLast,  kNone,      3, 4, {kZero, 0, 1, 2}, kToFloat},
        {kInt24ToInt16,     kFirst, kNone,      3, 2, {1, 2},           kNone},
        {kBigInt24ToInt16,  kFirst, kNone,      3, 2, {1, 0},           kNone},
        {kInt32ToInt16,     kFirst, kNone,      4, 2, {2, 3},           kNone},
        {kInt32ToInt24,     kFirst, kNone,      4, 3, {1, 2, 3},        kNone},
        {kInt32ToBigInt24,  kFirst, kNone,      4, 3, {2, 1, 0},        kNone},
        {kFloatToInt24,     kFirst, kToInt24,   4, 3, {0, 1, 2},        kNone},
        {kFloatToBigInt24,  kFirst, kToInt24,   4, 3, {3, 2, 1},        kNone},
        {kInt32ToFloat,     kFirst, kNone,      4, 4, {0, 1, 2, 3},     kToFloat},
        {kBigInt32ToFloat,  kFirst, kNone,      4, 4, {3, 2, 1, 0},     kToFloat},
        {kInt24ToInt32,     kFirst, kNone,      3, 4, {kZero, 0, 1, 2}, kNone},
        {kBigInt24ToInt32,  kFirst, kNone,      3, 4, {kZero, 2, 1, 0}, kNone},
        {kSwap16,           kFirst, kNone,      2, 2, {1, 0},           kNone},
        {kSwap24,           kFirst, kNone,      3, 3, {2, 1, 0},        kNone},
        {kSwap32,           kFirst, kNone,      4, 4, {3, 2, 1, 0},     kNone},
    });
}();
// clang-format on

template <Conversion kName>
constexpr Row kRow = kRows[static_cast<size_t>(kName)];

static_assert([] {
    size_t i = 0;
    for (const Row& row : kRows) {
        if (row.name != static_cast<Conversion>(i++)) return false;
    }
    return true;
}());

constexpr float kClipAbove = 0x1.FFFFFCp-1f;  // 1 - 2^-23
constexpr int kScale24 = 23;                  // as an exponent of 2
constexpr float kScale32 = 0x1p-31f;

// Clipped, and rounded half away from zero; 0 for NaN.
inline int32_t int24FromFloat(float value) {
    if (value <= -1.0f) return -0x800000;
    if (value >= kClipAbove) return 0x7FFFFF;
    if (value != value) return 0;
    const double scaled = value * float{1 << kScale24};
    return static_cast<int32_t>(scaled > 0 ? scaled + 0.5 : scaled - 0.5);
}

template <Step kStep, size_t kBytes>
void apply([[maybe_unused]] std::array<uint8_t, kBytes>& sample) {
    using Word = std::array<uint8_t, 4>;
    if constexpr (kStep == Step::kFlipSign8) {
        sample[0] ^= 0x80;
    } else if constexpr (kStep == Step::kToInt24) {
        sample = std::bit_cast<Word>(int24FromFloat(std::bit_cast<float>(sample)));
    } else if constexpr (kStep == Step::kToFloat) {
        const auto number = static_cast<float>(std::bit_cast<int32_t>(sample));
        sample = std::bit_cast<Word>(number * kScale32);
    }
}

// Reads all of the sample before it writes any.
template <Conversion kName>
void convertSample(const uint8_t* from, uint8_t* to) {
    constexpr const Row& row = kRow<kName>;
    std::array<uint8_t, row.from> old;
    std::memcpy(old.data(), from, old.size());
    apply<row.before>(old);
    std::array<uint8_t, row.to> made{};
    for (size_t i = 0; i < made.size(); ++i) {
        if (row.origin[i] != kZero) made[i] = old[static_cast<size_t>(row.origin[i])];
    }
    apply<row.after>(made);
    std::memcpy(to, made.data(), made.size());
}

enum class Isa { kSsse3, kAvx2, kNeon };

// 16 for each lane of 16 bytes; two vectors' worth on AArch64, where processors that do nothing out
// of order have something to do while they wait for a result.
template <Isa kIsa>
constexpr size_t kBlockSamples = kIsa == Isa::kSsse3 ? 16 : 32;

// Converts blocks of samples, each of them read before it is written, from the first sample onwards
// or down from the end.
using BlockConverter = void(const uint8_t* from, uint8_t* to, size_t blocks, From order);

// Of each conversion in the order of the rows. Defined in the files that are compiled for one
// instruction set.
using BlockConverters = std::array<BlockConverter*, kRows.size()>;
extern const BlockConverters kSsse3Blocks, kAvx2Blocks, kNeonBlocks;

}  // namespace android::pcm
