// SPDX-License-Identifier: MIT
#include "pairedtimes.h"
#include "samplefile.h"

#include "batch/resultcodes.h"
#include "project/project.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/video/tracking.hpp>
#include <opencv2/videoio.hpp>

#include <QtGlobal>

#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

// The long jobs beside a loop of nothing but the library calls in them, over the same video.
namespace
{
constexpr int Pairs = 11;

/** The library calls of one step from frame to frame. */
class BareStep
{
public:
    void Measure(const cv::Mat& previous, const cv::Mat& next, std::vector<cv::Point2f>& points)
    {
        const cv::TermCriteria criteria(cv::TermCriteria::COUNT + cv::TermCriteria::EPS, 30, 0.01);
        cv::calcOpticalFlowPyrLK(previous, next, points, Found, Status, Errors, cv::Size(21, 21), 3,
                                 criteria, 0, 0.0001);
        std::size_t kept = 0;
        for (std::size_t i = 0; i < Status.size(); ++i)
        {
            if (Status[i] != 0)
            {
                points[kept] = points[i];
                Found[kept++] = Found[i];
            }
        }
        points.resize(kept);
        Found.resize(kept);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
        benchmark::DoNotOptimize(cv::estimateRigidTransform(points, Found, false));
#pragma GCC diagnostic pop
    }

private:
    std::vector<cv::Point2f> Found;
    std::vector<uchar> Status;
    std::vector<float> Errors;
};

void BareAnalysis(const std::string& path, int frames, int maxPoints)
{
    cv::VideoCapture video(path);
    BareStep step;
    cv::Mat frame;
    cv::Mat previous;
    cv::Mat next;
    std::vector<cv::Point2f> points;
    video.read(frame);
    cv::cvtColor(frame, previous, cv::COLOR_BGR2GRAY, 0);
    for (int i = 1; i < frames; ++i)
    {
        cv::goodFeaturesToTrack(previous, points, maxPoints, 0.01, 30.0, cv::noArray(), 3, false,
                                0.04);
        video.read(frame);
        cv::cvtColor(frame, next, cv::COLOR_BGR2GRAY, 0);
        step.Measure(previous, next, points);
        next.copyTo(previous);
    }
    step.Measure(previous, next, points);
}

/** Per frame. Arguments: height, most tracking points. */
void Analysis(benchmark::State& state)
{
    const SampleFile& file = SampleFile::Of(static_cast<int>(state.range(0)));
    TrackingParameters parameters;
    parameters.MaxTrackingPoints = static_cast<std::int32_t>(state.range(1));
    PosRotStabilizer stabilizer;
    stabilizer.FileNames = file.Names();
    const auto analyse = [&]
    {
        if (stabilizer.AnalyseJob(parameters) != ResultOk)
        {
            qFatal("the analysis failed");
        }
    };
    const auto bare = [&]
    { BareAnalysis(file.Path(), file.Frames(), parameters.MaxTrackingPoints); };
    PairedTimes::Run(state, file.Frames(), analyse, bare);
}
BENCHMARK(Analysis)
    ->ArgNames({"height", "points"})
    ->ArgsProduct({{360, 1080}, {200, 800}})
    ->UseManualTime()
    ->Iterations(Pairs)
    ->Unit(benchmark::kMillisecond);

enum ExportKind
{
    Cropped,
    CroppedAndTurned,
    Rescaled
};

ExportSettings SettingsOf(ExportKind kind, int height)
{
    ExportSettings settings;
    settings.EnableCrop = kind != Rescaled;
    settings.CropFactor = 1.2;
    settings.ExpAngle = kind == CroppedAndTurned ? 1.5 : 0.0;
    settings.EnRescale = kind == Rescaled;
    settings.ExpResH = height * 4 / 3 / 2 * 2;
    settings.ExpResV = height * 3 / 4 / 2 * 2;
    return settings;
}

cv::Mat PathMatrix(int frame)
{
    const double angle = PathRotation.CorrectionAt(frame);
    return (cv::Mat_<double>(2, 3) << std::cos(angle), -std::sin(angle),
            PathHorizontal.CorrectionAt(frame), std::sin(angle), std::cos(angle),
            PathVertical.CorrectionAt(frame));
}

void BareExport(const SampleFile& file, const ExportSettings& settings)
{
    cv::VideoCapture video(file.Path());
    cv::VideoWriter writer;
    cv::Mat frame;
    cv::Mat warped;
    cv::Mat turned;
    cv::Mat scaled;
    for (int i = 0; i < file.Frames(); ++i)
    {
        if (i < file.Frames() - 2)  // the program reads as many
        {
            video.read(frame);
        }
        cv::warpAffine(frame, warped, PathMatrix(i), frame.size(), cv::INTER_LINEAR,
                       cv::BORDER_CONSTANT, cv::Scalar(0));
        cv::Mat output = warped;
        if (settings.ExpAngle != 0.0)
        {
            cv::warpAffine(warped, turned,
                           cv::getRotationMatrix2D(cv::Point2f(0, 0), settings.ExpAngle, 1.0),
                           warped.size(), cv::INTER_LINEAR, cv::BORDER_CONSTANT, cv::Scalar(0));
            output = turned;
        }
        if (settings.EnableCrop)
        {
            const int width = static_cast<int>(frame.cols / settings.CropFactor) / 2 * 2;
            const int height = static_cast<int>(frame.rows / settings.CropFactor) / 2 * 2;
            output = output(
                cv::Rect((frame.cols - width) / 2, (frame.rows - height) / 2, width, height));
        }
        if (settings.EnRescale)
        {
            cv::resize(output, scaled, cv::Size(settings.ExpResH, settings.ExpResV), 0, 0,
                       cv::INTER_LINEAR);
            output = scaled;
        }
        if (i == 0)
        {
            writer.open(file.Path("bare.mp4"), cv::VideoWriter::fourcc('m', 'p', '4', 'v'),
                        video.get(cv::CAP_PROP_FPS), output.size(), true);
        }
        writer.write(output);
    }
}

/** Per frame. Arguments: height, kind: 0 crop, 1 crop and rotation, 2 rescale. */
void Export(benchmark::State& state)
{
    const int height = static_cast<int>(state.range(0));
    const auto kind = static_cast<ExportKind>(state.range(1));
    const SampleFile& file = SampleFile::Of(height);
    Project project;
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        path->Configure(&project, &project.FlowH, 0);
    }
    PosRotStabilizer stabilizer;
    stabilizer.FileNames = file.Names();
    if (stabilizer.AnalyseJob(project.TrackingParameters) != ResultOk ||
        stabilizer.GeneratePath() != ResultOk)
    {
        qFatal("no camera path");
    }
    const ExportSettings settings = SettingsOf(kind, height);
    const auto exportVideo = [&]
    {
        if (stabilizer.ExportJob(settings) != ResultOk)
        {
            qFatal("the export failed");
        }
    };
    PairedTimes::Run(state, file.Frames(), exportVideo, [&] { BareExport(file, settings); });
    const char* const labels[] = {"crop", "crop and rotation", "rescale"};
    state.SetLabel(labels[kind]);
}
BENCHMARK(Export)
    ->ArgNames({"height", "kind"})
    ->ArgsProduct({{360, 1080}, {Cropped, CroppedAndTurned, Rescaled}})
    ->UseManualTime()
    ->Iterations(Pairs)
    ->Unit(benchmark::kMillisecond);
}  // namespace
