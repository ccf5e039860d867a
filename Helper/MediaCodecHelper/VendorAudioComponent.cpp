// Audio components that take the layouts of the device's decoders: ALAC, WMA, RealAudio.

#include <algorithm>

#include "Helper/MediaCodecHelper/Component.h"
#include "Helper/base/Log.h"
#include "Helper/omx/Fields.h"
#include "Helper/omx/Parameters.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace android {
namespace {

using omx::kInputPort;
using omx::kNotSent;
using omx::kOutputPort;

constexpr OMX_INDEXTYPE kIndexParamAudioAlac = omx::vendorIndex(0x7FA30C07);
constexpr size_t kAlacSize = 44;
constexpr size_t kWmaSize = 64;
constexpr size_t kRaSize = 44;

constexpr uint32_t kLastWmaVersion = 3;

// Of "wma-version"; all behind the last are one.
constexpr omx::Versions wmaVersion(uint32_t version) {
    return 1u << std::min(version, kLastWmaVersion + 1);
}
constexpr omx::Versions kVersions1And2 = wmaVersion(1) | wmaVersion(2);
constexpr omx::Versions kVersion3 = wmaVersion(3);
constexpr omx::Versions kVersions1To3 = kVersions1And2 | kVersion3;
constexpr omx::Versions kAlways = omx::kAllVersions;

// Offset, width, versions, key, fatal text.
// clang-format off
constexpr auto kAlacFields = std::to_array<omx::Field>({
        {12, 4, kAlways, omx::kChannelCount},
        {16, 4, kAlways, omx::kSampleRate},
});
constexpr auto kWmaFields = std::to_array<omx::Field>({
        {36, 2,        kVersions1To3,  {kZreKeyWMAAdvEncOpt1,    "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAAdvEncOpt1),&advencopt1)) failed."}},
        {40, 4,        kVersions1And2, {kZreKeyWMAAdvEncOpt2,    "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAAdvEncOpt2), &advencopt2)) failed."}},
        {52, 4,        kVersion3,      {kZreKeyWMAVoiceEncOpt1,  "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAVoiceEncOpt1), &voiceencopt1)) failed."}},
        {56, 4,        kVersion3,      {kZreKeyWMAVoiceEncOpt20, "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAVoiceEncOpt20), &voiceencopt20)) failed."}},
        {60, 4,        kVersion3,      {kZreKeyWMAVoiceEncOpt21, "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAVoiceEncOpt21), &voiceencopt21)) failed."}},
        { 0, kNotSent, kVersions1To3,  {kZreKeyWMAVirPktSize,    "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAVirPktSize), &virpktsize)) failed."}},
        {12, 2,        kAlways,        omx::kChannelCount},
        {28, 4,        kAlways,        omx::kSampleRate},
        {16, 4,        kAlways,        {kZreKeyBitRate,          "CHECK(msg->findInt32(getMsgKey(kZreKeyBitRate), &bitRate)) failed."}},
        {34, 2,        kAlways,        {kZreKeyWMAEncodeOpt,     "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAEncodeOpt), &encodeOpt)) failed."}},
        {32, 2,        kAlways,        {kZreKeyWMABlockAlign,    "CHECK(msg->findInt32(getMsgKey(kZreKeyWMABlockAlign), &blockAlign)) failed."}},
        {46, 2,        kAlways,        {kZreKeyWMABitsPerSample, "CHECK(msg->findInt32(getMsgKey(kZreKeyWMABitsPerSample), &bitsPerSample)) failed."}},
        {44, 2,        kAlways,        {kZreKeyWMAFormatTag,     "CHECK(msg->findInt32(getMsgKey(kZreKeyWMAFormatTag), &formatTag)) failed."}},
});
constexpr auto kRaFields = std::to_array<omx::Field>({
        {12, 4, kAlways, omx::kChannelCount},
        {16, 4, kAlways, omx::kSampleRate},
        {20, 4, kAlways, {kZreKeyRAActualRate,     "CHECK(msg->findInt32(getMsgKey(kZreKeyRAActualRate), &raActualRate)) failed."}},
        {24, 2, kAlways, {kZreKeyBitsPerSample,    "CHECK(msg->findInt32(getMsgKey(kZreKeyBitsPerSample), &bitsPerSample)) failed."}},
        {26, 2, kAlways, {kZreKeyRAAudioQuality,   "CHECK(msg->findInt32(getMsgKey(kZreKeyRAAudioQuality), &raAudioQuality)) failed."}},
        {28, 2, kAlways, {kZreKeyRAFlavorIndex,    "CHECK(msg->findInt32(getMsgKey(kZreKeyRAFlavorIndex), &raFlavorIndex)) failed."}},
        {32, 4, kAlways, {kZreKeyRABitsPerFrame,   "CHECK(msg->findInt32(getMsgKey(kZreKeyRABitsPerFrame), &raBitsPerFrame)) failed."}},
        {36, 4, kAlways, {kZreKeyRAGranularity,    "CHECK(msg->findInt32(getMsgKey(kZreKeyRAGranularity), &raGranularity)) failed."}},
        {40, 4, kAlways, {kZreKeyRAFourCC,         "CHECK(msg->findInt32(getMsgKey(kZreKeyRAFourCC), &raFourCC)) failed."}},
});
// clang-format on

static_assert(omx::areApart(kAlacFields, kAlacSize));
static_assert(omx::areApart(kWmaFields, kWmaSize));
static_assert(omx::areApart(kRaFields, kRaSize));

auto readAlac(const AMessage& message) {
    return omx::readFields(kAlacFields, message);
}

auto readRa(const AMessage& message) {
    return omx::readFields(kRaFields, message);
}

struct WmaValues {
    omx::Value version;
    omx::Values<kWmaFields.size()> fields;
};

WmaValues readWma(const AMessage& message) {
    return {omx::find(message, kZreKeyWMAVersion), omx::readFields(kWmaFields, message)};
}

constexpr int32_t kMaxWmaChannels = 2;

status_t setWma(const WmaValues& values, IOMXNode& node) {
    if (!values.version) {
        ZR_LOGW(base::kCodecTag, "Can't not find kZreKeyWMAVersion");
        return kDoesNotApply;
    }
    const auto version = static_cast<uint32_t>(*values.version);
    for (size_t i = 0; i < kWmaFields.size(); ++i) {
        const omx::Field& field = kWmaFields[i];
        if ((field.versions & wmaVersion(version)) == 0) continue;
        const int32_t value = omx::require(field.key, values.fields[i]);
        const bool isChannelCount = field.key.metaKey == kZreKeyChannelCount;
        if (isChannelCount && value > kMaxWmaChannels) return ERROR_UNSUPPORTED;
    }
    if (version > kLastWmaVersion) return OK;

    omx::ParameterImage<kWmaSize> params;
    params.putHeader(kInputPort);
    const status_t err = params.get(node, OMX_IndexParamAudioWma);
    // Version 3 deliberately goes on without the component's own values.
    if (err != OK && wmaVersion(version) != kVersion3) return err;
    omx::putFields(kWmaFields, values.fields, &params, wmaVersion(version));
    return params.set(node, OMX_IndexParamAudioWma);
}

}  // namespace

status_t MediaCodecHelper::setAlacFormat(const sp<AMessage>& format, uint32_t portIndex,
                                         const sp<IOMXNode>& node, bool encoder) {
    if (encoder || portIndex == kOutputPort) return kDoesNotApply;
    return omx::setFields<kAlacSize>(kAlacFields, readAlac(*format), *node, kIndexParamAudioAlac);
}

status_t MediaCodecHelper::setAlacFormat(const sp<MetaData>& format, uint32_t portIndex,
                                         const sp<IOMXNode>& node, bool encoder) {
    if (encoder || portIndex == kOutputPort) return kDoesNotApply;
    return omx::setFields<kAlacSize>(kAlacFields, readFrom(format, readAlac), *node,
                                     kIndexParamAudioAlac);
}

status_t MediaCodecHelper::setWMAFormat(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                        bool encoder) {
    return encoder ? kDoesNotApply : setWma(readWma(*format), *node);
}

status_t MediaCodecHelper::setWMAFormat(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                        bool encoder) {
    return encoder ? kDoesNotApply : setWma(readFrom(format, readWma), *node);
}

status_t MediaCodecHelper::setRAFormat(const sp<AMessage>& format, uint32_t portIndex,
                                       const sp<IOMXNode>& node, bool encoder) {
    if (encoder || portIndex == kOutputPort) return kDoesNotApply;
    return omx::setFields<kRaSize>(kRaFields, readRa(*format), *node, OMX_IndexParamAudioRa);
}

status_t MediaCodecHelper::setRAFormat(const sp<MetaData>& format, uint32_t portIndex,
                                       const sp<IOMXNode>& node, bool encoder) {
    if (encoder || portIndex == kOutputPort) return kDoesNotApply;
    return omx::setFields<kRaSize>(kRaFields, readFrom(format, readRa), *node,
                                   OMX_IndexParamAudioRa);
}

}  // namespace android
