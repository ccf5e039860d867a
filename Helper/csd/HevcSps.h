// The sequence parameter set of H.265, as far as the picture size needs it
// (ITU-T H.265 7.3.2.2.1, seq_parameter_set_rbsp).

#pragma once

#include <cstdint>

#include "Helper/base/ByteReader.h"
#include "Helper/csd/PictureSize.h"

namespace android::csd {

using base::Bytes;

struct HevcSps {
    uint32_t pic_width_in_luma_samples = 0;
    uint32_t pic_height_in_luma_samples = 0;
    bool conformance_window_flag = false;
    uint32_t conf_win_left_offset = 0;
    uint32_t conf_win_right_offset = 0;
    uint32_t conf_win_top_offset = 0;
    uint32_t conf_win_bottom_offset = 0;
};

// The size of a NAL unit header (ITU-T H.265 7.3.1.2).
inline constexpr size_t kHevcNalHeaderSize = 2;

// Reads a unit that begins with its 2-byte header; fatal when it is shorter. Emulation prevention
// bytes are removed, and the last two bytes of the unit are deliberately taken for zero. Whatever
// is missing reads as zero.
HevcSps parseHevcSps(Bytes unit);

// The size of the coded picture. Fatal when a side reaches 2^31.
PictureSize codedSize(const HevcSps& sps);

// The coded size less the conformance window, whose offsets count as luma samples as they stand:
// not multiplied by SubWidthC and SubHeightC (ITU-T H.265 7.4.3.2.1), on purpose. Fatal when the
// window is larger than the picture.
PictureSize croppedSize(const HevcSps& sps, PictureSize coded);

}  // namespace android::csd
