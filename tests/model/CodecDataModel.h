// What the models of video codec data share: reading bit by bit, splitting streams byte by byte,
// and the comparison of all that can be seen of a call.

#pragma once

#include "model/Bits.h"
#include "model/Random.h"
#include "support/BitWriter.h"
#include "support/Helper.h"

namespace test {

// The units of an Annex B stream, ITU-T H.264 Annex B.1.1.
inline std::vector<Bytes> modelUnits(const Bytes& stream) {
    const auto size = std::ssize(stream);
    const auto at = stream.begin();
    auto one = std::find_if(at, stream.end(), [](uint8_t byte) { return byte != 0; }) - at;
    if (one < 2 || one == size || at[one] != 1) return {};
    std::vector<Bytes> units;
    while (one + 2 < size || units.empty()) {
        const auto begin = ++one;
        while (one < size && (at[one] != 1 || at[one - 1] != 0 || at[one - 2] != 0)) ++one;
        auto end = one == size ? size : one - 2;
        while (end > begin + 1 && at[end - 1] == 0) --end;
        units.emplace_back(at + begin, at + end);
    }
    return units;
}

// The first unit of a type, which stands in these bits of the first byte.
inline std::optional<Bytes> modelFind(const Bytes& stream, unsigned mask, unsigned type) {
    for (const Bytes& unit : modelUnits(stream)) {
        if (((unit.empty() ? 0u : unit[0]) & mask) == type) return unit;
    }
    return std::nullopt;
}

inline void appendWithLength(Bytes& out, const Bytes& unit) {
    append(out, {static_cast<uint8_t>(unit.size() >> 8), static_cast<uint8_t>(unit.size())});
    append(out, unit);
}

// A stream of some of the units, those that come twice often with another end, and of noise.
inline Bytes randomStream(Random& random, const std::vector<Bytes>& units) {
    Bytes stream;
    for (uint32_t i = 2 + random.below(4); i > 0; --i) {
        append(stream, Bytes(2 + random.below(3), 0));
        stream.push_back(1);
        const auto unit = random.below(static_cast<uint32_t>(units.size()));
        append(stream, random.oneIn(8) ? random.bytes(random.below(9)) : units[unit]);
        if (random.oneIn(2)) stream.back() = random.byte() | 1;
    }
    return stream;
}

// All that can be seen of a call: the status, empty when it ends fatally, and the trace.
using Seen = std::pair<std::optional<int32_t>, std::string>;

// `call` takes the data and a format, and `model` says what is to be seen of it.
template <typename Call, typename Model>
Seen compareOne(const Bytes& data, Call call, Model model) {
    const Format format;
    Seen seen;
    seen.second = trace(format, [&] { fatalText([&] { seen.first = call(data, format.get()); }); });
    const Seen expected = model(data);
    EXPECT_EQ(seen, expected);
    return expected;
}

// For random data, of which each kind must come up: the status, or "fatal", and the lines of trace.
template <typename Make, typename Call, typename Model>
void compareMany(Make make, Call call, Model model, std::initializer_list<const char*> kinds) {
    std::map<std::string, int> found;
    for (uint32_t seed = 0; seed < 30000 && !testing::Test::HasFailure(); ++seed) {
        Random random(seed);
        const Bytes data = make(random);
        const auto [status, trace] = compareOne(data, call, model);
        if (testing::Test::HasFailure()) ADD_FAILURE() << describe(seed, data);
        const auto lines = trace.empty() ? 0 : 1 + std::ranges::count(trace, '\n');
        ++found[(status ? std::to_string(*status) : "fatal") + " " + std::to_string(lines)];
    }
    for (const char* kind : kinds) EXPECT_GT(found[kind], 1000) << kind;
}

// The longest parameter sets that fit a record's 16-bit lengths, and of each in turn a byte more.
template <typename Call, typename Model>
void compareLong(const Bytes& headers, Call call, Model model) {
    for (size_t longer = 0; longer <= headers.size(); ++longer) {
        Bytes data;
        for (size_t i = 0; i < headers.size(); ++i) {
            append(data, {0, 0, 1, headers[i]});
            data.resize(data.size() + 0xfffe + (i == longer), 0xff);
        }
        compareOne(data, call, model);
    }
}

}  // namespace test
