// SPDX-License-Identifier: MIT
#include "player/exportedpicture.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

cv::Mat Warped(const cv::Mat& picture, const Corrections& path, int frame, double scale)
{
    const double angle = path.Angle.at(frame);
    const cv::Mat matrix =
        (cv::Mat_<double>(2, 3) << std::cos(angle), -std::sin(angle), path.X.at(frame) * scale,
         std::sin(angle), std::cos(angle), path.Y.at(frame) * scale);
    cv::Mat warped;
    cv::warpAffine(picture, warped, matrix, picture.size(), cv::INTER_LINEAR, cv::BORDER_CONSTANT,
                   cv::Scalar(0));
    return warped;
}

cv::Mat Scaled(const cv::Mat& picture, double scale)
{
    if (scale == 1.0)
    {
        return picture;
    }
    const cv::Size size(static_cast<int>(picture.cols * scale),   // truncated
                        static_cast<int>(picture.rows * scale));  // truncated
    cv::Mat scaled;
    cv::resize(picture, scaled, size, 0, 0, cv::INTER_AREA);
    return scaled;
}

cv::Mat Outlined(const cv::Mat& picture, const cv::Rect& crop)
{
    const cv::Vec3b green(120, 255, 120);
    cv::Mat outlined = picture.clone();
    for (int x = crop.x; x <= crop.x + crop.width; ++x)
    {
        outlined.at<cv::Vec3b>(crop.y, x) = green;
        outlined.at<cv::Vec3b>(crop.y + crop.height, x) = green;
    }
    for (int y = crop.y; y <= crop.y + crop.height; ++y)
    {
        outlined.at<cv::Vec3b>(y, crop.x) = green;
        outlined.at<cv::Vec3b>(y, crop.x + crop.width) = green;
    }
    return outlined;
}

double LargestDifference(const cv::Mat& first, const cv::Mat& second)
{
    return !first.empty() && first.size() == second.size() ? cv::norm(first, second, cv::NORM_INF)
                                                           : 255.0;
}

double MeanDifference(const cv::Mat& first, const cv::Mat& second)
{
    return !first.empty() && first.size() == second.size()
               ? cv::norm(first, second, cv::NORM_L1) / (3.0 * static_cast<double>(first.total()))
               : 255.0;
}
