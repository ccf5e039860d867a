// Audio components that take published parameters.

#include <algorithm>
#include <array>

#include "Helper/MediaCodecHelper/Component.h"
#include "Helper/base/Log.h"
#include "Helper/omx/ChannelMap.h"
#include "Helper/omx/Fields.h"
#include "Helper/omx/Parameters.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace android {
namespace {

using omx::kInputPort;
using omx::kOutputPort;

struct PcmValues {
    omx::Value channels;
    omx::Value sampleRate;
};

PcmValues readPcm(const AMessage& message) {
    return {omx::find(message, omx::kChannelCount), omx::find(message, omx::kSampleRate)};
}

void setCodingPcm(IOMXNode& node, uint32_t port) {
    auto def = omx::makeParams<OMX_PARAM_PORTDEFINITIONTYPE>(port);
    omx::checkOk(omx::getParams(node, OMX_IndexParamPortDefinition, &def));
    def.format.audio.eEncoding = OMX_AUDIO_CodingPCM;
    omx::checkOk(omx::setParams(node, OMX_IndexParamPortDefinition, def),
                 "mOMXNode->setParameter(OMX_IndexParamPortDefinition, &def, sizeof(def)),"
                 "(status_t)0");
}

OMX_AUDIO_PARAM_PCMMODETYPE getPcmMode(IOMXNode& node, uint32_t port) {
    auto params = omx::makeParams<OMX_AUDIO_PARAM_PCMMODETYPE>(port);
    omx::checkOk(omx::getParams(node, OMX_IndexParamAudioPcm, &params));
    return params;
}

status_t setPcm(const PcmValues& values, IOMXNode& node, uint32_t port) {
    const int32_t channels = omx::require(omx::kChannelCount, values.channels);
    const int32_t sampleRate = omx::require(omx::kSampleRate, values.sampleRate);
    setCodingPcm(node, port);

    // eEndian stays as the component has it.
    auto params = getPcmMode(node, port);
    params.nChannels = static_cast<OMX_U32>(channels);
    params.eNumData = OMX_NumericalDataSigned;
    params.bInterleaved = OMX_TRUE;
    params.nBitPerSample = 16;
    params.nSamplingRate = static_cast<OMX_U32>(sampleRate);
    params.ePCMMode = OMX_AUDIO_PCMModeLinear;
    const auto map = omx::channelMap(static_cast<size_t>(channels));
    omx::checkOk(map.empty() ? BAD_VALUE : OK,
                 "getOMXChannelMapping((size_t)numChannels, (int*)pcmParams.eChannelMapping),"
                 "(status_t)0");
    std::ranges::copy(map, params.eChannelMapping);
    return omx::setParams(node, OMX_IndexParamAudioPcm, params);
}

// ITU-T G.726: 2 to 5 bits a sample at 8 kHz.
OMX_AUDIO_G726MODE g726Mode(int32_t bitRate) {
    switch (bitRate) {
        case 16000: return OMX_AUDIO_G726Mode16;
        case 24000: return OMX_AUDIO_G726Mode24;
        case 40000: return OMX_AUDIO_G726Mode40;
        default: return OMX_AUDIO_G726Mode32;
    }
}

omx::Value readBitRate(const AMessage& message) {
    return omx::find(message, kZreKeyBitRate);
}

status_t setG726(omx::Value bitRate, IOMXNode& node) {
    if (!bitRate) {
        ZR_LOGE(base::kCodecTag, "INVALID_OPERATION bitratemode %d", 0);
        return INVALID_OPERATION;
    }
    auto params = omx::makeParams<OMX_AUDIO_PARAM_G726TYPE>(kInputPort);
    omx::checkOk(omx::getParams(node, OMX_IndexParamAudioG726, &params));
    params.nChannels = 1;
    params.eG726Mode = g726Mode(*bitRate);
    omx::checkOk(omx::setParams(node, OMX_IndexParamAudioG726, params));

    auto pcm = getPcmMode(node, kOutputPort);
    pcm.nChannels = 1;
    pcm.nSamplingRate = 8000;
    return omx::setParams(node, OMX_IndexParamAudioPcm, pcm);
}

using AacPresentation = OMX_AUDIO_PARAM_ANDROID_AACPRESENTATIONTYPE;

struct PresentationField {
    const char* messageKey;
    OMX_S32 OMX_AUDIO_PARAM_ANDROID_AACPRESENTATIONTYPE::*field;
};

constexpr auto kPresentationFields = std::to_array<PresentationField>({
        {"aac-max-output-channel_count", &AacPresentation::nMaxOutputChannels},
        {"aac-drc-cut-level", &AacPresentation::nDrcCut},
        {"aac-drc-boost-level", &AacPresentation::nDrcBoost},
        {"aac-drc-heavy-compression", &AacPresentation::nHeavyCompression},
        {"aac-target-ref-level", &AacPresentation::nTargetReferenceLevel},
        {"aac-encoded-target-level", &AacPresentation::nEncodedTargetLevel},
});

constexpr int32_t kLeftToTheDecoder = -1;

struct AacValues {
    PcmValues pcm;
    bool isAdif;
    AacPresentation presentation;
};

// The presentation's size and version are deliberately sent as zero.
AacValues readAac(const AMessage& message) {
    AacValues values{readPcm(message), false, {}};
    values.isAdif = omx::find(message, kZreKeyAACFormatADIF).value_or(0) != 0;
    for (const auto& [messageKey, field] : kPresentationFields) {
        values.presentation.*field = omx::find(message, messageKey).value_or(kLeftToTheDecoder);
    }
    return values;
}

status_t setAac(const AacValues& values, IOMXNode& node) {
    const auto& [channels, sampleRate] = values.pcm;
    if (!channels || !sampleRate) return INVALID_OPERATION;
    if (!values.isAdif) return kDoesNotApply;  // the platform sets up all others
    status_t err = setPcm(values.pcm, node, kOutputPort);
    if (err != OK) return err;

    auto profile = omx::makeParams<OMX_AUDIO_PARAM_AACPROFILETYPE>(kInputPort);
    err = omx::getParams(node, OMX_IndexParamAudioAac, &profile);
    if (err != OK) return err;
    profile.nChannels = static_cast<OMX_U32>(*channels);
    profile.nSampleRate = static_cast<OMX_U32>(*sampleRate);
    profile.eAACStreamFormat = OMX_AUDIO_AACStreamFormatADIF;
    err = omx::setParams(node, OMX_IndexParamAudioAac, profile);
    if (err != OK) {
        ZR_LOGW(base::kCodecTag,
                "did not set AudioAndroidAacPresentation due to error %d when setting "
                "AudioAac",
                err);
        return err;
    }
    omx::setParams(node, OMX_IndexParamAudioAndroidAacPresentation, values.presentation);
    return OK;
}

constexpr const char* kReconfigureOnEndpointChange = "omx.index.dolby.reconfig_on_endp_change";
constexpr uint32_t kReconfigure = 1;

}  // namespace

status_t MediaCodecHelper::setRawAudioFormat(const sp<AMessage>& format, uint32_t portIndex,
                                             const sp<IOMXNode>& node, bool encoder) {
    return encoder ? kDoesNotApply : setPcm(readPcm(*format), *node, portIndex);
}

status_t MediaCodecHelper::setRawAudioFormat(const sp<MetaData>& format, uint32_t portIndex,
                                             const sp<IOMXNode>& node, bool encoder) {
    return encoder ? kDoesNotApply : setPcm(readFrom(format, readPcm), *node, portIndex);
}

status_t MediaCodecHelper::getOMXChannelMapping(size_t channels, int map[]) {
    const auto places = omx::channelMap(channels);
    if (places.empty()) return BAD_VALUE;
    std::ranges::copy(places, map);
    return OK;
}

status_t MediaCodecHelper::setG711Format(const sp<AMessage>& format, uint32_t portIndex,
                                         const sp<IOMXNode>& node, bool encoder) {
    return setRawAudioFormat(format, portIndex, node, encoder);
}

status_t MediaCodecHelper::setG711Format(const sp<MetaData>& format, uint32_t portIndex,
                                         const sp<IOMXNode>& node, bool encoder) {
    return setRawAudioFormat(format, portIndex, node, encoder);
}

status_t MediaCodecHelper::setG726Format(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                         bool encoder) {
    return encoder ? kDoesNotApply : setG726(readBitRate(*format), *node);
}

status_t MediaCodecHelper::setG726Format(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                         bool encoder) {
    return encoder ? kDoesNotApply : setG726(readFrom(format, readBitRate), *node);
}

status_t MediaCodecHelper::setAACFormat(const sp<AMessage>& format, uint32_t,
                                        const sp<IOMXNode>& node, bool encoder) {
    return encoder ? kDoesNotApply : setAac(readAac(*format), *node);
}

status_t MediaCodecHelper::setAACFormat(const sp<MetaData>& format, uint32_t,
                                        const sp<IOMXNode>& node, bool encoder) {
    return encoder ? kDoesNotApply : setAac(readFrom(format, readAac), *node);
}

status_t MediaCodecHelper::setVOCodecFormat(const sp<AMessage>&, const char*, const sp<IOMXNode>&,
                                            bool) {
    return kDoesNotApply;
}

status_t MediaCodecHelper::setVOCodecFormat(const sp<MetaData>&, const char*, const sp<IOMXNode>&,
                                            bool) {
    return kDoesNotApply;
}

status_t MediaCodecHelper::setDolbyFormat(const sp<AMessage>&, uint32_t, const sp<IOMXNode>& node,
                                          bool encoder) {
    if (encoder) return kDoesNotApply;
    OMX_INDEXTYPE index{};
    const status_t err = node->getExtensionIndex(kReconfigureOnEndpointChange, &index);
    if (err != OK) return err;
    return omx::setParams(*node, index, kReconfigure);
}

}  // namespace android
