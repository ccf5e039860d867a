#include "inspect/records/VideoFacts.h"

#include <algorithm>
#include <array>

#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

struct LevelLimit {
    uint64_t level;
    uint64_t most;
};

// ITU-T H.264 Table A-1: MaxDpbMbs by level_idc
constexpr auto kMaxDpbMbs = std::to_array<LevelLimit>({
        {9, 396},     {10, 396},    {11, 900},    {12, 2376},   {13, 2376},
        {20, 2376},   {21, 4752},   {22, 8100},   {30, 8100},   {31, 18000},
        {32, 20480},  {40, 32768},  {41, 32768},  {42, 34816},  {50, 110400},
        {51, 184320}, {52, 184320}, {60, 696320}, {61, 696320}, {62, 696320},
});

// ITU-T H.265 Table A.8: MaxLumaPs by general_level_idc
constexpr auto kMaxLumaPs = std::to_array<LevelLimit>({
        {30, 36864},
        {60, 122880},
        {63, 245760},
        {90, 552960},
        {93, 983040},
        {120, 2228224},
        {123, 2228224},
        {150, 8912896},
        {153, 8912896},
        {156, 8912896},
        {180, 35651584},
        {183, 35651584},
        {186, 35651584},
});

std::optional<uint64_t> limitOf(std::span<const LevelLimit> limits, uint64_t level) {
    const auto found = std::ranges::find(limits, level, &LevelLimit::level);
    return found != limits.end() ? std::optional(found->most) : std::nullopt;
}

// The rows of one set: from the row of this name to where its unit ends.
class Set {
public:
    Set(std::span<const Row> rows, std::string_view first) {
        const auto begin = std::ranges::find(rows, first, &Row::name);
        const auto end = std::find_if(begin, rows.end(),
                                      [&](const Row& row) { return row.depth < begin->depth; });
        mRows = {begin, end};
    }

    bool has(std::string_view name) const { return find(name) != nullptr; }
    uint64_t number(std::string_view name, uint64_t otherwise = 0) const {
        const Row* row = find(name);
        return row != nullptr ? row->number.value_or(otherwise) : otherwise;
    }
    // Of "name[0]", "name[1]", ...
    uint64_t lastNumber(std::string_view name) const {
        uint64_t last = 0;
        for (const Row& row : mRows) {
            const bool isOne = row.name.size() > name.size() && row.name.starts_with(name) &&
                               row.name[name.size()] == '[';
            if (isOne) last = row.number.value_or(0);
        }
        return last;
    }

private:
    const Row* find(std::string_view name) const {
        const auto found = std::ranges::find(mRows, name, &Row::name);
        return found != mRows.end() ? &*found : nullptr;
    }

    std::span<const Row> mRows;
};

uint64_t without(uint64_t size, uint64_t cropped) {
    return size - std::min(size, cropped);
}

void readColour(VideoFacts& facts, const Set& set) {
    facts.isFullRange = set.number("video_full_range_flag", set.number("color_range")) != 0;
    facts.primaries = set.number("colour_primaries", set.number("color_primaries", 2));
    facts.transfer = set.number("transfer_characteristics", 2);
    facts.matrix = set.number("matrix_coefficients", 2);
}

void readDepths(VideoFacts& facts, const Set& set) {
    facts.bitDepth = set.number("bit_depth_luma_minus8") + 8;
    facts.chromaBitDepth = set.number("bit_depth_chroma_minus8") + 8;
}

// ITU-T H.264 Table 6-1, ITU-T H.265 Table 6-1: SubWidthC and SubHeightC
uint64_t subWidth(uint64_t chroma) {
    return chroma == 1 || chroma == 2 ? 2 : 1;
}

uint64_t subHeight(uint64_t chroma) {
    return chroma == 1 ? 2 : 1;
}

std::string bitDepthText(const VideoFacts& facts) {
    const std::string luma = std::to_string(facts.bitDepth);
    const bool isOne = facts.chroma == 0 || facts.chromaBitDepth == facts.bitDepth;
    return isOne ? luma : luma + ", chroma " + std::to_string(facts.chromaBitDepth);
}

std::string refsText(const VideoFacts& facts) {
    std::string text = std::to_string(*facts.refs);
    if (!facts.maxRefs) return text;
    const bool isAllowed = facts.refs <= facts.maxRefs;
    return text + "; the level allows " + (isAllowed ? "" : "only ") +
           std::to_string(*facts.maxRefs);
}

std::string rateText(const VideoFacts& facts) {
    const uint64_t hundredths = facts.frames * 100 / facts.seconds;
    const std::string digits = std::to_string(hundredths % 100 + 100).substr(1);
    return std::to_string(hundredths / 100) + (digits == "00" ? "" : "." + digits) + " fps";
}

}  // namespace

std::optional<VideoFacts> avcFacts(std::span<const Row> rows) {
    const Set sps(rows, "profile_idc");
    if (!sps.has("vui_parameters_present_flag")) return {};
    VideoFacts facts{.profile = sps.number("profile_idc"), .level = sps.number("level_idc")};
    for (const char digit : std::string_view("012345")) {
        const std::string flag = std::string("constraint_set") + digit + "_flag";
        facts.compatibility = facts.compatibility << 1 | sps.number(flag);
    }
    facts.compatibility = facts.compatibility << 2 | sps.number("reserved_zero_2bits");
    const uint64_t fields = 2 - sps.number("frame_mbs_only_flag");
    const uint64_t widthInMbs = sps.number("pic_width_in_mbs_minus1") + 1;
    const uint64_t heightInMbs = (sps.number("pic_height_in_map_units_minus1") + 1) * fields;
    facts.chroma = sps.number("chroma_format_idc", 1);
    const uint64_t chromaArray =
            sps.number("separate_colour_plane_flag") != 0 ? 0 : facts.chroma;  // ChromaArrayType
    facts.codedWidth = 16 * widthInMbs;
    facts.codedHeight = 16 * heightInMbs;
    facts.width = without(facts.codedWidth,
                          subWidth(chromaArray) * (sps.number("frame_crop_left_offset") +
                                                   sps.number("frame_crop_right_offset")));
    facts.height = without(facts.codedHeight, fields * subHeight(chromaArray) *
                                                      (sps.number("frame_crop_top_offset") +
                                                       sps.number("frame_crop_bottom_offset")));
    readDepths(facts, sps);
    facts.isInterlaced = fields == 2;
    facts.refs = sps.number("max_num_ref_frames");
    // A.3.1: level 1b of the old profiles, whose number is that of 1.1
    const bool isLevel1b = avcLevelText(static_cast<unsigned>(facts.profile),
                                        sps.number("constraint_set3_flag") != 0 ? 0x10 : 0,
                                        static_cast<unsigned>(facts.level)) == "1b";
    if (const auto most = limitOf(kMaxDpbMbs, isLevel1b ? 9 : facts.level)) {
        facts.maxRefs = std::min<uint64_t>(*most / (widthInMbs * heightInMbs), 16);
    }
    readColour(facts, sps);
    facts.frames = sps.number("time_scale");
    facts.seconds = 2 * sps.number("num_units_in_tick");  // E.2.1: a tick is a field
    return facts;
}

std::optional<VideoFacts> hevcFacts(std::span<const Row> rows) {
    const Set sps(rows, "sps_video_parameter_set_id");
    if (!sps.has("log2_max_pic_order_cnt_lsb_minus4")) return {};
    VideoFacts facts{.profile = sps.number("general_profile_idc"),
                     .compatibility = sps.number("general_profile_compatibility_flag[0..31]"),
                     .level = sps.number("general_level_idc")};
    facts.chroma = sps.number("chroma_format_idc", 1);
    facts.codedWidth = sps.number("pic_width_in_luma_samples");
    facts.codedHeight = sps.number("pic_height_in_luma_samples");
    facts.width = without(facts.codedWidth,
                          subWidth(facts.chroma) * (sps.number("conf_win_left_offset") +
                                                    sps.number("conf_win_right_offset")));
    facts.height = without(facts.codedHeight,
                           subHeight(facts.chroma) * (sps.number("conf_win_top_offset") +
                                                      sps.number("conf_win_bottom_offset")));
    readDepths(facts, sps);
    facts.isInterlaced = sps.number("field_seq_flag") != 0 ||
                         (sps.number("general_interlaced_source_flag") != 0 &&
                          sps.number("general_progressive_source_flag") == 0);
    facts.refs = sps.lastNumber("sps_max_dec_pic_buffering_minus1");
    if (const auto most = limitOf(kMaxLumaPs, facts.level)) {
        const uint64_t samples = facts.codedWidth * facts.codedHeight;
        facts.maxRefs = samples <= *most / 4       ? 15  // A.4.2: MaxDpbSize - 1
                        : samples <= *most / 2     ? 11
                        : samples <= *most / 4 * 3 ? 7
                                                   : 5;
    }
    readColour(facts, sps);
    facts.frames = sps.number("vui_time_scale");
    facts.seconds = sps.number("vui_num_units_in_tick");
    return facts;
}

std::optional<VideoFacts> av1Facts(std::span<const Row> rows) {
    const Set header(rows, "obu_forbidden_bit");
    if (!header.has("film_grain_params_present")) return {};
    VideoFacts facts{.profile = header.number("seq_profile"),
                     .level = header.number("seq_level_idx[0]")};
    facts.codedWidth = facts.width = header.number("max_frame_width_minus_1") + 1;
    facts.codedHeight = facts.height = header.number("max_frame_height_minus_1") + 1;
    const uint64_t highDepth = header.number("high_bitdepth") != 0 ? 10 : 8;
    facts.bitDepth = header.number("twelve_bit") != 0 ? 12 : highDepth;
    facts.chromaBitDepth = facts.bitDepth;
    // 5.5.2: of profile 2 below 12 bits, 4:2:2
    constexpr std::array<uint64_t, 3> kChromaOfProfile = {1, 3, 2};
    facts.chroma = kChromaOfProfile[std::min<uint64_t>(facts.profile, 2)];
    if (header.has("subsampling_x")) {
        facts.chroma = 3 - header.number("subsampling_x") - header.number("subsampling_y");
    }
    if (header.number("mono_chrome") != 0) facts.chroma = 0;
    readColour(facts, header);
    facts.frames = header.number("time_scale");
    facts.seconds = header.number("num_units_in_display_tick") *
                    (header.number("num_ticks_per_picture_minus_1") + 1);
    return facts;
}

void tellFacts(Annotator& out, const std::optional<VideoFacts>& facts) {
    if (!facts || !out.ok()) return;
    const auto tell = [&](const std::string& name, const std::string& words) {
        { const auto row = out.group(name); }
        out.say(words);
    };
    const auto group = out.group("in words");
    const bool isCropped = facts->codedWidth != facts->width || facts->codedHeight != facts->height;
    tell("picture",
         sizeText(facts->width, facts->height) +
                 (isCropped ? ", cropped from " + sizeText(facts->codedWidth, facts->codedHeight)
                            : ""));
    tell("chroma format", chromaText(static_cast<unsigned>(facts->chroma)));
    tell("bit depth", bitDepthText(*facts));
    if (facts->refs) {
        tell("scan", facts->isInterlaced ? "interlaced" : "progressive");
        tell("reference frames", refsText(*facts));
    }
    tell("colour", primariesText(static_cast<unsigned>(facts->primaries)) + " primaries, " +
                           transferText(static_cast<unsigned>(facts->transfer)) + " transfer, " +
                           matrixText(static_cast<unsigned>(facts->matrix)) + " matrix, " +
                           (facts->isFullRange ? "full range" : "limited range"));
    if (facts->frames > 0 && facts->seconds > 0) tell("frame rate", rateText(*facts));
}

}  // namespace inspect
