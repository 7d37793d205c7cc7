// SPDX-License-Identifier: MIT
#pragma once

#include "samplevideo/noise.h"

#include <opencv2/core/mat.hpp>

#include <cstdint>
#include <vector>

using Colour = cv::Vec3f;  ///< blue, green, red, 0 to 255

/** Corners of a shape in units: the scene's height as the first frame shows it is 1. */
using Outline = std::vector<cv::Point2d>;

/** The picture that the scene is painted on, with its place in the scene. */
struct Canvas
{
    cv::Mat Picture;         ///< CV_8UC3
    cv::Point Origin;        ///< first pixel, in the pixels of frame 0
    double Unit = 1.0;       ///< pixels of one unit
    std::uint32_t Seed = 0;  ///< chooses what is painted

    [[nodiscard]] double Left() const { return Origin.x / Unit; }
    [[nodiscard]] double Top() const { return Origin.y / Unit; }
    [[nodiscard]] double Right() const { return (Origin.x + Picture.cols) / Unit; }
    [[nodiscard]] double Bottom() const { return (Origin.y + Picture.rows) / Unit; }
};

/** A colour from 0 to 255 per channel. */
[[nodiscard]] inline Colour Rgb(float red, float green, float blue)
{
    return {blue, green, red};
}

/** From @p first at 0 to @p second at 1, and no further. */
[[nodiscard]] Colour Mix(const Colour& first, const Colour& second, double share);

/** 0 below @p low, 1 above @p high, smooth between them. */
[[nodiscard]] double SmoothStep(double low, double high, double value);

[[nodiscard]] Outline Box(double left, double top, double right, double bottom);

/** A round shape whose radius varies by the share @p rough, with @p corners corners. */
[[nodiscard]] Outline Blob(cv::Point2d centre, cv::Point2d radius, double rough, int corners,
                           Random& random);

/**
 * The part of @p canvas that @p outline touches, and how much of each of its pixels is inside, 0 to
 * 255. The edge is smooth.
 */
[[nodiscard]] cv::Rect Cover(const Canvas& canvas, const Outline& outline, cv::Mat& mask);

/** Factor that makes a surface look like a material: noise a few pixels wide. */
[[nodiscard]] inline float Grain(const cv::Point& pixel, double strength, std::uint32_t seed)
{
    const double x =
        (0.8 * pixel.x - 0.6 * pixel.y) / 4.3;  // turned, so that the grid does not show
    const double y = (0.6 * pixel.x + 0.8 * pixel.y) / 4.3;
    return static_cast<float>(1.0 + strength * Fractal(x, y, seed, 2));
}

/**
 * Paints what is inside @p outline. @p shader gives the colour at a place, a cv::Point2d in units;
 * @p grain is the strength of the surface's Grain.
 */
template <class Shader>
void Fill(Canvas& canvas, const Outline& outline, double grain, Shader shader)
{
    cv::Mat mask;
    const cv::Rect area = Cover(canvas, outline, mask);
    for (int row = 0; row < area.height; ++row)
    {
        const uchar* cover = mask.ptr(row);
        auto* pixels = canvas.Picture.ptr<cv::Vec3b>(area.y + row) + area.x;
        for (int column = 0; column < area.width; ++column)
        {
            if (cover[column] == 0)
            {
                continue;
            }
            const cv::Point place = cv::Point(column, row) + area.tl() + canvas.Origin;
            const Colour paint = shader(cv::Point2d(place.x / canvas.Unit, place.y / canvas.Unit)) *
                                 Grain(place, grain, canvas.Seed);
            pixels[column] = Mix(pixels[column], paint, cover[column] / 255.0);
        }
    }
}

/** Paints a surface of one colour. */
void Fill(Canvas& canvas, const Outline& outline, double grain, const Colour& colour);
