// Reads bits from bytes, the most significant bit of each byte first.

#pragma once

#include <cstddef>
#include <cstdint>

namespace android {

// Does not own the data. Bits past its end read as zero.
class ABitReader {
public:
    ABitReader(const uint8_t* data, size_t size);

    uint32_t getBits(size_t count);  // count <= 32
    void skipBits(size_t count);

private:
    const uint8_t* mData;
    size_t mSize;
    size_t mBytePosition = 0;
    unsigned mBitPosition = 0;  // within the byte, 0 = most significant
};

}  // namespace android
