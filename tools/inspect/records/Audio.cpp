// Opus, FLAC, numbers alone, and what stands behind the WAVEFORMATEX of a track.

#include <algorithm>
#include <bit>

#include "inspect/records/Readers.h"

namespace inspect {
namespace {

std::string range(uint64_t least, uint64_t most) {
    const std::string text = std::to_string(least);
    return least == most ? text : text + " to " + std::to_string(most);
}

// RFC 9639 8.2
std::string readStreamInfo(Annotator& out) {
    const auto [leastBlock, mostBlock, leastFrame, mostFrame, rate, channels, bits, samples, md5] =
            out.big({{"minimum block size", 16},
                     {"maximum block size", 16},
                     {"minimum frame size", 24},
                     {"maximum frame size", 24},
                     {"sample rate", 20},
                     {"channels less one", 3},
                     {"bits per sample less one", 5},
                     {"total samples", 36},
                     {"MD5 of the samples", 128}});
    return "STREAMINFO: " + std::to_string(rate) + " Hz " + channelText(channels + 1) + " " +
           std::to_string(bits + 1) + " bits, blocks of " + range(leastBlock, mostBlock) +
           " samples, frames of " + range(leastFrame, mostFrame) + " bytes";
}

// In the machine's byte order.
uint64_t readNativeNumber(Annotator& out) {
    const auto bits = static_cast<unsigned>(8 * std::min<size_t>(out.remaining(), 8));
    if (bits == 0) return 0;
    return std::endian::native == std::endian::little ? out.little("number", bits)
                                                      : out.big("number", bits);
}

std::string readNanoseconds(Annotator& out, const std::string& what) {
    const bool isRight = out.remaining() == sizeof(uint64_t);
    const uint64_t number = readNativeNumber(out);
    return what + (isRight ? std::to_string(number) + " ns" : "is no 64-bit number");
}

constexpr Field kWma3[] = {
        {"wValidBitsPerSample", 16},
        {"dwChannelMask", 32, speakersText},
        {"dwReserved1", 32, "advanced encode options 1"},
        {"dwReserved2", 32, "advanced encode options 2"},
        {"wEncodeOptions", 16},
        {"wReserved3", 16},
};

}  // namespace

std::string readOpusHead(Annotator& out) {
    const std::string signature = out.text("signature", 8);
    const auto [version, channels, preSkip, rate, gain, family] =
            out.little({{"version", 8},
                        {"output channel count", 8},
                        {"pre-skip", 16, "samples of 48 kHz"},
                        {"input sample rate"},
                        {"output gain", 16, "1/256 dB"},
                        {"channel mapping family", 8}});
    const bool isWhole = out.ok();
    if (family != 0) {
        out.little({{"stream count", 8}, {"coupled stream count", 8}});
        out.bytes("channel mapping", channels);
    }
    if (signature != "OpusHead") return "no OpusHead";
    if (!isWhole) return "not a complete OpusHead";
    return "OpusHead: " + channelText(channels) + ", pre-skip " + std::to_string(preSkip) +
           ", made from " + std::to_string(rate) + " Hz, mapping family " + std::to_string(family);
}

std::string readFlacStream(Annotator& out) {
    const bool hasMarker = out.text("marker", 4) == "fLaC";
    std::string summary;
    while (out.ok() && out.remaining() > 0) {
        const auto [isLast, type, size] =
                out.big({{"last block", 1}, {"block type", 7}, {"block size", 24}});
        const bool isStreamInfo = type == 0;
        const auto block = out.group(isStreamInfo ? "STREAMINFO" : "metadata block", size);
        out.cite(isStreamInfo ? "RFC 9639 8.2" : "RFC 9639 8.1");
        const std::string text = isStreamInfo ? readStreamInfo(out) : "";
        if (out.ok() && summary.empty()) summary = text;
        if (out.ok()) out.rest("data");
    }
    if (!hasMarker) return "no FLAC stream header";
    return summary.empty() ? "not a complete STREAMINFO" : summary;
}

std::string readCodecDelay(Annotator& out) {
    return readNanoseconds(out, "codec delay ");
}

std::string readSeekPreRoll(Annotator& out) {
    return readNanoseconds(out, "seek pre-roll ");
}

std::string readNativeBitRate(Annotator& out) {
    const bool isRight = out.remaining() == sizeof(uint32_t);
    const uint64_t number = readNativeNumber(out);
    return isRight ? std::to_string(number) + " bits a second" : "not a 32-bit number";
}

std::string readWma1(Annotator& out) {
    out.little({{"wSamplesPerBlock", 16}, {"wEncodeOptions", 16}});
    return {};
}

std::string readWma2(Annotator& out) {
    out.little({{"dwSamplesPerBlock"}, {"wEncodeOptions", 16}, {"dwSuperBlockAlign"}});
    return {};
}

std::string readWma3(Annotator& out) {
    out.little(kWma3);
    return {};
}

std::string readWmaVoice(Annotator& out) {
    out.little(kWma3);
    out.rest("voice options");
    return {};
}

std::string readAdpcm(Annotator& out) {
    const uint64_t samples = out.little("wSamplesPerBlock", 16);
    if (!out.ok()) return "not a complete ADPCM format";
    std::string text = "ADPCM: " + std::to_string(samples) + " samples a block";
    if (out.remaining() == 0) return text;
    const uint64_t count = out.little("wNumCoef", 16);
    if (!out.ok()) return text;
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        const auto pair = out.group("aCoef " + std::to_string(i));
        out.little({{"iCoef1", 16, signedText<int16_t>}, {"iCoef2", 16, signedText<int16_t>}});
    }
    return text + ", " + std::to_string(count) + " coefficient pairs";
}

}  // namespace inspect
