// Converts samples a number of times and prints how many there were, for count-instructions.
//
// usage: count_pcm CONVERTER PASSES

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Helper/pcm/Convert.h"

namespace pcm = android::pcm;

namespace {

#define ZR_NAMED(name) \
    { #name, pcm::name }

constexpr struct {
    const char* name;
    pcm::Converter* convert;
} kConverters[] = {
        ZR_NAMED(signed8ToInt16),  ZR_NAMED(unsigned8ToInt16), ZR_NAMED(int24ToInt16),
        ZR_NAMED(bigInt24ToInt16), ZR_NAMED(int32ToInt16),     ZR_NAMED(int32ToInt24),
        ZR_NAMED(int32ToBigInt24), ZR_NAMED(floatToInt24),     ZR_NAMED(floatToBigInt24),
        ZR_NAMED(int24ToFloat),    ZR_NAMED(int32ToFloat),     ZR_NAMED(bigInt32ToFloat),
        ZR_NAMED(int24ToInt32),    ZR_NAMED(bigInt24ToInt32),  ZR_NAMED(swap16),
        ZR_NAMED(swap24),          ZR_NAMED(swap32),
};

constexpr size_t kSamples = 9600;
alignas(64) uint8_t gFrom[4 * kSamples], gTo[4 * kSamples];

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::memset(gFrom, 0x3E, sizeof(gFrom));  // as floats, 0.186
    for (const auto& converter : kConverters) {
        if (std::strcmp(argv[1], converter.name) != 0) continue;
        for (long pass = std::strtol(argv[2], nullptr, 10); pass > 0; --pass) {
            converter.convert(gFrom, gTo, kSamples);
        }
        std::printf("%zu 1\n", kSamples);
        return 0;
    }
    for (const auto& converter : kConverters) std::puts(converter.name);
    return 2;
}
