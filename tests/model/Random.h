// Seeded random input for the comparisons with a model, the same on every machine.

#pragma once

#include <algorithm>
#include <array>
#include <initializer_list>
#include <map>
#include <random>
#include <sstream>
#include <tuple>

#include "support/Platform.h"

namespace test {

class Random {
public:
    explicit Random(uint32_t seed) : mEngine(seed) {}

    uint32_t any() { return static_cast<uint32_t>(mEngine()); }
    uint32_t below(uint32_t limit) { return any() % limit; }
    uint8_t byte() { return static_cast<uint8_t>(any() >> 24); }
    bool oneIn(uint32_t n) { return below(n) == 0; }
    // Every magnitude up to 2^32 - 1 is as likely as any other.
    uint32_t anyWidth() { return any() >> below(32); }
    // The same, and often a number at which sizes in macroblocks or samples overflow.
    uint32_t anyCount() {
        const uint32_t edge = of({26, 27, 31, 32});
        return oneIn(2) ? anyWidth() : static_cast<uint32_t>((uint64_t{1} << edge) - below(3));
    }
    uint32_t of(std::initializer_list<uint32_t> choices) {
        return choices.begin()[below(static_cast<uint32_t>(choices.size()))];
    }
    Bytes bytes(size_t size) {
        Bytes result(size);
        std::ranges::generate(result, [this] { return byte(); });
        return result;
    }
    // Cuts some inputs short, and changes a byte of some, most often one of the first.
    void damage(Bytes& bytes, uint32_t oneOf) {
        if (oneIn(oneOf)) bytes.resize(below(static_cast<uint32_t>(bytes.size() + 1)));
        if (oneIn(oneOf) && !bytes.empty())
            bytes[below(oneIn(2) ? 8 : 4096) % bytes.size()] = byte();
    }

private:
    std::mt19937 mEngine;
};

inline void append(Bytes& out, const Bytes& bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

// What a failing case prints about itself.
inline std::string describe(uint32_t seed, const Bytes& input) {
    return "seed " + std::to_string(seed) + ", " + std::to_string(input.size()) +
           " bytes: " + dataText(input);
}

// What a format holds, in the order in which the keys were first set.
using Stored = std::vector<std::pair<std::string, host::FormatValue>>;

inline Stored stored(const Format& format) {
    Stored result;
    for (const auto& [key, value] : host::formatEntries(format.get())) {
        result.emplace_back(key, value);
    }
    return result;
}

// All that can be seen of a call: the status, empty when it ends fatally; what is stored; the log.
using Outcome = std::tuple<std::optional<int32_t>, Stored, std::vector<Line>>;

}  // namespace test
