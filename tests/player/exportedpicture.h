// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/camerapath.h"

#include <QVector>

#include <opencv2/core/mat.hpp>

// The steps of an export before the codec, made by hand, and how far pictures are from each other.

/**
 * Levels. The player turns colours around before the warp and the export does not. The warp treats
 * each channel alike, so that only the rounding of its fixed-point weights may differ, by one.
 */
inline constexpr double Rounding = 1.0;

/** The corrections of the last calculation, kept for a look at them while a job runs. */
struct Corrections
{
    QVector<double> X = PathHorizontal.Result.Correction;    ///< pixels
    QVector<double> Y = PathVertical.Result.Correction;      ///< pixels
    QVector<double> Angle = PathRotation.Result.Correction;  ///< radians
};

/** The warp of @p frame; a picture that was scaled before is moved in its own, smaller pixels. */
[[nodiscard]] cv::Mat Warped(const cv::Mat& picture, const Corrections& path, int frame,
                             double scale = 1.0);

/** In the size that the player gives it; the export's size at 1.0. */
[[nodiscard]] cv::Mat Scaled(const cv::Mat& picture, double scale);

/** With the line that the player draws around a crop: on its first, and behind its last pixels. */
[[nodiscard]] cv::Mat Outlined(const cv::Mat& picture, const cv::Rect& crop);

/** Largest difference of any value, in levels; 255 for pictures of different size or none. */
[[nodiscard]] double LargestDifference(const cv::Mat& first, const cv::Mat& second);

/** Mean difference in levels; 255 for pictures of different size or none. */
[[nodiscard]] double MeanDifference(const cv::Mat& first, const cv::Mat& second);
