// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/pathmodel.h"

#include <QString>

#include <random>
#include <vector>

class CameraPath;
struct AxisFilterSettings;
struct Project;

/** Puts the settings of a model into @p project and its record @p axis. */
void FillProject(const ModelSettings& model, Project& project, AxisFilterSettings& axis);

/** Settings of that strength and type, everything else by chance: switches, values, sections,
 * points. */
[[nodiscard]] ModelSettings RandomSettings(std::mt19937& generator, int strength, int type,
                                           int frames);

/**
 * The motion of a camera that drifts, trembles and at times is thrown about, so that the adaptive
 * types have good and bad stretches of many lengths.
 */
[[nodiscard]] std::vector<double> RandomMotion(std::mt19937& generator, int frames, double size);

/** Compares all lists bit by bit. @return an empty string when equal, else what differs first */
[[nodiscard]] QString PathDifference(const CameraPath& path, const PathModel& model);
