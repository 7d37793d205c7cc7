// SPDX-License-Identifier: MIT
#include "samplevideo/noise.h"

#include <cmath>

namespace
{
double Knot(int x, int y, std::uint32_t seed)
{
    return static_cast<double>(Hash(x, y, seed)) * (2.0 / 4294967295.0) - 1.0;
}

/** Blends without a kink in slope or curvature: Perlin 2002. */
double Fade(double t)
{
    return t * t * t * (t * (t * 6.0 - 15.0) + 10.0);
}
}  // namespace

std::uint64_t Random::Next()
{
    State += 0x9E3779B97F4A7C15U;
    std::uint64_t z = State;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
}

double Random::Uniform(double low, double high)
{
    const double share = static_cast<double>(Next() >> 11) / 9007199254740992.0;  // 53 bits
    return low + share * (high - low);
}

int Random::Below(int count)
{
    return static_cast<int>(Uniform(0.0, static_cast<double>(count)));  // truncated
}

double ValueNoise(double x, double y, std::uint32_t seed)
{
    const double floorX = std::floor(x);
    const double floorY = std::floor(y);
    const int column = static_cast<int>(floorX);
    const int row = static_cast<int>(floorY);
    const double u = Fade(x - floorX);
    const double v = Fade(y - floorY);
    const double topLeft = Knot(column, row, seed);
    const double topRight = Knot(column + 1, row, seed);
    const double bottomLeft = Knot(column, row + 1, seed);
    const double bottomRight = Knot(column + 1, row + 1, seed);
    const double top = topLeft + u * (topRight - topLeft);
    const double bottom = bottomLeft + u * (bottomRight - bottomLeft);
    return top + v * (bottom - top);
}

double Fractal(double x, double y, std::uint32_t seed, int octaves)
{
    double sum = 0.0;
    double total = 0.0;
    double strength = 1.0;
    for (int i = 0; i < octaves; ++i)
    {
        sum += strength * ValueNoise(x, y, seed + static_cast<std::uint32_t>(i));
        total += strength;
        strength *= 0.5;
        // Turned and moved, so that the grids of the octaves do not show.
        const double turned = 1.6 * x - 1.2 * y + 0.37;
        y = 1.2 * x + 1.6 * y + 0.61;
        x = turned;
    }
    return sum / total;
}

Rotation RotationOf(double angle)
{
    int halvings = 0;
    while (std::abs(angle) > 0.125)
    {
        angle *= 0.5;
        ++halvings;
    }
    // Taylor series; the terms left out are below the last bit of a double.
    const double a2 = angle * angle;
    double sine =
        angle * (1.0 - a2 / 6.0 * (1.0 - a2 / 20.0 * (1.0 - a2 / 42.0 * (1.0 - a2 / 72.0))));
    double versine =
        a2 / 2.0 * (1.0 - a2 / 12.0 * (1.0 - a2 / 30.0 * (1.0 - a2 / 56.0)));  // 1 - cosine
    for (; halvings > 0; --halvings)
    {
        const double cosine = 1.0 - versine;
        versine = 2.0 * sine * sine;
        sine = 2.0 * sine * cosine;
    }
    return {1.0 - versine, sine};
}
