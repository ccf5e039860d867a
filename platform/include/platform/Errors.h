/// @file
/// Status codes of the framework.

#pragma once

#include <cstdint>

namespace android {

/// 0 for success, else one of the codes below.
using status_t = int32_t;

/// The statuses that the library gives or takes.
enum : status_t {
    OK = 0,                          ///< done
    UNKNOWN_ERROR = INT32_MIN,       ///< -2147483648
    BAD_VALUE = -22,                 ///< an argument out of its range
    INVALID_OPERATION = -38,         ///< not for these arguments, or a key is missing
    ERROR_IO = -1004,                ///< reading failed
    ERROR_MALFORMED = -1007,         ///< bytes are not what they should be
    ERROR_BUFFER_TOO_SMALL = -1009,  ///< a buffer has no room
    ERROR_UNSUPPORTED = -1010,       ///< nobody does this
    ERROR_END_OF_STREAM = -1011,     ///< nothing more to read
};

}  // namespace android
