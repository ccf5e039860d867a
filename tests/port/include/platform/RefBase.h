#pragma once
#include "handset/handset.h"

namespace android {
using RefBase = handset::Counted;
template <typename T>
using sp = handset::StrongPointer<T>;
}  // namespace android
