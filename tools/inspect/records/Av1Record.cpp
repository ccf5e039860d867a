#include "inspect/records/Record.h"
#include "inspect/records/VideoUnit.h"

namespace inspect {
namespace {

void readRecord(Annotator& out) {
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

const RecordKind kAv1Record = {readRecord, showBytes, av1Facts};

}  // namespace inspect
