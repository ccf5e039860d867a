// The codes under which track metadata stand in a MetaDataBase: four characters, the first in the
// most significant byte. Each is named after its key in an AMessage, which
// MediaCodecHelper::getMsgKey gives.

#pragma once

#include <cstdint>

namespace android {

namespace metakeys {

constexpr uint32_t code(const char (&characters)[5]) {
    uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<uint8_t>(characters[i]);
    return value;
}

}  // namespace metakeys

// clang-format off
inline constexpr uint32_t kZreKeyBitRate                 = metakeys::code("brte");  // bitrate
inline constexpr uint32_t kZreKeyAACCodecSpecificData    = metakeys::code("nacc");  // aac-codec-specific-data
inline constexpr uint32_t kZreKeyRawCodecSpecificData    = metakeys::code("rcsd");  // raw-codec-specific-data
inline constexpr uint32_t kZreKeyDivXVersion             = metakeys::code("DivX");  // divx-version
inline constexpr uint32_t kZreKeyDivXDRM                 = metakeys::code("QDrm");  // divx-drm
inline constexpr uint32_t kZreKeyWMAEncodeOpt            = metakeys::code("eopt");  // wma-encode-opt
inline constexpr uint32_t kZreKeyWMABlockAlign           = metakeys::code("blka");  // wma-block-align
inline constexpr uint32_t kZreKeyWMAVersion              = metakeys::code("wmav");  // wma-version
inline constexpr uint32_t kZreKeyWMAAdvEncOpt1           = metakeys::code("ade1");  // wma-adv-enc-opt1
inline constexpr uint32_t kZreKeyWMAAdvEncOpt2           = metakeys::code("ade2");  // wma-adv-enc-opt2
inline constexpr uint32_t kZreKeyWMAFormatTag            = metakeys::code("fmtt");  // wma-format-tag
inline constexpr uint32_t kZreKeyWMABitsPerSample        = metakeys::code("bsps");  // wma-bits-per-sample
inline constexpr uint32_t kZreKeyWMAVirPktSize           = metakeys::code("vpks");  // wma-vir-pkt-size
inline constexpr uint32_t kZreKeyWMAChannelMask          = metakeys::code("chmk");  // wma-channel-mask
inline constexpr uint32_t kZreKeyWMAVoiceEncOpt1         = metakeys::code("enc1");  // wma-voice-enc-opt1
inline constexpr uint32_t kZreKeyWMAVoiceEncOpt20        = metakeys::code("en20");  // wma-voice-enc-opt2_0
inline constexpr uint32_t kZreKeyWMAVoiceEncOpt21        = metakeys::code("en21");  // wma-voice-enc-opt2_1
inline constexpr uint32_t kZreKeyStride                  = metakeys::code("widt");  // stride
inline constexpr uint32_t kZreKeySliceHeight             = metakeys::code("heig");  // slice-height
inline constexpr uint32_t kZreKeyFileFormat              = metakeys::code("ffmt");  // file-format
inline constexpr uint32_t kZreKeyAACFormatADIF           = metakeys::code("adif");  // aac-format-adif
inline constexpr uint32_t kZreKeyAACFormatLTP            = metakeys::code("altp");  // aac-format-ltp
inline constexpr uint32_t kZreKeyAACFormatADTS           = metakeys::code("adts");  // aac-format-adts
inline constexpr uint32_t kZreKeyAACProfile              = metakeys::code("aacp");  // aac-profile
inline constexpr uint32_t kZreKeyDTSSubtype              = metakeys::code("dtss");  // dts-subtype
inline constexpr uint32_t kZreKeyUseArbitraryMode        = metakeys::code("ArbM");  // use-arbitrary-mode
inline constexpr uint32_t kZreKeySmoothStreaming         = metakeys::code("ESmS");  // smooth-streaming
inline constexpr uint32_t kZreKeyHFR                     = metakeys::code("hfr ");  // hfr
inline constexpr uint32_t kZreKeySampleRate              = metakeys::code("srte");  // sample-rate
inline constexpr uint32_t kZreKeyChannelCount            = metakeys::code("#chn");  // channel-count
inline constexpr uint32_t kZreKeyBitsPerSample           = metakeys::code("bPsp");  // bits-per-sample
inline constexpr uint32_t kZreKeySampleBits              = metakeys::code("sbit");  // Sample-Bits
inline constexpr uint32_t kZreKeyVC1SequenceHeader       = metakeys::code("vcsh");  // vc1-sequence-header
inline constexpr uint32_t kZreKeyFLACCodecSpecificData   = metakeys::code("fLaC");  // flac-codec-specific-data
inline constexpr uint32_t kZreKeyADPCMCodecSpecificData  = metakeys::code("wfmt");  // adpcm-codec-specific-data
inline constexpr uint32_t kZreKeyTheoraCodecSpecificData = metakeys::code("theo");  // theora-codec-specific-data
inline constexpr uint32_t kZreKeyRotationDegrees         = metakeys::code("rotA");  // rotation-degrees
inline constexpr uint32_t kZreKeyMaxInputSize            = metakeys::code("inpS");  // max-input-size
inline constexpr uint32_t kZreKeyALACCodecSpecificData   = metakeys::code("alac");  // alac-codec-specific-data
inline constexpr uint32_t kZreKeyMQALightState           = metakeys::code("MQls");  // mqa-light-state
inline constexpr uint32_t kZreKeyMQAOriginalSampleRate   = metakeys::code("MOsr");  // mqa-original-sample-rate
inline constexpr uint32_t kZreKeyRealSampleRate          = metakeys::code("Rsrt");  // real-sample-rate
inline constexpr uint32_t kZreKeyRealSampleBits          = metakeys::code("Rsbt");  // real-sample-bits
inline constexpr uint32_t kZreKeyUnsyncedLyrics          = metakeys::code("uSlY");  // unsynced-lyrics
inline constexpr uint32_t kZreKeyBookmarkOffset          = metakeys::code("bkOf");  // bookmark-offset
inline constexpr uint32_t kZreKeyBookmarkSize            = metakeys::code("bkSz");  // bookmark-size
inline constexpr uint32_t kZreKeyWAVRIFFOffset           = metakeys::code("rfOf");  // wav-RIFF-offset
inline constexpr uint32_t kZreKeyWAVRIFFSize             = metakeys::code("rfSz");  // wav-RIFF-size
inline constexpr uint32_t kZreKeyWAVLISTOffset           = metakeys::code("ltOf");  // wav-LIST-offset
inline constexpr uint32_t kZreKeyWAVLISTSize             = metakeys::code("ltSz");  // wav-LIST-size
inline constexpr uint32_t kZreKeyFLACPaddingOffset       = metakeys::code("pdOf");  // flac-padding-offset
inline constexpr uint32_t kZreKeyFLACPaddingSize         = metakeys::code("pdSz");  // flac-padding-size
inline constexpr uint32_t kZreKeyRVCodecSpecificData     = metakeys::code("rvfi");  // rv-codec-specific-data
inline constexpr uint32_t kZreKeyRMCodecSpecificData     = metakeys::code("opaq");  // rm-codec-specific-data
inline constexpr uint32_t kZreKeyRAFourCC                = metakeys::code("rafc");  // ra-fourcc
inline constexpr uint32_t kZreKeyRAActualRate            = metakeys::code("raar");  // ra-actual-rate
inline constexpr uint32_t kZreKeyRAAudioQuality          = metakeys::code("raaq");  // ra-audio-quality
inline constexpr uint32_t kZreKeyRAFlavorIndex           = metakeys::code("rafi");  // ra-flavor-index
inline constexpr uint32_t kZreKeyRABitsPerFrame          = metakeys::code("rabf");  // ra-bits-per-frame
inline constexpr uint32_t kZreKeyRAGranularity           = metakeys::code("ragr");  // ra-granularity
inline constexpr uint32_t kZreKeyLayerInfo               = metakeys::code("layr");  // Layer-info
inline constexpr uint32_t kZreKeyEndOfText               = metakeys::code("enot");  // end-of-text
inline constexpr uint32_t kZreKeyExistSyncFrame          = metakeys::code("stss");  // exist-sync-frame
inline constexpr uint32_t kZreKeyPCMEncoding             = metakeys::code("PCMe");  // pcm-encoding
inline constexpr uint32_t kZreKeyMinBlockSize            = metakeys::code("mibs");  // min-block-size
inline constexpr uint32_t kZreKeyMaxBlockSize            = metakeys::code("mabs");  // max-block-size
inline constexpr uint32_t kZreKeyMinFrameSize            = metakeys::code("mifs");  // min-frame-size
inline constexpr uint32_t kZreKeyMaxFrameSize            = metakeys::code("mafs");  // max-frame-size
inline constexpr uint32_t kZreKeyWavefromData            = metakeys::code("wafm");  // wavefrom-data
inline constexpr uint32_t kZreKeyWavefromData2           = metakeys::code("waf2");  // wavefrom-data2
inline constexpr uint32_t kZreKeyRotationOffset          = metakeys::code("rotO");  // rotation-offset
inline constexpr uint32_t kZreKeySphereView              = metakeys::code("svdt");  // sphere-view
inline constexpr uint32_t kZreKeyEditorFPS100            = metakeys::code("FPS1");  // editor-fps-100
inline constexpr uint32_t kZreKeyEditorSyncNum           = metakeys::code("SncN");  // editor-sync-num
inline constexpr uint32_t kZreKeyEditorSyncTable         = metakeys::code("SncT");  // editor-sync-table
inline constexpr uint32_t kZreKeyVideoRecordType         = metakeys::code("vrty");  // video-record-type
inline constexpr uint32_t kZreKeyKeyRecMode              = metakeys::code("rmod");  // key-rec-mode
inline constexpr uint32_t kZreKeyKeyBurstId              = metakeys::code("buid");  // key-burst-id
inline constexpr uint32_t kZreKeyUserMessage             = metakeys::code("umsg");  // user-message
inline constexpr uint32_t kZreKeyEditOffset              = metakeys::code("edof");  // edit-offset
inline constexpr uint32_t kZreKeyAudioZoom               = metakeys::code("adzc");  // audio-zoom
inline constexpr uint32_t kZreKeyMpeg4DataPartition      = metakeys::code("m4dp");  // mpeg4-data-partition
inline constexpr uint32_t kZreKeyDLNANPTOffset           = metakeys::code("ntpT");  // dlna-npt-offset
inline constexpr uint32_t kZreKeyDLNAScanMode            = metakeys::code("SMod");  // dlna-scan-mode
inline constexpr uint32_t kZreKeyAudioZoomX              = metakeys::code("adzx");  // audio-zoom-x
inline constexpr uint32_t kZreKeyAudioZoomY              = metakeys::code("adzy");  // audio-zoom-y
inline constexpr uint32_t kZreKeyAudioZoomEnable         = metakeys::code("adze");  // audio-zoom-enable
inline constexpr uint32_t kZreKeyFOAInfo                 = metakeys::code("SA3D");  // foa-info
inline constexpr uint32_t kZreKeyPlayReady               = metakeys::code("prdm");  // play-ready
inline constexpr uint32_t kZreKeyNoOffload               = metakeys::code("noff");  // no-offload
inline constexpr uint32_t kZreKeyDSDSampleRate           = metakeys::code("Dsrt");  // dsd-sample-rate
inline constexpr uint32_t kZreKeyIsZRMpegH               = metakeys::code("zrmh");  // is-zr-mpegh
inline constexpr uint32_t kZreKeyMixedEncodingType       = metakeys::code("mxet");  // mixed-encoding-type
inline constexpr uint32_t kZreKeyFLACStreamInfo          = metakeys::code("fLSi");  // FLAC-streaminfo

// What MediaExtractorHelper's bridge for older parsers stores beside kZreKeyUnsyncedLyrics,
// kZreKeyMixedEncodingType, kZreKeyDSDSampleRate and kZreKeyUseArbitraryMode. These have no key in
// a message; width and height share their codes with "stride" and "slice-height".
inline constexpr uint32_t kZreKeyMime          = metakeys::code("mime");
inline constexpr uint32_t kZreKeyWidth         = metakeys::code("widt");
inline constexpr uint32_t kZreKeyHeight        = metakeys::code("heig");
inline constexpr uint32_t kZreKeyHEVCConfig    = metakeys::code("hvcc");
inline constexpr uint32_t kZreKeyAlbum         = metakeys::code("albu");
inline constexpr uint32_t kZreKeyArtist        = metakeys::code("arti");
inline constexpr uint32_t kZreKeyAlbumArtist   = metakeys::code("aart");
inline constexpr uint32_t kZreKeyComposer      = metakeys::code("comp");
inline constexpr uint32_t kZreKeyGenre         = metakeys::code("genr");
inline constexpr uint32_t kZreKeyTitle         = metakeys::code("titl");
inline constexpr uint32_t kZreKeyYear          = metakeys::code("year");
inline constexpr uint32_t kZreKeyAuthor        = metakeys::code("auth");
inline constexpr uint32_t kZreKeyCDTrackNumber = metakeys::code("cdtr");
inline constexpr uint32_t kZreKeyDiscNumber    = metakeys::code("dnum");
inline constexpr uint32_t kZreKeyCompilation   = metakeys::code("cpil");
inline constexpr uint32_t kZreKeyAlbumArt      = metakeys::code("albA");

// What MediaCodecHelper::parseHEVCCodecSpecificData stores.
inline constexpr uint32_t kZreKeyHEVCParameterSets = metakeys::code("hcsd");

// Types of data in a MetaDataBase.
inline constexpr uint32_t kZreTypeNone       = metakeys::code("none");
inline constexpr uint32_t kZreTypeHEVCConfig = metakeys::code("hvcc");
// clang-format on

}  // namespace android
