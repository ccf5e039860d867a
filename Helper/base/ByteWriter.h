// Writes a record field after field, big-endian.

#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "Helper/base/ByteReader.h"

namespace android::base {

class ByteWriter {
public:
    // The size is a hint; the record may come out shorter or longer.
    explicit ByteWriter(size_t expectedSize) { mBytes.reserve(expectedSize); }

    void u8(uint8_t value) { mBytes.push_back(value); }
    void u16(uint16_t value) {
        u8(static_cast<uint8_t>(value >> 8));
        u8(static_cast<uint8_t>(value));
    }
    void u32LittleEndian(uint32_t value) {
        for (unsigned shift = 0; shift < 32; shift += 8) u8(static_cast<uint8_t>(value >> shift));
    }
    void zeros(size_t count) { mBytes.insert(mBytes.end(), count, uint8_t{0}); }
    void bytes(Bytes data) { mBytes.insert(mBytes.end(), data.begin(), data.end()); }

    std::vector<uint8_t> take() { return std::move(mBytes); }

private:
    std::vector<uint8_t> mBytes;
};

}  // namespace android::base
