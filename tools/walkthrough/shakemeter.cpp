// SPDX-License-Identifier: MIT
#include "walkthrough/shakemeter.h"

#include "batch/resultcodes.h"
#include "batch/videofile.h"
#include "stabilizer/posrotstabilizer.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int MaxPoints = 800;
constexpr int TrendReach = 12;  ///< frames to each side that make the slow trend of a frame

/** Square of the deviation from the moving average, summed. */
double SumOfSquares(const QVector<double>& values, int count)
{
    double sum = 0.0;
    for (int i = 0; i < count; ++i)
    {
        const int begin = std::max(i - TrendReach, 0);
        const int end = std::min(i + TrendReach + 1, count);
        double trend = 0.0;
        for (int j = begin; j < end; ++j)
        {
            trend += values.at(j);
        }
        const double deviation = values.at(i) - trend / (end - begin);
        sum += deviation * deviation;
    }
    return sum;
}
}  // namespace

VideoMotion MeasureMotion(const QString& videoFile)
{
    VideoFile video;
    if (video.Open(videoFile.toLocal8Bit().constData()) != ResultOk)
    {
        return {};
    }
    PosRotStabilizer stabilizer;
    cv::Mat frame;
    cv::Mat gray;
    cv::Mat nextGray;
    std::vector<cv::Point2f> points;
    std::vector<cv::Point2f> nextPoints;
    bool isFirst = true;
    stabilizer.PrepareFrames(video.GetFrameCount());
    while (video.ReadFrame(frame) == ResultOk &&
           static_cast<int>(stabilizer.MotionCount) < stabilizer.MotionX.size())
    {
        cv::cvtColor(frame, nextGray, cv::COLOR_BGR2GRAY);
        if (!isFirst)
        {
            cv::goodFeaturesToTrack(gray, points, MaxPoints, 0.01, 30.0);
            stabilizer.TrackFrame(gray, nextGray, points, nextPoints);
        }
        isFirst = false;
        cv::swap(gray, nextGray);
    }
    const int count = static_cast<int>(stabilizer.MotionCount);
    return {stabilizer.MotionX.mid(0, count), stabilizer.MotionY.mid(0, count),
            stabilizer.MotionDegrees.mid(0, count)};
}

Shake MeasureShake(const VideoMotion& motion, int skipAtEnd)
{
    const int count = motion.X.size() - skipAtEnd;
    if (count < 3)
    {
        return {};
    }
    const double shift = SumOfSquares(motion.X, count) + SumOfSquares(motion.Y, count);
    return {std::sqrt(shift / count), std::sqrt(SumOfSquares(motion.Degrees, count) / count)};
}
