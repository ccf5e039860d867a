#pragma once
#include "platform/RefBase.h"
#include "platform/Strings.h"

namespace android {
using AMessage = handset::Letter;
}  // namespace android
