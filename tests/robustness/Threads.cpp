// usage: threads [COUNT [FIRST]]
// Performs every operation in so many threads at a time, each thread on trials of its own, from the
// FIRST one on: the first calls of the process meet. What comes of each must be what comes of it
// when a thread is alone, which is found out last.

#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "robustness/Operations.h"

namespace {

using Outcomes = std::vector<std::string>;

// The trials stand ready before the threads meet at the barrier, for each operation anew.
Outcomes outcomes(size_t first, std::barrier<>& start) {
    const auto operations = sweeps::operations();
    Outcomes all(operations.size());
    for (size_t i = 0; i < all.size(); ++i) {
        const size_t at = (first + i) % all.size();
        sweeps::Trial trial(operations[at].input(sweeps::kSmall));
        start.arrive_and_wait();
        trial.perform(operations[at]);
        all[at] = trial.outcome();
    }
    return all;
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 1;
    const size_t first = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 0;
    std::barrier start(count), none(1);
    std::vector<Outcomes> results(static_cast<size_t>(count));
    std::vector<std::thread> threads;
    for (Outcomes& result : results) threads.emplace_back([&] { result = outcomes(first, start); });
    for (auto& thread : threads) thread.join();
    const Outcomes alone = outcomes(first, none);
    int differences = 0;
    for (const Outcomes& result : results) {
        for (size_t i = 0; i < alone.size(); ++i) {
            if (result[i] == alone[i]) continue;
            std::printf("%s: not as alone\n", sweeps::operations()[i].name);
            ++differences;
        }
    }
    std::printf("%zu operations in %d threads: %d differences\n", alone.size(), count, differences);
    return differences == 0 ? 0 : 1;
}
