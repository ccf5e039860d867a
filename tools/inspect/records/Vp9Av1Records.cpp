#include "inspect/records/Readers.h"

namespace inspect {
namespace {

std::string subsamplingText(uint64_t value) {
    constexpr const char* kNames[] = {"4:2:0 vertical", "4:2:0 colocated", "4:2:2", "4:4:4",
                                      "4:4:0"};
    return nameOf(kNames, value, "reserved");
}

// WebM's VP9 Codec Feature Metadata: a number, a size and that many bytes each.
void readVp9Features(Annotator& out) {
    constexpr const char* kIds[] = {"", "profile", "level", "bit depth", "chroma subsampling"};
    constexpr Field kValues[] = {{"value", 8},
                                 {"profile", 8},
                                 {"level", 8, tenthsText},
                                 {"bitDepth", 8},
                                 {"chromaSubsampling", 8, subsamplingText}};
    while (out.ok() && out.remaining() > 0) {
        const uint64_t id = out.big("id", 8, kIds);
        const uint64_t size = out.big("length", 8);
        if (size == 1 && id < std::size(kValues)) {
            out.big({kValues[id]});
        } else {
            out.bytes("value", size);
        }
    }
}

}  // namespace

std::string readVp9Record(Annotator& out) {
    const Bytes data = out.ahead();  // a feature's size, or vpcC's flags, which are zero
    if (data.size() > 1 && data[1] != 0) {
        out.cite("WebM VP9 Codec Feature Metadata");
        readVp9Features(out);
        return {};
    }
    out.big({{"version", 8},
             {"flags", 24},
             {"profile", 8},
             {"level", 8, tenthsText},
             {"bitDepth", 4},
             {"chromaSubsampling", 3, subsamplingText},
             {"videoFullRangeFlag", 1},
             {"colourPrimaries", 8, primariesText},
             {"transferCharacteristics", 8, transferText},
             {"matrixCoefficients", 8, matrixText}});
    out.bytes("codecInitializationData", out.big("codecInitializationDataSize", 16));
    return {};
}

std::string readVp9Frame(Annotator& out) {
    HeaderTrace trace(AV_CODEC_ID_VP9);
    readUnit(out, trace, vp9Facts);
    return {};
}

std::string readAv1Record(Annotator& out) {
    out.big({{"marker", 1},
             {"version", 7},
             {"seq_profile", 3},
             {"seq_level_idx_0", 5},
             {"seq_tier_0", 1},
             {"high_bitdepth", 1},
             {"twelve_bit", 1},
             {"monochrome", 1},
             {"chroma_subsampling_x", 1},
             {"chroma_subsampling_y", 1},
             {"chroma_sample_position", 2},
             {"reserved", 3},
             {"initial_presentation_delay_present", 1},
             {"initial_presentation_delay_minus_one", 4}});
    if (!out.ok()) return {};
    HeaderTrace trace(AV_CODEC_ID_AV1);
    const auto units = out.group("configOBUs", out.remaining());
    out.cite("AV1 5.3");
    readUnit(out, trace, av1Facts);
    return {};
}

}  // namespace inspect
