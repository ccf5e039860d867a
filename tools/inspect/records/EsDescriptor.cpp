#include <algorithm>

#include "inspect/records/Describe.h"
#include "inspect/records/Explain.h"
#include "inspect/records/StandardNames.h"
#include "inspect/records/StartCodes.h"

namespace inspect {
namespace {

constexpr uint64_t kAudio = 0x40;
constexpr uint8_t kVisualObjectSequence = 0xB0;

using NameOf = std::string (*)(unsigned);

// ISO/IEC 14496-1 8.3.3: seven bits a byte while the top bit is set, four bytes at most.
uint64_t explainSize(Annotator& out) {
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

// ISO/IEC 14496-3 1.6.2.1 and the head of 4.4.1, as far as it has no escapes
void explainAudioConfig(Annotator& out) {
    constexpr unsigned kFirstEscape = 31;
    const Bytes config = out.ahead();
    const unsigned type = config.empty() ? kFirstEscape : config[0] >> 3;
    const bool isPlain =
            config.size() >= 2 && type < 5 && (config[0] & 7) * 2 + (config[1] >> 7) < 15;
    if (!isPlain) {
        out.rest("AudioSpecificConfig");
        out.say(describeAudioConfig(config));
        return;
    }
    out.packed({{"audioObjectType", 5, aacObjectTypeName},
                {"samplingFrequencyIndex", 4, aacSampleRateText},
                {"channelConfiguration", 4, aacChannelsText},
                {"frameLengthFlag", 1},
                {"dependsOnCoreCoder", 1},
                {"extensionFlag", 1}});
    const Bytes ahead = out.ahead();
    if (ahead.size() >= 2 && ahead[0] == 0x56 && (ahead[1] & 0xE0) == 0xE0) {
        out.packed({{"syncExtensionType", 11}, {"extensionAudioObjectType", 5, aacObjectTypeName}});
    }
    out.rest("rest of the AudioSpecificConfig");
}

void explainVisualPart(Annotator& out, NameOf nameOf, size_t sizeBytes) {
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

void explainVisualConfig(Annotator& out, NameOf nameOf) {
    const size_t before = findStartCode(out.ahead(), 0).value_or(out.remaining());
    out.bytes("before the first start code", before);
    while (out.remaining() > 0) {
        explainVisualPart(out, nameOf, findStartCode(out.ahead(), 1).value_or(out.remaining()));
    }
}

// Tag and size, then what the function makes of the body.
template <typename Body>
void explainDescriptor(Annotator& out, const std::string& name, Body body) {
    if (!out.ok() || out.remaining() == 0) return;
    out.u8("tag");
    const auto descriptor = out.group(name, explainSize(out));
    body();
}

void explainDecoderConfig(Annotator& out, NameOf nameOf) {
    const uint64_t objectType = out.u8("objectTypeIndication");
    out.say(objectType == kAudio ? "MPEG-4 audio" : objectType == 0x20 ? "MPEG-4 Visual" : "other");
    out.packed({{"streamType", 6}, {"upStream", 1}, {"reserved", 1}});
    out.big("bufferSizeDB", 3);
    out.big("maxBitrate", 4);
    out.big("avgBitrate", 4);
    explainDescriptor(out, "DecoderSpecificInfo", [&] {
        objectType == kAudio ? explainAudioConfig(out) : explainVisualConfig(out, nameOf);
    });
}

void explainEs(Annotator& out, NameOf nameOf) {
    out.big("ES_ID", 2);
    const auto flags = out.packed({{"streamDependenceFlag", 1},
                                   {"URL_Flag", 1},
                                   {"OCRstreamFlag", 1},
                                   {"streamPriority", 5}});
    if (flags[0] != 0) out.big("dependsOn_ES_ID", 2);
    if (flags[1] != 0) out.text("URLstring", out.u8("URLlength"));
    if (flags[2] != 0) out.big("OCR_ES_Id", 2);
    explainDescriptor(out, "DecoderConfigDescriptor", [&] { explainDecoderConfig(out, nameOf); });
    out.rest("further descriptors");
}

}  // namespace

void explainEsDescriptor(Annotator& out) {
    explainDescriptor(out, "ES_Descriptor", [&] { explainEs(out, visualStartCodeName); });
}

void explainMpeg2EsDescriptor(Annotator& out) {
    explainDescriptor(out, "ES_Descriptor", [&] { explainEs(out, mpeg2StartCodeName); });
}

}  // namespace inspect
