// Loading the shared library, beside TagLib. Each measurement is a process of its own.
//
// usage: load_bench PROBE OURS TAGLIB [options of Google Benchmark]

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "Run.h"
#include "Stream.h"

namespace {

void timeLoad(benchmark::State& state, const std::string& command) {
    long long nanoseconds = 0;
    int objects = 0;
    long dirtyBytes = 0;
    for (auto _ : state) {
        std::FILE* probe = popen(command.c_str(), "r");
        if (probe == nullptr ||
            std::fscanf(probe, "%lld %d %ld", &nanoseconds, &objects, &dirtyBytes) != 3 ||
            pclose(probe) != 0) {
            bench::fail("no measurement from: " + command);
        }
        state.SetIterationTime(static_cast<double>(nanoseconds) * 1e-9);
    }
    state.counters["objects"] = objects;
    state.counters["dirty"] = static_cast<double>(dirtyBytes);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) bench::fail("usage: load_bench PROBE OURS TAGLIB [options]");
    const std::string probe = argv[1];
    for (const auto& [name, library] : {std::pair("ours", argv[2]), std::pair("taglib", argv[3])}) {
        const std::string command = probe + " '" + library + "'";
        benchmark::RegisterBenchmark(
                name, [command](benchmark::State& state) { timeLoad(state, command); })
                ->UseManualTime()
                ->Iterations(1);
    }
    return bench::runBenchmarks(argc, argv, 3);
}
