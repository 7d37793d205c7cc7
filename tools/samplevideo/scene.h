// SPDX-License-Identifier: MIT
#pragma once

#include "samplevideo/canvas.h"

/** Heights in the scene, units from the top of the first frame. */
namespace Street
{
constexpr double Horizon = 0.46;
constexpr double HouseBase = 0.70;
constexpr double FarKerb = 0.745;
constexpr double RoadTop = 0.757;
constexpr double RoadBottom = 0.885;
constexpr double NearKerb = 0.90;
constexpr double Grass = 0.965;
}  // namespace Street

/** One house, units. */
struct House
{
    double Left;
    double Right;
    double Base;
    double Floor;  ///< height of one floor
    int Floors;
    double Haze;  ///< 0 near to 1 lost in the distance
};

/**
 * Paints a street with houses, trees and hills, the same for the same seed.
 * @param area    what to paint, in the pixels of a first frame
 * @param height  of that frame, pixels
 * @return        CV_32FC4: blue, green, red, 0
 */
[[nodiscard]] cv::Mat PaintScene(const cv::Rect& area, int height, std::uint32_t seed);

// The parts of the scene, from far to near.
void PaintSky(Canvas& canvas);
void PaintHills(Canvas& canvas);
void PaintGardens(Canvas& canvas);
void PaintGround(Canvas& canvas);
void PaintHouse(Canvas& canvas, const House& house, Random& random);
/** @param foot where the trunk meets the ground; @param height units; @param haze as of a House */
void PaintTree(Canvas& canvas, cv::Point2d foot, double height, double haze, Random& random);
void PaintBush(Canvas& canvas, cv::Point2d foot, double height, Random& random);
void PaintCar(Canvas& canvas, cv::Point2d rearWheel, Random& random);
void PaintLamp(Canvas& canvas, cv::Point2d foot, double height);
void PaintFence(Canvas& canvas, double left, double right, double base, Random& random);

/** The colour of distant air. */
[[nodiscard]] inline Colour HazeColour()
{
    return Rgb(196.0F, 212.0F, 228.0F);
}
