// SPDX-License-Identifier: MIT
#include "pairedtimes.h"
#include "samplefile.h"

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

/** A stabilizer as an analysis leaves it, with files in a directory of its own. */
struct AnalysedVideo
{
    /** @param state  first arguments: frames, points per frame */
    explicit AnalysedVideo(const benchmark::State& state)
    {
        Object.FileNames = SampleFile::NamesIn(Dir.path());
        std::vector<cv::Point2f> one;
        one.reserve(static_cast<std::size_t>(state.range(1)));
        for (int i = 0; i < state.range(1); ++i)
        {
            one.emplace_back(static_cast<float>(i) * 2.3F, static_cast<float>(i) * 1.3F);
        }
        Object.TrackingPoints.assign(static_cast<std::size_t>(state.range(0)), one);
    }

    void Write()
    {
        if (Object.WriteTracking() != ResultOk)
        {
            qFatal("the tracking file was not written");
        }
    }

    const QTemporaryDir Dir;
    PosRotStabilizer Object;
};

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
    AnalysedVideo video(state);
    const std::string bareFile = video.Dir.filePath(QStringLiteral("bare.dat")).toStdString();
    const auto way = static_cast<BareWay>(state.range(2));
    PairedTimes::Run(
        state, 1, [&] { video.Write(); },
        [&] { BareWrite(bareFile, video.Object.TrackingPoints, way); });
}

/** Arguments as above. */
void ReadTracking(benchmark::State& state)
{
    AnalysedVideo video(state);
    video.Write();
    const TrackingParameters parameters;
    std::vector<std::vector<cv::Point2f>> points = video.Object.TrackingPoints;
    const auto way = static_cast<BareWay>(state.range(2));
    PairedTimes::Run(
        state, 1,
        [&]
        {
            video.Object.TrackingLoaded = false;
            if (video.Object.ReadTracking(parameters) != ResultOk)
            {
                qFatal("the tracking file was not read");
            }
        },
        [&] { BareRead(video.Object.FileNames.TrackingFile, points, way); });
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
    PairedTimes::Run(
        state, 1, [&] { project.Save(path); }, [&] { WriteContent(bare, document.toJson()); });
}

/** Argument as above. */
void LoadProject(benchmark::State& state)
{
    const QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("full.mvprj"));
    FullProject(static_cast<int>(state.range(0))).Save(path);
    Project project;
    PairedTimes::Run(
        state, 1, [&] { static_cast<void>(project.Load(path, false)); },
        [&] { benchmark::DoNotOptimize(QJsonDocument::fromJson(ContentOf(path))); });
    if (project.FlowH.IgnoreSections.size() != static_cast<std::size_t>(state.range(0)))
    {
        state.SkipWithError("the project did not come back");
    }
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
