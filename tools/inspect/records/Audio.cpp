// Opus, FLAC, and numbers alone.

#include <algorithm>
#include <bit>

#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

// RFC 9639 8.2
void readStreamInfo(Annotator& out) {
    constexpr size_t kMd5 = 16;
    out.big("minimum block size", 2);
    out.big("maximum block size", 2);
    out.big("minimum frame size", 3);
    out.big("maximum frame size", 3);
    out.packed({{"sample rate", 20},
                {"channels less one", 3},
                {"bits per sample less one", 5},
                {"total samples", 36}});
    out.bytes("MD5 of the samples", kMd5);
}

void readOpusHead(Annotator& out) {
    out.text("signature", 8);
    out.u8("version");
    const uint8_t channels = out.u8("output channel count");
    out.little("pre-skip", 2);
    out.say("samples of 48 kHz");
    out.little("input sample rate", 4);
    out.little("output gain", 2);
    out.say("1/256 dB");
    if (out.u8("channel mapping family") == 0) return;
    out.u8("stream count");
    out.u8("coupled stream count");
    out.bytes("channel mapping", channels);
}

void readFlacStream(Annotator& out) {
    out.text("marker", 4);
    while (out.ok() && out.remaining() > 0) {
        const auto header = out.packed({{"last block", 1}, {"block type", 7}, {"block size", 24}});
        const bool isStreamInfo = header[1] == 0;
        const auto block = out.group(isStreamInfo ? "STREAMINFO" : "metadata block", header[2]);
        if (isStreamInfo) readStreamInfo(out);
        if (out.ok()) out.rest("data");
    }
}

void readNativeNumber(Annotator& out) {
    const size_t size = std::min<size_t>(out.remaining(), 8);
    if (size == 0) return;
    std::endian::native == std::endian::little ? out.little("number", size)
                                               : out.big("number", size);
}

std::string summariseOpusHead(const Record& record) {
    if (!record["signature"].holds("OpusHead")) return "no OpusHead";
    if (!record.has("channel mapping family")) return "not a complete OpusHead";
    return "OpusHead: " + channelText(record.number("output channel count")) + ", pre-skip " +
           record.digits("pre-skip") + ", made from " + record.digits("input sample rate") +
           " Hz, mapping family " + record.digits("channel mapping family");
}

std::string range(uint64_t least, uint64_t most) {
    const std::string text = std::to_string(least);
    return least == most ? text : text + " to " + std::to_string(most);
}

std::string summariseFlacStream(const Record& record) {
    if (!record["marker"].holds("fLaC")) return "no FLAC stream header";
    if (!record.has("total samples")) return "not a complete STREAMINFO";
    return "STREAMINFO: " + record.digits("sample rate") + " Hz " +
           channelText(record.number("channels less one") + 1) + " " +
           std::to_string(record.number("bits per sample less one") + 1) + " bits, blocks of " +
           range(record.number("minimum block size"), record.number("maximum block size")) +
           " samples, frames of " +
           range(record.number("minimum frame size"), record.number("maximum frame size")) +
           " bytes";
}

std::string nanoseconds(const Record& record) {
    if (record.sizeBytes != sizeof(uint64_t)) return "is no 64-bit number";
    return record.digits("number") + " ns";
}

std::string summariseCodecDelay(const Record& record) {
    return "codec delay " + nanoseconds(record);
}

std::string summariseSeekPreRoll(const Record& record) {
    return "seek pre-roll " + nanoseconds(record);
}

std::string summariseBitRate(const Record& record) {
    if (record.sizeBytes != sizeof(uint32_t)) return "not a 32-bit number";
    return record.digits("number") + " bits a second";
}

}  // namespace

const RecordKind kOpusHead = {readOpusHead, summariseOpusHead};
const RecordKind kFlacStream = {readFlacStream, summariseFlacStream};
const RecordKind kCodecDelay = {readNativeNumber, summariseCodecDelay};
const RecordKind kSeekPreRoll = {readNativeNumber, summariseSeekPreRoll};
const RecordKind kNativeBitRate = {readNativeNumber, summariseBitRate};

}  // namespace inspect
