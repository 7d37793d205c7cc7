// SPDX-License-Identifier: MIT
#pragma once

#include "batch/exportsettings.h"
#include "batch/filenames.h"
#include "batch/trackingparameters.h"
#include "stabilizer/axisfiltersettings.h"
#include "stabilizer/ignoresection.h"

#include <QString>

#include <cstdint>
#include <vector>

/**
 * Everything the user settles for one video. The main window owns the one project and changes it
 * on the user interface thread; the worker reads TrackingParameters, ExportSettings and FileNames
 * through its pointer while a job runs, when the window keeps its fields off.
 */
struct Project
{
    // Field order is part of the design. Paths use "/" and stand as the user gave them.
    QString SourceFile;
    QString ExportFile;
    QString TrackingFile;
    QString StabilizationFile;
    std::int32_t StabilizeType = 1;  ///< 1 is the only stabilizer
    ::TrackingParameters TrackingParameters;
    AxisFilterSettings FlowH;           ///< pixels
    AxisFilterSettings FlowV;           ///< pixels
    AxisFilterSettings FlowAngle;       ///< degrees
    AxisFilterSettings RadianSettings;  ///< radians; remade from the rotation settings, not stored
    bool UseFlowVSettings = false;      ///< false: the vertical axis follows FlowH
    bool UseFlowRotSettings = false;    ///< false: the rotation follows FlowH
    bool EnGlobalIgnoreList = false;    ///< apply GlobalIgnoreSections
    std::vector<IgnoreSection> GlobalIgnoreSections;  ///< for all axes
    ::ExportSettings ExportSettings;
    ::FileNames FileNames;  ///< the paths as the worker gets them, see SyncFileNames

    /**
     * Fills FileNames from the four paths.
     *
     * Deliberate: the block is 8-bit. A path is cut at its first character beyond Latin-1 and
     * behind 511 characters, without a message.
     */
    void SyncFileNames();
};
