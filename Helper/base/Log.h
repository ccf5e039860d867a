// The library's log lines: a priority, the class that speaks, and its text.

#pragma once

#include "platform/Log.h"

namespace android::base {

inline constexpr const char* kExtractorTag = "MediaExtractorHelper";
inline constexpr const char* kCodecTag = "MediaCodecHelper";
inline constexpr const char* kId3Tag = "ZRID3";

}  // namespace android::base

#define ZR_LOGE(tag, ...) __android_log_print(ANDROID_LOG_ERROR, tag, __VA_ARGS__)
#define ZR_LOGW(tag, ...) __android_log_print(ANDROID_LOG_WARN, tag, __VA_ARGS__)
#define ZR_LOGI(tag, ...) __android_log_print(ANDROID_LOG_INFO, tag, __VA_ARGS__)
#define ZR_LOGD(tag, ...) __android_log_print(ANDROID_LOG_DEBUG, tag, __VA_ARGS__)
