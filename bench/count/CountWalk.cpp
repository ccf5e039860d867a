// Walks the NAL units of a file a number of times and prints how many bytes and units there were.
// An emulator that counts this program's instructions for two numbers of passes gives the
// instructions of one pass as the difference.
//
// usage: count_walk FILE PASSES

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "Helper/csd/NalUnits.h"

namespace {

uint8_t gBytes[1 << 20];

size_t walk(android::csd::Bytes stream) {
    size_t units = 0;
    for (;;) {
        const auto step = android::csd::nextNalUnit(stream, true);
        if (step.result != android::csd::NalWalk::kFound) return units;
        ++units;
        stream = step.rest;
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const int file = open(argv[1], O_RDONLY);
    const ssize_t size = read(file, gBytes, sizeof(gBytes));
    if (size <= 0) return 1;
    size_t units = 0;
    for (long pass = std::strtol(argv[2], nullptr, 10); pass > 0; --pass) {
        units = walk({gBytes, static_cast<size_t>(size)});
    }
    std::printf("%zd %zu\n", size, units);
    return 0;
}
