// The size of an AVC picture, read field by field.

#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "model/Bits.h"

namespace test {

// Of profiles with chroma fields; 118 and 128 have them too, but are read without.
inline constexpr auto kHighProfiles = std::to_array<uint32_t>({44, 83, 86, 100, 110, 122, 244});

inline void modelScalingList(Bits& bits, int entries) {
    int64_t last = 8, next = 8;
    for (int i = 0; i < entries; ++i) {
        if (next != 0) next = (last + bits.ue() + 256) % 256;
        if (next != 0) last = next;
    }
}

// chroma_format_idc, from the fields that only some profiles have.
inline int64_t modelChroma(Bits& bits, std::string& trace) {
    const int64_t chroma = bits.ue();
    if (chroma == 3) bits.bit();
    bits.ue();
    bits.ue();
    bits.bit();
    if (bits.bit() == 0) return chroma;
    trace = "5 \"seq_scaling_matrix_present_flag != 0u\"";
    for (int i = 0; i < 8; ++i) {
        if (bits.bit() == 1) modelScalingList(bits, i < 6 ? 16 : 64);
    }
    return chroma;
}

// Width and height, ITU-T H.264 7.3.2.1.1; empty where the process ends.
inline std::optional<std::pair<int64_t, int64_t>> modelPicture(std::span<const uint8_t> sps,
                                                               std::string& trace) {
    Bits bits(sps.data(), sps.size());
    bits.skipBits(32);
    bits.ue();
    const bool high = sps.size() > 1 && std::ranges::count(kHighProfiles, sps[1]) != 0;
    const int64_t chroma = high ? modelChroma(bits, trace) : 1;
    bits.ue();
    const int64_t picOrder = bits.ue();
    if (picOrder == 0) bits.ue();
    if (picOrder == 1) {
        bits.bit();
        bits.ue();
        bits.ue();
        // What is counted may be more than there is; behind the end all are zero.
        for (auto n = std::min(bits.ue(), std::ssize(sps) * 8); n > 0; --n) bits.ue();
    }
    bits.ue();
    bits.bit();
    int64_t width = (bits.ue() + 1) * 16, height = (bits.ue() + 1) * 16;
    const unsigned fields = bits.bit() == 1 ? 1 : 2;
    height *= fields;
    if (width > INT32_MAX || height > INT32_MAX) return std::nullopt;
    if (fields == 2) bits.bit();
    bits.bit();
    if (bits.bit() == 0) return std::pair{width, height};
    const int64_t left = bits.ue(), right = bits.ue(), top = bits.ue(), bottom = bits.ue();
    width -= (left + right) * (chroma == 0 || chroma == 3 ? 1 : 2);
    height -= (top + bottom) * (chroma == 1 ? 2 * fields : fields);
    if (width < 0 || height < 0) return std::nullopt;
    return std::pair{width, height};
}

}  // namespace test
