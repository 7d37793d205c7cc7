// SPDX-License-Identifier: MIT
#include "samplevideo/scene.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace
{
/** A round mass of leaves, darker below and at the right. */
void PaintCrown(Canvas& canvas, cv::Point2d centre, cv::Point2d radius, const Colour& green,
                double haze, Random& random)
{
    const auto seed = static_cast<std::uint32_t>(random.Next());
    constexpr int clumps = 60;
    for (int i = 0; i < clumps; ++i)
    {
        // The first clumps lie at the rim and in the shade, the last ones in the light.
        const double depth = static_cast<double>(i) / clumps;
        const Rotation turn = RotationOf(random.Uniform(0.0, 6.283));
        const double reach = (1.0 - 0.35 * depth) * std::sqrt(random.Uniform(0.0, 1.0));
        const cv::Point2d offset(reach * turn.Cos, reach * turn.Sin);
        const cv::Point2d place(centre.x + radius.x * offset.x, centre.y + radius.y * offset.y);
        const double size = random.Uniform(0.16, 0.30);
        const double light = 0.62 + 0.35 * depth - 0.22 * offset.x - 0.34 * offset.y;
        const cv::Point2d clump(size * radius.x, 0.8 * size * radius.y);
        Fill(canvas, Blob(place, clump, 0.22, 17, random), 0.25,
             [&](const cv::Point2d& p)
             {
                 const double leaves = Fractal(p.x * 105.0, p.y * 120.0, seed, 2);
                 const double top = (place.y - p.y) / clump.y;  // each clump is lit from above
                 const double shade = std::max(0.15, light + 0.70 * leaves + 0.16 * top);
                 return Mix(green * static_cast<float>(shade), HazeColour(), haze);
             });
    }
}

Colour ChooseGreen(Random& random)
{
    const Colour summer =
        Mix(Rgb(70.0F, 98.0F, 48.0F), Rgb(96.0F, 114.0F, 54.0F), random.Uniform(0.0, 1.0));
    return random.Chance(0.25) ? Mix(summer, Rgb(196.0F, 120.0F, 40.0F), random.Uniform(0.3, 0.9))
                               : summer;
}
/** The outline @p corners, told from @p origin. */
Outline MovedTo(const cv::Point2d& origin, std::initializer_list<cv::Point2d> corners)
{
    Outline outline;
    for (const cv::Point2d& corner : corners)
    {
        outline.push_back(origin + corner);
    }
    return outline;
}

void PaintCarBody(Canvas& canvas, const cv::Point2d& wheel, const Colour& paint, std::uint32_t seed)
{
    const Outline body = MovedTo(wheel, {{-0.055, 0.008},
                                         {-0.060, -0.030},
                                         {-0.052, -0.042},
                                         {-0.030, -0.085},
                                         {-0.018, -0.092},
                                         {0.075, -0.092},
                                         {0.120, -0.050},
                                         {0.205, -0.036},
                                         {0.222, -0.022},
                                         {0.224, 0.008}});
    Fill(canvas, body, 0.03,
         [&](const cv::Point2d& p)
         {
             // The upper side mirrors the sky, the lower one the road.
             const double sky = SmoothStep(wheel.y - 0.030, wheel.y - 0.048, p.y);
             const double low = SmoothStep(wheel.y - 0.012, wheel.y + 0.006, p.y);
             const double mirror = 0.10 * Fractal(p.x * 14.0, p.y * 40.0, seed, 3);
             return Mix(paint * static_cast<float>(1.0 + mirror - 0.45 * low),
                        Rgb(206.0F, 216.0F, 226.0F), 0.22 * sky);
         });
}

void PaintCarWindows(Canvas& canvas, const cv::Point2d& wheel, std::uint32_t seed)
{
    const auto glass = [seed](const cv::Point2d& p)
    {
        const double mirror = Fractal(p.x * 30.0, (p.y + p.x) * 40.0, seed, 3);
        return Mix(Rgb(30.0F, 36.0F, 42.0F), Rgb(170.0F, 186.0F, 200.0F), 0.3 + 1.2 * mirror);
    };
    const auto rear = {cv::Point2d(-0.036, -0.046), cv::Point2d(-0.020, -0.084),
                       cv::Point2d(0.020, -0.084), cv::Point2d(0.020, -0.046)};
    const auto front = {cv::Point2d(0.026, -0.046), cv::Point2d(0.026, -0.084),
                        cv::Point2d(0.070, -0.084), cv::Point2d(0.106, -0.048)};
    Fill(canvas, MovedTo(wheel, rear), 0.05, glass);
    Fill(canvas, MovedTo(wheel, front), 0.05, glass);
}

/** The edge and the handle of the door, and the lights. */
void PaintCarDetails(Canvas& canvas, const cv::Point2d& wheel, const Colour& paint)
{
    const double x = wheel.x;
    const double y = wheel.y;
    Fill(canvas, Box(x + 0.022, y - 0.044, x + 0.0245, y + 0.004), 0.0, paint * 0.5F);
    Fill(canvas, Box(x + 0.030, y - 0.034, x + 0.044, y - 0.031), 0.0, paint * 0.4F);
    Fill(canvas,
         MovedTo(wheel, {{0.205, -0.032}, {0.222, -0.022}, {0.222, -0.014}, {0.208, -0.018}}), 0.0,
         Rgb(244.0F, 240.0F, 214.0F));
    Fill(canvas,
         MovedTo(wheel, {{-0.059, -0.032}, {-0.050, -0.034}, {-0.050, -0.018}, {-0.058, -0.018}}),
         0.0, Rgb(190.0F, 26.0F, 26.0F));
}

void PaintWheel(Canvas& canvas, const cv::Point2d& hub, Random& random)
{
    Fill(canvas, Blob(hub, {0.027, 0.027}, 0.0, 28, random), 0.1, Rgb(26.0F, 26.0F, 28.0F));
    Fill(canvas, Blob(hub, {0.017, 0.017}, 0.0, 24, random), 0.1, Rgb(176.0F, 178.0F, 182.0F));
    Fill(canvas, Blob(hub, {0.012, 0.012}, 0.35, 10, random), 0.1, Rgb(84.0F, 86.0F, 92.0F));
    Fill(canvas, Blob(hub, {0.004, 0.004}, 0.0, 8, random), 0.1, Rgb(200.0F, 200.0F, 204.0F));
}
}  // namespace

void PaintTree(Canvas& canvas, cv::Point2d foot, double height, double haze, Random& random)
{
    const double trunk = 0.035 * height;
    const Outline outline = {{foot.x - 1.4 * trunk, foot.y},
                             {foot.x - trunk, foot.y - 0.1 * height},
                             {foot.x - 0.6 * trunk, foot.y - 0.6 * height},
                             {foot.x + 0.6 * trunk, foot.y - 0.6 * height},
                             {foot.x + trunk, foot.y - 0.1 * height},
                             {foot.x + 1.4 * trunk, foot.y}};
    const auto seed = static_cast<std::uint32_t>(random.Next());
    Fill(canvas, outline, 0.3,
         [&](const cv::Point2d& p)
         {
             const double bark = Fractal(p.x * 160.0, p.y * 40.0, seed, 3);
             const double side = (p.x - foot.x) / trunk;
             return Mix(
                 Rgb(96.0F, 76.0F, 58.0F) * static_cast<float>(1.0 + 0.8 * bark - 0.3 * side),
                 HazeColour(), haze);
         });
    const cv::Point2d radius(random.Uniform(0.26, 0.36) * height, 0.36 * height);
    PaintCrown(canvas, {foot.x, foot.y - 0.66 * height}, radius, ChooseGreen(random), haze, random);
}

void PaintBush(Canvas& canvas, cv::Point2d foot, double height, Random& random)
{
    const cv::Point2d radius(random.Uniform(0.6, 1.1) * height, 0.5 * height);
    PaintCrown(canvas, {foot.x, foot.y - 0.45 * height}, radius, ChooseGreen(random), 0.0, random);
}

void PaintCar(Canvas& canvas, cv::Point2d rearWheel, Random& random)
{
    static const Colour paints[] = {Rgb(150.0F, 28.0F, 32.0F),   Rgb(36.0F, 62.0F, 112.0F),
                                    Rgb(196.0F, 198.0F, 200.0F), Rgb(44.0F, 46.0F, 50.0F),
                                    Rgb(222.0F, 220.0F, 212.0F), Rgb(70.0F, 98.0F, 84.0F)};
    const Colour paint = paints[random.Below(6)];
    const auto seed = static_cast<std::uint32_t>(random.Next());
    const cv::Point2d shadow = rearWheel + cv::Point2d(0.085, 0.019);
    Fill(canvas, Blob(shadow, {0.15, 0.010}, 0.1, 24, random), 0.1, Rgb(38.0F, 38.0F, 42.0F));
    PaintCarBody(canvas, rearWheel, paint, seed);
    PaintCarWindows(canvas, rearWheel, seed + 3);
    PaintCarDetails(canvas, rearWheel, paint);
    PaintWheel(canvas, rearWheel, random);
    PaintWheel(canvas, rearWheel + cv::Point2d(0.165, 0.0), random);
}

void PaintLamp(Canvas& canvas, cv::Point2d foot, double height)
{
    const Colour iron = Rgb(52.0F, 60.0F, 58.0F);
    const double top = foot.y - height;
    Fill(canvas, Box(foot.x - 0.0035, top, foot.x + 0.0035, foot.y), 0.25, iron);
    Fill(canvas, Box(foot.x - 0.007, foot.y - 0.06, foot.x + 0.007, foot.y), 0.25, iron);
    Fill(canvas, Box(foot.x - 0.010, foot.y - 0.006, foot.x + 0.010, foot.y), 0.25, iron);
    Fill(canvas, Box(foot.x - 0.026, top + 0.020, foot.x + 0.026, top + 0.024), 0.25, iron);
    for (const double side : {-0.026, 0.026})
    {
        const double x = foot.x + side;
        Fill(canvas, {{x - 0.010, top + 0.006}, {x, top - 0.008}, {x + 0.010, top + 0.006}}, 0.1,
             iron);
        Fill(canvas,
             {{x - 0.009, top + 0.006},
              {x + 0.009, top + 0.006},
              {x + 0.006, top + 0.030},
              {x - 0.006, top + 0.030}},
             0.1, Rgb(236.0F, 228.0F, 196.0F));
        Fill(canvas, Box(x - 0.006, top + 0.029, x + 0.006, top + 0.033), 0.1, iron);
    }
}

void PaintFence(Canvas& canvas, double left, double right, double base, Random& random)
{
    const Colour wood =
        Mix(Rgb(226.0F, 222.0F, 210.0F), Rgb(128.0F, 98.0F, 70.0F), random.Below(2));
    for (const double rail : {0.018, 0.042})
    {
        Fill(canvas, Box(left, base - rail - 0.005, right, base - rail), 0.2, wood * 0.8F);
    }
    for (double x = left; x < right; x += 0.0135)
    {
        const double top = base - random.Uniform(0.052, 0.058);
        Fill(canvas,
             {{x, base}, {x, top}, {x + 0.004, top - 0.005}, {x + 0.008, top}, {x + 0.008, base}},
             0.2, wood * static_cast<float>(random.Uniform(0.85, 1.05)));
    }
}
