// SPDX-License-Identifier: MIT
#pragma once

#include "batch/batchsetup.h"
#include "batch/exportsettings.h"
#include "batch/scriptedstabilizer.h"
#include "support/testvideo.h"

#include <QStringList>
#include <QVector>

/**
 * A numbered clip, a stabilizer that leaves frames as they are and notes the calls, and corrections
 * for all frames: an export has all that it needs.
 */
struct ExportSetup : BatchSetup
{
    explicit ExportSetup(const TestVideo::Format& format = {64, 64, 5, 25.0});

    [[nodiscard]] int Run() { return Object.ExportJob(Settings); }

    /** The numbers that the exported frames show; empty when there is no readable export. */
    [[nodiscard]] QVector<int> ShownNumbers() const;

    /** The calls of an export that gets through @p frames frames. */
    [[nodiscard]] static QStringList WarpCalls(int frames);

    ScriptedStabilizer Object;
    ::ExportSettings Settings;
};
