// The log lines of MediaCodecHelper.

#pragma once

#include "platform/Log.h"

namespace android {

inline constexpr const char* kCodecTag = "MediaCodecHelper";

}  // namespace android

#define ZR_CODEC_LOGE(...) __android_log_print(ANDROID_LOG_ERROR, ::android::kCodecTag, __VA_ARGS__)
#define ZR_CODEC_LOGW(...) __android_log_print(ANDROID_LOG_WARN, ::android::kCodecTag, __VA_ARGS__)
#define ZR_CODEC_LOGI(...) __android_log_print(ANDROID_LOG_INFO, ::android::kCodecTag, __VA_ARGS__)
