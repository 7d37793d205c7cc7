// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

namespace benchmark
{
class State;
}

/**
 * Times of our way of doing something and of the library calls in it alone, taken in turns in one
 * run, so that a busy machine hits both. Each runs on a thread of its own, as jobs do: the
 * allocator serves large images better there than on the main thread.
 */
class PairedTimes
{
public:
    /** Times both in each iteration of a benchmark with manual time, and reports on them. */
    static void Run(benchmark::State& state, int frames, const std::function<void()>& ours,
                    const std::function<void()>& bare);

private:
    /** Times both once; which comes first alternates. @return seconds of ours */
    double Measure(const std::function<void()>& ours, const std::function<void()>& bare);

    /**
     * Counters: ours_ms and bare_ms, medians for each of @p frames; ratio, median over the pairs;
     * ratio_low and ratio_high, the quartiles.
     */
    void Report(benchmark::State& state, int frames) const;

    std::vector<double> Ours;
    std::vector<double> Bare;
};
