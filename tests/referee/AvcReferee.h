// A plain reader of H.264 parameter sets, apart from the library's. Bits are characters, '0' and
// '1', so that tests can rewrite them.

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/Platform.h"

namespace test::avc {

// The NAL units of an Annex B stream; and a stream of units behind start codes of 3 or 4 bytes.
std::vector<Bytes> units(const Bytes& stream);
Bytes annexB(const std::vector<Bytes>& units, size_t startCodeSize);

enum class Reading {
    kStandard,  // ITU-T H.264 7.3.2.1.1 to the letter
    kLibrary,   // with the departures that the library's header announces
};

// The bits of a unit behind its header byte; kStandard takes emulation prevention bytes out.
std::string bits(const Bytes& unit, Reading reading);
// The unit for the bits of an RBSP, which need not fill their last byte.
Bytes unit(uint8_t header, std::string rbsp);

// Codes of ITU-T H.264 9.1 and 9.1.1.
std::string ue(uint32_t value);
std::string se(int32_t value);

struct Sps {
    std::pair<int64_t, int64_t> size;  // width and height
    // Where the element stands in the bits.
    size_t seq_scaling_matrix_present_flag = 0;
    size_t pic_order_cnt_type = 0;
};

Sps readSps(const Bytes& unit, Reading reading);

}  // namespace test::avc
