// ISO/IEC 14496-3 1.6.2.1 and the head of 4.4.1

#include <algorithm>

#include "inspect/records/Readers.h"

namespace inspect {
namespace {

constexpr uint64_t kEscape = 31;
constexpr uint64_t kExplicitRate = 15;

struct ObjectType {
    uint64_t number;
    const char* name;
};

// Table 1.17
constexpr auto kObjectTypes = std::to_array<ObjectType>({
        {1, "AAC Main"},
        {2, "AAC LC"},
        {3, "AAC SSR"},
        {4, "AAC LTP"},
        {5, "HE-AAC"},
        {23, "AAC LD"},
        {29, "HE-AAC v2"},
        {31, "escape"},
        {36, "ALS"},
        {39, "AAC ELD"},
        {42, "USAC"},
});

// Table 1.18
constexpr auto kRates = std::to_array<uint64_t>(
        {96000, 88200, 64000, 48000, 44100, 32000, 24000, 22050, 16000, 12000, 11025, 8000, 7350});

// Spectral band replication and parametric stereo, around another type.
constexpr bool isExtension(uint64_t type) {
    return type == 5 || type == 29;
}

std::string typeName(uint64_t type) {
    const auto found = std::ranges::find(kObjectTypes, type, &ObjectType::number);
    return found != kObjectTypes.end() ? found->name : "object type " + std::to_string(type);
}

std::string escapedTypeName(uint64_t value) {
    return typeName(32 + value);
}

std::string rateText(uint64_t index) {
    return index < kRates.size() ? std::to_string(kRates[index]) + " Hz" : "no table rate";
}

// Table 1.19
std::string channelsText(uint64_t configuration) {
    constexpr auto kChannels = std::to_array<uint64_t>({0, 1, 2, 3, 4, 5, 6, 8});
    const bool isKnown = configuration > 0 && configuration < kChannels.size();
    return isKnown ? channelText(kChannels[configuration])
                   : "channel configuration " + std::to_string(configuration);
}

uint64_t readObjectType(Annotator& out) {
    const uint64_t type = out.big("audioObjectType", 5, typeName);
    return type == kEscape ? 32 + out.big("audioObjectTypeExt", 6, escapedTypeName) : type;
}

uint64_t readSampleRate(Annotator& out, const char* indexName, const char* rateName) {
    const uint64_t index = out.big(indexName, 4, rateText);
    if (index == kExplicitRate) return out.big(rateName, 24);
    return index < kRates.size() ? kRates[index] : 0;
}

void readGeneral(Annotator& out) {
    out.big({{"frameLengthFlag", 1}, {"dependsOnCoreCoder", 1}, {"extensionFlag", 1}});
}

// The type, the rate of what comes out and the channels; nothing when these are not there.
std::string readFields(Annotator& out) {
    const uint64_t type = readObjectType(out);
    uint64_t rate = readSampleRate(out, "samplingFrequencyIndex", "samplingFrequency");
    const uint64_t channels = out.big("channelConfiguration", 4, channelsText);
    uint64_t inner = type;
    if (isExtension(type)) {
        rate = readSampleRate(out, "extensionSamplingFrequencyIndex", "extensionSamplingFrequency");
    }
    const bool isRead = out.ok();
    if (isExtension(type)) inner = readObjectType(out);
    if (inner < 5) readGeneral(out);
    if (!isRead) return "not complete";
    return typeName(type) + " " + std::to_string(rate) + " Hz " + channelsText(channels);
}

}  // namespace

std::string readAudioConfig(Annotator& out) {
    const std::string start = "AudioSpecificConfig " + shortHex(out.ahead()) + ": ";
    const std::string text = readFields(out);
    const Bytes ahead = out.ahead();
    if (ahead.size() >= 2 && ahead[0] == 0x56 && (ahead[1] & 0xE0) == 0xE0) {
        out.align();
        out.big("syncExtensionType", 11);
        const uint64_t extension = out.big("extensionAudioObjectType", 5, typeName);
        if (extension == 5) out.big("sbrPresentFlag", 1);
    }
    out.rest("rest of the AudioSpecificConfig");
    return start + text;
}

}  // namespace inspect
