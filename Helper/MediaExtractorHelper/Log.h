// The log lines of MediaExtractorHelper.

#pragma once

#include "platform/Log.h"

namespace android {

inline constexpr const char* kExtractorTag = "MediaExtractorHelper";

}  // namespace android

#define ZR_LOGE(...) __android_log_print(ANDROID_LOG_ERROR, ::android::kExtractorTag, __VA_ARGS__)
#define ZR_LOGW(...) __android_log_print(ANDROID_LOG_WARN, ::android::kExtractorTag, __VA_ARGS__)
#define ZR_LOGI(...) __android_log_print(ANDROID_LOG_INFO, ::android::kExtractorTag, __VA_ARGS__)
