#include "Helper/pcm/Convert.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Helper/base/Checked.h"
#include "Helper/pcm/Samples.h"

namespace android::pcm {
namespace {

constexpr size_t kCacheLine = 64;
constexpr size_t kSmallestBlock = std::min(kBlockSamples<Isa::kSsse3>, kBlockSamples<Isa::kNeon>);

template <Conversion kName>
struct Run {
    const uint8_t* from;
    uint8_t* to;
    size_t samples;

    Run at(size_t first, size_t count) const {
        return {from + first * kRow<kName>.from, to + first * kRow<kName>.to, count};
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
    // Whether a block may be read whole before it is written: no sample is then written over one of
    // the same block that comes after it, which the plain loop would read only now. That is so
    // where the destination lags behind the source, and where it leads by a block. As it gains or
    // loses alike with each sample, what holds at both ends of the run holds between them.
    bool keepsOrder(From order, size_t blockSamples) const {
        const ptrdiff_t sign = order == From::kFirst ? 1 : -1;
        const ptrdiff_t leadHere = sign * ahead(), leadThere = sign * end().ahead();
        const ptrdiff_t block = at(blockSamples, 0).from - from;
        const bool lags = leadHere <= 0 && leadThere <= 0;
        const bool leads = leadHere >= block && leadThere >= block;
        return lags || leads;
    }
};

template <Conversion kName>
void convertSingly(Run<kName> run, From order) {
    for (size_t left = run.samples; left > 0; --left) {
        const auto next = run.at(order == From::kFirst ? run.samples - left : left - 1, 1);
        convertSample<kName>(next.from, next.to);
    }
}

template <Isa kIsa, Conversion kName>
BlockConverter* blockConverter() {
    constexpr auto kIndex = static_cast<size_t>(kName);
    if constexpr (kIsa == Isa::kAvx2) return kAvx2Blocks[kIndex];
    if constexpr (kIsa == Isa::kSsse3) return kSsse3Blocks[kIndex];
    // cppcheck-suppress missingReturn ; one of the conditions holds
    if constexpr (kIsa == Isa::kNeon) return kNeonBlocks[kIndex];
}

// Whole blocks at the end that comes first. Returns what is left.
template <Isa kIsa, Conversion kName>
Run<kName> convertWhole(Run<kName> run, From order = From::kFirst) {
    const auto start = order == From::kFirst ? run : run.end();
    const size_t blocks = run.samples / kBlockSamples<kIsa>;
    const size_t rest = run.samples % kBlockSamples<kIsa>;
    blockConverter<kIsa, kName>()(start.from, start.to, blocks, order);
    return run.at(order == From::kFirst ? run.samples - rest : 0, rest);
}

// Writes vectors where they are aligned, and the cache lines of a block are those of no other. Some
// samples are converted twice: in the first block and the next, or in the last and the one before.
template <Isa kIsa, Conversion kName>
void convertApart(Run<kName> run) {
    constexpr size_t kBlock = kBlockSamples<kIsa>, kTo = kRow<kName>.to;
    const size_t bytes = (~reinterpret_cast<uintptr_t>(run.to) + 1) % (kBlock * kTo);
    // 11 * 3 is 1 more than a multiple of kBlock.
    const size_t aligned = kTo == 3 ? bytes * 11 % kBlock : bytes / kTo;
    if (aligned > 0) convertWhole<kIsa>(run.at(0, kBlock));
    const auto rest = convertWhole<kIsa>(run.at(aligned, run.samples - aligned));
    if (rest.samples > 0) convertWhole<kIsa>(run.at(run.samples - kBlock, kBlock));
}

// Returns what is left to convert.
template <Isa kIsa, Conversion kName>
Run<kName> convertWide(Run<kName> run, From order) {
    constexpr size_t kBlock = kBlockSamples<kIsa>;
    if (run.samples < kBlock) return run;
    if (run.isApart()) {
        convertApart<kIsa>(run);
        return run.end();
    }
    if (!run.keepsOrder(order, kBlock)) return run;
    if (order == From::kLast) {
        const size_t bytes = reinterpret_cast<uintptr_t>(run.end().to) % kCacheLine;
        const size_t unaligned = std::min(bytes / kRow<kName>.to, run.samples);
        run.samples -= unaligned;
        convertSingly(run.at(run.samples, unaligned), order);
    }
    return convertWhole<kIsa>(run, order);
}

// Not a Run, which would go through memory.
template <Conversion kName>
[[gnu::noinline]] void convertLong(const uint8_t* from, uint8_t* to, size_t samples) {
    constexpr const Row& row = kRow<kName>;
    Run<kName> run{from, to, samples};
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2")) run = convertWide<Isa::kAvx2>(run, row.order);
    if (__builtin_cpu_supports("ssse3")) run = convertWide<Isa::kSsse3>(run, row.order);
#elif defined(__aarch64__)
    run = convertWide<Isa::kNeon>(run, row.order);
#endif
    convertSingly(run, row.order);
}

// A caller that converts sample by sample does not wait until registers for blocks are saved.
template <Conversion kName>
void convertRun(const uint8_t* from, uint8_t* to, size_t samples) {
    constexpr const Row& row = kRow<kName>;
    base::checkedMul(samples, std::max(row.from, row.to));
    if (samples < kSmallestBlock) return convertSingly<kName>({from, to, samples}, row.order);
    convertLong<kName>(from, to, samples);
}

using Converter = void(const uint8_t* from, uint8_t* to, size_t samples);

template <size_t... kNames>
constexpr std::array<Converter*, kRows.size()> converters(std::index_sequence<kNames...>) {
    return {convertRun<Conversion{kNames}>...};
}

constexpr auto kConverters = converters(std::make_index_sequence<kRows.size()>());

}  // namespace

void convert(Conversion conversion, const uint8_t* from, uint8_t* to, size_t samples) {
    kConverters[static_cast<size_t>(conversion)](from, to, samples);
}

}  // namespace android::pcm
