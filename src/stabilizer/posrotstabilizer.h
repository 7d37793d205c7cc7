// SPDX-License-Identifier: MIT
#pragma once

#include "batch/stabilize.h"

#include <opencv2/core.hpp>

#include <QVector>

#include <cstdint>
#include <vector>

/**
 * The motion between two frames as a shift and a rotation about the top left corner. The four
 * motion lists always have the same length; entry i is the motion from frame i to frame i + 1, how
 * far the content of the picture moved: x to the right, y down.
 */
class PosRotStabilizer : public Stabilize
{
public:
    static constexpr int Type = 1;  ///< what TypeId gives, and the StabilizeType of projects

    void PrepareFrames(int count) override;
    [[nodiscard]] int WriteStabilizeFile() override;
    [[nodiscard]] int ReadStabilizeFile() override;
    void TrackFrame(const cv::Mat& previousGray, const cv::Mat& nextGray,
                    std::vector<cv::Point2f>& points,
                    std::vector<cv::Point2f>& nextPoints) override;
    [[nodiscard]] int GeneratePath() override;
    void WarpFrame(const cv::Mat& source, cv::Mat& target, int frame) override;
    void WarpFrameScaled(const cv::Mat& source, cv::Mat& target, int frame, double scale) override;
    [[nodiscard]] int TypeId() const override;

    // Field order is part of the design.
    cv::Mat Transform =
        cv::Mat(2, 3, CV_64F, cv::Scalar(0));  ///< the estimate, or the export's warp matrix
    cv::Mat LastTransform;                     ///< last estimate, 2 by 3, CV_64F; outlives videos
    QVector<double> MotionX;                   ///< source pixels
    QVector<double> MotionY;                   ///< source pixels
    QVector<double> MotionAngle;               ///< radians
    QVector<double> MotionDegrees;             ///< the same in degrees
    std::uint64_t MotionCount = 0;             ///< entries written so far

private:
    [[nodiscard]] static double ToDegrees(double radians);

    /** Writes the next entry of the motion; PrepareFrames has made room for it. */
    void StoreMotion(double x, double y, double angle, double degrees);

    /// The preview's warp matrix, its own so that an export is never disturbed.
    cv::Mat PreviewTransform;
};
