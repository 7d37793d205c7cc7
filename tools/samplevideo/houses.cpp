// SPDX-License-Identifier: MIT
#include "samplevideo/scene.h"

#include <algorithm>
#include <cmath>

namespace
{
/** What the parts of one house have in common. */
struct Facade
{
    House Place;
    double Eaves;  ///< height of the wall's upper edge, units from the top
    Colour Wall;
    Colour Trim;  ///< window frames and sills
    Colour Shutter;
    bool Bricks;
    bool HasShutters;
    std::uint32_t Seed;

    [[nodiscard]] Colour Far(const Colour& colour) const
    {
        return Mix(colour, HazeColour(), Place.Haze);
    }
};

Facade ChooseFacade(const House& house, Random& random)
{
    static const Colour walls[] = {Rgb(226.0F, 212.0F, 184.0F), Rgb(214.0F, 176.0F, 116.0F),
                                   Rgb(200.0F, 122.0F, 92.0F),  Rgb(176.0F, 192.0F, 198.0F),
                                   Rgb(178.0F, 190.0F, 154.0F), Rgb(232.0F, 228.0F, 220.0F)};
    static const Colour shutters[] = {Rgb(54.0F, 92.0F, 70.0F), Rgb(60.0F, 78.0F, 116.0F),
                                      Rgb(122.0F, 50.0F, 42.0F), Rgb(104.0F, 84.0F, 62.0F)};
    Facade facade;
    facade.Place = house;
    facade.Eaves = house.Base - house.Floors * house.Floor - 0.25 * house.Floor;
    facade.Bricks = random.Chance(0.3);
    facade.Wall = facade.Bricks ? Rgb(160.0F, 84.0F, 66.0F) : walls[random.Below(6)];
    facade.Trim = random.Chance(0.8) ? Rgb(240.0F, 238.0F, 230.0F) : Rgb(96.0F, 70.0F, 50.0F);
    facade.Shutter = shutters[random.Below(4)];
    facade.HasShutters = random.Chance(0.5);
    facade.Seed = static_cast<std::uint32_t>(random.Next());
    return facade;
}

/** Brightness of a brick wall at a place. */
double BrickShade(const cv::Point2d& p, double floor, std::uint32_t seed)
{
    const double height = 0.062 * floor;
    const double width = 0.2 * floor;
    const int row = static_cast<int>(std::floor(p.y / height));
    const double along = p.x / width + 0.5 * (row & 1);
    const int brick = static_cast<int>(std::floor(along));
    const bool mortar = along - brick < 0.09 || p.y / height - row < 0.2;
    return mortar ? 1.35 : 1.0 + 0.28 * ValueNoise(brick + 0.5, row + 0.5, seed);
}

void PaintWall(Canvas& canvas, const Facade& facade, const Outline& outline)
{
    const House& house = facade.Place;
    Fill(canvas, outline, 0.13,
         [&facade, &house](const cv::Point2d& p)
         {
             const double stains =
                 Fractal(p.x / house.Floor, 0.45 * p.y / house.Floor, facade.Seed, 4);
             const double depth = (p.y - facade.Eaves) / house.Floor;  // floors below the eaves
             double shade = 1.0 + 0.16 * stains;
             shade *= depth > 0.0 && depth < 0.14 ? 0.62 : 1.0;            // shadow of the roof
             shade *= house.Base - p.y < 0.16 * house.Floor ? 0.72 : 1.0;  // plinth
             shade *= facade.Bricks ? BrickShade(p, house.Floor, facade.Seed + 5) : 1.0;
             return facade.Far(facade.Wall * static_cast<float>(shade));
         });
}

void PaintGlass(Canvas& canvas, const Facade& facade, const Outline& outline, Random& random)
{
    const double sky = random.Uniform(-0.1, 0.5);
    const double lean = random.Uniform(-2.0, 2.0);
    const auto seed = static_cast<std::uint32_t>(random.Next());
    const double floor = facade.Place.Floor;
    Fill(canvas, outline, 0.08,
         [&facade, sky, lean, seed, floor](const cv::Point2d& p)
         {
             // The glass mirrors clouds and the other side of the street.
             const double mirror =
                 Fractal((p.x + lean * p.y) * 4.0 / floor, p.y * 3.0 / floor, seed, 3);
             return facade.Far(
                 Mix(Rgb(34.0F, 42.0F, 52.0F), Rgb(156.0F, 178.0F, 198.0F), sky + 1.3 * mirror));
         });
}

/** The shutters of a window; @p middle and @p top in units. */
void PaintShutters(Canvas& canvas, const Facade& facade, double middle, double top)
{
    const double f = facade.Place.Floor;
    const auto slats = [&facade, f](const cv::Point2d& p)
    {
        const double slat = p.y / (0.055 * f);
        return facade.Far(facade.Shutter * (slat - std::floor(slat) < 0.35 ? 0.6F : 1.0F));
    };
    for (const double side : {-0.249, 0.249})
    {
        const double x = middle + side * f;
        Fill(canvas, Box(x - 0.049 * f, top - 0.03 * f, x + 0.049 * f, top + 0.61 * f), 0.1, slats);
    }
}

void PaintFlowerBox(Canvas& canvas, const Facade& facade, const cv::Point2d& sill, Random& random)
{
    const double f = facade.Place.Floor;
    for (int i = -3; i <= 3; ++i)
    {
        const cv::Point2d place(sill.x + i * 0.05 * f, sill.y - random.Uniform(0.0, 0.05) * f);
        const Colour petal =
            random.Chance(0.5) ? Rgb(206.0F, 48.0F, 60.0F) : Rgb(70.0F, 128.0F, 50.0F);
        Fill(canvas, Blob(place, {0.05 * f, 0.05 * f}, 0.3, 7, random), 0.3, facade.Far(petal));
    }
}

/** A window of one floor; @p middle and @p top in units. */
void PaintWindow(Canvas& canvas, const Facade& facade, double middle, double top, Random& random)
{
    const double f = facade.Place.Floor;
    const double half = 0.17 * f;
    const double bottom = top + 0.58 * f;
    const double bar = 0.03 * f;
    const auto colour = [&facade](const Colour& c) { return facade.Far(c); };
    Fill(canvas, Box(middle - half - bar, top - bar, middle + half + bar, bottom + bar), 0.08,
         colour(facade.Trim));
    PaintGlass(canvas, facade, Box(middle - half, top, middle + half, bottom), random);
    if (random.Chance(0.5))
    {
        const double drawn = random.Uniform(0.15, 0.6) * half;  // curtains
        const Colour cloth = colour(
            Mix(Rgb(236.0F, 230.0F, 214.0F), Rgb(170.0F, 96.0F, 84.0F), random.Uniform(0.0, 0.6)));
        Fill(canvas, Box(middle - half, top, middle - half + drawn, bottom), 0.2, cloth);
        Fill(canvas, Box(middle + half - drawn, top, middle + half, bottom), 0.2, cloth);
    }
    const double cross = top + random.Uniform(0.28, 0.36) * (bottom - top);
    Fill(canvas, Box(middle - 0.4 * bar, top, middle + 0.4 * bar, bottom), 0.08,
         colour(facade.Trim));
    Fill(canvas, Box(middle - half, cross - 0.4 * bar, middle + half, cross + 0.4 * bar), 0.08,
         colour(facade.Trim));
    Fill(
        canvas,
        Box(middle - half - 2.0 * bar, bottom + bar, middle + half + 2.0 * bar, bottom + 2.2 * bar),
        0.1, colour(Rgb(212.0F, 206.0F, 194.0F)));
    Fill(canvas,
         Box(middle - half - bar, bottom + 2.2 * bar, middle + half + bar, bottom + 3.2 * bar), 0.1,
         colour(facade.Wall * 0.6F));
    if (facade.HasShutters)
    {
        PaintShutters(canvas, facade, middle, top);
    }
    else if (random.Chance(0.35))
    {
        PaintFlowerBox(canvas, facade, {middle, bottom + bar}, random);
    }
}

void PaintDoor(Canvas& canvas, const Facade& facade, double middle, Random& random)
{
    const double f = facade.Place.Floor;
    const double base = facade.Place.Base;
    const Colour leaf = facade.Far(facade.Shutter);
    Fill(canvas, Box(middle - 0.23 * f, base - 0.86 * f, middle + 0.23 * f, base), 0.1,
         facade.Far(facade.Trim * 0.9F));
    Fill(canvas, Box(middle - 0.19 * f, base - 0.82 * f, middle + 0.19 * f, base), 0.14, leaf);
    PaintGlass(canvas, facade,
               Box(middle - 0.15 * f, base - 0.80 * f, middle + 0.15 * f, base - 0.66 * f), random);
    for (const double side : {-0.15, 0.02})
    {
        Fill(canvas,
             Box(middle + side * f, base - 0.60 * f, middle + (side + 0.13) * f, base - 0.36 * f),
             0.1, leaf * 0.72F);
        Fill(canvas,
             Box(middle + side * f, base - 0.30 * f, middle + (side + 0.13) * f, base - 0.08 * f),
             0.1, leaf * 0.72F);
    }
    Fill(canvas, Box(middle - 0.30 * f, base - 0.04 * f, middle + 0.30 * f, base + 0.03 * f), 0.15,
         facade.Far(Rgb(176.0F, 172.0F, 164.0F)));
}

/** A shop window with an awning in the ground floor. */
void PaintShop(Canvas& canvas, const Facade& facade, double left, double right, Random& random)
{
    const double f = facade.Place.Floor;
    const double base = facade.Place.Base;
    Fill(canvas, Box(left, base - 0.86 * f, right, base), 0.12, facade.Far(facade.Shutter * 0.7F));
    PaintGlass(canvas, facade,
               Box(left + 0.05 * f, base - 0.70 * f, right - 0.05 * f, base - 0.18 * f), random);
    for (double x = left + 0.14 * f; x < right - 0.14 * f; x += random.Uniform(0.10, 0.22) * f)
    {
        const double top = base - random.Uniform(0.26, 0.5) * f;  // what is for sale
        const Colour goods =
            Mix(Rgb(214.0F, 150.0F, 70.0F), Rgb(86.0F, 110.0F, 150.0F), random.Uniform(0.0, 1.0));
        Fill(canvas, Box(x, top, x + 0.07 * f, base - 0.18 * f), 0.3, facade.Far(goods));
    }
    const Outline awning = {{left, base - 0.98 * f},
                            {right, base - 0.98 * f},
                            {right + 0.05 * f, base - 0.68 * f},
                            {left - 0.05 * f, base - 0.68 * f}};
    Fill(canvas, awning, 0.1,
         [&facade, f](const cv::Point2d& p)
         {
             const double stripe = p.x / (0.17 * f);
             return facade.Far(stripe - std::floor(stripe) < 0.5 ? facade.Shutter * 1.3F
                                                                 : Rgb(238.0F, 232.0F, 218.0F));
         });
}

void PaintRoof(Canvas& canvas, const Facade& facade, double ridge, Random& random)
{
    const House& house = facade.Place;
    const double f = house.Floor;
    const Colour tiles =
        random.Chance(0.65) ? Rgb(164.0F, 82.0F, 56.0F) : Rgb(92.0F, 94.0F, 102.0F);
    const double inset = random.Chance(0.5) ? 0.0 : 0.5 * f;  // a hipped roof narrows
    const Outline outline = {{house.Left - 0.06 * f, facade.Eaves},
                             {house.Left + inset, ridge},
                             {house.Right - inset, ridge},
                             {house.Right + 0.06 * f, facade.Eaves}};
    for (int i = random.Below(3); i >= 0; --i)
    {
        const double x = random.Uniform(house.Left + 0.6 * f, house.Right - 0.6 * f);
        Fill(canvas, Box(x, ridge - 0.4 * f, x + 0.2 * f, ridge + 0.3 * f), 0.2,
             facade.Far(Rgb(142.0F, 88.0F, 72.0F)));
        Fill(canvas, Box(x - 0.03 * f, ridge - 0.46 * f, x + 0.23 * f, ridge - 0.38 * f), 0.1,
             facade.Far(Rgb(110.0F, 100.0F, 92.0F)));
    }
    Fill(canvas, outline, 0.14,
         [&facade, &tiles, f](const cv::Point2d& p)
         {
             const double across = p.y / (0.11 * f);
             const int row = static_cast<int>(std::floor(across));
             const double along = p.x / (0.085 * f) + 0.5 * (row & 1);
             const int tile = static_cast<int>(std::floor(along));
             const double moss = Fractal(p.x / f, p.y / f, facade.Seed + 8, 3);
             double shade =
                 1.0 + 0.28 * ValueNoise(tile + 0.5, row + 0.5, facade.Seed) + 0.22 * moss;
             shade *= across - row > 0.72 ? 0.6 : 1.0;  // the shadow below each row
             shade *= along - tile < 0.12 ? 0.78 : 1.0;
             return facade.Far(tiles * static_cast<float>(shade));
         });
    Fill(canvas,
         Box(house.Left - 0.06 * f, facade.Eaves - 0.03 * f, house.Right + 0.06 * f,
             facade.Eaves + 0.04 * f),
         0.1, facade.Far(Rgb(120.0F, 116.0F, 110.0F)));  // gutter
}

void PaintDormer(Canvas& canvas, const Facade& facade, double middle, double ridge, Random& random)
{
    const double f = facade.Place.Floor;
    const double top = ridge + 0.25 * f;
    const double half = 0.24 * f;
    Fill(canvas,
         {{middle - 1.3 * half, top + 0.2 * f},
          {middle, top - 0.12 * f},
          {middle + 1.3 * half, top + 0.2 * f}},
         0.2, facade.Far(Rgb(120.0F, 64.0F, 48.0F)));
    Fill(canvas, Box(middle - half, top + 0.14 * f, middle + half, top + 0.62 * f), 0.1,
         facade.Far(facade.Trim * 0.9F));
    PaintGlass(canvas, facade,
               Box(middle - 0.7 * half, top + 0.22 * f, middle + 0.7 * half, top + 0.56 * f),
               random);
    Fill(canvas, Box(middle - 0.06 * half, top + 0.22 * f, middle + 0.06 * half, top + 0.56 * f),
         0.1, facade.Far(facade.Trim));
}
}  // namespace

void PaintHouse(Canvas& canvas, const House& house, Random& random)
{
    const Facade facade = ChooseFacade(house, random);
    const double f = house.Floor;
    const double ridge = facade.Eaves - random.Uniform(0.9, 1.3) * f;
    const double width = house.Right - house.Left;
    PaintRoof(canvas, facade, ridge, random);
    PaintWall(canvas, facade, Box(house.Left, facade.Eaves, house.Right, house.Base));

    const int columns = std::max(1, static_cast<int>(width / (0.85 * f)));  // truncated
    const double step = width / columns;
    const int door = random.Below(columns);
    const bool shop = columns > 2 && random.Chance(0.4);
    for (int column = 0; column < columns; ++column)
    {
        const double middle = house.Left + (column + 0.5) * step + random.Uniform(-0.03, 0.03) * f;
        for (int floor = 0; floor < house.Floors; ++floor)
        {
            const double top = house.Base - (floor + 0.86) * f;
            if (floor > 0 || (column != door && !shop))
            {
                PaintWindow(canvas, facade, middle, top, random);
            }
        }
        if (random.Chance(0.35))
        {
            PaintDormer(canvas, facade, middle, ridge, random);
        }
        if (column == door)
        {
            PaintDoor(canvas, facade, middle, random);
        }
        else if (shop)
        {
            PaintShop(canvas, facade, middle - 0.4 * step, middle + 0.4 * step, random);
        }
    }
}
