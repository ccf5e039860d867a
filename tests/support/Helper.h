// The library's operations for container parsers, and the names that their tests share.

#pragma once

#include <gtest/gtest.h>

#include "support/Platform.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace test {

using android::MediaExtractorHelper;
using android::sp;

inline const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

}  // namespace test
