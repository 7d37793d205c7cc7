// SPDX-License-Identifier: MIT
#pragma once

#include "project/project.h"
#include "stabilizer/camerapath.h"

#include <QVector>

/**
 * A project and the camera path of one axis, bound to its FlowH record, for tests of the graphs. A
 * path of frames that a test wants to see comes from Generate with the differences of its values:
 * ShakinessPath is the running sum of the motion.
 */
struct AxisSetup
{
    /** @param isPixelAxis  false for an axis of rotation */
    explicit AxisSetup(bool isPixelAxis = true);

    /** Binds path and settings anew, after the test has changed settings. */
    void Configure();

    /** Configures and calculates. @param motion  per frame, units of the axis */
    void Generate(const QVector<double>& motion, double frameSize = 640.0, double fps = 25.0);

    Project Proj;
    CameraPath Path;
};

/** @p frames motions of @p step each: a path that rises along a straight line. */
[[nodiscard]] inline QVector<double> SteadyMotion(int frames, double step)
{
    return QVector<double>(frames, step);
}
