#include "inspect/records/Records.h"

#include <algorithm>
#include <array>

#include "platform/MediaFormat.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"

namespace inspect {
namespace {

using namespace android;

constexpr uint32_t kAnyCodec = 0;

struct RecordRow {
    std::string_view key;
    uint32_t codecType;
    const RecordKind* kind;
};

// The first row that fits counts.
// clang-format off
const auto kRows = std::to_array<RecordRow>({
    // key                                      codec                  kind
    {AMEDIAFORMAT_KEY_CSD_AVC,                  kAnyCodec,             &kAvcRecord},
    {AMEDIAFORMAT_KEY_CSD_HEVC,                 kAnyCodec,             &kHevcRecord},
    {AMEDIAFORMAT_KEY_ESDS,                     kCodecTypeMpeg1,       &kMpeg2EsDescriptor},
    {AMEDIAFORMAT_KEY_ESDS,                     kCodecTypeMpeg2,       &kMpeg2EsDescriptor},
    {AMEDIAFORMAT_KEY_ESDS,                     kAnyCodec,             &kEsDescriptor},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeWmv7,        &kWmv7Header},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeWmv8,        &kWmv7Header},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeVc1Advanced, &kVc1Header},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kAnyCodec,             &kWmv9Header},
    {ZREAMEDIAFORMAT_KEY_THEORASPECIFICDATA,    kAnyCodec,             &kTheoraHeaders},
    {ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA,  kAnyCodec,             &kFlacStream},
    {ZREAMEDIAFORMAT_KEY_ADPCMWAVEFORMAT,       kAnyCodec,             &kAdpcm},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeOpus,        &kOpusHead},
    {AMEDIAFORMAT_KEY_CSD_1,                    kCodecTypeOpus,        &kCodecDelay},
    {AMEDIAFORMAT_KEY_CSD_2,                    kCodecTypeOpus,        &kSeekPreRoll},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeVorbis,      &kVorbisHeader},
    {AMEDIAFORMAT_KEY_CSD_1,                    kCodecTypeVorbis,      &kVorbisSetup},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeG726,        &kNativeBitRate},
    {kPrivateData,                              kCodecTypeVp9,         &kVp9Record},
    {kPrivateData,                              kCodecTypeAv1,         &kAv1Record},
    {kPrivateData,                              kCodecTypeWmaV1,       &kWma1},
    {kPrivateData,                              kCodecTypeWmaV2,       &kWma2},
    {kPrivateData,                              kCodecTypeWmaPro,      &kWma3},
    {kPrivateData,                              kCodecTypeWmaLossless, &kWma3},
    {kPrivateData,                              kCodecTypeWmaVoice,    &kWmaVoice},
});
// clang-format on

constexpr RecordKind kUnknown = {[](Annotator& out) { out.rest("data"); }, showBytes};

const RecordKind& recordKind(uint32_t codecType, std::string_view key) {
    const auto row = std::ranges::find_if(kRows, [&](const RecordRow& each) {
        return each.key == key && (each.codecType == kAnyCodec || each.codecType == codecType);
    });
    return row != kRows.end() ? *row->kind : kUnknown;
}

}  // namespace

Record readRecord(uint32_t codecType, std::string_view key, Bytes data) {
    Annotator out(data);
    recordKind(codecType, key).read(out);
    return {.key = std::string(key), .sizeBytes = data.size(), .rows = out.finish()};
}

bool hasReader(uint32_t codecType, std::string_view key) {
    return &recordKind(codecType, key) != &kUnknown;
}

std::optional<VideoFacts> videoFacts(uint32_t codecType, const Record& record) {
    const auto readFacts = recordKind(codecType, record.key).readFacts;
    return readFacts != nullptr ? readFacts(record.rows) : std::nullopt;
}

bool isConfiguration(uint32_t codecType, const Record& record) {
    return record.at("configurationVersion", 0).number == 1u && videoFacts(codecType, record);
}

std::string summarise(uint32_t codecType, const Record& record) {
    return recordKind(codecType, record.key).summarise(record);
}

}  // namespace inspect
