#include "inspect/records/Explain.h"
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

void explainProfile(Annotator& out) {
    out.packed({{"general_profile_space", 2},
                {"general_tier_flag", 1},
                {"general_profile_idc", 5, hevcProfileName}});
}

// ITU-T H.265 7.3.2.2.1 and 7.3.3, up to the level
void explainSps(Annotator& out) {
    out.packed({{"sps_video_parameter_set_id", 4},
                {"sps_max_sub_layers_minus1", 3},
                {"sps_temporal_id_nesting_flag", 1}});
    explainProfile(out);
    Escaped escaped(out);
    escaped.field("general_profile_compatibility_flags", 4);
    escaped.field("general_constraint_flags", 6);
    const Bytes level = escaped.field("general_level_idc", 1);
    if (!level.empty()) out.say(hevcLevelText(level[0]));
}

void explainUnit(Annotator& out, uint64_t number, uint64_t sizeBytes) {
    constexpr uint64_t kSpsType = 33;
    const auto unit = out.group("nalUnit " + std::to_string(number), sizeBytes);
    const auto header = out.packed({{"forbidden_zero_bit", 1},
                                    {"nal_unit_type", 6},
                                    {"nuh_layer_id", 6},
                                    {"nuh_temporal_id_plus1", 3}});
    if (header[1] == kSpsType) explainSps(out);
    out.rest("rest of the unit");
}

void explainArray(Annotator& out, unsigned number) {
    const auto array = out.group("array " + std::to_string(number));
    out.packed({{"array_completeness", 1}, {"reserved", 1}, {"NAL_unit_type", 6, hevcUnitName}});
    const uint64_t count = out.big("numNalus", 2);
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        explainUnit(out, i, out.big("nalUnitLength", 2));
    }
}

}  // namespace

void explainHevcRecord(Annotator& out) {
    out.u8("configurationVersion");
    explainProfile(out);
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
    for (unsigned i = 1; i <= arrays && out.ok(); i++) explainArray(out, i);
}

}  // namespace inspect
