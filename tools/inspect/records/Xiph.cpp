// The headers of Vorbis and Theora, which share their shape.

#include <algorithm>
#include <array>

#include "inspect/records/Explain.h"
#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

void explainComments(Annotator& out) {
    out.text("vendor", out.little("vendor length", 4));
    const uint64_t count = out.little("comment count", 4);
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        out.text("comment " + std::to_string(i), out.little("comment length", 4));
    }
}

// Theora 6.2
void explainTheoraIdentification(Annotator& out) {
    out.u8("VMAJ");
    out.u8("VMIN");
    out.u8("VREV");
    out.big("FMBW", 2);
    out.say("macroblocks across");
    out.big("FMBH", 2);
    out.say("macroblocks down");
    out.big("PICW", 3);
    out.big("PICH", 3);
    out.u8("PICX");
    out.u8("PICY");
    out.big("FRN", 4);
    out.say("frame rate, numerator");
    out.big("FRD", 4);
    out.say("denominator");
    out.big("PARN", 3);
    out.say("pixel aspect, numerator");
    out.big("PARD", 3);
    out.say("denominator");
    out.u8("CS");
    out.big("NOMBR", 3);
    out.say("bits a second");
    out.packed({{"QUAL", 6}, {"KFGSHIFT", 5}, {"PF", 2}, {"reserved", 3}});
}

// Theora 6.1
void explainTheoraHeader(Annotator& out, uint64_t sizeBytes) {
    constexpr uint8_t kIdentification = 0x80;
    constexpr uint8_t kComment = 0x81;
    const Bytes ahead = out.ahead();
    const uint8_t type = ahead.empty() ? 0 : ahead[0];
    const auto header = out.group(type == kIdentification ? "identification header"
                                  : type == kComment      ? "comment header"
                                                          : "setup header",
                                  sizeBytes);
    out.u8("HEADERTYPE");
    out.text("signature", 6);
    if (type == kIdentification) explainTheoraIdentification(out);
    if (type == kComment) explainComments(out);
    if (out.ok()) out.rest("data");
}

// A size of as many 255 as fit and a last byte below that.
uint64_t explainLacing(Annotator& out, const std::string& name) {
    const Bytes ahead = out.ahead();
    const auto last = std::ranges::find_if(ahead, [](uint8_t byte) { return byte != 255; });
    const auto count = static_cast<size_t>(last - ahead.begin());
    const uint64_t size = count * uint64_t{255} + (last != ahead.end() ? *last : 0);
    out.bytes(name, count + 1);
    out.say(std::to_string(size));
    return size;
}

void explainLaced(Annotator& out) {
    out.u8("packet count less one");
    std::array<uint64_t, 2> sizes;
    for (uint64_t& size : sizes) size = explainLacing(out, "packet size");
    for (const uint64_t size : sizes) {
        if (out.ok()) explainTheoraHeader(out, size);
    }
    if (out.ok()) explainTheoraHeader(out, out.remaining());
}

void explainSignature(Annotator& out) {
    out.u8("packet_type");
    out.text("signature", 6);
}

void explainBitRate(Annotator& out, const std::string& name) {
    const auto value = static_cast<int32_t>(out.little(name, 4));
    if (value < 0) out.say(std::to_string(value));
}

}  // namespace

// Matroska has the three headers behind Xiph lacing, as Vorbis; others each behind its size.
void explainTheoraHeaders(Annotator& out) {
    constexpr uint8_t kThreePackets = 2;
    if (out.remaining() > 0 && out.ahead()[0] == kThreePackets) {
        explainLaced(out);
        return;
    }
    while (out.ok() && out.remaining() > 0) explainTheoraHeader(out, out.big("packet size", 2));
}

void explainVorbisHeader(Annotator& out) {
    explainSignature(out);
    out.little("vorbis_version", 4);
    out.u8("audio_channels");
    out.little("audio_sample_rate", 4);
    explainBitRate(out, "bitrate_maximum");
    explainBitRate(out, "bitrate_nominal");
    explainBitRate(out, "bitrate_minimum");
    const auto blocks = out.packed({{"blocksize_1", 4}, {"blocksize_0", 4}});
    out.say(std::to_string(1u << blocks[1]) + " samples, long blocks " +
            std::to_string(1u << blocks[0]));
    out.packed({{"unused", 7}, {"framing_flag", 1}});
}

void explainVorbisSetup(Annotator& out) {
    explainSignature(out);
    const unsigned count = out.u8("vorbis_codebook_count less one");
    out.say(std::to_string(count + 1) + " codebooks");
    out.rest("codebooks, floors, residues, mappings, modes");
}

}  // namespace inspect
