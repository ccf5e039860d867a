#include "inspect/media/CodecMap.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

constexpr int kAnyProfile = -1000;
constexpr uint32_t kAnyTag = 0;

constexpr uint32_t tag(std::string_view name) {
    uint32_t value = 0;
    for (unsigned i = 0; i < 4; i++) {
        value |= static_cast<uint32_t>(static_cast<unsigned char>(name[i])) << (8 * i);
    }
    return value;
}

struct Row {
    AVCodecID id;
    uint32_t tag;  // in capitals
    int profile;
    CodecType type;
};

// The first row that fits counts.
// clang-format off
constexpr auto kRows = std::to_array<Row>({
    // codec                     four-character code  profile                           code
    {AV_CODEC_ID_HEVC,             tag("DVH1"),  kAnyProfile,                       kCodecTypeDolbyVision},
    {AV_CODEC_ID_HEVC,             tag("DVHE"),  kAnyProfile,                       kCodecTypeDolbyVision},
    {AV_CODEC_ID_H264,             tag("DVA1"),  kAnyProfile,                       kCodecTypeDolbyVision},
    {AV_CODEC_ID_H264,             tag("DVAV"),  kAnyProfile,                       kCodecTypeDolbyVision},
    {AV_CODEC_ID_MPEG4,            tag("XVID"),  kAnyProfile,                       kCodecTypeXvid},
    {AV_CODEC_ID_MPEG4,            tag("DIVX"),  kAnyProfile,                       kCodecTypeDivx4},
    {AV_CODEC_ID_MPEG4,            tag("DX50"),  kAnyProfile,                       kCodecTypeDivx5},
    {AV_CODEC_ID_MPEG4,            tag("DX60"),  kAnyProfile,                       kCodecTypeDivx6},
    {AV_CODEC_ID_MPEG4,            kAnyTag,      FF_PROFILE_MPEG4_ADVANCED_SIMPLE,  kCodecTypeMpeg4Asp},
    {AV_CODEC_ID_MSMPEG4V3,        tag("DIV3"),  kAnyProfile,                       kCodecTypeDivx311},
    {AV_CODEC_ID_MSMPEG4V3,        tag("DIV4"),  kAnyProfile,                       kCodecTypeDivx311},
    {AV_CODEC_ID_MSMPEG4V3,        tag("DIV5"),  kAnyProfile,                       kCodecTypeDivx311},
    {AV_CODEC_ID_MSMPEG4V3,        tag("DIV6"),  kAnyProfile,                       kCodecTypeDivx311},
    {AV_CODEC_ID_WMV3,             kAnyTag,      FF_PROFILE_VC1_SIMPLE,             kCodecTypeVc1Simple},
    {AV_CODEC_ID_WMV3,             kAnyTag,      FF_PROFILE_VC1_MAIN,               kCodecTypeVc1Main},
    {AV_CODEC_ID_DTS,              kAnyTag,      FF_PROFILE_DTS_EXPRESS,            kCodecTypeDtsLbr},
    {AV_CODEC_ID_MPEGH_3D_AUDIO,   tag("MHM1"),  kAnyProfile,                       kCodecTypeMpegHMhm1},
    {AV_CODEC_ID_NONE,             tag("AC-4"),  kAnyProfile,                       kCodecTypeAc4},

    {AV_CODEC_ID_MPEG2VIDEO,       kAnyTag,      kAnyProfile,                       kCodecTypeMpeg2},
    {AV_CODEC_ID_MPEG4,            kAnyTag,      kAnyProfile,                       kCodecTypeMpeg4},
    {AV_CODEC_ID_H263,             kAnyTag,      kAnyProfile,                       kCodecTypeH263},
    {AV_CODEC_ID_H263P,            kAnyTag,      kAnyProfile,                       kCodecTypeH263},
    {AV_CODEC_ID_H263I,            kAnyTag,      kAnyProfile,                       kCodecTypeH263},
    {AV_CODEC_ID_H264,             kAnyTag,      kAnyProfile,                       kCodecTypeAvc},
    {AV_CODEC_ID_WMV3,             kAnyTag,      kAnyProfile,                       kCodecTypeWmv},
    {AV_CODEC_ID_WMV1,             kAnyTag,      kAnyProfile,                       kCodecTypeWmv7},
    {AV_CODEC_ID_WMV2,             kAnyTag,      kAnyProfile,                       kCodecTypeWmv8},
    {AV_CODEC_ID_VC1,              kAnyTag,      kAnyProfile,                       kCodecTypeVc1Advanced},
    {AV_CODEC_ID_MSMPEG4V1,        kAnyTag,      kAnyProfile,                       kCodecTypeMsMpeg4V1},
    {AV_CODEC_ID_MSMPEG4V2,        kAnyTag,      kAnyProfile,                       kCodecTypeMsMpeg4V2},
    {AV_CODEC_ID_MSMPEG4V3,        kAnyTag,      kAnyProfile,                       kCodecTypeMsMpeg4V3},
    {AV_CODEC_ID_MJPEG,            kAnyTag,      kAnyProfile,                       kCodecTypeMjpeg},
    {AV_CODEC_ID_VP6,              kAnyTag,      kAnyProfile,                       kCodecTypeVp6},
    {AV_CODEC_ID_VP6A,             kAnyTag,      kAnyProfile,                       kCodecTypeVp6},
    {AV_CODEC_ID_VP6F,             kAnyTag,      kAnyProfile,                       kCodecTypeVp6},
    {AV_CODEC_ID_VP7,              kAnyTag,      kAnyProfile,                       kCodecTypeVp7},
    {AV_CODEC_ID_VP8,              kAnyTag,      kAnyProfile,                       kCodecTypeVp8},
    {AV_CODEC_ID_MPEG1VIDEO,       kAnyTag,      kAnyProfile,                       kCodecTypeMpeg1},
    {AV_CODEC_ID_THEORA,           kAnyTag,      kAnyProfile,                       kCodecTypeTheora},
    {AV_CODEC_ID_FLV1,             kAnyTag,      kAnyProfile,                       kCodecTypeSorensonH263},
    {AV_CODEC_ID_RV10,             kAnyTag,      kAnyProfile,                       kCodecTypeRealVideo},
    {AV_CODEC_ID_RV20,             kAnyTag,      kAnyProfile,                       kCodecTypeRealVideo},
    {AV_CODEC_ID_RV30,             kAnyTag,      kAnyProfile,                       kCodecTypeRealVideo},
    {AV_CODEC_ID_RV40,             kAnyTag,      kAnyProfile,                       kCodecTypeRealVideo},
    {AV_CODEC_ID_VP9,              kAnyTag,      kAnyProfile,                       kCodecTypeVp9},
    {AV_CODEC_ID_HEVC,             kAnyTag,      kAnyProfile,                       kCodecTypeHevc},
    {AV_CODEC_ID_AV1,              kAnyTag,      kAnyProfile,                       kCodecTypeAv1},

    {AV_CODEC_ID_AAC,              kAnyTag,      kAnyProfile,                       kCodecTypeAac},
    {AV_CODEC_ID_AAC_LATM,         kAnyTag,      kAnyProfile,                       kCodecTypeAac},
    {AV_CODEC_ID_MP3,              kAnyTag,      kAnyProfile,                       kCodecTypeMp3},
    {AV_CODEC_ID_AC3,              kAnyTag,      kAnyProfile,                       kCodecTypeAc3},
    {AV_CODEC_ID_EAC3,             kAnyTag,      kAnyProfile,                       kCodecTypeEac3},
    {AV_CODEC_ID_DTS,              kAnyTag,      kAnyProfile,                       kCodecTypeDts},
    {AV_CODEC_ID_FLAC,             kAnyTag,      kAnyProfile,                       kCodecTypeFlac},
    {AV_CODEC_ID_VORBIS,           kAnyTag,      kAnyProfile,                       kCodecTypeVorbis},
    {AV_CODEC_ID_WMAV1,            kAnyTag,      kAnyProfile,                       kCodecTypeWmaV1},
    {AV_CODEC_ID_WMAV2,            kAnyTag,      kAnyProfile,                       kCodecTypeWmaV2},
    {AV_CODEC_ID_WMAPRO,           kAnyTag,      kAnyProfile,                       kCodecTypeWmaPro},
    {AV_CODEC_ID_WMALOSSLESS,      kAnyTag,      kAnyProfile,                       kCodecTypeWmaLossless},
    {AV_CODEC_ID_WMAVOICE,         kAnyTag,      kAnyProfile,                       kCodecTypeWmaVoice},
    {AV_CODEC_ID_AMR_NB,           kAnyTag,      kAnyProfile,                       kCodecTypeAmrNb},
    {AV_CODEC_ID_EVRC,             kAnyTag,      kAnyProfile,                       kCodecTypeEvrc},
    {AV_CODEC_ID_QCELP,            kAnyTag,      kAnyProfile,                       kCodecTypeQcelp},
    {AV_CODEC_ID_ADPCM_MS,         kAnyTag,      kAnyProfile,                       kCodecTypeAdpcm},
    {AV_CODEC_ID_ADPCM_IMA_WAV,    kAnyTag,      kAnyProfile,                       kCodecTypeAdpcm},
    {AV_CODEC_ID_MP2,              kAnyTag,      kAnyProfile,                       kCodecTypeMp2},
    {AV_CODEC_ID_PCM_ALAW,         kAnyTag,      kAnyProfile,                       kCodecTypeG711ALaw},
    {AV_CODEC_ID_PCM_MULAW,        kAnyTag,      kAnyProfile,                       kCodecTypeG711MuLaw},
    {AV_CODEC_ID_ADPCM_G726,       kAnyTag,      kAnyProfile,                       kCodecTypeG726},
    {AV_CODEC_ID_ADPCM_G726LE,     kAnyTag,      kAnyProfile,                       kCodecTypeG726},
    {AV_CODEC_ID_RA_144,           kAnyTag,      kAnyProfile,                       kCodecTypeRealAudio},
    {AV_CODEC_ID_RA_288,           kAnyTag,      kAnyProfile,                       kCodecTypeRealAudio},
    {AV_CODEC_ID_COOK,             kAnyTag,      kAnyProfile,                       kCodecTypeRealAudio},
    {AV_CODEC_ID_SIPR,             kAnyTag,      kAnyProfile,                       kCodecTypeRealAudio},
    {AV_CODEC_ID_AMR_WB,           kAnyTag,      kAnyProfile,                       kCodecTypeAmrWb},
    {AV_CODEC_ID_MP1,              kAnyTag,      kAnyProfile,                       kCodecTypeMp1},
    {AV_CODEC_ID_OPUS,             kAnyTag,      kAnyProfile,                       kCodecTypeOpus},
    {AV_CODEC_ID_ALAC,             kAnyTag,      kAnyProfile,                       kCodecTypeAlac},
    {AV_CODEC_ID_DSD_LSBF,         kAnyTag,      kAnyProfile,                       kCodecTypeDsd},
    {AV_CODEC_ID_DSD_MSBF,         kAnyTag,      kAnyProfile,                       kCodecTypeDsd},
    {AV_CODEC_ID_DSD_LSBF_PLANAR,  kAnyTag,      kAnyProfile,                       kCodecTypeDsd},
    {AV_CODEC_ID_DSD_MSBF_PLANAR,  kAnyTag,      kAnyProfile,                       kCodecTypeDsd},
    {AV_CODEC_ID_MPEGH_3D_AUDIO,   kAnyTag,      kAnyProfile,                       kCodecTypeMpegHMha1},

    {AV_CODEC_ID_SUBRIP,           kAnyTag,      kAnyProfile,                       kCodecTypeSubRip},
    {AV_CODEC_ID_SSA,              kAnyTag,      kAnyProfile,                       kCodecTypeSsa},
    {AV_CODEC_ID_ASS,              kAnyTag,      kAnyProfile,                       kCodecTypeAss},
});
// clang-format on

uint32_t capitals(uint32_t codecTag) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        const uint32_t letter = codecTag >> shift & 0xFF;
        if (letter >= 'a' && letter <= 'z') codecTag -= uint32_t{'a' - 'A'} << shift;
    }
    return codecTag;
}

uint32_t noCodec(AVMediaType kind) {
    switch (kind) {
        case AVMEDIA_TYPE_VIDEO: return kCodecTypeNoVideo;
        case AVMEDIA_TYPE_AUDIO: return kCodecTypeNoAudio;
        default: return kNoSubtitleCodec;
    }
}

bool isPcm(AVCodecID id) {
    return id >= AV_CODEC_ID_FIRST_AUDIO && id < AV_CODEC_ID_ADPCM_IMA_QT;
}

// The demuxer has one id for both; the section that holds the styles differs.
bool isSsaScript(const AVCodecParameters& codec) {
    if (codec.codec_id != AV_CODEC_ID_ASS || codec.extradata_size <= 0) return false;
    const auto size = static_cast<size_t>(codec.extradata_size);
    const std::string header(codec.extradata, codec.extradata + size);
    return header.find("[V4 Styles]") != std::string::npos;
}

}  // namespace

uint32_t codecTypeOf(AVCodecID id, uint32_t codecTag, int profile) {
    const auto found = std::ranges::find_if(kRows, [&](const Row& row) {
        return row.id == id && (row.tag == kAnyTag || row.tag == capitals(codecTag)) &&
               (row.profile == kAnyProfile || row.profile == profile);
    });
    if (found != kRows.end()) return static_cast<uint32_t>(found->type);
    if (isPcm(id)) return kCodecTypePcm;
    return noCodec(avcodec_get_type(id));
}

uint32_t codecTypeOf(const AVStream& stream) {
    const AVCodecParameters& codec = *stream.codecpar;
    if (isSsaScript(codec)) return kCodecTypeSsa;
    if (codec.codec_id == AV_CODEC_ID_NONE) return noCodec(codec.codec_type);
    return codecTypeOf(codec.codec_id, codec.codec_tag, codec.profile);
}

}  // namespace inspect
