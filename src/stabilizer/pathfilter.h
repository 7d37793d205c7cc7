// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/pathfilterstage.h"

#include <QVector>

#include <cstdint>

struct AxisFilterSettings;

/**
 * The arithmetic of the camera path: smoothing, corrections, crop margins and the weights of the
 * adaptive filters. Data in, data out; no globals, no locks, any thread. All in 64-bit floats and
 * in a fixed order of evaluation, so that results are the same bits on every machine.
 *
 * Symbols: W window length, K averages in a row, d delay, n frames, R frames of a blend ramp.
 */

/**
 * What remains between the crop border and a frame moved by @p value: pixels on the pixel axes,
 * radians or degrees with the sizes of the rotation axes.
 * @param value       shift of the frame, units of the axis, positive right or down
 * @param angle       radians, 0 in all calls
 * @param size        frame width or height, or what stands for it, units of the axis
 * @param offset      shift of the crop window, units of the axis
 * @param cropFactor  frame size divided by crop size
 * @return            a whole number, negative when black shows in the crop; -1 beyond 60 degrees
 *
 * Deliberate: the crop factor counts even when the export does not crop, so that margins and
 * adaptive filters do not jump when the user tries the export without one.
 */
[[nodiscard]] double CropMargin(double value, double angle, double size, int offset,
                                double cropFactor);

/**
 * CropMargin of each entry of @p values at angle 0, or 0.0 throughout when @p size is 0.0. Units of
 * the axis; @p margins gets the length of @p values.
 */
void CropMargins(const QVector<double>& values, double size, int offset, double cropFactor,
                 QVector<double>& margins);

/**
 * Group delay, in frames, of @p order moving averages of @p windowLength frames in a row: N, 2N and
 * 3N for windows of 2N + 1. 0 for a window too short to have one.
 */
[[nodiscard]] std::uint64_t CascadeDelay(std::uint64_t windowLength, std::uint64_t order);

/** Running sum of @p values: entry i is the sum of the entries 0 to i. */
void Integrate(const QVector<double>& values, QVector<double>& sums);

/**
 * Smooths @p input into stage.Path, of the same length, by Order moving averages of WindowLength
 * entries in a row, shifted by Delay: entry i belongs to input i where Delay is the cascade's own.
 * Running sums as in Hogenauer 1981: O(length * Order), whatever the window. A disabled stage is
 * left alone.
 *
 * With @p settings locked, or a window of at most 5 entries or no shorter than the input, the path
 * is the mean of the input throughout. Otherwise the last Delay entries run level, or in a straight
 * line to EndValue; the first Delay entries likewise from StartValue.
 */
void FilterPath(PathFilterStage& stage, const QVector<double>& input,
                const AxisFilterSettings& settings);

/** Removes the padding: the first and the last stage.Delay entries of stage.Path. */
void StripPadding(PathFilterStage& stage);

/**
 * Fills stage.Correction with Path - ShakinessPath + UsedShakiness, per frame. The last term takes
 * back the motion that leaves the frame, so that the correction is measured from the position of
 * the frame itself. Margin and Weight get the same length; new weights are 0.
 */
void CalculateCorrection(PathFilterStage& stage, const QVector<double>& shakinessPath,
                         const QVector<double>& usedShakiness);

/**
 * Fills stage.Weight from stage.Margin: @p blendFrames where the stage may be used, 0 where its
 * path would push black into the crop, ramps of @p blendFrames frames between. Margins above 0.0
 * are good. The first stretch counts as it is; a later good one counts only if its length, and the
 * time since the stretch before the last bad one that counts began, exceed three ramps. The last
 * change never counts, and the good stretch before it is measured by the one before.
 * Deliberate: when frame 0 is good and the first bad stretch is disregarded, so are all later ones.
 * @param ignoreStart  bad margins that begin behind frame 0 and up to this frame are disregarded
 * A disabled stage is left alone. In pathfilter_weights.cpp, like BlendPaths.
 */
void CalculateWeights(PathFilterStage& stage, std::int32_t ignoreStart, std::int32_t blendFrames);

/**
 * result.Path from the weighted paths of @p base and @p super; of @p base alone when @p super is
 * disabled. base.Weight becomes what super.Weight leaves of @p blendFrames. A ramp of 0 frames,
 * which only a strength of 0 has, makes the path NaN and the frames black.
 */
void BlendPaths(PathFilterStage& base, const PathFilterStage& super, std::int32_t blendFrames,
                PathFilterStage& result);
