#include <gtest/gtest.h>

#include "platform/Omx.h"
#include "referee/OmxFacts.h"

namespace omxfacts {

std::vector<Fact> ours() {
    return ZR_OMX_FACTS;
}

TEST(OmxReferee, LayoutOfTheStandardsHeaders) {
    const auto own = ours();
    const auto expected = standard();
    ASSERT_EQ(own.size(), expected.size());
    for (size_t i = 0; i < own.size(); ++i)
        EXPECT_EQ(own[i].value, expected[i].value) << own[i].name;
}

}  // namespace omxfacts
