// SPDX-License-Identifier: MIT
#include "app/mainwindow.h"

#include "app/log.h"
#include "app/pathnames.h"
#include "batch/jobstate.h"
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/samefile.h"
#include "batch/stabilizerhost.h"
#include "batch/videofile.h"
#include "player/previewplayer.h"
#include "project/dirsettings.h"
#include "stabilizer/camerapath.h"

#include "ui_mainwindow.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QMenu>

#include <mutex>

namespace
{
constexpr int SmallestRescale = 50;    ///< pixels
constexpr int LargestRescale = 20000;  ///< pixels

/** Also when it stands behind the window, which is how users ask for it a second time. */
void ShowInFront(QDialog& dialog)
{
    dialog.setHidden(false);
    dialog.raise();
    dialog.activateWindow();
}
}  // namespace

MainWindow::MainWindow(QWidget* parent, const QString& projectFile)
    : QMainWindow(parent),
      GraphH(&Proj, &PathHorizontal, tr("right <- Horizontal pixel movement -> left"), &Proj.FlowH),
      GraphV(&Proj, &PathVertical, tr("down <- Vertical pixel movement -> up"), &Proj.FlowV),
      GraphAngle(&Proj, &PathRotationDegrees, tr("Rotation in 360°"), &Proj.FlowAngle),
      RecentMenu(nullptr),
      Player(nullptr),
      QuickDirs(nullptr),
      ui(new Ui::MainWindow)
{
    ui->setupUi(this);
    ProgramLog.Setup(ui->groupBoxLog);  // log lines show from here on
    for (QSpinBox* box : {ui->spinBoxRescaleXAxis, ui->spinBoxRescaleYAxis})
    {
        box->setMinimum(SmallestRescale);
        box->setMaximum(LargestRescale);
    }
    connect(ui->tabWidgetMain, &QTabWidget::tabBarClicked, this,
            [this](int index)
            {
                // A click beside the tabs, or with another button than the left, leaves no tab.
                const Qt::MouseButtons pressed = QGuiApplication::mouseButtons();
                const bool isOther = pressed != Qt::NoButton && !pressed.testFlag(Qt::LeftButton);
                if (index >= 0 && !isOther)
                {
                    MainTabChanged(index);
                }
            });
    for (GraphWindow* graph : {&GraphH, &GraphV, &GraphAngle})
    {
        connect(graph, &GraphWindow::CalculateCameraPath, this,
                &MainWindow::on_pushButtonCalculateTrack_clicked);
    }
    ui->scrollAreaXAxis->setWidget(&GraphH);
    ui->scrollAreaYAxis->setWidget(&GraphV);
    ui->scrollAreaAngle->setWidget(&GraphAngle);
    RecentMenu = new QMenu;
    RecentMenu->setTitle(tr("Open Recent"));
    Player = new PreviewPlayer(this, &Proj);
    ui->scrollAreaPlay->setWidget(Player);
    Config.Load();
    QuickDirs = new DirSettings(this, &Proj, &Config);
    QuickDirs->accept();  // fills the sidebar of the file dialogs
    ApplyProject();
    OpenFirstProject(projectFile);
    UpdateRecentMenu();
    QuickDirs->FillTree();
    QuickDirs->accept();  // once more, as the project's directories are known now
    ui->menumain->insertMenu(ui->actionsave_project, RecentMenu);
    ui->menumain->insertSeparator(ui->actionsave_project);
    ui->actionAbout_Codecs->setVisible(false);
    Config.ApplyStyleSheet();
    ProcessUpdate(JobNone);
    CurrentTab = 0;
    MainTabChanged(
        ui->tabWidgetMain->currentIndex());  // the first commit makes stabilizer and worker
    ui->actionLook_Feel->setVisible(false);
    ui->actionproject_settings->setVisible(false);
    ui->actionDefault_Settings->setVisible(false);
    ui->statusbar->hide();
    ui->pushButtonTest->hide();
}

/**
 * The project of the command line, else the last one, else a new one at the start project's place,
 * over one that may stand there: the start project is a scratch place. Deliberate: an argument that
 * is no project is told in the words of a failed creation.
 */
void MainWindow::OpenFirstProject(const QString& projectFile)
{
    if (Project::CheckFile(projectFile))
    {
        OpenProject(projectFile);
        return;
    }
    if (!projectFile.isEmpty())
    {
        ProgramLog.Add(LogError, tr("Could not create project file"));
    }
    if (!Config.AutoLoadLastProject)
    {
        return;
    }
    if (QFile::exists(Config.ProjectFile))
    {
        OpenProject(Config.ProjectFile);
        return;
    }
    ProjectDir = QStringLiteral("%1/Molvane/Start").arg(QDir::homePath());
    QDir().mkpath(ProjectDir);
    Config.ProjectFile = QStringLiteral("%1/Start.mvprj").arg(ProjectDir);
    CreateProject();
}

MainWindow::~MainWindow()
{
    Player->close();
    ProgramHost.Abort();
    ProgramHost.LetWorkerLeave();  // the worker reads the project, which goes with this window
    delete ui;
    delete Player;
}

void MainWindow::on_actionexit_triggered() {}  // the form connects the action to close()

void MainWindow::on_actionFile_Settings_triggered()
{
    QuickDirs->ShowDialog();
}

void MainWindow::on_actionDefault_Settings_triggered() {}

void MainWindow::on_actionLook_Feel_triggered() {}

void MainWindow::on_actionAbout_triggered()
{
    Config.ApplyStyleSheet();
    ShowInFront(AboutDialog);
}

void MainWindow::on_actionAbout_Qt_triggered()
{
    ShowInFront(AboutQtDialog);
}

void MainWindow::on_actionAbout_OpenCV_triggered()
{
    ShowInFront(AboutOpenCVDialog);
}

void MainWindow::on_actionAbout_Codecs_triggered()
{
    ShowInFront(AboutCodecsDialog);
}

void MainWindow::on_actionHelp_triggered()
{
    ShowInFront(HelpDialog);
}

/**
 * Plain copy of the source through the codec, as a check of both; blocks the window for its whole
 * length.
 */
void MainWindow::on_pushButtonTest_clicked()
{
    CommitSettings();
    VideoFile video;
    cv::Mat frame;
    if (video.Open(Proj.FileNames.SourceFile) == ResultOk)
    {
        while (video.ReadFrame(frame) == ResultOk)
        {}
    }
    video.Close();
    if (IsSameFile(Proj.FileNames.SourceFile, Proj.FileNames.ExportFile))
    {
        return;
    }
    int result = video.OpenForExport(Proj.FileNames.SourceFile, Proj.FileNames.ExportFile, false);
    while (result == ResultOk && video.ReadFrame(frame) == ResultOk)
    {
        result = video.WriteFrame(frame);
    }
    video.Close();
}

void MainWindow::on_pushButtonAbort_clicked()
{
    ProgramHost.Abort();
}

void MainWindow::on_pushButtonGenerateAll_clicked()
{
    CommitSettings();
    ProgramHost.Start(JobGenerateAll, this);
}

void MainWindow::on_pushButtonAnalyseTrack_clicked()
{
    CommitSettings();
    ProgramHost.Start(JobAnalyse, this);
}

void MainWindow::on_pushButtonReadTrack_clicked()
{
    CommitSettings();
    ProgramHost.Start(JobReadAll, this);
}

void MainWindow::on_pushButtonCalculateTrack_clicked()
{
    // The graph tabs come here too, also while a job writes what the calculation reads. Abort is on
    // for just as long as the window waits for a job.
    if (ui->pushButtonAbort->isEnabled())
    {
        return;
    }
    CommitSettings();
    ProgramHost.SetFileNames(Proj.FileNames);
    // Deliberate: a failure, which has its line in the log, counts as a calculated path too.
    static_cast<void>(ProgramHost.GeneratePath());
    ProcessUpdate(JobPathCalculated);
}

void MainWindow::on_pushButtonExportVideo_clicked()
{
    CommitSettings();
    ProgramHost.Start(JobExport, this);
}

void MainWindow::ProcessUpdate(int t)
{
    if (t == JobNone)
    {
        if (Player != nullptr)
        {
            Player->Ended();
        }
        // A save under a new name comes here even while a job calculates on the worker.
        const std::lock_guard<std::recursive_mutex> lock(EngineLock);
        for (CameraPath* path :
             {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
        {
            path->Clear();
        }
    }
    const bool hasPath = t == JobPathReady || t == JobPathCalculated;
    const bool isIdle = IsIdle(t);
    ui->pushButtonAbort->setEnabled(!isIdle);
    const std::initializer_list<QWidget*> whileIdle = {
        ui->pushButtonGenerateAll,  ui->pushButtonAnalyseTrack,   ui->pushButtonReadTrack,
        ui->lineEditSourceVideo,    ui->pushButtonSourceVideo,    ui->lineEditTrackingPathFile,
        ui->pushButtonTrackingFile, ui->lineEditStabilizeFile,    ui->pushButtonStabilizeFile,
        ui->lineEditExportVideo,    ui->pushButtonExportVideoFile};
    for (QWidget* widget : whileIdle)
    {
        widget->setEnabled(isIdle);
    }
    ui->pushButtonCalculateTrack->setEnabled(hasPath);
    ui->pushButtonExportVideo->setEnabled(hasPath);
    MenuProjChangeable(isIdle);
    if (Player != nullptr)
    {
        Player->JobStateChanged(t);
    }
    for (GraphWindow* graph : {&GraphH, &GraphV, &GraphAngle})
    {
        graph->PlotUpdate();
    }

    const QString busyWord = t == JobExport ? tr("EXPORTING") : tr("BUSY");
    const QString word = isIdle ? tr("IDLE") : busyWord;
    setWindowTitle(tr("%1 %2 @ Molvane").arg(word, FileNameOf(Config.ProjectFile)));
}
