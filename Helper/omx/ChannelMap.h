// Which channel stands where in a frame of PCM.

#pragma once

#include <span>

#include "platform/Omx.h"

namespace android::omx {

// The places of 1 to 8 channels (OpenMAX IL 1.1.2, OMX_AUDIO_CHANNELTYPE); empty for any other
// number.
std::span<const OMX_AUDIO_CHANNELTYPE> channelMap(size_t channels);

}  // namespace android::omx
