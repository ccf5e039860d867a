#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

constexpr uint64_t kSpsType = 7;

// ITU-T H.264 7.3.1 and the first fields of 7.3.2.1.1
void readUnit(Annotator& out, const std::string& name, uint64_t sizeBytes) {
    const auto unit = out.group(name, sizeBytes);
    const auto header =
            out.packed({{"forbidden_zero_bit", 1}, {"nal_ref_idc", 2}, {"nal_unit_type", 5}});
    if (header[2] == kSpsType) {
        const uint8_t profile = out.u8("profile_idc");
        out.say(avcProfileName(profile));
        const auto flags = out.packed({{"constraint_set0_flag", 1},
                                       {"constraint_set1_flag", 1},
                                       {"constraint_set2_flag", 1},
                                       {"constraint_set3_flag", 1},
                                       {"constraint_set4_flag", 1},
                                       {"constraint_set5_flag", 1},
                                       {"reserved_zero_2bits", 2}});
        const uint8_t level = out.u8("level_idc");
        out.say(avcLevelText(profile, static_cast<unsigned>(flags[3] << 4), level));
    }
    out.rest("rest of the unit");
}

void readUnits(Annotator& out, const std::string& name, uint64_t count) {
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        const uint64_t size = out.big(name + "NALUnitLength", 2);
        readUnit(out, name + "NALUnit " + std::to_string(i), size);
    }
}

// There in the profiles that came with the High profile; many writers leave it out all the same.
void readHighProfileFields(Annotator& out) {
    out.packed({{"reserved", 6}, {"chroma_format", 2}});
    out.packed({{"reserved", 5}, {"bit_depth_luma_minus8", 3}});
    out.packed({{"reserved", 5}, {"bit_depth_chroma_minus8", 3}});
    const uint8_t count = out.u8("numOfSequenceParameterSetExt");
    readUnits(out, "sequenceParameterSetExt", count);
}

void readRecord(Annotator& out) {
    out.u8("configurationVersion");
    const uint8_t profile = out.u8("AVCProfileIndication");
    out.say(avcProfileName(profile));
    const uint8_t constraints = out.u8("profile_compatibility");
    const uint8_t level = out.u8("AVCLevelIndication");
    out.say(avcLevelText(profile, constraints, level));
    out.packed({{"reserved", 6}, {"lengthSizeMinusOne", 2, lengthsText}});
    const auto counts = out.packed({{"reserved", 3}, {"numOfSequenceParameterSets", 5}});
    readUnits(out, "sequenceParameterSet", counts[1]);
    readUnits(out, "pictureParameterSet", out.u8("numOfPictureParameterSets"));
    const bool isOldProfile = profile == 66 || profile == 77 || profile == 88;
    if (out.ok() && !isOldProfile && out.remaining() > 0) readHighProfileFields(out);
}

// Whole up to the fields that many writers leave out.
std::string summarise(const Record& record) {
    const bool isRead = record.isWhole() || record.has("chroma_format");
    if (!isRead || record.number("configurationVersion") != 1) {
        return "not a complete AVC configuration record";
    }
    return "AVC " + record.words("AVCProfileIndication") + " " +
           record.words("AVCLevelIndication") + ", " + record.digits("numOfSequenceParameterSets") +
           " SPS, " + record.digits("numOfPictureParameterSets") + " PPS, " +
           record.words("lengthSizeMinusOne");
}

}  // namespace

const RecordKind kAvcRecord = {readRecord, summarise};

}  // namespace inspect
