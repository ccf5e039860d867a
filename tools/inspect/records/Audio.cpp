// Opus, FLAC, and numbers alone.

#include <algorithm>
#include <bit>

#include "inspect/records/Explain.h"
#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

// RFC 9639 8.2
void explainStreamInfo(Annotator& out) {
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

}  // namespace

void explainOpusHead(Annotator& out) {
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

void explainFlacStream(Annotator& out) {
    out.text("marker", 4);
    while (out.ok() && out.remaining() > 0) {
        const auto header = out.packed({{"last block", 1}, {"block type", 7}, {"block size", 24}});
        const bool isStreamInfo = header[1] == 0;
        const auto block = out.group(isStreamInfo ? "STREAMINFO" : "metadata block", header[2]);
        if (isStreamInfo) explainStreamInfo(out);
        if (out.ok()) out.rest("data");
    }
}

void explainNativeNumber(Annotator& out) {
    const size_t size = std::min<size_t>(out.remaining(), 8);
    if (size == 0) return;
    std::endian::native == std::endian::little ? out.little("number", size)
                                               : out.big("number", size);
}

void explainUnknown(Annotator& out) {
    out.rest("data");
}

}  // namespace inspect
