#include "Helper/csd/NalUnits.h"

#include <array>
#include <bit>
#include <cstring>

namespace android::csd {
namespace {

// Sixteen bytes at a time with the compilers' vector extensions: SSE2 on x86-64, NEON on AArch64.
constexpr size_t kLane = 16;
using Vector = uint8_t __attribute__((vector_size(kLane)));

Vector load(const uint8_t* from) {
    Vector vector;
    std::memcpy(&vector, from, sizeof(vector));
    return vector;
}

// A lane is zero exactly where a start code 00 00 01 begins.
Vector startCodeDistance(const uint8_t* at) {
    return load(at) | load(at + 1) | (load(at + 2) ^ 1);
}

Vector lanewiseMin(Vector left, Vector right) {
    return left < right ? left : right;
}

// The index of the first zero lane, or kLane.
size_t firstZero(Vector vector) {
    static_assert(std::endian::native == std::endian::little);
    const Vector isZero = vector == 0;
    const auto halves = std::bit_cast<std::array<uint64_t, 2>>(isZero);
    if (halves[0] != 0) return static_cast<size_t>(std::countr_zero(halves[0])) / 8;
    if (halves[1] != 0) return static_cast<size_t>(std::countr_zero(halves[1])) / 8 + 8;
    return kLane;
}

// A start code that begins in the last byte looked at reaches two bytes further.
constexpr size_t kReach = 2;
constexpr size_t kBlock = 4 * kLane;

bool blockHasStartCode(const uint8_t* at) {
    const Vector left = lanewiseMin(startCodeDistance(at), startCodeDistance(at + kLane));
    const Vector right =
            lanewiseMin(startCodeDistance(at + 2 * kLane), startCodeDistance(at + 3 * kLane));
    return firstZero(lanewiseMin(left, right)) != kLane;
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
    while (data.size() - at >= kBlock + kReach && !blockHasStartCode(data.data() + at))
        at += kBlock;
    for (; data.size() - at >= kLane + kReach; at += kLane) {
        const size_t lane = firstZero(startCodeDistance(data.data() + at));
        if (lane != kLane) return at + lane;
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
