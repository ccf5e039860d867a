#include "inspect/records/Records.h"

#include <algorithm>
#include <array>

#include "inspect/records/Describe.h"
#include "inspect/records/Explain.h"
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
    RecordKind kind;
};

// The first row that fits counts.
// clang-format off
const auto kRows = std::to_array<RecordRow>({
    // key                                      codec                  in words                byte by byte
    {AMEDIAFORMAT_KEY_CSD_AVC,                  kAnyCodec,             {describeAvcRecord,     explainAvcRecord}},
    {AMEDIAFORMAT_KEY_CSD_HEVC,                 kAnyCodec,             {describeHevcRecord,    explainHevcRecord}},
    {AMEDIAFORMAT_KEY_ESDS,                     kCodecTypeMpeg1,       {describeMpeg2EsDescriptor, explainMpeg2EsDescriptor}},
    {AMEDIAFORMAT_KEY_ESDS,                     kCodecTypeMpeg2,       {describeMpeg2EsDescriptor, explainMpeg2EsDescriptor}},
    {AMEDIAFORMAT_KEY_ESDS,                     kAnyCodec,             {describeEsDescriptor,  explainEsDescriptor}},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeWmv7,        {describeWmv7Header,    explainWmv7Header}},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeWmv8,        {describeWmv7Header,    explainWmv7Header}},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kCodecTypeVc1Advanced, {describeVc1Header,     explainVc1Header}},
    {ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,     kAnyCodec,             {describeVc1Header,     explainWmv9Header}},
    {ZREAMEDIAFORMAT_KEY_THEORASPECIFICDATA,    kAnyCodec,             {describeTheoraHeaders, explainTheoraHeaders}},
    {ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA,  kAnyCodec,             {describeFlacStream,    explainFlacStream}},
    {ZREAMEDIAFORMAT_KEY_ADPCMWAVEFORMAT,       kAnyCodec,             {describeAdpcm,         explainAdpcm}},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeOpus,        {describeOpusHead,      explainOpusHead}},
    {AMEDIAFORMAT_KEY_CSD_1,                    kCodecTypeOpus,        {describeCodecDelay,    explainNativeNumber}},
    {AMEDIAFORMAT_KEY_CSD_2,                    kCodecTypeOpus,        {describeSeekPreRoll,   explainNativeNumber}},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeVorbis,      {describeVorbisHeader,  explainVorbisHeader}},
    {AMEDIAFORMAT_KEY_CSD_1,                    kCodecTypeVorbis,      {describeVorbisSetup,   explainVorbisSetup}},
    {AMEDIAFORMAT_KEY_CSD_0,                    kCodecTypeG726,        {describeNativeBitRate, explainNativeNumber}},
    {kPrivateData,                              kCodecTypeWmaV1,       {shortHex,              explainWma1}},
    {kPrivateData,                              kCodecTypeWmaV2,       {shortHex,              explainWma2}},
    {kPrivateData,                              kCodecTypeWmaPro,      {shortHex,              explainWma3}},
    {kPrivateData,                              kCodecTypeWmaLossless, {shortHex,              explainWma3}},
    {kPrivateData,                              kCodecTypeWmaVoice,    {shortHex,              explainWmaVoice}},
});
// clang-format on

constexpr RecordKind kUnknown = {shortHex, explainUnknown};

}  // namespace

const RecordKind& recordKind(uint32_t codecType, std::string_view key) {
    const auto row = std::ranges::find_if(kRows, [&](const RecordRow& each) {
        return each.key == key && (each.codecType == kAnyCodec || each.codecType == codecType);
    });
    return row != kRows.end() ? row->kind : kUnknown;
}

}  // namespace inspect
