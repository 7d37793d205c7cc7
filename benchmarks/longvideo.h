// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QVector>

/** Motion of a shaky hand, pixels; the same numbers in every run. */
[[nodiscard]] QVector<double> ShakyMotion(int frames);

/**
 * Writes a project with the data files of an analysed 1920x1080 video, as the program leaves them;
 * the video itself is not needed.
 * @param dir     existing directory
 * @param frames  at least 2
 * @param type    filter type of all axes, 1 to 5
 * @param depth   filter strength of all axes
 * @return        the project file
 */
[[nodiscard]] QString WriteAnalysedProject(const QDir& dir, int frames, int type, int depth);
