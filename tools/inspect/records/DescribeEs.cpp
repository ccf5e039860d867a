#include "inspect/records/Describe.h"
#include "inspect/records/StandardNames.h"
#include "inspect/records/StartCodes.h"
#include "platform/BitReader.h"

namespace inspect {
namespace {

using NameOf = std::string (*)(unsigned);

unsigned readObjectType(android::ABitReader& bits) {
    constexpr unsigned kEscape = 31;
    const unsigned type = bits.getBits(5);
    return type == kEscape ? 32 + bits.getBits(6) : type;
}

uint32_t readSampleRate(android::ABitReader& bits) {
    constexpr unsigned kExplicit = 15;
    const unsigned index = bits.getBits(4);
    if (index == kExplicit) return bits.getBits(24);
    return aacSampleRate(index);
}

// ISO/IEC 14496-1 8.3.3: seven bits a byte while the top bit is set, four bytes at most.
size_t readExpandableSize(ByteCursor& cursor) {
    size_t size = 0;
    for (int i = 0; i < 4; i++) {
        const uint8_t byte = cursor.u8();
        size = size << 7 | (byte & 0x7Fu);
        if ((byte & 0x80u) == 0) break;
    }
    return size;
}

// The body of the next descriptor if it has this tag.
Bytes readDescriptor(ByteCursor& cursor, uint8_t tag) {
    if (cursor.u8() != tag) return {};
    return cursor.take(readExpandableSize(cursor));
}

void skipOptionalFields(ByteCursor& es) {
    es.be16();  // ES_ID
    const uint8_t flags = es.u8();
    if ((flags & 0x80u) != 0) es.be16();         // dependsOn_ES_ID
    if ((flags & 0x40u) != 0) es.skip(es.u8());  // URLstring
    if ((flags & 0x20u) != 0) es.be16();         // OCR_ES_Id
}

// The parts that the start codes in a configuration announce, with the profile of the first.
std::string describeVisual(Bytes config, NameOf nameOf) {
    constexpr uint8_t kVisualObjectSequence = 0xB0;
    constexpr int kMaxParts = 8;
    std::string parts;
    auto at = findStartCode(config, 0);
    for (int i = 0; at && i < kMaxParts; i++, at = findStartCode(config, *at + 1)) {
        const Bytes part = config.subspan(*at + 3);
        parts += (parts.empty() ? "" : ", ") + nameOf(part[0]);
        const bool hasProfile = part[0] == kVisualObjectSequence && part.size() > 1;
        if (hasProfile && nameOf == visualStartCodeName) {
            parts += " of profile_and_level " + std::to_string(part[1]) + " (" +
                     visualProfileName(part[1]) + ")";
        }
    }
    return "MPEG-4 Visual, " + std::to_string(config.size()) +
           " bytes of configuration: " + (parts.empty() ? shortHex(config) : parts) +
           (at ? ", ..." : "");
}

std::string describeDescriptor(Bytes data, NameOf nameOf) {
    constexpr uint8_t kEsTag = 3;
    constexpr uint8_t kDecoderConfigTag = 4;
    constexpr uint8_t kDecoderSpecificTag = 5;
    constexpr size_t kStreamTypeToAvgBitrate = 12;
    constexpr uint8_t kVisual = 0x20;
    constexpr uint8_t kAudio = 0x40;

    ByteCursor top(data);
    ByteCursor es(readDescriptor(top, kEsTag));
    skipOptionalFields(es);
    ByteCursor decoder(readDescriptor(es, kDecoderConfigTag));
    const uint8_t objectType = decoder.u8();
    decoder.skip(kStreamTypeToAvgBitrate);
    const Bytes config = readDescriptor(decoder, kDecoderSpecificTag);
    if (!top.ok() || !es.ok() || !decoder.ok()) return "not a complete ES descriptor";
    switch (objectType) {
        case kVisual: return describeVisual(config, nameOf);
        case kAudio: return "MPEG-4 audio, " + describeAudioConfig(config);
        default: return "object type " + hex({&objectType, 1}, "");
    }
}

}  // namespace

std::string describeAudioConfig(Bytes data) {
    android::ABitReader bits(data.data(), data.size());
    const unsigned type = readObjectType(bits);
    uint32_t sampleRate = readSampleRate(bits);
    const unsigned configuration = bits.getBits(4);
    if (type == 5 || type == 29) sampleRate = readSampleRate(bits);  // extension rate: the output's
    return "AudioSpecificConfig " + shortHex(data) + ": " + aacObjectTypeName(type) + " " +
           std::to_string(sampleRate) + " Hz " + aacChannelsText(configuration);
}

std::string describeEsDescriptor(Bytes data) {
    return describeDescriptor(data, visualStartCodeName);
}

std::string describeMpeg2EsDescriptor(Bytes data) {
    return describeDescriptor(data, mpeg2StartCodeName);
}

}  // namespace inspect
