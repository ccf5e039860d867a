// The end of each program's main.

#pragma once

#include <benchmark/benchmark.h>

namespace bench {

// Runs what is registered, with the options that stand behind the program's own arguments.
inline int runBenchmarks(int argc, char** argv, int ownArguments) {
    argc -= ownArguments;
    argv += ownArguments;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

}  // namespace bench
