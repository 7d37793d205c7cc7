// SPDX-License-Identifier: MIT
#pragma once

#include "project/project.h"
#include "stabilizer/camerapath.h"

/** A camera path of its own, bound to the horizontal axis of a project of its own. */
struct AxisFixture
{
    ::Project Project;
    AxisFilterSettings& Settings = Project.FlowH;
    CameraPath Path{true};
    std::int32_t Offset = 0;
    double Size = 1920.0;  ///< frame size, pixels

    AxisFixture(std::int32_t type, std::int32_t strength)
    {
        Settings.AvgPathOrder = type;
        Settings.AvgPathImages = strength;
        Settings.IgnoreStartFramesMargin = 5;
        Project.ExportSettings.CropFactor = 1.1;
    }

    /** Configures and calculates. @return the outcome */
    const PathFilterStage& Run(const QVector<double>& motion)
    {
        Path.Configure(&Project, &Settings, Offset);
        Path.Generate(motion, Size, 25.0);
        return Path.Result;
    }
};
