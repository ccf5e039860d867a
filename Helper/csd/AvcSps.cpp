#include "Helper/csd/AvcSps.h"

#include <algorithm>
#include <array>

#include "Helper/base/BitReader.h"
#include "Helper/base/Checked.h"

namespace android::csd {
namespace {

using base::BitReader;
using base::checkedAdd;
using base::checkedCast;
using base::checkedMul;

// The profiles whose chroma fields are read. 118 and 128 carry such fields as well; they are left
// out on purpose.
constexpr auto kChromaProfiles = std::to_array<uint32_t>({44, 83, 86, 100, 110, 122, 244});

// The lists are stepped over in a fixed number, also where 4:4:4 has twelve.
constexpr auto kScalingListSizes = std::to_array<unsigned>({16, 16, 16, 16, 16, 16, 64, 64});

// ITU-T H.264 7.3.2.1.1.1, scaling_list. delta_scale is se(v) there; here the code number counts as
// it is, unsigned. That is meant: it decides where a list ends and so which size is reported.
void skipScalingList(BitReader& reader, unsigned sizeOfScalingList) {
    uint32_t scale = 8;
    for (unsigned j = 0; j < sizeOfScalingList; ++j) {
        const uint32_t delta_scale = reader.ue();
        scale = (scale + (delta_scale & 0xFF)) & 0xFF;
        if (scale == 0) return;  // nextScale is 0: the last scale holds for the rest of the list
    }
}

void parseChroma(BitReader& reader, AvcSps& sps) {
    sps.chroma_format_idc = reader.ue();             // chroma_format_idc: ue(v)
    if (sps.chroma_format_idc == 3) reader.skip(1);  // separate_colour_plane_flag: u(1)
    reader.ue();                                     // bit_depth_luma_minus8: ue(v)
    reader.ue();                                     // bit_depth_chroma_minus8: ue(v)
    reader.skip(1);                                  // qpprime_y_zero_transform_bypass_flag: u(1)
    sps.seq_scaling_matrix_present_flag = reader.flag();
    if (!sps.seq_scaling_matrix_present_flag) return;
    for (const unsigned size : kScalingListSizes) {
        // seq_scaling_list_present_flag[i]: u(1)
        if (reader.flag()) skipScalingList(reader, size);
    }
}

void skipPictureOrderCount(BitReader& reader) {
    const uint32_t pic_order_cnt_type = reader.ue();  // pic_order_cnt_type: ue(v)
    if (pic_order_cnt_type == 0) {
        reader.ue();  // log2_max_pic_order_cnt_lsb_minus4: ue(v)
    } else if (pic_order_cnt_type == 1) {
        reader.skip(1);  // delta_pic_order_always_zero_flag: u(1)
        reader.ue();     // offset_for_non_ref_pic: se(v), only stepped over
        reader.ue();     // offset_for_top_to_bottom_field: se(v), only stepped over
        // num_ref_frames_in_pic_order_cnt_cycle: ue(v)
        const uint32_t num_ref_frames_in_pic_order_cnt_cycle = reader.ue();
        for (uint32_t i = 0; i < num_ref_frames_in_pic_order_cnt_cycle && reader.ok(); ++i) {
            reader.ue();  // offset_for_ref_frame[i]: se(v), only stepped over
        }
    }
}

}  // namespace

AvcSps parseAvcSps(Bytes unit) {
    AvcSps sps;
    BitReader reader(unit.subspan(std::min<size_t>(unit.size(), 1)));

    const uint32_t profile_idc = reader.u(8);  // profile_idc: u(8)
    reader.skip(16);                           // constraint_set flags and level_idc: u(8), u(8)
    reader.ue();                               // seq_parameter_set_id: ue(v)
    if (std::ranges::find(kChromaProfiles, profile_idc) != kChromaProfiles.end()) {
        parseChroma(reader, sps);
    }
    reader.ue();  // log2_max_frame_num_minus4: ue(v)
    skipPictureOrderCount(reader);
    reader.ue();                                       // max_num_ref_frames: ue(v)
    reader.skip(1);                                    // gaps_in_frame_num_value_allowed_flag: u(1)
    sps.pic_width_in_mbs_minus1 = reader.ue();         // pic_width_in_mbs_minus1: ue(v)
    sps.pic_height_in_map_units_minus1 = reader.ue();  // pic_height_in_map_units_minus1: ue(v)
    sps.frame_mbs_only_flag = reader.flag();           // frame_mbs_only_flag: u(1)
    if (!sps.frame_mbs_only_flag) reader.skip(1);      // mb_adaptive_frame_field_flag: u(1)
    reader.skip(1);                                    // direct_8x8_inference_flag: u(1)
    sps.frame_cropping_flag = reader.flag();           // frame_cropping_flag: u(1)
    if (sps.frame_cropping_flag) {
        sps.frame_crop_left_offset = reader.ue();    // frame_crop_left_offset: ue(v)
        sps.frame_crop_right_offset = reader.ue();   // frame_crop_right_offset: ue(v)
        sps.frame_crop_top_offset = reader.ue();     // frame_crop_top_offset: ue(v)
        sps.frame_crop_bottom_offset = reader.ue();  // frame_crop_bottom_offset: ue(v)
    }
    return sps;
}

PictureSize codedSize(const AvcSps& sps) {
    const uint32_t width = checkedMul(checkedAdd(sps.pic_width_in_mbs_minus1, 1), 16);
    const uint32_t mapUnitRows = sps.frame_mbs_only_flag ? 16 : 32;
    const uint32_t height =
            checkedMul(checkedAdd(sps.pic_height_in_map_units_minus1, 1), mapUnitRows);
    return {checkedCast<int32_t>(width), checkedCast<int32_t>(height)};
}

PictureSize croppedSize(const AvcSps& sps, PictureSize coded) {
    const uint32_t fieldFactor = sps.frame_mbs_only_flag ? 1 : 2;
    uint32_t unitX = 1;
    uint32_t unitY = fieldFactor;
    if (sps.chroma_format_idc != 0) {
        unitX = sps.chroma_format_idc == 3 ? 1 : 2;
        unitY = fieldFactor * (sps.chroma_format_idc == 1 ? 2 : 1);
    }
    const uint32_t cropX =
            checkedMul(checkedAdd(sps.frame_crop_left_offset, sps.frame_crop_right_offset), unitX);
    const uint32_t cropY =
            checkedMul(checkedAdd(sps.frame_crop_top_offset, sps.frame_crop_bottom_offset), unitY);
    return coded.without(cropX, cropY);
}

}  // namespace android::csd
