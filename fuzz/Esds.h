// What a stored elementary stream descriptor (ISO/IEC 14496-1 7.2.6.5) must be.

#pragma once

#include "Fuzz.h"

namespace fuzz {

// Takes tag and size of a descriptor off the front; what follows must be the rest of the input.
inline void takeDescriptorHead(Bytes& input, uint32_t tag) {
    REQUIRE(take(input, 1) == tag);
    size_t size = 0;
    uint32_t byte;
    do {
        byte = take(input, 1);
        size = size << 7 | (byte & 0x7f);
    } while (byte & 0x80);
    REQUIRE(size == input.size());
}

inline void checkEsds(Bytes esds, Bytes data, uint32_t objectType) {
    takeDescriptorHead(esds, 3);
    REQUIRE(take(esds, 3) == 0);
    takeDescriptorHead(esds, 4);
    REQUIRE(take(esds, 1) == objectType);
    for (int i = 0; i < 3; ++i) REQUIRE(take(esds, 4) == 0);
    takeDescriptorHead(esds, 5);
    REQUIRE(same(esds, data));
}

}  // namespace fuzz
