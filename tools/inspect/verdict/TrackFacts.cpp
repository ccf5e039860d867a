#include "inspect/verdict/TrackFacts.h"

#include <algorithm>
#include <string_view>

#include "inspect/devices/Profiles.h"
#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

std::optional<int64_t> known(int64_t number) {
    return number > 0 ? std::optional(number) : std::nullopt;
}

std::optional<double> known(double rate) {
    return rate > 0 ? std::optional(rate) : std::nullopt;
}

// Of the first record that has such a field.
std::optional<int> fieldOf(const std::vector<Record>& records, std::string_view name) {
    for (const Record& each : records) {
        const Row* row = each.first(name);
        if (row != nullptr && row->number) return static_cast<int>(*row->number);
    }
    return {};
}

// ISO/IEC 14496-3 1.6.2.1. LC may be more than it says: then the demuxer has found out.
std::optional<int> aacProfile(const Stream& stream, const std::vector<Record>& records) {
    constexpr int kLowComplexity = 2;
    constexpr int kReplicated = 5;
    constexpr int kEscape = 31;
    std::optional<int> type = fieldOf(records, "audioObjectType");
    if (type == kEscape) type = 32 + fieldOf(records, "audioObjectTypeExt").value_or(0);
    if (type == kLowComplexity && fieldOf(records, "sbrPresentFlag") == 1) type = kReplicated;
    const bool isTold = type > 0 && (type != kLowComplexity || !stream.profile);
    return isTold ? *type - 1 : stream.profile;
}

Indication indicationOf(const Stream& stream, const std::vector<Record>& records) {
    Indication said = {.profile = stream.profile,
                       .level = stream.level,
                       .bitDepth = known(int64_t{stream.video.bitDepth})};
    if (stream.codec.starts_with("aac")) said.profile = aacProfile(stream, records);
    if (stream.codec == "vp9" && !said.level) {
        const Record own = readRecord(kCodecTypeVp9, kPrivateData, stream.privateData);
        said.level = fieldOf({own}, "level");
    }
    if (stream.codec == "av1" && !said.level) said.level = fieldOf(records, "seq_level_idx_0");
    said.constraints = static_cast<unsigned>(fieldOf(records, "profile_compatibility").value_or(0));
    said.isHighTier = fieldOf(records, "general_tier_flag").value_or(0) != 0;
    return said;
}

// ISO/IEC 11172-2 2.4.3.2: all ones stand for a variable rate. Decoders of AMR tell the codec's
// modes, and the container what these take with their headers.
std::optional<int64_t> bitRateOf(const Stream& stream) {
    constexpr uint32_t kVariable = 0x3FFFF * 400;
    const bool isVariable = stream.codec == "mpeg1video" && stream.bitRate == kVariable;
    const bool isPadded = stream.codec.starts_with("amr_");
    return isVariable || isPadded ? std::nullopt : known(int64_t{stream.bitRate});
}

}  // namespace

TrackFacts factsOf(const Stream& stream, const std::vector<Record>& records) {
    TrackFacts facts;
    facts.codec = stream.codec;
    facts.width = known(int64_t{stream.video.width});
    facts.height = known(int64_t{stream.video.height});
    facts.frameRate = known(stream.video.averageFrameRate);
    facts.baseFrameRate = known(stream.video.baseFrameRate);
    facts.bitRate = bitRateOf(stream);
    facts.sampleRate = known(int64_t{stream.audio.sampleRate});
    facts.channelCount = known(int64_t{stream.audio.channelCount});
    facts.bitDepth = known(int64_t{stream.video.bitDepth});
    const CodecProfiles* codec = profilesOfCodec(stream.codec);
    if (codec == nullptr) return facts;
    const Indication said = indicationOf(stream, records);
    facts.codec = codec->name;
    facts.profile = profileOf(*codec, said);
    facts.level = levelOf(*codec, said);
    return facts;
}

}  // namespace inspect
