// Looking for a key frame where there is none, which reads every sample to its end: ours beside our
// own walk over NAL units and a memmem for start codes. Results are compared before anything is
// timed, and a call that allocates ends the program.
//
// usage: key_frame_bench SMALL.264 LARGE.264 [options of Google Benchmark]

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <new>

#include "Helper/csd/NalUnits.h"
#include "Run.h"
#include "Stream.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

size_t allocations = 0;

}  // namespace

[[gnu::noinline]] void* operator new(size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}

namespace {

using android::MediaExtractorHelper;
using android::sp;
using bench::Bytes;
using bench::Stream;

const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

bool isKeyFrame(Bytes sample, int codecType) {
    return helper->isKeyFrame(sample.data(), sample.size(), codecType);
}

size_t walkUnits(Bytes stream) {
    size_t units = 0;
    for (;;) {
        const auto step = android::csd::nextNalUnit(stream, true);
        if (step.result != android::csd::NalWalk::kFound) return units;
        ++units;
        stream = step.rest;
    }
}

size_t countByMemmem(Bytes stream) {
    static constexpr uint8_t kStartCode[] = {0, 0, 1};
    size_t count = 0;
    const uint8_t* at = stream.data();
    const uint8_t* const end = at + stream.size();
    while (const void* found =
                   memmem(at, static_cast<size_t>(end - at), kStartCode, sizeof(kStartCode))) {
        ++count;
        at = static_cast<const uint8_t*>(found) + sizeof(kStartCode);
    }
    return count;
}

// No slice of an IDR picture is left: each calls itself a slice of another (ITU-T H.264 Table 7-1).
void removeIdr(Stream& stream) {
    for (const bench::Unit& unit : bench::naiveUnits(stream.bytes())) {
        uint8_t& header = stream.writable()[unit.offset];
        if ((header & 0x1F) == 5) header = static_cast<uint8_t>((header & 0xE0) | 1);
    }
}

void check(const std::string& name, Stream& stream) {
    const size_t units = bench::naiveUnits(stream.bytes()).size();
    const size_t before = allocations;
    if (isKeyFrame(stream.bytes(), android::kCodecTypeAvc) ||
        isKeyFrame(stream.bytes(), android::kCodecTypeMpeg4)) {
        bench::fail(name + ": a key frame where there is none");
    }
    if (allocations != before) bench::fail(name + ": isKeyFrame allocates");
    if (walkUnits(stream.bytes()) != units || countByMemmem(stream.bytes()) != units) {
        bench::fail(name + ": the scans disagree");
    }
    // The same with an IDR slice as its last unit, so that "none" above was no accident.
    Stream withIdr(stream.bytes());
    withIdr.writable()[bench::naiveUnits(stream.bytes()).back().offset] = 0x65;
    if (!isKeyFrame(withIdr.bytes(), android::kCodecTypeAvc)) bench::fail(name + ": IDR not found");
}

void registerAll(const std::string& name, Bytes stream) {
    const auto time = [&](const char* row, auto call) {
        benchmark::RegisterBenchmark((name + "/" + row).c_str(), [call,
                                                                  stream](benchmark::State& state) {
            for (auto _ : state) {
                benchmark::DoNotOptimize(call(stream));
            }
            state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(stream.size()));
        });
    };
    time("avc", [](Bytes bytes) { return isKeyFrame(bytes, android::kCodecTypeAvc); });
    time("mpeg4", [](Bytes bytes) { return isKeyFrame(bytes, android::kCodecTypeMpeg4); });
    time("walk", walkUnits);
    time("memmem", countByMemmem);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) bench::fail("usage: key_frame_bench SMALL.264 LARGE.264 [options]");
    constexpr size_t kSize = size_t{64} << 10;
    Stream small = bench::wholeUnits(bench::readFile(argv[1]), kSize);
    Stream large = bench::pieceOfUnit(bench::readFile(argv[2]), kSize);
    for (Stream* stream : {&small, &large}) removeIdr(*stream);
    check("small", small);
    check("large", large);
    registerAll("small", small.bytes());
    registerAll("large", large.bytes());
    return bench::runBenchmarks(argc, argv, 2);
}
