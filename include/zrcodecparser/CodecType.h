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
    kCodecTypeMpeg2        = 101,  ///< H.262; offered to the player even without a decoder
    kCodecTypeMpeg4        = 102,  ///< MPEG-4 Visual
    kCodecTypeH263         = 103,  ///< ITU-T H.263
    kCodecTypeAvc          = 104,  ///< H.264
    kCodecTypeWmv          = 105,  ///< WMV 9 family, profile unknown to the container
    kCodecTypeWmv7         = 106,  ///< "WMV1"
    kCodecTypeWmv8         = 107,  ///< "WMV2"
    kCodecTypeVc1Simple    = 108,  ///< "WMV3", simple profile
    kCodecTypeVc1Main      = 109,  ///< "WMV3", main profile
    kCodecTypeVc1Advanced  = 110,  ///< "WVC1"
    kCodecTypeMsMpeg4V1    = 111,  ///< never offered
    kCodecTypeMsMpeg4V2    = 112,  ///< never offered
    kCodecTypeMsMpeg4V3    = 113,  ///< never offered
    kCodecTypeMjpeg        = 114,  ///< a JPEG picture a frame
    kCodecTypeVp6          = 115,  ///< never offered
    kCodecTypeVp7          = 116,  ///< never offered
    kCodecTypeVp8          = 117,  ///< RFC 6386
    kCodecTypeDivx311      = 118,  ///< MS MPEG-4 version 3 under another name
    kCodecTypeMpeg1        = 119,  ///< decoded by the MPEG-2 decoder
    kCodecTypeXvid         = 120,  ///< decoded by the MPEG-4 decoder
    kCodecTypeTheora       = 121,  ///< Xiph, Theora
    kCodecTypeSorensonH263 = 122,  ///< Flash Video's H.263; never offered
    kCodecTypeDivx4        = 123,  ///< MPEG-4 Visual by another name
    kCodecTypeDivx5        = 124,  ///< MPEG-4 Visual by another name
    kCodecTypeDivx6        = 125,  ///< MPEG-4 Visual by another name
    kCodecTypeMpeg4Asp     = 126,  ///< MPEG-4 Visual, advanced simple profile
    kCodecTypeRealVideo    = 127,  ///< of RealMedia files
    kCodecTypeVp9          = 128,  ///< VP9 bitstream and decoding process
    kCodecTypeHevc         = 129,  ///< H.265
    kCodecTypeAv1          = 130,  ///< AV1 bitstream and decoding process
    kCodecTypeDolbyVision  = 131,  ///< AVC or HEVC with a layer of metadata

    // Audio: 201 to 234
    kCodecTypeNoAudio      = 200,  ///< the track has no audio codec
    kCodecTypeAac          = 201,  ///< raw access units, AudioSpecificConfig beside them
    kCodecTypeMp3          = 202,  ///< ISO/IEC 11172-3 layer III
    kCodecTypeAc3          = 203,  ///< ETSI TS 102 366
    kCodecTypeEac3         = 204,  ///< offered to the player even without a decoder
    kCodecTypeDts          = 205,  ///< ETSI TS 102 114
    kCodecTypePcm          = 206,  ///< samples as they are
    kCodecTypeFlac         = 207,  ///< RFC 9639
    kCodecTypeVorbis       = 208,  ///< Xiph, Vorbis I
    kCodecTypeWma          = 209,  ///< WMA of an unknown version; never offered
    kCodecTypeWmaV1        = 210,  ///< WAVE format tag 0x0160
    kCodecTypeWmaV2        = 211,  ///< 0x0161
    kCodecTypeWmaPro       = 212,  ///< 0x0162
    kCodecTypeWmaLossless  = 213,  ///< 0x0163
    kCodecTypeWmaVoice     = 214,  ///< 0x000A
    kCodecTypeAmrNb        = 215,  ///< 3GPP TS 26.071
    kCodecTypeEvrc         = 216,  ///< 3GPP2 C.S0014
    kCodecTypeQcelp        = 217,  ///< 3GPP2 C.S0020
    kCodecTypeAdpcm        = 218,  ///< of WAVE files
    kCodecTypeMp2          = 219,  ///< ISO/IEC 11172-3 layer II
    kCodecTypeG711ALaw     = 220,  ///< ITU-T G.711
    kCodecTypeG711MuLaw    = 221,  ///< ITU-T G.711
    kCodecTypeG726         = 222,  ///< ITU-T G.726
    kCodecTypeRealAudio    = 223,  ///< of RealMedia files
    kCodecTypeAmrWb        = 224,  ///< 3GPP TS 26.171
    kCodecTypeDtsLbr       = 225,  ///< ETSI TS 102 114, low bit rate
    kCodecTypeAacAdts      = 226,  ///< access units behind ADTS headers
    kCodecTypeMp1          = 227,  ///< ISO/IEC 11172-3 layer I
    kCodecTypeOpus         = 228,  ///< RFC 6716
    kCodecTypeAlac         = 229,  ///< a lossless codec of MPEG-4 files
    kCodecTypeDop          = 230,  ///< DSD over PCM; never offered
    kCodecTypeDsd          = 231,  ///< one bit a sample; never offered
    kCodecTypeAc4          = 232,  ///< ETSI TS 103 190; never offered
    kCodecTypeMpegHMha1    = 233,  ///< offered to the player even without a decoder
    kCodecTypeMpegHMhm1    = 234,  ///< offered to the player even without a decoder

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
