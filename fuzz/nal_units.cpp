// Input: a byte with the wanted unit type, then an Annex B stream.
//
// Aims at Helper/MediaExtractorHelper/NalUnits, Helper/csd/NalUnits.

#include <array>
#include <bit>

#include "Fuzz.h"
#include "Helper/csd/NalUnits.h"

using android::ABitReader;
using fuzz::Bytes;
using fuzz::helper;

namespace {

constexpr auto kStartCode = std::to_array<uint8_t>({0, 0, 1});

size_t startCodeIn(Bytes bytes) {
    const auto at = std::search(bytes.begin(), bytes.end(), kStartCode.begin(), kStartCode.end());
    return static_cast<size_t>(at - bytes.begin());
}

// What the fast search finds, from each start code on to the next.
void checkSearch(Bytes stream) {
    while (!stream.empty()) {
        const size_t at = startCodeIn(stream);
        REQUIRE(android::csd::findStartCode(stream) == at);
        stream = stream.subspan(std::min(at + 1, stream.size()));
    }
}

struct Units {
    int32_t status = -1;  // behind the last
    std::vector<Bytes> all{};
};

// ITU-T H.264 Annex B, with the departures that the header names.
Units unitsOf(Bytes stream, bool startCodeFollows) {
    const auto zeros = static_cast<size_t>(
            std::ranges::find_if(stream, [](uint8_t byte) { return byte != 0; }) - stream.begin());
    if (zeros == stream.size()) return {};
    if (zeros < 2 || stream[zeros] != 1) return {android::ERROR_MALFORMED};
    Units units;
    for (Bytes rest = stream.subspan(zeros + 1);;) {
        const size_t next = startCodeIn(rest);
        if (next == rest.size() && !startCodeFollows) return units;
        Bytes unit = rest.first(next);
        while (unit.size() > 1 && unit.back() == 0) unit = unit.first(unit.size() - 1);
        units.all.push_back(unit);
        if (rest.size() - next < 5) return units;
        rest = rest.subspan(next + 3);
    }
}

void checkWalk(Bytes stream, bool startCodeFollows) {
    const Units expected = unitsOf(stream, startCodeFollows);
    const uint8_t* data = stream.data();
    size_t size = stream.size();
    for (const Bytes& next : expected.all) {
        const uint8_t* unit = nullptr;
        size_t unitSize = 0;
        REQUIRE(helper->getNextNALUnit(&data, &size, &unit, &unitSize, startCodeFollows) == 0);
        REQUIRE(unit == next.data() && unitSize == next.size());
        REQUIRE(size == 0 ? data == nullptr : data + size == stream.data() + stream.size());
    }
    const uint8_t* const at = data;
    const size_t left = size;
    const uint8_t* unit = data;
    size_t unitSize = 1;
    const auto status = helper->getNextNALUnit(&data, &size, &unit, &unitSize, startCodeFollows);
    REQUIRE(status == expected.status && unit == nullptr && unitSize == 0);
    REQUIRE(data == at && size == left);
}

void checkFind(Bytes stream, unsigned wanted, bool hevc) {
    const auto found = hevc ? helper->FindHEVCNAL(stream.data(), stream.size(), wanted, nullptr)
                            : helper->FindNAL(stream.data(), stream.size(), wanted, nullptr);
    for (const Bytes& unit : unitsOf(stream, true).all) {
        const unsigned header = unit.empty() ? 0u : unit[0];
        if ((hevc ? header >> 1 & 0x3f : header & 0x1f) != wanted) continue;
        REQUIRE(found != nullptr && fuzz::same(unit, {found->data(), found->size()}));
        return;
    }
    REQUIRE(found == nullptr);
}

// Each number is made of as many bits as its value says.
void checkExpGolomb(Bytes bytes) {
    ABitReader reader(bytes.data(), bytes.size()), plain = reader;
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (ABitReader(reader).getBits(32) == 0) break;  // the value may have wrapped
        const uint64_t code = uint64_t{helper->parseUE(&reader)} + 1;
        const auto zeros = static_cast<size_t>(std::bit_width(code) - 1);
        REQUIRE(plain.getBits(zeros) == 0 && plain.getBits(zeros + 1) == code);
    }
    helper->parseUE(&reader);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes stream(data, size);
    const unsigned wanted = fuzz::take(stream, 1) & 0x3f;
    checkSearch(stream);
    checkWalk(stream, false);
    checkWalk(stream, true);
    checkFind(stream, wanted, false);
    checkFind(stream, wanted, true);
    checkExpGolomb(stream);
    return 0;
}
