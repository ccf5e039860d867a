// Reading bytes that came out of a file, and showing them.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

using Bytes = std::span<const uint8_t>;
using ByteVector = std::vector<uint8_t>;

// Walks over bytes. What is missing at the end reads as zero, and ok() is false from then on.
class ByteCursor {
public:
    explicit ByteCursor(Bytes data) : mRest(data) {}

    uint8_t u8() { return static_cast<uint8_t>(big(1)); }
    uint16_t be16() { return static_cast<uint16_t>(big(2)); }
    uint32_t be32() { return static_cast<uint32_t>(big(4)); }
    uint16_t le16() { return static_cast<uint16_t>(little(2)); }
    uint32_t le32() { return static_cast<uint32_t>(little(4)); }
    uint64_t big(size_t sizeBytes);
    uint64_t little(size_t sizeBytes);

    // The next bytes; as many as there are when there are fewer.
    Bytes take(size_t sizeBytes);
    void skip(size_t sizeBytes) { take(sizeBytes); }

    size_t remaining() const { return mRest.size(); }
    bool ok() const { return mOk; }

private:
    Bytes mRest;
    bool mOk = true;
};

bool startsWith(Bytes data, std::string_view text);

// "01 64 00", and "016400" without a separator.
std::string hex(Bytes data, std::string_view separator);

// What hex() made without a separator; empty for what is none of its texts.
ByteVector fromHex(std::string_view text);

// The first dozen bytes.
std::string shortHex(Bytes data);

}  // namespace inspect
