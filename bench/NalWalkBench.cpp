// Walking all NAL units of a stream: ours, FFmpeg's and GStreamer's, a short loop over memchr, and
// what the machine can do at best. All are checked against the naive scan before any is timed.
//
// usage: nal_walk_bench SMALL.264 LARGE.264 [options of Google Benchmark]

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "Helper/csd/NalUnits.h"
#include "Peers.h"
#include "Run.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::MediaExtractorHelper;
using android::sp;
using bench::Bytes;
using bench::Stream;
using bench::Unit;

// ---- The walks: each calls visit(Unit) for every unit.

struct CoreWalk {
    template <typename Visit>
    void walk(Bytes stream, Visit visit) {
        namespace csd = android::csd;
        Bytes rest = stream;
        for (;;) {
            const csd::NalStep step = csd::nextNalUnit(rest, true);
            if (step.result != csd::NalWalk::kFound) return;
            visit(Unit{static_cast<size_t>(step.unit.data() - stream.data()), step.unit.size()});
            rest = step.rest;
        }
    }
};

struct PublicWalk {
    sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

    template <typename Visit>
    void walk(Bytes stream, Visit visit) {
        const uint8_t* data = stream.data();
        size_t size = stream.size();
        const uint8_t* unit;
        size_t unitSize;
        while (helper->getNextNALUnit(&data, &size, &unit, &unitSize, true) == android::OK) {
            visit(Unit{static_cast<size_t>(unit - stream.data()), unitSize});
        }
    }
};

// The shortest loop that leaves the search to the C library: from one 01 to the next.
struct MemchrWalk {
    template <typename Visit>
    void walk(Bytes stream, Visit visit) {
        const uint8_t* const end = stream.data() + stream.size();
        const uint8_t* unit = nullptr;
        for (const uint8_t* one = stream.data() + 2;; ++one) {
            one = static_cast<const uint8_t*>(std::memchr(one, 1, static_cast<size_t>(end - one)));
            if (one != nullptr && (one[-1] != 0 || one[-2] != 0)) continue;
            const uint8_t* last = one == nullptr ? end : one - 2;
            while (unit != nullptr && last > unit + 1 && last[-1] == 0) --last;
            if (unit != nullptr)
                visit(Unit{static_cast<size_t>(unit - stream.data()),
                           static_cast<size_t>(last - unit)});
            if (one == nullptr) return;
            unit = one + 1;
        }
    }
};

// ---- The checks

template <typename Walker>
void checkWalker(const char* name, Bytes stream, const std::vector<Unit>& expected) {
    std::vector<Unit> found;
    Walker().walk(stream, [&](const Unit& unit) { found.push_back(unit); });
    if (found != expected) bench::fail(std::string(name) + " disagrees with the naive scan");
}

// The filter does not report units, it only copies parameter sets. So the check runs on a copy of
// the stream in which each unit calls itself an SPS: then every unit must come back. Units keep the
// zero bytes that followed them, which is all that may lie between one and the next start code.
void checkFilter(Bytes original, const std::vector<Unit>& expected) {
    constexpr std::array<uint8_t, 3> kStartCode{0, 0, 1};
    Stream stream(original);
    for (const Unit& unit : expected) stream.writable()[unit.offset] = 0x67;

    bench::ExtradataFilter filter;
    Bytes rest = filter.filter(stream.bytes());
    const auto expect = [&rest](Bytes bytes) {
        if (rest.size() < bytes.size() || !std::ranges::equal(rest.first(bytes.size()), bytes)) {
            bench::fail("extract_extradata disagrees with the naive scan");
        }
        rest = rest.subspan(bytes.size());
    };
    for (const Unit& unit : expected) {
        expect(kStartCode);
        expect(stream.bytes().subspan(unit.offset, unit.size));
        while (!rest.empty() && rest[0] == 0 && !(rest.size() > 2 && rest[1] == 0 && rest[2] == 1))
            rest = rest.subspan(1);
    }
    if (!rest.empty()) bench::fail("extract_extradata finds more than the naive scan");
}

// ---- The timings

void countBytes(benchmark::State& state, Bytes stream) {
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(stream.size()));
}

template <typename Walker>
void timeWalker(benchmark::State& state, Bytes stream) {
    Walker walker;
    for (auto _ : state) {
        size_t sum = 0;
        walker.walk(stream, [&](const Unit& unit) { sum += unit.offset ^ unit.size; });
        benchmark::DoNotOptimize(sum);
    }
    countBytes(state, stream);
}

void timeFilter(benchmark::State& state, Bytes stream) {
    bench::ExtradataFilter filter;
    for (auto _ : state) benchmark::DoNotOptimize(filter.filter(stream));
    countBytes(state, stream);
}

// The limit for reading: a search for a byte value that is not there.
void timeMemchr(benchmark::State& state, Bytes stream) {
    constexpr uint8_t kAbsent = 0x9D;
    std::vector<uint8_t> copy(stream.begin(), stream.end());
    std::ranges::replace(copy, kAbsent, uint8_t{kAbsent + 1});
    for (auto _ : state) {
        const void* found = std::memchr(copy.data(), kAbsent, copy.size());
        benchmark::DoNotOptimize(found);
        if (found != nullptr) bench::fail("the byte that memchr looks for occurs");
    }
    countBytes(state, stream);
}

void timeMemcpy(benchmark::State& state, Bytes stream) {
    std::vector<uint8_t> copy(stream.size());
    for (auto _ : state) {
        std::memcpy(copy.data(), stream.data(), stream.size());
        benchmark::ClobberMemory();
    }
    countBytes(state, stream);
}

void registerAll(const std::string& stream, Bytes bytes) {
    const std::vector<Unit> expected = bench::naiveUnits(bytes);
    if (expected.empty() || expected.back().size < 2) bench::fail("no stream to walk: " + stream);
    checkWalker<CoreWalk>("nextNalUnit", bytes, expected);
    checkWalker<PublicWalk>("getNextNALUnit", bytes, expected);
    checkWalker<MemchrWalk>("the loop over memchr", bytes, expected);
    checkWalker<bench::GstWalker>("gst_h264_parser_identify_nalu", bytes, expected);
    checkFilter(bytes, expected);
    benchmark::AddCustomContext(stream, std::to_string(expected.size()) + " units in " +
                                                std::to_string(bytes.size()) + " bytes");

    using Time = void (*)(benchmark::State&, Bytes);
    constexpr std::pair<const char*, Time> kTimes[] = {
            {"core", timeWalker<CoreWalk>},
            {"public", timeWalker<PublicWalk>},
            {"ffmpeg", timeFilter},
            {"gstreamer", timeWalker<bench::GstWalker>},
            {"memchr", timeMemchr},
            {"memcpy", timeMemcpy},
            {"memchr01", timeWalker<MemchrWalk>},
    };
    for (const auto& [name, time] : kTimes) {
        benchmark::RegisterBenchmark(
                (stream + "/" + name).c_str(),
                [time, bytes](benchmark::State& state) { time(state, bytes); });
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) bench::fail("usage: nal_walk_bench SMALL.264 LARGE.264 [options]");
    const std::vector<uint8_t> small = bench::readFile(argv[1]);
    const std::vector<uint8_t> large = bench::readFile(argv[2]);
    constexpr size_t kShort = size_t{64} << 10;
    constexpr size_t kLong = size_t{64} << 20;
    const Stream smallShort = bench::wholeUnits(small, kShort);
    const Stream smallLong = bench::wholeUnits(small, kLong);
    const Stream largeShort = bench::pieceOfUnit(large, kShort);
    const Stream largeLong = bench::wholeUnits(large, kLong);
    registerAll("small/64KiB", smallShort.bytes());
    registerAll("large/64KiB", largeShort.bytes());
    registerAll("small/64MiB", smallLong.bytes());
    registerAll("large/64MiB", largeLong.bytes());
    return bench::runBenchmarks(argc, argv, 2);
}
