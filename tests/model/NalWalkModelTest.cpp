#include "model/NalWalkModel.h"

#include <gtest/gtest.h>

#include "model/Random.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using test::Bytes;
using test::NalCursor;

const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

// Units, with long quiet stretches, zeros and near misses between start codes; or noise.
Bytes stream(test::Random& random, size_t size) {
    Bytes bytes;
    if (!random.oneIn(20)) bytes = {0, 0, 1};
    const bool noise = random.oneIn(5);
    while (bytes.size() < size) {
        Bytes unit = random.bytes(random.below(random.oneIn(4) ? 150 : 12));
        if (random.oneIn(2)) std::ranges::fill(unit, uint8_t{0xff});
        for (uint8_t& byte : unit) {
            if (noise || random.oneIn(20)) byte = static_cast<uint8_t>(random.below(noise ? 2 : 4));
        }
        test::append(bytes, unit);
        if (random.oneIn(3)) test::append(bytes, Bytes(random.below(6), 0));
        if (random.oneIn(2)) test::append(bytes, {0, 0, 1});
    }
    bytes.resize(size);
    return bytes;
}

void compareWalks(const uint8_t* data, size_t size, bool startCodeFollows) {
    NalCursor expected{data, size}, actual = expected;
    int32_t status = 0;
    for (size_t step = 0; status == 0; ++step) {
        ASSERT_LE(step, size);
        status = test::modelNextUnit(expected, startCodeFollows);
        ASSERT_EQ(helper->getNextNALUnit(&actual.data, &actual.size, &actual.unit, &actual.unitSize,
                                         startCodeFollows),
                  status)
                << "step " << step;
        ASSERT_EQ(actual, expected) << "step " << step;
    }
}

void compareFinds(const uint8_t* data, size_t size, unsigned type, bool hevc) {
    const auto found = hevc ? helper->FindHEVCNAL(data, size, type, nullptr)
                            : helper->FindNAL(data, size, type, nullptr);
    std::optional<Bytes> actual;
    if (found != nullptr) actual = Bytes(found->data(), found->data() + found->size());
    ASSERT_EQ(actual, test::modelFindUnit(data, size, type, hevc)) << type << " hevc " << hevc;
}

// Half the streams are short, some are very long. They end where their memory ends, and begin at
// any distance from an aligned address.
TEST(NalWalkModel, RandomStreams) {
    for (uint32_t seed = 0; seed < 6000 && !HasFailure(); ++seed) {
        test::Random random(seed);
        const size_t size = seed % 2000 == 0 ? 400000 : random.below(random.oneIn(2) ? 64 : 600);
        const Bytes bytes = stream(random, size);
        Bytes memory(random.below(64));
        const size_t offset = memory.size();
        test::append(memory, bytes);
        memory.shrink_to_fit();
        const uint8_t* data = memory.data() + offset;
        compareWalks(data, size, true);
        compareWalks(data, size, false);
        for (unsigned type : {0u, 7u, random.below(4), random.below(64)}) {
            compareFinds(data, size, type, random.oneIn(2));
        }
        if (HasFailure()) ADD_FAILURE() << test::describe(seed, bytes);
    }
}

}  // namespace
