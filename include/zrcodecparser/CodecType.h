// The codes by which a container parser names a track's codec and a file's kind.
//
// The MIME type that each codec code leads to, and when, is the subject of
// MediaExtractorHelper::SupportCodecEx. Video, audio and subtitle codes share one number space;
// the file kinds are a separate one, although their numbers overlap those of the subtitles.

#pragma once

#include <cstdint>

namespace android {

// clang-format off
enum CodecType : int32_t {
    // Video: 101 to 131
    kCodecTypeNoVideo      = 100,  // the track has no video codec
    kCodecTypeMpeg2        = 101,  // H.262; offered to the player even without a decoder
    kCodecTypeMpeg4        = 102,  // MPEG-4 Visual
    kCodecTypeH263         = 103,
    kCodecTypeAvc          = 104,  // H.264
    kCodecTypeWmv          = 105,  // WMV 9 family, profile unknown to the container
    kCodecTypeWmv7         = 106,  // "WMV1"
    kCodecTypeWmv8         = 107,  // "WMV2"
    kCodecTypeVc1Simple    = 108,  // "WMV3", simple profile
    kCodecTypeVc1Main      = 109,  // "WMV3", main profile
    kCodecTypeVc1Advanced  = 110,  // "WVC1"
    kCodecTypeMsMpeg4V1    = 111,
    kCodecTypeMsMpeg4V2    = 112,
    kCodecTypeMsMpeg4V3    = 113,
    kCodecTypeMjpeg        = 114,
    kCodecTypeVp6          = 115,
    kCodecTypeVp7          = 116,
    kCodecTypeVp8          = 117,
    kCodecTypeDivx311      = 118,
    kCodecTypeMpeg1        = 119,  // decoded by the MPEG-2 decoder
    kCodecTypeXvid         = 120,  // decoded by the MPEG-4 decoder
    kCodecTypeTheora       = 121,
    kCodecTypeSorensonH263 = 122,  // Flash Video's H.263
    kCodecTypeDivx4        = 123,
    kCodecTypeDivx5        = 124,
    kCodecTypeDivx6        = 125,
    kCodecTypeMpeg4Asp     = 126,  // MPEG-4 Visual, advanced simple profile
    kCodecTypeRealVideo    = 127,
    kCodecTypeVp9          = 128,
    kCodecTypeHevc         = 129,  // H.265
    kCodecTypeAv1          = 130,
    kCodecTypeDolbyVision  = 131,

    // Audio: 201 to 234
    kCodecTypeNoAudio      = 200,  // the track has no audio codec
    kCodecTypeAac          = 201,  // raw access units, AudioSpecificConfig beside them
    kCodecTypeMp3          = 202,
    kCodecTypeAc3          = 203,
    kCodecTypeEac3         = 204,  // offered to the player even without a decoder
    kCodecTypeDts          = 205,
    kCodecTypePcm          = 206,
    kCodecTypeFlac         = 207,
    kCodecTypeVorbis       = 208,
    kCodecTypeWma          = 209,  // WMA of an unknown version
    kCodecTypeWmaV1        = 210,  // WAVE format tag 0x0160
    kCodecTypeWmaV2        = 211,  // 0x0161
    kCodecTypeWmaPro       = 212,  // 0x0162
    kCodecTypeWmaLossless  = 213,  // 0x0163
    kCodecTypeWmaVoice     = 214,  // 0x000A
    kCodecTypeAmrNb        = 215,
    kCodecTypeEvrc         = 216,
    kCodecTypeQcelp        = 217,
    kCodecTypeAdpcm        = 218,
    kCodecTypeMp2          = 219,
    kCodecTypeG711ALaw     = 220,
    kCodecTypeG711MuLaw    = 221,
    kCodecTypeG726         = 222,
    kCodecTypeRealAudio    = 223,
    kCodecTypeAmrWb        = 224,
    kCodecTypeDtsLbr       = 225,
    kCodecTypeAacAdts      = 226,  // access units behind ADTS headers
    kCodecTypeMp1          = 227,
    kCodecTypeOpus         = 228,
    kCodecTypeAlac         = 229,
    kCodecTypeDop          = 230,  // DSD over PCM
    kCodecTypeDsd          = 231,
    kCodecTypeAc4          = 232,
    kCodecTypeMpegHMha1    = 233,  // offered to the player even without a decoder
    kCodecTypeMpegHMhm1    = 234,  // offered to the player even without a decoder

    // Subtitles: only for text tracks
    kCodecTypeSubRip       = 301,
    kCodecTypeSsa          = 302,
    kCodecTypeAss          = 303,
};

// What MediaExtractorHelper::setFileMeta is told about a file.
enum FileKind : int32_t {
    kFileKindAvi      = 300,
    kFileKindMatroska = 301,
    kFileKindAsf      = 302,
    kFileKindMpeg4    = 303,
    kFileKindAc3      = 304,
    kFileKindDts      = 305,
    kFileKindFlv      = 306,
    kFileKindOgm      = 307,
    kFileKindQcp      = 308,
    kFileKindRm       = 309,
};
// clang-format on

}  // namespace android
