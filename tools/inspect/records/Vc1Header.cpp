#include "inspect/records/Readers.h"

namespace inspect {
namespace {

// SMPTE 421M Annex E
std::string unitName(uint64_t code) {
    return code == 0x0F ? "sequence header" : code == 0x0E ? "entry point header" : "unit";
}

std::string profileText(uint64_t profile) {
    return profile == 0 ? "simple" : profile == 1 ? "main" : "advanced or unknown";
}

// SMPTE 421M Annex J, STRUCT_C
void readStructC(Annotator& out) {
    if (out.remaining() == 0) return;
    out.big({{"PROFILE", 4},
             {"FRMRTQ_POSTPROC", 3},
             {"BITRTQ_POSTPROC", 5},
             {"LOOPFILTER", 1},
             {"Reserved3", 1},
             {"MULTIRES", 1},
             {"Reserved4", 1},
             {"FASTUVMC", 1},
             {"EXTENDED_MV", 1},
             {"DQUANT", 2},
             {"VSTRANSFORM", 1},
             {"Reserved5", 1},
             {"OVERLAP", 1},
             {"SYNCMARKER", 1},
             {"RANGERED", 1},
             {"MAXBFRAMES", 3},
             {"QUANTIZER", 2},
             {"FINTERPFLAG", 1},
             {"Reserved6", 1}});
    out.rest("rest of the header");
}

// The header, the size of the picture where there is one, and the profile.
std::string readHeader(Annotator& out, bool hasSize, void (*readSequenceHeader)(Annotator& out)) {
    const size_t behind = hasSize ? 4 + 4 + 1 : 1;
    const bool isWhole = out.remaining() >= behind;
    const Bytes header = out.ahead().first(isWhole ? out.remaining() - behind : 0);
    {
        const auto part = out.group("sequence header", header.size());
        readSequenceHeader(out);
    }
    std::string size;
    if (hasSize) {
        const auto [width, height] = out.little({{"width"}, {"height"}});
        size = ", " + sizeText(width, height);
    }
    const uint64_t profile = out.big("profile", 8, profileText);
    if (!isWhole) return "not a complete sequence header";
    return "sequence header of " + std::to_string(header.size()) + " bytes: " + shortHex(header) +
           size + ", profile byte " + std::to_string(profile) +
           (profile < 2 ? " (" + profileText(profile) + ")" : "");
}

}  // namespace

std::string readVc1Header(Annotator& out) {
    return readHeader(out, true, [](Annotator& part) { readStartCodeParts(part, unitName); });
}

std::string readWmv9Header(Annotator& out) {
    return readHeader(out, true, readStructC);
}

std::string readWmv7Header(Annotator& out) {
    return readHeader(out, false, [](Annotator& part) { part.rest("data"); });
}

}  // namespace inspect
