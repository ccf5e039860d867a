// Every allocation of the program, and of the libraries that it loads by `new`, counted or refused
// while sweeps::watched is set. Of the linker it wants --wrap=malloc,--wrap=free,--wrap=strdup.

#pragma once

#include <cstddef>

namespace sweeps {

struct Ledger {
    long refused = -1;  // the number of the allocation that fails
    long count = 0;     // asked for
    size_t sum = 0;     // bytes
    size_t held = 0;
    size_t peak = 0;  // of what is held
};
extern Ledger ledger;

// Frees what is still held of what has been counted, begins a new ledger, and returns how many
// bytes that was.
size_t releaseLost();

}  // namespace sweeps
