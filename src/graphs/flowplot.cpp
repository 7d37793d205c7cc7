// SPDX-License-Identifier: MIT
#include "graphs/flowplot.h"

#include "batch/exportsettings.h"
#include "batch/logrecord.h"
#include "batch/stabilizerhost.h"
#include "graphs/simpleplot.h"
#include "project/project.h"
#include "stabilizer/axisfiltersettings.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/pathfilter.h"
#include "stabilizer/truncation.h"

#include <QLabel>
#include <QPen>

#include <mutex>
#include <numeric>

namespace
{
constexpr int SecondUpdateAfter = 300;  ///< milliseconds
constexpr double SampleStep = 10.0;     ///< x distance of appended samples, which nothing appends
}  // namespace

/** One curve: its title and colour, whether it shows, and what feeds it. */
struct FlowPlot::CurveSource
{
    QString Title;
    const char* Colour;  ///< name of the colour
    bool IsShown;
    const QVector<double>& Values;  ///< per frame
};

FlowPlot::FlowPlot(Project* project, CameraPath* path, QString yTitle)
    : Proj(project), Plot(nullptr), Path(path), YTitle(yTitle)
{
    connect(&RedrawTimer, &QTimer::timeout, this, &FlowPlot::WorkAround);
    Plot = new SimplePlot(nullptr);
    Plot->SetYTitle(yTitle);
    Plot->SetXTitle(tr("Frame No."));
    Plot->setAccessibleName(yTitle);
}

FlowPlot::~FlowPlot()
{
    delete Plot;
}

bool FlowPlot::Update()
{
    if (Plot == nullptr)
    {
        ProgramHost.Log(LogError, "Plot not supported!");
        return false;
    }
    // A click on a box may come while a job calculates on the worker.
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    if (!Path->HasValidData())
    {
        Plot->ClearCurves();
        Plot->replot();
        return false;
    }
    Frames.resize(Path->DetectedShakiness.size());
    std::iota(Frames.begin(), Frames.end(), 0.0);
    const QString text = MarginText();
    if (MarginLabel != nullptr)
    {
        MarginLabel->setText(text);
    }
    SetUpAxes();
    RebuildCurves();
    return true;
}

QString FlowPlot::MarginText() const
{
    if (!Path->IsPixelAxis)
    {
        return tr("Max rotation 30°/frame");
    }
    const double size = Path->FrameSize;
    const double factor = Path->Export->CropFactor;
    const int kept = TruncateToInt32(size / factor);
    return tr("%1% => %2-%3=%4 margin p.")
        .arg(factor * 100.0, 3, 'g')
        .arg(size, 0, 'g')
        .arg(kept)
        .arg(TruncateToInt32(size - kept));
}

void FlowPlot::SetUpAxes()
{
    if (TimeAxis)
    {
        Plot->SetTimeScale(1000.0 / Path->FramesPerSecond);
        Plot->SetXTitle(tr("Time [min:sec:ms]"));
    }
    else
    {
        Plot->SetTimeScale(-1.0);
        Plot->SetXTitle(tr("Frame No."));
    }
}

void FlowPlot::RebuildCurves()
{
    Plot->ClearCurves();
    const AxisFilterSettings& settings = *Path->Settings;
    const bool ignores = settings.EnableIgnoreSections || Proj->EnGlobalIgnoreList;
    const bool isManual = settings.EnableManualPath;
    const bool adapts = Path->SuperSmooth.Enabled;
    const int count = AddCurves(
        0, {
               {tr("Detected Shakiness"), "blue", ShowDeviation, Path->DetectedShakiness},
               {tr("Used Shakiness"), "lightblue", ShowDeviation && ignores, Path->UsedShakiness},
               {tr("Correction"), "green", ShowCorrection, Path->Result.Correction},
               {tr("Shakiness Path"), "red", ShowCameraFlow, Path->ShakinessPath},
               {tr("Modified Path"), "purple", ShowCameraFlow && isManual, Path->ModifiedPath},
               {tr("F5 Super Smooth"), "grey", ShowCameraFlow && adapts, Path->SuperSmooth.Path},
               {tr("Smoothed Path"), "pink", ShowCameraFlow, Path->Result.Path},
           });
    SetUpBand();
    AddCurves(count,
              {
                  {tr("F5 Margin"), "brown", ShowMargin && adapts, Path->SuperSmooth.Margin},
                  {tr("Applied Margin"), "orange", ShowMargin && adapts, Path->Result.Margin},
                  {tr("Margin"), "orange", ShowMargin && !adapts, Path->Result.Margin},
              });
    Plot->Rescale();
    Plot->setVisible(true);
    Plot->Refresh();
}

int FlowPlot::AddCurves(int index, std::initializer_list<CurveSource> sources)
{
    for (const CurveSource& source : sources)
    {
        if (source.IsShown)
        {
            QColor colour;
            colour.setNamedColor(QLatin1String(source.Colour));
            Plot->AddCurve(source.Title, colour, SampleStep);
            Plot->SetCurveData(index, source.Values, Frames);
            ++index;
        }
    }
    return index;
}

/** The band hugs the path of the camera: inside it the smoothed path shows no black border. */
void FlowPlot::SetUpBand()
{
    if (ShowMarginShadow)
    {
        const double size = Path->FrameSize;
        const double half =
            size == 0.0 ? 0.0 : CropMargin(0.0, 0.0, size, 0, Proj->ExportSettings.CropFactor);
        Plot->SetBand(Path->ShakinessPath, half, QPen(QColor(QStringLiteral("lightgreen")), 1));
    }
    Plot->ShowBand(ShowMarginShadow);
}

bool FlowPlot::UpdateAndAnnounce()
{
    if (!Update())
    {
        return false;
    }
    RedrawTimer.setSingleShot(true);
    RedrawTimer.start(SecondUpdateAfter);
    emit UpdateAvailable();
    return true;
}

void FlowPlot::WorkAround()
{
    Update();
}

void FlowPlot::SetShowCameraFlow(bool on)
{
    ShowCameraFlow = on;
    UpdateAndAnnounce();
}

void FlowPlot::SetShowDeviation(bool on)
{
    ShowDeviation = on;
    UpdateAndAnnounce();
}

void FlowPlot::SetShowCorrection(bool on)
{
    ShowCorrection = on;
    UpdateAndAnnounce();
}

void FlowPlot::SetShowMargin(bool on)
{
    ShowMargin = on;
    UpdateAndAnnounce();
}

void FlowPlot::SetShowMarginShadow(bool on)
{
    ShowMarginShadow = on;
    UpdateAndAnnounce();
}

void FlowPlot::SetTimeAxis(bool on)
{
    TimeAxis = on;
    UpdateAndAnnounce();
}

void FlowPlot::SetFlags(bool cameraFlow, bool deviation, bool margin, bool timeAxis)
{
    ShowCameraFlow = cameraFlow;
    ShowDeviation = deviation;
    ShowMargin = margin;
    TimeAxis = timeAxis;
    UpdateAndAnnounce();
}

void FlowPlot::SetMarginLabel(QLabel* label)
{
    MarginLabel = label;
}

void FlowPlot::SetPosition(double frame)
{
    Plot->SetPosition(frame);
    PlayPosition = frame;
}

double FlowPlot::GetFps() const
{
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    return Path->FramesPerSecond;
}

void FlowPlot::SetGrid(bool enable, bool position, bool line)
{
    Plot->SetGrid(enable, position, line);
}

void FlowPlot::SetMouseMode(int mode)
{
    Plot->SetMouseMode(mode);
}

void FlowPlot::ConnectPickers(QObject* receiver, const char* pointSlot, const char* rectSlot)
{
    Plot->ConnectPickers(receiver, pointSlot, rectSlot);
}

void FlowPlot::ClearLine()
{
    Plot->ClearLine();
}

void FlowPlot::ZoomHorizontal(bool Enable)
{
    Plot->ZoomHorizontal(Enable);
}

void FlowPlot::ZoomVertical(bool Enalbe)
{
    Plot->ZoomVertical(Enalbe);
}
