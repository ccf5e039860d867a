// The headers of Vorbis and Theora, which share their shape.

#include <algorithm>

#include "inspect/records/Readers.h"

namespace inspect {
namespace {

constexpr uint64_t kIdentification = 0x80;
constexpr uint64_t kComment = 0x81;

void readComments(Annotator& out) {
    out.text("vendor", out.little("vendor length", 32));
    const uint64_t count = out.little("comment count", 32);
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        out.text("comment " + std::to_string(i), out.little("comment length", 32));
    }
}

// Theora 6.2
std::string readTheoraIdentification(Annotator& out) {
    const auto [major, minor, revision, blocksAcross, blocksDown, width, height, x, y, frames,
                seconds] = out.big({{"VMAJ", 8},
                                    {"VMIN", 8},
                                    {"VREV", 8},
                                    {"FMBW", 16, "macroblocks across"},
                                    {"FMBH", 16, "macroblocks down"},
                                    {"PICW", 24},
                                    {"PICH", 24},
                                    {"PICX", 8},
                                    {"PICY", 8},
                                    {"FRN", 32, "frame rate, numerator"},
                                    {"FRD", 32, "denominator"}});
    const bool isRead = out.ok();
    out.big({{"PARN", 24, "pixel aspect, numerator"},
             {"PARD", 24, "denominator"},
             {"CS", 8},
             {"NOMBR", 24, "bits a second"},
             {"QUAL", 6},
             {"KFGSHIFT", 5},
             {"PF", 2},
             {"reserved", 3}});
    if (!isRead) return {};
    return "Theora " + std::to_string(major) + "." + std::to_string(minor) + "." +
           std::to_string(revision) + ", " + sizeText(width, height) + ", " +
           std::to_string(frames) + "/" + std::to_string(seconds) + " fps";
}

// The three headers; each is one of these, behind its type (Theora 6.1).
class TheoraReader {
public:
    explicit TheoraReader(Annotator& out) : mOut(out) {}

    // Matroska has the three headers behind Xiph lacing, as Vorbis; others each behind its size.
    std::string read() {
        constexpr uint8_t kThreePackets = 2;
        const bool isLaced = mOut.remaining() > 0 && mOut.ahead()[0] == kThreePackets;
        if (isLaced) readLaced();
        while (mOut.ok() && mOut.remaining() > 0) readHeader(mOut.big("packet size", 16));
        if (mIdentification.empty()) return "no Theora identification header";
        mSizes.resize(3);
        return mIdentification + ", headers of " + std::to_string(mSizes[0]) + ", " +
               std::to_string(mSizes[1]) + " and " + std::to_string(mSizes[2]) + " bytes";
    }

private:
    void readLaced() {
        mOut.big("packet count less one", 8);
        const uint64_t first = readLacing();
        const uint64_t second = readLacing();
        for (const uint64_t size : {first, second}) {
            if (mOut.ok()) readHeader(size);
        }
        if (mOut.ok()) readHeader(mOut.remaining());
    }

    // A size of as many 255 as fit and a last byte below that.
    uint64_t readLacing() {
        const Bytes ahead = mOut.ahead();
        const auto last = std::ranges::find_if(ahead, [](uint8_t byte) { return byte != 255; });
        const auto count = static_cast<size_t>(last - ahead.begin());
        const uint64_t size = count * uint64_t{255} + (last != ahead.end() ? *last : 0);
        mOut.bytes("packet size", count + 1);
        mOut.say(std::to_string(size));
        return size;
    }

    void readHeader(uint64_t sizeBytes) {
        const Bytes ahead = mOut.ahead();
        const uint8_t type = ahead.empty() ? 0 : ahead[0];
        const auto header = mOut.group(type == kIdentification ? "identification header"
                                       : type == kComment      ? "comment header"
                                                               : "setup header",
                                       sizeBytes);
        mOut.cite(type == kIdentification ? "Theora 6.2"
                  : type == kComment      ? "Theora 6.3"
                                          : "Theora 6.4");
        mOut.big("HEADERTYPE", 8);
        mOut.text("signature", 6);
        if (type == kIdentification) {
            const std::string text = readTheoraIdentification(mOut);
            if (mSizes.empty()) mIdentification = text;
        }
        if (type == kComment) readComments(mOut);
        if (mOut.ok()) mOut.rest("data");
        mSizes.push_back(sizeBytes);
    }

    Annotator& mOut;
    std::string mIdentification;
    std::vector<uint64_t> mSizes;
};

bool readVorbisStart(Annotator& out, uint64_t type) {
    const bool isType = out.big("packet_type", 8) == type;
    return out.text("signature", 6) == "vorbis" && isType;
}

}  // namespace

std::string readTheoraHeaders(Annotator& out) {
    return TheoraReader(out).read();
}

std::string readVorbisHeader(Annotator& out) {
    const std::string what = "Vorbis identification header";
    const bool isVorbis = readVorbisStart(out, 1);
    const auto [version, channels, rate, most, nominal, least] =
            out.little({{"vorbis_version"},
                        {"audio_channels", 8},
                        {"audio_sample_rate"},
                        {"bitrate_maximum", 32, signedText<int32_t>},
                        {"bitrate_nominal", 32, signedText<int32_t>},
                        {"bitrate_minimum", 32, signedText<int32_t>}});
    const bool isWhole = out.ok();
    const auto sizes = out.big({{"blocksize_1", 4}, {"blocksize_0", 4}});
    out.say(std::to_string(1u << sizes[1]) + " samples, long blocks " +
            std::to_string(1u << sizes[0]));
    out.big({{"unused", 7}, {"framing_flag", 1}});
    if (!isVorbis) return "no " + what;
    if (!isWhole) return "not a complete " + what;
    const auto rateText = [](const std::string& words, uint64_t bitRate) {
        const auto number = static_cast<int32_t>(bitRate);
        return number > 0 ? words + std::to_string(number) + " b/s" : "";
    };
    return what + ": " + std::to_string(rate) + " Hz " + channelText(channels) +
           rateText(", at most ", most) + rateText(", nominal ", nominal) +
           rateText(", at least ", least);
}

std::string readVorbisSetup(Annotator& out) {
    const bool isVorbis = readVorbisStart(out, 5);
    const std::string count =
            std::to_string(out.big("vorbis_codebook_count less one", 8) + 1) + " codebooks";
    out.say(count);
    const bool isWhole = out.ok();
    out.rest("codebooks, floors, residues, mappings, modes");
    if (!isVorbis) return "no Vorbis setup header";
    return isWhole ? "Vorbis setup header: " + count : "not a complete Vorbis setup header";
}

}  // namespace inspect
