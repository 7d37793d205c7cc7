// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

/**
 * The unrest of a hand that otherwise holds the camera still: horizontal motion of the content of a
 * 1920x1080 picture to the next frame, pixels, 30 frames per second. The same numbers in every run.
 */
[[nodiscard]] QVector<double> ShakyHand(int frames);

/**
 * Adds a pan of @p step pixels per frame to the motion of the frames from @p from up to @p to. A
 * camera that pans to the right moves the content to the left: a step below 0.
 */
void AddPan(QVector<double>& motion, int from, int to, double step);
