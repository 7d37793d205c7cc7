// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

/** The settings files below the home directory, as a user with a text editor sees them. */

[[nodiscard]] QString ConfigurationPath();
[[nodiscard]] QString StartProjectPath();  ///< of the project that the program makes by itself

/** The object in a JSON file; empty when there is none. */
[[nodiscard]] QJsonObject ReadObject(const QString& path);

/** A project file with what the command line asks of one, and a source of its own. */
[[nodiscard]] QJsonObject SmallProject(const QString& source);

/** The strings of a list of the configuration file, as in "RecentList" and "ProjectFile". */
[[nodiscard]] QStringList ConfigurationList(const QString& list, const QString& key);
[[nodiscard]] QStringList RecentProjects();    ///< of the configuration file
[[nodiscard]] QStringList QuickDirectories();  ///< of the configuration file

/** Puts a configuration file into the home directory. */
void WriteConfiguration(const QString& projectFile, bool autoLoad,
                        const QStringList& recent = QStringList(),
                        const QStringList& directories = QStringList());
