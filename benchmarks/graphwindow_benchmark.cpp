// SPDX-License-Identifier: MIT
#include "benchmarkedwindow.h"
#include "longvideo.h"
#include "windowsteps.h"

#include "batch/stabilizerhost.h"
#include "graphs/simpleplot.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QEvent>
#include <QTemporaryDir>
#include <QTest>

#include <benchmark/benchmark.h>

std::unique_ptr<MainWindow> BenchmarkedWindow;

namespace
{
/** Counts the paintings of a widget. */
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QObject* watched) { watched->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        Count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

    int Count = 0;
};

/**
 * The program's window on the horizontal graph of an analysed video. The first use makes the
 * window, all later ones open their project in it, as a user would.
 */
class WindowOnGraph
{
public:
    WindowOnGraph(int frames, int type, int depth) : Window(TheWindow())
    {
        const QString project = WriteAnalysedProject(QDir(Dir.path()), frames, type, depth);
        ClickTab(Window, 0);
        const AnswerModal question(QMessageBox::No);
        const AnswerModal dialog = AnswerModal::FileDialog(project);
        Window.findChild<QAction*>(QStringLiteral("actionopen_project"))->trigger();
        Page = ShowHorizontalGraph(Window);
    }

private:
    static MainWindow& TheWindow()
    {
        if (BenchmarkedWindow == nullptr)
        {
            BenchmarkedWindow = std::make_unique<MainWindow>(nullptr, QString());
            BenchmarkedWindow->show();
        }
        return *BenchmarkedWindow;
    }

    QTemporaryDir Dir;
    MainWindow& Window;

public:
    QWidget* Page = nullptr;  ///< tab on show
};

/**
 * From the press of "Calculate Camera Path" on a graph tab until the graph has been painted anew.
 * Arguments: frames, filter type, strength.
 */
void PressToPicture(benchmark::State& state)
{
    const WindowOnGraph window(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)),
                               static_cast<int>(state.range(2)));
    PaintCounter counter(window.Page->findChild<QwtPlot*>()->canvas());
    auto* button = ButtonOf(*window.Page, "pushButtonCalc");
    for (auto unused : state)
    {
        static_cast<void>(unused);
        counter.Count = 0;
        QTest::mouseClick(button, Qt::LeftButton);
        while (counter.Count == 0)
        {
            QCoreApplication::processEvents();
        }
        state.PauseTiming();
        WaitForSecondUpdate();
        state.ResumeTiming();
    }
}
BENCHMARK(PressToPicture)
    ->ArgNames({"frames", "type", "N"})
    ->ArgsProduct({{1800, 18000, 108000, 216000}, {3, 5}, {12, 500}})
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

/** The calculation alone, all four axes. Arguments as above. */
void GenerateFourAxes(benchmark::State& state)
{
    const WindowOnGraph window(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)),
                               static_cast<int>(state.range(2)));
    for (auto unused : state)
    {
        static_cast<void>(unused);
        benchmark::DoNotOptimize(ProgramHost.GeneratePath());
    }
}
BENCHMARK(GenerateFourAxes)
    ->ArgNames({"frames", "type", "N"})
    ->ArgsProduct({{1800, 18000, 108000, 216000}, {3, 5}, {12, 500}})
    ->Unit(benchmark::kMillisecond);

/** What the press takes from the widgets into project and paths. Argument: frames. */
void CommitTab(benchmark::State& state)
{
    const WindowOnGraph window(static_cast<int>(state.range(0)), 3, 12);
    auto* graph = window.Page->findChild<GraphWindow*>();
    for (auto unused : state)
    {
        static_cast<void>(unused);
        graph->SaveSettings();
    }
}
BENCHMARK(CommitTab)->ArgName("frames")->Arg(1800)->Arg(216000)->Unit(benchmark::kMicrosecond);
}  // namespace
