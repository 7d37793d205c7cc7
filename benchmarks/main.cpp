// SPDX-License-Identifier: MIT
#include "benchmarkedwindow.h"
#include "memory.h"
#include "start.h"

#include "app/allocator.h"
#include "app/programapplication.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace
{
/// Set for processes that a benchmark starts: they share its home.
const char* const InsideBenchmark = "MOLVANE_INSIDE_BENCHMARK";
}  // namespace

int main(int argc, char** argv)
{
    KeepFreedMemory();  // as the program does
    const QTemporaryDir home;
    if (!qEnvironmentVariableIsSet(InsideBenchmark))
    {
        qputenv("HOME", home.path().toLocal8Bit());  // never the user's own
        qputenv(InsideBenchmark, "1");
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    ProgramApplication = &application;
    if (const std::optional<int> exitCode = RunAsStart())
    {
        return *exitCode;
    }
    if (const std::optional<int> exitCode = RunAsMemory())
    {
        return *exitCode;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
    {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    BenchmarkedWindow.reset();
    return 0;
}
