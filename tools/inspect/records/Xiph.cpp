// The headers of Vorbis and Theora, which share their shape.

#include <algorithm>
#include <array>

#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

constexpr uint8_t kIdentification = 0x80;

void readComments(Annotator& out) {
    out.text("vendor", out.little("vendor length", 4));
    const uint64_t count = out.little("comment count", 4);
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        out.text("comment " + std::to_string(i), out.little("comment length", 4));
    }
}

// Theora 6.2
void readTheoraIdentification(Annotator& out) {
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
void readTheoraHeader(Annotator& out, uint64_t sizeBytes) {
    constexpr uint8_t kComment = 0x81;
    const Bytes ahead = out.ahead();
    const uint8_t type = ahead.empty() ? 0 : ahead[0];
    const auto header = out.group(type == kIdentification ? "identification header"
                                  : type == kComment      ? "comment header"
                                                          : "setup header",
                                  sizeBytes);
    out.u8("HEADERTYPE");
    out.text("signature", 6);
    if (type == kIdentification) readTheoraIdentification(out);
    if (type == kComment) readComments(out);
    if (out.ok()) out.rest("data");
}

// A size of as many 255 as fit and a last byte below that.
uint64_t readLacing(Annotator& out, const std::string& name) {
    const Bytes ahead = out.ahead();
    const auto last = std::ranges::find_if(ahead, [](uint8_t byte) { return byte != 255; });
    const auto count = static_cast<size_t>(last - ahead.begin());
    const uint64_t size = count * uint64_t{255} + (last != ahead.end() ? *last : 0);
    out.bytes(name, count + 1);
    out.say(std::to_string(size));
    return size;
}

void readLaced(Annotator& out) {
    out.u8("packet count less one");
    std::array<uint64_t, 2> sizes;
    for (uint64_t& size : sizes) size = readLacing(out, "packet size");
    for (const uint64_t size : sizes) {
        if (out.ok()) readTheoraHeader(out, size);
    }
    if (out.ok()) readTheoraHeader(out, out.remaining());
}

void readSignature(Annotator& out) {
    out.u8("packet_type");
    out.text("signature", 6);
}

void readBitRate(Annotator& out, const std::string& name) {
    const auto value = static_cast<int32_t>(out.little(name, 4));
    if (value < 0) out.say(std::to_string(value));
}

// Matroska has the three headers behind Xiph lacing, as Vorbis; others each behind its size.
void readTheoraHeaders(Annotator& out) {
    constexpr uint8_t kThreePackets = 2;
    if (out.remaining() > 0 && out.ahead()[0] == kThreePackets) {
        readLaced(out);
        return;
    }
    while (out.ok() && out.remaining() > 0) readTheoraHeader(out, out.big("packet size", 2));
}

void readVorbisHeader(Annotator& out) {
    readSignature(out);
    out.little("vorbis_version", 4);
    out.u8("audio_channels");
    out.little("audio_sample_rate", 4);
    readBitRate(out, "bitrate_maximum");
    readBitRate(out, "bitrate_nominal");
    readBitRate(out, "bitrate_minimum");
    const auto blocks = out.packed({{"blocksize_1", 4}, {"blocksize_0", 4}});
    out.say(std::to_string(1u << blocks[1]) + " samples, long blocks " +
            std::to_string(1u << blocks[0]));
    out.packed({{"unused", 7}, {"framing_flag", 1}});
}

void readVorbisSetup(Annotator& out) {
    readSignature(out);
    const unsigned count = out.u8("vorbis_codebook_count less one");
    out.say(std::to_string(count + 1) + " codebooks");
    out.rest("codebooks, floors, residues, mappings, modes");
}

std::string dotted(const Record& record) {
    return record.digits("VMAJ") + "." + record.digits("VMIN") + "." + record.digits("VREV");
}

std::string summariseTheoraHeaders(const Record& record) {
    const bool isIdentification = record.number("HEADERTYPE") == kIdentification;
    if (!isIdentification || !record.has("FRD")) return "no Theora identification header";
    std::array<uint64_t, 3> sizes{};
    size_t count = 0;
    for (const Row& row : record.rows) {
        const bool isHeader = row.isHeading() && row.depth == 0;
        if (isHeader && count < sizes.size()) sizes[count++] = row.number.value_or(0);
    }
    return "Theora " + dotted(record) + ", " + record.digits("PICW") + "x" + record.digits("PICH") +
           ", " + record.digits("FRN") + "/" + record.digits("FRD") + " fps, headers of " +
           std::to_string(sizes[0]) + ", " + std::to_string(sizes[1]) + " and " +
           std::to_string(sizes[2]) + " bytes";
}

bool isVorbis(const Record& record, uint64_t type) {
    return record.number("packet_type") == type && record["signature"].holds("vorbis");
}

std::string summariseVorbisHeader(const Record& record) {
    constexpr auto kRates =
            std::to_array<std::array<const char*, 2>>({{"bitrate_maximum", "at most "},
                                                       {"bitrate_nominal", "nominal "},
                                                       {"bitrate_minimum", "at least "}});
    const std::string what = "Vorbis identification header";
    if (!isVorbis(record, 1)) return "no " + what;
    if (!record.has("bitrate_minimum")) return "not a complete " + what;
    std::string rates;
    for (const auto& [name, words] : kRates) {
        const auto rate = static_cast<int32_t>(record.number(name));
        if (rate > 0) rates += ", " + (words + std::to_string(rate)) + " b/s";
    }
    return what + ": " + record.digits("audio_sample_rate") + " Hz " +
           channelText(record.number("audio_channels")) + rates;
}

std::string summariseVorbisSetup(const Record& record) {
    const Row& codebooks = record["vorbis_codebook_count less one"];
    if (!isVorbis(record, 5)) return "no Vorbis setup header";
    if (!codebooks.number) return "not a complete Vorbis setup header";
    return "Vorbis setup header: " + codebooks.words;
}

}  // namespace

const RecordKind kTheoraHeaders = {readTheoraHeaders, summariseTheoraHeaders};
const RecordKind kVorbisHeader = {readVorbisHeader, summariseVorbisHeader};
const RecordKind kVorbisSetup = {readVorbisSetup, summariseVorbisSetup};

}  // namespace inspect
