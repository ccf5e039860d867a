// MIME types of streams, containers, subtitles and images, and the version of this library.
//
// A consumer compares the strings, never the pointers. Some strings stand under two names, because
// a container and the one stream that it holds are often called the same.

#pragma once

#include "zrcodecparser/Export.h"

namespace android {

// The version of the library that is loaded, which may be newer than these headers.
ZR_EXPORT extern const char* const ZRCODECPARSER_VERSION;

// clang-format off
// Audio streams
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AAC           = "audio/mp4a-latm";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADIF      = "audio/aac-adif";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADTS      = "audio/aac-adts";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AC3           = "audio/ac3";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_ADPCM         = "audio/adpcm";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AMR_NB        = "audio/3gpp";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AMR_WB        = "audio/amr-wb";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AMR_WB_PLUS   = "audio/amr-wb-plus";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_DTS           = "audio/dts";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_DTS_LBR       = "audio/dts-lbr";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_EAC3          = "audio/eac3";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_EVRC          = "audio/evrc";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_FLAC          = "audio/flac";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_G711_ALAW     = "audio/g711-alaw";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_G711_MLAW     = "audio/g711-mlaw";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_G726          = "audio/g726";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEG          = "audio/mpeg";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_LAYER_I  = "audio/mpeg-L1";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_LAYER_II = "audio/mpeg-L2";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MSGSM         = "audio/gsm";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_QCELP         = "audio/qcelp";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_QCELP_ZRSW    = "audio/x-zr-qcelp";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_EVRC_ZRSW     = "audio/x-zr-evrc";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_FLAC_ZRSW     = "audio/x-zr-flac";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_RA            = "audio/x-pn-realaudio";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_RAW           = "audio/raw";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_VORBIS        = "audio/vorbis";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_WMA           = "audio/x-zr-ms-wma";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_WMA_VOICE     = "audio/zr-wma-voice";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_OPUS          = "audio/opus";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MIDI          = "audio/midi";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_ALAC          = "audio/alac";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_ALAC_ZRSW     = "audio/x-zr-alac";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_DOP           = "audio/dop";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_DSD           = "audio/dsd";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AC4           = "audio/ac4";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEGH_MHA1    = "audio/mha1";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEGH_MHM1    = "audio/mhm1";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ZRSW      = "audio/x-zr-aac";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_ZRSW     = "audio/x-zr-mpeg";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_SCRAMBLED     = "audio/scrambled";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED  = "audio/notsupport";

// Video streams
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_AVC           = "video/avc";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_AVCS          = "video/savc";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_DIVX          = "video/divx";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_DIVX311       = "video/divx311";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_DIVX4         = "video/divx4";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_H263          = "video/3gpp";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_HEVC          = "video/hevc";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MJPG          = "video/mjpg";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG1         = "video/mpeg1";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG2         = "video/mpeg2";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4         = "video/mp4v-es";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4_DP      = "video/mp4v-esdp";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4ASP      = "video/mpeg4asp";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_RAW           = "video/raw";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_RV            = "video/x-pn-realvideo";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_THEORA        = "video/theora";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_WMV7          = "video/x-ms-wmv7";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_WMV8          = "video/x-ms-wmv8";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_WMV           = "video/x-ms-wmv";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_WMVS          = "video/s-wmv";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_VP8           = "video/x-vnd.on2.vp8";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_VP9           = "video/x-vnd.on2.vp9";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_VPX           = ZRE_MEDIA_MIMETYPE_VIDEO_VP8;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4       = "video/x-ms-mpeg4";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4V2     = "video/x-ms-mpeg4v2";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4V3     = "video/x-ms-mpeg4v3";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_AV1           = "video/av01";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_DOLBY_VISION  = "video/dolby-vision";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_SCRAMBLED     = "video/scrambled";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_VIDEO_NOTSUPPORTED  = "video/notsupport";

// Subtitles
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_3GPP           = "text/3gpp-tt";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_SUBRIP         = "application/x-subrip";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_XSUB           = "text/xsub";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_SSA            = "text/ssa";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_ASS            = "text/ass";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_TEXT_CLOSEDCAPTION  = "text/closedcaption";

// Images
inline constexpr const char* ZRE_MEDIA_MIMETYPE_IMAGE_ANDROID_HEIC  = "image/vnd.android.heic";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_IMAGE_AVIF          = "image/avif";

// Containers
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_3G2       = "video/3g2";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AAC       = "audio/aac";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AC3       = ZRE_MEDIA_MIMETYPE_AUDIO_AC3;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_WMA       = "audio/x-ms-wma";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_DTS       = ZRE_MEDIA_MIMETYPE_AUDIO_DTS;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_ASF       = "video/x-ms-asf";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AVI       = "video/avi";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_FLV       = "video/x-flv";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MATROSKA  = "video/x-matroska";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG2     = "video/mp2";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG2PS   = "video/mp2p";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG2TS   = "video/mp2ts";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG4     = "video/mp4";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_OGM       = "video/ogg";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_OGG       = "application/ogg";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_QCP       = "audio/vnd.qcelp";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_RM        = "video/rm";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_RA        = "audio/rm";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_WAV       = "audio/x-wav";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_WMV       = ZRE_MEDIA_MIMETYPE_VIDEO_WMV;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_FLAC      = ZRE_MEDIA_MIMETYPE_AUDIO_FLAC;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_DSF       = "audio/x-dsf";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_DFF       = "audio/x-dff";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MIDI      = ZRE_MEDIA_MIMETYPE_AUDIO_MIDI;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG      = ZRE_MEDIA_MIMETYPE_AUDIO_MPEG;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AAC_ADTS  = ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADTS;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AAC_ADIF  = ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADIF;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AMR_NB    = ZRE_MEDIA_MIMETYPE_AUDIO_AMR_NB;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AMR_WB    = ZRE_MEDIA_MIMETYPE_AUDIO_AMR_WB;
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_AIFF      = "audio/x-aiff";
inline constexpr const char* ZRE_MEDIA_MIMETYPE_CONTAINER_HEIF      = "image/heif";

// Data streams
inline constexpr const char* ZRE_MEDIA_MIMETYPE_DATA_TIMED_ID3      = "application/x-id3v4";
// clang-format on

}  // namespace android
