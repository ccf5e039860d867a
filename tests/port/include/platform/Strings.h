#pragma once
#include "handset/handset.h"

namespace android {
using String8 = handset::Text;
using AString = handset::Text;
}  // namespace android
