#include "Helper/csd/HevcSps.h"

#include <array>

#include "Helper/base/BitReader.h"
#include "Helper/base/Checked.h"

namespace android::csd {
namespace {

using base::BitReader;
using base::checkedAdd;
using base::checkedCast;

// The fields read end within 165 bytes: 13 before the sub-layers, 2 + 7 * 12 for these, and eight
// ue(v) of at most 65 bits. What lies behind does not matter.
constexpr size_t kRbspSize = 192;

// The raw byte sequence payload, ITU-T H.265 7.3.1.1, without the last two bytes of the unit.
class Rbsp {
public:
    // cppcheck-suppress uninitMemberVar ; mBytes is written before it is read
    explicit Rbsp(Bytes payload) {
        size_t i = 0;
        while (i + 2 < payload.size() && mSize + 2 <= mBytes.size()) {
            const bool escaped = payload[i] == 0 && payload[i + 1] == 0 && payload[i + 2] == 3;
            if (escaped) {
                // Two zero bytes, without the emulation_prevention_three_byte.
                mBytes[mSize++] = 0;
                mBytes[mSize++] = 0;
                i += 3;
            } else {
                mBytes[mSize++] = payload[i++];
            }
        }
    }

    Bytes bytes() const { return Bytes(mBytes).first(mSize); }

private:
    std::array<uint8_t, kRbspSize> mBytes;
    size_t mSize = 0;
};

// ITU-T H.265 7.3.3, profile_tier_level(1, maxNumSubLayersMinus1)
void skipProfileTierLevel(BitReader& reader, unsigned maxNumSubLayersMinus1) {
    constexpr uint64_t kProfileBits = 2 + 1 + 5 + 32 + 48;
    constexpr uint64_t kLevelBits = 8;
    reader.skip(kProfileBits + kLevelBits);

    uint64_t subLayerBits = 0;
    for (unsigned i = 0; i < maxNumSubLayersMinus1; ++i) {
        if (reader.flag()) subLayerBits += kProfileBits;  // sub_layer_profile_present_flag[i]: u(1)
        if (reader.flag()) subLayerBits += kLevelBits;    // sub_layer_level_present_flag[i]: u(1)
    }
    if (maxNumSubLayersMinus1 > 0)
        reader.skip(uint64_t{2} * (8 - maxNumSubLayersMinus1));  // reserved_zero_2bits
    reader.skip(subLayerBits);
}

}  // namespace

HevcSps parseHevcSps(Bytes unit) {
    HevcSps sps;
    base::checkedSub(unit.size(), kHevcNalHeaderSize);
    const Rbsp rbsp(unit.subspan(kHevcNalHeaderSize));
    BitReader reader(rbsp.bytes());

    reader.skip(4);                                          // sps_video_parameter_set_id: u(4)
    const unsigned sps_max_sub_layers_minus1 = reader.u(3);  // sps_max_sub_layers_minus1: u(3)
    reader.skip(1);                                          // sps_temporal_id_nesting_flag: u(1)
    skipProfileTierLevel(reader, sps_max_sub_layers_minus1);
    reader.ue();                                     // sps_seq_parameter_set_id: ue(v)
    const uint32_t chroma_format_idc = reader.ue();  // chroma_format_idc: ue(v)
    if (chroma_format_idc == 3) reader.skip(1);      // separate_colour_plane_flag: u(1)
    sps.pic_width_in_luma_samples = reader.ue();     // pic_width_in_luma_samples: ue(v)
    sps.pic_height_in_luma_samples = reader.ue();    // pic_height_in_luma_samples: ue(v)
    sps.conformance_window_flag = reader.flag();     // conformance_window_flag: u(1)
    if (sps.conformance_window_flag) {
        sps.conf_win_left_offset = reader.ue();    // conf_win_left_offset: ue(v)
        sps.conf_win_right_offset = reader.ue();   // conf_win_right_offset: ue(v)
        sps.conf_win_top_offset = reader.ue();     // conf_win_top_offset: ue(v)
        sps.conf_win_bottom_offset = reader.ue();  // conf_win_bottom_offset: ue(v)
    }
    return sps;
}

PictureSize codedSize(const HevcSps& sps) {
    return {checkedCast<int32_t>(sps.pic_width_in_luma_samples),
            checkedCast<int32_t>(sps.pic_height_in_luma_samples)};
}

PictureSize croppedSize(const HevcSps& sps, PictureSize coded) {
    const uint32_t cropX = checkedAdd(sps.conf_win_left_offset, sps.conf_win_right_offset);
    const uint32_t cropY = checkedAdd(sps.conf_win_top_offset, sps.conf_win_bottom_offset);
    return coded.without(cropX, cropY);
}

}  // namespace android::csd
