// Input: operation and flags, widths, alignment and form, offset, length, room of a buffer or place
// of the other array; then the bytes. The memory has what a caller has to provide, and some bytes
// around that must stay.
//
// Aims at Helper/MediaExtractorHelper/SampleFormat, Helper/MediaExtractorHelper/ByteOrder,
// Helper/MediaExtractorHelper/SampleRange, Helper/pcm/*.

#include "Fuzz.h"
#include "model/PcmModel.h"

using namespace test::pcm;

namespace {

// Four in five widths are known.
int32_t width(uint32_t byte) {
    return static_cast<int32_t>(byte % 5 < 4 ? 8 + byte % 5 * 8 : byte - 128);
}

// Both run over the same bytes, the library's in memory that ends a little behind the use of it.
template <typename Run>
void compare(Model& model, std::vector<uint8_t> bytes, size_t size, Run runLibrary) {
    bytes.resize(std::max(model.end, size) + 1);
    bytes.shrink_to_fit();
    Outcome actual;
    if (fuzz::endsFatally([&] { actual = runLibrary(bytes.data()); })) {
        REQUIRE(!model.outcome.status);
        return;
    }
    REQUIRE(actual.status == model.outcome.status && actual.ranges == model.outcome.ranges);
    REQUIRE(std::equal(bytes.begin(), bytes.end(), model.memory.begin()));
}

void compareArrays(Call how, size_t source, size_t destination, size_t count,
                   std::vector<uint8_t> bytes) {
    how.operation = static_cast<Operation>(how.operation % kEndian);
    if (how.operation == kTo24) how.source = 32, source -= source % 4;
    bytes.resize(std::max(source, destination) + 4 * count + 1, 0x55);
    Model model{bytes};
    model.array(how, source, destination, count);
    compare(model, bytes, std::max(source, destination), [&](uint8_t* data) {
        return Outcome{runArray(how, data + source, data + destination, count)};
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::Bytes input(data, size);
    const uint32_t what = fuzz::take(input, 1);
    const int32_t source = width(fuzz::take(input, 1)), destination = width(fuzz::take(input, 1));
    const Call how{static_cast<Operation>(what % 6), source, destination, (what & 0x40) != 0,
                   (what & 0x80) != 0};
    const uint32_t form = fuzz::take(input, 1);
    const size_t align = form % 64, offset = fuzz::take(input, 1), wanted = fuzz::take(input, 2);
    const size_t capacity = fuzz::take(input, 3);
    // What is longer than its bytes is mostly filling, and as slow as it is long.
    const size_t length = std::min(wanted, input.size() + 300);
    std::vector<uint8_t> bytes(input.begin(), input.end());
    if ((form & 0x80) != 0) {
        compareArrays(how, align + offset, capacity % 4096, length / 4, bytes);
        return 0;
    }
    bytes.resize(align + 4 * offset + 2 * length + 16, 0x55);
    Model model{bytes};
    model.buffer(how, align, capacity, {offset, length});
    compare(model, bytes, align + align % 8, [&](uint8_t* memory) {
        Buffer buffer(memory + align, capacity, offset, length);
        const int32_t status = run(how, &buffer);
        return Outcome{status, buffer.ranges};
    });
    return 0;
}
