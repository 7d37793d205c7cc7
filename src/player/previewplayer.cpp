// SPDX-License-Identifier: MIT
#include "player/previewplayer.h"

#include "batch/jobstate.h"
#include "graphs/simpleplot.h"
#include "player/imageviewer.h"
#include "project/project.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/truncation.h"

#include "ui_previewplayer.h"

#include <QSignalBlocker>
#include <QThread>

#include <cmath>
#include <cstdint>

namespace
{
constexpr int DefaultFps = 30;
constexpr unsigned SeekDelay = 10;  ///< milliseconds
constexpr int SecondsPerMinute = 60;
constexpr int MsPerSecond = 1000;
constexpr int MsPerMinute = 60000;

/**
 * @p amount, frames or thousandths of a frame, over @p fps, truncated; 0 for a frame rate that says
 * nothing.
 */
std::int32_t DivideByFps(std::int32_t amount, double fps)
{
    return fps == 0.0 || !std::isfinite(fps) ? 0 : TruncateToInt32(amount / fps);
}

/** @p frame times 1000, wrapping at 32 bits. */
std::int32_t TimesThousand(std::int32_t frame)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(frame) * 1000U);
}

/** Sets a value only where it differs, so that no needless signal goes out. */
void Follow(QSpinBox* box, int value)
{
    if (box->value() != value)
    {
        box->setValue(value);
    }
}

/** A maximum of -1, of a video without frames, has dragged the minimum along. */
template <typename Control>
void RestoreMinimum(Control* control)
{
    const QSignalBlocker quiet(control);
    control->setMinimum(0);
}
}  // namespace

PreviewPlayer::PreviewPlayer(QWidget* parent, Project* project)
    : QWidget(parent),
      ui(new Ui::PreviewPlayer),
      Proj(project),
      FlowHorizontal(project, &PathHorizontal, tr("right <- Horiz. pixel movem. -> left")),
      FlowVertical(project, &PathVertical, tr("down <- Vert. pixel movem. -> up")),
      Capture(this),
      Converter(nullptr, &project->ExportSettings),
      SrcViewer(nullptr),
      ExpViewer(nullptr)
{
    ui->setupUi(this);
    UpdateTimeMode();
    SrcViewer = new ImageViewer;
    ExpViewer = new ImageViewer;
    connect(&Capture, &PlayerCapture::frameReady, &Converter, &PlayerConverter::processFrame);
    connect(&Converter, &PlayerConverter::SrcImageReady, SrcViewer, &ImageViewer::setImage);
    connect(&Converter, &PlayerConverter::ExpImageReady, ExpViewer, &ImageViewer::setImage);
    connect(&Capture, &PlayerCapture::Position, this, &PreviewPlayer::PositionUpdate);
    connect(ui->doubleSpinBoxZoom, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &PreviewPlayer::SetZoom);
    connect(ui->spinBoxFPS, qOverload<int>(&QSpinBox::valueChanged), this, &PreviewPlayer::SetFPS);
    connect(ui->comboBoxView, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &PreviewPlayer::ViewTypeUpdate);
    connect(&FlowVertical, &FlowPlot::UpdateAvailable, &Converter,
            &PlayerConverter::NewStabilizationData);
    connect(&Capture, &PlayerCapture::Ended, this, &PreviewPlayer::Ended);
    Converter.SetZoom(ui->doubleSpinBoxZoom->value());
    ui->scrollAreaH->setWidget(FlowHorizontal.GetPlot());
    ui->scrollAreaV->setWidget(FlowVertical.GetPlot());
    ui->scrollAreaPlaySrc->setWidget(SrcViewer);
    ui->scrollAreaPlayExport->setWidget(ExpViewer);
    for (FlowPlot* flow : {&FlowHorizontal, &FlowVertical})
    {
        flow->SetPosition(0.0);
        flow->SetGrid(true, true, false);
    }
    ui->spinBoxFPS->setValue(DefaultFps);
    View(ViewAll);
}

PreviewPlayer::~PreviewPlayer()
{
    Capture.disconnect();
    Converter.disconnect();
    FlowVertical.disconnect();
    ui->doubleSpinBoxZoom->disconnect(this);
    ui->spinBoxFPS->disconnect(this);
    ui->comboBoxView->disconnect(this);
    DisconnectControls();
    Capture.Stop();
    delete ui;
}

void PreviewPlayer::JobStateChanged(int state)
{
    State = state;
    const bool isIdle = IsIdle(state);
    if (!isIdle && Capture.IsPlaying())
    {
        Capture.Stop();
    }
    ui->pushButtonReset->setEnabled(isIdle);
    ui->pushButtonPlayPause->setEnabled(isIdle);
    View(static_cast<ViewType>(ui->comboBoxView->currentIndex()));
    UpdateGraphs();
}

void PreviewPlayer::on_pushButtonReset_clicked()
{
    Capture.Goto(0);
}

void PreviewPlayer::on_pushButtonPlayPause_clicked()
{
    if (!Capture.IsOpen())
    {
        Open();
    }
    if (Capture.IsPlaying())
    {
        Capture.Pause();
        ConnectControls();
        return;
    }
    DisconnectControls();
    Capture.Continue();
}

void PreviewPlayer::on_pushButtonTime_clicked()
{
    TimeMode = !TimeMode;
    UpdateTimeMode();
}

void PreviewPlayer::on_checkBoxCrop_clicked(bool checked)
{
    Converter.SetCrop(checked);
    Capture.Redraw();
}

void PreviewPlayer::on_checkBoxPath_clicked(bool checked)
{
    FlowHorizontal.SetShowCameraFlow(checked);
    FlowVertical.SetShowCameraFlow(checked);
}

void PreviewPlayer::on_checkBoxMargin_clicked(bool checked)
{
    FlowHorizontal.SetShowMarginShadow(checked);
    FlowVertical.SetShowMarginShadow(checked);
}

void PreviewPlayer::on_checkBoxShowMore_clicked(bool checked)
{
    ui->verticalWidget->setVisible(checked);
}

void PreviewPlayer::ViewTypeUpdate(int val)
{
    View(static_cast<ViewType>(val));
    Capture.Redraw();
}

void PreviewPlayer::PositionUpdate(int FrameNr)
{
    const std::int32_t ms = DivideByFps(TimesThousand(FrameNr), Capture.GetFps());
    Follow(ui->spinBoxSec, ms / MsPerSecond % SecondsPerMinute);
    Follow(ui->spinBoxMin, ms / MsPerMinute);
    Follow(ui->spinBoxIdx, FrameNr);
    if (ui->horizontalSlider->sliderPosition() != FrameNr)
    {
        ui->horizontalSlider->setSliderPosition(FrameNr);
    }
    if (!Capture.IsPlaying())
    {
        ConnectControls();
    }
    else if (ui->checkBoxMargin->isChecked())
    {
        return;
    }
    FlowHorizontal.SetPosition(FrameNr);
    FlowVertical.SetPosition(FrameNr);
}

void PreviewPlayer::View(ViewType Type)
{
    const bool hasPath = State == JobExport || State == JobPathReady || State == JobPathCalculated;
    const ViewType type = hasPath ? Type : ViewSrc;
    if (type >= ViewAll && type <= ViewExportGraph)
    {
        const bool all = type == ViewAll;
        const bool graph = all || type >= ViewGraph;
        ui->scrollAreaPlaySrc->setVisible(all || type == ViewSrc || type == ViewSrcGraph);
        ui->scrollAreaPlayExport->setVisible(all || type == ViewExport || type == ViewExportGraph);
        ui->scrollAreaH->setVisible(graph);
        ui->scrollAreaV->setVisible(graph);
        if (all)
        {
            UpdateGraphs();
        }
    }
    Converter.SetCrop(ui->checkBoxCrop->isChecked());
}

void PreviewPlayer::SetFPS(int FPS)
{
    Capture.SetIntervall(FPS);
}

void PreviewPlayer::SetZoom(double f)
{
    Converter.SetZoom(f);
    Capture.Redraw();
}

void PreviewPlayer::TimeChanged(int n)
{
    static_cast<void>(n);  // both fields count, whichever changed
    const int seconds = ui->spinBoxMin->value() * SecondsPerMinute + ui->spinBoxSec->value();
    const std::int32_t frame = TruncateToInt32(seconds * FlowHorizontal.GetFps());
    if (frame != ui->spinBoxIdx->value() && frame != LastSeek)
    {
        Seek(frame);
    }
}

void PreviewPlayer::SetPosition(int n)
{
    if (n != LastSeek)
    {
        Seek(n);
    }
}

void PreviewPlayer::SetSliderPosition()
{
    SetPosition(ui->horizontalSlider->value());
}

void PreviewPlayer::Open()
{
    const int frames = Capture.Open(Proj->FileNames.SourceFile);
    if (frames > 0)
    {
        RestoreMinimum(ui->spinBoxIdx);
        RestoreMinimum(ui->horizontalSlider);
    }
    ui->spinBoxMin->setValue(0);
    ui->spinBoxSec->setValue(0);
    ui->spinBoxIdx->setValue(0);
    const std::int32_t last = SaturateToInt32(std::int64_t{frames} - 1);
    ui->spinBoxIdx->setMaximum(last);
    ui->horizontalSlider->setMaximum(last);
    ui->labelMax->setText(TextMax());
    ui->spinBoxFPS->setValue(TruncateToInt32(Capture.GetFps()));
    ConnectControls();
}

void PreviewPlayer::Close()
{
    Capture.Stop();
}

void PreviewPlayer::Workaround()
{
    if (!Capture.IsPlaying())
    {
        Capture.Open(Proj->FileNames.SourceFile);
    }
    if (ui->spinBoxIdx->value() == 0)
    {
        UpdateGraphs();
    }
}

void PreviewPlayer::Ended()
{
    Capture.Pause();
    ConnectControls();
}

QString PreviewPlayer::TextMax()
{
    const int max = ui->spinBoxIdx->maximum();
    if (!TimeMode)
    {
        return QStringLiteral("/%1").arg(max);
    }
    const int seconds = DivideByFps(max, Capture.GetFps());
    return QStringLiteral("/%1:%2")
        .arg(seconds / SecondsPerMinute)
        .arg(seconds - seconds / SecondsPerMinute * SecondsPerMinute);
}

void PreviewPlayer::ConnectControls()
{
    // They pile up until the next DisconnectControls; the slots compare before they seek.
    connect(ui->spinBoxIdx, qOverload<int>(&QSpinBox::valueChanged), this,
            &PreviewPlayer::SetPosition);
    connect(ui->spinBoxMin, qOverload<int>(&QSpinBox::valueChanged), this,
            &PreviewPlayer::TimeChanged);
    connect(ui->spinBoxSec, qOverload<int>(&QSpinBox::valueChanged), this,
            &PreviewPlayer::TimeChanged);
    connect(ui->horizontalSlider, &QSlider::sliderReleased, this,
            &PreviewPlayer::SetSliderPosition);
}

void PreviewPlayer::DisconnectControls()
{
    disconnect(ui->spinBoxIdx, qOverload<int>(&QSpinBox::valueChanged), this,
               &PreviewPlayer::SetPosition);
    disconnect(ui->spinBoxMin, qOverload<int>(&QSpinBox::valueChanged), this,
               &PreviewPlayer::TimeChanged);
    disconnect(ui->spinBoxSec, qOverload<int>(&QSpinBox::valueChanged), this,
               &PreviewPlayer::TimeChanged);
    disconnect(ui->horizontalSlider, &QSlider::sliderReleased, this,
               &PreviewPlayer::SetSliderPosition);
}

/** The position that comes back from the capture connects the controls again. */
void PreviewPlayer::Seek(int frame)
{
    LastSeek = frame;
    DisconnectControls();
    QThread::msleep(SeekDelay);
    Capture.Goto(frame);
}

void PreviewPlayer::UpdateTimeMode()
{
    ui->spinBoxIdx->setVisible(!TimeMode);
    ui->spinBoxMin->setVisible(TimeMode);
    ui->spinBoxSec->setVisible(TimeMode);
    FlowHorizontal.SetTimeAxis(TimeMode);
    FlowVertical.SetTimeAxis(TimeMode);
    ui->labelMax->setText(TextMax());
}

/**
 * Deliberate: the button for the time never is checked, so that the graphs go back to frame numbers
 * here.
 */
void PreviewPlayer::UpdateGraphs()
{
    const bool path = ui->checkBoxPath->isChecked();
    const bool margin = ui->checkBoxMargin->isChecked();
    const bool time = ui->pushButtonTime->isChecked();
    FlowHorizontal.SetShowMarginShadow(margin);
    FlowVertical.SetShowMarginShadow(margin);
    FlowHorizontal.SetFlags(path, false, false, time);
    FlowVertical.SetFlags(path, false, false, time);
}
