// ISO/IEC 14496-15

#include <algorithm>
#include <map>

#include "inspect/records/Readers.h"

namespace inspect {
namespace {

// ITU-T H.265 7.3.1.2, Table 7-1. In a record of H.264 there is none.
bool isHevcSei(Bytes unit) {
    const int type = unit.empty() ? 0 : unit[0] >> 1 & 0x3F;
    return type == 39 || type == 40;
}

// Of the parameter sets and SEI.
struct UnitClause {
    int type;
    std::string_view clause;
};
constexpr UnitClause kAvcClauses[] = {
        {6, "ITU-T H.264 7.3.2.3"},    {7, "ITU-T H.264 7.3.2.1.1"},  {8, "ITU-T H.264 7.3.2.2"},
        {13, "ITU-T H.264 7.3.2.1.2"}, {15, "ITU-T H.264 7.3.2.1.3"},
};
constexpr UnitClause kHevcClauses[] = {
        {32, "ITU-T H.265 7.3.2.1"}, {33, "ITU-T H.265 7.3.2.2"}, {34, "ITU-T H.265 7.3.2.3"},
        {39, "ITU-T H.265 7.3.2.4"}, {40, "ITU-T H.265 7.3.2.4"},
};

// By the unit's first byte, which has the type.
std::string_view clauseOf(Bytes unit, bool isHevc) {
    const std::span<const UnitClause> all = isHevc ? std::span<const UnitClause>(kHevcClauses)
                                                   : std::span<const UnitClause>(kAvcClauses);
    const int type = unit.empty() ? 0 : isHevc ? unit[0] >> 1 & 0x3F : unit[0] & 0x1F;
    const auto found = std::ranges::find(all, type, &UnitClause::type);
    return found != all.end() ? found->clause : std::string_view();
}

// passOver: the units that stay bytes; null = none.
void readSets(Annotator& out, HeaderTrace& trace, VideoFactsReader readFacts, uint64_t count,
              const std::string& name, const std::string& lengthName,
              bool (*passOver)(Bytes unit) = nullptr) {
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        const uint64_t size = out.big(lengthName, 16);
        const auto unit = out.group(name + " " + std::to_string(i), size);
        out.cite(clauseOf(out.ahead(), readFacts == hevcFacts));
        const bool isPassedOver = passOver != nullptr && passOver(out.ahead());
        if (!isPassedOver) readUnit(out, trace, readFacts);
    }
}

// "VPS+2 SPS+PPS", by type
std::string unitsText(const std::map<uint64_t, uint64_t>& countOfType) {
    std::string text;
    for (const auto& [type, count] : countOfType) {
        text += text.empty() ? "" : "+";
        if (count > 1) text += std::to_string(count) + " ";
        text += hevcUnitName(type);
    }
    return text.empty() ? "no parameter sets" : text;
}

}  // namespace

std::string readAvcRecord(Annotator& out) {
    HeaderTrace trace(AV_CODEC_ID_H264);
    const auto readAll = [&](const std::string& name, uint64_t count) {
        readSets(out, trace, avcFacts, count, name + "NALUnit", name + "NALUnitLength");
    };
    const auto [version, profile, constraints, level] =
            out.big({{"configurationVersion", 8},
                     {"AVCProfileIndication", 8, avcProfileName},
                     {"profile_compatibility", 8},
                     {"AVCLevelIndication", 8}});
    const std::string levelText = avcLevelText(profile, constraints, level);
    out.say(levelText);
    const auto counts = out.big({{"reserved", 6},
                                 {"lengthSizeMinusOne", 2, lengthsText},
                                 {"reserved", 3},
                                 {"numOfSequenceParameterSets", 5}});
    readAll("sequenceParameterSet", counts[3]);
    const uint64_t pictureSets = out.big("numOfPictureParameterSets", 8);
    readAll("pictureParameterSet", pictureSets);
    const bool isRead = out.ok();
    // There in the profiles that came with the High profile; many writers leave it out all the
    // same.
    const bool isOldProfile = profile == 66 || profile == 77 || profile == 88;
    if (out.ok() && !isOldProfile && out.remaining() > 0) {
        out.big({{"reserved", 6},
                 {"chroma_format", 2, chromaText},
                 {"reserved", 5},
                 {"bit_depth_luma_minus8", 3},
                 {"reserved", 5},
                 {"bit_depth_chroma_minus8", 3}});
        readAll("sequenceParameterSetExt", out.big("numOfSequenceParameterSetExt", 8));
    }
    if (!isRead || version != 1) return "not a complete AVC configuration record";
    return "AVC " + avcProfileName(profile) + " " + levelText + ", " + std::to_string(counts[3]) +
           " SPS, " + std::to_string(pictureSets) + " PPS, " + lengthsText(counts[1]);
}

std::string readHevcRecord(Annotator& out) {
    const auto [version, space, tier, profile, compatibility] =
            out.big({{"configurationVersion", 8},
                     {"general_profile_space", 2},
                     {"general_tier_flag", 1},
                     {"general_profile_idc", 5, hevcProfileName},
                     {"general_profile_compatibility_flags", 32, hexText}});
    out.bytes("general_constraint_indicator_flags", 6);
    const uint64_t level = out.big("general_level_idc", 8, hevcLevelText);
    out.big({{"reserved", 4},
             {"min_spatial_segmentation_idc", 12},
             {"reserved", 6},
             {"parallelismType", 2},
             {"reserved", 6},
             {"chromaFormat", 2, chromaText},
             {"reserved", 5},
             {"bitDepthLumaMinus8", 3},
             {"reserved", 5},
             {"bitDepthChromaMinus8", 3},
             {"avgFrameRate", 16}});
    const auto lengths = out.big({{"constantFrameRate", 2},
                                  {"numTemporalLayers", 3},
                                  {"temporalIdNested", 1},
                                  {"lengthSizeMinusOne", 2, lengthsText}});
    const uint64_t arrays = out.big("numOfArrays", 8);
    HeaderTrace trace(AV_CODEC_ID_HEVC);
    std::map<uint64_t, uint64_t> countOfType;
    for (uint64_t i = 1; i <= arrays && out.ok(); i++) {
        const auto array = out.group("array " + std::to_string(i));
        const auto head = out.big({{"array_completeness", 1},
                                   {"reserved", 1},
                                   {"NAL_unit_type", 6, hevcUnitName},
                                   {"numNalus", 16}});
        if (head[3] > 0) countOfType[head[2]] += head[3];
        readSets(out, trace, hevcFacts, head[3], "nalUnit", "nalUnitLength",
                 out.detail() == Detail::kAll ? nullptr : isHevcSei);
    }
    if (!out.ok() || version != 1) return "not a complete HEVC configuration record";
    return "HEVC " + hevcProfileName(profile) + ", level " + hevcLevelText(level) + " (raw " +
           std::to_string(level) + "), " + unitsText(countOfType) + ", " + lengthsText(lengths[3]);
}

}  // namespace inspect
