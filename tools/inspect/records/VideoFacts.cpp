#include "inspect/records/VideoFacts.h"

#include <algorithm>
#include <array>

#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

// An element, whichever codec has it, and what its number is.
struct KnownElement {
    std::string_view name;
    uint64_t VideoFacts::*fact;
    std::string (*words)(uint64_t value) = nullptr;
    uint64_t bias = 0;
};

constexpr auto kElements = std::to_array<KnownElement>({
        {"profile_idc", &VideoFacts::profile, avcProfileName},
        {"general_profile_idc", &VideoFacts::profile, hevcProfileName},
        {"seq_profile", &VideoFacts::profile},
        {"level_idc", &VideoFacts::level},
        {"general_level_idc", &VideoFacts::level, hevcLevelText},
        {"seq_level_idx[0]", &VideoFacts::level},
        {"pic_width_in_luma_samples", &VideoFacts::codedWidth},
        {"pic_height_in_luma_samples", &VideoFacts::codedHeight},
        {"frame_width_minus_1", &VideoFacts::codedWidth, nullptr, 1},
        {"frame_height_minus_1", &VideoFacts::codedHeight, nullptr, 1},
        {"max_frame_width_minus_1", &VideoFacts::codedWidth, nullptr, 1},
        {"max_frame_height_minus_1", &VideoFacts::codedHeight, nullptr, 1},
        {"bit_depth_luma_minus8", &VideoFacts::bitDepth, nullptr, 8},
        {"bit_depth_chroma_minus8", &VideoFacts::chromaBitDepth, nullptr, 8},
        {"chroma_format_idc", &VideoFacts::chroma, chromaText},
        {"colour_primaries", &VideoFacts::primaries, primariesText},
        {"color_primaries", &VideoFacts::primaries, primariesText},
        {"transfer_characteristics", &VideoFacts::transfer, transferText},
        {"matrix_coefficients", &VideoFacts::matrix, matrixText},
        {"video_full_range_flag", &VideoFacts::isFullRange},
        {"color_range", &VideoFacts::isFullRange},
        {"time_scale", &VideoFacts::frames},
        {"vui_time_scale", &VideoFacts::frames},
        {"num_units_in_tick", &VideoFacts::seconds},
        {"vui_num_units_in_tick", &VideoFacts::seconds},
        {"num_units_in_display_tick", &VideoFacts::seconds},
        {"nal_unit_type", nullptr,
         [](uint64_t type) { return type < 32 ? "" : hevcUnitName(type); }},
        {"max_display_mastering_luminance", nullptr, luminanceText},
        {"min_display_mastering_luminance", nullptr, luminanceText},
});

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

const SyntaxElement* find(Elements elements, std::string_view name) {
    const auto found = std::ranges::find(elements, name, &SyntaxElement::name);
    return found != elements.end() ? &*found : nullptr;
}

VideoFacts numbersOf(Elements elements) {
    VideoFacts facts;
    for (const KnownElement& each : kElements) {
        const auto* element = each.fact != nullptr ? find(elements, each.name) : nullptr;
        if (element == nullptr) continue;
        facts.*each.fact = static_cast<uint64_t>(element->value) + each.bias;
    }
    return facts;
}

// The flags whose names begin so, the first of them highest.
uint64_t flagsOf(Elements elements, std::string_view start) {
    uint64_t flags = 0;
    for (const SyntaxElement& each : elements) {
        const bool isOne = each.bits == 1 && each.name.starts_with(start);
        if (isOne) flags = flags << 1 | (each.value != 0 ? 1u : 0u);
    }
    return flags;
}

void crop(VideoFacts& facts, Elements sps, const std::string& window, uint64_t fields) {
    const auto offset = [&](const char* side) { return valueOf(sps, window + side + "_offset"); };
    // ITU-T H.264 Table 6-1, ITU-T H.265 Table 6-1: SubWidthC and SubHeightC
    const uint64_t subWidth = facts.chroma == 1 || facts.chroma == 2 ? 2 : 1;
    const uint64_t subHeight = facts.chroma == 1 ? 2 : 1;
    const uint64_t columns = subWidth * (offset("left") + offset("right"));
    const uint64_t lines = subHeight * fields * (offset("top") + offset("bottom"));
    facts.width = facts.codedWidth - std::min(facts.codedWidth, columns);
    facts.height = facts.codedHeight - std::min(facts.codedHeight, lines);
}

uint64_t vp9Profile(Elements unit) {
    return valueOf(unit, "profile_low_bit") + 2 * valueOf(unit, "profile_high_bit");
}

}  // namespace

uint64_t valueOf(Elements elements, std::string_view name) {
    const SyntaxElement* element = find(elements, name);
    return element != nullptr ? static_cast<uint64_t>(element->value) : 0;
}

std::string wordsFor(const SyntaxElement& element, Elements unit) {
    const auto value = static_cast<uint64_t>(element.value);
    if (element.name == "level_idc") {
        const bool isSet3 = valueOf(unit, "constraint_set3_flag") != 0;
        return avcLevelText(valueOf(unit, "profile_idc"), isSet3 ? 0x10 : 0, value);
    }
    if (element.name == "profile_high_bit") {
        return "profile " + std::to_string(vp9Profile(unit));
    }
    const auto* known = std::ranges::find(kElements, element.name, &KnownElement::name);
    const bool hasWords = known != kElements.end() && known->words != nullptr;
    return hasWords ? known->words(value) : std::string();
}

std::optional<VideoFacts> avcFacts(Elements unit) {
    if (find(unit, "vui_parameters_present_flag") == nullptr) return {};
    VideoFacts facts = numbersOf(unit);
    facts.compatibility =
            flagsOf(unit, "constraint_set") << 2 | valueOf(unit, "reserved_zero_2bits");
    const uint64_t fields = 2 - valueOf(unit, "frame_mbs_only_flag");
    const uint64_t widthInMbs = valueOf(unit, "pic_width_in_mbs_minus1") + 1;
    const uint64_t heightInMbs = (valueOf(unit, "pic_height_in_map_units_minus1") + 1) * fields;
    facts.codedWidth = 16 * widthInMbs;
    facts.codedHeight = 16 * heightInMbs;
    crop(facts, unit, "frame_crop_", fields);
    facts.isInterlaced = fields == 2;
    facts.refs = valueOf(unit, "max_num_ref_frames");
    // A.3.1: level 1b of the old profiles, whose number is that of 1.1
    const bool isLevel1b = avcLevelText(facts.profile, facts.compatibility, facts.level) == "1b";
    if (const auto most = limitOf(kMaxDpbMbs, isLevel1b ? 9 : facts.level)) {
        facts.maxRefs = std::min<uint64_t>(*most / (widthInMbs * heightInMbs), 16);
    }
    facts.seconds *= 2;  // E.2.1: a tick is a field
    return facts;
}

std::optional<VideoFacts> hevcFacts(Elements unit) {
    if (find(unit, "log2_max_pic_order_cnt_lsb_minus4") == nullptr) return {};
    VideoFacts facts = numbersOf(unit);
    facts.compatibility = flagsOf(unit, "general_profile_compatibility_flag[");
    crop(facts, unit, "conf_win_", 1);
    const bool isFields = valueOf(unit, "field_seq_flag") != 0;
    facts.isInterlaced = isFields || (valueOf(unit, "general_interlaced_source_flag") != 0 &&
                                      valueOf(unit, "general_progressive_source_flag") == 0);
    for (const SyntaxElement& each : unit) {  // the last is that of all the layers
        const bool isBuffer = each.name.starts_with("sps_max_dec_pic_buffering_minus1[");
        if (isBuffer) facts.refs = static_cast<uint64_t>(each.value);
    }
    if (const auto most = limitOf(kMaxLumaPs, facts.level)) {
        const uint64_t samples = facts.codedWidth * facts.codedHeight;
        facts.maxRefs = samples <= *most / 4       ? 15  // A.4.2: MaxDpbSize - 1
                        : samples <= *most / 2     ? 11
                        : samples <= *most / 4 * 3 ? 7
                                                   : 5;
    }
    if (isFields) facts.seconds *= 2;  // E.3.1: a picture is a field
    return facts;
}

std::optional<VideoFacts> vp9Facts(Elements unit) {
    if (find(unit, "color_space") == nullptr || find(unit, "frame_height_minus_1") == nullptr) {
        return {};
    }
    // 7.2.2: color_space in the numbers of ITU-T H.273
    constexpr std::array<uint64_t, 8> kMatrices = {2, 6, 1, 6, 7, 9, 2, 0};
    VideoFacts facts = numbersOf(unit);
    facts.width = facts.codedWidth;
    facts.height = facts.codedHeight;
    facts.profile = vp9Profile(unit);
    if (facts.profile > 1) facts.bitDepth = valueOf(unit, "ten_or_twelve_bit") != 0 ? 12 : 10;
    facts.chromaBitDepth = facts.bitDepth;
    facts.matrix = kMatrices[valueOf(unit, "color_space") & 7];
    if (facts.matrix == 0) facts.chroma = 3;
    if (find(unit, "subsampling_x") != nullptr) {
        facts.chroma = 3 - valueOf(unit, "subsampling_x") - valueOf(unit, "subsampling_y");
    }
    return facts;
}

std::optional<VideoFacts> av1Facts(Elements unit) {
    if (find(unit, "film_grain_params_present") == nullptr) return {};
    VideoFacts facts = numbersOf(unit);
    facts.width = facts.codedWidth;
    facts.height = facts.codedHeight;
    const uint64_t highDepth = valueOf(unit, "high_bitdepth") != 0 ? 10 : 8;
    facts.bitDepth = valueOf(unit, "twelve_bit") != 0 ? 12 : highDepth;
    facts.chromaBitDepth = facts.bitDepth;
    // 5.5.2: of profile 2 below 12 bits, 4:2:2; sRGB, without a range, is in full range and 4:4:4
    constexpr std::array<uint64_t, 3> kChromaOfProfile = {1, 3, 2};
    facts.chroma = kChromaOfProfile[std::min<uint64_t>(facts.profile, 2)];
    const bool isSrgb = find(unit, "color_range") == nullptr;
    if (isSrgb) facts.isFullRange = 1;
    if (isSrgb) facts.chroma = 3;
    if (find(unit, "subsampling_x") != nullptr) {
        facts.chroma = 3 - valueOf(unit, "subsampling_x") - valueOf(unit, "subsampling_y");
    }
    if (valueOf(unit, "mono_chrome") != 0) facts.chroma = 0;
    // 5.5.3: without the number of ticks, pictures come at any distance
    const bool isEven = find(unit, "num_ticks_per_picture_minus_1") != nullptr;
    facts.seconds *= isEven ? valueOf(unit, "num_ticks_per_picture_minus_1") + 1 : 0;
    return facts;
}

}  // namespace inspect
