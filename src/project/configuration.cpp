// SPDX-License-Identifier: MIT
#include "project/configuration.h"

#include "app/programapplication.h"
#include "project/jsonaccess.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QJsonArray>

namespace
{
constexpr int MostRecent = 10;

const QString ProjectFileKey = QStringLiteral("ProjectFile");
const QString AutoLoadKey = QStringLiteral("AutoLoadLastProject");
const QString StyleSheetKey = QStringLiteral("StyleSheet");
const QString RecentListKey = QStringLiteral("RecentList");
const QString DirListKey = QStringLiteral("DirList");
const QString DirKey = QStringLiteral("Dir");

QString ConfigurationPath()
{
    return QStringLiteral("%1/Molvane/.MolvaneConfiguration.json").arg(QDir::homePath());
}

void CutToMostRecent(QStringList& list)
{
    while (list.size() > MostRecent)
    {
        list.removeFirst();
    }
}

/** One object with the one key @p key per entry; nothing for an empty list. */
void WriteList(QJsonObject& root, const QString& listKey, const QString& key,
               const QStringList& list)
{
    if (list.isEmpty())
    {
        return;
    }
    QJsonArray array;
    for (const QString& entry : list)
    {
        array.append(QJsonObject{{key, entry}});
    }
    root.insert(listKey, array);
}

/** The compiled-in sheet asks for this font by name. */
void MakeFontKnown()
{
    if (QFontDatabase().hasFamily(QStringLiteral("Open Sans")))
    {
        return;
    }
    QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/OpenSans-Regular.ttf"));
    QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/OpenSans-Bold.ttf"));
}
}  // namespace

void GlobalConfiguration::Load()
{
    QJsonObject root;
    QJsonParseError error{};
    JsonReadFile(ConfigurationPath(), root, &error);
    JsonReportError(error, ConfigurationPath());
    const QString startProject =
        QStringLiteral("%1/Molvane/Start/Start.mvprj").arg(QDir::homePath());
    ProjectFile = JsonGetString(root, ProjectFileKey, startProject);
    AutoLoadLastProject = JsonGetBool(root, AutoLoadKey, true);
    StyleSheet = JsonGetString(root, StyleSheetKey, QStringLiteral("standard.css"));

    RecentList.clear();
    const QJsonArray recent = root.value(RecentListKey).toArray();
    for (const QJsonValue& value : recent)
    {
        const QJsonObject entry = value.toObject();
        if (entry.contains(ProjectFileKey))
        {
            RecentList.append(JsonGetString(entry, ProjectFileKey, QString()));
        }
        CutToMostRecent(RecentList);
    }
    AddRecent(ProjectFile);

    DirList.clear();
    const QJsonArray directories = root.value(DirListKey).toArray();
    for (const QJsonValue& value : directories)
    {
        const QJsonObject entry = value.toObject();
        if (entry.contains(DirKey))
        {
            DirList.append(JsonGetString(entry, DirKey, QString()));
        }
        CutToMostRecent(RecentList);  // Deliberate: this list, while the directories have no limit
    }
}

void GlobalConfiguration::Save()
{
    QJsonObject root;
    root.insert(ProjectFileKey, ProjectFile);
    root.insert(AutoLoadKey, AutoLoadLastProject);
    root.insert(StyleSheetKey, StyleSheet);
    AddRecent(ProjectFile);
    WriteList(root, RecentListKey, ProjectFileKey, RecentList);
    WriteList(root, DirListKey, DirKey, DirList);
    JsonWriteFile(ConfigurationPath(), root);
}

void GlobalConfiguration::AddRecent(const QString& path)
{
    if (RecentList.isEmpty())
    {
        RecentList.append(path);
        return;
    }
    if (RecentList.last() != path)
    {
        RecentList.append(path);
    }
    CutToMostRecent(RecentList);
}

void GlobalConfiguration::ApplyStyleSheet() const
{
    if (ProgramApplication == nullptr)
    {
        return;
    }
    MakeFontKnown();
    QFile file(QFile::exists(StyleSheet) ? StyleSheet : QStringLiteral(":/l/Logos/standard.css"));
    QByteArray bytes;
    if (file.open(QIODevice::ReadOnly))
    {
        bytes = file.readAll();
        file.close();
    }
    ProgramApplication->setStyleSheet(QString::fromLatin1(bytes.constData()));
}
