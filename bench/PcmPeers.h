// Interleaved stereo samples, and the implementations that our conversions are measured beside.

#pragma once

#include <functional>

#include "Stream.h"

namespace bench {

enum Format : uint8_t { kU8, kS8, kS16, kBig16, kS24, kBig24, kLow24, kS32, kBig32, kFloat };

struct Layout {
    size_t bytes;
    unsigned bits;  // that carry the number: the lower ones
    bool isBig;
};
constexpr Layout kLayouts[] = {{1, 8, false},  {1, 8, false}, {2, 16, false}, {2, 16, true},
                               {3, 24, false}, {3, 24, true}, {4, 24, false}, {4, 32, false},
                               {4, 32, true},  {4, 32, false}};

constexpr size_t kMostBytes = size_t{64} << 20;

// kMostBytes of a tone with noise at 48 kHz, and room behind for those that read on; in each format
// the same numbers, cut off to its width. Aligned as peers like it.
uint8_t* signal(Format format);

struct Work {
    Format from, to;
    size_t samples;
    uint8_t* destination;

    uint8_t* source() const { return signal(from); }
    size_t bytes() const { return samples * kLayouts[from].bytes; }
    size_t bytesAfter() const { return samples * kLayouts[to].bytes; }
};

// Returns where the result stands. What converts in place does so at the destination.
using Convert = std::function<const uint8_t*()>;

// make() gives nothing for what the peer does not convert. What it makes lives on to the end.
struct PcmPeer {
    const char* name;
    Convert (*make)(const Work& work);
    double toIntegers, toFloats;  // how far it may be off: in last places, for floats of 24 bits
};
extern const std::vector<PcmPeer> kPcmPeers;

}  // namespace bench
