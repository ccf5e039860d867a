#include <gtest/gtest.h>
#include "support/Platform.h"
#include "zrcodecparser/MediaExtractorHelper.h"
TEST(Smoke, Avc) {
    android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;
    test::Format f;
    EXPECT_EQ(helper->SupportCodecEx(104, f.get(), false), 1);
    EXPECT_EQ(f.mime(), "video/avc");
}
