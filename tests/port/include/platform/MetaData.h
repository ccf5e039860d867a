#pragma once
#include "handset/handset.h"

namespace android {
using MetaDataBase = handset::Store<uint32_t>;
using MetaData = handset::CountedTags;
}  // namespace android
