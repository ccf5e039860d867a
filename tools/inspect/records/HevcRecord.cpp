#include <map>

#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"
#include "inspect/records/StartCodes.h"

namespace inspect {
namespace {

// The fields of a unit from here on, with the emulation prevention bytes that stand in them.
class Escaped {
public:
    explicit Escaped(Annotator& out) : mOut(out), mUnit(out.ahead()) {}

    // The field without such bytes.
    Bytes field(const std::string& name, size_t sizeBytes) {
        const size_t rawBefore = mPayload.rawSize;
        const size_t before = mPayload.bytes.size();
        mPayload = payloadOf(mUnit, before + sizeBytes);
        const size_t there = mPayload.bytes.size() - before;
        mOut.bytes(name, mPayload.rawSize - rawBefore + (sizeBytes - there));
        const Bytes payload = Bytes(mPayload.bytes).subspan(before);
        if (mOut.ok()) mOut.say(hex(payload, " "));
        return payload;
    }

private:
    Annotator& mOut;
    Bytes mUnit;
    Payload mPayload;
};

void readProfile(Annotator& out) {
    out.packed({{"general_profile_space", 2},
                {"general_tier_flag", 1},
                {"general_profile_idc", 5, hevcProfileName}});
}

// ITU-T H.265 7.3.2.2.1 and 7.3.3, up to the level
void readSps(Annotator& out) {
    out.packed({{"sps_video_parameter_set_id", 4},
                {"sps_max_sub_layers_minus1", 3},
                {"sps_temporal_id_nesting_flag", 1}});
    readProfile(out);
    Escaped escaped(out);
    escaped.field("general_profile_compatibility_flags", 4);
    escaped.field("general_constraint_flags", 6);
    const Bytes level = escaped.field("general_level_idc", 1);
    if (level.empty()) return;
    out.number(level[0]);
    out.say(hevcLevelText(level[0]));
}

void readUnit(Annotator& out, uint64_t number, uint64_t sizeBytes) {
    constexpr uint64_t kSpsType = 33;
    const auto unit = out.group("nalUnit " + std::to_string(number), sizeBytes);
    const auto header = out.packed({{"forbidden_zero_bit", 1},
                                    {"nal_unit_type", 6},
                                    {"nuh_layer_id", 6},
                                    {"nuh_temporal_id_plus1", 3}});
    if (header[1] == kSpsType) readSps(out);
    out.rest("rest of the unit");
}

void readArray(Annotator& out, unsigned number) {
    const auto array = out.group("array " + std::to_string(number));
    out.packed({{"array_completeness", 1}, {"reserved", 1}, {"NAL_unit_type", 6, hevcUnitName}});
    const uint64_t count = out.big("numNalus", 2);
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        readUnit(out, i, out.big("nalUnitLength", 2));
    }
}

void readRecord(Annotator& out) {
    out.u8("configurationVersion");
    readProfile(out);
    out.bytes("general_profile_compatibility_flags", 4);
    out.bytes("general_constraint_indicator_flags", 6);
    const uint8_t level = out.u8("general_level_idc");
    out.say(hevcLevelText(level));
    out.packed({{"reserved", 4}, {"min_spatial_segmentation_idc", 12}});
    out.packed({{"reserved", 6}, {"parallelismType", 2}});
    out.packed({{"reserved", 6}, {"chromaFormat", 2}});
    out.packed({{"reserved", 5}, {"bitDepthLumaMinus8", 3}});
    out.packed({{"reserved", 5}, {"bitDepthChromaMinus8", 3}});
    out.big("avgFrameRate", 2);
    out.packed({{"constantFrameRate", 2},
                {"numTemporalLayers", 3},
                {"temporalIdNested", 1},
                {"lengthSizeMinusOne", 2, lengthsText}});
    const unsigned arrays = out.u8("numOfArrays");
    for (unsigned i = 1; i <= arrays && out.ok(); i++) readArray(out, i);
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

std::string levelText(const Row& level) {
    return "level " + level.words + " (raw " + std::to_string(level.number.value_or(0)) + ")";
}

// What an SPS itself says where the record says something else: its bytes are those of the SPS as
// they stand, in which emulation prevention bytes move the level.
std::string otherLevel(const Record& record, const Row& own) {
    for (const Row& row : record.rows) {
        const bool isOther = row.name == own.name && row.number && row.number != own.number;
        if (isOther) return "; its SPS says " + levelText(row);
    }
    return {};
}

std::string summarise(const Record& record) {
    if (!record.isWhole() || record.number("configurationVersion") != 1) {
        return "not a complete HEVC configuration record";
    }
    const Row& level = record["general_level_idc"];
    return "HEVC " + record.words("general_profile_idc") + ", " + levelText(level) + ", " +
           unitsText(record) + ", " + record.words("lengthSizeMinusOne") +
           otherLevel(record, level);
}

}  // namespace

const RecordKind kHevcRecord = {readRecord, summarise};

}  // namespace inspect
