// What the operations that set up components share.

#pragma once

#include "platform/Errors.h"
#include "platform/Message.h"
#include "platform/MetaData.h"
#include "zrcodecparser/MediaCodecHelper.h"

namespace android {

// For encoders, and for whatever the platform sets up itself.
inline constexpr status_t kDoesNotApply = -1;

// Reads from the message that the metadata make. It is gone when the call returns, so that nothing
// is held where something missing ends the process.
template <typename Read>
auto readFrom(const sp<MetaData>& metadata, Read read) {
    sp<AMessage> message;
    MediaCodecHelper::ZRCodeConvertMetaDataToMessage(metadata, &message);
    return read(*message);
}

}  // namespace android
