// Reads the bit syntax of ITU-T H.264 and H.265 parameter sets, most significant bit first.
//
// A read past the end yields zero bits and leaves ok() false for good, so a parser may read
// straight on and ask once. Every read takes constant time, at the end too; a loop whose count
// comes from the data ends with ok().

#pragma once

#include <algorithm>
#include <bit>

#include "Helper/base/ByteReader.h"

namespace android::base {

class BitReader {
public:
    explicit BitReader(Bytes data) : mData(data), mBitCount(uint64_t{data.size()} * 8) {}

    bool ok() const { return mOk; }

    // u(n), n <= 32
    uint32_t u(unsigned count) {
        if (count == 0) return 0;
        const uint64_t bits = peek() >> (64 - count);
        skip(count);
        return static_cast<uint32_t>(bits);
    }

    bool flag() { return u(1) != 0; }

    void skip(uint64_t count) {
        const uint64_t left = mBitCount - mPosition;
        if (count > left) mOk = false;
        mPosition += std::min(count, left);
    }

    // ue(v), ITU-T H.264 clause 9.1, in unsigned 32-bit arithmetic. More than 32 leading zero bits
    // are no code number: they yield 0, and the first 33 of them are consumed.
    uint32_t ue() {
        const auto zeros = static_cast<unsigned>(std::countl_zero(peek()));
        if (zeros > kMaxLeadingZeros) {
            skip(kMaxLeadingZeros + 1);
            return 0;
        }
        skip(zeros + 1);
        const uint64_t suffix = u(zeros);
        return static_cast<uint32_t>(suffix + (uint64_t{1} << zeros) - 1);
    }

private:
    static constexpr unsigned kMaxLeadingZeros = 32;

    // The next 57 bits or more, at the top of the word; zeros past the end.
    uint64_t peek() const {
        const auto first = static_cast<size_t>(mPosition / 8);
        uint64_t word = 0;
        if (mData.size() - first >= sizeof(word)) {
            word = bigEndian64(mData.data() + first);
        } else {
            for (size_t i = 0; i < sizeof(word); ++i) word = (word << 8) | byteAt(mData, first + i);
        }
        return word << (mPosition % 8);
    }

    Bytes mData;
    uint64_t mBitCount;
    uint64_t mPosition = 0;
    bool mOk = true;
};

}  // namespace android::base
