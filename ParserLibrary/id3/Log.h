// The log lines of ID3.

#pragma once

#include "platform/Log.h"

namespace android {

inline constexpr const char* kId3Tag = "ZRID3";

}  // namespace android

#define ZR_ID3_LOGE(...) __android_log_print(ANDROID_LOG_ERROR, ::android::kId3Tag, __VA_ARGS__)
#define ZR_ID3_LOGW(...) __android_log_print(ANDROID_LOG_WARN, ::android::kId3Tag, __VA_ARGS__)
