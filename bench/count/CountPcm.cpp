// Converts samples a number of times and prints how many there were, for count-instructions.
//
// usage: count_pcm CONVERSION PASSES

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Helper/base/Check.h"
#include "Helper/pcm/Convert.h"

namespace pcm = android::pcm;

// Only the conversions are linked, without the library's way to the platform's assertion.
void android::base::fatalOverflow() {
    std::abort();
}

namespace {

#define ZR_NAMED(name) \
    { #name, pcm::Conversion::k##name }

constexpr struct {
    const char* name;
    pcm::Conversion conversion;
} kConversions[] = {
        ZR_NAMED(Signed8ToInt16),  ZR_NAMED(Unsigned8ToInt16), ZR_NAMED(Int24ToInt16),
        ZR_NAMED(BigInt24ToInt16), ZR_NAMED(Int32ToInt16),     ZR_NAMED(Int32ToInt24),
        ZR_NAMED(Int32ToBigInt24), ZR_NAMED(FloatToInt24),     ZR_NAMED(FloatToBigInt24),
        ZR_NAMED(Int24ToFloat),    ZR_NAMED(Int32ToFloat),     ZR_NAMED(BigInt32ToFloat),
        ZR_NAMED(Int24ToInt32),    ZR_NAMED(BigInt24ToInt32),  ZR_NAMED(Swap16),
        ZR_NAMED(Swap24),          ZR_NAMED(Swap32),
};

constexpr size_t kSamples = 9600;
alignas(64) uint8_t gFrom[4 * kSamples], gTo[4 * kSamples];

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::memset(gFrom, 0x3E, sizeof(gFrom));  // as floats, 0.186
    for (const auto& [name, conversion] : kConversions) {
        if (std::strcmp(argv[1], name) != 0) continue;
        for (long pass = std::strtol(argv[2], nullptr, 10); pass > 0; --pass) {
            pcm::convert(conversion, gFrom, gTo, kSamples);
        }
        std::printf("%zu 1\n", kSamples);
        return 0;
    }
    for (const auto& [name, conversion] : kConversions) std::puts(name);
    return 2;
}
