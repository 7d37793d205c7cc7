// SPDX-License-Identifier: MIT
#include "memory.h"

#include "longvideo.h"
#include "samplefile.h"
#include "windowsteps.h"

#include "app/mainwindow.h"
#include "batch/resultcodes.h"
#include "project/project.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <functional>
#include <thread>

// Most memory that a job ever occupies, each in a process of its own; "before" is what the process
// had with its empty window, or with its camera path, when the job began.
namespace
{
const QString Memory = QStringLiteral("--memory");

/** Megabytes, from a line of the process' status as "VmHWM:", the most ever, or "VmRSS:". */
double Megabytes(const QByteArray& line)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
    {
        qFatal("no status of the process");
    }
    for (const QByteArray& text : status.readAll().split('\n'))
    {
        if (text.startsWith(line))
        {
            return text.mid(line.size()).simplified().split(' ').front().toDouble() / 1024.0;
        }
    }
    qFatal("no such line in the status of the process");
}

void OnWorker(const std::function<void()>& work)
{
    std::thread worker(work);
    worker.join();
}

/** Runs @p job and prints what the process had before and at most. */
int Tell(const std::function<void()>& job)
{
    const double before = Megabytes("VmRSS:");
    job();
    QTextStream(stdout) << before << ' ' << Megabytes("VmHWM:");
    return 0;
}

void Expect(int result)
{
    if (result != ResultOk)
    {
        qFatal("the job failed");
    }
}

int TellAnalysis(const FileNames& names, int points)
{
    const MainWindow window(nullptr, QString());
    PosRotStabilizer stabilizer;
    stabilizer.FileNames = names;
    TrackingParameters parameters;
    parameters.MaxTrackingPoints = points;
    return Tell([&] { OnWorker([&] { Expect(stabilizer.AnalyseJob(parameters)); }); });
}

int TellExport(const FileNames& names)
{
    const MainWindow window(nullptr, QString());
    Project project;
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        path->Configure(&project, &project.FlowH, 0);
    }
    PosRotStabilizer stabilizer;
    stabilizer.FileNames = names;
    Expect(stabilizer.ReadTracking(TrackingParameters()));
    Expect(stabilizer.ReadStabilizeFile());
    Expect(stabilizer.GeneratePath());
    ExportSettings settings;
    settings.EnableCrop = true;
    settings.CropFactor = 1.2;
    return Tell([&] { OnWorker([&] { Expect(stabilizer.ExportJob(settings)); }); });
}

int TellPath(const QString& project)
{
    MainWindow window(nullptr, project);
    window.show();
    return Tell([&] { ShowHorizontalGraph(window); });
}

/** Runs this program again. @param arguments  kind of job, file or directory, number */
void RunAgain(benchmark::State& state, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), QStringList{Memory} + arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
    {
        qFatal("the process failed");
    }
    const QList<QByteArray> figures = process.readAllStandardOutput().split(' ');
    state.counters["before_mb"] = figures.value(0).toDouble();
    state.counters["peak_mb"] = figures.value(1).toDouble();
}

/** Arguments: height, most tracking points. */
void AnalysisMemory(benchmark::State& state)
{
    const SampleFile& file = SampleFile::Of(static_cast<int>(state.range(0)));
    for (auto unused : state)
    {
        static_cast<void>(unused);
        RunAgain(state,
                 {QStringLiteral("analysis"), file.Directory(), QString::number(state.range(1))});
    }
}
BENCHMARK(AnalysisMemory)
    ->ArgNames({"height", "points"})
    ->ArgsProduct({{360, 1080}, {200, 800}})
    ->Iterations(1);

/** Argument: height. */
void ExportMemory(benchmark::State& state)
{
    const SampleFile& file = SampleFile::Of(static_cast<int>(state.range(0)));
    PosRotStabilizer stabilizer;
    stabilizer.FileNames = file.Names();
    Expect(stabilizer.AnalyseJob(TrackingParameters()));
    for (auto unused : state)
    {
        static_cast<void>(unused);
        RunAgain(state, {QStringLiteral("export"), file.Directory()});
    }
}
BENCHMARK(ExportMemory)->ArgName("height")->Arg(360)->Arg(1080)->Iterations(1);

/** Argument: frames. The graph is on show. */
void PathMemory(benchmark::State& state)
{
    const QTemporaryDir dir;
    const QString project =
        WriteAnalysedProject(QDir(dir.path()), static_cast<int>(state.range(0)), 5, 12);
    for (auto unused : state)
    {
        static_cast<void>(unused);
        RunAgain(state, {QStringLiteral("path"), project});
    }
}
BENCHMARK(PathMemory)->ArgName("frames")->Arg(1800)->Arg(108000)->Arg(216000)->Iterations(1);
}  // namespace

std::optional<int> RunAsMemory()
{
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) != Memory)
    {
        return std::nullopt;
    }
    const QString kind = arguments.value(2);
    const QString place = arguments.value(3);
    if (kind == QStringLiteral("path"))
    {
        return TellPath(place);
    }
    const FileNames names = SampleFile::NamesIn(place);
    return kind == QStringLiteral("export") ? TellExport(names)
                                            : TellAnalysis(names, arguments.value(4).toInt());
}
