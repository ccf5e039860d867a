#include "Helper/csd/NalUnits.h"

#include <array>
#include <bit>
#include <cstring>

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

Vector lanewiseMax(Vector left, Vector right) {
    return left > right ? left : right;
}

// Of the bytes of a start code two stand together at an even offset: 00 00, or 00 01. False means
// that no such pair lies in the block; true is a guess, as the minima mix the block's vectors.
bool mayHoldStartCode(const uint8_t* block) {
    Vector least = load(block);
    for (size_t i = 1; i < kVectors; ++i) least = lanewiseMin(least, load(block + i * kLane));
    const auto hits = std::bit_cast<Words>((std::bit_cast<Pairs>(least) & 0xFEFF) == 0);
    return (hits[0] | hits[1]) != 0;
}

uint8_t largestLane(Vector vector) {
    auto words = std::bit_cast<Words>(vector);
    words = std::bit_cast<Words>(lanewiseMax(vector, std::bit_cast<Vector>(Words{words[1], 0})));
    for (const int shift : {32, 16, 8}) {
        words = std::bit_cast<Words>(
                lanewiseMax(std::bit_cast<Vector>(words), std::bit_cast<Vector>(words >> shift)));
    }
    return static_cast<uint8_t>(words[0]);
}

// The offset of the first start code that begins in so many vectors, or their size. Every lane that
// begins one votes with what is left from there on, so the largest vote is the first one's.
template <size_t kCount>
size_t placeStartCode(const uint8_t* block) {
    constexpr Vector kCountdown{16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1};
    Vector votes{};
    for (size_t i = 0; i < kCount; ++i) {
        const uint8_t* at = block + i * kLane;
        const Vector isStart = (load(at) | load(at + 1) | (load(at + 2) ^ 1)) == 0;
        const auto behind = static_cast<uint8_t>((kCount - i - 1) * kLane);
        votes = lanewiseMax(votes, isStart & (kCountdown + behind));
    }
    return kCount * kLane - largestLane(votes);
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
    const bool isLast = body.size() - next <= 4;
    return {NalWalk::kFound, body.first(unitSize), isLast ? Bytes() : body.subspan(next)};
}

}  // namespace android::csd
