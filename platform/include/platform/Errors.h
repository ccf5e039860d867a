// Status codes of the framework.

#pragma once

#include <cstdint>

namespace android {

using status_t = int32_t;

enum : status_t {
    OK = 0,
    UNKNOWN_ERROR = INT32_MIN,
    BAD_VALUE = -22,
    INVALID_OPERATION = -38,
    ERROR_IO = -1004,
    ERROR_MALFORMED = -1007,
    ERROR_BUFFER_TOO_SMALL = -1009,
    ERROR_UNSUPPORTED = -1010,
    ERROR_END_OF_STREAM = -1011,
};

}  // namespace android
