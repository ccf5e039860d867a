#include <map>

#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"
#include "inspect/records/VideoFacts.h"
#include "inspect/records/VideoUnit.h"

namespace inspect {
namespace {

void readProfile(Annotator& out) {
    out.packed({{"general_profile_space", 2},
                {"general_tier_flag", 1},
                {"general_profile_idc", 5, hevcProfileName}});
}

void readArray(Annotator& out, HeaderTrace& trace, unsigned number) {
    const auto array = out.group("array " + std::to_string(number));
    out.packed({{"array_completeness", 1}, {"reserved", 1}, {"NAL_unit_type", 6, hevcUnitName}});
    const uint64_t count = out.big("numNalus", 2);
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        const uint64_t size = out.big("nalUnitLength", 2);
        const auto unit = out.group("nalUnit " + std::to_string(i), size);
        readUnit(out, trace, hevcFacts);
    }
}

void readRecord(Annotator& out) {
    out.u8("configurationVersion");
    readProfile(out);
    ByteCursor flags(out.bytes("general_profile_compatibility_flags", 4));
    out.number(flags.be32());
    out.bytes("general_constraint_indicator_flags", 6);
    const uint8_t level = out.u8("general_level_idc");
    out.say(hevcLevelText(level));
    out.packed({{"reserved", 4}, {"min_spatial_segmentation_idc", 12}});
    out.packed({{"reserved", 6}, {"parallelismType", 2}});
    out.packed({{"reserved", 6}, {"chromaFormat", 2, chromaText}});
    out.packed({{"reserved", 5}, {"bitDepthLumaMinus8", 3}});
    out.packed({{"reserved", 5}, {"bitDepthChromaMinus8", 3}});
    out.big("avgFrameRate", 2);
    out.packed({{"constantFrameRate", 2},
                {"numTemporalLayers", 3},
                {"temporalIdNested", 1},
                {"lengthSizeMinusOne", 2, lengthsText}});
    HeaderTrace trace(AV_CODEC_ID_HEVC);
    const unsigned arrays = out.u8("numOfArrays");
    for (unsigned i = 1; i <= arrays && out.ok(); i++) readArray(out, trace, i);
}

// "VPS+2 SPS+PPS", by type
std::string unitsText(const Record& record) {
    std::map<uint64_t, uint64_t> countOfType;
    uint64_t type = 0;
    for (const Row& row : record.rows) {
        if (row.name == "NAL_unit_type") type = row.number.value_or(0);
        if (row.name == "numNalus" && row.number > 0u) countOfType[type] += *row.number;
    }
    std::string text;
    for (const auto& [each, count] : countOfType) {
        text += text.empty() ? "" : "+";
        if (count > 1) text += std::to_string(count) + " ";
        text += hevcUnitName(static_cast<unsigned>(each));
    }
    return text.empty() ? "no parameter sets" : text;
}

std::string summarise(const Record& record) {
    if (!record.isWhole() || record.number("configurationVersion") != 1) {
        return "not a complete HEVC configuration record";
    }
    return "HEVC " + record.words("general_profile_idc") + ", level " +
           record.words("general_level_idc") + " (raw " + record.digits("general_level_idc") +
           "), " + unitsText(record) + ", " + record.words("lengthSizeMinusOne");
}

}  // namespace

const RecordKind kHevcRecord = {readRecord, summarise, hevcFacts};

}  // namespace inspect
