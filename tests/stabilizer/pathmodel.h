// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

/**
 * A second calculation of the camera path, for tests alone: plain lists, naive loops, whole
 * histories instead of rings, and no code of the program. It does the floating point operations in
 * the same order as the program must, so that results can be compared bit for bit.
 */

/** Frames from first to second, the latter exclusive. */
using ModelRange = std::pair<std::int32_t, std::int32_t>;

/** Frame numbers and positions of one manual section, in list order. */
using ModelPoints = std::vector<std::pair<std::int32_t, double>>;

struct ModelSettings
{
    bool Lock = false;
    bool UseStart = false;
    bool UseEnd = false;
    bool UseGlobal = false;
    bool UseLocal = false;
    bool UseManual = false;
    int Strength = 3;  ///< N
    int Type = 1;      ///< 1 to 5; others keep the stages
    int IgnoreStart = 0;
    int Offset = 0;
    double Start = 0.0;
    double End = 0.0;
    double CropFactor = 1.0;
    std::vector<ModelRange> Global;
    std::vector<ModelRange> Local;
    std::vector<ModelPoints> Manual;
};

struct ModelStage
{
    std::vector<double> Path;
    std::vector<double> Correction;
    std::vector<double> Margin;
    std::vector<std::int32_t> Weight;
    std::uint64_t W = 20;
    std::uint64_t K = 3;
    bool Enabled = false;
};

/** Zeroes the ranges in a padded motion. */
void ModelIgnore(std::vector<double>& motion, std::uint64_t d,
                 const std::vector<ModelRange>& ranges);

/** Draws the manual sections into a padded position. */
void ModelManual(std::vector<double>& position, std::uint64_t d,
                 const std::vector<ModelPoints>& sections);

/** A number that went through an unsigned 64-bit integer; only for magnitudes below 2^63. */
[[nodiscard]] double ModelThroughUnsigned(double value);

/** Delay of a cascade of @p k windows of @p w frames. */
[[nodiscard]] std::uint64_t ModelDelay(std::uint64_t w, std::uint64_t k);

/** The smoothed input, as long as the input. */
[[nodiscard]] std::vector<double> ModelFilter(std::uint64_t w, std::uint64_t k, std::uint64_t d,
                                              const ModelSettings& settings,
                                              const std::vector<double>& input);

[[nodiscard]] double ModelMargin(double value, double size, int offset, double cropFactor);

/** Weights of a stage with these margins and ramps of @p r frames. */
[[nodiscard]] std::vector<std::int32_t> ModelWeights(const std::vector<double>& margin, int ignore,
                                                     std::int64_t r);

/** One axis; keeps its lists from one calculation to the next, as the program's object does. */
class PathModel
{
public:
    void Configure(const ModelSettings& settings);
    void Generate(const std::vector<double>& motion, double size);

    std::vector<double> Used;
    std::vector<double> Shakiness;
    std::vector<double> Modified;
    ModelStage Base;
    ModelStage Super;
    ModelStage Result;
    std::int64_t R = 0;

private:
    [[nodiscard]] std::vector<double> PreparePosition(const std::vector<double>& motion,
                                                      std::uint64_t d);
    void Complete(ModelStage& stage, double size, std::uint64_t d);
    void Correct(ModelStage& stage) const;
    void Blend();

    ModelSettings Settings;
};
