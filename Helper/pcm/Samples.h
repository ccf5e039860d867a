// What becomes of a single sample in each conversion, and the plain loops over samples. Whatever
// converts several samples at a time gives what these give, bit for bit.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace android::pcm {

// Numbers stand in memory as the machine has them.
static_assert(std::endian::native == std::endian::little);

template <typename T>
T load(const uint8_t* from) {
    T value;
    std::memcpy(&value, from, sizeof(value));
    return value;
}

template <typename T>
void store(uint8_t* to, T value) {
    std::memcpy(to, &value, sizeof(value));
}

// A conversion has kFrom and kTo, the bytes of a sample before and after, and convert(), which
// reads all of the sample before it writes any.

template <uint16_t kSignBit>
struct Int8ToInt16 {
    static constexpr size_t kFrom = 1, kTo = 2;
    static void convert(const uint8_t* from, uint8_t* to) {
        store(to, static_cast<uint16_t>((*from << 8) ^ kSignBit));
    }
};
using Signed8ToInt16 = Int8ToInt16<0>;
using Unsigned8ToInt16 = Int8ToInt16<0x8000>;

struct Int24ToInt16 {
    static constexpr size_t kFrom = 3, kTo = 2;
    static void convert(const uint8_t* from, uint8_t* to) {
        store(to, static_cast<uint16_t>(from[2] << 8 | from[1]));
    }
};

struct BigInt24ToInt16 {
    static constexpr size_t kFrom = 3, kTo = 2;
    static void convert(const uint8_t* from, uint8_t* to) {
        store(to, static_cast<uint16_t>(from[0] << 8 | from[1]));
    }
};

struct Int32ToInt16 {
    static constexpr size_t kFrom = 4, kTo = 2;
    static void convert(const uint8_t* from, uint8_t* to) {
        store(to, static_cast<uint16_t>(load<uint32_t>(from) >> 16));
    }
};

inline void store24(uint8_t* to, uint32_t first, uint32_t second, uint32_t third) {
    to[0] = static_cast<uint8_t>(first);
    to[1] = static_cast<uint8_t>(second);
    to[2] = static_cast<uint8_t>(third);
}

// The upper 24 bits.
struct Int32ToInt24 {
    static constexpr size_t kFrom = 4, kTo = 3;
    static void convert(const uint8_t* from, uint8_t* to) {
        const auto word = load<uint32_t>(from);
        store24(to, word >> 8, word >> 16, word >> 24);
    }
};

// The lower 24 bits: deliberately others than in the little-endian form.
struct Int32ToBigInt24 {
    static constexpr size_t kFrom = 4, kTo = 3;
    static void convert(const uint8_t* from, uint8_t* to) {
        const auto word = load<uint32_t>(from);
        store24(to, word >> 16, word >> 8, word);
    }
};

constexpr float kClipAbove = 0x1.FFFFFCp-1f;  // 1 - 2^-23
constexpr float kScale24 = 0x1p23f;

// Clipped, and rounded half away from zero; 0 for NaN.
inline int32_t int24FromFloat(float value) {
    if (value <= -1.0f) return -0x800000;
    if (value >= kClipAbove) return 0x7FFFFF;
    if (value != value) return 0;
    const double scaled = value * kScale24;
    return static_cast<int32_t>(scaled > 0 ? scaled + 0.5 : scaled - 0.5);
}

struct FloatToInt24 {
    static constexpr size_t kFrom = 4, kTo = 3;
    static void convert(const uint8_t* from, uint8_t* to) {
        const auto bits = static_cast<uint32_t>(int24FromFloat(load<float>(from)));
        store24(to, bits, bits >> 8, bits >> 16);
    }
};

// The sign and the upper 16 bits: deliberately others than in the little-endian form.
struct FloatToBigInt24 {
    static constexpr size_t kFrom = 4, kTo = 3;
    static void convert(const uint8_t* from, uint8_t* to) {
        const auto bits = static_cast<uint32_t>(int24FromFloat(load<float>(from)));
        store24(to, bits >> 24, bits >> 16, bits >> 8);
    }
};

constexpr float kInt32ToFloat = 0x1p-31f;

struct Int32ToFloat {
    static constexpr size_t kFrom = 4, kTo = 4;
    static void convert(const uint8_t* from, uint8_t* to) {
        store(to, static_cast<float>(load<int32_t>(from)) * kInt32ToFloat);
    }
};

struct BigInt32ToFloat {
    static constexpr size_t kFrom = 4, kTo = 4;
    static void convert(const uint8_t* from, uint8_t* to) {
        const uint32_t word = __builtin_bswap32(load<uint32_t>(from));
        store(to, static_cast<float>(static_cast<int32_t>(word)) * kInt32ToFloat);
    }
};

struct Int24ToFloat {
    static constexpr size_t kFrom = 3, kTo = 4;
    static void convert(const uint8_t* from, uint8_t* to) {
        const uint32_t word =
                uint32_t{from[0]} << 8 | uint32_t{from[1]} << 16 | uint32_t{from[2]} << 24;
        store(to, static_cast<float>(static_cast<int32_t>(word)) * kInt32ToFloat);
    }
};

struct Int24ToInt32 {
    static constexpr size_t kFrom = 3, kTo = 4;
    static void convert(const uint8_t* from, uint8_t* to) {
        store(to, uint32_t{from[0]} << 8 | uint32_t{from[1]} << 16 | uint32_t{from[2]} << 24);
    }
};

struct BigInt24ToInt32 {
    static constexpr size_t kFrom = 3, kTo = 4;
    static void convert(const uint8_t* from, uint8_t* to) {
        store(to, uint32_t{from[2]} << 8 | uint32_t{from[1]} << 16 | uint32_t{from[0]} << 24);
    }
};

struct Swap16 {
    static constexpr size_t kFrom = 2, kTo = 2;
    static void convert(const uint8_t* from, uint8_t* to) {
        store(to, __builtin_bswap16(load<uint16_t>(from)));
    }
};

struct Swap24 {
    static constexpr size_t kFrom = 3, kTo = 3;
    static void convert(const uint8_t* from, uint8_t* to) {
        store24(to, from[2], from[1], from[0]);
    }
};

struct Swap32 {
    static constexpr size_t kFrom = 4, kTo = 4;
    static void convert(const uint8_t* from, uint8_t* to) {
        store(to, __builtin_bswap32(load<uint32_t>(from)));
    }
};

template <typename Conversion>
void plainForward(const uint8_t* from, uint8_t* to, size_t samples) {
    for (size_t i = 0; i < samples; ++i) {
        Conversion::convert(from + i * Conversion::kFrom, to + i * Conversion::kTo);
    }
}

// From the last sample to the first, so that what grows may begin where it began.
template <typename Conversion>
void plainBackward(const uint8_t* from, uint8_t* to, size_t samples) {
    for (size_t i = samples; i > 0; --i) {
        Conversion::convert(from + (i - 1) * Conversion::kFrom, to + (i - 1) * Conversion::kTo);
    }
}

}  // namespace android::pcm
