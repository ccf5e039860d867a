// Status codes of the framework.

#pragma once

#include <cstdint>

namespace android {

using status_t = int32_t;

enum : status_t {
    OK = 0,
    BAD_VALUE = -22,
    INVALID_OPERATION = -38,
    ERROR_MALFORMED = -1007,
    ERROR_BUFFER_TOO_SMALL = -1009,
    ERROR_UNSUPPORTED = -1010,
};

}  // namespace android
