// Input: a byte with the wanted unit type, then an Annex B stream.

#include <array>
#include <bit>

#include "Fuzz.h"

using android::ABitReader;
using fuzz::Bytes;
using fuzz::helper;

namespace {

constexpr auto kStartCode = std::to_array<uint8_t>({0, 0, 1});

// Calls `visit` with every unit of the stream.
template <typename Visit>
void walk(Bytes stream, bool startCodeFollows, Visit visit) {
    const uint8_t* const end = stream.data() + stream.size();
    const uint8_t* data = stream.data();
    size_t size = stream.size();
    const uint8_t* former = data;  // the end of the unit before
    for (size_t steps = 0;; ++steps) {
        REQUIRE(steps <= stream.size());
        const uint8_t* const at = data;
        const size_t left = size;
        const uint8_t* unit = data;
        size_t unitSize = 1;
        const auto status =
                helper->getNextNALUnit(&data, &size, &unit, &unitSize, startCodeFollows);
        if (status != android::OK) {
            REQUIRE(status == -1 || (status == android::ERROR_MALFORMED && steps == 0));
            REQUIRE(unit == nullptr && unitSize == 0 && data == at && size == left);
            return;
        }
        REQUIRE(unit - former >= 3 && unit <= end && unitSize <= static_cast<size_t>(end - unit));
        REQUIRE(fuzz::same({unit - 3, 3}, kStartCode) &&
                !fuzz::contains({unit, unitSize}, kStartCode));
        REQUIRE(unitSize < 2 || unit[unitSize - 1] != 0);
        REQUIRE(unitSize > 0 || unit == end || fuzz::same(Bytes(unit, end).first(3), kStartCode));
        former = unit + unitSize;
        if (size != 0) REQUIRE(data >= former && data + size == end && size < left);
        if (size != 0) REQUIRE(std::count(former, data, 0) == data - former);
        if (size == 0) REQUIRE(data == nullptr);
        visit(Bytes(unit, unitSize));
    }
}

void checkFind(Bytes stream, unsigned wanted, bool hevc) {
    const auto found = hevc ? helper->FindHEVCNAL(stream.data(), stream.size(), wanted, nullptr)
                            : helper->FindNAL(stream.data(), stream.size(), wanted, nullptr);
    bool first = true;
    walk(stream, true, [&](Bytes unit) {
        const unsigned header = unit.empty() ? 0u : unit[0];
        if ((hevc ? header >> 1 & 0x3f : header & 0x1f) != wanted || !first) return;
        first = false;
        REQUIRE(found != nullptr && fuzz::same(unit, {found->data(), found->size()}));
    });
    REQUIRE(first == (found == nullptr));
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
    walk(stream, false, [](Bytes) {});
    checkFind(stream, wanted, false);
    checkFind(stream, wanted, true);
    checkExpGolomb(stream);
    return 0;
}
