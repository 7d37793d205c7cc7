// SPDX-License-Identifier: MIT
#include "app/log.h"
#include "project/jsonaccess.h"

#include "ui_log.h"

#include <QDateTime>
#include <QJsonObject>

namespace
{
const QString EnableLoggingKey = QStringLiteral("EnableLogging");
const QString LogFileNameKey = QStringLiteral("LogFileName");
const QString ShowInitKey = QStringLiteral("ShowInitLogs");
const QString ShowRunKey = QStringLiteral("ShowRunLogs");
const QString ShowWarningsKey = QStringLiteral("ShowWarnings");
const QString ShowErrorsKey = QStringLiteral("ShowErrors");
const QString EntryLimitKey = QStringLiteral("Entry Count Limit");
}  // namespace

void Log::WriteSettings(QJsonObject& obj) const
{
    obj.insert(EnableLoggingKey, EnableLogging);
    obj.insert(LogFileNameKey, LogFileName);
    obj.insert(ShowInitKey, ShowInit);
    obj.insert(ShowRunKey, ShowRun);
    obj.insert(ShowWarningsKey, ShowWarnings);
    obj.insert(ShowErrorsKey, ShowErrors);
    obj.insert(EntryLimitKey, EntryLimit);
}

void Log::ReadSettings(const QJsonObject& obj)
{
    EnableLogging = JsonGetBool(obj, EnableLoggingKey, false);
    LogFileName = JsonGetString(obj, LogFileNameKey, QString());
    LogToFile = LogFileName.size() > 1 && EnableLogging;
    ShowInit = JsonGetBool(obj, ShowInitKey, true);
    ShowRun = JsonGetBool(obj, ShowRunKey, true);
    ShowWarnings = JsonGetBool(obj, ShowWarningsKey, true);
    ShowErrors = JsonGetBool(obj, ShowErrorsKey, true);
    EntryLimit = JsonGetInt(obj, EntryLimitKey, 1000);
    if (ui->checkBoxInit == nullptr)
    {
        return;
    }
    ui->checkBoxInit->setChecked(ShowInit);
    ui->checkBoxRunning->setChecked(ShowRun);
    ui->checkBoxWarnings->setChecked(ShowWarnings);
    ui->checkBoxErrors->setChecked(ShowErrors);
    ui->checkBoxDebug->setChecked(ShowDebug);
}

void Log::WriteLogFile(const QString& baseName, const QJsonObject& obj) const
{
    constexpr int tooShort = 2;  // characters; hardly a name
    if (baseName.size() <= tooShort)
    {
        return;
    }
    const QString stamp =
        QDateTime::currentDateTime().toString(QStringLiteral("'_D_'yyyy_MM_dd'_T_'hh_mm_ss"));
    const QString name = baseName + stamp + QStringLiteral(".json");
    JsonWriteFile(name, obj);
}
