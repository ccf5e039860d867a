#include "robustness/Allocations.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "robustness/Operations.h"

extern "C" void* __real_malloc(size_t size);
extern "C" void __real_free(void* memory);

namespace sweeps {

Ledger ledger;

namespace {

struct Block {
    void* memory;
    size_t size;
} blocks[1 << 14];
Block* end = blocks;

void* allocate(size_t size) {
    if (watched && ledger.count++ == ledger.refused) return nullptr;
    void* const memory = __real_malloc(size);
    if (!watched) return memory;
    if (end == std::end(blocks)) std::abort();
    *end++ = {memory, size};
    ledger.sum += size;
    ledger.held += size;
    ledger.peak = std::max(ledger.peak, ledger.held);
    return memory;
}

void release(void* memory) {
    const auto block = std::find_if(blocks, end, [=](Block b) { return b.memory == memory; });
    if (block != end && memory != nullptr) {
        ledger.held -= block->size;
        *block = *--end;
    }
    __real_free(memory);
}

void* allocateOrThrow(size_t size) {
    if (void* memory = allocate(size)) return memory;
    throw std::bad_alloc();
}

}  // namespace

size_t releaseLost() {
    const size_t lost = ledger.held;
    while (end != blocks) release(blocks[0].memory);
    ledger = {};
    return lost;
}

}  // namespace sweeps

extern "C" void* __wrap_malloc(size_t size) {
    return sweeps::allocate(size);
}
extern "C" void __wrap_free(void* memory) {
    sweeps::release(memory);
}
extern "C" char* __wrap_strdup(const char* text) {
    void* const memory = sweeps::allocate(std::strlen(text) + 1);
    return memory == nullptr ? nullptr : std::strcpy(static_cast<char*>(memory), text);
}

void* operator new(size_t size) {
    return sweeps::allocateOrThrow(size);
}
void* operator new[](size_t size) {
    return sweeps::allocateOrThrow(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return sweeps::allocate(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return sweeps::allocate(size);
}
void operator delete(void* memory) noexcept {
    sweeps::release(memory);
}
void operator delete[](void* memory) noexcept {
    sweeps::release(memory);
}
void operator delete(void* memory, size_t) noexcept {
    sweeps::release(memory);
}
void operator delete[](void* memory, size_t) noexcept {
    sweeps::release(memory);
}
