// SPDX-License-Identifier: MIT
#include "graphs/graphwindow.h"

#include "graphs/ignorelist.h"
#include "graphs/simpleplot.h"
#include "project/project.h"
#include "stabilizer/axisfiltersettings.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/truncation.h"

#include "ui_graphwindow.h"

#include <initializer_list>
#include <mutex>

namespace
{
constexpr double Percent = 100.0;

/** Mouse modes of the plot, by mouse action. */
constexpr int PlotModes[] = {0, 1, 1, 2, 2};

/** Under the engine lock: a calculation on the worker may be reading the setting. */
void Switch(bool& setting, bool isOn)
{
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    setting = isOn;
}

/** Takes what the user has typed into an open cell: neither a tab nor a menu takes the focus. */
void CommitOpenCell(QTreeWidget* tree)
{
    QTreeWidgetItem* item = tree->currentItem();
    if (item != nullptr && tree->isPersistentEditorOpen(item, tree->currentColumn()))
    {
        tree->setCurrentItem(nullptr);
    }
}
}  // namespace

GraphWindow::GraphWindow(Project* project, CameraPath* path, QString yTitle,
                         AxisFilterSettings* settings)
    : ui(new Ui::GraphWindow),
      Proj(project),
      Settings(settings),
      Path(path),
      Flow(project, path, yTitle),
      GlobalIgnore(nullptr),
      LocalIgnore(nullptr)
{
    ui->setupUi(this);
    ui->scrollArea->setWidget(Flow.GetPlot());
    GlobalIgnore = new IgnoreList(this, ui->treeWidgetGlobalIgnore);
    LocalIgnore = new IgnoreList(this, ui->treeWidgetIgnore);
    ui->treeWidgetManualPathList->setContextMenuPolicy(Qt::CustomContextMenu);
    Flow.SetMarginLabel(ui->labelMargin);
    Flow.SetGrid(true, false, true);
    Flow.ConnectPickers(this, SLOT(GraphLeftClick(QPointF)), SLOT(GraphRect(QRectF)));
}

GraphWindow::~GraphWindow()
{
    delete ui;
}

void GraphWindow::LoadSettings()
{
    ui->checkBoxLock->setChecked(Settings->Lock);
    ui->spinBoxAvgFrames->setValue(Settings->AvgPathImages);
    ui->spinBoxAvgOrder->setValue(Settings->AvgPathOrder);
    ui->doubleSpinBoxStartVal->setValue(Settings->StartValue);
    ui->doubleSpinBoxEndVal->setValue(Settings->EndValue);
    ui->checkBoxStartVal->setChecked(Settings->UseStartValue);
    ui->checkBoxEndVal->setChecked(Settings->UseEndValue);
    ui->doubleSpinBoxCrop->setValue(Proj->ExportSettings.CropFactor * Percent);
    ui->checkBoxEnIgnSectionsGlobal->setChecked(Proj->EnGlobalIgnoreList);
    ui->checkBoxEnIgnSections->setChecked(Settings->EnableIgnoreSections);
    ui->checkBoxEnManualCorrect->setChecked(Settings->EnableManualPath);
    GlobalIgnore->Sections = Proj->GlobalIgnoreSections;
    Path->GetIgnoreSections(LocalIgnore->Sections);
    Path->GetManualPath(ManualSections);
    GlobalIgnore->Rebuild();
    LocalIgnore->Rebuild();
    RebuildManualTree();
    UpdateListStates();
    ui->comboBoxGraphMouse->setCurrentIndex(PanAndZoom);
}

void GraphWindow::LoadAndPlot()
{
    LoadSettings();
    PlotUpdate();
}

void GraphWindow::SaveSettings()
{
    for (QTreeWidget* tree :
         {ui->treeWidgetGlobalIgnore, ui->treeWidgetIgnore, ui->treeWidgetManualPathList})
    {
        CommitOpenCell(tree);
    }
    // A calculation on the worker may be reading settings and lists.
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    Settings->Lock = ui->checkBoxLock->isChecked();
    Settings->AvgPathImages = ui->spinBoxAvgFrames->value();
    Settings->AvgPathOrder = ui->spinBoxAvgOrder->value();
    Settings->StartValue = ui->doubleSpinBoxStartVal->value();
    Settings->EndValue = ui->doubleSpinBoxEndVal->value();
    Settings->UseStartValue = ui->checkBoxStartVal->isChecked();
    Settings->UseEndValue = ui->checkBoxEndVal->isChecked();
    Proj->ExportSettings.CropFactor = ui->doubleSpinBoxCrop->value() / Percent;
    Proj->EnGlobalIgnoreList = ui->checkBoxEnIgnSectionsGlobal->isChecked();
    Settings->EnableIgnoreSections = ui->checkBoxEnIgnSections->isChecked();
    Settings->EnableManualPath = ui->checkBoxEnManualCorrect->isChecked();
    GlobalIgnore->FrameCount = FrameCount();
    LocalIgnore->FrameCount = FrameCount();
    GlobalIgnore->SortList();
    LocalIgnore->SortList();
    Proj->GlobalIgnoreSections = GlobalIgnore->Sections;
    Path->SetIgnoreSections(LocalIgnore->Sections);
    SortManList();
    if (Path->Settings != nullptr)
    {
        Path->Settings->ManualPath = ManualSections;
    }
}

void GraphWindow::on_pushButtonCalc_clicked()
{
    emit CalculateCameraPath();
}

void GraphWindow::on_checkBoxZoomDeviation_clicked(bool checked)
{
    Flow.ZoomVertical(checked);
}

void GraphWindow::on_checkBoxZoomTimeline_clicked(bool checked)
{
    Flow.ZoomHorizontal(checked);
}

void GraphWindow::on_checkBoxTime_clicked(bool checked)
{
    Flow.SetTimeAxis(checked);
}

void GraphWindow::on_checkBoxCamFlow_clicked(bool checked)
{
    Flow.SetShowCameraFlow(checked);
}

void GraphWindow::on_checkBoxDeviation_clicked(bool checked)
{
    Flow.SetShowDeviation(checked);
}

void GraphWindow::on_checkBoxShowCorrection_clicked(bool checked)
{
    Flow.SetShowCorrection(checked);
}

void GraphWindow::on_checkBoxShowMargin_clicked(bool checked)
{
    Flow.SetShowMargin(checked);
}

void GraphWindow::on_checkBoxMarginShadow_clicked(bool checked)
{
    Flow.SetShowMarginShadow(checked);
}

void GraphWindow::on_checkBoxEnIgnSectionsGlobal_clicked(bool checked)
{
    Switch(Proj->EnGlobalIgnoreList, checked);
    UpdateListStates();
    emit CalculateCameraPath();
}

void GraphWindow::on_checkBoxEnIgnSections_clicked(bool checked)
{
    Switch(Settings->EnableIgnoreSections, checked);
    UpdateListStates();
    emit CalculateCameraPath();
}

void GraphWindow::on_checkBoxEnManualCorrect_clicked(bool checked)
{
    Switch(Settings->EnableManualPath, checked);
    UpdateListStates();
    emit CalculateCameraPath();
}

void GraphWindow::on_comboBoxGraphMouse_currentIndexChanged(int index)
{
    MouseMode = index;
    if (index >= PanAndZoom && index <= AddGlobalIgnore)
    {
        Flow.SetMouseMode(PlotModes[index]);
    }
}

void GraphWindow::PlotUpdate()
{
    Flow.ClearLine();
    Flow.SetShowMarginShadow(ui->checkBoxMarginShadow->isChecked());
    Flow.SetFlags(ui->checkBoxCamFlow->isChecked(), ui->checkBoxDeviation->isChecked(),
                  ui->checkBoxShowMargin->isChecked(), ui->checkBoxTime->isChecked());
    ui->comboBoxGraphMouse->setCurrentIndex(PanAndZoom);
}

void GraphWindow::GraphRect(QRectF rect)
{
    const IgnoreSection section{TruncateToInt32(rect.x()), TruncateToInt32(rect.x() + rect.width()),
                                0.0};
    if (MouseMode == AddLocalIgnore)
    {
        LocalIgnore->AddSection(section);
    }
    else if (MouseMode == AddGlobalIgnore)
    {
        GlobalIgnore->AddSection(section);
    }
    ui->comboBoxGraphMouse->setCurrentIndex(PanAndZoom);
}

void GraphWindow::UpdateListStates()
{
    const bool any =
        Proj->EnGlobalIgnoreList || Settings->EnableIgnoreSections || Settings->EnableManualPath;
    const std::initializer_list<QWidget*> lists = {
        ui->labelIgnStabListGlobal, ui->labelIgnStabList, ui->labelManPathList,
        ui->treeWidgetGlobalIgnore, ui->treeWidgetIgnore, ui->treeWidgetManualPathList};
    for (QWidget* widget : lists)
    {
        widget->setVisible(any);
    }
    ui->treeWidgetGlobalIgnore->setEnabled(Proj->EnGlobalIgnoreList);
    ui->treeWidgetIgnore->setEnabled(Settings->EnableIgnoreSections);
    ui->treeWidgetManualPathList->setEnabled(Settings->EnableManualPath);
}
