// SPDX-License-Identifier: MIT
#include "pairedtimes.h"

#include "batch/resultcodes.h"
#include "project/project.h"
#include "stabilizer/posrotstabilizer.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QtGlobal>

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

// Files beside the plain way of moving the same bytes: the data files through the same kind of
// stream, number by number and in one piece per frame; the project through the JSON classes alone.
namespace
{
constexpr int Pairs = 3;

enum BareWay
{
    ByNumber,
    ByFrame
};

FileNames NamesIn(const QTemporaryDir& dir)
{
    FileNames names;
    const auto fill = [&dir](char* target, const char* name)
    {
        qstrncpy(target, dir.filePath(QString::fromLatin1(name)).toLocal8Bit(),
                 static_cast<uint>(FileNameSize));
    };
    fill(names.SourceFile, "source.mp4");
    fill(names.TrackingFile, "Tracking.dat");
    fill(names.TrackingMatchingFile, "Tracking.dat.cfg");
    fill(names.StabilizationFile, "Stabilize.dat");
    fill(names.StabilizationMatchingFile, "Stabilize.dat.cfg");
    return names;
}

/** A stabilizer as an analysis of @p frames frames with @p points points each leaves it. */
void Fill(PosRotStabilizer& stabilizer, int frames, int points)
{
    std::vector<cv::Point2f> one;
    for (int i = 0; i < points; ++i)
    {
        one.emplace_back(static_cast<float>(i) * 2.3F, static_cast<float>(i) * 1.3F);
    }
    stabilizer.TrackingPoints.assign(static_cast<std::size_t>(frames), one);
}

void BareWrite(const std::string& path, const std::vector<std::vector<cv::Point2f>>& frames,
               BareWay way)
{
    std::ofstream file(path, std::ios::binary);
    for (const std::vector<cv::Point2f>& points : frames)
    {
        const auto* bytes = reinterpret_cast<const char*>(points.data());
        const std::size_t size = points.size() * sizeof(cv::Point2f);
        const std::size_t step = way == ByFrame ? size : sizeof(float);
        for (std::size_t done = 0; done < size; done += step)
        {
            file.write(bytes + done, static_cast<std::streamsize>(step));
        }
    }
}

void BareRead(const std::string& path, std::vector<std::vector<cv::Point2f>>& frames, BareWay way)
{
    std::ifstream file(path, std::ios::binary);
    for (std::vector<cv::Point2f>& points : frames)
    {
        auto* bytes = reinterpret_cast<char*>(points.data());
        const std::size_t size = points.size() * sizeof(cv::Point2f);
        const std::size_t step = way == ByFrame ? size : sizeof(float);
        for (std::size_t done = 0; done < size; done += step)
        {
            file.read(bytes + done, static_cast<std::streamsize>(step));
        }
    }
}

/** Arguments: frames, points per frame, bare way. */
void WriteTracking(benchmark::State& state)
{
    const QTemporaryDir dir;
    PosRotStabilizer stabilizer;
    stabilizer.FileNames = NamesIn(dir);
    Fill(stabilizer, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const std::string bareFile = dir.filePath(QStringLiteral("bare.dat")).toStdString();
    const auto way = static_cast<BareWay>(state.range(2));
    PairedTimes times;
    for (auto unused : state)
    {
        static_cast<void>(unused);
        state.SetIterationTime(times.Measure(
            [&]
            {
                if (stabilizer.WriteTracking() != ResultOk)
                {
                    qFatal("the tracking file was not written");
                }
            },
            [&] { BareWrite(bareFile, stabilizer.TrackingPoints, way); }));
    }
    times.Report(state, 1);
}

/** Arguments as above. */
void ReadTracking(benchmark::State& state)
{
    const QTemporaryDir dir;
    PosRotStabilizer stabilizer;
    stabilizer.FileNames = NamesIn(dir);
    Fill(stabilizer, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const TrackingParameters parameters;
    if (stabilizer.WriteTracking() != ResultOk)
    {
        qFatal("the tracking file was not written");
    }
    std::vector<std::vector<cv::Point2f>> points = stabilizer.TrackingPoints;
    const auto way = static_cast<BareWay>(state.range(2));
    PairedTimes times;
    for (auto unused : state)
    {
        static_cast<void>(unused);
        state.SetIterationTime(times.Measure(
            [&]
            {
                stabilizer.TrackingLoaded = false;
                if (stabilizer.ReadTracking(parameters) != ResultOk)
                {
                    qFatal("the tracking file was not read");
                }
            },
            [&] { BareRead(stabilizer.FileNames.TrackingFile, points, way); }));
    }
    times.Report(state, 1);
}

BENCHMARK(WriteTracking)
    ->ArgNames({"frames", "points", "by_frame"})
    ->ArgsProduct({{108000}, {800}, {ByNumber, ByFrame}})
    ->UseManualTime()
    ->Iterations(Pairs)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ReadTracking)
    ->ArgNames({"frames", "points", "by_frame"})
    ->ArgsProduct({{108000}, {800}, {ByNumber, ByFrame}})
    ->UseManualTime()
    ->Iterations(Pairs)
    ->Unit(benchmark::kMillisecond);

/** A project that was worked on for long: as many ignore sections as manual points. */
Project FullProject(int entries)
{
    Project project;
    QString noFile;
    static_cast<void>(project.Load(noFile, false));
    ManualPathSection section;
    for (int i = 0; i < entries; ++i)
    {
        IgnoreSection ignore;
        ignore.Start = i * 20;
        ignore.End = i * 20 + 7;
        project.FlowH.IgnoreSections.push_back(ignore);
        ManualPathPoint point;
        point.FrameNr = i * 20 + 10;
        point.Value = i * 0.37 - 1000.0;
        section.Points.push_back(point);
    }
    project.FlowH.ManualPath.push_back(section);
    return project;
}

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void WriteContent(const QString& path, const QByteArray& content)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(content);
}

/** Argument: ignore sections, and as many manual points. */
void SaveProject(benchmark::State& state)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("full.mvprj"));
    const QString bare = dir.filePath(QStringLiteral("bare.mvprj"));
    Project project = FullProject(static_cast<int>(state.range(0)));
    project.Save(path);
    const QJsonDocument document = QJsonDocument::fromJson(ContentOf(path));
    PairedTimes times;
    for (auto unused : state)
    {
        static_cast<void>(unused);
        state.SetIterationTime(times.Measure([&] { project.Save(path); },
                                             [&] { WriteContent(bare, document.toJson()); }));
    }
    times.Report(state, 1);
}

/** Argument as above. */
void LoadProject(benchmark::State& state)
{
    const QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("full.mvprj"));
    FullProject(static_cast<int>(state.range(0))).Save(path);
    Project project;
    PairedTimes times;
    for (auto unused : state)
    {
        static_cast<void>(unused);
        state.SetIterationTime(
            times.Measure([&] { static_cast<void>(project.Load(path, false)); }, [&]
                          { benchmark::DoNotOptimize(QJsonDocument::fromJson(ContentOf(path))); }));
    }
    if (project.FlowH.IgnoreSections.size() != static_cast<std::size_t>(state.range(0)))
    {
        state.SkipWithError("the project did not come back");
    }
    times.Report(state, 1);
}

BENCHMARK(SaveProject)
    ->ArgName("entries")
    ->Arg(10000)
    ->UseManualTime()
    ->Iterations(11)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(LoadProject)
    ->ArgName("entries")
    ->Arg(10000)
    ->UseManualTime()
    ->Iterations(11)
    ->Unit(benchmark::kMillisecond);
}  // namespace
