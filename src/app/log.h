// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <cstdint>

class QJsonObject;
class QWidget;

namespace Ui
{
class Log;
}

/** One message. */
struct LogEntry
{
    std::uint32_t Level = 0;  ///< LogLevel
    QString Text;
};

/**
 * The program's messages to its user: a bounded list, shown in a text area and filtered by level.
 * The label above the filters shows the last message of any level.
 *
 * User interface thread only; the worker's messages come through the queue of OpCVThread. The
 * object exists before the QApplication and after it: it touches no widget before Setup.
 */
class Log : public QObject
{
    Q_OBJECT

public:
    explicit Log(QObject* parent = nullptr);
    ~Log() override;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /**
     * Builds the log's widgets into @p parent, which owns them and has no layout of its own. Once
     * per window; a further window takes the log over.
     */
    void Setup(QWidget* parent);

    /**
     * Adds a message and shows it, from Setup on until the window goes. The oldest entries beyond
     * the limit go, but their lines stay in the text area until it is filled anew.
     * @param level a LogLevel; from LogDebug on the text shows in the label only
     */
    void Add(unsigned level, const QString& text);

    // The settings of the log as an object of a settings file. The window does not use them yet:
    // the log starts with the same settings each time and writes no file.

    void WriteSettings(QJsonObject& obj) const;

    /**
     * Takes the fields from @p obj, with their defaults for what is missing, and shows the
     * filters.
     */
    void ReadSettings(const QJsonObject& obj);

    /**
     * Writes @p obj to a file of that name with date and time behind it; names below 3 characters
     * do nothing.
     */
    void WriteLogFile(const QString& baseName, const QJsonObject& obj) const;

    // The order of the slots is part of the design.
private slots:
    void on_pushButtonLoad_clicked();
    void on_pushButtonClear_clicked();
    void on_pushButtonSave_clicked();
    void on_checkBox_toggled();

private:
    void Show(const LogEntry& entry);
    void Trim();
    [[nodiscard]] bool IsShown(unsigned level) const;

    // Field order is part of the design.
    Ui::Log* ui;               ///< owned; all null but between Setup and the end of the window
    QString LogFileName;       ///< kept with the settings; no file is written
    QList<LogEntry*> Entries;  ///< owned, oldest first
    bool ShowInit = true;
    bool ShowRun = true;
    bool ShowWarnings = true;
    bool ShowErrors = true;
    bool ShowDebug = true;
    bool EnableLogging = false;
    bool LogToFile = false;
    std::int32_t EntryLimit = 1000;
};

extern Log ProgramLog;
