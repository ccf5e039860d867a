// Puts parameter sets and streams of NAL units together.

#pragma once

#include <bit>

#include "support/Platform.h"

namespace test {

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// Writes bit syntax, most significant bit first.
class BitWriter {
public:
    BitWriter& u(unsigned count, uint64_t value) {
        for (unsigned i = count; i > 0; --i) bit((value >> (i - 1)) & 1);
        return *this;
    }

    BitWriter& ue(uint32_t value) {
        const uint64_t code = uint64_t{value} + 1;
        const auto width = static_cast<unsigned>(std::bit_width(code));
        return u(width - 1, 0).u(width, code);
    }

    // Closes the last byte as rbsp_trailing_bits do: a 1, then zeros.
    Bytes finish() {
        bit(true);
        while (mBits % 8 != 0) bit(false);
        return mBytes;
    }

private:
    void bit(bool value) {
        if (mBits % 8 == 0) mBytes.push_back(0);
        if (value) mBytes.back() |= static_cast<uint8_t>(0x80u >> (mBits % 8));
        ++mBits;
    }

    Bytes mBytes;
    unsigned mBits = 0;
};

// A unit of this header and payload, with an emulation_prevention_three_byte behind two zeros and
// in front of a byte up to `highest`, which the standard has at 3; 0 for almost none.
inline Bytes withEmulationPrevention(Bytes unit, const Bytes& payload, uint8_t highest = 3) {
    unsigned zeros = 0;
    for (const uint8_t byte : payload) {
        if (zeros >= 2 && byte <= highest) {
            unit.push_back(3);
            zeros = 0;
        }
        unit.push_back(byte);
        zeros = byte == 0 ? zeros + 1 : 0;
    }
    return unit;
}

}  // namespace test
