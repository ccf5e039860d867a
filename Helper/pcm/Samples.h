// What becomes of a single sample in each conversion. Whatever converts several samples at a time
// gives what this gives, bit for bit.

#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace android::pcm {

// Numbers stand in memory as the machine has them.
static_assert(std::endian::native == std::endian::little);

// What is done to a number before its bytes are put in another order, or after.
enum class Step { kNone, kFlipSign8, kFloatToInt24, kInt32ToFloat };

constexpr float kClipAbove = 0x1.FFFFFCp-1f;  // 1 - 2^-23
constexpr int kScale24 = 23;                  // as an exponent of 2
constexpr float kInt32ToFloat = 0x1p-31f;

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
    } else if constexpr (kStep == Step::kFloatToInt24) {
        sample = std::bit_cast<Word>(int24FromFloat(std::bit_cast<float>(sample)));
    } else if constexpr (kStep == Step::kInt32ToFloat) {
        const auto number = static_cast<float>(std::bit_cast<int32_t>(sample));
        sample = std::bit_cast<Word>(number * kInt32ToFloat);
    }
}

// An order of bytes: of each byte of the new sample, which byte of the old one it is, or kZero.
constexpr int kZero = -1;

template <size_t kFromBytes, int... kOrigins>
struct Bytes {
    static constexpr size_t kFrom = kFromBytes, kTo = sizeof...(kOrigins);
    static constexpr std::array<int, kTo> kOrigin = {kOrigins...};
    static constexpr Step kBefore = Step::kNone, kAfter = Step::kNone;
};

template <Step kStep, typename Order>
struct Before : Order {
    static constexpr Step kBefore = kStep;
};

template <typename Order, Step kStep>
struct After : Order {
    static constexpr Step kAfter = kStep;
};

// Reads all of the sample before it writes any.
template <typename Conversion>
void convert(const uint8_t* from, uint8_t* to) {
    std::array<uint8_t, Conversion::kFrom> old;
    std::memcpy(old.data(), from, old.size());
    apply<Conversion::kBefore>(old);
    std::array<uint8_t, Conversion::kTo> made{};
    for (size_t i = 0; i < made.size(); ++i) {
        const int origin = Conversion::kOrigin[i];
        if (origin != kZero) made[i] = old[static_cast<size_t>(origin)];
    }
    apply<Conversion::kAfter>(made);
    std::memcpy(to, made.data(), made.size());
}

// Whether the first or the last sample of a run comes first.
enum class From { kFirst, kLast };

// Conversions by their names in Convert.h. Deliberately, int32ToBigInt24 takes the lower 24 bits
// and floatToBigInt24 the sign and the upper 16, other than the little-endian forms.
#define ZR_PCM_CONVERSIONS(X)                                                          \
    X(signed8ToInt16, From::kLast, Bytes<1, kZero, 0>)                                 \
    X(unsigned8ToInt16, From::kLast, Before<Step::kFlipSign8, Bytes<1, kZero, 0>>)     \
    X(int24ToFloat, From::kLast, After<Bytes<3, kZero, 0, 1, 2>, Step::kInt32ToFloat>) \
    X(int24ToInt16, From::kFirst, Bytes<3, 1, 2>)                                      \
    X(bigInt24ToInt16, From::kFirst, Bytes<3, 1, 0>)                                   \
    X(int32ToInt16, From::kFirst, Bytes<4, 2, 3>)                                      \
    X(int32ToInt24, From::kFirst, Bytes<4, 1, 2, 3>)                                   \
    X(int32ToBigInt24, From::kFirst, Bytes<4, 2, 1, 0>)                                \
    X(floatToInt24, From::kFirst, Before<Step::kFloatToInt24, Bytes<4, 0, 1, 2>>)      \
    X(floatToBigInt24, From::kFirst, Before<Step::kFloatToInt24, Bytes<4, 3, 2, 1>>)   \
    X(int32ToFloat, From::kFirst, After<Bytes<4, 0, 1, 2, 3>, Step::kInt32ToFloat>)    \
    X(bigInt32ToFloat, From::kFirst, After<Bytes<4, 3, 2, 1, 0>, Step::kInt32ToFloat>) \
    X(int24ToInt32, From::kFirst, Bytes<3, kZero, 0, 1, 2>)                            \
    X(bigInt24ToInt32, From::kFirst, Bytes<3, kZero, 2, 1, 0>)                         \
    X(swap16, From::kFirst, Bytes<2, 1, 0>)                                            \
    X(swap24, From::kFirst, Bytes<3, 2, 1, 0>)                                         \
    X(swap32, From::kFirst, Bytes<4, 3, 2, 1, 0>)

enum class Isa { kSsse3, kAvx2, kNeon };

// 16 for each lane of 16 bytes.
template <Isa kIsa>
constexpr size_t kBlockSamples = kIsa == Isa::kAvx2 ? 32 : 16;

// Converts blocks of samples, each of them read before it is written, from the first sample onwards
// or down from the end. Defined in the files that are compiled for one instruction set.
template <Isa kIsa, typename Conversion>
void convertBlocks(const uint8_t* from, uint8_t* to, size_t blocks, From order);

}  // namespace android::pcm
