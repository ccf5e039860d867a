#include "Helper/base/Checked.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "support/Platform.h"

namespace {

using namespace android::base;

TEST(Checked, ExactOrFatal) {
    EXPECT_EQ(checkedAdd<size_t>(SIZE_MAX - 1, 1), SIZE_MAX);
    EXPECT_EQ(checkedSub<uint32_t>(5, 5), 0u);
    EXPECT_EQ(checkedMul<uint32_t>(0x10000, 0xFFFF), 0xFFFF0000u);
    EXPECT_EQ(checkedCast<int32_t>(uint32_t{INT32_MAX}), INT32_MAX);

    const char* const text = "Helper/MediaExtractorHelper size arithmetic overflow";
    EXPECT_EQ(test::fatalText([] { checkedAdd<size_t>(SIZE_MAX, 1); }), text);
    EXPECT_EQ(test::fatalText([] { checkedSub<uint32_t>(4, 5); }), text);
    EXPECT_EQ(test::fatalText([] { checkedMul<uint32_t>(0x10000, 0x10000); }), text);
    EXPECT_EQ(test::fatalText([] { checkedCast<int32_t>(uint32_t{1} << 31); }), text);
}

}  // namespace
