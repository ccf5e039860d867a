#include "Helper/vocabulary/CodecTable.h"

#include <cstring>
#include <span>

#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaDefs.h"

namespace android {
namespace {

using enum WithoutDecoder;

constexpr const char* kNone = nullptr;
constexpr const char* kAsAsked = nullptr;

constexpr CodecExtra kCallersMode{ZREAMEDIAFORMAT_KEY_USEARBITRARYMODE, kCallersArbitraryMode};
constexpr CodecExtra kWholeFrames{ZREAMEDIAFORMAT_KEY_USEARBITRARYMODE, 0};

constexpr CodecExtra divxVersion(int32_t version) {
    return {ZREAMEDIAFORMAT_KEY_DIVXVERSION, version};
}
constexpr CodecExtra layer(int32_t number) {
    return {ZREAMEDIAFORMAT_KEY_LAYERINFO, number};
}
constexpr CodecExtra wmaVersion(int32_t version) {
    return {ZREAMEDIAFORMAT_KEY_WMAVERSION, version};
}
constexpr CodecExtra waveFormatTag(int32_t tag) {
    return {ZREAMEDIAFORMAT_KEY_WMAFORMATTAG, tag};
}

// That some video codecs receive the audio "not supported", and WMV8 the type of WMV7, is meant:
// players know these tracks by it.
// clang-format off
constexpr auto kVideoRows = std::to_array<CodecRow>({
    // code, primary, alternative, mime, without a decoder, extra keys
    {101, ZRE_MEDIA_MIMETYPE_VIDEO_MPEG2,        kNone, kAsAsked,                              kOfferAnyway,  {}},
    {102, ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4,        kNone, kAsAsked,                              kNotSupported, {kCallersMode}},
    {103, ZRE_MEDIA_MIMETYPE_VIDEO_H263,         kNone, kAsAsked,                              kNotSupported, {}},
    {104, ZRE_MEDIA_MIMETYPE_VIDEO_AVC,          kNone, kAsAsked,                              kNotSupported, {}},
    {105, ZRE_MEDIA_MIMETYPE_VIDEO_WMV,          kNone, kAsAsked,                              kNotSupported, {}},
    {106, ZRE_MEDIA_MIMETYPE_VIDEO_WMV7,         kNone, kAsAsked,                              kNotSupported, {}},
    {107, ZRE_MEDIA_MIMETYPE_VIDEO_WMV8,         kNone, ZRE_MEDIA_MIMETYPE_VIDEO_WMV7,         kNotSupported, {}},
    {108, ZRE_MEDIA_MIMETYPE_VIDEO_WMV,          kNone, kAsAsked,                              kNotSupported, {}},
    {109, ZRE_MEDIA_MIMETYPE_VIDEO_WMV,          kNone, kAsAsked,                              kNotSupported, {}},
    {110, ZRE_MEDIA_MIMETYPE_VIDEO_WMV,          kNone, kAsAsked,                              kNotSupported, {}},
    {111, ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4,      kNone, ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {112, ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4V2,    kNone, ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {113, ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4V3,    kNone, ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {114, ZRE_MEDIA_MIMETYPE_VIDEO_MJPG,         kNone, kAsAsked,                              kNotSupported, {}},
    {115, ZRE_MEDIA_MIMETYPE_VIDEO_VPX,          kNone, ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {116, ZRE_MEDIA_MIMETYPE_VIDEO_VPX,          kNone, ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {117, ZRE_MEDIA_MIMETYPE_VIDEO_VP8,          kNone, kAsAsked,                              kNotSupported, {}},
    {118, ZRE_MEDIA_MIMETYPE_VIDEO_DIVX311,      kNone, kAsAsked,                              kNotSupported, {divxVersion(0), kWholeFrames}},
    {119, ZRE_MEDIA_MIMETYPE_VIDEO_MPEG2,        kNone, kAsAsked,                              kNotSupported, {}},
    {120, ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4,        kNone, kAsAsked,                              kNotSupported, {kCallersMode}},
    {121, ZRE_MEDIA_MIMETYPE_VIDEO_THEORA,       kNone, kAsAsked,                              kNotSupported, {}},
    {122, ZRE_MEDIA_MIMETYPE_VIDEO_H263,         kNone, ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {123, ZRE_MEDIA_MIMETYPE_VIDEO_DIVX,         kNone, kAsAsked,                              kDivxAsMpeg4,  {divxVersion(1), kCallersMode}},
    {124, ZRE_MEDIA_MIMETYPE_VIDEO_DIVX,         kNone, kAsAsked,                              kDivxAsMpeg4,  {divxVersion(2), kCallersMode}},
    {125, ZRE_MEDIA_MIMETYPE_VIDEO_DIVX,         kNone, kAsAsked,                              kDivxAsMpeg4,  {divxVersion(3), kCallersMode}},
    {126, ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4,        kNone, kAsAsked,                              kNotSupported, {kCallersMode}},
    {127, ZRE_MEDIA_MIMETYPE_VIDEO_RV,           kNone, kAsAsked,                              kNotSupported, {}},
    {128, ZRE_MEDIA_MIMETYPE_VIDEO_VP9,          kNone, kAsAsked,                              kNotSupported, {}},
    {129, ZRE_MEDIA_MIMETYPE_VIDEO_HEVC,         kNone, kAsAsked,                              kNotSupported, {}},
    {130, ZRE_MEDIA_MIMETYPE_VIDEO_AV1,          kNone, kAsAsked,                              kNotSupported, {}},
    {131, ZRE_MEDIA_MIMETYPE_VIDEO_DOLBY_VISION, kNone, kAsAsked,                              kNotSupported, {}},
});

constexpr auto kAudioRows = std::to_array<CodecRow>({
    // code, primary, alternative, mime, without a decoder, extra keys
    {201, ZRE_MEDIA_MIMETYPE_AUDIO_AAC,           ZRE_MEDIA_MIMETYPE_AUDIO_AAC,        kAsAsked,                              kNotSupported, {}},
    {202, ZRE_MEDIA_MIMETYPE_AUDIO_MPEG,          ZRE_MEDIA_MIMETYPE_AUDIO_MPEG,       ZRE_MEDIA_MIMETYPE_AUDIO_MPEG,         kNotSupported, {layer(3)}},
    {203, ZRE_MEDIA_MIMETYPE_AUDIO_AC3,           kNone,                               kAsAsked,                              kNotSupported, {}},
    {204, ZRE_MEDIA_MIMETYPE_AUDIO_EAC3,          kNone,                               kAsAsked,                              kOfferAnyway,  {}},
    {205, ZRE_MEDIA_MIMETYPE_AUDIO_DTS,           kNone,                               kAsAsked,                              kNotSupported, {}},
    {206, ZRE_MEDIA_MIMETYPE_AUDIO_RAW,           kNone,                               kAsAsked,                              kNotSupported, {}},
    {207, ZRE_MEDIA_MIMETYPE_AUDIO_FLAC,          kNone,                               kAsAsked,                              kNotSupported, {}},
    {208, ZRE_MEDIA_MIMETYPE_AUDIO_VORBIS,        kNone,                               kAsAsked,                              kNotSupported, {}},
    {209, ZRE_MEDIA_MIMETYPE_AUDIO_WMA,           kNone,                               ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {210, ZRE_MEDIA_MIMETYPE_AUDIO_WMA,           kNone,                               kAsAsked,                              kNotSupported, {wmaVersion(0), waveFormatTag(0x160)}},
    {211, ZRE_MEDIA_MIMETYPE_AUDIO_WMA,           kNone,                               kAsAsked,                              kNotSupported, {wmaVersion(0), waveFormatTag(0x161)}},
    {212, ZRE_MEDIA_MIMETYPE_AUDIO_WMA,           kNone,                               kAsAsked,                              kNotSupported, {wmaVersion(1), waveFormatTag(0x162)}},
    {213, ZRE_MEDIA_MIMETYPE_AUDIO_WMA,           kNone,                               kAsAsked,                              kNotSupported, {wmaVersion(2), waveFormatTag(0x163)}},
    {214, ZRE_MEDIA_MIMETYPE_AUDIO_WMA_VOICE,     kNone,                               kAsAsked,                              kNotSupported, {wmaVersion(3), waveFormatTag(0x00A)}},
    {215, ZRE_MEDIA_MIMETYPE_AUDIO_AMR_NB,        kNone,                               kAsAsked,                              kNotSupported, {}},
    {216, ZRE_MEDIA_MIMETYPE_AUDIO_EVRC,          ZRE_MEDIA_MIMETYPE_AUDIO_EVRC_ZRSW,  kAsAsked,                              kNotSupported, {}},
    {217, ZRE_MEDIA_MIMETYPE_AUDIO_QCELP,         ZRE_MEDIA_MIMETYPE_AUDIO_QCELP_ZRSW, kAsAsked,                              kNotSupported, {}},
    {218, ZRE_MEDIA_MIMETYPE_AUDIO_ADPCM,         kNone,                               kAsAsked,                              kNotSupported, {}},
    {219, ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_LAYER_II, ZRE_MEDIA_MIMETYPE_AUDIO_MPEG,       ZRE_MEDIA_MIMETYPE_AUDIO_MPEG,         kNotSupported, {layer(2)}},
    {220, ZRE_MEDIA_MIMETYPE_AUDIO_G711_ALAW,     kNone,                               kAsAsked,                              kNotSupported, {}},
    {221, ZRE_MEDIA_MIMETYPE_AUDIO_G711_MLAW,     kNone,                               kAsAsked,                              kNotSupported, {}},
    {222, ZRE_MEDIA_MIMETYPE_AUDIO_G726,          kNone,                               kAsAsked,                              kNotSupported, {}},
    {223, ZRE_MEDIA_MIMETYPE_AUDIO_RA,            kNone,                               kAsAsked,                              kNotSupported, {}},
    {224, ZRE_MEDIA_MIMETYPE_AUDIO_AMR_WB,        kNone,                               kAsAsked,                              kNotSupported, {}},
    {225, ZRE_MEDIA_MIMETYPE_AUDIO_DTS_LBR,       kNone,                               kAsAsked,                              kNotSupported, {}},
    {226, ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADTS,      ZRE_MEDIA_MIMETYPE_AUDIO_AAC,        kAsAsked,                              kNotSupported, {}},
    {227, ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_LAYER_I,  kNone,                               kAsAsked,                              kNotSupported, {}},
    {228, ZRE_MEDIA_MIMETYPE_AUDIO_OPUS,          kNone,                               kAsAsked,                              kNotSupported, {}},
    {229, ZRE_MEDIA_MIMETYPE_AUDIO_ALAC,          ZRE_MEDIA_MIMETYPE_AUDIO_ALAC_ZRSW,  kAsAsked,                              kNotSupported, {}},
    {230, ZRE_MEDIA_MIMETYPE_AUDIO_DOP,           kNone,                               ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {231, ZRE_MEDIA_MIMETYPE_AUDIO_DSD,           kNone,                               ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {232, ZRE_MEDIA_MIMETYPE_AUDIO_AC4,           kNone,                               ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED, kNotSupported, {}},
    {233, ZRE_MEDIA_MIMETYPE_AUDIO_MPEGH_MHA1,    kNone,                               kAsAsked,                              kOfferAnyway,  {}},
    {234, ZRE_MEDIA_MIMETYPE_AUDIO_MPEGH_MHM1,    kNone,                               kAsAsked,                              kOfferAnyway,  {}},
});
// clang-format on

// Each range of codes is as long as its table: the codes count up from the one behind "none".
constexpr bool isConsecutive(std::span<const CodecRow> rows, int32_t none) {
    int32_t code = none;
    for (const CodecRow& row : rows) {
        if (row.code != ++code) return false;
    }
    return true;
}
static_assert(isConsecutive(kVideoRows, kCodecTypeNoVideo));
static_assert(isConsecutive(kAudioRows, kCodecTypeNoAudio));

// Null when the code is not in this table.
const CodecRow* findIn(std::span<const CodecRow> rows, int32_t code) {
    if (code < rows.front().code || code > rows.back().code) return nullptr;
    return &rows[static_cast<size_t>(code - rows.front().code)];
}

}  // namespace

const CodecRow* findCodecRow(int32_t code) {
    const CodecRow* video = findIn(kVideoRows, code);
    return video != nullptr ? video : findIn(kAudioRows, code);
}

bool isAudioCode(int32_t code) {
    return code == kCodecTypeNoAudio || findIn(kAudioRows, code) != nullptr;
}

const char* notSupportedMime(int32_t code) {
    return isAudioCode(code) ? ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED
                             : ZRE_MEDIA_MIMETYPE_VIDEO_NOTSUPPORTED;
}

int32_t findAudioCode(const char* mime) {
    for (const CodecRow& row : kAudioRows) {
        if (std::strcmp(mime, row.primary) == 0) return row.code;
        if (row.alternative != nullptr && std::strcmp(mime, row.alternative) == 0) return row.code;
    }
    return kCodecTypeNoAudio;
}

}  // namespace android
