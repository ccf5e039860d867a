// Sets up a decoder component for a track, from the format that its parser made.

#pragma once

#include <cstdint>

#include "platform/MediaFormat.h"
#include "platform/Message.h"
#include "platform/OmxNode.h"

namespace glue {

// The format's entries in a message of the caller's.
android::sp<android::AMessage> messageOf(const AMediaFormat* format);

// Hands the component the parameters that the codec of this MIME type wants. Components of one
// maker, which their names tell, want more. Returns 0, the component's status, or ERROR_UNSUPPORTED
// for what no component can be set up for.
android::status_t configure(const char* mime, const char* componentName,
                            const android::sp<android::AMessage>& message,
                            const android::sp<android::IOMXNode>& node);

}  // namespace glue
