#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"
#include "inspect/records/VideoFacts.h"
#include "inspect/records/VideoUnit.h"

namespace inspect {
namespace {

class Reader {
public:
    explicit Reader(Annotator& out) : mOut(out) {}

    void read() {
        mOut.u8("configurationVersion");
        const uint8_t profile = mOut.u8("AVCProfileIndication");
        mOut.say(avcProfileName(profile));
        const uint8_t constraints = mOut.u8("profile_compatibility");
        const uint8_t level = mOut.u8("AVCLevelIndication");
        mOut.say(avcLevelText(profile, constraints, level));
        mOut.packed({{"reserved", 6}, {"lengthSizeMinusOne", 2, lengthsText}});
        const auto counts = mOut.packed({{"reserved", 3}, {"numOfSequenceParameterSets", 5}});
        readUnits("sequenceParameterSet", counts[1]);
        readUnits("pictureParameterSet", mOut.u8("numOfPictureParameterSets"));
        const bool isOldProfile = profile == 66 || profile == 77 || profile == 88;
        if (mOut.ok() && !isOldProfile && mOut.remaining() > 0) readHighProfileFields();
    }

private:
    void readUnits(const std::string& name, uint64_t count) {
        for (uint64_t i = 1; i <= count && mOut.ok(); i++) {
            const uint64_t size = mOut.big(name + "NALUnitLength", 2);
            const auto unit = mOut.group(name + "NALUnit " + std::to_string(i), size);
            readUnit(mOut, mTrace, avcFacts);
        }
    }

    // There in the profiles that came with the High profile; many writers leave it out all the
    // same.
    void readHighProfileFields() {
        mOut.packed({{"reserved", 6}, {"chroma_format", 2, chromaText}});
        mOut.packed({{"reserved", 5}, {"bit_depth_luma_minus8", 3}});
        mOut.packed({{"reserved", 5}, {"bit_depth_chroma_minus8", 3}});
        readUnits("sequenceParameterSetExt", mOut.u8("numOfSequenceParameterSetExt"));
    }

    Annotator& mOut;
    HeaderTrace mTrace{AV_CODEC_ID_H264};
};

void readRecord(Annotator& out) {
    Reader(out).read();
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

const RecordKind kAvcRecord = {readRecord, summarise, avcFacts};

}  // namespace inspect
