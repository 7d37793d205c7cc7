// SPDX-License-Identifier: MIT
#include "samplevideo/scene.h"

#include <algorithm>
#include <cmath>

namespace
{
/** A hill's ridge: a smooth line over the canvas. */
struct Ridge
{
    double Height;  ///< units from the top of the first frame
    double Rise;    ///< largest deviation, units
    double Pace;    ///< hills per unit
    double Haze;    ///< 0 near to 1 lost in the distance
    int Stream;     ///< of its noise
};

constexpr Ridge Ridges[] = {
    {0.30, 0.10, 0.9, 0.62, 1},
    {0.36, 0.08, 1.5, 0.42, 2},
    {0.43, 0.06, 1.1, 0.22, 3},
};

void PaintRidge(Canvas& canvas, const Ridge& ridge)
{
    const std::uint32_t seed = Hash(ridge.Stream, 1, canvas.Seed);
    Outline outline;
    const double step = 2.0 / canvas.Unit;
    for (double x = canvas.Left() - step; x < canvas.Right() + step; x += step)
    {
        // Fine roughness at the top stands for the crowns of the forest.
        const double hills = ridge.Rise * Fractal(x * ridge.Pace, 0.0, seed, 5);
        outline.emplace_back(x, ridge.Height + hills + 0.006 * Fractal(x * 90.0, 0.0, seed + 9, 2));
    }
    outline.emplace_back(canvas.Right(), Street::HouseBase);
    outline.emplace_back(canvas.Left(), Street::HouseBase);
    Fill(canvas, outline, 0.06,
         [&ridge, seed](const cv::Point2d& p)
         {
             const double crowns = Fractal(p.x * 60.0, p.y * 95.0, seed + 20, 3);
             const double clearing = Fractal(p.x * 5.0, p.y * 16.0, seed + 30, 2);
             Colour colour = Rgb(58.0F, 92.0F, 48.0F) * static_cast<float>(1.0 + 0.9 * crowns);
             const Colour field =
                 Mix(Rgb(168.0F, 172.0F, 88.0F), Rgb(120.0F, 160.0F, 72.0F),
                     SmoothStep(-0.2, 0.2, Fractal(p.x * 9.0, p.y * 30.0, seed + 40, 2)));
             colour = Mix(colour, field * static_cast<float>(1.0 + 0.25 * crowns),
                          SmoothStep(0.12, 0.16, clearing));
             return Mix(colour, HazeColour(), ridge.Haze);
         });
}

/** How dark the joints of a pattern of stones are at a place: 1 on a joint, else 0. */
double Joint(double along, double across, double width, double height, double joint)
{
    const double row = std::floor(across / height);
    const double shifted = along / width + 0.5 * row;  // each row is moved by half a stone
    const double inX = (shifted - std::floor(shifted)) * width;
    const double inY = across - row * height;
    return inX < joint || inY < joint ? 1.0 : 0.0;
}

void PaintPavement(Canvas& canvas, double top, double bottom, double slab)
{
    const std::uint32_t seed = Hash(1, 2, canvas.Seed);
    Fill(canvas, Box(canvas.Left(), top, canvas.Right(), bottom), 0.20,
         [seed, top, slab](const cv::Point2d& p)
         {
             const double across = p.y - top;
             const double row = std::floor(across / (0.6 * slab));
             const int stone = static_cast<int>(std::floor(p.x / slab + 0.5 * row));
             const double shade = 1.0 + 0.10 * ValueNoise(stone + 0.5, row + 0.5, seed) +
                                  0.12 * Fractal(p.x * 14.0, p.y * 30.0, seed + 1, 3);
             const double joint = Joint(p.x, across, slab, 0.6 * slab, 0.0025);
             return Rgb(168.0F, 162.0F, 152.0F) * static_cast<float>(shade * (1.0 - 0.45 * joint));
         });
}

void PaintKerb(Canvas& canvas, double top, double bottom)
{
    const std::uint32_t seed = Hash(2, 2, canvas.Seed);
    Fill(canvas, Box(canvas.Left(), top, canvas.Right(), bottom), 0.15,
         [seed, top, bottom](const cv::Point2d& p)
         {
             const double shade =
                 (1.0 + 0.1 * ValueNoise(std::floor(p.x / 0.09) + 0.5, 0.5, seed)) *
                 (p.y > top + 0.6 * (bottom - top) ? 0.62 : 1.0);
             return Rgb(190.0F, 186.0F, 178.0F) *
                    static_cast<float>(shade * (1.0 - 0.4 * Joint(p.x, 0.5, 0.09, 1.0, 0.003)));
         });
}

void PaintRoad(Canvas& canvas)
{
    const std::uint32_t seed = Hash(3, 2, canvas.Seed);
    constexpr double middle = 0.5 * (Street::RoadTop + Street::RoadBottom);
    Fill(canvas, Box(canvas.Left(), Street::RoadTop, canvas.Right(), Street::RoadBottom), 0.38,
         [seed](const cv::Point2d& p)
         {
             const double wear = Fractal(p.x * 2.0, p.y * 26.0, seed, 3);
             const double crack = std::abs(Fractal(p.x * 7.0, p.y * 11.0, seed + 5, 4));
             const double patch =
                 ValueNoise(std::floor(p.x * 2.3) + 0.5, std::floor(p.y * 19.0) + 0.5, seed + 9);
             const double shade = 1.0 + 0.16 * wear -
                                  0.45 * (1.0 - SmoothStep(0.004, 0.016, crack)) -
                                  (patch > 0.55 ? 0.18 : 0.0);
             return Rgb(104.0F, 104.0F, 108.0F) * static_cast<float>(shade);
         });
    constexpr double period = 0.30;
    for (double x = std::floor(canvas.Left() / period) * period; x < canvas.Right(); x += period)
    {
        Fill(canvas, Box(x, middle - 0.006, x + 0.15, middle + 0.006), 0.18,
             [seed](const cv::Point2d& p)
             {
                 const double worn =
                     SmoothStep(0.1, 0.4, Fractal(p.x * 50.0, p.y * 50.0, seed + 40, 3));
                 return Mix(Rgb(226.0F, 226.0F, 218.0F), Rgb(120.0F, 120.0F, 120.0F), worn);
             });
    }
}

void PaintMeadow(Canvas& canvas)
{
    const std::uint32_t seed = Hash(4, 2, canvas.Seed);
    const double bottom = std::max(canvas.Bottom(), Street::Grass + 0.01);
    Fill(canvas, Box(canvas.Left(), Street::Grass, canvas.Right(), bottom), 0.30,
         [seed](const cv::Point2d& p)
         {
             const double blades = Fractal(p.x * 130.0, p.y * 45.0, seed, 3);
             const double tufts = Fractal(p.x * 11.0, p.y * 18.0, seed + 7, 3);
             const Colour colour =
                 Mix(Rgb(74.0F, 112.0F, 40.0F), Rgb(136.0F, 150.0F, 66.0F), 0.5 + 0.9 * tufts);
             return colour * static_cast<float>(1.0 + 0.7 * blades);
         });
    constexpr double patch = 0.05;
    const int first = static_cast<int>(std::floor(canvas.Left() / patch));
    const int last = static_cast<int>(std::ceil(canvas.Right() / patch));
    const int rows = static_cast<int>(std::ceil((bottom - Street::Grass) / patch));
    for (int i = first * 4; i < last * 4; ++i)
    {
        Random random(seed, i);
        for (int row = 0; row < rows; ++row)
        {
            const double x = i * patch / 4.0 + random.Uniform(0.0, 0.02);
            const double y = Street::Grass + 0.006 + patch * (row + random.Uniform(0.0, 1.0));
            const double size = random.Uniform(0.002, 0.0045);
            const Colour petals[] = {Rgb(246.0F, 244.0F, 236.0F), Rgb(240.0F, 208.0F, 60.0F),
                                     Rgb(170.0F, 96.0F, 160.0F)};
            const Colour& petal = petals[random.Below(3)];
            Fill(canvas, Blob({x, y}, {size, 0.8 * size}, 0.3, 7, random), 0.1, petal);
        }
    }
}

/** Fallen leaves, from the far pavement to the near one. */
void PaintLeaves(Canvas& canvas)
{
    constexpr double patch = 0.016;
    const int first = static_cast<int>(std::floor(canvas.Left() / patch));
    const int last = static_cast<int>(std::ceil(canvas.Right() / patch));
    for (int i = first; i < last; ++i)
    {
        Random random(Hash(5, 2, canvas.Seed), i);
        for (int leaf = 0; leaf < 3; ++leaf)
        {
            const double x = (i + random.Uniform(0.0, 1.0)) * patch;
            const double y = random.Uniform(Street::HouseBase + 0.004, Street::Grass);
            const double size = random.Uniform(0.0015, 0.0038);
            const Colour colour =
                Mix(Rgb(196.0F, 128.0F, 44.0F), Rgb(92.0F, 56.0F, 30.0F), random.Uniform(0.0, 1.0));
            Fill(canvas, Blob({x, y}, {size, 0.6 * size}, 0.4, 6, random), 0.1, colour);
        }
    }
}
}  // namespace

void PaintSky(Canvas& canvas)
{
    const std::uint32_t seed = Hash(0, 0, canvas.Seed);
    Fill(canvas, Box(canvas.Left(), canvas.Top(), canvas.Right(), Street::Horizon), 0.0,
         [seed](const cv::Point2d& p)
         {
             const Colour blue =
                 Mix(HazeColour(), Rgb(66.0F, 118.0F, 188.0F), (Street::Horizon - p.y) / 0.7);
             const double density = Fractal(p.x * 1.7, p.y * 3.6, seed, 7);
             // Clouds are lit from the upper left: bright where they thin out that way.
             const double behind = Fractal((p.x - 0.03) * 1.7, (p.y - 0.03) * 3.6, seed, 7);
             const Colour cloud =
                 Mix(Rgb(255.0F, 253.0F, 248.0F), Rgb(168.0F, 176.0F, 190.0F),
                     0.42 + 2.2 * (behind - density) + 0.5 * std::max(0.0, density));
             return Mix(blue, cloud, SmoothStep(-0.02, 0.20, density));
         });
}

void PaintHills(Canvas& canvas)
{
    for (const Ridge& ridge : Ridges)
    {
        PaintRidge(canvas, ridge);
    }
}

void PaintGardens(Canvas& canvas)
{
    const std::uint32_t seed = Hash(6, 2, canvas.Seed);
    Fill(canvas, Box(canvas.Left(), Street::Horizon + 0.02, canvas.Right(), Street::HouseBase), 0.2,
         [seed](const cv::Point2d& p)
         {
             const double bushes = Fractal(p.x * 26.0, p.y * 40.0, seed, 4);
             const double beds = SmoothStep(0.1, 0.2, Fractal(p.x * 6.0, p.y * 18.0, seed + 9, 2));
             const Colour colour = Mix(Rgb(84.0F, 124.0F, 52.0F), Rgb(120.0F, 104.0F, 70.0F), beds);
             return colour * static_cast<float>(1.0 + 0.8 * bushes);
         });
}

void PaintGround(Canvas& canvas)
{
    PaintPavement(canvas, Street::HouseBase, Street::FarKerb, 0.05);
    PaintKerb(canvas, Street::FarKerb, Street::RoadTop);
    PaintRoad(canvas);
    PaintKerb(canvas, Street::RoadBottom, Street::NearKerb);
    PaintPavement(canvas, Street::NearKerb, Street::Grass, 0.09);
    PaintLeaves(canvas);
    PaintMeadow(canvas);
}
