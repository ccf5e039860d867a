#include <array>

#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"
#include "inspect/records/VideoUnit.h"

namespace inspect {
namespace {

std::string subsamplingText(unsigned value) {
    constexpr auto kFormats = std::to_array<const char*>(
            {"4:2:0 vertical", "4:2:0 colocated", "4:2:2", "4:4:4", "4:4:0"});
    return value < kFormats.size() ? kFormats[value] : "reserved";
}

void readVp9Record(Annotator& out) {
    out.u8("version");
    out.big("flags", 3);
    out.u8("profile");
    const uint8_t level = out.u8("level");
    out.say(std::to_string(level / 10) + "." + std::to_string(level % 10));
    out.packed({{"bitDepth", 4},
                {"chromaSubsampling", 3, subsamplingText},
                {"videoFullRangeFlag", 1}});
    const uint8_t primaries = out.u8("colourPrimaries");
    out.say(primariesText(primaries));
    const uint8_t transfer = out.u8("transferCharacteristics");
    out.say(transferText(transfer));
    const uint8_t matrix = out.u8("matrixCoefficients");
    out.say(matrixText(matrix));
    const uint64_t size = out.big("codecInitializationDataSize", 2);
    out.bytes("codecInitializationData", size);
}

void readAv1Record(Annotator& out) {
    out.packed({{"marker", 1}, {"version", 7}});
    out.packed({{"seq_profile", 3}, {"seq_level_idx_0", 5}});
    out.packed({{"seq_tier_0", 1},
                {"high_bitdepth", 1},
                {"twelve_bit", 1},
                {"monochrome", 1},
                {"chroma_subsampling_x", 1},
                {"chroma_subsampling_y", 1},
                {"chroma_sample_position", 2}});
    out.packed({{"reserved", 3},
                {"initial_presentation_delay_present", 1},
                {"initial_presentation_delay_minus_one", 4}});
    if (!out.ok()) return;
    HeaderTrace trace(AV_CODEC_ID_AV1);
    const auto units = out.group("configOBUs", out.remaining());
    readUnit(out, trace, av1Facts);
}

}  // namespace

const RecordKind kVp9Record = {readVp9Record, showBytes};
const RecordKind kAv1Record = {readAv1Record, showBytes, av1Facts};

}  // namespace inspect
