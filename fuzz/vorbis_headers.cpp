// Input: the three headers of a Vorbis track in a block with Xiph lacing.
//
// Aims at Helper/csd/VorbisHeaders.

#include "Fuzz.h"
#include "Helper/csd/VorbisHeaders.h"

using android::csd::VorbisHeaders;
using fuzz::Bytes;

namespace {

// Takes a laced size off the front; false when the block ends in it.
bool takeSize(Bytes& rest, size_t& size) {
    while (!rest.empty()) {
        const uint32_t lace = fuzz::take(rest, 1);
        size += lace;
        if (lace != 255) return true;
    }
    return false;
}

bool opensWith(Bytes packet, uint8_t type) {
    return !packet.empty() && packet[0] == type;
}

std::optional<VorbisHeaders> split(Bytes rest) {
    size_t first = 0, second = 0;
    if (fuzz::take(rest, 1) != 2 || !takeSize(rest, first) || !takeSize(rest, second)) return {};
    if (first + second > rest.size() || !opensWith(rest, 1)) return {};
    return VorbisHeaders{rest.first(first), rest.subspan(first, second),
                         rest.subspan(first + second)};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Bytes block(data, size);
    const auto expected = split(block);
    const auto headers = android::csd::splitVorbisHeaders(block);
    REQUIRE(headers.has_value() == expected.has_value());
    if (!headers) return 0;
    REQUIRE(fuzz::same(headers->identification, expected->identification));
    REQUIRE(fuzz::same(headers->comment, expected->comment));
    REQUIRE(fuzz::same(headers->setup, expected->setup));
    REQUIRE(hasVorbisHeaderTypes(*headers) ==
            (opensWith(expected->comment, 3) && opensWith(expected->setup, 5)));
    return 0;
}
