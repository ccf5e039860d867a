/// @file
/// The codes by which a container parser names a track's codec and a file's kind.
///
/// The MIME type that each codec code leads to, and when, is the subject of
/// MediaExtractorHelper::SupportCodecEx; docs/supported.md has a table of them. Video, audio and
/// subtitle codes share one number space; the file kinds are a separate one, although their numbers
/// overlap those of the subtitles.

#pragma once

#include <cstdint>

namespace android {

// clang-format off
/// The codec of a track.
enum CodecType : int32_t {
    // Video: 101 to 131
    kCodecTypeNoVideo      = 100,  ///< the track has no video codec
    kCodecTypeMpeg2        = 101,  ///< MPEG-2 (ITU-T H.262); offered even without a decoder
    kCodecTypeMpeg4        = 102,  ///< MPEG-4 Visual (ISO/IEC 14496-2)
    kCodecTypeH263         = 103,  ///< H.263 (ITU-T)
    kCodecTypeAvc          = 104,  ///< AVC (ITU-T H.264)
    kCodecTypeWmv          = 105,  ///< WMV 9 family, profile unknown to the container
    kCodecTypeWmv7         = 106,  ///< WMV 7, "WMV1"
    kCodecTypeWmv8         = 107,  ///< WMV 8, "WMV2"
    kCodecTypeVc1Simple    = 108,  ///< WMV 9, "WMV3", simple profile (SMPTE 421M)
    kCodecTypeVc1Main      = 109,  ///< WMV 9, "WMV3", main profile
    kCodecTypeVc1Advanced  = 110,  ///< VC-1, "WVC1", advanced profile
    kCodecTypeMsMpeg4V1    = 111,  ///< MS MPEG-4 version 1; never offered
    kCodecTypeMsMpeg4V2    = 112,  ///< MS MPEG-4 version 2; never offered
    kCodecTypeMsMpeg4V3    = 113,  ///< MS MPEG-4 version 3; never offered
    kCodecTypeMjpeg        = 114,  ///< Motion JPEG
    kCodecTypeVp6          = 115,  ///< VP6; never offered
    kCodecTypeVp7          = 116,  ///< VP7; never offered
    kCodecTypeVp8          = 117,  ///< VP8 (RFC 6386)
    kCodecTypeDivx311      = 118,  ///< DivX 3.11
    kCodecTypeMpeg1        = 119,  ///< MPEG-1 (ISO/IEC 11172-2); decoded by the MPEG-2 decoder
    kCodecTypeXvid         = 120,  ///< Xvid; decoded by the MPEG-4 decoder
    kCodecTypeTheora       = 121,  ///< Theora (Xiph)
    kCodecTypeSorensonH263 = 122,  ///< Flash Video's H.263; never offered
    kCodecTypeDivx4        = 123,  ///< DivX 4
    kCodecTypeDivx5        = 124,  ///< DivX 5
    kCodecTypeDivx6        = 125,  ///< DivX 6
    kCodecTypeMpeg4Asp     = 126,  ///< MPEG-4 Visual, advanced simple profile
    kCodecTypeRealVideo    = 127,  ///< RealVideo
    kCodecTypeVp9          = 128,  ///< VP9
    kCodecTypeHevc         = 129,  ///< HEVC (ITU-T H.265)
    kCodecTypeAv1          = 130,  ///< AV1
    kCodecTypeDolbyVision  = 131,  ///< Dolby Vision

    // Audio: 201 to 234
    kCodecTypeNoAudio      = 200,  ///< the track has no audio codec
    kCodecTypeAac          = 201,  ///< AAC, raw access units, AudioSpecificConfig beside them (ISO/IEC 14496-3)
    kCodecTypeMp3          = 202,  ///< MP3 (ISO/IEC 11172-3 layer III)
    kCodecTypeAc3          = 203,  ///< AC-3 (ETSI TS 102 366)
    kCodecTypeEac3         = 204,  ///< E-AC-3 (ETSI TS 102 366 annex E); offered even without a decoder
    kCodecTypeDts          = 205,  ///< DTS (ETSI TS 102 114)
    kCodecTypePcm          = 206,  ///< PCM
    kCodecTypeFlac         = 207,  ///< FLAC (RFC 9639)
    kCodecTypeVorbis       = 208,  ///< Vorbis (Xiph)
    kCodecTypeWma          = 209,  ///< WMA of an unknown version; never offered
    kCodecTypeWmaV1        = 210,  ///< WMA 1, WAVE format tag 0x0160
    kCodecTypeWmaV2        = 211,  ///< WMA 2, 0x0161
    kCodecTypeWmaPro       = 212,  ///< WMA Pro, 0x0162
    kCodecTypeWmaLossless  = 213,  ///< WMA Lossless, 0x0163
    kCodecTypeWmaVoice     = 214,  ///< WMA Voice, 0x000A
    kCodecTypeAmrNb        = 215,  ///< AMR-NB (3GPP TS 26.071)
    kCodecTypeEvrc         = 216,  ///< EVRC (3GPP2 C.S0014)
    kCodecTypeQcelp        = 217,  ///< QCELP (3GPP2 C.S0020)
    kCodecTypeAdpcm        = 218,  ///< ADPCM of WAVE files
    kCodecTypeMp2          = 219,  ///< MP2 (ISO/IEC 11172-3 layer II)
    kCodecTypeG711ALaw     = 220,  ///< A-law (ITU-T G.711)
    kCodecTypeG711MuLaw    = 221,  ///< mu-law (ITU-T G.711)
    kCodecTypeG726         = 222,  ///< G.726 (ITU-T)
    kCodecTypeRealAudio    = 223,  ///< RealAudio
    kCodecTypeAmrWb        = 224,  ///< AMR-WB (3GPP TS 26.171)
    kCodecTypeDtsLbr       = 225,  ///< DTS of low bit rate (ETSI TS 102 114)
    kCodecTypeAacAdts      = 226,  ///< AAC, access units behind ADTS headers
    kCodecTypeMp1          = 227,  ///< MP1 (ISO/IEC 11172-3 layer I)
    kCodecTypeOpus         = 228,  ///< Opus (RFC 6716)
    kCodecTypeAlac         = 229,  ///< ALAC
    kCodecTypeDop          = 230,  ///< DSD over PCM; never offered
    kCodecTypeDsd          = 231,  ///< DSD; never offered
    kCodecTypeAc4          = 232,  ///< AC-4 (ETSI TS 103 190); never offered
    kCodecTypeMpegHMha1    = 233,  ///< MPEG-H, raw (ISO/IEC 23008-3); offered even without a decoder
    kCodecTypeMpegHMhm1    = 234,  ///< MPEG-H, in MHAS packets; offered even without a decoder

    // Subtitles: only for text tracks
    kCodecTypeSubRip       = 301,  ///< text with times
    kCodecTypeSsa          = 302,  ///< SubStation Alpha
    kCodecTypeAss          = 303,  ///< Advanced SubStation Alpha
};

/// What MediaExtractorHelper::setFileMeta is told about a file, and the MIME type that it stores.
enum FileKind : int32_t {
    kFileKindAvi      = 300,  ///< video/avi
    kFileKindMatroska = 301,  ///< video/x-matroska
    kFileKindAsf      = 302,  ///< video/x-ms-asf
    kFileKindMpeg4    = 303,  ///< video/mp4
    kFileKindAc3      = 304,  ///< audio/ac3
    kFileKindDts      = 305,  ///< audio/dts
    kFileKindFlv      = 306,  ///< video/x-flv
    kFileKindOgm      = 307,  ///< video/ogg
    kFileKindQcp      = 308,  ///< audio/qcelp, the type of the stream in it
    kFileKindRm       = 309,  ///< video/rm
};
// clang-format on

}  // namespace android
