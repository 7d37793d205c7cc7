// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/**
 * What the user's machine remembers between runs, apart from any project. One small JSON file under
 * the home directory; a file that cannot be read gives the defaults, one that cannot be written is
 * left without a word. User interface thread only.
 */
struct GlobalConfiguration
{
    // Field order is part of the design.
    bool AutoLoadLastProject = false;  ///< open ProjectFile at the start
    QStringList RecentList;            ///< project files, oldest first, at most 10
    QStringList DirList;               ///< quick access directories as the user typed them
    QString StyleSheet;                ///< path of a style sheet
    QString ProjectFile;               ///< path of the current project

    GlobalConfiguration() = default;

    /** Reads the configuration file. The project file becomes the last recent entry. */
    void Load();

    /**
     * Notes the project file in the recent list and writes the configuration file, if its
     * directory is there.
     */
    void Save();

    /** Adds @p path at the end, unless it stands there already; the oldest entries beyond 10 go. */
    void AddRecent(const QString& path);

    /**
     * Gives the application the style sheet of the user's file, or the compiled-in one if there is
     * none.
     */
    void ApplyStyleSheet() const;
};
