// Input: the three headers of a Vorbis track in a block with Xiph lacing.

#include "Fuzz.h"

using fuzz::Bytes;
using fuzz::Format;
using fuzz::helper;

namespace {

constexpr int32_t kMalformed = -1007, kWrongPacket = -10001;

struct Headers {
    int32_t status = kMalformed;
    Bytes identification, setup;
};

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

Headers split(Bytes rest) {
    Headers headers;
    size_t first = 0, second = 0;
    if (fuzz::take(rest, 1) != 2 || !takeSize(rest, first) || !takeSize(rest, second)) {
        return headers;
    }
    if (first + second > rest.size() || !opensWith(rest, 1)) return headers;
    headers.identification = rest.first(first);
    headers.setup = rest.subspan(first + second);
    const bool known = opensWith(rest.subspan(first), 3) && opensWith(headers.setup, 5);
    headers.status = known ? 0 : kWrongPacket;
    return headers;
}

void check(const Format& format, const Headers& expected) {
    const bool malformed = expected.status == kMalformed;
    const std::string setupKey = expected.status == 0 ? "csd-1 " : "";
    REQUIRE(format.keys() == (malformed ? "" : "csd-0 " + setupKey));
    if (!malformed) REQUIRE(fuzz::same(format.buffer("csd-0"), expected.identification));
    if (expected.status == 0) REQUIRE(fuzz::same(format.buffer("csd-1"), expected.setup));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Headers expected = split({data, size});
    size_t given = size;
    const Format format;
    REQUIRE(helper->setVorbisCodecSpecificData(data, &given, format.get()) == expected.status);
    REQUIRE(given == size);
    check(format, expected);

    const Format viaTrack;  // here a failure is only logged
    REQUIRE(helper->setAudioConfig(208, data, &given, viaTrack.get()) == 0 && given == size);
    check(viaTrack, expected);
    return 0;
}
