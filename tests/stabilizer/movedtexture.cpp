// SPDX-License-Identifier: MIT
#include "stabilizer/movedtexture.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

cv::Mat Texture(int columns, int rows)
{
    cv::RNG generator(11);
    cv::Mat sum = cv::Mat::zeros(rows + 2 * TextureMargin, columns + 2 * TextureMargin, CV_32F);
    for (const double sigma : {4.0, 12.0, 40.0})
    {
        cv::Mat noise(sum.size(), CV_32F);
        generator.fill(noise, cv::RNG::NORMAL, 0.0, 1.0);
        cv::GaussianBlur(noise, noise, cv::Size(), sigma);
        sum += noise * sigma * std::sqrt(sigma);
    }
    cv::Mat texture;
    cv::normalize(sum, texture, 0, 255, cv::NORM_MINMAX, CV_8U);
    return texture;
}

cv::Mat Frame(const cv::Mat& texture, int x, int y)
{
    const cv::Rect view(TextureMargin - x, TextureMargin - y, texture.cols - 2 * TextureMargin,
                        texture.rows - 2 * TextureMargin);
    return texture(view).clone();
}

std::vector<cv::Point2f> Grid(const cv::Mat& frame, int columns, int rows)
{
    std::vector<cv::Point2f> points;
    for (int row = 0; row < rows; ++row)
    {
        for (int column = 0; column < columns; ++column)
        {
            points.emplace_back(
                static_cast<float>(frame.cols) *
                    (0.3F + 0.4F * static_cast<float>(column) / static_cast<float>(columns)),
                static_cast<float>(frame.rows) *
                    (0.3F + 0.4F * static_cast<float>(row) / static_cast<float>(rows)));
        }
    }
    return points;
}
