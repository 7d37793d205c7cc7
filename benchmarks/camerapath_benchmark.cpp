// SPDX-License-Identifier: MIT
#include "longvideo.h"

#include "project/project.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/pathfilter.h"

#include <benchmark/benchmark.h>

namespace
{
/** Of a benchmark whose first argument is the number of frames. */
void TellNanosecondsPerFrame(benchmark::State& state)
{
    state.counters["ns_per_frame"] = benchmark::Counter(
        static_cast<double>(state.range(0)) * 1e-9,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/** One axis from motion to margins. Arguments: frames, filter type, strength. */
void Generate(benchmark::State& state)
{
    const QVector<double> motion = ShakyMotion(static_cast<int>(state.range(0)));
    Project project;
    project.ExportSettings.CropFactor = 1.1;
    project.FlowH.AvgPathOrder = static_cast<std::int32_t>(state.range(1));
    project.FlowH.AvgPathImages = static_cast<std::int32_t>(state.range(2));
    CameraPath path(true);
    path.Configure(&project, &project.FlowH, 0);
    for (auto unused : state)
    {
        static_cast<void>(unused);
        path.Generate(motion, 1920.0, 30.0);
    }
    TellNanosecondsPerFrame(state);
}
BENCHMARK(Generate)
    ->ArgNames({"frames", "type", "N"})
    ->ArgsProduct({{18000, 108000, 216000, 1000000}, {1, 2, 3, 4, 5}, {12, 50, 500}})
    ->Unit(benchmark::kMillisecond);

/** One cascade of three moving averages. Arguments: frames, strength. */
void Cascade(benchmark::State& state)
{
    const QVector<double> input = ShakyMotion(static_cast<int>(state.range(0)));
    const AxisFilterSettings settings;
    PathFilterStage stage;
    stage.Enabled = true;
    stage.WindowLength = 2 * static_cast<std::uint64_t>(state.range(1)) + 1;
    stage.Delay = CascadeDelay(stage.WindowLength, stage.Order);
    for (auto unused : state)
    {
        static_cast<void>(unused);
        FilterPath(stage, input, settings);
    }
    TellNanosecondsPerFrame(state);
}
BENCHMARK(Cascade)
    ->ArgNames({"frames", "N"})
    ->ArgsProduct({{216000}, {12, 50, 500}})
    ->Unit(benchmark::kMillisecond);
}  // namespace
