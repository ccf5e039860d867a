#include "model/PcmModel.h"

#include <gtest/gtest.h>

#include <cmath>

#include "model/Random.h"

namespace {

using namespace test::pcm;
using test::Bytes;
using test::Random;

// The library's memory begins at an aligned address and ends where the use of it by the model did,
// or at `size`.
template <typename Run>
void compare(Model& model, Bytes memory, size_t size, Run runLibrary) {
    memory.resize(std::max({size, model.end, size_t{1}}));
    memory.shrink_to_fit();
    model.memory.resize(memory.size());
    const test::LogCapture log;
    Outcome actual;
    const std::string fatal = test::fatalText([&] { actual = runLibrary(memory.data()); });
    for (const auto& [priority, text] : log.lines())
        actual.lines.push_back(std::to_string(priority) + ' ' + text);
    EXPECT_EQ(actual, model.outcome);
    EXPECT_EQ(fatal.empty(), model.outcome.status.has_value());
    EXPECT_TRUE(!fatal.empty() || memory == model.memory);
}

void compareBuffers(const Call& how, const Bytes& bytes, size_t align, size_t capacity, Range range,
                    size_t tail = 0) {
    Model model{bytes};
    model.buffer(how, align, capacity, range);
    compare(model, bytes, std::max(model.end, align) + tail, [&](uint8_t* data) {
        Buffer buffer(data + align, capacity, range.first, range.second);
        const int32_t status = run(how, &buffer);
        return Outcome{status, buffer.ranges};
    });
}

void compareArrays(const Call& how, const Bytes& bytes, size_t source, size_t destination,
                   size_t count) {
    Model model{bytes};
    model.array(how, source, destination, count);
    compare(model, bytes, std::max(source, destination), [&](uint8_t* data) {
        return Outcome{runArray(how, data + source, data + destination, count)};
    });
}

Call randomCall(Random& random, uint32_t operations) {
    const auto bits = [&random] {
        const uint32_t other = random.oneIn(3) ? random.any() : random.below(34);
        return static_cast<int32_t>(random.of({8, 16, 24, 32, 24, 32, 32, other}));
    };
    const int32_t source = bits(), destination = bits();
    const auto operation = static_cast<Operation>(random.below(operations));
    return {operation, source, destination, random.oneIn(2), random.oneIn(2)};
}

// Half a 24-bit step, a clip threshold, no number, any magnitude; or what is next to these.
uint32_t edge(Random& random) {
    const float half = static_cast<float>(random.anyWidth() >> 9) + 0.5f;
    const uint32_t bits = random.of({std::bit_cast<uint32_t>(std::ldexp(half, -23)), 0x3f7ffffe,
                                     0x3f800000, 0x7f800000, random.any(), random.anyWidth()});
    return (bits + random.below(3) - 1) ^ random.of({0, 0x80000000});
}

// Puts floats where these are wanted, and mostly positive numbers where others are fatal.
void prepare(Bytes& bytes, size_t first, const Call& how, Random& random) {
    const bool positive = how.operation == kTo32 && how.source == 32;
    if (positive ? random.oneIn(8) : !how.isFloat) return;
    for (size_t at = first; at + 4 <= bytes.size(); at += 4) {
        const uint32_t number = random.oneIn(3) ? 0 : random.anyWidth() >> 1;
        std::ranges::copy(quad(positive ? number : edge(random)), &bytes[at]);
    }
}

// Offsets set source and destination apart. Half the rooms are short.
TEST(PcmModel, Buffers) {
    for (uint32_t seed = 0; seed < 60000 && !HasFailure(); ++seed) {
        Random random(seed);
        const Call how = randomCall(random, 6);
        const size_t offset = random.oneIn(2) ? 0 : random.below(90), align = random.below(64);
        const size_t length = random.below(random.oneIn(20) ? 4000 : random.oneIn(2) ? 40 : 300);
        const size_t room = random.oneIn(2)
                                    ? length / random.of({1, 2, 4}) + random.below(5) - size_t{2}
                                    : 2 * length;
        Bytes bytes = random.bytes(align + 4 * offset + 2 * length + 99);
        prepare(bytes, align + (how.operation == kTo24 ? 4 : 1) * offset, how, random);
        const size_t tail = random.of({0, 40});
        compareBuffers(how, bytes, align, offset + room, {offset, length}, tail);
        if (HasFailure()) ADD_FAILURE() << test::describe(seed, bytes);
    }
}

// In either direction: apart, overlapping, or as close as it goes to the one or the other.
TEST(PcmModel, Arrays) {
    for (uint32_t seed = 0; seed < 60000 && !HasFailure(); ++seed) {
        Random random(seed);
        Call how = randomCall(random, 4);
        if (how.operation == kTo24) how.source = 32;
        const size_t count = random.below(random.oneIn(20) ? 1000 : random.oneIn(2) ? 20 : 150);
        const size_t touching = random.of({1, 2, 3, 4}) * count + random.below(3);
        const size_t distance =
                random.of({4 * static_cast<uint32_t>(count) + random.below(64),
                           random.below(random.of({80, 600})),
                           static_cast<uint32_t>(std::max<size_t>(touching, 1)) - 1});
        const size_t step = how.operation == kTo24 ? 4 : 1;  // such arrays are aligned
        size_t source = step * random.below(16), destination = source + distance;
        if (random.oneIn(2)) std::swap(source, destination);
        source -= source % step;
        Bytes bytes = random.bytes(64 + distance + 4 * count);
        prepare(bytes, source, how, random);
        compareArrays(how, bytes, source, destination, count);
        if (HasFailure()) ADD_FAILURE() << test::describe(seed, bytes);
    }
}

// What overflows is fatal, but for a buffer whose room is looked at before; of 8-bit samples the
// low 32 bits of their number count.
TEST(PcmModel, HugeNumbers) {
    const Call from8{kTo16, 8, 0, false, true}, from24{kTo16, 24, 0, false, true};
    const Call to24{kTo24, 32, 0, false, true}, floatTo24{kTo24, 32, 0, true, false};
    const Call toFloat{kToFloat, 24, 0, false, false}, to32{kTo32, 24, 0, false, false};
    for (size_t length : {1ul << 31, (1ul << 31) + 1, (1ul << 32) - 1, (1ul << 32) + 5, 3ul << 31})
        compareBuffers(from8, Bytes(99, 'x'), 0, SIZE_MAX, {3, length});
    for (size_t count : {size_t{INT32_MAX / 3 + 1}, size_t{3} << 29})
        compareBuffers(to24, Bytes(99), 0, 0, {0, 4 * count});
    for (const Call& how : {from24, to24, toFloat})
        compareBuffers(how, Bytes(99), 16, 0, {SIZE_MAX - 1, 6}, 40);
    compareBuffers({kToFloat, 32, 0, false, true}, Bytes(99), 16, SIZE_MAX, {SIZE_MAX - 1, 8});
    compareBuffers(to24, Bytes(99), 16, 0, {1ul << 62, 0});

    for (const Call& how : {from24, toFloat, to32})
        compareArrays(how, Bytes(99), 0, 48, SIZE_MAX / 3 + 1);
    for (const Call& how : {toFloat, to32}) compareArrays(how, Bytes(99), 0, 48, SIZE_MAX / 4 + 1);
    for (const Call& how : {to24, floatTo24})
        for (size_t count : {uint32_t{INT32_MAX / 3 + 1}, 1u << 31, UINT32_MAX})
            compareArrays(how, Bytes(99), 0, 48, count);
}

}  // namespace
