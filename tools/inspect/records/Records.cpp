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
    std::string_view clause;  // see Record; a reader that knows better cites another
};

// The first row that fits counts.
// clang-format off
const auto kKinds = std::to_array<RecordKind>({
    // key                                      codec                  reader                 clause
    {AMEDIAFORMAT_KEY_CSD_AVC,                  kAnyCodec,             readAvcRecord,         "ISO/IEC 14496-15 5.3.3.1.2"},
    {AMEDIAFORMAT_KEY_CSD_HEVC,                 kAnyCodec,             readHevcRecord,        "ISO/IEC 14496-15 8.3.3.1.2"},
    {AMEDIAFORMAT_KEY_ESDS,                     kCodecTypeMpeg1,       readMpeg2EsDescriptor, "ISO/IEC 14496-1 7.2.6.5"},
    {AMEDIAFORMAT_KEY_ESDS,                     kCodecTypeMpeg2,       readMpeg2EsDescriptor, "ISO/IEC 14496-1 7.2.6.5"},
    {AMEDIAFORMAT_KEY_ESDS,                     kAnyCodec,             readEsDescriptor,      "ISO/IEC 14496-1 7.2.6.5"},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeWmv7,        readWmv7Header,        {}},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeWmv8,        readWmv7Header,        {}},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeVc1Advanced, readVc1Header,         "SMPTE 421M 6.1"},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kAnyCodec,             readWmv9Header,        "SMPTE 421M Annex J"},
    {ZREAMEDIAFORMAT_KEY_THEORASPECIFICDATA,    kAnyCodec,             readTheoraHeaders,     "Theora 6"},
    {ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA,  kAnyCodec,             readFlacStream,        "RFC 9639 8"},
    {ZREAMEDIAFORMAT_KEY_ADPCMWAVEFORMAT,       kAnyCodec,             readAdpcm,             {}},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeOpus,        readOpusHead,          "RFC 7845 5.1"},
    {AMEDIAFORMAT_KEY_CSD_1,                    kCodecTypeOpus,        readCodecDelay,        {}},
    {AMEDIAFORMAT_KEY_CSD_2,                    kCodecTypeOpus,        readSeekPreRoll,       {}},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeVorbis,      readVorbisHeader,      "Vorbis I 4.2.2"},
    {AMEDIAFORMAT_KEY_CSD_1,                    kCodecTypeVorbis,      readVorbisSetup,       "Vorbis I 4.2.4"},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeG726,        readNativeBitRate,     {}},
    {kPrivateData,                              kCodecTypeVp9,         readVp9Record,         "VP Codec ISO Media File Format Binding 2.2"},
    {kFirstFrame,                               kCodecTypeVp9,         readVp9Frame,          "VP9 6.2"},
    {kPrivateData,                              kCodecTypeAv1,         readAv1Record,         "AV1 Codec ISO Media File Format Binding 2.3.3"},
    {kPrivateData,                              kCodecTypeWmaV1,       readWma1,              {}},
    {kPrivateData,                              kCodecTypeWmaV2,       readWma2,              {}},
    {kPrivateData,                              kCodecTypeWmaPro,      readWma3,              {}},
    {kPrivateData,                              kCodecTypeWmaLossless, readWma3,              {}},
    {kPrivateData,                              kCodecTypeWmaVoice,    readWmaVoice,          {}},
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
    if (kind != nullptr && record.clause.empty()) record.clause = kind->clause;
    record.summary = summary.empty() ? shortHex(data) : summary;
    return record;
}

bool hasReader(uint32_t codecType, std::string_view key) {
    return recordKind(codecType, key) != nullptr;
}

}  // namespace inspect
