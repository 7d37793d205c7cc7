// SPDX-License-Identifier: MIT
#include "start.h"

#include "pairedtimes.h"

#include "app/mainwindow.h"

#include <QApplication>
#include <QMainWindow>
#include <QProcess>
#include <QTest>

#include <benchmark/benchmark.h>

#include <memory>

// From the start of the process until its window has been shown and painted, and out again; beside
// a process that shows an empty window of the same library.
namespace
{
const QString ProgramStart = QStringLiteral("--start-program");
const QString BareStart = QStringLiteral("--start-bare");

void RunAgain(const QString& argument)
{
    if (QProcess::execute(QCoreApplication::applicationFilePath(), {argument}) != 0)
    {
        qFatal("the window did not show");
    }
}

void Start(benchmark::State& state)
{
    RunAgain(ProgramStart);  // writes the files of a first start
    PairedTimes::Run(
        state, 1, [] { RunAgain(ProgramStart); }, [] { RunAgain(BareStart); });
}
BENCHMARK(Start)->UseManualTime()->Iterations(11)->Unit(benchmark::kMillisecond);
}  // namespace

std::optional<int> RunAsStart()
{
    const QString argument = QCoreApplication::arguments().value(1);
    if (argument != ProgramStart && argument != BareStart)
    {
        return std::nullopt;
    }
    const std::unique_ptr<QMainWindow> window =
        argument == BareStart ? std::make_unique<QMainWindow>()
                              : std::make_unique<MainWindow>(nullptr, QString());
    window->show();
    return QTest::qWaitForWindowExposed(window.get()) ? 0 : 1;
}
