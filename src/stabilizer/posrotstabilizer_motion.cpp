// SPDX-License-Identifier: MIT
#include "stabilizer/posrotstabilizer.h"

#include <opencv2/video/tracking.hpp>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double MaxRotationPerFrame = 0.15;  ///< radians
constexpr double MaxShiftPerFrame = 0.3;      ///< share of the frame's size

/**
 * Pyramidal Lucas-Kanade as in Bouguet 2001; keeps the points that were found again, in their
 * order.
 */
void FollowPoints(const cv::Mat& previousGray, const cv::Mat& nextGray,
                  std::vector<cv::Point2f>& points, std::vector<cv::Point2f>& nextPoints)
{
    std::vector<uchar> status;
    std::vector<float> errors;
    const cv::TermCriteria criteria(cv::TermCriteria::COUNT + cv::TermCriteria::EPS, 30, 0.01);
    cv::calcOpticalFlowPyrLK(previousGray, nextGray, points, nextPoints, status, errors,
                             cv::Size(21, 21), 3, criteria, 0, 0.0001);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < status.size(); ++i)
    {
        if (status[i] != 0)
        {
            points[kept] = points[i];
            nextPoints[kept] = nextPoints[i];
            ++kept;
        }
    }
    points.resize(kept);
    nextPoints.resize(kept);
}

/**
 * Shift, rotation and uniform scale from @p from to @p to, 2 by 3, CV_64F; empty when there is
 * none.
 */
cv::Mat EstimateRigid(const std::vector<cv::Point2f>& from, const std::vector<cv::Point2f>& to)
{
    if (from.empty())
    {
        return {};  // a black frame has no corners, and the library would throw
    }
    // The later estimates of the library give other numbers, and stored analyses must stay
    // comparable.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    return cv::estimateRigidTransform(from, to, false);
#pragma GCC diagnostic pop
}

bool IsInside(double value, double limit)
{
    return value > -limit && value < limit;  // false for NaN
}
}  // namespace

void PosRotStabilizer::PrepareFrames(int count)
{
    const int frames = std::max(count, 0);
    MotionX.resize(frames);
    MotionY.resize(frames);
    MotionAngle.resize(frames);
    MotionDegrees.resize(frames);
    MotionCount = 0;
    PathGenerated = false;
}

void PosRotStabilizer::TrackFrame(const cv::Mat& previousGray, const cv::Mat& nextGray,
                                  std::vector<cv::Point2f>& points,
                                  std::vector<cv::Point2f>& nextPoints)
{
    constexpr std::size_t tooFew = 4;
    if (points.size() > tooFew)
    {
        FollowPoints(previousGray, nextGray, points, nextPoints);
    }
    else
    {
        nextPoints = points;
    }

    Transform = EstimateRigid(points, nextPoints);
    if (Transform.empty())
    {
        // A frame that cannot be measured repeats the last estimate.
        LastTransform.copyTo(Transform);
    }
    Transform.copyTo(LastTransform);
    if (Transform.empty())
    {
        StoreMotion(0.0, 0.0, 0.0, 0.0);  // nothing has ever been measured
        return;
    }

    // The scale in the matrix is dropped: only shift and rotation count.
    const double x = Transform.at<double>(0, 2);
    const double y = Transform.at<double>(1, 2);
    const double angle = std::atan2(Transform.at<double>(1, 0), Transform.at<double>(0, 0));
    // Deliberate: the limits are crossed, x by the height and y by the width. They set how large a
    // pan survives on a wide frame. A jump of one value drops the whole entry, as at a cut.
    const double limitX = previousGray.rows * MaxShiftPerFrame;
    const double limitY = previousGray.cols * MaxShiftPerFrame;
    if (IsInside(x, limitX) && IsInside(y, limitY) && IsInside(angle, MaxRotationPerFrame))
    {
        StoreMotion(x, y, angle, ToDegrees(angle));
    }
    else
    {
        StoreMotion(0.0, 0.0, 0.0, 0.0);
    }
}

void PosRotStabilizer::StoreMotion(double x, double y, double angle, double degrees)
{
    const auto entry = static_cast<int>(MotionCount);
    MotionX[entry] = x;
    MotionY[entry] = y;
    MotionAngle[entry] = angle;
    MotionDegrees[entry] = degrees;
    ++MotionCount;
}

double PosRotStabilizer::ToDegrees(double radians)
{
    return radians * 180.0 / 3.141592653589793;
}

int PosRotStabilizer::TypeId() const
{
    return Type;
}
