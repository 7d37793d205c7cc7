// SPDX-License-Identifier: MIT
#include "app/log.h"

#include "batch/logrecord.h"

#include "ui_log.h"

#include <QLatin1String>

namespace
{
/** What stands in front of a line of the text area; all 9 characters wide. */
QLatin1String Prefix(unsigned level)
{
    switch (level)
    {
        case LogInit:
            return QLatin1String("Init     ");
        case LogRun:
            return QLatin1String("Run      ");
        case LogWarning:
            return QLatin1String("Warning  ");
        default:
            return QLatin1String("Error    ");
    }
}
}  // namespace

Log::Log(QObject* parent) : QObject(parent), ui(new Ui::Log()) {}

Log::~Log()
{
    qDeleteAll(Entries);
    delete ui;
}

void Log::Setup(QWidget* parent)
{
    ui->setupUi(parent);
    // Messages that come when the window has gone are kept and not shown.
    connect(parent, &QObject::destroyed, this,
            [this, gone = ui->plainTextEdit]
            {
                if (ui->plainTextEdit == gone)
                {
                    *ui = Ui::Log();
                }
            });
    ui->checkBoxInit->setChecked(ShowInit);
    ui->checkBoxErrors->setChecked(ShowErrors);
    ui->checkBoxRunning->setChecked(ShowRun);
    ui->checkBoxWarnings->setChecked(ShowWarnings);
    ShowDebug = false;
    ui->checkBoxDebug->hide();
    ui->pushButtonLoad->hide();
    ui->pushButtonSave->hide();
    connect(ui->checkBoxInit, &QCheckBox::clicked, this, &Log::on_checkBox_toggled);
    connect(ui->checkBoxRunning, &QCheckBox::clicked, this, &Log::on_checkBox_toggled);
    connect(ui->checkBoxWarnings, &QCheckBox::clicked, this, &Log::on_checkBox_toggled);
    connect(ui->checkBoxErrors, &QCheckBox::clicked, this, &Log::on_checkBox_toggled);
    connect(ui->pushButtonLoad, &QPushButton::clicked, this, &Log::on_pushButtonLoad_clicked);
    connect(ui->pushButtonClear, &QPushButton::clicked, this, &Log::on_pushButtonClear_clicked);
    connect(ui->pushButtonSave, &QPushButton::clicked, this, &Log::on_pushButtonSave_clicked);
}

void Log::Add(unsigned level, const QString& text)
{
    Entries.append(new LogEntry{level, text});
    Show(*Entries.last());
    Trim();
}

void Log::Show(const LogEntry& entry)
{
    if (ui->labelLog == nullptr)
    {
        return;
    }
    ui->labelLog->setText(entry.Text);
    if (IsShown(entry.Level))
    {
        ui->plainTextEdit->appendPlainText(Prefix(entry.Level) + entry.Text);
    }
}

bool Log::IsShown(unsigned level) const
{
    return (level == LogInit && ShowInit) || (level == LogRun && ShowRun) ||
           (level == LogWarning && ShowWarnings) || (level == LogError && ShowErrors);
}

void Log::Trim()
{
    while (!Entries.isEmpty() && Entries.size() > EntryLimit)
    {
        delete Entries.takeFirst();
    }
}

void Log::on_pushButtonLoad_clicked()
{
    Add(LogWarning, tr("Not Supported"));
}

void Log::on_pushButtonClear_clicked()
{
    ui->plainTextEdit->clear();
    qDeleteAll(Entries);
    Entries.clear();
}

void Log::on_pushButtonSave_clicked()
{
    Add(LogWarning, tr("Not Supported"));
}

void Log::on_checkBox_toggled()
{
    ShowInit = ui->checkBoxInit->isChecked();
    ShowRun = ui->checkBoxRunning->isChecked();
    ShowWarnings = ui->checkBoxWarnings->isChecked();
    ShowErrors = ui->checkBoxErrors->isChecked();
    ui->plainTextEdit->clear();
    Trim();
    for (const LogEntry* entry : qAsConst(Entries))
    {
        Show(*entry);
    }
}
