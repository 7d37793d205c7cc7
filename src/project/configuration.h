// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/** What the user's machine remembers between runs, apart from any project. */
struct GlobalConfiguration
{
    // Field order is part of the design.
    bool AutoLoadLastProject = false;  ///< open ProjectFile at the start
    QStringList RecentList;            ///< project files, oldest first
    QStringList DirList;               ///< quick access directories as the user typed them
    QString StyleSheet;                ///< path of a style sheet
    QString ProjectFile;               ///< path of the current project
};
