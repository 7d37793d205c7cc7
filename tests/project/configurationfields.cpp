// SPDX-License-Identifier: MIT
#include "project/configurationfields.h"

QStringList FieldsOf(const GlobalConfiguration& configuration)
{
    return QStringList{configuration.AutoLoadLastProject ? "true" : "false",
                       configuration.ProjectFile, configuration.StyleSheet, "recent:"} +
           configuration.RecentList + QStringList("directories:") + configuration.DirList;
}

GlobalConfiguration UnusualConfiguration()
{
    GlobalConfiguration configuration;
    configuration.AutoLoadLastProject = false;
    configuration.RecentList = QStringList{"old", "older"};
    configuration.DirList = QStringList("/old");
    configuration.StyleSheet = "old.css";
    configuration.ProjectFile = "/old.mvprj";
    return configuration;
}
