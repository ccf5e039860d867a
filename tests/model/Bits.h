// Reading bit by bit.

#pragma once

#include "platform/BitReader.h"

namespace test {

struct Bits : android::ABitReader {
    using ABitReader::ABitReader;
    unsigned bit() { return getBits(1); }
    int64_t ue() {
        unsigned zeros = 0;
        while (bit() == 0) {
            if (++zeros == 33) return 0;
        }
        return static_cast<uint32_t>((uint64_t{1} << zeros) - 1 + getBits(zeros));
    }
};

}  // namespace test
