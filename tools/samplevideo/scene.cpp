// SPDX-License-Identifier: MIT
#include "samplevideo/scene.h"

#include <algorithm>
#include <cmath>

namespace
{
/** Numbers of the pieces of a row, one each @p step units, that the canvas may show. */
struct Pieces
{
    int First;
    int Last;

    Pieces(const Canvas& canvas, double step)
        : First(static_cast<int>(std::floor(canvas.Left() / step)) - 1),
          Last(static_cast<int>(std::ceil(canvas.Right() / step)) + 1)
    {}
};

/** Where house number @p number of a row begins: evenly spaced, more or less. */
double HouseEdge(int number, double step, std::uint32_t seed)
{
    return step * (number + 0.3 * ValueNoise(number + 0.5, 0.5, seed));
}

void PaintDistantTown(Canvas& canvas)
{
    constexpr double step = 0.13;
    const Pieces pieces(canvas, step);
    for (int row = 0; row < 2; ++row)
    {
        const std::uint32_t seed = Hash(row, 3, canvas.Seed);
        for (int i = pieces.First; i <= pieces.Last; ++i)
        {
            Random random(seed, i);
            const double base =
                Street::Horizon - 0.015 + 0.045 * row + random.Uniform(-0.012, 0.012);
            const double left = HouseEdge(i, step, seed);
            const double floor = 0.024 + 0.008 * row;
            const double width = random.Uniform(0.075, 0.12);
            PaintTree(canvas, {left + width + 0.02, base + 0.01}, random.Uniform(0.07, 0.12),
                      0.25 - 0.1 * row, random);
            if (random.Chance(0.75))
            {
                PaintHouse(
                    canvas,
                    {left, left + width, base, floor, 1 + random.Below(2), 0.22 - 0.08 * row},
                    random);
            }
        }
    }
}

/** A garden between two houses. */
void PaintGarden(Canvas& canvas, double left, double right, Random& random)
{
    for (double x = left + 0.03; x < right; x += random.Uniform(0.09, 0.16))
    {
        if (random.Chance(0.6))
        {
            PaintTree(canvas, {x, Street::HouseBase - 0.05}, random.Uniform(0.2, 0.34), 0.04,
                      random);
        }
    }
    for (double x = left; x < right; x += random.Uniform(0.03, 0.07))
    {
        PaintBush(canvas, {x, Street::HouseBase - 0.01}, random.Uniform(0.04, 0.08), random);
    }
    PaintFence(canvas, left, right, Street::HouseBase, random);
}

void PaintHouseRow(Canvas& canvas)
{
    constexpr double step = 0.42;
    const Pieces pieces(canvas, step);
    const std::uint32_t seed = Hash(1, 4, canvas.Seed);
    for (int i = pieces.First; i <= pieces.Last; ++i)
    {
        Random random(seed, i);
        const double left = HouseEdge(i, step, seed);
        const double right = HouseEdge(i + 1, step, seed);
        if (random.Chance(0.27))
        {
            PaintGarden(canvas, left, right, random);
        }
        else
        {
            const int floors = 2 + random.Below(2);
            PaintHouse(canvas,
                       {left, right, Street::HouseBase, random.Uniform(0.088, 0.102), floors, 0.0},
                       random);
        }
    }
}

/** Trees, lamps and parked cars along the street. */
void PaintStreetside(Canvas& canvas)
{
    constexpr double step = 0.34;
    const Pieces pieces(canvas, step);
    for (int i = pieces.First; i <= pieces.Last; ++i)
    {
        Random random(Hash(2, 4, canvas.Seed), i);
        const double x = i * step;
        if (random.Chance(0.4))
        {
            const double height = random.Uniform(0.26, 0.36);
            const cv::Point2d foot(x + random.Uniform(0.0, 0.1), Street::FarKerb - 0.012);
            PaintTree(canvas, foot, height, 0.0, random);
        }
        else if (random.Chance(0.5))
        {
            PaintLamp(canvas, {x, Street::FarKerb - 0.008}, 0.27);
        }
        if (random.Chance(0.6))
        {
            PaintCar(canvas, {x + random.Uniform(0.06, 0.1), Street::RoadTop + 0.006}, random);
        }
    }
}

/**
 * The picture as numbers that keep their fractions, blurred a little as a lens does: what changes
 * faster than the pixels can show would shimmer when the camera moves by parts of a pixel.
 */
cv::Mat ThroughLens(const cv::Mat& picture)
{
    cv::Mat world(picture.size(), CV_32FC4, cv::Scalar::all(0.0));
    const int lastColumn = picture.cols - 1;
    const int lastRow = picture.rows - 1;
    for (int row = 0; row < picture.rows; ++row)
    {
        const cv::Vec3b* lines[] = {picture.ptr<cv::Vec3b>(std::max(row - 1, 0)),
                                    picture.ptr<cv::Vec3b>(row),
                                    picture.ptr<cv::Vec3b>(std::min(row + 1, lastRow))};
        auto* pixel = world.ptr<cv::Vec4f>(row);
        for (int column = 0; column < picture.cols; ++column)
        {
            const int left = std::max(column - 1, 0);
            const int right = std::min(column + 1, lastColumn);
            for (int c = 0; c < 3; ++c)
            {
                int sum = 0;  // binomial weights: 1 2 1 in both directions
                for (int i = 0; i < 3; ++i)
                {
                    const int line =
                        lines[i][left][c] + 2 * lines[i][column][c] + lines[i][right][c];
                    sum += i == 1 ? 2 * line : line;
                }
                pixel[column][c] = static_cast<float>(sum) / 16.0F;
            }
            // Paints are more colourful than what a camera sees.
            const float gray =
                (pixel[column][0] + 2.0F * pixel[column][1] + pixel[column][2]) / 4.0F;
            for (int c = 0; c < 3; ++c)
            {
                pixel[column][c] += 0.22F * (gray - pixel[column][c]);
            }
        }
    }
    return world;
}
}  // namespace

cv::Mat PaintScene(const cv::Rect& area, int height, std::uint32_t seed)
{
    Canvas canvas;
    canvas.Picture = cv::Mat::zeros(area.size(), CV_8UC3);
    canvas.Origin = area.tl();
    canvas.Unit = height;
    canvas.Seed = seed;
    PaintSky(canvas);
    PaintHills(canvas);
    PaintGardens(canvas);
    PaintDistantTown(canvas);
    PaintHouseRow(canvas);
    PaintGround(canvas);
    PaintStreetside(canvas);
    return ThroughLens(canvas.Picture);
}
