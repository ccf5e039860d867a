/// @file
/// MIME types of streams, containers, subtitles and images, and the version of this library.
///
/// Some types the library itself neither asks for nor stores: they are for parsers and players.
///
/// A consumer compares the strings, never the pointers. Some strings stand under two names, because
/// a container and the one stream that it holds are often called the same.

#pragma once

#include "zrcodecparser/Export.h"

/// What parsers and decoder glue call, and the platform's classes.
namespace android {

/// The version of the library that is loaded, which may be newer than these headers.
ZR_EXPORT extern const char* const ZRCODECPARSER_VERSION;

// clang-format off
/// @name Audio streams
/// @{
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AAC           = "audio/mp4a-latm";       ///< ISO/IEC 14496-3, raw access units
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADIF      = "audio/aac-adif";        ///< AAC behind an ADIF header
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADTS      = "audio/aac-adts";        ///< AAC behind ADTS headers
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AC3           = "audio/ac3";             ///< ETSI TS 102 366
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_ADPCM         = "audio/adpcm";           ///< of WAVE files
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AMR_NB        = "audio/3gpp";            ///< 3GPP TS 26.071
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AMR_WB        = "audio/amr-wb";          ///< 3GPP TS 26.171
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AMR_WB_PLUS   = "audio/amr-wb-plus";     ///< 3GPP TS 26.290
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_DTS           = "audio/dts";             ///< ETSI TS 102 114
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_DTS_LBR       = "audio/dts-lbr";         ///< ETSI TS 102 114, low bit rate
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_EAC3          = "audio/eac3";            ///< ETSI TS 102 366 annex E
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_EVRC          = "audio/evrc";            ///< 3GPP2 C.S0014
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_FLAC          = "audio/flac";            ///< RFC 9639
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_G711_ALAW     = "audio/g711-alaw";       ///< ITU-T G.711
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_G711_MLAW     = "audio/g711-mlaw";       ///< ITU-T G.711
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_G726          = "audio/g726";            ///< ITU-T G.726
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEG          = "audio/mpeg";            ///< MP3, and MP2 too: see MediaExtractorHelper::SupportCodecEx
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_LAYER_I  = "audio/mpeg-L1";         ///< ISO/IEC 11172-3
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_LAYER_II = "audio/mpeg-L2";         ///< ISO/IEC 11172-3
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MSGSM         = "audio/gsm";             ///< GSM 06.10 in blocks of 65 bytes
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_QCELP         = "audio/qcelp";           ///< 3GPP2 C.S0020
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_QCELP_ZRSW    = "audio/x-zr-qcelp";      ///< another type for it, of software decoders
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_EVRC_ZRSW     = "audio/x-zr-evrc";       ///< another type for it, of software decoders
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_FLAC_ZRSW     = "audio/x-zr-flac";       ///< another type for it, of software decoders
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_RA            = "audio/x-pn-realaudio";  ///< of RealMedia files
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_RAW           = "audio/raw";             ///< PCM
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_VORBIS        = "audio/vorbis";          ///< Xiph, Vorbis I
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_WMA           = "audio/x-zr-ms-wma";     ///< all versions but voice
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_WMA_VOICE     = "audio/zr-wma-voice";    ///< WAVE format tag 0x000A
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_OPUS          = "audio/opus";            ///< RFC 6716
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MIDI          = "audio/midi";            ///< notes
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_ALAC          = "audio/alac";            ///< a lossless codec of MPEG-4 files
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_ALAC_ZRSW     = "audio/x-zr-alac";       ///< another type for it, of software decoders
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_DOP           = "audio/dop";             ///< DSD over PCM
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_DSD           = "audio/dsd";             ///< one bit a sample
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AC4           = "audio/ac4";             ///< ETSI TS 103 190
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEGH_MHA1    = "audio/mha1";            ///< ISO/IEC 23008-3, raw
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEGH_MHM1    = "audio/mhm1";            ///< ISO/IEC 23008-3, in MHAS packets
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ZRSW      = "audio/x-zr-aac";        ///< another type for it, of software decoders
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_ZRSW     = "audio/x-zr-mpeg";       ///< another type for it, of software decoders
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_SCRAMBLED     = "audio/scrambled";       ///< encrypted
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED  = "audio/notsupport";      ///< the track cannot be played
/// @}

/// @name Video streams
/// @{
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_AVC           = "video/avc";                   ///< ITU-T H.264
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_AVCS          = "video/savc";                  ///< for parsers and players alone
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_DIVX          = "video/divx";                  ///< DivX 4 to 6
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_DIVX311       = "video/divx311";               ///< DivX 3.11
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_DIVX4         = "video/divx4";                 ///< DivX 4
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_H263          = "video/3gpp";                  ///< ITU-T H.263
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_HEVC          = "video/hevc";                  ///< ITU-T H.265
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MJPG          = "video/mjpg";                  ///< a JPEG picture a frame
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG1         = "video/mpeg1";                 ///< ISO/IEC 11172-2
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG2         = "video/mpeg2";                 ///< ITU-T H.262
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4         = "video/mp4v-es";               ///< ISO/IEC 14496-2
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4_DP      = "video/mp4v-esdp";             ///< ISO/IEC 14496-2 with data partitioning
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4ASP      = "video/mpeg4asp";              ///< ISO/IEC 14496-2, advanced simple profile
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_RAW           = "video/raw";                   ///< pictures as they are
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_RV            = "video/x-pn-realvideo";        ///< of RealMedia files
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_THEORA        = "video/theora";                ///< Xiph, Theora
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_WMV7          = "video/x-ms-wmv7";             ///< "WMV1"
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_WMV8          = "video/x-ms-wmv8";             ///< "WMV2"; not stored, see SupportCodecEx
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_WMV           = "video/x-ms-wmv";              ///< WMV 9, VC-1 (SMPTE 421M)
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_WMVS          = "video/s-wmv";                 ///< for parsers and players alone
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_VP8           = "video/x-vnd.on2.vp8";         ///< RFC 6386
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_VP9           = "video/x-vnd.on2.vp9";         ///< VP9 bitstream and decoding process
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_VPX           = ZRE_MEDIA_MIMETYPE_VIDEO_VP8;  ///< VP8 by an older name
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4       = "video/x-ms-mpeg4";            ///< the first of the family before WMV
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4V2     = "video/x-ms-mpeg4v2";          ///< the second
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4V3     = "video/x-ms-mpeg4v3";          ///< the third
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_AV1           = "video/av01";                  ///< AV1 bitstream and decoding process
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_DOLBY_VISION  = "video/dolby-vision";          ///< AVC or HEVC with a layer of metadata
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_SCRAMBLED     = "video/scrambled";             ///< encrypted
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_NOTSUPPORTED  = "video/notsupport";            ///< the track cannot be played
/// @}

/// @name Subtitles
/// @{
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_3GPP           = "text/3gpp-tt";          ///< 3GPP TS 26.245
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_SUBRIP         = "application/x-subrip";  ///< text with times
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_XSUB           = "text/xsub";             ///< pictures, of DivX files
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_SSA            = "text/ssa";              ///< SubStation Alpha
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_ASS            = "text/ass";              ///< Advanced SubStation Alpha
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_CLOSEDCAPTION  = "text/closedcaption";    ///< CTA-608, CTA-708
/// @}

/// @name Images
/// @{
inline constexpr const char* ZRE_MEDIA_MIMETYPE_IMAGE_ANDROID_HEIC  = "image/vnd.android.heic";  ///< HEVC pictures (ISO/IEC 23008-12)
inline constexpr const char* ZRE_MEDIA_MIMETYPE_IMAGE_AVIF          = "image/avif";              ///< AV1 pictures
/// @}

/// @name Containers
/// @{
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_3G2       = "video/3g2";                        ///< 3GPP2 C.S0050
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AAC       = "audio/aac";                        ///< AAC alone
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AC3       = ZRE_MEDIA_MIMETYPE_AUDIO_AC3;       ///< AC-3 alone
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_WMA       = "audio/x-ms-wma";                   ///< ASF with sound alone
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_DTS       = ZRE_MEDIA_MIMETYPE_AUDIO_DTS;       ///< DTS alone
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_ASF       = "video/x-ms-asf";                   ///< Advanced Systems Format
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AVI       = "video/avi";                        ///< RIFF with pictures
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_FLV       = "video/x-flv";                      ///< Flash Video
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MATROSKA  = "video/x-matroska";                 ///< RFC 9559, WebM too
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG2     = "video/mp2";                        ///< MPEG-2 of either kind
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG2PS   = "video/mp2p";                       ///< ITU-T H.222.0, program stream
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG2TS   = "video/mp2ts";                      ///< ITU-T H.222.0, transport stream
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG4     = "video/mp4";                        ///< ISO/IEC 14496-14
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_OGM       = "video/ogg";                        ///< RFC 3533 with pictures
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_OGG       = "application/ogg";                  ///< RFC 3533
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_QCP       = "audio/vnd.qcelp";                  ///< RFC 3625
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_RM        = "video/rm";                         ///< RealMedia with pictures
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_RA        = "audio/rm";                         ///< RealMedia with sound alone
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_WAV       = "audio/x-wav";                      ///< RIFF with PCM
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_WMV       = ZRE_MEDIA_MIMETYPE_VIDEO_WMV;       ///< ASF with pictures
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_FLAC      = ZRE_MEDIA_MIMETYPE_AUDIO_FLAC;      ///< RFC 9639
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_DSF       = "audio/x-dsf";                      ///< DSD stream file
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_DFF       = "audio/x-dff";                      ///< DSD interchange file
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MIDI      = ZRE_MEDIA_MIMETYPE_AUDIO_MIDI;      ///< notes
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG      = ZRE_MEDIA_MIMETYPE_AUDIO_MPEG;      ///< MPEG audio alone
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AAC_ADTS  = ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADTS;  ///< AAC behind ADTS headers
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AAC_ADIF  = ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADIF;  ///< AAC behind an ADIF header
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AMR_NB    = ZRE_MEDIA_MIMETYPE_AUDIO_AMR_NB;    ///< RFC 4867
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AMR_WB    = ZRE_MEDIA_MIMETYPE_AUDIO_AMR_WB;    ///< RFC 4867
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AIFF      = "audio/x-aiff";                     ///< Audio Interchange File Format
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_HEIF      = "image/heif";                       ///< ISO/IEC 23008-12
/// @}

/// @name Data streams
/// @{
inline constexpr const char* ZRE_MEDIA_MIMETYPE_DATA_TIMED_ID3      = "application/x-id3v4";  ///< ID3 tags among the samples
/// @}
// clang-format on

}  // namespace android
