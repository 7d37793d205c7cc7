// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

/** Motion of a video from frame to frame, one entry per pair of frames. */
struct VideoMotion
{
    QVector<double> X;  ///< pixels
    QVector<double> Y;  ///< pixels
    QVector<double> Degrees;
};

/** How much a video shakes: RMS of the motion less its own slow trend. */
struct Shake
{
    double Shift = 0.0;    ///< pixels per frame, both directions together
    double Degrees = 0.0;  ///< degrees per frame
};

/**
 * Runs the program's motion step over a video, with up to 800 features.
 * @return empty lists for a file that cannot be read; entries for the frames that can
 */
[[nodiscard]] VideoMotion MeasureMotion(const QString& videoFile);

/** The shake of @p motion, without the last @p skipAtEnd entries. Zero for fewer than 3 entries. */
[[nodiscard]] Shake MeasureShake(const VideoMotion& motion, int skipAtEnd);
