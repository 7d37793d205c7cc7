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

class QJsonObject;

/**
 * Everything the user settles for one video. The main window owns the one project and changes it
 * on the user interface thread. The worker reads TrackingParameters and ExportSettings through its
 * pointer when a phase of a job begins, and through the camera paths, under the engine lock, the
 * axis settings, the ignore lists and the crop factor when it calculates; a change that is
 * committed in between, as between analysis and export, counts for the next phase. The paths it
 * gets as a copy at the start of the job.
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

    Project() = default;

    /**
     * Reads a project file. Keys that are missing or of another type give their defaults; an empty
     * name, or a file that is no JSON, gives the defaults of all fields. A name with ".json" in it
     * is changed to ".mvprj", also in @p file, and the content is written there.
     * The source keeps doubled slashes, the other paths lose them. FileNames follow; what the
     * camera paths read is replaced under the engine lock.
     * @param reportErrors  log what is missing; without it a missing file gives the defaults. With
     * an empty name the line about the source video comes each time.
     * @return              false when the file is missing and errors are reported; nothing has
     * changed then
     */
    bool Load(QString& file, bool reportErrors);

    /**
     * Writes a project file. Deliberate: the log says "Project file written!" also when the file
     * could not be written.
     */
    void Save(const QString& file) const;

    /**
     * True when a file has what every project file has: whether the command line names a project.
     */
    [[nodiscard]] static bool CheckFile(const QString& file);

    /**
     * Fills FileNames from the four paths.
     *
     * Deliberate: the block is 8-bit. A path is cut at its first character beyond Latin-1 and
     * behind 511 characters, without a message. Other characters than ASCII become single bytes,
     * which a file system of UTF-8 names does not know.
     */
    void SyncFileNames();

private:
    void ReadPathSettings(const QJsonObject& root);
};
