// Time of the processor rather than of the clock: a machine that has other work to do doesn't make ours dearer.
#pragma once

#include <benchmark/benchmark.h>
#include <time.h>

#include <algorithm>
#include <vector>

namespace vndk::bench {

/// Seconds that this thread has worked.
inline double processorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Seconds that the work takes.
template <class F>
double timed(F&& work) {
    const double start = processorSeconds();
    work();
    return processorSeconds() - start;
}

/// Milliseconds of all rounds of a benchmark, in ascending order and never empty; `round` gives the seconds of one.
template <class F>
std::vector<double> sortedRounds(benchmark::State& state, F&& round) {
    std::vector<double> rounds;
    for (auto _ : state) {
        const double seconds = round();
        state.SetIterationTime(seconds);
        rounds.push_back(seconds * 1000);
    }
    if (rounds.empty())
        rounds.push_back(0); // not measured
    std::sort(rounds.begin(), rounds.end());
    return rounds;
}

/// A single round that the system took for itself says nothing about the median.
inline double median(const std::vector<double>& sorted) { return sorted[sorted.size() / 2]; }

} // namespace vndk::bench
