#include <cstring>
#include <string_view>

#include "inspect/records/Describe.h"
#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

bool startsWith(Bytes data, std::string_view text) {
    return data.size() >= text.size() && std::memcmp(data.data(), text.data(), text.size()) == 0;
}

std::string nanoseconds(Bytes data) {
    uint64_t value = 0;
    if (data.size() != sizeof value) return "is no 64-bit number";
    std::memcpy(&value, data.data(), sizeof value);
    return std::to_string(value) + " ns";
}

std::string range(unsigned least, unsigned most) {
    const std::string text = std::to_string(least);
    return least == most ? text : text + " to " + std::to_string(most);
}

}  // namespace

std::string describeFlacStream(Bytes data) {
    constexpr size_t kBlockHeader = 4;
    if (!startsWith(data, "fLaC")) return "no FLAC stream header";
    ByteCursor cursor(data.subspan(4));
    cursor.skip(kBlockHeader);
    const unsigned minBlock = cursor.be16();
    const unsigned maxBlock = cursor.be16();
    const unsigned minFrame = cursor.be24();
    const unsigned maxFrame = cursor.be24();
    const uint64_t packed = cursor.be64();  // 20 bits rate, 3 channels, 5 depth, 36 samples
    if (!cursor.ok()) return "not a complete STREAMINFO";
    return "STREAMINFO: " + std::to_string(packed >> 44) + " Hz " +
           channelText(static_cast<unsigned>(packed >> 41 & 7) + 1) + " " +
           std::to_string((packed >> 36 & 31) + 1) + " bits, blocks of " +
           range(minBlock, maxBlock) + " samples, frames of " + range(minFrame, maxFrame) +
           " bytes";
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
    std::string rates;
    for (const char* name : {"at most ", "nominal ", "at least "}) {
        const auto rate = static_cast<int32_t>(cursor.le32());
        if (rate > 0) rates += ", " + (name + std::to_string(rate)) + " b/s";
    }
    if (!cursor.ok()) return "not a complete Vorbis identification header";
    return "Vorbis identification header: " + std::to_string(sampleRate) + " Hz " +
           channelText(channels) + rates;
}

std::string describeVorbisSetup(Bytes data) {
    if (!startsWith(data, "\5vorbis")) return "no Vorbis setup header";
    ByteCursor cursor(data.subspan(7));
    const unsigned codebooks = cursor.u8() + 1u;
    if (!cursor.ok()) return "not a complete Vorbis setup header";
    return "Vorbis setup header: " + std::to_string(codebooks) + " codebooks";
}

std::string describeAdpcm(Bytes data) {
    ByteCursor cursor(data);
    const unsigned samples = cursor.le16();
    if (!cursor.ok()) return "not a complete ADPCM format";
    const std::string text = "ADPCM: " + std::to_string(samples) + " samples a block";
    const unsigned pairs = cursor.le16();
    return cursor.ok() ? text + ", " + std::to_string(pairs) + " coefficient pairs" : text;
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
