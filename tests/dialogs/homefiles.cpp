// SPDX-License-Identifier: MIT
#include "dialogs/homefiles.h"
#include "support/files.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>

namespace
{
QJsonArray ArrayOf(const QStringList& list, const QString& key)
{
    QJsonArray array;
    for (const QString& entry : list)
    {
        array.append(QJsonObject{{key, entry}});
    }
    return array;
}
}  // namespace

QString ConfigurationPath()
{
    return QDir::homePath() + QStringLiteral("/Molvane/.MolvaneConfiguration.json");
}

QString StartProjectPath()
{
    return QDir::homePath() + QStringLiteral("/Molvane/Start/Start.mvprj");
}

QJsonObject ReadObject(const QString& path)
{
    return QJsonDocument::fromJson(ReadBytes(path)).object();
}

QJsonObject SmallProject(const QString& source)
{
    return {{"SourceFile", source}, {"TrackingFile", "/data/T.dat"},
            {"StabilizeType", 1},   {"MaxTrackingPoints", 321},
            {"EnableCrop", true},   {"CropFactor", 1.25},
            {"EnRescale", false}};
}

QStringList ConfigurationList(const QString& list, const QString& key)
{
    QStringList strings;
    const QJsonArray array = ReadObject(ConfigurationPath()).value(list).toArray();
    for (const QJsonValue& entry : array)
    {
        strings.append(entry.toObject().value(key).toString());
    }
    return strings;
}

QStringList RecentProjects()
{
    return ConfigurationList(QStringLiteral("RecentList"), QStringLiteral("ProjectFile"));
}

QStringList QuickDirectories()
{
    return ConfigurationList(QStringLiteral("DirList"), QStringLiteral("Dir"));
}

void WriteConfiguration(const QString& projectFile, bool autoLoad, const QStringList& recent,
                        const QStringList& directories)
{
    WriteObject(ConfigurationPath(),
                {{"ProjectFile", projectFile},
                 {"AutoLoadLastProject", autoLoad},
                 {"RecentList", ArrayOf(recent, QStringLiteral("ProjectFile"))},
                 {"DirList", ArrayOf(directories, QStringLiteral("Dir"))}});
}
