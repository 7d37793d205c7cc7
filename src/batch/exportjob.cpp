// SPDX-License-Identifier: MIT
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/samefile.h"
#include "batch/stabilize.h"
#include "batch/stabilizerhost.h"
#include "batch/videofile.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/croprectangle.h"

#include <opencv2/imgproc.hpp>

#include <string>

namespace
{
constexpr int ProgressStep = 50;  ///< frames between two progress lines

/**
 * The way of a warped frame to the output: rotation, crop, scale. Its images are reused from frame
 * to frame.
 */
class FrameFinisher
{
public:
    FrameFinisher(const ExportSettings& settings, const CropRectangle& crop)
        : Settings(settings),
          Area(crop.Left, crop.Top, crop.CropWidth, crop.CropHeight),
          Rotate(IsRotation(settings.ExpAngle))
    {}

    /** The finished frame, a view into @p warped or into this object; good until the next call. */
    cv::Mat Finish(const cv::Mat& warped)
    {
        cv::Mat cropped = Settings.EnableCrop ? Crop(warped) : warped;
        // Nothing is left of a small video at a large crop factor; the writer then refuses the
        // frame.
        if (!Settings.EnRescale || cropped.empty())
        {
            return cropped;
        }
        cv::resize(cropped, Output, cv::Size(Settings.ExpResH, Settings.ExpResV), 0, 0,
                   cv::INTER_LINEAR);
        return Output;
    }

private:
    cv::Mat Crop(const cv::Mat& warped)
    {
        if (!Rotate)
        {
            return warped(Area);
        }
        // Deliberate: about the top left corner, like the stabilizing warp.
        const cv::Mat matrix = cv::getRotationMatrix2D(cv::Point2f(0, 0), Settings.ExpAngle, 1.0);
        cv::warpAffine(warped, Rotated, matrix, warped.size(), cv::INTER_LINEAR,
                       cv::BORDER_CONSTANT, cv::Scalar(0, 0, 0, 0));
        return Rotated(Area);
    }

    const ExportSettings& Settings;
    cv::Rect Area;
    bool Rotate;
    cv::Mat Rotated;
    cv::Mat Output;
};

void LogProgress(int frame, int frameCount)
{
    const std::string line =
        "Frame: " + std::to_string(frame) + "/" + std::to_string(frameCount) + " exported!";
    ProgramHost.Log(LogDebug, line.c_str());
}

/**
 * Moves, finishes and writes all frames. @p source holds the first one on entry.
 * @return ResultOk, ResultDamaged when a frame cannot be read, ResultAborted
 */
int ExportFrames(Stabilize& stabilizer, VideoFile& video, int frameCount, FrameFinisher& finisher,
                 cv::Mat& source)
{
    cv::Mat warped;
    for (int i = 0; i < frameCount; ++i)
    {
        if (stabilizer.JobStatus == JobAbortRequested)
        {
            return ResultAborted;
        }
        // Deliberate: the last two frames are not read; their path moves the picture read last, so
        // that a source a little shorter than it says still exports whole.
        if (i < frameCount - 2 && video.ReadFrame(source) != ResultOk)
        {
            return ResultDamaged;
        }
        stabilizer.WarpFrame(source, warped, i);
        video.WriteFrame(
            finisher.Finish(warped));  // a writer that cannot open shows at the next read
        if (i % ProgressStep == 0)
        {
            LogProgress(i, frameCount);
        }
    }
    return ResultOk;
}
}  // namespace

int Stabilize::ExportJob(const ::ExportSettings& settings)
{
    JobStatus = JobRunning;
    ExportSettings = settings;
    if (!TrackingLoaded || !StabilizeLoaded)
    {
        return EndJob(ResultNoData);
    }
    if (!PathGenerated)
    {
        static_cast<void>(GeneratePath());  // cannot fail here: the motion is loaded
    }
    VideoFile video;
    int result = video.Open(FileNames.SourceFile);
    if (result != ResultOk)
    {
        return EndJob(result);
    }
    const int frameCount = video.GetFrameCount();
    CropRectangle crop;
    if (ExportSettings.EnableCrop &&
        crop.Calculate(ExportSettings, video.GetHeight(), video.GetWidth()) != ResultOk)
    {
        video.Close();
        return EndJob(ResultDamaged);
    }
    cv::Mat source;
    static_cast<void>(
        video.ReadFrame(source));  // a video of two frames or fewer exports this picture
    FrameFinisher finisher(ExportSettings, crop);
    ProgramHost.Log(LogRun, "Start exporting Video");
    video.Close();
    if (IsSameFile(FileNames.SourceFile, FileNames.ExportFile) || !HasCorrections(frameCount))
    {
        return FailExport(video);
    }
    result = video.OpenForExport(FileNames.SourceFile, FileNames.ExportFile, false);
    if (result != ResultOk)
    {
        return EndJob(result);
    }
    result = ExportFrames(*this, video, frameCount, finisher, source);
    if (result == ResultAborted)
    {
        return AbortJob(video, "Export aborted!");
    }
    if (result != ResultOk)
    {
        return FailExport(video);
    }
    video.Close();
    ProgramHost.Log(LogRun, "Exporting Video finished!");
    return EndJob(ResultOk);
}

int Stabilize::FailExport(VideoFile& video)
{
    video.Close();
    ProgramHost.Log(LogError, "Exporting failed!");
    return EndJob(ResultDamaged);
}
