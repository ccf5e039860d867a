// Audio components that take the layouts of the device's decoders: ALAC, WMA, RealAudio.

#include "Helper/base/Log.h"
#include "Helper/omx/Parameters.h"
#include "Helper/omx/Values.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace android {
namespace {

using omx::kInputPort;
using omx::kOutputPort;

constexpr status_t kDoesNotApply = -1;

constexpr OMX_INDEXTYPE kIndexParamAudioAlac = omx::vendorIndex(0x7FA30C07);

enum class AlacKey { kChannels, kSampleRate };
using AlacValues = omx::Values<AlacKey, 2>;

enum class WmaKey {
    kVersion,
    kAdvEncOpt1,
    kAdvEncOpt2,
    kVirPktSize,
    kVoiceEncOpt1,
    kVoiceEncOpt20,
    kVoiceEncOpt21,
    kChannels,
    kSampleRate,
    kBitRate,
    kEncodeOpt,
    kBlockAlign,
    kBitsPerSample,
    kFormatTag,
    kCount,
};
using WmaValues = omx::Values<WmaKey, static_cast<size_t>(WmaKey::kCount)>;

enum class RaKey {
    kChannels,
    kSampleRate,
    kActualRate,
    kBitsPerSample,
    kAudioQuality,
    kFlavorIndex,
    kBitsPerFrame,
    kGranularity,
    kFourCC,
    kCount,
};
using RaValues = omx::Values<RaKey, static_cast<size_t>(RaKey::kCount)>;

// Tools search logs for these texts, the blanks in them included.
// clang-format off
constexpr AlacValues::Keys kAlacKeys{{
        {kZreKeyChannelCount,      "CHECK(msg->findInt32(getMsgKey(kZreKeyChannelCount), &numChannels)) failed."},
        {kZreKeySampleRate,        "CHECK(msg->findInt32(getMsgKey(kZreKeySampleRate), &sampleRate)) failed."},
}};
constexpr WmaValues::Keys kWmaKeys{{
        {kZreKeyWMAVersion,        nullptr},  // never required
        {kZreKeyWMAAdvEncOpt1,     "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAAdvEncOpt1),&advencopt1)) failed."},
        {kZreKeyWMAAdvEncOpt2,     "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAAdvEncOpt2), &advencopt2)) failed."},
        {kZreKeyWMAVirPktSize,     "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAVirPktSize), &virpktsize)) failed."},
        {kZreKeyWMAVoiceEncOpt1,   "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAVoiceEncOpt1), &voiceencopt1)) failed."},
        {kZreKeyWMAVoiceEncOpt20,  "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAVoiceEncOpt20), &voiceencopt20)) failed."},
        {kZreKeyWMAVoiceEncOpt21,  "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAVoiceEncOpt21), &voiceencopt21)) failed."},
        {kZreKeyChannelCount,      "CHECK(msg->findInt32(getMsgKey(kZreKeyChannelCount), &numChannels)) failed."},
        {kZreKeySampleRate,        "CHECK(msg->findInt32(getMsgKey(kZreKeySampleRate), &sampleRate)) failed."},
        {kZreKeyBitRate,           "CHECK(msg->findInt32(getMsgKey(kZreKeyBitRate), &bitRate)) failed."},
        {kZreKeyWMAEncodeOpt,      "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAEncodeOpt), &encodeOpt)) failed."},
        {kZreKeyWMABlockAlign,     "CHECK(msg->findInt32(getMsgKey(kZreKeyWMABlockAlign), &blockAlign)) failed."},
        {kZreKeyWMABitsPerSample,  "CHECK(msg->findInt32(getMsgKey(kZreKeyWMABitsPerSample), &bitsPerSample)) failed."},
        {kZreKeyWMAFormatTag,      "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAFormatTag), &formatTag)) failed."},
}};
constexpr RaValues::Keys kRaKeys{{
        {kZreKeyChannelCount,      "CHECK(msg->findInt32(getMsgKey(kZreKeyChannelCount), &numChannels)) failed."},
        {kZreKeySampleRate,        "CHECK(msg->findInt32(getMsgKey(kZreKeySampleRate), &sampleRate)) failed."},
        {kZreKeyRAActualRate,      "CHECK(msg->findInt32(getMsgKey(kZreKeyRAActualRate), &raActualRate)) failed."},
        {kZreKeyBitsPerSample,     "CHECK(msg->findInt32(getMsgKey(kZreKeyBitsPerSample), &bitsPerSample)) failed."},
        {kZreKeyRAAudioQuality,    "CHECK(msg->findInt32(getMsgKey(kZreKeyRAAudioQuality), &raAudioQuality)) failed."},
        {kZreKeyRAFlavorIndex,     "CHECK(msg->findInt32(getMsgKey(kZreKeyRAFlavorIndex), &raFlavorIndex)) failed."},
        {kZreKeyRABitsPerFrame,    "CHECK(msg->findInt32(getMsgKey(kZreKeyRABitsPerFrame), &raBitsPerFrame)) failed."},
        {kZreKeyRAGranularity,     "CHECK(msg->findInt32(getMsgKey(kZreKeyRAGranularity), &raGranularity)) failed."},
        {kZreKeyRAFourCC,          "CHECK(msg->findInt32(getMsgKey(kZreKeyRAFourCC), &raFourCC)) failed."},
}};
// clang-format on

AlacValues readAlac(const AMessage& message) {
    return {kAlacKeys, message};
}

WmaValues readWma(const AMessage& message) {
    return {kWmaKeys, message};
}

RaValues readRa(const AMessage& message) {
    return {kRaKeys, message};
}

status_t setAlac(const AlacValues& values, IOMXNode& node) {
    const int32_t channels = values.require(AlacKey::kChannels);
    const int32_t sampleRate = values.require(AlacKey::kSampleRate);
    omx::ParameterImage<44> params;
    params.putHeader(kInputPort);
    omx::checkOk(params.get(node, kIndexParamAudioAlac));
    params.put32(12, channels);
    params.put32(16, sampleRate);
    return params.set(node, kIndexParamAudioAlac);  // 20 to 43 are the component's own
}

constexpr uint32_t kWmaVoice = 3;

// The reads that only some versions need, in the order in which the lack of one is found.
void requireOptions(const WmaValues& values, uint32_t version) {
    if (version == 0 || version > kWmaVoice) return;
    values.require(WmaKey::kAdvEncOpt1);
    if (version == kWmaVoice) {
        values.require(WmaKey::kVoiceEncOpt1);
        values.require(WmaKey::kVoiceEncOpt20);
        values.require(WmaKey::kVoiceEncOpt21);
    } else {
        values.require(WmaKey::kAdvEncOpt2);
    }
    values.require(WmaKey::kVirPktSize);
}

void putWma(omx::ParameterImage<64>* params, const WmaValues& values, uint32_t version) {
    params->put16(12, values.require(WmaKey::kChannels));
    params->put32(16, values.require(WmaKey::kBitRate));
    params->put32(28, values.require(WmaKey::kSampleRate));
    params->put16(32, values.require(WmaKey::kBlockAlign));
    params->put16(34, values.require(WmaKey::kEncodeOpt));
    params->put16(44, values.require(WmaKey::kFormatTag));
    params->put16(46, values.require(WmaKey::kBitsPerSample));
    if (version == 0) return;
    params->put16(36, values.require(WmaKey::kAdvEncOpt1));
    if (version == kWmaVoice) {
        params->put32(52, values.require(WmaKey::kVoiceEncOpt1));
        params->put32(56, values.require(WmaKey::kVoiceEncOpt20));
        params->put32(60, values.require(WmaKey::kVoiceEncOpt21));
    } else {
        params->put32(40, values.require(WmaKey::kAdvEncOpt2));
    }
}

status_t setWma(const WmaValues& values, IOMXNode& node) {
    const auto found = values.find(WmaKey::kVersion);
    if (!found) {
        ZR_LOGW(base::kCodecTag, "Can't not find kZreKeyWMAVersion");
        return kDoesNotApply;
    }
    const auto version = static_cast<uint32_t>(*found);
    requireOptions(values, version);
    if (values.require(WmaKey::kChannels) > 2) return ERROR_UNSUPPORTED;
    for (const auto key : {WmaKey::kSampleRate, WmaKey::kBitRate, WmaKey::kEncodeOpt,
                           WmaKey::kBlockAlign, WmaKey::kBitsPerSample, WmaKey::kFormatTag}) {
        values.require(key);
    }
    if (version > kWmaVoice) return OK;

    omx::ParameterImage<64> params;
    params.putHeader(kInputPort);
    const status_t err = params.get(node, OMX_IndexParamAudioWma);
    // Voice decoders may refuse to tell and still take the values.
    if (err != OK && version != kWmaVoice) return err;
    putWma(&params, values, version);
    return params.set(node, OMX_IndexParamAudioWma);
}

status_t setRa(const RaValues& values, IOMXNode& node) {
    for (size_t i = 0; i < kRaKeys.size(); ++i) values.require(static_cast<RaKey>(i));
    omx::ParameterImage<44> params;
    params.putHeader(kInputPort);
    omx::checkOk(params.get(node, OMX_IndexParamAudioRa));
    params.put32(12, values.require(RaKey::kChannels));
    params.put32(16, values.require(RaKey::kSampleRate));
    params.put32(20, values.require(RaKey::kActualRate));
    params.put16(24, values.require(RaKey::kBitsPerSample));
    params.put16(26, values.require(RaKey::kAudioQuality));
    params.put16(28, values.require(RaKey::kFlavorIndex));
    params.put32(32, values.require(RaKey::kBitsPerFrame));
    params.put32(36, values.require(RaKey::kGranularity));
    params.put32(40, values.require(RaKey::kFourCC));
    return params.set(node, OMX_IndexParamAudioRa);
}

}  // namespace

status_t MediaCodecHelper::setAlacFormat(const sp<AMessage>& format, uint32_t portIndex,
                                         const sp<IOMXNode>& node, bool encoder) {
    if (encoder || portIndex == kOutputPort) return kDoesNotApply;
    return setAlac(readAlac(*format), *node);
}

status_t MediaCodecHelper::setAlacFormat(const sp<MetaData>& format, uint32_t portIndex,
                                         const sp<IOMXNode>& node, bool encoder) {
    if (encoder || portIndex == kOutputPort) return kDoesNotApply;
    return setAlac(omx::readFrom(format, readAlac), *node);
}

status_t MediaCodecHelper::setWMAFormat(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                        bool encoder) {
    return encoder ? kDoesNotApply : setWma(readWma(*format), *node);
}

status_t MediaCodecHelper::setWMAFormat(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                        bool encoder) {
    return encoder ? kDoesNotApply : setWma(omx::readFrom(format, readWma), *node);
}

status_t MediaCodecHelper::setRAFormat(const sp<AMessage>& format, uint32_t portIndex,
                                       const sp<IOMXNode>& node, bool encoder) {
    if (encoder || portIndex == kOutputPort) return kDoesNotApply;
    return setRa(readRa(*format), *node);
}

status_t MediaCodecHelper::setRAFormat(const sp<MetaData>& format, uint32_t portIndex,
                                       const sp<IOMXNode>& node, bool encoder) {
    if (encoder || portIndex == kOutputPort) return kDoesNotApply;
    return setRa(omx::readFrom(format, readRa), *node);
}

}  // namespace android
