// SPDX-License-Identifier: MIT
#include "pairedtimes.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

namespace
{
/** Seconds that @p work takes on a thread of its own, without the thread's start. */
double SecondsOf(const std::function<void()>& work)
{
    using Clock = std::chrono::steady_clock;
    std::chrono::duration<double> taken{};
    std::thread worker(
        [&]
        {
            const auto start = Clock::now();
            work();
            taken = Clock::now() - start;
        });
    worker.join();
    return taken.count();
}

/** The value that @p share of all, 0 to 1, lie below. */
double Quantile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    const double place = share * static_cast<double>(values.size() - 1);
    return values[static_cast<std::size_t>(std::lround(place))];
}
}  // namespace

void PairedTimes::Run(benchmark::State& state, int frames, const std::function<void()>& ours,
                      const std::function<void()>& bare)
{
    PairedTimes times;
    for (auto unused : state)
    {
        static_cast<void>(unused);
        state.SetIterationTime(times.Measure(ours, bare));
    }
    times.Report(state, frames);
}

double PairedTimes::Measure(const std::function<void()>& ours, const std::function<void()>& bare)
{
    if (Ours.size() % 2 == 0)
    {
        Ours.push_back(SecondsOf(ours));
        Bare.push_back(SecondsOf(bare));
    }
    else
    {
        Bare.push_back(SecondsOf(bare));
        Ours.push_back(SecondsOf(ours));
    }
    return Ours.back();
}

void PairedTimes::Report(benchmark::State& state, int frames) const
{
    std::vector<double> ratios;
    for (std::size_t i = 0; i < Ours.size(); ++i)
    {
        ratios.push_back(Ours[i] / Bare[i]);
    }
    const double perFrame = 1000.0 / frames;
    state.counters["ours_ms"] = Quantile(Ours, 0.5) * perFrame;
    state.counters["bare_ms"] = Quantile(Bare, 0.5) * perFrame;
    state.counters["ratio"] = Quantile(ratios, 0.5);
    state.counters["ratio_low"] = Quantile(ratios, 0.25);
    state.counters["ratio_high"] = Quantile(ratios, 0.75);
}
