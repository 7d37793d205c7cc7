// SPDX-License-Identifier: MIT
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace
{
/**
 * Warps @p source by the corrections of @p frame, the shift multiplied by @p scale. @p matrix is
 * filled in place, so that nothing is allocated per frame.
 *
 * Deliberate: the picture turns about its top left corner, as the motion is measured about it.
 */
void WarpByPath(const cv::Mat& source, cv::Mat& target, cv::Mat& matrix, int frame, double scale)
{
    const double angle = PathRotation.CorrectionAt(frame);
    matrix.create(2, 3, CV_64F);
    auto* row0 = matrix.ptr<double>(0);
    auto* row1 = matrix.ptr<double>(1);
    row0[0] = std::cos(angle);
    row0[1] = -std::sin(angle);
    row0[2] = PathHorizontal.CorrectionAt(frame) * scale;
    row1[0] = std::sin(angle);
    row1[1] = std::cos(angle);
    row1[2] = PathVertical.CorrectionAt(frame) * scale;
    cv::warpAffine(source, target, matrix, cv::Size(source.cols, source.rows), cv::INTER_LINEAR,
                   cv::BORDER_CONSTANT, cv::Scalar(0));
}
}  // namespace

void PosRotStabilizer::WarpFrame(const cv::Mat& source, cv::Mat& target, int frame)
{
    WarpByPath(source, target, Transform, frame, 1.0);
}

void PosRotStabilizer::WarpFrameScaled(const cv::Mat& source, cv::Mat& target, int frame,
                                       double scale)
{
    WarpByPath(source, target, PreviewTransform, frame, scale);
}
