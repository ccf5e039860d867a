// What the framework has no name for among its status codes.

#pragma once

#include "platform/Errors.h"

namespace android::base {

// The call has failed, or does not apply; which of it, the operation's contract says.
inline constexpr status_t kFailed = -1;

}  // namespace android::base
