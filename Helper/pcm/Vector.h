// What the loops over blocks do with vectors of one or two lanes of 16 bytes, once for each
// instruction set.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "Helper/pcm/Samples.h"

#if defined(__x86_64__)
#include <immintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#endif

namespace android::pcm {

#define ZR_PCM_INLINE [[gnu::always_inline]] static inline

#if defined(__aarch64__)
ZR_PCM_INLINE void load(const uint8_t* from, uint8x16_t& vector) {
    vector = vld1q_u8(from);
}
ZR_PCM_INLINE void store(uint8_t* to, uint8x16_t vector) {
    vst1q_u8(to, vector);
}
#else
ZR_PCM_INLINE void load(const uint8_t* from, auto& vector) {
    std::memcpy(&vector, from, sizeof(vector));
}
ZR_PCM_INLINE void store(uint8_t* to, auto vector) {
    std::memcpy(to, &vector, sizeof(vector));
}
#endif

// As no loop, which compilers turn into a call that copies the array.
template <size_t... kIndices>
ZR_PCM_INLINE void storeAll(uint8_t* to, const auto& vectors, std::index_sequence<kIndices...>) {
    (store(to + kIndices * sizeof(vectors[0]), vectors[kIndices]), ...);
}

// In a mask, for a byte that is not picked.
constexpr uint8_t kNoByte = 0x80;

// The largest float below 0.5: where 0.5 itself is added to one less than .5 above an integer, the
// sum can round to the next integer.
constexpr auto kHalf = std::bit_cast<int32_t>(0x1.FFFFFEp-2f);

template <Isa kIsa>
struct Vectors;

// What is written alike for vectors of any width.
template <typename Vec>
struct X86 {
    ZR_PCM_INLINE auto pickMore(auto picked, auto value, auto mask) {
        return picked | Vec::pick(value, mask);
    }
    // Two cache lines of source and destination, each in the next 4 KiB.
    ZR_PCM_INLINE void fetch(const uint8_t* from, const uint8_t* to) {
        __builtin_prefetch(from + 2048);
        __builtin_prefetch(from + 2048 + 64);
        __builtin_prefetch(to + 1536, /*write=*/1);
        __builtin_prefetch(to + 1536 + 64, /*write=*/1);
    }
    ZR_PCM_INLINE auto flipSign8(auto value) { return value ^ -0x7F7F7F7F7F7F7F80; }
    ZR_PCM_INLINE auto floatFromInt32(auto value) {
        const auto words = reinterpret_cast<typename Vec::Words>(value);
        const auto floats = __builtin_convertvector(words, typename Vec::Floats);
        return reinterpret_cast<decltype(value)>(floats * kScale32);
    }
    // Scaled by adding to the exponent, which costs nothing extra for subnormal numbers. These stay
    // next to 0. So does NaN, which passes the clipping as the second operand and then wraps.
    ZR_PCM_INLINE auto int24FromFloat(auto value) {
        using Words = typename Vec::Words;
        using Floats = typename Vec::Floats;
        const auto clipped = Vec::clip(reinterpret_cast<Floats>(value));
        const auto scaled = reinterpret_cast<typename Vec::Bits>(clipped) + (kScale24 << 23);
        const Words sign = reinterpret_cast<Words>(value) & INT32_MIN;
        const Words half = sign | kHalf;
        const Floats sum = reinterpret_cast<Floats>(scaled) + reinterpret_cast<Floats>(half);
        return reinterpret_cast<decltype(value)>(__builtin_convertvector(sum, Words));
    }
};

#if defined(__SSSE3__)
template <>
struct Vectors<Isa::kSsse3> : X86<Vectors<Isa::kSsse3>> {
    using Vector = __m128i;
    using Floats = __m128;
    using Words [[gnu::vector_size(16)]] = int32_t;
    using Bits [[gnu::vector_size(16)]] = uint32_t;

    ZR_PCM_INLINE Vector pick(Vector value, Vector mask) { return _mm_shuffle_epi8(value, mask); }
    ZR_PCM_INLINE Floats clip(Floats value) {
        return _mm_max_ps(_mm_set1_ps(-1.0f), _mm_min_ps(_mm_set1_ps(kClipAbove), value));
    }
};
#endif

#if defined(__AVX2__)
template <>
struct Vectors<Isa::kAvx2> : X86<Vectors<Isa::kAvx2>> {
    using Vector = __m256i;
    using Floats = __m256;
    using Words [[gnu::vector_size(32)]] = int32_t;
    using Bits [[gnu::vector_size(32)]] = uint32_t;

    ZR_PCM_INLINE Vector loadLanes(const uint8_t* lower, const uint8_t* upper) {
        __m128i low, high;
        load(lower, low);
        load(upper, high);
        return _mm256_set_m128i(high, low);
    }
    // The lower lane of each vector, then the upper one of each: a sequence of 2 * kCount lanes, of
    // which two neighbours are stored at a time.
    template <size_t kCount>
    ZR_PCM_INLINE void storeLanes(uint8_t* to, const Vector (&values)[kCount]) {
#pragma GCC unroll 4
        for (size_t lane = 0; lane < 2 * kCount; lane += 2) {
            const Vector a = values[lane % kCount], b = values[(lane + 1) % kCount];
            if (lane + 1 < kCount) {
                store(to + 16 * lane, _mm256_permute2x128_si256(a, b, 0x20));  // lower, lower
            } else if (lane < kCount) {
                store(to + 16 * lane, _mm256_blend_epi32(a, b, 0xF0));  // lower, upper
            } else {
                store(to + 16 * lane, _mm256_permute2x128_si256(a, b, 0x31));  // upper, upper
            }
        }
    }
    ZR_PCM_INLINE Vector pick(Vector value, Vector mask) {
        return _mm256_shuffle_epi8(value, mask);
    }
    ZR_PCM_INLINE Floats clip(Floats value) {
        const Floats below = _mm256_min_ps(_mm256_set1_ps(kClipAbove), value);
        return _mm256_max_ps(_mm256_set1_ps(-1.0f), below);
    }
};
#endif

#if defined(__aarch64__)
template <>
struct Vectors<Isa::kNeon> {
    using Vector = uint8x16_t;

    ZR_PCM_INLINE Vector pick(Vector value, Vector mask) { return vqtbl1q_u8(value, mask); }
    ZR_PCM_INLINE Vector pickMore(Vector picked, Vector value, Vector mask) {
        return vqtbx1q_u8(picked, value, mask);
    }
    ZR_PCM_INLINE void fetch(const uint8_t*, const uint8_t*) {}
    ZR_PCM_INLINE Vector flipSign8(Vector value) { return veorq_u8(value, vdupq_n_u8(0x80)); }
    ZR_PCM_INLINE Vector floatFromInt32(Vector value) {
        return vreinterpretq_u8_f32(vcvtq_n_f32_s32(vreinterpretq_s32_u8(value), 31));
    }
    ZR_PCM_INLINE Vector int24FromFloat(Vector value) {
        const float32x4_t scaled = vmulq_n_f32(vreinterpretq_f32_u8(value), 1 << kScale24);
        const int32x4_t rounded = vcvtaq_s32_f32(scaled);
        const int32x4_t below = vminq_s32(rounded, vdupq_n_s32(0x7FFFFF));
        return vreinterpretq_u8_s32(vmaxq_s32(below, vdupq_n_s32(-0x800000)));
    }
};
#endif

}  // namespace android::pcm
