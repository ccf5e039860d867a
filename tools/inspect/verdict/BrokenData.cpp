#include "inspect/verdict/BrokenData.h"

#include <algorithm>
#include <array>

#include "inspect/records/Record.h"
#include "platform/MediaFormat.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"

namespace inspect {
namespace {

using namespace android;

using Records = std::vector<Record>;
using Why = std::string;  // empty: nothing is wrong

// Annex B of ITU-T H.264 and H.265: no record.
bool hasStartCode(Bytes data) {
    const std::array<uint8_t, 4> first = {0, 0, 0, 1};
    return data.size() >= first.size() && (std::ranges::equal(data.first(4), first) ||
                                           std::ranges::equal(data.first(3), Bytes(first).last(3)));
}

// ISO/IEC 14496-15 5.4.2.1, 8.4.1.1: the sample entries whose parameter sets may stand in samples.
bool maySendSetsInBand(const Stream& stream) {
    return stream.boxName == "avc3" || stream.boxName == "hev1";
}

const Record& recordOf(const Records& records, std::string_view key) {
    static const Record kNone;
    const auto found = std::ranges::find(records, key, &Record::key);
    return found != records.end() ? *found : kNone;
}

uint64_t numberOf(const Record& record, std::string_view name) {
    const Row* row = record.first(name);
    return row != nullptr ? row->number.value_or(0) : 0;
}

bool isText(const Record& record, std::string_view name, std::string_view text) {
    const Row* row = record.first(name);
    return row != nullptr && std::string(row->bytes.begin(), row->bytes.end()) == text;
}

uint64_t countNalUnits(const Record& record, uint64_t wanted) {
    uint64_t type = 0;
    uint64_t count = 0;
    for (const Row& row : record.rows) {
        if (row.name == "NAL_unit_type") type = row.number.value_or(0);
        if (row.name == "numNalus" && type == wanted) count += row.number.value_or(0);
    }
    return count;
}

struct ParameterSets {
    const char* name;
    uint64_t count;
};

Why whyNoSets(const Stream& stream, const std::vector<ParameterSets>& all) {
    if (maySendSetsInBand(stream)) return {};
    for (const ParameterSets& each : all) {
        if (each.count == 0) return std::string("the configuration record holds no ") + each.name;
    }
    return {};
}

Why whyNoPicture(const std::vector<VideoFacts>& all) {
    constexpr uint64_t kMostSamples = 1 << 15;  // along a side; the largest levels allow half
    if (all.empty()) return "the SPS in the configuration record makes no sense";
    const VideoFacts& facts = all.front();
    const bool isSane = facts.width > 0 && facts.height > 0 && facts.width <= kMostSamples &&
                        facts.height <= kMostSamples;
    if (isSane) return {};
    return "the SPS in the configuration record tells a picture of " + std::to_string(facts.width) +
           "x" + std::to_string(facts.height);
}

// ISO/IEC 14496-15 5.3.3.1.2, 8.3.3.1.2
Why whyNoRecord(const Stream& stream, const Record& record, bool isWhole,
                const std::vector<ParameterSets>& sets) {
    const uint64_t version = numberOf(record, "configurationVersion");
    if (version != 1) {
        return "the configuration record has version " + std::to_string(version) + " instead of 1";
    }
    if (!isWhole) return "the configuration record is cut short";
    Why why = whyNoSets(stream, sets);
    const bool hasSps =
            std::ranges::any_of(sets, [](const ParameterSets& each) { return each.count > 0; });
    if (!why.empty() || !hasSps) return why;
    return whyNoPicture(record.facts);
}

Why whyNotAvc(const Stream& stream, const Records&) {
    if (hasStartCode(stream.privateData)) return {};
    const Record record =
            readRecord(stream.codecType, AMEDIAFORMAT_KEY_CSD_AVC, stream.privateData);
    // The fields behind are often left out.
    const bool isWhole = record.isWhole() || record.first("chroma_format") != nullptr;
    return whyNoRecord(stream, record, isWhole,
                       {{"SPS", numberOf(record, "numOfSequenceParameterSets")},
                        {"PPS", numberOf(record, "numOfPictureParameterSets")}});
}

Why whyNotHevc(const Stream& stream, const Records&) {
    if (hasStartCode(stream.privateData)) return {};
    const Record record =
            readRecord(stream.codecType, AMEDIAFORMAT_KEY_CSD_HEVC, stream.privateData);
    return whyNoRecord(stream, record, record.isWhole(),
                       {{"SPS", countNalUnits(record, 33)},
                        {"VPS", countNalUnits(record, 32)},
                        {"PPS", countNalUnits(record, 34)}});
}

// VP Codec ISO Media File Format Binding 2.2; its drafts had version 0.
Why whyNotVp9(const Stream& stream, const Records&) {
    if (stream.boxName != "vp09" || stream.privateData.empty()) return {};
    const unsigned version = stream.privateData.front();
    if (version <= 1) return {};
    return "the box vpcC has version " + std::to_string(version) + " instead of 1";
}

// AV1 Codec ISO Media File Format Binding 2.3.3; else AV1 5.3.1: OBUs, which begin with a zero.
Why whyNotAv1(const Stream& stream, const Records&) {
    constexpr uint8_t kMarkerAndVersion = 0x81;
    constexpr size_t kFields = 4;
    const Bytes data = stream.privateData;
    const bool isRecord = stream.boxName == "av01" || (!data.empty() && (data[0] & 0x80) != 0);
    if (data.empty() || !isRecord) return {};
    if (data[0] != kMarkerAndVersion) {
        return "the configuration record has version " + std::to_string(data[0] & 0x7F) +
               " instead of 1";
    }
    return data.size() < kFields ? "the configuration record is cut short" : "";
}

// ISO/IEC 14496-3 1.6.2.1
Why whyNotAac(const Stream&, const Records& records) {
    constexpr uint64_t kFirstReserved = 13;
    constexpr uint64_t kExplicit = 15;
    const Record& record = recordOf(records, AMEDIAFORMAT_KEY_ESDS);
    const std::string config = "the AudioSpecificConfig ";
    if (record.rows.empty()) return {};
    if (!record.first("channelConfiguration")) return config + "is cut short";
    if (numberOf(record, "audioObjectType") == 0) return config + "has the object type 0";
    for (const char* name : {"samplingFrequencyIndex", "extensionSamplingFrequencyIndex"}) {
        const uint64_t index = numberOf(record, name);
        if (index >= kFirstReserved && index < kExplicit) {
            return config + "has the reserved sampling frequency index " + std::to_string(index);
        }
    }
    const bool isZero = numberOf(record, "samplingFrequencyIndex") == kExplicit &&
                        numberOf(record, "samplingFrequency") == 0;
    return isZero ? config + "has a sampling frequency of 0 Hz" : "";
}

// Vorbis I 4.2
Why whyNotVorbis(const Stream&, const Records& records) {
    const Record& header = recordOf(records, AMEDIAFORMAT_KEY_CSD_0);
    const Record& setup = recordOf(records, AMEDIAFORMAT_KEY_CSD_1);
    const auto isHeader = [](const Record& record, uint64_t type) {
        return numberOf(record, "packet_type") == type && isText(record, "signature", "vorbis");
    };
    if (!isHeader(header, 1)) return "the identification header of Vorbis is missing";
    if (!isHeader(setup, 5)) return "the setup header of Vorbis is missing";
    const uint64_t shortBlock = numberOf(header, "blocksize_0");
    const uint64_t longBlock = numberOf(header, "blocksize_1");
    const bool isSane = numberOf(header, "vorbis_version") == 0 &&
                        numberOf(header, "audio_channels") > 0 &&
                        numberOf(header, "audio_sample_rate") > 0 && shortBlock >= 6 &&
                        longBlock >= shortBlock && numberOf(header, "framing_flag") == 1;
    return isSane ? "" : "the identification header of Vorbis makes no sense";
}

// RFC 7845 5.1
Why whyNotOpus(const Stream&, const Records& records) {
    const Record& head = recordOf(records, AMEDIAFORMAT_KEY_CSD_0);
    if (!isText(head, "signature", "OpusHead")) return "the OpusHead is missing";
    const uint64_t channels = numberOf(head, "output channel count");
    const uint64_t family = numberOf(head, "channel mapping family");
    if (!head.isWhole()) return "the OpusHead is cut short";
    const bool isMapped = family == 0 ? channels <= 2 : numberOf(head, "stream count") > 0;
    const bool isSane = numberOf(head, "version") < 16 && channels > 0 && isMapped;
    return isSane ? "" : "the OpusHead makes no sense";
}

// RFC 9639 8.2
Why whyNotFlac(const Stream&, const Records& records) {
    const Record& record = recordOf(records, ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA);
    if (record.rows.empty()) return {};
    if (!record.first("total samples")) return "the STREAMINFO of FLAC is missing or cut short";
    const uint64_t least = numberOf(record, "minimum block size");
    const bool isSane = numberOf(record, "sample rate") > 0 && least >= 16 &&
                        numberOf(record, "maximum block size") >= least &&
                        numberOf(record, "bits per sample less one") >= 3;
    return isSane ? "" : "the STREAMINFO of FLAC makes no sense";
}

// ALACSpecificConfig, which a box header and a version may precede.
Why whyNotAlac(const Stream& stream, const Records&) {
    constexpr size_t kFields = 24;
    constexpr size_t kBoxFields = 12;
    ByteCursor cursor(stream.privateData);
    if (cursor.remaining() >= kFields + kBoxFields) cursor.skip(kBoxFields);
    const uint32_t frameLength = cursor.be32();
    const uint8_t version = cursor.u8();
    const uint8_t bitDepth = cursor.u8();
    cursor.skip(3);
    const uint8_t channels = cursor.u8();
    cursor.skip(10);
    const uint32_t sampleRate = cursor.be32();
    if (!cursor.ok()) return "the ALACSpecificConfig is cut short";
    const bool isSane = frameLength > 0 && version == 0 && bitDepth > 0 && bitDepth <= 32 &&
                        channels > 0 && channels <= 8 && sampleRate > 0;
    return isSane ? "" : "the ALACSpecificConfig makes no sense";
}

struct Judge {
    uint32_t codecType;
    bool isNeeded;  // beside whole frames
    Why (*why)(const Stream& stream, const Records& records);
};

constexpr auto kJudges = std::to_array<Judge>({
        {kCodecTypeAvc, true, whyNotAvc},
        {kCodecTypeHevc, true, whyNotHevc},
        {kCodecTypeVp9, false, whyNotVp9},
        {kCodecTypeAv1, false, whyNotAv1},
        {kCodecTypeAac, true, whyNotAac},
        {kCodecTypeVorbis, true, whyNotVorbis},
        {kCodecTypeOpus, true, whyNotOpus},
        {kCodecTypeFlac, true, whyNotFlac},
        {kCodecTypeAlac, true, whyNotAlac},
});

// Neither the container nor the codec data tell.
Why whyNoNumbers(const Stream& stream) {
    static constexpr auto kTellElsewhere =
            std::to_array<uint32_t>({kCodecTypeNoVideo, kCodecTypeNoAudio, kCodecTypeAc4,
                                     kCodecTypeMpegHMha1, kCodecTypeMpegHMhm1});
    if (std::ranges::count(kTellElsewhere, stream.codecType) > 0) return {};
    if (stream.kind == Kind::kVideo && (stream.video.width == 0 || stream.video.height == 0)) {
        return "the file tells no size of the pictures";
    }
    if (stream.kind != Kind::kAudio) return {};
    if (stream.audio.sampleRate == 0) return "the file tells no sample rate";
    return stream.audio.channelCount == 0 ? "the file tells no number of channels" : "";
}

}  // namespace

std::string whyNoDecoderStarts(const Stream& stream, const std::vector<Record>& records,
                               bool hasWholeFrames) {
    const auto judge = std::ranges::find(kJudges, stream.codecType, &Judge::codecType);
    if (judge != kJudges.end()) {
        const bool isMissing = stream.privateData.empty();
        if (isMissing && judge->isNeeded && hasWholeFrames) {
            return "the codec data are missing in the file";
        }
        Why why = isMissing ? Why() : judge->why(stream, records);
        if (!why.empty()) return why;
    }
    const bool isTold = hasWholeFrames || stream.codecType == kCodecTypePcm;
    return isTold ? whyNoNumbers(stream) : Why();
}

}  // namespace inspect
