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
 * Pixels that remain between the crop border and a frame moved by @p value.
 * @param value       shift of the frame, pixels, positive right or down
 * @param angle       radians, 0 in all calls
 * @param size        frame width or height, pixels
 * @param offset      shift of the crop window, pixels
 * @param cropFactor  frame size divided by crop size
 * @return            whole pixels, negative when black shows inside the crop; -1 beyond 60 degrees
 *
 * Deliberate: the crop factor counts even when the export does not crop, so that margins and
 * adaptive filters do not jump when the user tries the export without one.
 */
[[nodiscard]] double CropMargin(double value, double angle, double size, int offset,
                                double cropFactor);

/** CropMargin of each entry of @p values at angle 0, or 0.0 throughout when @p size is 0.0. */
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
 * entries in a row, shifted by Delay so that entry i belongs to input i. Running sums as in
 * Hogenauer 1981: O(length * Order), whatever the window. A disabled stage is left alone.
 *
 * With @p settings locked, or a window of at most 5 entries or as long as the input, the path is
 * the mean of the input throughout. The last Delay entries run level, or in a straight line to
 * EndValue; the first Delay entries likewise from StartValue.
 */
void FilterPath(PathFilterStage& stage, const QVector<double>& input,
                const AxisFilterSettings& settings);

/** Removes the padding: the first and the last stage.Delay entries of stage.Path. */
void StripPadding(PathFilterStage& stage);

/**
 * Fills stage.Correction with Path - ShakinessPath + UsedShakiness, per frame. The last term takes
 * back the motion that leaves the frame, so that the correction is measured from the position of
 * the frame itself. Margin and Weight get the same length.
 */
void CalculateCorrection(PathFilterStage& stage, const QVector<double>& shakinessPath,
                         const QVector<double>& usedShakiness);

/**
 * Fills stage.Weight from stage.Margin: @p blendFrames where the stage may be used, 0 where its
 * path would push black into the crop, ramps of @p blendFrames frames between. Margins above 0.0
 * are good. Good stretches count only if they and the time since the last bad one began are longer
 * than three ramps.
 * @param ignoreStart  bad margins that begin at frames up to this one are disregarded
 * A disabled stage is left alone.
 */
void CalculateWeights(PathFilterStage& stage, std::int32_t ignoreStart, std::int32_t blendFrames);

/** result.Path from the weighted paths of @p base and @p super; of @p base alone when @p super is
 * disabled. */
void BlendPaths(PathFilterStage& base, const PathFilterStage& super, std::int32_t blendFrames,
                PathFilterStage& result);
