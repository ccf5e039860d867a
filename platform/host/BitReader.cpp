#include "platform/BitReader.h"

namespace android {

ABitReader::ABitReader(const uint8_t* data, size_t size) : mData(data), mSize(size) {}

uint32_t ABitReader::getBits(size_t count) {
    uint32_t value = 0;
    for (; count > 0; --count) {
        const uint32_t byte = mBytePosition < mSize ? mData[mBytePosition] : 0u;
        value = (value << 1) | ((byte >> (7 - mBitPosition)) & 1u);
        skipBits(1);
    }
    return value;
}

void ABitReader::skipBits(size_t count) {
    const size_t bits = mBitPosition + count % 8;
    mBitPosition = static_cast<unsigned>(bits % 8);
    mBytePosition += count / 8 + bits / 8;
    if (mBytePosition > mSize) mBytePosition = mSize;
}

}  // namespace android
