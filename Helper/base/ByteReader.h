// Numbers out of bytes, at fixed offsets or one after the other. Bytes past the end of the data
// read as zero.

#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace android::base {

using Bytes = std::span<const uint8_t>;

inline uint8_t byteAt(Bytes data, size_t offset) {
    return offset < data.size() ? data[offset] : uint8_t{0};
}

// Up to four bytes, most significant first.
inline uint32_t bigEndianAt(Bytes data, size_t offset, size_t count) {
    uint32_t value = 0;
    for (size_t i = 0; i < count; ++i) value = (value << 8) | byteAt(data, offset + i);
    return value;
}

// Up to four bytes, least significant first.
inline uint32_t littleEndianAt(Bytes data, size_t offset, size_t count) {
    uint32_t value = 0;
    for (size_t i = count; i > 0; --i) value = (value << 8) | byteAt(data, offset + i - 1);
    return value;
}

// Reads fields in their order, numbers most significant byte first.
class ByteReader {
public:
    explicit ByteReader(Bytes data) : mRest(data) {}

    uint8_t u8() { return static_cast<uint8_t>(number(1)); }
    uint16_t u16() { return static_cast<uint16_t>(number(2)); }

    // A field of so many bytes: as many of them as are there.
    Bytes bytes(size_t count) {
        const Bytes field = mRest.first(std::min(count, mRest.size()));
        mRest = mRest.subspan(field.size());
        return field;
    }

    bool atEnd() const { return mRest.empty(); }

private:
    uint32_t number(size_t count) {
        const uint32_t value = bigEndianAt(mRest, 0, count);
        bytes(count);
        return value;
    }

    Bytes mRest;
};

// Four or two bytes, most significant first. Require that they are there.
inline uint32_t bigEndian32(const uint8_t* data) {
    return uint32_t{data[0]} << 24 | uint32_t{data[1]} << 16 | uint32_t{data[2]} << 8 | data[3];
}
inline uint16_t bigEndian16(const uint8_t* data) {
    return static_cast<uint16_t>(data[0] << 8 | data[1]);
}

// Eight bytes, most significant first. Requires that they are there.
inline uint64_t bigEndian64(const uint8_t* data) {
    static_assert(std::endian::native == std::endian::little);
    uint64_t value;
    std::memcpy(&value, data, sizeof(value));
    return __builtin_bswap64(value);
}

}  // namespace android::base
