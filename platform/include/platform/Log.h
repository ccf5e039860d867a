// The system log and the fatal assertion.

#pragma once

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

}  // extern "C"
