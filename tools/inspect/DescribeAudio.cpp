#include <array>
#include <cstring>
#include <string_view>

#include "inspect/Describe.h"
#include "platform/BitReader.h"

namespace inspect {
namespace {

// ISO/IEC 14496-3 Table 1.18
constexpr auto kSampleRates = std::to_array<uint32_t>(
        {96000, 88200, 64000, 48000, 44100, 32000, 24000, 22050, 16000, 12000, 11025, 8000, 7350});

// ISO/IEC 14496-3 Table 1.19
constexpr auto kChannels = std::to_array<unsigned>({0, 1, 2, 3, 4, 5, 6, 8});

// ISO/IEC 14496-3 Table 1.17
std::string objectTypeName(unsigned type) {
    switch (type) {
        case 1: return "AAC Main";
        case 2: return "AAC LC";
        case 3: return "AAC SSR";
        case 4: return "AAC LTP";
        case 5: return "HE-AAC";
        case 23: return "AAC LD";
        case 29: return "HE-AAC v2";
        case 36: return "ALS";
        case 39: return "AAC ELD";
        case 42: return "USAC";
        default: return "object type " + std::to_string(type);
    }
}

unsigned readObjectType(android::ABitReader& bits) {
    constexpr unsigned kEscape = 31;
    const unsigned type = bits.getBits(5);
    return type == kEscape ? 32 + bits.getBits(6) : type;
}

uint32_t readSampleRate(android::ABitReader& bits) {
    constexpr unsigned kExplicit = 15;
    const unsigned index = bits.getBits(4);
    if (index == kExplicit) return bits.getBits(24);
    return index < kSampleRates.size() ? kSampleRates[index] : 0;
}

std::string channelText(unsigned channels) {
    return std::to_string(channels) + (channels == 1 ? " channel" : " channels");
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

std::string describeVisual(Bytes config) {
    return "MPEG-4 Visual, " + std::to_string(config.size()) + " bytes of configuration";
}

bool startsWith(Bytes data, std::string_view text) {
    return data.size() >= text.size() && std::memcmp(data.data(), text.data(), text.size()) == 0;
}

std::string nanoseconds(Bytes data) {
    uint64_t value = 0;
    if (data.size() != sizeof value) return "is no 64-bit number";
    std::memcpy(&value, data.data(), sizeof value);
    return std::to_string(value) + " ns";
}

}  // namespace

std::string describeAudioConfig(Bytes data) {
    android::ABitReader bits(data.data(), data.size());
    const unsigned type = readObjectType(bits);
    uint32_t sampleRate = readSampleRate(bits);
    const unsigned configuration = bits.getBits(4);
    if (type == 5 || type == 29) sampleRate = readSampleRate(bits);  // extension rate: the output's
    const bool isKnown = configuration > 0 && configuration < kChannels.size();
    return "AudioSpecificConfig " + shortHex(data) + ": " + objectTypeName(type) + " " +
           std::to_string(sampleRate) + " Hz " +
           (isKnown ? channelText(kChannels[configuration])
                    : "channel configuration " + std::to_string(configuration));
}

std::string describeEsDescriptor(Bytes data) {
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
        case kVisual: return describeVisual(config);
        case kAudio: return "MPEG-4 audio, " + describeAudioConfig(config);
        default: return "object type " + hex({&objectType, 1}, "");
    }
}

std::string describeFlacStream(Bytes data) {
    constexpr size_t kBlockHeader = 4;
    if (!startsWith(data, "fLaC")) return "no FLAC stream header";
    ByteCursor cursor(data.subspan(4));
    cursor.skip(kBlockHeader);
    const unsigned minBlock = cursor.be16();
    const unsigned maxBlock = cursor.be16();
    cursor.be24();                          // smallest frame
    cursor.be24();                          // largest frame
    const uint64_t packed = cursor.be64();  // 20 bits rate, 3 channels, 5 depth, 36 samples
    if (!cursor.ok()) return "not a complete STREAMINFO";
    const std::string blocks =
            minBlock == maxBlock ? std::to_string(minBlock)
                                 : std::to_string(minBlock) + " to " + std::to_string(maxBlock);
    return "STREAMINFO: " + std::to_string(packed >> 44) + " Hz " +
           channelText(static_cast<unsigned>(packed >> 41 & 7) + 1) + " " +
           std::to_string((packed >> 36 & 31) + 1) + " bits, blocks of " + blocks;
}

std::string describeOpusHead(Bytes data) {
    if (!startsWith(data, "OpusHead")) return "no OpusHead";
    ByteCursor cursor(data.subspan(8));
    cursor.u8();  // version
    const unsigned channels = cursor.u8();
    const unsigned preSkip = cursor.le16();
    const uint32_t sampleRate = cursor.le32();
    cursor.le16();  // output gain
    const unsigned family = cursor.u8();
    if (!cursor.ok()) return "not a complete OpusHead";
    return "OpusHead: " + channelText(channels) + ", pre-skip " + std::to_string(preSkip) +
           ", made from " + std::to_string(sampleRate) + " Hz, mapping family " +
           std::to_string(family);
}

std::string describeVorbisHeader(Bytes data) {
    if (!startsWith(data, "\1vorbis")) return "no Vorbis identification header";
    ByteCursor cursor(data.subspan(7));
    cursor.le32();  // version
    const unsigned channels = cursor.u8();
    const uint32_t sampleRate = cursor.le32();
    if (!cursor.ok()) return "not a complete Vorbis identification header";
    return "Vorbis identification header: " + std::to_string(sampleRate) + " Hz " +
           channelText(channels);
}

std::string describeCodecDelay(Bytes data) {
    return "codec delay " + nanoseconds(data);
}

std::string describeSeekPreRoll(Bytes data) {
    return "seek pre-roll " + nanoseconds(data);
}

std::string describeNativeBitRate(Bytes data) {
    uint32_t value = 0;
    if (data.size() != sizeof value) return "not a 32-bit number";
    std::memcpy(&value, data.data(), sizeof value);
    return std::to_string(value) + " bits a second";
}

}  // namespace inspect
