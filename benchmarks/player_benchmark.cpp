// SPDX-License-Identifier: MIT
#include "longvideo.h"

#include "app/log.h"
#include "batch/resultcodes.h"
#include "batch/stabilizerhost.h"
#include "batch/videofile.h"
#include "player/imageviewer.h"
#include "player/playerconverter.h"
#include "project/project.h"
#include "samplevideo/samplevideo.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"

#include <opencv2/imgproc.hpp>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTest>

#include <benchmark/benchmark.h>

// The preview of a 1080p video at zoom 0.5, step by step and as a whole.
namespace
{
constexpr int Width = 1920;
constexpr int Height = 1080;
constexpr int Frames = 30;
constexpr double Zoom = 0.5;

/** A rendered frame of the street. */
cv::Mat SourceFrame()
{
    SampleSettings settings;
    settings.Frames = 2;
    cv::Mat frame;
    RenderFrame(MakeSampleVideo(settings), 0, frame);
    return frame;
}

/** Paths of a shaky camera for the whole process, as a calculation leaves them. */
void CalculatePaths(Project& project)
{
    project.ExportSettings.CropFactor = 1.1;
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        path->Configure(&project, &project.FlowH, 0);
    }
    const QVector<double> motion = ShakyMotion(1000);
    QVector<double> rotation = motion;
    for (double& angle : rotation)
    {
        angle /= 4000.0;
    }
    PathHorizontal.Generate(motion, Width, 30.0);
    PathVertical.Generate(motion, Height, 30.0);
    PathRotation.Generate(rotation, 0.5, 30.0);
}

/** Reading alone: a lossless and a compressed video, by the library as the player reads it. */
void ReadFrame(benchmark::State& state)
{
    const QTemporaryDir dir;
    const std::string path = dir.filePath(state.range(0) != 0 ? "v.mp4" : "v.avi").toStdString();
    SampleSettings settings;
    settings.Frames = Frames;
    const SampleVideo sample = MakeSampleVideo(settings);
    cv::VideoWriter writer(path,
                           state.range(0) != 0 ? cv::VideoWriter::fourcc('m', 'p', '4', 'v')
                                               : cv::VideoWriter::fourcc('F', 'F', 'V', '1'),
                           30.0, cv::Size(Width, Height));
    cv::Mat frame;
    for (int i = 0; i < Frames; ++i)
    {
        RenderFrame(sample, i, frame);
        writer.write(frame);
    }
    writer.release();
    cv::VideoCapture video(path);
    for (auto unused : state)
    {
        static_cast<void>(unused);
        if (!video.read(frame))
        {
            state.PauseTiming();
            video.open(path);
            state.ResumeTiming();
        }
    }
}
BENCHMARK(ReadFrame)->ArgName("mp4")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/** The library's part of a frame: scale, colours, warp, rectangle. */
void BareCalls(benchmark::State& state)
{
    const cv::Mat frame = SourceFrame();
    cv::Mat small(Height / 2, Width / 2, CV_8UC3);
    cv::Mat warped(Height / 2, Width / 2, CV_8UC3);
    const cv::Mat matrix = (cv::Mat_<double>(2, 3) << 1.0, -0.001, 3.25, 0.001, 1.0, -2.5);
    const auto step = state.range(0);
    for (auto unused : state)
    {
        static_cast<void>(unused);
        if (step == 0 || step == 1)
        {
            cv::resize(frame, small, small.size(), 0, 0, cv::INTER_AREA);
        }
        if (step == 0 || step == 2)
        {
            cv::cvtColor(small, small, cv::COLOR_BGR2RGB, 0);
        }
        if (step == 0 || step == 3)
        {
            cv::warpAffine(small, warped, matrix, small.size(), cv::INTER_LINEAR,
                           cv::BORDER_CONSTANT, cv::Scalar(0));
        }
        if (step == 0)
        {
            cv::rectangle(warped, cv::Point(44, 25), cv::Point(916, 515),
                          cv::Scalar(120.0, 255.0, 120.0, 0.0), 1, cv::LINE_8, 0);
        }
    }
    const char* const names[] = {"all", "scale", "colours", "warp"};
    state.SetLabel(names[step]);
}
BENCHMARK(BareCalls)->ArgName("step")->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

/** The converter and the two viewers, without reading. Argument: 0 converts, 1 hands over, 2
 * paints. */
void ShowFrame(benchmark::State& state)
{
    Project project;
    CalculatePaths(project);
    static_cast<void>(ProgramHost.SelectStabilizer(PosRotStabilizer::Type, &project));
    PlayerConverter converter(nullptr, &project.ExportSettings);
    ImageViewer source;
    ImageViewer result;
    const auto depth = state.range(0);
    if (depth >= 1)
    {
        QObject::connect(&converter, &PlayerConverter::SrcImageReady, &source,
                         &ImageViewer::setImage);
        QObject::connect(&converter, &PlayerConverter::ExpImageReady, &result,
                         &ImageViewer::setImage);
    }
    source.show();
    result.show();
    converter.SetZoom(Zoom);
    converter.SetCrop(false);
    const cv::Mat frame = SourceFrame();
    converter.processFrame(frame, 0);  // dropped, closes the gate
    int index = 0;
    for (auto unused : state)
    {
        static_cast<void>(unused);
        converter.processFrame(frame, 1 + index++ % 900);
        if (depth >= 2)
        {
            source.repaint();
            result.repaint();
        }
    }
    const char* const names[] = {"converted", "handed over", "painted"};
    state.SetLabel(std::string(names[depth]) + ", 10 ms of the gate included");
}
BENCHMARK(ShowFrame)->ArgName("depth")->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

/** The gate alone. */
void Gate(benchmark::State& state)
{
    QMutex gate;
    gate.lock();
    for (auto unused : state)
    {
        static_cast<void>(unused);
        benchmark::DoNotOptimize(gate.tryLock(10));
    }
    gate.unlock();
}
BENCHMARK(Gate)->Unit(benchmark::kMillisecond);
}  // namespace
