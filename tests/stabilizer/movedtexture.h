// SPDX-License-Identifier: MIT
#pragma once

#include <opencv2/core.hpp>

#include <vector>

// Frames that show one texture at known places, and points to follow in them.

inline constexpr int TextureMargin = 160;  ///< pixels of texture around a frame

/**
 * Smooth noise around a frame of @p columns by @p rows, 8 bits, one channel, with details of some
 * 15 to 150 pixels, so that also far shifts can be followed.
 */
[[nodiscard]] cv::Mat Texture(int columns, int rows);

/** The frame in which the texture stands (x, y) pixels farther right and down; no interpolation. */
[[nodiscard]] cv::Mat Frame(const cv::Mat& texture, int x, int y);

/** @p columns by @p rows points over the middle of a frame. */
[[nodiscard]] std::vector<cv::Point2f> Grid(const cv::Mat& frame, int columns, int rows);
