/// @file
/// Format keys: the names under which this library, the container parsers and the decoder glue
/// store their own facts about a track in an AMediaFormat, beside the platform's AMEDIAFORMAT_KEY_*
/// names.
///
/// The strings are case-sensitive and are a contract with components that look them up letter by
/// letter. Odd spellings ("wavefrom-data", "Layer-info", ...FLACCOECSPECIFICDATA) are part of it.
///
/// A format's entries keep their keys in the AMessage from which a component is set up. Between
/// that and metadata MediaCodecHelper carries them under the codes of MetaKeys.h, but for
///   - "encoding-type", "text-specific-data", "is-zr-video", "dlna-seek-mode", which have no code;
///   - "exist-sync-frame" as setTrackMeta stores it: an int32, where metadata expect an int64;
///   - what is stored under another type than the one that stands here.
/// The bridge for older parsers, MediaExtractorHelper::convertZRAMediaFormatToMeta, takes three of
/// them from a format: "unsynced-lyrics", "encoding-type", "dsd-sample-rate".

#pragma once

namespace android {

// clang-format off
/// @name Facts of a track or sample
/// Stored by MediaExtractorHelper::setTrackMeta and setEndTime.
/// @{
inline constexpr const char* ZREAMEDIAFORMAT_KEY_REALSAMPLERATE   = "real-sample-rate";     ///< int32, Hz: as the container says it
inline constexpr const char* ZREAMEDIAFORMAT_KEY_REALSAMPLEBITS   = "real-sample-bits";     ///< int32, bits: as the container says it, 0 = unknown
inline constexpr const char* ZREAMEDIAFORMAT_KEY_SAMPLEBITS       = "Sample-Bits";          ///< int32, bits; absent when unknown
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMABITSPERSAMPLE = "wma-bits-per-sample";  ///< int32, bits, rounded up to whole bytes
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMABLOCKALIGN    = "wma-block-align";      ///< int32, bytes
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVIRPKTSIZE    = "wma-vir-pkt-size";     ///< int32, bytes: the block alignment again
inline constexpr const char* ZREAMEDIAFORMAT_KEY_BITSPERSAMPLE    = "bits-per-sample";      ///< int32, bits; absent when unknown; the platform's key of that name
inline constexpr const char* ZREAMEDIAFORMAT_KEY_PCMENCODING      = "pcm-encoding";         ///< int32: 3 = 8-bit PCM, 2 = any other; absent with Sample-Bits; the platform's key of that name
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EXISTSYNCFRAME   = "exist-sync-frame";     ///< int32, 1: the container marks key frames; absent otherwise
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ENDOFTEXT        = "end-of-text";          ///< int64, microseconds: when a subtitle goes
/// @}

/// @name What belongs to a codec
/// Stored by MediaExtractorHelper::SupportCodecEx.
/// @{
inline constexpr const char* ZREAMEDIAFORMAT_KEY_USEARBITRARYMODE = "use-arbitrary-mode";  ///< int32, 1: samples come cut without regard to frames; else 0
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DIVXVERSION      = "divx-version";        ///< int32: 0 = DivX 3.11, 1 = 4, 2 = 5, 3 = 6
inline constexpr const char* ZREAMEDIAFORMAT_KEY_LAYERINFO        = "Layer-info";          ///< int32: the layer of MPEG audio, 2 or 3
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVERSION       = "wma-version";         ///< int32: 0 = WMA 1 and 2, 1 = Pro, 2 = Lossless, 3 = Voice
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAFORMATTAG     = "wma-format-tag";      ///< int32: WAVE format tag
/// @}

/// @name Codec data
/// Stored by MediaExtractorHelper::setAudioConfig and setVideoConfig.
/// @{
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAENCODEOPT         = "wma-encode-opt";              ///< int32, from 16 bits of WMA extra data
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMACHANNELMASK       = "wma-channel-mask";            ///< int32: WMA Pro, Lossless, Voice
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAADBENCOPT1        = "wma-adv-enc-opt1";            ///< int32: WMA Pro, Lossless; from 16 bits, Voice
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAADBENCOPT2        = "wma-adv-enc-opt2";            ///< int32: WMA Pro, Lossless
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVOICEENCOPT1      = "wma-voice-enc-opt1";          ///< int32: WMA Voice
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVOICEENCOPT20     = "wma-voice-enc-opt2_0";        ///< int32: WMA Voice
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVOICEENCOPT21     = "wma-voice-enc-opt2_1";        ///< int32: WMA Voice
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ADPCMWAVEFORMAT      = "adpcm-codec-specific-data";   ///< bytes: as the container has them
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA = "flac-codec-specific-data";    ///< bytes: as the container has them
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MINBLOCKSIZE         = "min-block-size";              ///< int32, samples: FLAC STREAMINFO
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MAXBLOCKSIZE         = "max-block-size";              ///< int32, samples
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MINFRAMESIZE         = "min-frame-size";              ///< int32, bytes; 0 = unknown
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MAXFRAMESIZE         = "max-frame-size";              ///< int32, bytes; 0 = unknown
inline constexpr const char* ZREAMEDIAFORMAT_KEY_THEORASPECIFICDATA   = "theora-codec-specific-data";  ///< bytes: as the container has them
inline constexpr const char* ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER    = "vc1-sequence-header";         ///< bytes: see MediaExtractorHelper::setVC1SeqHeader
/// @}

/// @name Stored from tags
/// @{
inline constexpr const char* ZREAMEDIAFORMAT_KEY_UNSYNCEDLYRICS    = "unsynced-lyrics";      ///< text: Vorbis comment UNSYNCEDLYRICS
inline constexpr const char* ZREAMEDIAFORMAT_KEY_RECMODE           = "key-rec-mode";         ///< text: Vorbis comment lvrm
inline constexpr const char* ZREAMEDIAFORMAT_KEY_USERMESSAGE       = "user-message";         ///< text: Vorbis comment DESCRIPTION
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MIXEDENCODINGTYPE = "mixed-encoding-type";  ///< int32, a mask: see ID3::checkMixedEncodingtype
/// @}

/// @name Read by the library and stored by parsers
/// The bridge for older parsers reads the first two, the set-up of components the others.
/// @{
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ENCODINGTYPE  = "encoding-type";    ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DSDSAMPLERATE = "dsd-sample-rate";  ///< int32, Hz: only that it is there counts
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AACFORMATADIF = "aac-format-adif";  ///< int32, not 0: AAC behind an ADIF header
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ISADTS        = "is-adts";          ///< int32, not 0: AAC behind ADTS headers
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FILEFORMAT    = "file-format";      ///< text: the container's MIME type; "video/avi" counts for Qualcomm video decoders
/// @}

/// @name Between parsers and players
/// The library only carries them. The type is the one under which they travel to metadata.
/// @{
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVFORM               = "wavefrom-data";             ///< bytes
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVFORM2              = "wavefrom-data2";            ///< bytes
inline constexpr const char* ZREAMEDIAFORMAT_KEY_BOOKMARKOFFSET        = "bookmark-offset";           ///< int64
inline constexpr const char* ZREAMEDIAFORMAT_KEY_BOOKMARKSIZE          = "bookmark-size";             ///< int64
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVRIFFOFFSET         = "wav-RIFF-offset";           ///< int64
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVRIFFSIZE           = "wav-RIFF-size";             ///< int64
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVLISTOFFSET         = "wav-LIST-offset";           ///< int64
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVLISTSIZE           = "wav-LIST-size";             ///< int64
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FLACPADDINGOFFSET     = "flac-padding-offset";       ///< int64
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FLACPADDINGSIZE       = "flac-padding-size";         ///< int64
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ALACSPECIFICDATA      = "alac-codec-specific-data";  ///< bytes
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ROTATIONOFFSET        = "rotation-offset";           ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_SPHEREVIEW            = "sphere-view";               ///< bytes
inline constexpr const char* ZREAMEDIAFORMAT_KEY_TEXTSPECIFICDATA      = "text-specific-data";        ///< of a type that the library does not know
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EDITORFPS100          = "editor-fps-100";            ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EDITORSYNCNUM         = "editor-sync-num";           ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EDITORSYNCTABLE       = "editor-sync-table";         ///< bytes
inline constexpr const char* ZREAMEDIAFORMAT_KEY_VIDEORECORDTYPE       = "video-record-type";         ///< text
inline constexpr const char* ZREAMEDIAFORMAT_KEY_KEYBURSTID            = "key-burst-id";              ///< text
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EDITOFFSET            = "edit-offset";               ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ISZRVIDEO             = "is-zr-video";               ///< of a type that the library does not know
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ISZRMPEGH             = "is-zr-mpegh";               ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MQALIGHTSTATE         = "mqa-light-state";           ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MQAORIGINALSAMPLERATE = "mqa-original-sample-rate";  ///< int32, Hz
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FLACSTREAMINFO        = "FLAC-streaminfo";           ///< bytes
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AUDIOZOOM             = "audio-zoom";                ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MPEG4PARTITION        = "mpeg4-data-partition";      ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DLNANPTOFFSET         = "dlna-npt-offset";           ///< int64
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DLNASCANMODE          = "dlna-scan-mode";            ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DLNASEEKMODE          = "dlna-seek-mode";            ///< of a type that the library does not know
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AUDIOZOOMX            = "audio-zoom-x";              ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AUDIOZOOMY            = "audio-zoom-y";              ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AUDIOZOOMENABLE       = "audio-zoom-enable";         ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FOAINFO               = "foa-info";                  ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_PLAYREADY             = "play-ready";                ///< int32
inline constexpr const char* ZREAMEDIAFORMAT_KEY_NOOFFLOAD             = "no-offload";                ///< int32
/// @}
// clang-format on

}  // namespace android
