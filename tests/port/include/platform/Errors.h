#pragma once
#include <cerrno>
#include <cstdint>

namespace android {
typedef int status_t;
enum {
    OK = 0,
    UNKNOWN_ERROR = INT32_MIN,
    BAD_VALUE = -EINVAL,
    INVALID_OPERATION = -ENOSYS,
    ERROR_IO = -1004,
    ERROR_MALFORMED = -1007,
    ERROR_BUFFER_TOO_SMALL = -1009,
    ERROR_UNSUPPORTED = -1010,
    ERROR_END_OF_STREAM = -1011,
};
}  // namespace android
