#include "Helper/vocabulary/MetaKeyTable.h"

#include <algorithm>
#include <array>

#include "zrcodecparser/MetaKeys.h"

namespace android {
namespace {

using enum MetaValue;

// The order counts: of a code that stands here twice, the first row gives the message key, but
// metadata made of a message keep the value of the later one. Codec data of a later row replace
// those of an earlier one.
// clang-format off
constexpr auto kRows = std::to_array<MetaKeyRow>({
        {kZreKeyBitRate                , "bitrate",                    kInt32},
        {kZreKeyAACCodecSpecificData   , "aac-codec-specific-data",    kCodecData},
        {kZreKeyRawCodecSpecificData   , "raw-codec-specific-data",    kCodecData},
        {kZreKeyDivXVersion            , "divx-version",               kInt32},
        {kZreKeyDivXDRM                , "divx-drm",                   kData},
        {kZreKeyWMAEncodeOpt           , "wma-encode-opt",             kInt32},
        {kZreKeyWMABlockAlign          , "wma-block-align",            kInt32},
        {kZreKeyWMAVersion             , "wma-version",                kInt32},
        {kZreKeyWMAAdvEncOpt1          , "wma-adv-enc-opt1",           kInt32},
        {kZreKeyWMAAdvEncOpt2          , "wma-adv-enc-opt2",           kInt32},
        {kZreKeyWMAFormatTag           , "wma-format-tag",             kInt32},
        {kZreKeyWMABitsPerSample       , "wma-bits-per-sample",        kInt32},
        {kZreKeyWMAVirPktSize          , "wma-vir-pkt-size",           kInt32},
        {kZreKeyWMAChannelMask         , "wma-channel-mask",           kInt32},
        {kZreKeyWMAVoiceEncOpt1        , "wma-voice-enc-opt1",         kInt32},
        {kZreKeyWMAVoiceEncOpt20       , "wma-voice-enc-opt2_0",       kInt32},
        {kZreKeyWMAVoiceEncOpt21       , "wma-voice-enc-opt2_1",       kInt32},
        {kZreKeyStride                 , "stride",                     kInt32},
        {kZreKeySliceHeight            , "slice-height",               kInt32},
        {kZreKeyFileFormat             , "file-format",                kText},
        {kZreKeyAACFormatADIF          , "aac-format-adif",            kInt32},
        {kZreKeyAACFormatLTP           , "aac-format-ltp",             kInt32},
        {kZreKeyAACFormatADTS          , "aac-format-adts",            kInt32},
        {kZreKeyAACProfile             , "aac-profile",                kInt32},
        {kZreKeyDTSSubtype             , "dts-subtype",                kInt32},
        {kZreKeyUseArbitraryMode       , "use-arbitrary-mode",         kInt32},
        {kZreKeySmoothStreaming        , "smooth-streaming",           kInt32},
        {kZreKeyHFR                    , "hfr",                        kInt32},
        {kZreKeySampleRate             , "sample-rate",                kInt32},
        {kZreKeyChannelCount           , "channel-count",              kInt32},
        {kZreKeyBitsPerSample          , "bits-per-sample",            kInt32},
        {kZreKeySampleBits             , "Sample-Bits",                kInt32},
        {kZreKeyVC1SequenceHeader      , "vc1-sequence-header",        kCodecData},
        {kZreKeyFLACCodecSpecificData  , "flac-codec-specific-data",   kCodecData},
        {kZreKeyADPCMCodecSpecificData , "adpcm-codec-specific-data",  kCodecData},
        {kZreKeyTheoraCodecSpecificData, "theora-codec-specific-data", kCodecData},
        {kZreKeyRotationDegrees        , "rotation-degrees",           kInt32},
        {kZreKeyMaxInputSize           , "max-input-size",             kInt32},
        {kZreKeyALACCodecSpecificData  , "alac-codec-specific-data",   kCodecData},
        {kZreKeyMQALightState          , "mqa-light-state",            kInt32},
        {kZreKeyMQAOriginalSampleRate  , "mqa-original-sample-rate",   kInt32},
        {kZreKeyRealSampleRate         , "real-sample-rate",           kInt32},
        {kZreKeyRealSampleBits         , "real-sample-bits",           kInt32},
        {kZreKeyUnsyncedLyrics         , "unsynced-lyrics",            kText},
        {kZreKeyBookmarkOffset         , "bookmark-offset",            kInt64},
        {kZreKeyBookmarkSize           , "bookmark-size",              kInt64},
        {kZreKeyWAVRIFFOffset          , "wav-RIFF-offset",            kInt64},
        {kZreKeyWAVRIFFSize            , "wav-RIFF-size",              kInt64},
        {kZreKeyWAVLISTOffset          , "wav-LIST-offset",            kInt64},
        {kZreKeyWAVLISTSize            , "wav-LIST-size",              kInt64},
        {kZreKeyFLACPaddingOffset      , "flac-padding-offset",        kInt64},
        {kZreKeyFLACPaddingSize        , "flac-padding-size",          kInt64},
        {kZreKeyRVCodecSpecificData    , "rv-codec-specific-data",     kCodecData},
        {kZreKeyRMCodecSpecificData    , "rm-codec-specific-data",     kCodecData},
        {kZreKeyRAFourCC               , "ra-fourcc",                  kInt32},
        {kZreKeyRAActualRate           , "ra-actual-rate",             kInt32},
        {kZreKeyRAAudioQuality         , "ra-audio-quality",           kInt32},
        {kZreKeyRAFlavorIndex          , "ra-flavor-index",            kInt32},
        {kZreKeyRABitsPerFrame         , "ra-bits-per-frame",          kInt32},
        {kZreKeyRAGranularity          , "ra-granularity",             kInt32},
        {kZreKeyLayerInfo              , "Layer-info",                 kInt32},
        {kZreKeyEndOfText              , "end-of-text",                kInt64},
        {kZreKeyExistSyncFrame         , "exist-sync-frame",           kInt64},
        {kZreKeyPCMEncoding            , "pcm-encoding",               kInt32},
        {kZreKeyMinBlockSize           , "min-block-size",             kInt32},
        {kZreKeyMaxBlockSize           , "max-block-size",             kInt32},
        {kZreKeyMinFrameSize           , "min-frame-size",             kInt32},
        {kZreKeyMaxFrameSize           , "max-frame-size",             kInt32},
        {kZreKeyWavefromData           , "wavefrom-data",              kData},
        {kZreKeyWavefromData2          , "wavefrom-data2",             kData},
        {kZreKeyRotationOffset         , "rotation-offset",            kInt32},
        {kZreKeySphereView             , "sphere-view",                kData},
        {kZreKeyEditorFPS100           , "editor-fps-100",             kInt32},
        {kZreKeyEditorSyncNum          , "editor-sync-num",            kInt32},
        {kZreKeyEditorSyncTable        , "editor-sync-table",          kData},
        {kZreKeyVideoRecordType        , "video-record-type",          kText},
        {kZreKeyKeyRecMode             , "key-rec-mode",               kText},
        {kZreKeyKeyBurstId             , "key-burst-id",               kText},
        {kZreKeyUserMessage            , "user-message",               kText},
        {kZreKeyEditOffset             , "edit-offset",                kInt32},
        {kZreKeyAudioZoom              , "audio-zoom",                 kInt32},
        {kZreKeyMpeg4DataPartition     , "mpeg4-data-partition",       kInt32},
        {kZreKeyDLNANPTOffset          , "dlna-npt-offset",            kInt64},
        {kZreKeyDLNAScanMode           , "dlna-scan-mode",             kInt32},
        {kZreKeyAudioZoomX             , "audio-zoom-x",               kInt32},
        {kZreKeyAudioZoomY             , "audio-zoom-y",               kInt32},
        {kZreKeyAudioZoomEnable        , "audio-zoom-enable",          kInt32},
        {kZreKeyFOAInfo                , "foa-info",                   kInt32},
        {kZreKeyPlayReady              , "play-ready",                 kInt32},
        {kZreKeyAACFormatADTS          , "is-adts",                    kInt32},
        {kZreKeyNoOffload              , "no-offload",                 kInt32},
        {kZreKeyDSDSampleRate          , "dsd-sample-rate",            kInt32},
        {kZreKeyIsZRMpegH              , "is-zr-mpegh",                kInt32},
        {kZreKeyMixedEncodingType      , "mixed-encoding-type",        kInt32},
        {kZreKeyFLACStreamInfo         , "FLAC-streaminfo",            kData},
        {kZreKeyFileFormat             , "file-format",                kText},
});
// clang-format on
static_assert(kRows.size() == 96);

}  // namespace

std::span<const MetaKeyRow> metaKeyRows() {
    return kRows;
}

const char* findMessageKey(uint32_t metaKey) {
    const auto* row = std::ranges::find(kRows, metaKey, &MetaKeyRow::metaKey);
    return row == kRows.end() ? nullptr : row->messageKey;
}

}  // namespace android
