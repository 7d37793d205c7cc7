// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Randomness that is the same with every compiler and library: the distributions of the standard
// library are not, nor are the last bits of its sine.

/** A well mixed number from three. */
[[nodiscard]] inline std::uint32_t Hash(int x, int y, std::uint32_t seed)
{
    std::uint32_t h = seed + 0x9E3779B1U * static_cast<std::uint32_t>(x);
    h = (h ^ (h >> 15)) * 0x85EBCA77U;
    h += 0xC2B2AE3DU * static_cast<std::uint32_t>(y);
    h = (h ^ (h >> 13)) * 0x27D4EB2FU;
    h = (h ^ (h >> 16)) * 0x9E3779B1U;
    return h ^ (h >> 15);
}

/** A seed for one use of several that share @p seed. */
[[nodiscard]] inline std::uint32_t SeedFor(std::uint64_t seed, int use)
{
    return Hash(static_cast<int>(seed & 0xFFFFFFFFU), static_cast<int>(seed >> 32),
                static_cast<std::uint32_t>(use));
}

/**
 * A sequence of random numbers. One expression draws one number at most: the order in which the
 * arguments of a call are computed is the compiler's choice.
 */
class Random
{
public:
    Random(std::uint32_t seed, int stream) : State((std::uint64_t{seed} << 32) + Hash(stream, 0, 7))
    {}

    /** 64 random bits: the generator "splitmix64" of Steele, Lea and Flood 2014. */
    std::uint64_t Next();
    /** A number from @p low to below @p high. */
    double Uniform(double low, double high);
    /** A whole number from 0 to @p count - 1. */
    int Below(int count);
    /** True in @p share of all cases. */
    bool Chance(double share) { return Uniform(0.0, 1.0) < share; }

private:
    std::uint64_t State;
};

/** Smooth noise, -1 to 1, with knots at whole numbers. */
[[nodiscard]] double ValueNoise(double x, double y, std::uint32_t seed);

/**
 * Sum of @p octaves value noises, each of half the size and strength of the one before; -1 to 1.
 */
[[nodiscard]] double Fractal(double x, double y, std::uint32_t seed, int octaves);

/** Sine and cosine of one angle. */
struct Rotation
{
    double Cos = 1.0;
    double Sin = 0.0;
};

/** Sine and cosine of @p angle, radians, with additions and multiplications only. */
[[nodiscard]] Rotation RotationOf(double angle);
