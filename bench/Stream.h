// The Annex B streams that the benchmarks walk (ITU-T H.264, Annex B).

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace bench {

using Bytes = std::span<const uint8_t>;

// One NAL unit, without start code and trailing zeros.
struct Unit {
    size_t offset;
    size_t size;
    bool operator==(const Unit&) const = default;
};

// Every unit of the stream by the plainest scan there is: what all others are checked against.
std::vector<Unit> naiveUnits(Bytes stream);

// Bytes with room behind them that reads as zero, as FFmpeg's bit readers want it.
class Stream {
public:
    explicit Stream(Bytes bytes);
    Bytes bytes() const { return Bytes(mPadded).first(mSize); }
    std::span<uint8_t> writable() { return std::span(mPadded).first(mSize); }

private:
    size_t mSize;
    std::vector<uint8_t> mPadded;
};

// All units of the file, from its start again and again, as many as fit in the size.
Stream wholeUnits(Bytes file, size_t size);

// A start code and the head of the file's largest unit.
Stream pieceOfUnit(Bytes file, size_t size);

// The first unit of a nal_unit_type. A stream without one ends the program.
Bytes firstOfType(Bytes stream, unsigned type);

std::vector<uint8_t> readFile(const std::string& path);

// Ends the program: a benchmark on wrong results is worth nothing.
[[noreturn]] void fail(const std::string& why);

}  // namespace bench
