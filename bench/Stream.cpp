#include "Stream.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace bench {
namespace {

constexpr size_t kPadding = 64;
constexpr std::array<uint8_t, 4> kStartCode{0, 0, 0, 1};

void append(std::vector<uint8_t>& out, Bytes bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

}  // namespace

Stream::Stream(Bytes bytes) : mSize(bytes.size()), mPadded(bytes.size() + kPadding) {
    std::ranges::copy(bytes, mPadded.begin());
}

std::vector<Unit> naiveUnits(Bytes stream) {
    std::vector<size_t> starts;  // of the units' first bytes
    for (size_t i = 2; i < stream.size(); ++i) {
        if (stream[i - 2] == 0 && stream[i - 1] == 0 && stream[i] == 1) starts.push_back(i + 1);
    }
    std::vector<Unit> units;
    for (size_t i = 0; i < starts.size(); ++i) {
        size_t end = i + 1 < starts.size() ? starts[i + 1] - 3 : stream.size();
        while (end > starts[i] + 1 && stream[end - 1] == 0) --end;
        units.push_back({starts[i], end - starts[i]});
    }
    return units;
}

Stream wholeUnits(Bytes file, size_t size) {
    const std::vector<Unit> units = naiveUnits(file);
    std::vector<uint8_t> out;
    out.reserve(size);
    for (size_t i = 0;; i = (i + 1) % units.size()) {
        if (out.size() + kStartCode.size() + units[i].size > size) break;
        append(out, kStartCode);
        append(out, file.subspan(units[i].offset, units[i].size));
    }
    return Stream(out);
}

Stream pieceOfUnit(Bytes file, size_t size) {
    const std::vector<Unit> units = naiveUnits(file);
    const Unit largest = *std::ranges::max_element(units, {}, &Unit::size);
    std::vector<uint8_t> out(kStartCode.begin(), kStartCode.end());
    append(out, file.subspan(largest.offset, std::min(largest.size, size - out.size())));
    while (out.back() == 0) out.pop_back();  // a unit does not end with a zero
    return Stream(out);
}

Bytes firstOfType(Bytes stream, unsigned type) {
    for (const Unit& unit : naiveUnits(stream)) {
        if (unit.size > 0 && (stream[unit.offset] & 0x1Fu) == type) {
            return stream.subspan(unit.offset, unit.size);
        }
    }
    fail("no unit of type " + std::to_string(type));
}

std::vector<uint8_t> readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<uint8_t> bytes(std::istreambuf_iterator<char>(file), {});
    if (bytes.empty()) fail("cannot read " + path);
    return bytes;
}

void fail(const std::string& why) {
    std::fprintf(stderr, "bench: %s\n", why.c_str());
    std::exit(1);
}

}  // namespace bench
