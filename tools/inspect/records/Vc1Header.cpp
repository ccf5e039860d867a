#include "inspect/records/Record.h"

namespace inspect {
namespace {

constexpr size_t kProfileSize = 1;
constexpr size_t kSizeAndProfile = 4 + 4 + kProfileSize;

size_t headerSize(const Annotator& out, size_t behind) {
    return out.remaining() > behind ? out.remaining() - behind : 0;
}

void readProfile(Annotator& out) {
    const uint8_t profile = out.u8("profile");
    out.say(profile == 0 ? "simple" : profile == 1 ? "main" : "advanced or unknown");
}

void readSizeAndProfile(Annotator& out) {
    out.little("width", 4);
    out.little("height", 4);
    readProfile(out);
}

// SMPTE 421M Annex J, STRUCT_C
void readStructC(Annotator& out) {
    out.packed({{"PROFILE", 4},
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
}

// SMPTE 421M Annex E: units behind start codes
void readUnit(Annotator& out, size_t sizeBytes) {
    const uint8_t code = out.ahead()[3];
    const auto unit = out.group(code == 0x0F   ? "sequence header"
                                : code == 0x0E ? "entry point header"
                                               : "unit",
                                sizeBytes);
    out.bytes("start code", 4);
    out.rest("data");
}

void readUnits(Annotator& out) {
    out.bytes("before the first start code", out.beforeStartCode(0));
    while (out.remaining() > 0) readUnit(out, out.beforeStartCode(1));
}

void readVc1Header(Annotator& out) {
    {
        const auto header = out.group("sequence header", headerSize(out, kSizeAndProfile));
        readUnits(out);
    }
    readSizeAndProfile(out);
}

void readWmv9Header(Annotator& out) {
    {
        const auto header = out.group("sequence header", headerSize(out, kSizeAndProfile));
        if (out.remaining() > 0) readStructC(out);
        if (out.ok()) out.rest("rest of the header");
    }
    readSizeAndProfile(out);
}

void readWmv7Header(Annotator& out) {
    out.bytes("sequence header", headerSize(out, kProfileSize));
    readProfile(out);
}

// With what follows the header in so many bytes.
std::string headerText(const Record& record, size_t behind, const std::string& picture) {
    if (record.sizeBytes < behind) return "not a complete sequence header";
    const ByteVector all = record.bytes();
    const Bytes header = Bytes(all).first(all.size() - behind);
    const uint64_t profile = record.number("profile");
    return "sequence header of " + std::to_string(header.size()) + " bytes: " + shortHex(header) +
           picture + ", profile byte " + std::to_string(profile) +
           (profile == 0   ? " (simple)"
            : profile == 1 ? " (main)"
                           : "");
}

std::string summarise(const Record& record) {
    return headerText(record, kSizeAndProfile,
                      ", " + record.digits("width") + "x" + record.digits("height"));
}

std::string summariseWmv7Header(const Record& record) {
    return headerText(record, kProfileSize, "");
}

}  // namespace

const RecordKind kVc1Header = {readVc1Header, summarise};
const RecordKind kWmv9Header = {readWmv9Header, summarise};
const RecordKind kWmv7Header = {readWmv7Header, summariseWmv7Header};

}  // namespace inspect
