#include <algorithm>
#include <array>

#include "inspect/records/Readers.h"
#include "platform/MediaFormat.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"

namespace inspect {
namespace {

using namespace android;

constexpr uint32_t kAnyCodec = 0;

struct RecordKind {
    std::string_view key;
    uint32_t codecType;
    std::string (*read)(Annotator& out);
};

// The first row that fits counts.
// clang-format off
const auto kKinds = std::to_array<RecordKind>({
    // key                                      codec                  reader
    {AMEDIAFORMAT_KEY_CSD_AVC,                  kAnyCodec,             readAvcRecord},
    {AMEDIAFORMAT_KEY_CSD_HEVC,                 kAnyCodec,             readHevcRecord},
    {AMEDIAFORMAT_KEY_ESDS,                     kCodecTypeMpeg1,       readMpeg2EsDescriptor},
    {AMEDIAFORMAT_KEY_ESDS,                     kCodecTypeMpeg2,       readMpeg2EsDescriptor},
    {AMEDIAFORMAT_KEY_ESDS,                     kAnyCodec,             readEsDescriptor},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeWmv7,        readWmv7Header},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeWmv8,        readWmv7Header},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeVc1Advanced, readVc1Header},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kAnyCodec,             readWmv9Header},
    {ZREAMEDIAFORMAT_KEY_THEORASPECIFICDATA,    kAnyCodec,             readTheoraHeaders},
    {ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA,  kAnyCodec,             readFlacStream},
    {ZREAMEDIAFORMAT_KEY_ADPCMWAVEFORMAT,       kAnyCodec,             readAdpcm},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeOpus,        readOpusHead},
    {AMEDIAFORMAT_KEY_CSD_1,                    kCodecTypeOpus,        readCodecDelay},
    {AMEDIAFORMAT_KEY_CSD_2,                    kCodecTypeOpus,        readSeekPreRoll},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeVorbis,      readVorbisHeader},
    {AMEDIAFORMAT_KEY_CSD_1,                    kCodecTypeVorbis,      readVorbisSetup},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeG726,        readNativeBitRate},
    {kPrivateData,                              kCodecTypeVp9,         readVp9Record},
    {kFirstFrame,                               kCodecTypeVp9,         readVp9Frame},
    {kPrivateData,                              kCodecTypeAv1,         readAv1Record},
    {kPrivateData,                              kCodecTypeWmaV1,       readWma1},
    {kPrivateData,                              kCodecTypeWmaV2,       readWma2},
    {kPrivateData,                              kCodecTypeWmaPro,      readWma3},
    {kPrivateData,                              kCodecTypeWmaLossless, readWma3},
    {kPrivateData,                              kCodecTypeWmaVoice,    readWmaVoice},
});
// clang-format on

const RecordKind* recordKind(uint32_t codecType, std::string_view key) {
    const auto* kind = std::ranges::find_if(kKinds, [&](const RecordKind& each) {
        return each.key == key && (each.codecType == kAnyCodec || each.codecType == codecType);
    });
    return kind != kKinds.end() ? kind : nullptr;
}

}  // namespace

const Row* Record::find(std::string_view name) const {
    const auto row = std::ranges::find_if(
            rows, [&](const Row& each) { return each.name == name && each.depth == 0; });
    return row != rows.end() ? &*row : nullptr;
}

const Row* Record::first(std::string_view name) const {
    const auto row = std::ranges::find(rows, name, &Row::name);
    return row != rows.end() ? &*row : nullptr;
}

bool Record::isWhole() const {
    return !rows.empty() && std::ranges::none_of(rows, [](const Row& row) {
        return row.bytes.empty() && row.name.starts_with("missing ");
    });
}

bool Record::isConfiguration() const {
    const Row* version = find("configurationVersion");
    return version != nullptr && version->number == 1u && !facts.empty();
}

Record readRecord(uint32_t codecType, std::string_view key, Bytes data, Detail detail) {
    Annotator out(data, detail);
    const RecordKind* kind = recordKind(codecType, key);
    const std::string summary = kind != nullptr ? kind->read(out) : std::string();
    if (kind == nullptr) out.rest("data");
    Record record = out.finish();
    record.key = key;
    record.summary = summary.empty() ? shortHex(data) : summary;
    return record;
}

bool hasReader(uint32_t codecType, std::string_view key) {
    return recordKind(codecType, key) != nullptr;
}

}  // namespace inspect
