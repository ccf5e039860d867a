// A plain reading of the picture size in an SPS of H.265, with the departures from the standard
// that MediaExtractorHelper.h names.

#pragma once

#include <optional>
#include <utility>

#include "Fuzz.h"

namespace fuzz {

struct Size {
    uint64_t width = 0, height = 0;
    bool operator==(const Size&) const = default;
};

// Reads one bit after the other, zeros past the end.
class Bits {
public:
    explicit Bits(std::vector<uint8_t> data) : mData(std::move(data)) {}
    uint64_t next(size_t count) {
        uint64_t value = 0;
        for (; count > 0; --count, ++mAt) {
            const uint64_t byte = mAt / 8 < mData.size() ? mData[mAt / 8] : 0u;
            value = value << 1 | (byte >> (7 - mAt % 8) & 1);
        }
        return value;
    }
    uint64_t ue() {
        size_t zeros = 0;
        while (next(1) == 0) {
            if (++zeros > 32) return 0;
        }
        return (next(zeros) + (uint64_t{1} << zeros) - 1) & UINT32_MAX;
    }

private:
    std::vector<uint8_t> mData;
    size_t mAt = 0;
};

// Without emulation prevention bytes, and without the last two bytes.
inline std::vector<uint8_t> payloadOf(Bytes sps) {
    const Bytes in = sps.subspan(2);
    std::vector<uint8_t> out;
    for (size_t i = 0, zeros = 0; i + 2 < in.size(); ++i) {
        out.push_back(in[i]);
        zeros = in[i] == 0 ? zeros + 1 : 0;
        if (zeros < 2 || in[i + 1] != 3) continue;
        ++i;
        zeros = 0;
    }
    return out;
}

// The picture size by ITU-T H.265 7.3.2.2.1; none where the call is to end fatally.
inline std::optional<Size> sizeOf(Bytes sps) {
    if (sps.size() < 2) return std::nullopt;
    if (sps.size() == 2) return Size();
    Bits bits(payloadOf(sps));
    bits.next(4);
    const uint64_t subLayers = bits.next(3);
    bits.next(1);
    bits.next(88);
    bits.next(8);
    uint64_t profiles = 0, levels = 0;
    for (uint64_t i = 0; i < subLayers; ++i) {
        profiles += bits.next(1);
        levels += bits.next(1);
    }
    if (subLayers > 0) bits.next(2 * (8 - subLayers));
    for (; profiles > 0; --profiles) bits.next(88);
    for (; levels > 0; --levels) bits.next(8);
    bits.ue();
    if (bits.ue() == 3) bits.next(1);
    Size size{bits.ue(), bits.ue()};
    if (std::max(size.width, size.height) > INT32_MAX) return std::nullopt;
    if (bits.next(1) == 0) return size;
    const uint64_t x = bits.ue() + bits.ue(), y = bits.ue() + bits.ue();
    if (x > size.width || y > size.height) return std::nullopt;
    return Size{size.width - x, size.height - y};
}

}  // namespace fuzz
