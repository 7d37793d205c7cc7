// SPDX-License-Identifier: MIT
#pragma once

#include "project/project.h"
#include "support/freshhost.h"
#include "support/loglines.h"

#include <QString>
#include <QTemporaryDir>

class Stabilize;

/**
 * What every test of jobs and data files needs: an empty folder, a project whose four paths lie in
 * it, a host with its thread, through which log lines travel, the record of those lines, and camera
 * paths that follow the project. The files do not exist yet.
 */
struct BatchSetup
{
    BatchSetup();
    BatchSetup(const BatchSetup&) = delete;
    BatchSetup& operator=(const BatchSetup&) = delete;

    /** Absolute path of the file @p name in the folder. */
    [[nodiscard]] QString Path(const char* name) const;

    /** Brings the block of paths in step with the project and hands it to @p stabilizer. */
    void GivePaths(Stabilize& stabilizer);

    QTemporaryDir Folder;
    Project Proj;  ///< source.avi, export.mp4, Tracking.dat, Stabilize.dat
    FreshHost Host;
    LogLines Lines;
};
