#include "Helper/pcm/Convert.h"

#include <algorithm>

#include "Helper/base/Checked.h"
#include "Helper/pcm/Samples.h"

namespace android::pcm {
namespace {

constexpr size_t kCacheLine = 64;

template <typename Conversion>
struct Run {
    const uint8_t* from;
    uint8_t* to;
    size_t samples;

    Run at(size_t first, size_t count) const {
        return {from + first * Conversion::kFrom, to + first * Conversion::kTo, count};
    }
    Run end() const { return at(samples, 0); }
    // How far the destination is ahead of the source.
    ptrdiff_t ahead() const {
        return reinterpret_cast<intptr_t>(to) - reinterpret_cast<intptr_t>(from);
    }
    bool isApart() const {
        const ptrdiff_t bytes = end().from - from;
        return ahead() >= bytes || end().ahead() <= -bytes;
    }
    // Whether no sample of a block is written where one is still to be read that comes after it.
    bool keepsOrder(From order, size_t blockSamples) const {
        const ptrdiff_t sign = order == From::kFirst ? 1 : -1;
        const auto [low, high] = std::minmax({sign * ahead(), sign * end().ahead()});
        return high <= 0 || low >= at(blockSamples, 0).from - from;
    }
};

template <typename Conversion>
void convertSingly(Run<Conversion> run, From order) {
    for (size_t left = run.samples; left > 0; --left) {
        const auto next = run.at(order == From::kFirst ? run.samples - left : left - 1, 1);
        convert<Conversion>(next.from, next.to);
    }
}

// Whole blocks at the end that comes first. Returns what is left.
template <Isa kIsa, typename Conversion>
Run<Conversion> convertWhole(Run<Conversion> run, From order = From::kFirst) {
    const auto start = order == From::kFirst ? run : run.end();
    const size_t rest = run.samples % kBlockSamples<kIsa>;
    convertBlocks<kIsa, Conversion>(start.from, start.to, run.samples / kBlockSamples<kIsa>, order);
    return run.at(order == From::kFirst ? run.samples - rest : 0, rest);
}

// Writes vectors where they are aligned, and the cache lines of a block are those of no other. Some
// samples are converted twice: in the first block and the next, or in the last and the one before.
template <Isa kIsa, typename Conversion>
void convertApart(Run<Conversion> run) {
    constexpr size_t kBlock = kBlockSamples<kIsa>, kTo = Conversion::kTo;
    const size_t bytes = (~reinterpret_cast<uintptr_t>(run.to) + 1) % (kBlock * kTo);
    // 11 * 3 is 1 more than a multiple of kBlock.
    const size_t aligned = kTo == 3 ? bytes * 11 % kBlock : bytes / kTo;
    if (aligned > 0) convertWhole<kIsa>(run.at(0, kBlock));
    const auto rest = convertWhole<kIsa>(run.at(aligned, run.samples - aligned));
    if (rest.samples > 0) convertWhole<kIsa>(run.at(run.samples - kBlock, kBlock));
}

// Returns what is left to convert.
template <Isa kIsa, typename Conversion>
Run<Conversion> convertWide(Run<Conversion> run, From order) {
    constexpr size_t kBlock = kBlockSamples<kIsa>;
    if (run.samples < kBlock) return run;
    if (run.isApart()) {
        convertApart<kIsa>(run);
        return run.end();
    }
    if (!run.keepsOrder(order, kBlock)) return run;
    if (order == From::kLast) {
        const size_t bytes = reinterpret_cast<uintptr_t>(run.end().to) % kCacheLine;
        const size_t unaligned = std::min(bytes / Conversion::kTo, run.samples);
        run.samples -= unaligned;
        convertSingly(run.at(run.samples, unaligned), order);
    }
    return convertWhole<kIsa>(run, order);
}

template <typename Conversion>
void convertRun(Run<Conversion> run, From order) {
    base::checkedMul(run.samples, std::max(Conversion::kFrom, Conversion::kTo));
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2")) run = convertWide<Isa::kAvx2>(run, order);
    if (__builtin_cpu_supports("ssse3")) run = convertWide<Isa::kSsse3>(run, order);
#elif defined(__aarch64__)
    run = convertWide<Isa::kNeon>(run, order);
#endif
    convertSingly(run, order);
}

}  // namespace

#define ZR_PCM_CONVERTER(name, order, ...)                                   \
    void name(const uint8_t* from, uint8_t* to, size_t samples) {            \
        convertRun<__VA_ARGS__>(Run<__VA_ARGS__>{from, to, samples}, order); \
    }
ZR_PCM_CONVERSIONS(ZR_PCM_CONVERTER)

}  // namespace android::pcm
