#pragma once
#include "handset/handset.h"

namespace android {
using MediaBufferHelper = handset::Samples;
}  // namespace android
