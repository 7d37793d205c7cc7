// SPDX-License-Identifier: MIT
#include "samplefile.h"

#include "batch/resultcodes.h"
#include "project/project.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"
#include "walkthrough/shakemeter.h"

#include <opencv2/videoio.hpp>

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>

// Beside what a user of Debian can install instead: the two stabilizing filters of ffmpeg, run as a
// program, start included. Same clip, same codec, same bit rate, same crop, same half width of the
// smoothing; all else as each sets it by itself.
namespace
{
constexpr int HalfWidth = 12;  ///< frames to each side that the smoothing looks at
constexpr double CropFactor = 1.2;
constexpr int RepeatedAtEnd = 3;  ///< steps at the end that an export of ours repeats

double SecondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Ffmpeg(const QStringList& arguments)
{
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("ffmpeg"),
                  QStringList{"-hide_banner", "-nostdin", "-y"} + arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
    {
        qFatal("ffmpeg failed");
    }
}

/** A new project's settings with the smoothing and the crop of the comparison. */
void Bind(Project& project)
{
    QString noFile;
    static_cast<void>(project.Load(noFile, false));
    project.FlowH.AvgPathOrder = 1;
    project.FlowH.AvgPathImages = HalfWidth;
    project.ExportSettings.EnableCrop = true;
    project.ExportSettings.CropFactor = CropFactor;
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        path->Configure(&project, &project.FlowH, 0);
    }
}

/** What is left of the shake, in percent. */
double ShakeLeft(const QString& source, const QString& result)
{
    return 100.0 * MeasureShake(MeasureMotion(result), RepeatedAtEnd).Shift /
           MeasureShake(MeasureMotion(source), RepeatedAtEnd).Shift;
}

constexpr double NotMeasured = std::numeric_limits<double>::infinity();

struct Times
{
    double Analysis = NotMeasured;      ///< seconds
    double Export = NotMeasured;        ///< seconds
    double FirstPicture = NotMeasured;  ///< seconds from a changed smoothing
    double ShakeLeft = NotMeasured;     ///< percent
};

Times RunOurs(const SampleFile& file, const Project& project)
{
    Times times;
    PosRotStabilizer stabilizer;
    stabilizer.FileNames = file.Names();
    const auto check = [](int result)
    {
        if (result != ResultOk)
        {
            qFatal("a job failed");
        }
    };
    times.Analysis = SecondsOf([&] { check(stabilizer.AnalyseJob(project.TrackingParameters)); });
    check(stabilizer.GeneratePath());
    times.Export = SecondsOf([&] { check(stabilizer.ExportJob(project.ExportSettings)); });
    cv::VideoCapture video(file.Path());
    cv::Mat frame;
    cv::Mat picture;
    video.read(frame);
    times.FirstPicture = SecondsOf(
        [&]
        {
            check(stabilizer.GeneratePath());
            stabilizer.WarpFrameScaled(frame, picture, 0, 1.0);
        });
    times.ShakeLeft = ShakeLeft(QString::fromStdString(file.Path()),
                                QString::fromLocal8Bit(stabilizer.FileNames.ExportFile));
    return times;
}

Times RunPeer(const SampleFile& file)
{
    Times times;
    const QString source = QString::fromStdString(file.Path());
    const QString transforms = QString::fromStdString(file.Path("transforms.trf"));
    const QString result = QString::fromStdString(file.Path("peer.mp4"));
    const double seconds = file.Frames() / 30.0;
    const double bits =
        8.0 *
        static_cast<double>(QFileInfo(QString::fromStdString(file.Path("export.mp4"))).size());
    const QString filter =
        QStringLiteral(
            "vidstabtransform=input=%1:smoothing=%2:optalgo=avg:optzoom=0:crop=black,"
            "crop=iw/%3:ih/%3")
            .arg(transforms)
            .arg(HalfWidth)
            .arg(CropFactor);
    times.Analysis = SecondsOf(
        [&] {
            Ffmpeg({"-i", source, "-vf", "vidstabdetect=result=" + transforms, "-f", "null", "-"});
        });
    times.Export = SecondsOf(
        [&]
        {
            Ffmpeg({"-i", source, "-vf", filter, "-an", "-c:v", "mpeg4", "-b:v",
                    QString::number(bits / seconds, 'f', 0), result});
        });
    times.FirstPicture = SecondsOf(
        [&] {
            Ffmpeg({"-i", source, "-vf", filter, "-frames:v", "1", "-f", "null", "-"});
        });
    times.ShakeLeft = ShakeLeft(source, result);
    return times;
}

void KeepBest(Times& best, const Times& times)
{
    best.Analysis = std::min(best.Analysis, times.Analysis);
    best.Export = std::min(best.Export, times.Export);
    best.FirstPicture = std::min(best.FirstPicture, times.FirstPicture);
    best.ShakeLeft = times.ShakeLeft;  // the same in each run
}

/** The best times of three runs, in turns. Argument: height. */
void Peers(benchmark::State& state)
{
    if (QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty())
    {
        state.SkipWithError("ffmpeg is not installed");
        return;
    }
    const SampleFile& file = SampleFile::Of(static_cast<int>(state.range(0)));
    Project project;
    Bind(project);
    Times ours;
    Times peer;
    for (auto unused : state)
    {
        static_cast<void>(unused);
        KeepBest(ours, RunOurs(file, project));
        KeepBest(peer, RunPeer(file));
    }
    const auto tell = [&](const char* name, const Times& times)
    {
        const std::string prefix = name;
        state.counters[prefix + "_analysis_fps"] = file.Frames() / times.Analysis;
        state.counters[prefix + "_export_fps"] = file.Frames() / times.Export;
        state.counters[prefix + "_first_picture_ms"] = 1000.0 * times.FirstPicture;
        state.counters[prefix + "_shake_left_percent"] = times.ShakeLeft;
    };
    tell("ours", ours);
    tell("peer", peer);
}
BENCHMARK(Peers)->ArgName("height")->Arg(360)->Arg(1080)->Iterations(3)->Unit(benchmark::kSecond);
}  // namespace
