#include "Helper/vorbis/Base64Blocks.h"

#if defined(__x86_64__)
#include <tmmintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#endif

#include <array>
#include <string_view>

namespace android::vorbis {
namespace {

#if defined(__x86_64__)

constexpr size_t kBlockGroups = 4;

__m128i replace(__m128i characters, char from, char to) {
    const __m128i found = _mm_cmpeq_epi8(characters, _mm_set1_epi8(from));
    return _mm_add_epi8(characters,
                        _mm_and_si128(found, _mm_set1_epi8(static_cast<char>(to - from))));
}

// Sixteen characters to twelve bytes and four that mean nothing. Returns whether all of them are of
// the alphabets.
//
// A character is classified by its two halves, each of which says in a bit for each class of
// characters whether it rules it out. Its class, that of its upper half but for the slash, says
// what to add to it.
[[gnu::target("ssse3")]] bool decodeBlock(const char* text, uint8_t* out) {
    const __m128i added = _mm_setr_epi8(0, 0, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0);
    const __m128i ruledOutByUpper = _mm_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08,
                                                  0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10);
    const __m128i ruledOutByLower = _mm_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                                  0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A);
    const __m128i half = _mm_set1_epi8(0x0F);
    __m128i characters = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    characters = replace(replace(characters, '-', '+'), '_', '/');
    const __m128i upper = _mm_and_si128(_mm_srli_epi32(characters, 4), half);
    const __m128i lower = _mm_and_si128(characters, half);
    const __m128i bad = _mm_and_si128(_mm_shuffle_epi8(ruledOutByUpper, upper),
                                      _mm_shuffle_epi8(ruledOutByLower, lower));
    const __m128i slash =
            _mm_and_si128(_mm_cmpeq_epi8(characters, _mm_set1_epi8('/')), _mm_set1_epi8(-3));
    const __m128i sixes =
            _mm_add_epi8(_mm_add_epi8(characters, slash), _mm_shuffle_epi8(added, upper));
    // Six bits each to twelve, to twenty-four, whose bytes are then put in order.
    const __m128i twelves = _mm_maddubs_epi16(sixes, _mm_set1_epi32(0x01400140));
    const __m128i groups = _mm_madd_epi16(twelves, _mm_set1_epi32(0x00011000));
    const __m128i order = _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_shuffle_epi8(groups, order));
    return _mm_movemask_epi8(_mm_cmpeq_epi8(bad, _mm_setzero_si128())) == 0xFFFF;
}

[[gnu::target("ssse3")]] size_t decodeBlocks(const char* text, size_t groups, uint8_t* out) {
    size_t done = 0;
    // Three groups more: two that the four meaningless bytes go to, and the last.
    while (groups - done >= kBlockGroups + 3 && decodeBlock(text + 4 * done, out + 3 * done)) {
        done += kBlockGroups;
    }
    return done;
}

#elif defined(__aarch64__)

constexpr size_t kBlockGroups = 16;

// What each character below 128 stands for, 0x80 for nothing.
consteval std::array<uint8_t, 128> sixBits() {
    constexpr std::string_view kFirst62 =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    std::array<uint8_t, 128> bits;
    bits.fill(0x80);
    for (uint8_t i = 0; i < kFirst62.size(); ++i) bits[static_cast<uint8_t>(kFirst62[i])] = i;
    bits['+'] = bits['-'] = 62;
    bits['/'] = bits['_'] = 63;
    return bits;
}
constexpr std::array<uint8_t, 128> kSixBits = sixBits();

// A character above 127 finds nothing in either table and has its own top bit set.
uint8x16_t lookUp(uint8x16x4_t lower, uint8x16x4_t upper, uint8x16_t characters) {
    const uint8x16_t found = vqtbl4q_u8(lower, characters);
    return vqtbx4q_u8(found, upper, vsubq_u8(characters, vdupq_n_u8(64)));
}

size_t decodeBlocks(const char* text, size_t groups, uint8_t* out) {
    const uint8x16x4_t lower = vld1q_u8_x4(kSixBits.data());
    const uint8x16x4_t upper = vld1q_u8_x4(kSixBits.data() + 64);
    size_t done = 0;
    for (; groups - done > kBlockGroups; done += kBlockGroups) {
        const uint8x16x4_t in = vld4q_u8(reinterpret_cast<const uint8_t*>(text) + 4 * done);
        uint8x16x4_t six;
        uint8x16_t bad = vdupq_n_u8(0);
        for (int i = 0; i < 4; ++i) {
            six.val[i] = lookUp(lower, upper, in.val[i]);
            bad = vorrq_u8(bad, vorrq_u8(six.val[i], in.val[i]));
        }
        if (vmaxvq_u8(bad) >= 0x80) break;
        const uint8x16x3_t bytes = {{
                vorrq_u8(vshlq_n_u8(six.val[0], 2), vshrq_n_u8(six.val[1], 4)),
                vorrq_u8(vshlq_n_u8(six.val[1], 4), vshrq_n_u8(six.val[2], 2)),
                vorrq_u8(vshlq_n_u8(six.val[2], 6), six.val[3]),
        }};
        vst3q_u8(out + 3 * done, bytes);
    }
    return done;
}

#endif

}  // namespace

size_t decodeBase64Blocks([[maybe_unused]] const char* text, [[maybe_unused]] size_t groups,
                          [[maybe_unused]] uint8_t* out) {
#if defined(__x86_64__)
    return __builtin_cpu_supports("ssse3") ? decodeBlocks(text, groups, out) : 0;
#elif defined(__aarch64__)
    return decodeBlocks(text, groups, out);
#else
    return 0;
#endif
}

}  // namespace android::vorbis
