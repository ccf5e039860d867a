#include "referee/AvcReferee.h"

#include <algorithm>
#include <bitset>
#include <set>
#include <span>

#include "support/BitWriter.h"

namespace test::avc {
namespace {

const Bytes kStartCode = {0, 0, 1};

struct Cursor {
    const std::string& bits;
    size_t position = 0;

    bool flag() { return bits.at(position++) == '1'; }  // throws at the end
    uint32_t u(unsigned count) {
        uint32_t value = 0;
        for (; count > 0; --count) value = value * 2 + (flag() ? 1 : 0);
        return value;
    }
    uint32_t ue() {
        unsigned zeros = 0;
        while (zeros < 31 && !flag()) ++zeros;
        return u(zeros) + (1u << zeros) - 1;
    }
    int se() {
        const auto code = static_cast<int>(ue());
        return code % 2 != 0 ? code / 2 + 1 : -(code / 2);
    }
};

// 7.3.2.1.1.1, scaling_list
void scalingList(Cursor& in, int size, Reading reading) {
    int last = 8;
    int next = 8;
    for (int j = 0; j < size && next != 0; ++j) {
        const int delta = reading == Reading::kStandard ? in.se() : static_cast<int>(in.ue());
        next = (last + delta + 256) % 256;
        last = next;
    }
}

}  // namespace

std::vector<Bytes> units(const Bytes& stream) {
    const auto startCodeFrom = [&stream](Bytes::const_iterator from) {
        return std::search(from, stream.end(), kStartCode.begin(), kStartCode.end());
    };
    std::vector<Bytes> found;
    for (auto at = startCodeFrom(stream.begin()); at != stream.end();) {
        const auto first = at + std::ssize(kStartCode);
        at = startCodeFrom(first);
        found.emplace_back(first, at);
        while (found.back().back() == 0) found.back().pop_back();
    }
    return found;
}

Bytes annexB(const std::vector<Bytes>& units, size_t startCodeSize) {
    Bytes stream;
    for (const Bytes& unit : units) {
        stream.insert(stream.end(), startCodeSize - kStartCode.size(), 0);
        stream.insert(stream.end(), kStartCode.begin(), kStartCode.end());
        stream.insert(stream.end(), unit.begin(), unit.end());
    }
    return stream;
}

std::string bits(const Bytes& unit, Reading reading) {
    std::string text;
    unsigned zeros = 0;
    for (const uint8_t byte : std::span(unit).subspan(1)) {
        const bool prevention = zeros >= 2 && byte == 3;
        zeros = byte == 0 ? zeros + 1 : 0;
        if (prevention && reading == Reading::kStandard) continue;
        text += std::bitset<8>(byte).to_string();
    }
    return text;
}

Bytes unit(uint8_t header, std::string rbsp) {
    BitWriter writer;
    rbsp.resize(rbsp.rfind('1'));  // rbsp_stop_one_bit, which the writer appends again
    for (const char bit : rbsp) writer.u(1, bit == '1');

    Bytes bytes{header};
    unsigned zeros = 0;
    for (const uint8_t byte : writer.finish()) {
        if (zeros == 2 && byte <= 3) {
            bytes.push_back(3);
            zeros = 0;
        }
        zeros = byte == 0 ? zeros + 1 : 0;
        bytes.push_back(byte);
    }
    return bytes;
}

std::string ue(uint32_t value) {
    const std::string text = std::bitset<32>(value + 1).to_string();
    const size_t zeros = text.find('1');
    return std::string(31 - zeros, '0') + text.substr(zeros);
}

std::string se(int32_t value) {
    return ue(static_cast<uint32_t>(value > 0 ? 2 * value - 1 : -2 * value));
}

Sps readSps(const Bytes& unit, Reading reading) {
    const bool standard = reading == Reading::kStandard;
    const std::string text = bits(unit, reading);
    Cursor in{text};
    Sps sps;
    const uint32_t profile_idc = in.u(8);
    in.u(16);
    in.ue();  // seq_parameter_set_id
    uint32_t chroma_format_idc = 1;
    std::set<uint32_t> profiles{100, 110, 122, 244, 44, 83, 86};
    if (standard) profiles.insert({118, 128, 138, 139, 134, 135});
    if (profiles.contains(profile_idc)) {
        chroma_format_idc = in.ue();
        if (chroma_format_idc == 3) in.flag();
        in.ue();    // bit_depth_luma_minus8
        in.ue();    // bit_depth_chroma_minus8
        in.flag();  // qpprime_y_zero_transform_bypass_flag
        sps.seq_scaling_matrix_present_flag = in.position;
        const int lists = !in.flag() ? 0 : standard && chroma_format_idc == 3 ? 12 : 8;
        for (int i = 0; i < lists; ++i) {
            if (in.flag()) scalingList(in, i < 6 ? 16 : 64, reading);
        }
    }
    in.ue();  // log2_max_frame_num_minus4
    sps.pic_order_cnt_type = in.position;
    const uint32_t pic_order_cnt_type = in.ue();
    if (pic_order_cnt_type == 0) in.ue();
    if (pic_order_cnt_type == 1) {
        in.flag();  // delta_pic_order_always_zero_flag
        in.se();    // offset_for_non_ref_pic
        in.se();    // offset_for_top_to_bottom_field
        for (uint32_t cycle = std::min(in.ue(), 255u); cycle > 0; --cycle) in.se();
    }
    in.ue();    // max_num_ref_frames
    in.flag();  // gaps_in_frame_num_value_allowed_flag
    auto& [width, height] = sps.size;
    width = 16 * (int64_t{in.ue()} + 1);
    height = 16 * (int64_t{in.ue()} + 1);
    const int fields = in.flag() ? 1 : 2;  // frame_mbs_only_flag
    height *= fields;
    if (fields == 2) in.flag();  // mb_adaptive_frame_field_flag
    in.flag();                   // direct_8x8_inference_flag
    if (!in.flag()) return sps;  // frame_cropping_flag
    const int SubWidthC = chroma_format_idc == 1 || chroma_format_idc == 2 ? 2 : 1;
    const int SubHeightC = chroma_format_idc == 1 ? 2 : 1;
    for (int edge = 0; edge < 2; ++edge) width -= int64_t{SubWidthC} * in.ue();
    for (int edge = 0; edge < 2; ++edge) height -= int64_t{SubHeightC} * fields * in.ue();
    return sps;
}

}  // namespace test::avc
