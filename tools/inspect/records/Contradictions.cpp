#include <algorithm>
#include <array>

#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"
#include "platform/MediaFormat.h"
#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

// What a record repeats of its SPS.
struct Claim {
    std::string_view row;  // of the record itself
    uint64_t VideoFacts::*inSps;
    const char* what;
    std::string (*words)(uint64_t value) = nullptr;
    uint64_t bias = 0;
};

std::string levelWords(uint64_t levelIdc) {
    return avcLevelText(0, 0, levelIdc);
}

constexpr auto kClaims = std::to_array<Claim>({
        // ISO/IEC 14496-15 5.3.3.1.2
        {"AVCProfileIndication", &VideoFacts::profile, "profile", avcProfileName},
        {"profile_compatibility", &VideoFacts::compatibility, "profile compatibility", hexText},
        {"AVCLevelIndication", &VideoFacts::level, "level", levelWords},
        {"chroma_format", &VideoFacts::chroma, "chroma format", chromaText},
        {"bit_depth_luma_minus8", &VideoFacts::bitDepth, "bit depth", nullptr, 8},
        {"bit_depth_chroma_minus8", &VideoFacts::chromaBitDepth, "chroma bit depth", nullptr, 8},
        // ISO/IEC 14496-15 8.3.3.1.2
        {"general_profile_idc", &VideoFacts::profile, "profile", hevcProfileName},
        {"general_profile_compatibility_flags", &VideoFacts::compatibility, "profile compatibility",
         hexText},
        {"general_level_idc", &VideoFacts::level, "level", hevcLevelText},
        {"chromaFormat", &VideoFacts::chroma, "chroma format", chromaText},
        {"bitDepthLumaMinus8", &VideoFacts::bitDepth, "bit depth", nullptr, 8},
        {"bitDepthChromaMinus8", &VideoFacts::chromaBitDepth, "chroma bit depth", nullptr, 8},
        // AV1 Codec ISO Media File Format Binding 2.3.3
        {"seq_profile", &VideoFacts::profile, "profile"},
        {"seq_level_idx_0", &VideoFacts::level, "level index"},
});

std::string valueText(const Claim& claim, uint64_t value) {
    std::string digits = std::to_string(value);
    if (claim.words == nullptr) return digits;
    if (claim.words == hexText) return hexText(value);
    return digits + " (" + claim.words(value) + ")";
}

// "csd-avc: level 40 (4.0), in its parameter set 31 (3.1); ..."
std::string againstSps(const Record& record, const VideoFacts& facts, const std::string& number) {
    std::string text;
    for (const Claim& claim : kClaims) {
        const Row* row = record.find(claim.row);
        const uint64_t own = facts.*claim.inSps;
        if (row == nullptr || !row->number || *row->number + claim.bias == own) continue;
        text += (text.empty() ? record.key + ": " : "; ") + claim.what + " " +
                valueText(claim, *row->number + claim.bias) + ", in its parameter set" + number +
                " " + valueText(claim, own);
    }
    return text;
}

// "hvc1" around a record of H.264, and the other way round.
std::string againstName(const Stream& stream) {
    const bool isAvc = stream.codecType == kCodecTypeAvc;
    if (!isAvc && stream.codecType != kCodecTypeHevc) return {};
    const auto isRecordOf = [&](uint32_t codec, const char* key) {
        return readRecord(codec, key, stream.privateData).isConfiguration();
    };
    const bool avc = isRecordOf(kCodecTypeAvc, AMEDIAFORMAT_KEY_CSD_AVC);
    const bool hevc = isRecordOf(kCodecTypeHevc, AMEDIAFORMAT_KEY_CSD_HEVC);
    if (isAvc ? avc || !hevc : hevc || !avc) return {};
    return (stream.boxName.empty() ? stream.codec : '"' + stream.boxName + '"') +
           (isAvc ? " says H.264, but the record is one of H.265"
                  : " says H.265, but the record is one of H.264");
}

std::string againstContainer(const Stream::Video& video, const VideoFacts& facts,
                             const std::string& number) {
    const bool isSame = video.storedWidth == facts.width && video.storedHeight == facts.height;
    if (isSame || video.storedWidth == 0) return {};
    return "the container says " + sizeText(video.storedWidth, video.storedHeight) +
           (number.empty() ? ", the codec data " : ", parameter set" + number + " ") +
           sizeText(facts.width, facts.height);
}

// Those that differ have their numbers in the record but for the first.
void addContradictions(const Stream& stream, const Record& record, std::vector<std::string>& all) {
    for (auto facts = record.facts.begin(); facts != record.facts.end(); ++facts) {
        if (std::find(record.facts.begin(), facts, *facts) != facts) continue;
        const auto before = facts - record.facts.begin();
        const std::string number =
                before > 0 ? std::string(" ").append(std::to_string(before + 1)) + ":" : "";
        all.push_back(againstSps(record, *facts, number));
        all.push_back(againstContainer(stream.video, *facts, number));
    }
}

}  // namespace

std::vector<std::string> contradictions(const Stream& stream, const std::vector<Record>& records) {
    std::vector<std::string> all = {againstName(stream)};
    for (const Record& record : records) addContradictions(stream, record, all);
    std::erase(all, "");
    return all;
}

}  // namespace inspect
