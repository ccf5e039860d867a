// ISO/IEC 14496-3 1.6.2.1 and the head of 4.4.1

#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

using BitRun = Annotator::BitRun;

constexpr uint64_t kEscape = 31;
constexpr uint64_t kExplicitRate = 15;

// Spectral band replication and parametric stereo, around another type.
constexpr bool isExtension(uint64_t type) {
    return type == 5 || type == 29;
}

std::string escapedTypeName(unsigned value) {
    return aacObjectTypeName(32 + value);
}

uint64_t readObjectType(BitRun& bits) {
    const uint64_t type = bits.take({"audioObjectType", 5, aacObjectTypeName});
    return type == kEscape ? 32 + bits.take({"audioObjectTypeExt", 6, escapedTypeName}) : type;
}

void readSampleRate(BitRun& bits, const char* index, const char* rate) {
    if (bits.take({index, 4, aacSampleRateText}) == kExplicitRate) bits.take({rate, 24});
}

void readFields(Annotator& out) {
    BitRun bits(out);
    uint64_t type = readObjectType(bits);
    readSampleRate(bits, "samplingFrequencyIndex", "samplingFrequency");
    bits.take({"channelConfiguration", 4, aacChannelsText});
    if (isExtension(type)) {
        readSampleRate(bits, "extensionSamplingFrequencyIndex", "extensionSamplingFrequency");
        type = readObjectType(bits);
    }
    if (type >= 5) return;
    for (const char* flag : {"frameLengthFlag", "dependsOnCoreCoder", "extensionFlag"}) {
        bits.take({flag, 1});
    }
}

uint64_t sampleRate(const Record& record, std::string_view index, std::string_view rate) {
    const uint64_t number = record.number(index);
    return number == kExplicitRate ? record.number(rate)
                                   : aacSampleRate(static_cast<unsigned>(number));
}

}  // namespace

void readAudioConfig(Annotator& out) {
    readFields(out);
    const Bytes ahead = out.ahead();
    if (ahead.size() >= 2 && ahead[0] == 0x56 && (ahead[1] & 0xE0) == 0xE0) {
        out.packed({{"syncExtensionType", 11}, {"extensionAudioObjectType", 5, aacObjectTypeName}});
    }
    out.rest("rest of the AudioSpecificConfig");
}

std::string summariseAudioConfig(const Record& record, Bytes config) {
    const std::string text = "AudioSpecificConfig " + shortHex(config) + ": ";
    const uint64_t type = record.number("audioObjectType");
    // The rate of what comes out, where an extension raises it.
    const uint64_t rate =
            isExtension(type) ? sampleRate(record, "extensionSamplingFrequencyIndex",
                                           "extensionSamplingFrequency")
                              : sampleRate(record, "samplingFrequencyIndex", "samplingFrequency");
    const bool isRead = record.has(isExtension(type) ? "extensionSamplingFrequencyIndex"
                                                     : "channelConfiguration");
    if (!isRead) return text + "not complete";
    return text + record.words(type == kEscape ? "audioObjectTypeExt" : "audioObjectType") + " " +
           std::to_string(rate) + " Hz " + record.words("channelConfiguration");
}

}  // namespace inspect
