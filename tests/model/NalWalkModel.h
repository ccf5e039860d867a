// The walk over an Annex B stream, one byte at a time (ITU-T H.264 Annex B.1.1).

#pragma once

#include <optional>

#include "support/Platform.h"

namespace test {

struct NalCursor {
    const uint8_t* data;
    size_t size;
    const uint8_t* unit = nullptr;
    size_t unitSize = 0;
    bool operator==(const NalCursor&) const = default;
};

inline int32_t modelNextUnit(NalCursor& at, bool startCodeFollows) {
    at.unit = nullptr;
    at.unitSize = 0;
    if (at.size == 0) return -1;

    size_t one = 0;
    while (at.data[one] == 0) {
        if (++one == at.size) return -1;
    }
    if (at.data[one] != 1 || one < 2) return -1007;

    const size_t begin = one + 1;
    size_t nextOne = begin;
    while (nextOne < at.size &&
           !(at.data[nextOne] == 1 && at.data[nextOne - 1] == 0 && at.data[nextOne - 2] == 0)) {
        ++nextOne;
    }
    if (nextOne == at.size) {
        if (!startCodeFollows) return -1;
        nextOne = at.size + 2;
    }

    size_t end = nextOne - 2;
    while (end > begin + 1 && at.data[end - 1] == 0) --end;
    at.unit = at.data + begin;
    at.unitSize = end - begin;

    const bool finished = nextOne + 2 >= at.size;
    at.data = finished ? nullptr : at.data + nextOne - 2;
    at.size = finished ? 0 : at.size - nextOne + 2;
    return 0;
}

inline std::optional<Bytes> modelFindUnit(const uint8_t* data, size_t size, unsigned type,
                                          bool hevc) {
    NalCursor at{data, size};
    while (modelNextUnit(at, true) == 0) {
        const unsigned header = at.unitSize == 0 ? 0 : *at.unit;
        const unsigned found = hevc ? (header >> 1) & 0x3f : header & 0x1f;
        if (found == type) return Bytes(at.unit, at.unit + at.unitSize);
    }
    return std::nullopt;
}

}  // namespace test
