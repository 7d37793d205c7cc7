// SPDX-License-Identifier: MIT
#include "app/mainwindow.h"

#include "app/log.h"
#include "app/pathnames.h"
#include "batch/jobstate.h"
#include "batch/resultcodes.h"
#include "batch/samefile.h"
#include "batch/stabilizerhost.h"
#include "batch/videofile.h"
#include "stabilizer/camerapath.h"

#include "ui_mainwindow.h"

namespace
{
constexpr int SmallestRescale = 50;    ///< pixels
constexpr int LargestRescale = 20000;  ///< pixels

/**
 * The axis settings until projects can be read: what the reader of projects gives when a key is
 * missing.
 */
void SetDefaults(AxisFilterSettings& settings, std::int32_t strength)
{
    settings.EnableIgnoreSections = true;
    settings.EnableManualPath = true;
    settings.AvgPathImages = strength;
    settings.AvgPathOrder = 3;
    settings.IgnoreStartFramesMargin = 5;
}

void SetDefaults(Project& project)
{
    project.SourceFile = QStringLiteral("Source.mp4");
    project.ExportFile = QStringLiteral("Export.mp4");
    project.TrackingFile = QStringLiteral("Tracking.dat");
    project.StabilizationFile = QStringLiteral("Stabilize.dat");
    project.TrackingParameters.MaxTrackingPoints = 800;
    project.UseFlowVSettings = true;
    project.UseFlowRotSettings = true;
    project.EnGlobalIgnoreList = true;
    SetDefaults(project.FlowH, 12);
    SetDefaults(project.FlowV, 12);
    SetDefaults(project.FlowAngle, 5);
    project.ExportSettings.EnableCrop = true;
    project.ExportSettings.CropFactor = 1.1;
}
}  // namespace

MainWindow::MainWindow(QWidget* parent, const QString& projectFile)
    : QMainWindow(parent), ui(new Ui::MainWindow)
{
    Q_UNUSED(projectFile)
    ui->setupUi(this);
    ProgramLog.Setup(ui->groupBoxLog);
    for (QSpinBox* box : {ui->spinBoxRescaleXAxis, ui->spinBoxRescaleYAxis})
    {
        box->setMinimum(SmallestRescale);
        box->setMaximum(LargestRescale);
    }
    connect(ui->tabWidgetMain, &QTabWidget::tabBarClicked, this, &MainWindow::MainTabChanged);
    SetDefaults(Proj);
    ProjectToForm();
    ApplyProject();
    ui->actionAbout_Codecs->setVisible(false);
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

MainWindow::~MainWindow()
{
    ProgramHost.Abort();
    ProgramHost.LetWorkerLeave();  // the worker reads the project, which goes with this window
    delete ui;
}

void MainWindow::on_actionexit_triggered() {}  // the form connects the action to close()

void MainWindow::on_actionDefault_Settings_triggered() {}

void MainWindow::on_actionLook_Feel_triggered() {}

/**
 * Plain copy of the source through the codec, as a check of both; blocks the window for its whole
 * length.
 */
void MainWindow::on_pushButtonTest_clicked()
{
    CommitSettings();
    if (IsSameFile(Proj.FileNames.SourceFile, Proj.FileNames.ExportFile))
    {
        return;
    }
    VideoFile video;
    cv::Mat frame;
    if (video.Open(Proj.FileNames.SourceFile) == ResultOk)
    {
        while (video.ReadFrame(frame) == ResultOk)
        {}
    }
    video.Close();
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
    static_cast<void>(ProgramHost.GeneratePath());  // a failure has its line in the log
    ProcessUpdate(JobPathCalculated);
}

void MainWindow::on_pushButtonExportVideo_clicked()
{
    CommitSettings();
    ProgramHost.Start(JobExport, this);
}

void MainWindow::MenuProjChangeable(bool en)
{
    for (QAction* action :
         {ui->actionnew_project, ui->actionopen_project, ui->actionsave_project_as, ui->actionexit})
    {
        action->setEnabled(en);
    }
}

void MainWindow::ProcessUpdate(int t)
{
    if (t == JobNone)
    {
        for (CameraPath* path :
             {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
        {
            path->Clear();
        }
    }
    const bool hasPath = t == JobPathReady || t == JobPathCalculated;
    const bool isIdle = t == JobNone || t == JobTrackingReady || hasPath;
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

    const QString busyWord = t == JobExport ? tr("EXPORTING") : tr("BUSY");
    const QString word = isIdle ? tr("IDLE") : busyWord;
    setWindowTitle(tr("%1 %2 @ Molvane").arg(word, FileNameOf(Config.ProjectFile)));
}
