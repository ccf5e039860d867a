#include "inspect/media/CodecMap.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <string>

#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

constexpr int kAnyProfile = -1000;

struct Variant {
    AVCodecID id;
    const char* tag;  // null = any
    int profile;
    CodecType type;
};
struct Codec {
    CodecType type;
    std::array<AVCodecID, 4> ids;
};

// What a four-character code or a profile tells apart; the first row that fits counts.
// clang-format off
constexpr auto kVariants = std::to_array<Variant>({
    // codec                     code      profile                           code
    {AV_CODEC_ID_HEVC,           "DVH1",   kAnyProfile,                      kCodecTypeDolbyVision},
    {AV_CODEC_ID_HEVC,           "DVHE",   kAnyProfile,                      kCodecTypeDolbyVision},
    {AV_CODEC_ID_H264,           "DVA1",   kAnyProfile,                      kCodecTypeDolbyVision},
    {AV_CODEC_ID_H264,           "DVAV",   kAnyProfile,                      kCodecTypeDolbyVision},
    {AV_CODEC_ID_MPEG4,          "XVID",   kAnyProfile,                      kCodecTypeXvid},
    {AV_CODEC_ID_MPEG4,          "DIVX",   kAnyProfile,                      kCodecTypeDivx4},
    {AV_CODEC_ID_MPEG4,          "DX50",   kAnyProfile,                      kCodecTypeDivx5},
    {AV_CODEC_ID_MPEG4,          "DX60",   kAnyProfile,                      kCodecTypeDivx6},
    {AV_CODEC_ID_MPEG4,          nullptr,  FF_PROFILE_MPEG4_ADVANCED_SIMPLE, kCodecTypeMpeg4Asp},
    {AV_CODEC_ID_MSMPEG4V3,      "DIV3",   kAnyProfile,                      kCodecTypeDivx311},
    {AV_CODEC_ID_MSMPEG4V3,      "DIV4",   kAnyProfile,                      kCodecTypeDivx311},
    {AV_CODEC_ID_MSMPEG4V3,      "DIV5",   kAnyProfile,                      kCodecTypeDivx311},
    {AV_CODEC_ID_MSMPEG4V3,      "DIV6",   kAnyProfile,                      kCodecTypeDivx311},
    {AV_CODEC_ID_WMV3,           nullptr,  FF_PROFILE_VC1_SIMPLE,            kCodecTypeVc1Simple},
    {AV_CODEC_ID_WMV3,           nullptr,  FF_PROFILE_VC1_MAIN,              kCodecTypeVc1Main},
    {AV_CODEC_ID_DTS,            nullptr,  FF_PROFILE_DTS_EXPRESS,           kCodecTypeDtsLbr},
    {AV_CODEC_ID_MPEGH_3D_AUDIO, "MHM1",   kAnyProfile,                      kCodecTypeMpegHMhm1},
    {AV_CODEC_ID_NONE,           "AC-4",   kAnyProfile,                      kCodecTypeAc4},
});
constexpr auto kCodecs = std::to_array<Codec>({
    {kCodecTypeMpeg2,          {AV_CODEC_ID_MPEG2VIDEO}},
    {kCodecTypeMpeg4,          {AV_CODEC_ID_MPEG4}},
    {kCodecTypeH263,           {AV_CODEC_ID_H263, AV_CODEC_ID_H263P, AV_CODEC_ID_H263I}},
    {kCodecTypeAvc,            {AV_CODEC_ID_H264}},
    {kCodecTypeWmv,            {AV_CODEC_ID_WMV3}},
    {kCodecTypeWmv7,           {AV_CODEC_ID_WMV1}},
    {kCodecTypeWmv8,           {AV_CODEC_ID_WMV2}},
    {kCodecTypeVc1Advanced,    {AV_CODEC_ID_VC1}},
    {kCodecTypeMsMpeg4V1,      {AV_CODEC_ID_MSMPEG4V1}},
    {kCodecTypeMsMpeg4V2,      {AV_CODEC_ID_MSMPEG4V2}},
    {kCodecTypeMsMpeg4V3,      {AV_CODEC_ID_MSMPEG4V3}},
    {kCodecTypeMjpeg,          {AV_CODEC_ID_MJPEG}},
    {kCodecTypeVp6,            {AV_CODEC_ID_VP6, AV_CODEC_ID_VP6A, AV_CODEC_ID_VP6F}},
    {kCodecTypeVp7,            {AV_CODEC_ID_VP7}},
    {kCodecTypeVp8,            {AV_CODEC_ID_VP8}},
    {kCodecTypeMpeg1,          {AV_CODEC_ID_MPEG1VIDEO}},
    {kCodecTypeTheora,         {AV_CODEC_ID_THEORA}},
    {kCodecTypeSorensonH263,   {AV_CODEC_ID_FLV1}},
    {kCodecTypeRealVideo,      {AV_CODEC_ID_RV10, AV_CODEC_ID_RV20, AV_CODEC_ID_RV30, AV_CODEC_ID_RV40}},
    {kCodecTypeVp9,            {AV_CODEC_ID_VP9}},
    {kCodecTypeHevc,           {AV_CODEC_ID_HEVC}},
    {kCodecTypeAv1,            {AV_CODEC_ID_AV1}},

    {kCodecTypeAac,            {AV_CODEC_ID_AAC, AV_CODEC_ID_AAC_LATM}},
    {kCodecTypeMp3,            {AV_CODEC_ID_MP3}},
    {kCodecTypeAc3,            {AV_CODEC_ID_AC3}},
    {kCodecTypeEac3,           {AV_CODEC_ID_EAC3}},
    {kCodecTypeDts,            {AV_CODEC_ID_DTS}},
    {kCodecTypeFlac,           {AV_CODEC_ID_FLAC}},
    {kCodecTypeVorbis,         {AV_CODEC_ID_VORBIS}},
    {kCodecTypeWmaV1,          {AV_CODEC_ID_WMAV1}},
    {kCodecTypeWmaV2,          {AV_CODEC_ID_WMAV2}},
    {kCodecTypeWmaPro,         {AV_CODEC_ID_WMAPRO}},
    {kCodecTypeWmaLossless,    {AV_CODEC_ID_WMALOSSLESS}},
    {kCodecTypeWmaVoice,       {AV_CODEC_ID_WMAVOICE}},
    {kCodecTypeAmrNb,          {AV_CODEC_ID_AMR_NB}},
    {kCodecTypeEvrc,           {AV_CODEC_ID_EVRC}},
    {kCodecTypeQcelp,          {AV_CODEC_ID_QCELP}},
    {kCodecTypeAdpcm,          {AV_CODEC_ID_ADPCM_MS, AV_CODEC_ID_ADPCM_IMA_WAV}},
    {kCodecTypeMp2,            {AV_CODEC_ID_MP2}},
    {kCodecTypeG711ALaw,       {AV_CODEC_ID_PCM_ALAW}},
    {kCodecTypeG711MuLaw,      {AV_CODEC_ID_PCM_MULAW}},
    {kCodecTypeG726,           {AV_CODEC_ID_ADPCM_G726, AV_CODEC_ID_ADPCM_G726LE}},
    {kCodecTypeRealAudio,      {AV_CODEC_ID_RA_144, AV_CODEC_ID_RA_288, AV_CODEC_ID_COOK, AV_CODEC_ID_SIPR}},
    {kCodecTypeAmrWb,          {AV_CODEC_ID_AMR_WB}},
    {kCodecTypeMp1,            {AV_CODEC_ID_MP1}},
    {kCodecTypeOpus,           {AV_CODEC_ID_OPUS}},
    {kCodecTypeAlac,           {AV_CODEC_ID_ALAC}},
    {kCodecTypeDsd,            {AV_CODEC_ID_DSD_LSBF, AV_CODEC_ID_DSD_MSBF,
                                AV_CODEC_ID_DSD_LSBF_PLANAR, AV_CODEC_ID_DSD_MSBF_PLANAR}},
    {kCodecTypeMpegHMha1,      {AV_CODEC_ID_MPEGH_3D_AUDIO}},

    {kCodecTypeSubRip,         {AV_CODEC_ID_SUBRIP}},
    {kCodecTypeSsa,            {AV_CODEC_ID_SSA}},
    {kCodecTypeAss,            {AV_CODEC_ID_ASS}},
});
// clang-format on

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
    std::array<char, AV_FOURCC_MAX_STRING_SIZE> tag{};
    av_fourcc_make_string(tag.data(), codecTag);
    const auto variant = std::ranges::find_if(kVariants, [&](const Variant& each) {
        return each.id == id && (each.tag == nullptr || strcasecmp(each.tag, tag.data()) == 0) &&
               (each.profile == kAnyProfile || each.profile == profile);
    });
    if (variant != kVariants.end()) return static_cast<uint32_t>(variant->type);
    const auto found = std::ranges::find_if(
            kCodecs, [&](const Codec& each) { return std::ranges::count(each.ids, id) > 0; });
    if (found != kCodecs.end()) return static_cast<uint32_t>(found->type);
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
