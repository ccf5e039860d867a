#include "Glue.h"

#include <cstring>
#include <string_view>

#include "platform/Buffer.h"
#include "platform/Host.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaDefs.h"

namespace glue {
namespace {

using namespace android;

constexpr uint32_t kOutputPort = 1;

// A copy of one entry, under the same key and with the same type.
struct Copier {
    const sp<AMessage>& message;
    const char* key;

    void operator()(int32_t value) const { message->setInt32(key, value); }
    void operator()(int64_t value) const { message->setInt64(key, value); }
    void operator()(const std::string& value) const { message->setString(key, value.c_str()); }
    void operator()(const std::vector<uint8_t>& value) const {
        const sp<ABuffer> buffer = new ABuffer(value.size());
        if (!value.empty()) memcpy(buffer->data(), value.data(), value.size());
        message->setBuffer(key, buffer);
    }
};

bool hasPositive(const sp<AMessage>& message, const char* key) {
    int32_t value = 0;
    return message->findInt32(key, &value) && value > 0;
}

// What setWMAFormat cannot do without; without them it ends the process.
bool isCompleteWma(const sp<AMessage>& message) {
    int32_t value = 0;
    return hasPositive(message, AMEDIAFORMAT_KEY_CHANNEL_COUNT) &&
           hasPositive(message, AMEDIAFORMAT_KEY_SAMPLE_RATE) &&
           message->findInt32(ZREAMEDIAFORMAT_KEY_WMAENCODEOPT, &value);
}

// setRawAudioFormat ends the process for a number of channels that has no map.
bool isCompletePcm(const sp<AMessage>& message) {
    int32_t channels = 0;
    int map[OMX_AUDIO_MAXCHANNELS];
    return message->findInt32(AMEDIAFORMAT_KEY_CHANNEL_COUNT, &channels) && channels > 0 &&
           MediaCodecHelper::getOMXChannelMapping(static_cast<size_t>(channels), map) == OK &&
           hasPositive(message, AMEDIAFORMAT_KEY_SAMPLE_RATE);
}

status_t configureAudio(std::string_view type, const sp<AMessage>& message,
                        const sp<IOMXNode>& node) {
    constexpr bool kEncoder = false;
    if (type == ZRE_MEDIA_MIMETYPE_AUDIO_WMA || type == ZRE_MEDIA_MIMETYPE_AUDIO_WMA_VOICE) {
        if (!isCompleteWma(message)) return ERROR_UNSUPPORTED;
        return MediaCodecHelper::setWMAFormat(message, node, kEncoder);
    }
    if (type == ZRE_MEDIA_MIMETYPE_AUDIO_RAW) {
        if (!isCompletePcm(message)) return ERROR_UNSUPPORTED;
        return MediaCodecHelper::setRawAudioFormat(message, kOutputPort, node, kEncoder);
    }
    if (type == ZRE_MEDIA_MIMETYPE_AUDIO_G711_ALAW || type == ZRE_MEDIA_MIMETYPE_AUDIO_G711_MLAW) {
        if (!isCompletePcm(message)) return ERROR_UNSUPPORTED;
        return MediaCodecHelper::setG711Format(message, kOutputPort, node, kEncoder);
    }
    return OK;  // the platform sets up the others itself
}

status_t configureVideo(std::string_view type, const char* componentName,
                        const sp<AMessage>& message, const sp<IOMXNode>& node) {
    if (std::string_view(componentName).substr(0, 9) == "OMX.qcom.") {
        MediaCodecHelper::configureQCOMVideoDecoder(message, node, /*flags=*/0, componentName);
    } else {
        MediaCodecHelper::configureFramePackingFormat(message, node);
    }
    if (type == ZRE_MEDIA_MIMETYPE_VIDEO_DIVX || type == ZRE_MEDIA_MIMETYPE_VIDEO_DIVX4 ||
        type == ZRE_MEDIA_MIMETYPE_VIDEO_DIVX311) {
        return MediaCodecHelper::setDivxFormat(message, node, /*encoder=*/false);
    }
    return OK;
}

}  // namespace

// The platform of a device makes the message itself. The walk over a format is the stand-in's.
sp<AMessage> messageOf(const AMediaFormat* format) {
    const sp<AMessage> message = new AMessage;
    for (const host::FormatEntry& entry : host::formatEntries(format)) {
        std::visit(Copier{message, entry.key.c_str()}, entry.value);
    }
    return message;
}

status_t configure(const char* mime, const char* componentName, const sp<AMessage>& message,
                   const sp<IOMXNode>& node) {
    const std::string_view type = mime;
    if (type == ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED ||
        type == ZRE_MEDIA_MIMETYPE_VIDEO_NOTSUPPORTED) {
        return ERROR_UNSUPPORTED;
    }
    return type.substr(0, 6) == "audio/" ? configureAudio(type, message, node)
                                         : configureVideo(type, componentName, message, node);
}

}  // namespace glue
