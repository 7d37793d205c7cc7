// SPDX-License-Identifier: MIT
#pragma once

#include "app/about.h"
#include "app/aboutcodecs.h"
#include "app/aboutopencv.h"
#include "app/aboutqt.h"
#include "app/help.h"
#include "graphs/graphwindow.h"
#include "project/configuration.h"
#include "project/project.h"

#include <QMainWindow>
#include <QString>

#include <cstdint>

class DirSettings;
class PreviewPlayer;
class QMenu;

namespace Ui
{
class MainWindow;
}

/**
 * The one window: job buttons, settings and menus. Owns the project and the configuration. The
 * widgets of a tab are the truth while the tab is open; their values reach the project when the
 * tab is left and before every job. User interface thread only.
 */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /** @param projectFile project to open; empty for none */
    MainWindow(QWidget* parent, const QString& projectFile);

    /** Lets a running job stop first. */
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    // The order of the slots is part of the design.
public slots:
    void closeEvent(QCloseEvent* e) override;  ///< asks first; a running job is not asked about
    void on_actionnew_project_triggered();
    void on_actionopen_project_triggered();
    void on_actionsave_project_triggered();
    void on_actionsave_project_as_triggered();
    void on_actionexit_triggered();
    void on_actionFile_Settings_triggered();
    void on_actionDefault_Settings_triggered();
    void on_actionLook_Feel_triggered();
    void on_actionAbout_triggered();
    void on_actionAbout_Qt_triggered();
    void on_actionAbout_OpenCV_triggered();
    void on_actionAbout_Codecs_triggered();
    void on_actionHelp_triggered();

    /** Adds the recent entries that the menu lacks; none is removed while the program runs. */
    void UpdateRecentMenu();

    /** Copies the source through the codec to the export file; blocks. Its button is hidden. */
    void on_pushButtonTest_clicked();

    void on_pushButtonAbort_clicked();
    void on_pushButtonSourceVideo_clicked();
    void on_pushButtonExportVideoFile_clicked();
    void on_pushButtonTrackingFile_clicked();
    void on_pushButtonStabilizeFile_clicked();
    void on_pushButtonGenerateAll_clicked();
    void on_pushButtonAnalyseTrack_clicked();
    void on_pushButtonReadTrack_clicked();
    /** The camera path, on this thread; also for the graph tabs. Does nothing while a job runs. */
    void on_pushButtonCalculateTrack_clicked();

    void on_pushButtonExportVideo_clicked();

    /** A click on the tab bar: stores the tab that is left and loads the tab @p index. */
    void MainTabChanged(int index);

    /** Turns the project commands on or off for the time of a job; saving stays possible. */
    void MenuProjChangeable(bool en);

    /** Brings buttons and title in step with @p t, a JobState; unknown numbers count as busy. */
    void ProcessUpdate(int t);

    /** Opens the project of the recent menu's entry that sent the signal. */
    void OpenRecent();

    /**
     * Asks whether to save the project before it is replaced, each time: there is no modified flag.
     * Yes commits the form and saves project and configuration.
     * @param question  title of the message box
     * @return          false when the user cancels
     */
    bool AskSaveProject(QString question);

private:
    void FormToProject();
    void ProjectToForm();
    void ProjectToAllForms();
    [[nodiscard]] GraphWindow* GraphOfTab(int index);
    void CommitSettings();
    void ApplyProject();
    void OpenFirstProject(const QString& projectFile);
    void OpenProject(const QString& path);
    void PlotAllGraphs();
    void CreateProject();
    void RebaseFileNames();

    // Field order is part of the design.
    QString ProjectDir;          ///< directory of the current project, without a trailing slash
    GlobalConfiguration Config;  ///< Config.ProjectFile is the path of the current project
    Project Proj;
    GraphWindow GraphH;
    GraphWindow GraphV;
    GraphWindow GraphAngle;
    std::int32_t CurrentTab = 0;  ///< tab whose settings its widgets hold
    About AboutDialog;
    AboutQt AboutQtDialog;
    AboutOpenCV AboutOpenCVDialog;
    AboutCodecs AboutCodecsDialog;
    Help HelpDialog;
    QMenu* RecentMenu;       ///< "Open Recent"; without a parent, lives until the process ends
    PreviewPlayer* Player;   ///< owned
    DirSettings* QuickDirs;  ///< child of this window
    Ui::MainWindow* ui;      ///< owned
};
