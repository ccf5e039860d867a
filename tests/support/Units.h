// Puts streams of NAL units together.

#pragma once

#include "support/Platform.h"

namespace test {

inline const Bytes kStartCode = {0, 0, 0, 1};

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// A length in front of a unit, big-endian.
inline Bytes length16(size_t size) {
    return {static_cast<uint8_t>(size >> 8), static_cast<uint8_t>(size)};
}

}  // namespace test
