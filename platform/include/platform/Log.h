// The system log and the fatal assertion.

#pragma once

#include <cstdint>

extern "C" {

enum {
    ANDROID_LOG_DEBUG = 3,
    ANDROID_LOG_INFO = 4,
    ANDROID_LOG_WARN = 5,
    ANDROID_LOG_ERROR = 6,
};

// Writes one line of the given priority under a tag; format as for printf.
int __android_log_print(int priority, const char* tag, const char* format, ...)
        __attribute__((format(printf, 3, 4)));

// Ends the process with a text made as for printf. The condition only stands in for a missing text.
[[noreturn]] void __android_log_assert(const char* condition, const char* tag, const char* format,
                                       ...) __attribute__((format(printf, 3, 4)));

// Writes an entry to the event log of security incidents: a tag, the number of the incident as
// text, the user concerned (-1 for none) and data of its own.
int __android_log_error_write(int tag, const char* subTag, int32_t uid, const char* data,
                              uint32_t dataLength);

}  // extern "C"
