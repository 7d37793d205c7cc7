// SPDX-License-Identifier: MIT
#include "app/log.h"
#include "app/mainwindow.h"
#include "app/pathnames.h"
#include "batch/jobstate.h"
#include "batch/logrecord.h"
#include "batch/stabilizerhost.h"
#include "player/previewplayer.h"
#include "project/filedialogs.h"

#include "ui_mainwindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QFile>
#include <QMenu>
#include <QMessageBox>

#include <algorithm>

namespace
{
const char* const VideoFilter =
    QT_TRANSLATE_NOOP("MainWindow", "video files (*.avi *.mov *.mp4 *.webm *.av1)");

/** The file name of @p path without its extension. */
QString BaseNameOf(const QString& path)
{
    const QString name = FileNameOf(path);
    return name.left(name.lastIndexOf(QLatin1Char('.')));
}
}  // namespace

void MainWindow::closeEvent(QCloseEvent* e)
{
    if (!AskSaveProject(tr("Exit")))
    {
        e->ignore();
        return;
    }
    // They have no parent, and the process lives as long as any window shows.
    const std::initializer_list<QDialog*> dialogs = {
        &AboutDialog, &AboutQtDialog, &AboutOpenCVDialog, &AboutCodecsDialog, &HelpDialog};
    for (QDialog* dialog : dialogs)
    {
        dialog->close();
    }
}

void MainWindow::on_actionnew_project_triggered()
{
    if (!AskSaveProject(tr("Create new Project")))
    {
        return;
    }
    if (!ChooseProject(Config.ProjectFile, ProjectDir, tr("New Project")))
    {
        ProgramLog.Add(LogError, tr("Could not create project file"));
        return;
    }
    Player->Close();
    CreateProject();
    Proj.SyncFileNames();
    Player->Open();
}

void MainWindow::on_actionopen_project_triggered()
{
    if (!AskSaveProject(tr("Open Project")))
    {
        return;
    }
    if (!ChooseFile(Config.ProjectFile, tr("Open Project"), tr("Project Files (*.json *.mvprj)")))
    {
        ProgramLog.Add(LogError, tr("Could not open project file"));
        return;
    }
    ProcessUpdate(JobNone);
    Player->Close();
    OpenProject(Config.ProjectFile);
    Config.Save();
    UpdateRecentMenu();
    Proj.SyncFileNames();
    Player->Open();
}

void MainWindow::on_actionsave_project_triggered()
{
    CommitSettings();
    if (QFile::exists(Config.ProjectFile))
    {
        Proj.Save(Config.ProjectFile);
        Config.Save();
        return;
    }
    ProgramLog.Add(LogError, tr("Could not save project file"));
    on_actionsave_project_as_triggered();
}

void MainWindow::on_actionsave_project_as_triggered()
{
    CommitSettings();
    if (!AskSaveProject(tr("Save as new Project")))
    {
        return;
    }
    if (!ChooseProject(Config.ProjectFile, ProjectDir, tr("Save as Project")))
    {
        ProgramLog.Add(LogError, tr("Could not create project file"));
        return;
    }
    RebaseFileNames();
    ProjectToAllForms();
    Proj.Save(Config.ProjectFile);
    Config.Save();
    // Deliberate: the block still holds the old paths; the next commit brings it up to date.
    ProgramHost.SetFileNames(Proj.FileNames);
    ProcessUpdate(JobNone);
    UpdateRecentMenu();
    // By way of "Save Project" also while a job runs: what it works on goes off again, and with it
    // the new entry of the menu.
    const int state = ProgramHost.GetState();
    if (IsJob(state))
    {
        ProcessUpdate(state);
    }
}

void MainWindow::OpenRecent()
{
    const auto* action = qobject_cast<QAction*>(sender());
    if (action == nullptr || !AskSaveProject(tr("Open Project")))
    {
        return;
    }
    Config.ProjectFile = action->text();
    OpenProject(Config.ProjectFile);
}

void MainWindow::UpdateRecentMenu()
{
    for (const QString& path : qAsConst(Config.RecentList))
    {
        const QList<QAction*> actions = RecentMenu->actions();
        const bool isThere =
            std::any_of(actions.begin(), actions.end(),
                        [&path](const QAction* action) { return action->text() == path; });
        if (!isThere)
        {
            // The text must be the path itself, so that a "&" in it shows as a mnemonic.
            auto* action = new QAction(path, RecentMenu);
            connect(action, &QAction::triggered, this, &MainWindow::OpenRecent);
            RecentMenu->addAction(action);
        }
    }
}

bool MainWindow::AskSaveProject(QString question)
{
    const QMessageBox::StandardButton answer = QMessageBox::question(
        this, question, tr("Save current project or cancel?"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Cancel);
    if (answer == QMessageBox::Yes)
    {
        CommitSettings();
        Proj.Save(Config.ProjectFile);
        Config.Save();
    }
    return answer == QMessageBox::Yes || answer == QMessageBox::No;
}

void MainWindow::MenuProjChangeable(bool en)
{
    QList<QAction*> actions{ui->actionnew_project, ui->actionopen_project,
                            ui->actionsave_project_as, ui->actionexit};
    actions += RecentMenu->actions();
    for (QAction* action : qAsConst(actions))
    {
        action->setEnabled(en);
    }
}

/** A file that is gone does not stop the steps: the old settings show under the new name. */
void MainWindow::OpenProject(const QString& path)
{
    ProcessUpdate(JobNone);
    Player->Close();
    Config.ProjectFile = path;
    static_cast<void>(Proj.Load(Config.ProjectFile, true));  // a failure has its line in the log
    ProjectDir = DirOf(Config.ProjectFile);
    ApplyProject();
    PlotAllGraphs();
    ProjectToAllForms();
    Proj.SyncFileNames();
    Config.Save();
    Player->Open();
}

/** With their settings, which they take from the project. */
void MainWindow::PlotAllGraphs()
{
    GraphH.LoadAndPlot();
    GraphV.LoadAndPlot();
    GraphAngle.LoadAndPlot();
}

/**
 * Writes a project with the default settings under the path that the configuration has; ProjectDir
 * is its directory. The line about the source video comes with every new project.
 */
void MainWindow::CreateProject()
{
    ProcessUpdate(JobNone);
    QString noFile;
    static_cast<void>(Proj.Load(noFile, true));  // reads nothing and cannot fail
    RebaseFileNames();
    Proj.Save(Config.ProjectFile);
    Config.Save();
    UpdateRecentMenu();
    PlotAllGraphs();
    ProjectToAllForms();
}

/** Names of what the program writes, in the project's directory; the source keeps its place. */
void MainWindow::RebaseFileNames()
{
    for (QString* path : {&Proj.TrackingFile, &Proj.ExportFile, &Proj.StabilizationFile})
    {
        *path = RebasePath(ProjectDir, *path);
    }
}

void MainWindow::on_pushButtonSourceVideo_clicked()
{
    if (!ChooseFile(Proj.SourceFile, tr("Source Video File"), tr(VideoFilter)))
    {
        return;
    }
    Player->Close();
    ui->lineEditSourceVideo->setText(Proj.SourceFile);
    Proj.SyncFileNames();
    Player->Open();
    Proj.ExportFile = QStringLiteral("%1/%2.%3")
                          .arg(ProjectDir, BaseNameOf(Proj.SourceFile), QStringLiteral("mp4"));
    ui->lineEditExportVideo->setText(Proj.ExportFile);
}

void MainWindow::on_pushButtonExportVideoFile_clicked()
{
    if (ChooseFile(Proj.ExportFile, tr("Export Video File"), tr(VideoFilter)))
    {
        ui->lineEditExportVideo->setText(Proj.ExportFile);
    }
}

void MainWindow::on_pushButtonTrackingFile_clicked()
{
    if (ChooseFile(Proj.TrackingFile, tr("Tracking File"), tr("Tracking File (*.dat)")))
    {
        ui->lineEditTrackingPathFile->setText(Proj.TrackingFile);
    }
}

void MainWindow::on_pushButtonStabilizeFile_clicked()
{
    if (ChooseFile(Proj.StabilizationFile, tr("Stabilize File"), tr("Stabilize File (*.dat)")))
    {
        ui->lineEditStabilizeFile->setText(Proj.StabilizationFile);
    }
}
