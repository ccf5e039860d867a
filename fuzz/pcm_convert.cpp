// Input: operation and flags, widths, offset, length and room of a buffer, then its bytes. The
// memory has what a caller has to provide, and some bytes around that must stay.

#include "../tests/model/PcmModel.h"
#include "Fuzz.h"

using namespace test::pcm;

namespace {

// Four in five widths are known.
int32_t width(uint32_t byte) {
    return static_cast<int32_t>(byte % 5 < 4 ? 8 + byte % 5 * 8 : byte - 128);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::Bytes input(data, size);
    const uint32_t what = fuzz::take(input, 1);
    const int32_t source = width(fuzz::take(input, 1)), destination = width(fuzz::take(input, 1));
    const Call how{static_cast<Operation>(what % 6), source, destination, (what & 0x40) != 0,
                   (what & 0x80) != 0};
    const size_t align = fuzz::take(input, 1) % 64, offset = fuzz::take(input, 1);
    const size_t length = fuzz::take(input, 2), capacity = fuzz::take(input, 3);

    std::vector<uint8_t> bytes(input.begin(), input.end());
    bytes.resize(align + 4 * offset + 2 * length + 16, 0x55);
    Model model{bytes};
    model.buffer(how, align, capacity, {offset, length});
    bytes.resize(std::max(model.end, align) + 1 + align % 8);
    bytes.shrink_to_fit();
    Buffer buffer(bytes.data() + align, capacity, offset, length);
    Outcome actual;
    if (fuzz::endsFatally([&] { actual.status = run(how, &buffer); })) {
        REQUIRE(!model.outcome.status);
        return 0;
    }
    REQUIRE(actual.status == model.outcome.status && buffer.ranges == model.outcome.ranges);
    REQUIRE(std::equal(bytes.begin(), bytes.end(), model.memory.begin()));
    return 0;
}
