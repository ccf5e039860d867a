// Status codes of the framework.

#pragma once

#include <cstdint>

namespace android {

using status_t = int32_t;

enum : status_t {
    OK = 0,
    BAD_VALUE = -22,
    ERROR_MALFORMED = -1007,
    ERROR_UNSUPPORTED = -1010,
};

}  // namespace android
