// Format keys: the names under which this library, the container parsers and the decoder glue store
// their own facts about a track in an AMediaFormat, beside the platform's AMEDIAFORMAT_KEY_* names.
//
// The strings are case-sensitive and are a contract with components that look them up letter by
// letter. Odd spellings ("wavefrom-data", "Layer-info", ...FLACCOECSPECIFICDATA) are part of it.

#pragma once

namespace android {

// clang-format off
inline constexpr const char* ZREAMEDIAFORMAT_KEY_UNSYNCEDLYRICS        = "unsynced-lyrics";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_USEARBITRARYMODE      = "use-arbitrary-mode";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DIVXVERSION           = "divx-version";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_LAYERINFO             = "Layer-info";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVERSION            = "wma-version";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAFORMATTAG          = "wma-format-tag";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ENDOFTEXT             = "end-of-text";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EXISTSYNCFRAME        = "exist-sync-frame";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_REALSAMPLERATE        = "real-sample-rate";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_REALSAMPLEBITS        = "real-sample-bits";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_SAMPLEBITS            = "Sample-Bits";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_PCMENCODING           = "pcm-encoding";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMABITSPERSAMPLE      = "wma-bits-per-sample";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMABLOCKALIGN         = "wma-block-align";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVIRPKTSIZE         = "wma-vir-pkt-size";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAENCODEOPT          = "wma-encode-opt";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMACHANNELMASK        = "wma-channel-mask";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAADBENCOPT1         = "wma-adv-enc-opt1";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAADBENCOPT2         = "wma-adv-enc-opt2";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVOICEENCOPT1       = "wma-voice-enc-opt1";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVOICEENCOPT20      = "wma-voice-enc-opt2_0";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WMAVOICEENCOPT21      = "wma-voice-enc-opt2_1";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ADPCMWAVEFORMAT       = "adpcm-codec-specific-data";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA  = "flac-codec-specific-data";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MINBLOCKSIZE          = "min-block-size";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MAXBLOCKSIZE          = "max-block-size";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MINFRAMESIZE          = "min-frame-size";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MAXFRAMESIZE          = "max-frame-size";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_THEORASPECIFICDATA    = "theora-codec-specific-data";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER     = "vc1-sequence-header";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVFORM               = "wavefrom-data";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVFORM2              = "wavefrom-data2";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_BOOKMARKOFFSET        = "bookmark-offset";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_BOOKMARKSIZE          = "bookmark-size";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVRIFFOFFSET         = "wav-RIFF-offset";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVRIFFSIZE           = "wav-RIFF-size";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVLISTOFFSET         = "wav-LIST-offset";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_WAVLISTSIZE           = "wav-LIST-size";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FLACPADDINGOFFSET     = "flac-padding-offset";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FLACPADDINGSIZE       = "flac-padding-size";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AACFORMATADIF         = "aac-format-adif";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ALACSPECIFICDATA      = "alac-codec-specific-data";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ROTATIONOFFSET        = "rotation-offset";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_BITSPERSAMPLE         = "bits-per-sample";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_SPHEREVIEW            = "sphere-view";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_TEXTSPECIFICDATA      = "text-specific-data";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ENCODINGTYPE          = "encoding-type";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DSDSAMPLERATE         = "dsd-sample-rate";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EDITORFPS100          = "editor-fps-100";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EDITORSYNCNUM         = "editor-sync-num";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EDITORSYNCTABLE       = "editor-sync-table";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_VIDEORECORDTYPE       = "video-record-type";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_RECMODE               = "key-rec-mode";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_KEYBURSTID            = "key-burst-id";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_USERMESSAGE           = "user-message";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_EDITOFFSET            = "edit-offset";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ISZRVIDEO             = "is-zr-video";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ISZRMPEGH             = "is-zr-mpegh";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MIXEDENCODINGTYPE     = "mixed-encoding-type";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MQALIGHTSTATE         = "mqa-light-state";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MQAORIGINALSAMPLERATE = "mqa-original-sample-rate";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FLACSTREAMINFO        = "FLAC-streaminfo";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FILEFORMAT            = "file-format";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AUDIOZOOM             = "audio-zoom";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_MPEG4PARTITION        = "mpeg4-data-partition";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DLNANPTOFFSET         = "dlna-npt-offset";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DLNASCANMODE          = "dlna-scan-mode";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_DLNASEEKMODE          = "dlna-seek-mode";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AUDIOZOOMX            = "audio-zoom-x";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AUDIOZOOMY            = "audio-zoom-y";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_AUDIOZOOMENABLE       = "audio-zoom-enable";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_FOAINFO               = "foa-info";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_PLAYREADY             = "play-ready";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_ISADTS                = "is-adts";
inline constexpr const char* ZREAMEDIAFORMAT_KEY_NOOFFLOAD             = "no-offload";
// clang-format on

}  // namespace android
