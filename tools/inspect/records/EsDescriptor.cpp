#include <algorithm>

#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

constexpr uint8_t kEsTag = 3;
constexpr uint8_t kDecoderConfigTag = 4;
constexpr uint8_t kDecoderSpecificTag = 5;
constexpr uint64_t kVisual = 0x20;
constexpr uint64_t kAudio = 0x40;
constexpr uint8_t kVisualObjectSequence = 0xB0;

using NameOf = std::string (*)(unsigned);

// ISO/IEC 14496-1 8.3.3: seven bits a byte while the top bit is set, four bytes at most.
uint64_t readSize(Annotator& out) {
    uint64_t value = 0;
    size_t count = 0;
    for (const uint8_t byte : out.ahead().first(std::min<size_t>(4, out.remaining()))) {
        value = value << 7 | (byte & 0x7Fu);
        count++;
        if ((byte & 0x80u) == 0) break;
    }
    out.bytes("sizeOfInstance", std::max<size_t>(count, 1));
    out.say(std::to_string(value));
    return value;
}

void readVisualPart(Annotator& out, NameOf nameOf, size_t sizeBytes) {
    constexpr size_t kStartCodeSize = 4;
    const uint8_t code = out.ahead()[kStartCodeSize - 1];
    const bool hasProfile = code == kVisualObjectSequence && nameOf == visualStartCodeName;
    const auto part = out.group(nameOf(code), sizeBytes);
    out.bytes("start code", kStartCodeSize);
    if (hasProfile && out.remaining() > 0) {
        const uint8_t profile = out.u8("profile_and_level_indication");
        out.say(visualProfileName(profile));
    }
    out.rest("data");
}

void readVisualConfig(Annotator& out, NameOf nameOf) {
    out.bytes("before the first start code", out.beforeStartCode(0));
    while (out.remaining() > 0) readVisualPart(out, nameOf, out.beforeStartCode(1));
}

// Tag and size, then what the function makes of the body.
template <typename Body>
void readDescriptor(Annotator& out, const std::string& name, Body body) {
    if (!out.ok() || out.remaining() == 0) return;
    out.u8("tag");
    const auto descriptor = out.group(name, readSize(out));
    body();
}

void readDecoderConfig(Annotator& out, NameOf nameOf) {
    const uint64_t objectType = out.u8("objectTypeIndication");
    out.say(objectType == kAudio    ? "MPEG-4 audio"
            : objectType == kVisual ? "MPEG-4 Visual"
                                    : "other");
    out.packed({{"streamType", 6}, {"upStream", 1}, {"reserved", 1}});
    out.big("bufferSizeDB", 3);
    out.big("maxBitrate", 4);
    out.big("avgBitrate", 4);
    readDescriptor(out, "DecoderSpecificInfo", [&] {
        objectType == kAudio ? readAudioConfig(out) : readVisualConfig(out, nameOf);
    });
}

void readEs(Annotator& out, NameOf nameOf) {
    out.big("ES_ID", 2);
    const auto flags = out.packed({{"streamDependenceFlag", 1},
                                   {"URL_Flag", 1},
                                   {"OCRstreamFlag", 1},
                                   {"streamPriority", 5}});
    if (flags[0] != 0) out.big("dependsOn_ES_ID", 2);
    if (flags[1] != 0) out.text("URLstring", out.u8("URLlength"));
    if (flags[2] != 0) out.big("OCR_ES_Id", 2);
    readDescriptor(out, "DecoderConfigDescriptor", [&] { readDecoderConfig(out, nameOf); });
    out.rest("further descriptors");
}

void readMpeg4(Annotator& out) {
    readDescriptor(out, "ES_Descriptor", [&] { readEs(out, visualStartCodeName); });
}

void readMpeg2(Annotator& out) {
    readDescriptor(out, "ES_Descriptor", [&] { readEs(out, mpeg2StartCodeName); });
}

// The parts that the start codes in a configuration announce, with the profile of the first.
std::string partsText(const Record& record, unsigned depth) {
    constexpr int kMaxParts = 8;
    std::string text;
    int count = 0;
    for (const Row& row : record.rows) {
        if (row.depth == depth && row.isHeading()) {
            if (count++ == kMaxParts) return text + ", ...";
            text += (text.empty() ? "" : ", ") + row.name;
        } else if (row.name == "profile_and_level_indication") {
            text += " of profile_and_level " + std::to_string(row.number.value_or(0)) + " (" +
                    row.words + ")";
        }
    }
    return text;
}

std::string summarise(const Record& record) {
    constexpr unsigned kConfigDepth = 2;  // of the innermost descriptor
    const bool isRead = record.isWhole(kConfigDepth) && record.at("tag", 0).number == kEsTag &&
                        record.at("tag", 1).number == kDecoderConfigTag &&
                        record.at("tag", 2).number == kDecoderSpecificTag;
    if (!isRead) return "not a complete ES descriptor";
    const ByteVector config = record.part(record["DecoderSpecificInfo"]);
    const uint64_t objectType = record.number("objectTypeIndication");
    if (objectType == kAudio) return "MPEG-4 audio, " + summariseAudioConfig(record, config);
    if (objectType != kVisual) {
        const auto byte = static_cast<uint8_t>(objectType);
        return "object type " + hex({&byte, 1}, "");
    }
    const std::string parts = partsText(record, kConfigDepth + 1);
    return "MPEG-4 Visual, " + std::to_string(config.size()) +
           " bytes of configuration: " + (parts.empty() ? shortHex(config) : parts);
}

}  // namespace

const RecordKind kEsDescriptor = {readMpeg4, summarise};
const RecordKind kMpeg2EsDescriptor = {readMpeg2, summarise};

}  // namespace inspect
