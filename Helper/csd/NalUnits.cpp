#include "Helper/csd/NalUnits.h"

#include <array>
#include <bit>
#include <cstring>

#if defined(__x86_64__)
#include <emmintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#endif

namespace android::csd {
namespace {

// Sixteen bytes at a time with the compilers' vector extensions: SSE2 on x86-64, NEON on AArch64.
constexpr size_t kLane = 16;
using Vector = uint8_t __attribute__((vector_size(kLane)));
using Pairs = uint16_t __attribute__((vector_size(kLane)));
using Words = uint64_t __attribute__((vector_size(kLane)));
static_assert(std::endian::native == std::endian::little);

// Enough vectors to pay for the test of a block, few enough to place a start code in it quickly.
constexpr size_t kVectors = 5;
constexpr size_t kBlock = kVectors * kLane;

// A start code that begins in the last byte of a block reaches two bytes further.
constexpr size_t kReach = 2;

Vector load(const uint8_t* from) {
    Vector vector;
    std::memcpy(&vector, from, sizeof(vector));
    return vector;
}

// The processor alone fetches ahead only within a page. What is asked for may lie past the end: it
// is not read.
void prefetchAhead(const uint8_t* from) {
    constexpr uintptr_t kAhead = 2048;
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(from) + kAhead));
}

Vector lanewiseMin(Vector left, Vector right) {
    return left < right ? left : right;
}

// As many bits for each lane as the processor gathers best, the first lane's lowest: ones where the
// lane is true.
#if defined(__x86_64__)
constexpr size_t kLaneBits = 1;
uint64_t lanes(auto truth) {
    return static_cast<unsigned>(_mm_movemask_epi8(std::bit_cast<__m128i>(truth)));
}
#elif defined(__aarch64__)
constexpr size_t kLaneBits = 4;
uint64_t lanes(auto truth) {
    const uint8x8_t bits = vshrn_n_u16(std::bit_cast<uint16x8_t>(truth), 4);
    return vget_lane_u64(vreinterpret_u64_u8(bits), 0);
}
#else
constexpr size_t kLaneBits = 1;
uint64_t lanes(auto truth) {
    uint64_t bits = 0;
    for (size_t i = 0; i < kLane; ++i) bits |= uint64_t{truth[i] != 0} << i;
    return bits;
}
#endif

// Of the bytes of a start code two stand together at an even offset: 00 00, or 00 01. False means
// that no such pair lies in the block; true is a guess, as the minima mix the block's vectors.
bool mayHoldStartCode(const uint8_t* block) {
    Vector least = load(block);
    for (size_t i = 1; i < kVectors; ++i) least = lanewiseMin(least, load(block + i * kLane));
    const auto hits = std::bit_cast<Words>((std::bit_cast<Pairs>(least) & 0xFEFF) == 0);
    return (hits[0] | hits[1]) != 0;
}

// The offset of the first start code that begins in so many vectors, or their size.
template <size_t kCount>
size_t placeStartCode(const uint8_t* block) {
    for (size_t offset = 0; offset < kCount * kLane; offset += kLane) {
        const uint8_t* at = block + offset;
        const uint64_t starts = lanes((load(at) | load(at + 1) | (load(at + 2) ^ 1)) == 0);
        if (starts != 0) return offset + static_cast<size_t>(std::countr_zero(starts)) / kLaneBits;
    }
    return kCount * kLane;
}

}  // namespace

size_t findStartCodeReference(Bytes data) {
    for (size_t i = 0; i + 2 < data.size(); ++i) {
        if (data[i] == 0 && data[i + 1] == 0 && data[i + 2] == 1) return i;
    }
    return data.size();
}

size_t findStartCode(Bytes data) {
    size_t at = 0;
    // Blocks overlap: the pair of a start code in the last bytes may lie in the next one.
    for (; data.size() - at >= kBlock + kReach; at += kBlock - kReach) {
        prefetchAhead(data.data() + at);
        if (!mayHoldStartCode(data.data() + at)) continue;
        const size_t offset = placeStartCode<kVectors>(data.data() + at);
        if (offset != kBlock) return at + offset;
    }
    for (; data.size() - at >= kLane + kReach; at += kLane) {
        const size_t offset = placeStartCode<1>(data.data() + at);
        if (offset != kLane) return at + offset;
    }
    return at + findStartCodeReference(data.subspan(at));
}

NalStep nextNalUnit(Bytes stream, bool atEndOfStream) {
    size_t one = 0;
    while (one < stream.size() && stream[one] == 0) ++one;
    if (one == stream.size()) return {NalWalk::kEnd, {}, stream};
    if (stream[one] != 1 || one < 2) return {NalWalk::kMalformed, {}, stream};

    const Bytes body = stream.subspan(one + 1);
    const size_t next = findStartCode(body);
    if (next == body.size() && !atEndOfStream) return {NalWalk::kEnd, {}, stream};

    size_t unitSize = next;
    while (unitSize > 1 && body[unitSize - 1] == 0) --unitSize;
    // A start code with no more than one byte after it ends the walk: that last unit is
    // deliberately never delivered.
    const bool isLast = body.size() - next <= kStartCodeSize + 1;
    return {NalWalk::kFound, body.first(unitSize), isLast ? Bytes() : body.subspan(next)};
}

}  // namespace android::csd
