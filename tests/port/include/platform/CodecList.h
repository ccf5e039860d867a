#pragma once
#include "platform/RefBase.h"

namespace android {
using MediaCodecInfo = handset::CodecInfo;
using IMediaCodecList = handset::Codecs;
using MediaCodecList = handset::Codecs;
using IMediaPlayerService = handset::Player;

inline sp<IMediaPlayerService> mediaPlayerService() {
    return handset::findPlayer(handset::ServiceName(u"media.player"));
}
}  // namespace android
