// The sequence parameter set of H.264, as far as the picture size needs it
// (ITU-T H.264 7.3.2.1.1, seq_parameter_set_data).

#pragma once

#include <cstdint>

#include "Helper/base/ByteReader.h"
#include "Helper/csd/PictureSize.h"

namespace android::csd {

using base::Bytes;

struct AvcSps {
    uint32_t chroma_format_idc = 1;
    bool seq_scaling_matrix_present_flag = false;
    uint32_t pic_width_in_mbs_minus1 = 0;
    uint32_t pic_height_in_map_units_minus1 = 0;
    bool frame_mbs_only_flag = false;
    bool frame_cropping_flag = false;
    uint32_t frame_crop_left_offset = 0;
    uint32_t frame_crop_right_offset = 0;
    uint32_t frame_crop_top_offset = 0;
    uint32_t frame_crop_bottom_offset = 0;
};

// Reads a unit that begins with its header byte. The bytes are taken as they are: emulation
// prevention bytes are not removed. Whatever is missing at the end reads as zero, and time is
// bounded by the unit's size whatever the counts in it say.
AvcSps parseAvcSps(Bytes unit);

// The size of the coded picture. Fatal when a side reaches 2^31.
PictureSize codedSize(const AvcSps& sps);

// The coded size less the cropping (ITU-T H.264 7.4.2.1.1, equations 7-19 to 7-22). Fatal when the
// cropping is larger than the picture.
PictureSize croppedSize(const AvcSps& sps, PictureSize coded);

}  // namespace android::csd
