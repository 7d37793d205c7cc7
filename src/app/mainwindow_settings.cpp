// SPDX-License-Identifier: MIT
#include "app/mainwindow.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"
#include "stabilizer/truncation.h"

#include "ui_mainwindow.h"

#include <mutex>

namespace
{
constexpr int SettingsTab = 0;
constexpr int HorizontalTab = 1;
constexpr int VerticalTab = 2;
constexpr int RotationTab = 3;
constexpr int PlayerTab = 4;
constexpr int WarpTypeItem = 1;  ///< "Position & Rotate"
constexpr double Percent = 100.0;
}  // namespace

void MainWindow::FormToProject()
{
    Proj.SourceFile = ui->lineEditSourceVideo->text();
    Proj.ExportFile = ui->lineEditExportVideo->text();
    Proj.TrackingFile = ui->lineEditTrackingPathFile->text();
    Proj.StabilizationFile = ui->lineEditStabilizeFile->text();
    Proj.TrackingParameters.MaxTrackingPoints = ui->spinBoxMaxTrackingPoints->value();
    ExportSettings& settings = Proj.ExportSettings;
    settings.EnableCrop = ui->checkBoxEnableZoom->isChecked();
    {
        // A calculation on the worker may be reading it.
        const std::lock_guard<std::recursive_mutex> lock(EngineLock);
        settings.CropFactor = ui->doubleSpinBoxZoom->value() / Percent;
    }
    settings.EnRescale = ui->checkBoxRescale->isChecked();
    settings.ExpResH = ui->spinBoxRescaleXAxis->value();
    settings.ExpResV = ui->spinBoxRescaleYAxis->value();
    settings.ExpOffH = ui->spinBoxExpOffsetH->value();
    settings.ExpOffV = ui->spinBoxExpOffsetV->value();
    settings.ExpAngle = ui->doubleSpinBoxExpRot->value();
    Proj.SyncFileNames();
    if (OpCVThread* thread = ProgramHost.SelectStabilizer(PosRotStabilizer::Type, &Proj))
    {
        connect(thread, &OpCVThread::SignalFinished, this, &MainWindow::ProcessUpdate);
    }
}

void MainWindow::ProjectToForm()
{
    ui->lineEditSourceVideo->setText(Proj.SourceFile);
    ui->lineEditExportVideo->setText(Proj.ExportFile);
    ui->lineEditTrackingPathFile->setText(Proj.TrackingFile);
    ui->lineEditStabilizeFile->setText(Proj.StabilizationFile);
    ui->comboBoxWarpType->setCurrentIndex(WarpTypeItem);
    ui->comboBoxWarpType->setEnabled(false);
    ui->spinBoxMaxTrackingPoints->setValue(Proj.TrackingParameters.MaxTrackingPoints);
    const ExportSettings& settings = Proj.ExportSettings;
    ui->checkBoxRescale->setChecked(settings.EnRescale);
    ui->spinBoxRescaleXAxis->setValue(settings.ExpResH);
    ui->spinBoxRescaleYAxis->setValue(settings.ExpResV);
    ui->doubleSpinBoxZoom->setValue(Percent * settings.CropFactor);
    ui->checkBoxEnableZoom->setChecked(settings.EnableCrop);
    ui->checkBoxRescale->setChecked(settings.EnRescale);
    ui->spinBoxExpOffsetH->setValue(settings.ExpOffH);
    ui->spinBoxExpOffsetV->setValue(settings.ExpOffV);
    ui->doubleSpinBoxExpRot->setValue(settings.ExpAngle);
}

void MainWindow::ProjectToAllForms()
{
    GraphH.LoadSettings();
    GraphV.LoadSettings();
    GraphAngle.LoadSettings();
    ProjectToForm();
}

/**
 * Under the engine lock: "Save Project" stays possible during a job, and a calculation on the
 * worker may be reading what is bound anew here.
 */
void MainWindow::ApplyProject()
{
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    AxisFilterSettings* vertical = Proj.UseFlowVSettings ? &Proj.FlowV : &Proj.FlowH;
    AxisFilterSettings* rotation = Proj.UseFlowRotSettings ? &Proj.FlowAngle : &Proj.FlowH;
    PathHorizontal.Configure(&Proj, &Proj.FlowH, Proj.ExportSettings.ExpOffH);
    PathVertical.Configure(&Proj, vertical, Proj.ExportSettings.ExpOffV);
    CopyAsRadians(*rotation, Proj.RadianSettings);
    PathRotation.Configure(&Proj, &Proj.RadianSettings, 0);
    const std::int32_t angle = TruncateToInt32(Proj.ExportSettings.ExpAngle);
    PathRotationDegrees.Configure(&Proj, rotation, angle);
}

/** The graph of a tab, or null for the others. */
GraphWindow* MainWindow::GraphOfTab(int index)
{
    switch (index)
    {
        case HorizontalTab:
            return &GraphH;
        case VerticalTab:
            return &GraphV;
        case RotationTab:
            return &GraphAngle;
        default:
            return nullptr;
    }
}

/**
 * Of settings that stand on two tabs, those of the tab on show count: it is stored last.
 * Deliberate: from the settings and the player tab all graph tabs are stored, the rotation last, so
 * that its copy of the global ignore list and of its switch wins, also over a newer one.
 */
void MainWindow::CommitSettings()
{
    if (GraphWindow* graph = GraphOfTab(ui->tabWidgetMain->currentIndex()))
    {
        FormToProject();
        graph->SaveSettings();
    }
    else
    {
        GraphH.SaveSettings();
        GraphV.SaveSettings();
        GraphAngle.SaveSettings();
        FormToProject();
    }
    ApplyProject();
}

void MainWindow::MainTabChanged(int index)
{
    if (CurrentTab == SettingsTab)
    {
        FormToProject();
    }
    else if (GraphWindow* left = GraphOfTab(CurrentTab))
    {
        left->SaveSettings();
    }
    if (index == SettingsTab)
    {
        ProjectToForm();
    }
    else if (GraphWindow* entered = GraphOfTab(index))
    {
        entered->LoadAndPlot();
    }
    // Deliberate: on the way to the player the tab that was left stays noted, so that the next
    // click stores it again.
    if (index != PlayerTab)
    {
        CurrentTab = index;
    }
}
