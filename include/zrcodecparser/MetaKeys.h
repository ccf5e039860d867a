/// @file
/// The codes under which track metadata stand in a MetaDataBase: four characters, the first in the
/// most significant byte. Each is named after its key in an AMessage, which
/// MediaCodecHelper::getMsgKey gives.
///
/// A row is: code, type, key in a message, and the unit or meaning where the library knows it; see
/// FormatKeys.h for more. How the types travel between metadata and a message:
/// @code{.unparsed}
///   int32, int64, text  both ways; an entry of another type counts as absent
///   data                both ways, as bytes; in metadata they get the type kZreTypeNone
///   codec data          from a message likewise; but into it under "csd-0", whatever the codec, so
///                       that of several one is left, and none comes back under its own key
/// @endcode
/// Two keys share the code 'adts': "aac-format-adts" and "is-adts". From metadata both are stored
/// with the one value; into metadata "is-adts" wins where a message has both.

#pragma once

#include <cstdint>

namespace android {

/// How a code is written.
namespace metakeys {

/// The number of four characters.
constexpr uint32_t code(const char (&characters)[5]) {
    uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<uint8_t>(characters[i]);
    return value;
}

}  // namespace metakeys

// clang-format off
inline constexpr uint32_t kZreKeyBitRate                 = metakeys::code("brte");  ///< int32, "bitrate": bits per second
inline constexpr uint32_t kZreKeyAACCodecSpecificData    = metakeys::code("nacc");  ///< codec data, "aac-codec-specific-data"
inline constexpr uint32_t kZreKeyRawCodecSpecificData    = metakeys::code("rcsd");  ///< codec data, "raw-codec-specific-data"
inline constexpr uint32_t kZreKeyDivXVersion             = metakeys::code("DivX");  ///< int32, "divx-version": 0 = 3.11, 1 to 3 = DivX 4 to 6
inline constexpr uint32_t kZreKeyDivXDRM                 = metakeys::code("QDrm");  ///< data, "divx-drm"
inline constexpr uint32_t kZreKeyWMAEncodeOpt            = metakeys::code("eopt");  ///< int32, "wma-encode-opt"
inline constexpr uint32_t kZreKeyWMABlockAlign           = metakeys::code("blka");  ///< int32, "wma-block-align": bytes
inline constexpr uint32_t kZreKeyWMAVersion              = metakeys::code("wmav");  ///< int32, "wma-version": 0 = WMA 1, 2; 1 = Pro; 2 = Lossless; 3 = Voice
inline constexpr uint32_t kZreKeyWMAAdvEncOpt1           = metakeys::code("ade1");  ///< int32, "wma-adv-enc-opt1"
inline constexpr uint32_t kZreKeyWMAAdvEncOpt2           = metakeys::code("ade2");  ///< int32, "wma-adv-enc-opt2"
inline constexpr uint32_t kZreKeyWMAFormatTag            = metakeys::code("fmtt");  ///< int32, "wma-format-tag": WAVE format tag
inline constexpr uint32_t kZreKeyWMABitsPerSample        = metakeys::code("bsps");  ///< int32, "wma-bits-per-sample": bits
inline constexpr uint32_t kZreKeyWMAVirPktSize           = metakeys::code("vpks");  ///< int32, "wma-vir-pkt-size": bytes
inline constexpr uint32_t kZreKeyWMAChannelMask          = metakeys::code("chmk");  ///< int32, "wma-channel-mask"
inline constexpr uint32_t kZreKeyWMAVoiceEncOpt1         = metakeys::code("enc1");  ///< int32, "wma-voice-enc-opt1"
inline constexpr uint32_t kZreKeyWMAVoiceEncOpt20        = metakeys::code("en20");  ///< int32, "wma-voice-enc-opt2_0"
inline constexpr uint32_t kZreKeyWMAVoiceEncOpt21        = metakeys::code("en21");  ///< int32, "wma-voice-enc-opt2_1"
inline constexpr uint32_t kZreKeyStride                  = metakeys::code("widt");  ///< int32, "stride": pixels
inline constexpr uint32_t kZreKeySliceHeight             = metakeys::code("heig");  ///< int32, "slice-height": pixels
inline constexpr uint32_t kZreKeyFileFormat              = metakeys::code("ffmt");  ///< text, "file-format"
inline constexpr uint32_t kZreKeyAACFormatADIF           = metakeys::code("adif");  ///< int32, "aac-format-adif": not 0: ADIF
inline constexpr uint32_t kZreKeyAACFormatLTP            = metakeys::code("altp");  ///< int32, "aac-format-ltp"
inline constexpr uint32_t kZreKeyAACFormatADTS           = metakeys::code("adts");  ///< int32, "aac-format-adts": not 0: ADTS; is-adts too
inline constexpr uint32_t kZreKeyAACProfile              = metakeys::code("aacp");  ///< int32, "aac-profile"
inline constexpr uint32_t kZreKeyDTSSubtype              = metakeys::code("dtss");  ///< int32, "dts-subtype"
inline constexpr uint32_t kZreKeyUseArbitraryMode        = metakeys::code("ArbM");  ///< int32, "use-arbitrary-mode": 1: samples cut without regard to frames
inline constexpr uint32_t kZreKeySmoothStreaming         = metakeys::code("ESmS");  ///< int32, "smooth-streaming"
inline constexpr uint32_t kZreKeyHFR                     = metakeys::code("hfr ");  ///< int32, "hfr"
inline constexpr uint32_t kZreKeySampleRate              = metakeys::code("srte");  ///< int32, "sample-rate": Hz
inline constexpr uint32_t kZreKeyChannelCount            = metakeys::code("#chn");  ///< int32, "channel-count"
inline constexpr uint32_t kZreKeyBitsPerSample           = metakeys::code("bPsp");  ///< int32, "bits-per-sample": bits
inline constexpr uint32_t kZreKeySampleBits              = metakeys::code("sbit");  ///< int32, "Sample-Bits": bits
inline constexpr uint32_t kZreKeyVC1SequenceHeader       = metakeys::code("vcsh");  ///< codec data, "vc1-sequence-header"
inline constexpr uint32_t kZreKeyFLACCodecSpecificData   = metakeys::code("fLaC");  ///< codec data, "flac-codec-specific-data"
inline constexpr uint32_t kZreKeyADPCMCodecSpecificData  = metakeys::code("wfmt");  ///< codec data, "adpcm-codec-specific-data"
inline constexpr uint32_t kZreKeyTheoraCodecSpecificData = metakeys::code("theo");  ///< codec data, "theora-codec-specific-data"
inline constexpr uint32_t kZreKeyRotationDegrees         = metakeys::code("rotA");  ///< int32, "rotation-degrees": degrees
inline constexpr uint32_t kZreKeyMaxInputSize            = metakeys::code("inpS");  ///< int32, "max-input-size": bytes
inline constexpr uint32_t kZreKeyALACCodecSpecificData   = metakeys::code("alac");  ///< codec data, "alac-codec-specific-data"
inline constexpr uint32_t kZreKeyMQALightState           = metakeys::code("MQls");  ///< int32, "mqa-light-state"
inline constexpr uint32_t kZreKeyMQAOriginalSampleRate   = metakeys::code("MOsr");  ///< int32, "mqa-original-sample-rate": Hz
inline constexpr uint32_t kZreKeyRealSampleRate          = metakeys::code("Rsrt");  ///< int32, "real-sample-rate": Hz
inline constexpr uint32_t kZreKeyRealSampleBits          = metakeys::code("Rsbt");  ///< int32, "real-sample-bits": bits
inline constexpr uint32_t kZreKeyUnsyncedLyrics          = metakeys::code("uSlY");  ///< text, "unsynced-lyrics"
inline constexpr uint32_t kZreKeyBookmarkOffset          = metakeys::code("bkOf");  ///< int64, "bookmark-offset"
inline constexpr uint32_t kZreKeyBookmarkSize            = metakeys::code("bkSz");  ///< int64, "bookmark-size"
inline constexpr uint32_t kZreKeyWAVRIFFOffset           = metakeys::code("rfOf");  ///< int64, "wav-RIFF-offset"
inline constexpr uint32_t kZreKeyWAVRIFFSize             = metakeys::code("rfSz");  ///< int64, "wav-RIFF-size"
inline constexpr uint32_t kZreKeyWAVLISTOffset           = metakeys::code("ltOf");  ///< int64, "wav-LIST-offset"
inline constexpr uint32_t kZreKeyWAVLISTSize             = metakeys::code("ltSz");  ///< int64, "wav-LIST-size"
inline constexpr uint32_t kZreKeyFLACPaddingOffset       = metakeys::code("pdOf");  ///< int64, "flac-padding-offset"
inline constexpr uint32_t kZreKeyFLACPaddingSize         = metakeys::code("pdSz");  ///< int64, "flac-padding-size"
inline constexpr uint32_t kZreKeyRVCodecSpecificData     = metakeys::code("rvfi");  ///< codec data, "rv-codec-specific-data"
inline constexpr uint32_t kZreKeyRMCodecSpecificData     = metakeys::code("opaq");  ///< codec data, "rm-codec-specific-data"
inline constexpr uint32_t kZreKeyRAFourCC                = metakeys::code("rafc");  ///< int32, "ra-fourcc"
inline constexpr uint32_t kZreKeyRAActualRate            = metakeys::code("raar");  ///< int32, "ra-actual-rate": Hz
inline constexpr uint32_t kZreKeyRAAudioQuality          = metakeys::code("raaq");  ///< int32, "ra-audio-quality"
inline constexpr uint32_t kZreKeyRAFlavorIndex           = metakeys::code("rafi");  ///< int32, "ra-flavor-index"
inline constexpr uint32_t kZreKeyRABitsPerFrame          = metakeys::code("rabf");  ///< int32, "ra-bits-per-frame"
inline constexpr uint32_t kZreKeyRAGranularity           = metakeys::code("ragr");  ///< int32, "ra-granularity"
inline constexpr uint32_t kZreKeyLayerInfo               = metakeys::code("layr");  ///< int32, "Layer-info": layer of MPEG audio
inline constexpr uint32_t kZreKeyEndOfText               = metakeys::code("enot");  ///< int64, "end-of-text": microseconds
inline constexpr uint32_t kZreKeyExistSyncFrame          = metakeys::code("stss");  ///< int64, "exist-sync-frame": not 0: key frames are marked
inline constexpr uint32_t kZreKeyPCMEncoding             = metakeys::code("PCMe");  ///< int32, "pcm-encoding"
inline constexpr uint32_t kZreKeyMinBlockSize            = metakeys::code("mibs");  ///< int32, "min-block-size": samples
inline constexpr uint32_t kZreKeyMaxBlockSize            = metakeys::code("mabs");  ///< int32, "max-block-size": samples
inline constexpr uint32_t kZreKeyMinFrameSize            = metakeys::code("mifs");  ///< int32, "min-frame-size": bytes
inline constexpr uint32_t kZreKeyMaxFrameSize            = metakeys::code("mafs");  ///< int32, "max-frame-size": bytes
inline constexpr uint32_t kZreKeyWavefromData            = metakeys::code("wafm");  ///< data, "wavefrom-data"
inline constexpr uint32_t kZreKeyWavefromData2           = metakeys::code("waf2");  ///< data, "wavefrom-data2"
inline constexpr uint32_t kZreKeyRotationOffset          = metakeys::code("rotO");  ///< int32, "rotation-offset"
inline constexpr uint32_t kZreKeySphereView              = metakeys::code("svdt");  ///< data, "sphere-view"
inline constexpr uint32_t kZreKeyEditorFPS100            = metakeys::code("FPS1");  ///< int32, "editor-fps-100"
inline constexpr uint32_t kZreKeyEditorSyncNum           = metakeys::code("SncN");  ///< int32, "editor-sync-num"
inline constexpr uint32_t kZreKeyEditorSyncTable         = metakeys::code("SncT");  ///< data, "editor-sync-table"
inline constexpr uint32_t kZreKeyVideoRecordType         = metakeys::code("vrty");  ///< text, "video-record-type"
inline constexpr uint32_t kZreKeyKeyRecMode              = metakeys::code("rmod");  ///< text, "key-rec-mode"
inline constexpr uint32_t kZreKeyKeyBurstId              = metakeys::code("buid");  ///< text, "key-burst-id"
inline constexpr uint32_t kZreKeyUserMessage             = metakeys::code("umsg");  ///< text, "user-message"
inline constexpr uint32_t kZreKeyEditOffset              = metakeys::code("edof");  ///< int32, "edit-offset"
inline constexpr uint32_t kZreKeyAudioZoom               = metakeys::code("adzc");  ///< int32, "audio-zoom"
inline constexpr uint32_t kZreKeyMpeg4DataPartition      = metakeys::code("m4dp");  ///< int32, "mpeg4-data-partition"
inline constexpr uint32_t kZreKeyDLNANPTOffset           = metakeys::code("ntpT");  ///< int64, "dlna-npt-offset"
inline constexpr uint32_t kZreKeyDLNAScanMode            = metakeys::code("SMod");  ///< int32, "dlna-scan-mode"
inline constexpr uint32_t kZreKeyAudioZoomX              = metakeys::code("adzx");  ///< int32, "audio-zoom-x"
inline constexpr uint32_t kZreKeyAudioZoomY              = metakeys::code("adzy");  ///< int32, "audio-zoom-y"
inline constexpr uint32_t kZreKeyAudioZoomEnable         = metakeys::code("adze");  ///< int32, "audio-zoom-enable"
inline constexpr uint32_t kZreKeyFOAInfo                 = metakeys::code("SA3D");  ///< int32, "foa-info"
inline constexpr uint32_t kZreKeyPlayReady               = metakeys::code("prdm");  ///< int32, "play-ready"
inline constexpr uint32_t kZreKeyNoOffload               = metakeys::code("noff");  ///< int32, "no-offload"
inline constexpr uint32_t kZreKeyDSDSampleRate           = metakeys::code("Dsrt");  ///< int32, "dsd-sample-rate": Hz; the encoding type where the bridge stores it
inline constexpr uint32_t kZreKeyIsZRMpegH               = metakeys::code("zrmh");  ///< int32, "is-zr-mpegh"
inline constexpr uint32_t kZreKeyMixedEncodingType       = metakeys::code("mxet");  ///< int32, "mixed-encoding-type": a mask; the encoding type where the bridge stores it
inline constexpr uint32_t kZreKeyFLACStreamInfo          = metakeys::code("fLSi");  ///< data, "FLAC-streaminfo"

/// @name Stored by the bridge for older parsers
/// MediaExtractorHelper's convertZRAMediaFormatToMeta and
/// SupportCodecEx, store these; also kZreKeyUnsyncedLyrics, kZreKeyMixedEncodingType (the format's
/// "encoding-type", not its mask), kZreKeyDSDSampleRate and kZreKeyUseArbitraryMode. Nothing else
/// of a format reaches older parsers. None of these has a key in a message, so none travels on to
/// one, but width and height: they have the codes of kZreKeyStride and kZreKeySliceHeight, and
/// arrive as these.
/// @{
inline constexpr uint32_t kZreKeyMime          = metakeys::code("mime");  ///< text
inline constexpr uint32_t kZreKeyWidth         = metakeys::code("widt");  ///< int32, pixels
inline constexpr uint32_t kZreKeyHeight        = metakeys::code("heig");  ///< int32, pixels
inline constexpr uint32_t kZreKeyHEVCConfig    = metakeys::code("hvcc");  ///< data of kZreTypeHEVCConfig: ISO/IEC 14496-15 8.3.3.1.2
inline constexpr uint32_t kZreKeyAlbum         = metakeys::code("albu");  ///< text
inline constexpr uint32_t kZreKeyArtist        = metakeys::code("arti");  ///< text
inline constexpr uint32_t kZreKeyAlbumArtist   = metakeys::code("aart");  ///< text
inline constexpr uint32_t kZreKeyComposer      = metakeys::code("comp");  ///< text
inline constexpr uint32_t kZreKeyGenre         = metakeys::code("genr");  ///< text
inline constexpr uint32_t kZreKeyTitle         = metakeys::code("titl");  ///< text
inline constexpr uint32_t kZreKeyYear          = metakeys::code("year");  ///< text
inline constexpr uint32_t kZreKeyAuthor        = metakeys::code("auth");  ///< text
inline constexpr uint32_t kZreKeyCDTrackNumber = metakeys::code("cdtr");  ///< text
inline constexpr uint32_t kZreKeyDiscNumber    = metakeys::code("dnum");  ///< text
inline constexpr uint32_t kZreKeyCompilation   = metakeys::code("cpil");  ///< text
inline constexpr uint32_t kZreKeyAlbumArt      = metakeys::code("albA");  ///< data of kZreTypeNone: the picture's file
/// @}

inline constexpr uint32_t kZreKeyHEVCParameterSets = metakeys::code("hcsd");  ///< data of kZreTypeHEVCConfig, from MediaCodecHelper::parseHEVCCodecSpecificData

/// @name Types of data
/// @{
inline constexpr uint32_t kZreTypeNone       = metakeys::code("none");  ///< of any other data
inline constexpr uint32_t kZreTypeHEVCConfig = metakeys::code("hvcc");  ///< of HEVC codec data
/// @}
// clang-format on

}  // namespace android
