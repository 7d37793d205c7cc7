// SPDX-License-Identifier: MIT
#pragma once

#include "app/testwindow.h"

#include <QString>
#include <QStringList>

// The lists of a graph tab, and the line edits of the settings tab in the order of the form.
inline constexpr const char* LocalTree = "treeWidgetIgnore";
inline constexpr const char* GlobalTree = "treeWidgetGlobalIgnore";
inline constexpr const char* ManualTree = "treeWidgetManualPathList";
inline constexpr const char* PathFields[] = {"lineEditSourceVideo", "lineEditTrackingPathFile",
                                             "lineEditStabilizeFile", "lineEditExportVideo"};

/**
 * All that a project keeps, as the widgets show it, one line per widget. Visits the graph tabs and
 * ends on the settings tab.
 */
[[nodiscard]] QStringList ShownSettings(const TestWindow& window);

/**
 * The lines without the ranges of the manual sections, which are held to the frames of the video:
 * there are none before a job.
 */
[[nodiscard]] QStringList WithoutRanges(QStringList lines);
