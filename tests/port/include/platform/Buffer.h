#pragma once
#include "platform/Message.h"

namespace android {
using ABuffer = handset::Bytes;
}  // namespace android
