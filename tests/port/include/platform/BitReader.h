#pragma once
#include "handset/handset.h"

namespace android {
using ABitReader = handset::Bits;
}  // namespace android
