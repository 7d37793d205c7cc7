// SPDX-License-Identifier: MIT
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilize.h"
#include "batch/stabilizerhost.h"
#include "batch/videofile.h"
#include "stabilizer/truncation.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <string>

namespace
{
constexpr int ProgressStep = 20;  ///< frames between two progress lines

/** Corners as in Shi and Tomasi 1994, found afresh for every pair of frames on the whole image. */
void FindFeatures(const cv::Mat& gray, int maxPoints, std::vector<cv::Point2f>& points)
{
    cv::goodFeaturesToTrack(gray, points, maxPoints, 0.01, 30.0, cv::noArray(), 3, false, 0.04);
}

void LogProgress(int frame, int frameCount, std::size_t points)
{
    const std::string line = "Frame: " + std::to_string(frame) + "/" + std::to_string(frameCount) +
                             " -  Tracked points : " + std::to_string(points);
    ProgramHost.Log(LogDebug, line.c_str());
}
}  // namespace

int Stabilize::AnalyseJob(const ::TrackingParameters& parameters)
{
    JobStatus = JobRunning;
    TrackingParameters = parameters;
    VideoFile video;
    int result = video.Open(FileNames.SourceFile);
    if (result != ResultOk)
    {
        return EndJob(result);
    }
    FrameWidth = video.GetWidth();
    FrameHeight = video.GetHeight();
    FrameRate = TruncateToInt32(video.GetFps());
    if (!TrackAllFrames(video, video.GetFrameCount(), TrackedPoints::Fresh))
    {
        return AbortJob(video, "Analyse aborted!");
    }
    video.Close();
    result = WriteTracking();
    if (result != ResultOk)
    {
        return EndJob(result);
    }
    result = WriteStabilizeFile();
    if (result != ResultOk)
    {
        return EndJob(result);
    }
    TrackingLoaded = true;
    StabilizeLoaded = true;
    return EndJob(ResultOk);
}

/**
 * Follows points through the video into TrackingPoints and the motion. A frame that cannot be read
 * counts as a copy of the one before. Deliberate: one more step over two equal images at the end
 * gives the motion one entry per frame, where there is one pair less.
 * @param tracked  Fresh looks for corners in each frame; Stored follows what TrackingPoints holds
 * @return         false when the user asked to stop; what was measured until then stays
 */
bool Stabilize::TrackAllFrames(VideoFile& video, int frameCount, TrackedPoints tracked)
{
    cv::Mat first;
    cv::Mat current;
    cv::Mat previousGray;
    cv::Mat nextGray;
    std::vector<cv::Point2f> nextPoints;
    static_cast<void>(
        video.ReadFrame(first));  // an unreadable first frame ends in the library's own error
    cv::cvtColor(first, previousGray, cv::COLOR_BGR2GRAY, 0);
    const auto frames = static_cast<std::size_t>(std::max(frameCount, 0));
    if (tracked == TrackedPoints::Fresh || TrackingPoints.size() < frames)
    {
        TrackingPoints.resize(frames);  // stored points fall short of a source that got longer
    }
    PrepareFrames(frameCount);
    for (int i = 1; i < frameCount; ++i)
    {
        if (JobStatus == JobAbortRequested)
        {
            return false;
        }
        std::vector<cv::Point2f>& points = TrackingPoints[static_cast<std::size_t>(i)];
        if (tracked == TrackedPoints::Fresh)
        {
            FindFeatures(previousGray, TrackingParameters.MaxTrackingPoints, points);
        }
        if (video.ReadFrame(current) == ResultOk)
        {
            cv::cvtColor(current, nextGray, cv::COLOR_BGR2GRAY, 0);
        }
        else
        {
            previousGray.copyTo(nextGray);
        }
        TrackFrame(previousGray, nextGray, points, nextPoints);
        nextGray.copyTo(previousGray);
        if (i % ProgressStep == 0)
        {
            LogProgress(i, frameCount, points.size());
        }
    }
    if (frameCount > 1)
    {
        const auto last = static_cast<std::size_t>(frameCount - 1);
        TrackFrame(previousGray, nextGray, TrackingPoints[last], nextPoints);
    }
    return true;
}
