// Writes the bit syntax of parameter sets, most significant bit first.

#pragma once

#include <bit>
#include <cstdint>
#include <vector>

namespace test {

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
    std::vector<uint8_t> finish() {
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

    std::vector<uint8_t> mBytes;
    unsigned mBits = 0;
};

}  // namespace test
