// Reads the bit syntax of ITU-T H.264 and H.265 parameter sets, most significant bit first.
//
// A read past the end yields zero bits and leaves ok() false for good, so a parser may read
// straight on and ask once. Every read takes constant time, at the end too; a loop whose count
// comes from the data ends with ok().

#pragma once

#include <bit>

#include "Helper/base/ByteReader.h"

namespace android::base {

class BitReader {
public:
    explicit BitReader(Bytes data) : mData(data), mBitCount(uint64_t{data.size()} * 8) {}

    bool ok() const { return mOk; }

    // u(n), n <= 32
    uint32_t u(unsigned count) { return static_cast<uint32_t>(take(count)); }

    bool flag() { return u(1) != 0; }

    void skip(uint64_t count) {
        // Some that are ready stay so. Else none does, nor may the word be shifted by 64.
        if (count < mReady) {
            // cppcheck-suppress shiftTooManyBits ; mReady is at most 64, so count is less
            mWord <<= count;
            mReady -= static_cast<unsigned>(count);
        } else {
            mReady = 0;
        }
        if (count <= mBitCount - mPosition) {
            mPosition += count;
        } else {
            mPosition = mBitCount;
            mOk = false;
        }
    }

    // ue(v), ITU-T H.264 clause 9.1, in unsigned 32-bit arithmetic. More than 32 leading zero bits
    // are no code number: they yield 0, and the first 33 of them are consumed.
    uint32_t ue() {
        // What is ready may end before the code does.
        if (2 * leadingZeros() >= mReady) refill();
        const unsigned zeros = leadingZeros();
        // All of it is ready: read in one go, it is the code number plus one, in 2 * zeros + 1
        // bits.
        if (2 * zeros < mReady) return static_cast<uint32_t>(take(2 * zeros + 1)) - 1;
        if (zeros > kMaxLeadingZeros) {
            skip(kMaxLeadingZeros + 1);
            return 0;
        }
        skip(zeros + 1);
        const uint64_t suffix = take(zeros);
        return static_cast<uint32_t>(suffix + (uint64_t{1} << zeros) - 1);
    }

private:
    static constexpr unsigned kMaxLeadingZeros = 32;

    // The next bits as a number: up to 64 of those that are ready, up to 57 in any case.
    uint64_t take(unsigned count) {
        if (count == 0) return 0;
        // Not all of them are ready.
        if (mReady < count) refill();
        // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): count is at most 64
        const uint64_t bits = mWord >> (64 - count);
        skip(count);
        return bits;
    }

    unsigned leadingZeros() const { return static_cast<unsigned>(std::countl_zero(mWord)); }

    // Makes 57 bits or more ready; past the end they are zeros.
    void refill() {
        const auto first = static_cast<size_t>(mPosition / 8);
        uint64_t word = 0;
        if (mData.size() - first >= sizeof(word)) {
            word = bigEndian64(mData.data() + first);
        } else {
            for (size_t i = 0; i < sizeof(word); ++i) word = (word << 8) | byteAt(mData, first + i);
        }
        mWord = word << (mPosition % 8);
        mReady = static_cast<unsigned>(64 - mPosition % 8);
    }

    Bytes mData;
    uint64_t mBitCount;
    uint64_t mPosition = 0;
    uint64_t mWord = 0;   // the bits from mPosition on, at the top
    unsigned mReady = 0;  // how many of them are there; zeros below
    bool mOk = true;
};

}  // namespace android::base
