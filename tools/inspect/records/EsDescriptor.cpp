// Descriptors of ISO/IEC 14496-1, and the start codes of the video inside.

#include <algorithm>

#include "inspect/records/Readers.h"

namespace inspect {
namespace {

constexpr uint64_t kVisual = 0x20;
constexpr uint64_t kAudio = 0x40;

// ISO/IEC 14496-1 8.3.3: seven bits a byte while the top bit is set, four bytes at most.
uint64_t readSize(Annotator& out) {
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

class EsReader {
public:
    EsReader(Annotator& out, StartCodeName nameOf) : mOut(out), mNameOf(nameOf) {}

    std::string read() {
        descriptor(3, "ES_Descriptor", "ISO/IEC 14496-1 7.2.6.5", &EsReader::readEs);
        return mIsWhole && mOut.ok() ? mSummary : "not a complete ES descriptor";
    }

private:
    // Tag and size, then what the function makes of the body.
    void descriptor(uint64_t tag, const char* name, std::string_view clause,
                    void (EsReader::*readBody)()) {
        const bool isThere = mOut.ok() && mOut.remaining() > 0;
        mIsWhole = mIsWhole && isThere;
        if (!isThere) return;
        mIsWhole = mOut.big("tag", 8) == tag && mIsWhole;
        const auto body = mOut.group(name, readSize(mOut));
        mOut.cite(clause);
        (this->*readBody)();
    }

    void readEs() {
        const auto [id, isDependent, hasUrl, hasClock, priority] =
                mOut.big({{"ES_ID", 16},
                          {"streamDependenceFlag", 1},
                          {"URL_Flag", 1},
                          {"OCRstreamFlag", 1},
                          {"streamPriority", 5}});
        if (isDependent != 0) mOut.big("dependsOn_ES_ID", 16);
        if (hasUrl != 0) mOut.text("URLstring", mOut.big("URLlength", 8));
        if (hasClock != 0) mOut.big("OCR_ES_Id", 16);
        descriptor(4, "DecoderConfigDescriptor", "ISO/IEC 14496-1 7.2.6.6",
                   &EsReader::readDecoderConfig);
        mOut.rest("further descriptors");
        mIsWhole = mIsWhole && mOut.ok();
    }

    void readDecoderConfig() {
        mObjectType = mOut.big("objectTypeIndication", 8, [](uint64_t type) -> std::string {
            return type == kAudio ? "MPEG-4 audio" : type == kVisual ? "MPEG-4 Visual" : "other";
        });
        mOut.big({{"streamType", 6},
                  {"upStream", 1},
                  {"reserved", 1},
                  {"bufferSizeDB", 24},
                  {"maxBitrate", 32},
                  {"avgBitrate", 32}});
        descriptor(5, "DecoderSpecificInfo", clauseOfConfig(), &EsReader::readSpecificInfo);
        mIsWhole = mIsWhole && mOut.ok();
    }

    std::string_view clauseOfConfig() const {
        if (mObjectType == kAudio) return "ISO/IEC 14496-3 1.6.2.1";
        if (mObjectType == kVisual) return "ISO/IEC 14496-2 6.2.2";
        return mNameOf == mpeg2StartCodeName ? "ITU-T H.262 6.2.2" : "";
    }

    void readSpecificInfo() {
        if (mObjectType == kAudio) {
            mSummary = "MPEG-4 audio, " + readAudioConfig(mOut);
            return;
        }
        const Bytes config = mOut.ahead();
        const std::string parts = readStartCodeParts(mOut, mNameOf);
        const auto type = static_cast<uint8_t>(mObjectType);
        mSummary = mObjectType == kVisual ? "MPEG-4 Visual, " + std::to_string(config.size()) +
                                                    " bytes of configuration: " +
                                                    (parts.empty() ? shortHex(config) : parts)
                                          : "object type " + hex({&type, 1}, "");
    }

    Annotator& mOut;
    StartCodeName mNameOf;
    uint64_t mObjectType = 0;
    bool mIsWhole = true;
    std::string mSummary;
};

// Of what is left, the bytes before the first start code 00 00 01 at or behind the given offset
// whose code byte is there too; all of it when there is none.
size_t beforeStartCode(Bytes ahead, size_t from) {
    constexpr std::array<uint8_t, 3> kPrefix = {0, 0, 1};
    const auto tail = ahead.subspan(std::min(from, ahead.size()));
    const auto found = std::search(tail.begin(), tail.end(), kPrefix.begin(), kPrefix.end());
    return tail.end() - found > std::ssize(kPrefix)
                   ? from + static_cast<size_t>(found - tail.begin())
                   : ahead.size();
}

std::string readPart(Annotator& out, StartCodeName nameOf) {
    constexpr size_t kStartCodeSize = 4;
    constexpr uint8_t kVisualObjectSequence = 0xB0;
    const uint8_t code = out.ahead()[kStartCodeSize - 1];
    std::string name = nameOf(code);
    const auto part = out.group(name, beforeStartCode(out.ahead(), 1));
    out.bytes("start code", kStartCodeSize);
    const bool hasProfile = code == kVisualObjectSequence && nameOf == visualStartCodeName;
    if (hasProfile && out.remaining() > 0) {
        const uint64_t profile = out.big("profile_and_level_indication", 8, visualProfileName);
        name += " of profile_and_level " + std::to_string(profile) + " (" +
                visualProfileName(profile) + ")";
    }
    out.rest("data");
    return name;
}

}  // namespace

std::string readStartCodeParts(Annotator& out, StartCodeName nameOf) {
    constexpr int kMaxParts = 8;
    out.bytes("before the first start code", beforeStartCode(out.ahead(), 0));
    std::string names;
    for (int count = 0; out.remaining() > 0; count++) {
        const std::string name = readPart(out, nameOf);
        if (count < kMaxParts) names += (count == 0 ? "" : ", ") + name;
        if (count == kMaxParts) names += ", ...";
    }
    return names;
}

std::string readEsDescriptor(Annotator& out) {
    return EsReader(out, visualStartCodeName).read();
}

std::string readMpeg2EsDescriptor(Annotator& out) {
    return EsReader(out, mpeg2StartCodeName).read();
}

}  // namespace inspect
