// SPDX-License-Identifier: MIT
#include "pictures.h"

#include "motions.h"
#include "plotpage.h"
#include "stabilizer/axisfixture.h"
#include "stabilizer/pathfilter.h"

#include <cstdint>

namespace
{
constexpr int Depth = 12;             ///< N of all pictures but one, as in a new project
constexpr double WideMargin = 100.0;  ///< crop factor that never runs out of margin
const QString Frames = QStringLiteral("Frame No.");
const QString Pixels = QStringLiteral("Position [pixels]");

// The colours stay apart for all common kinds of colour blindness.
const QColor Grey(120, 120, 120);
const QColor Black(0, 0, 0);
const QColor Orange(230, 159, 0);
const QColor SkyBlue(86, 180, 233);
const QColor Green(0, 158, 115);
const QColor Blue(0, 114, 178);
const QColor Vermilion(213, 94, 0);

/** How the curve of a filter type looks, in all pictures. */
CurveLook LookOfType(int type)
{
    static const CurveLook looks[] = {{QStringLiteral("Type 1"), Orange},
                                      {QStringLiteral("Type 2"), SkyBlue, Qt::DashLine},
                                      {QStringLiteral("Type 3"), Blue},
                                      {QStringLiteral("Type 4"), Green, Qt::DashLine},
                                      {QStringLiteral("Type 5"), Vermilion}};
    return looks[type - 1];
}

CurveLook Measured(double width = 1.5)
{
    return {QStringLiteral("Shakiness Path"), Grey, Qt::SolidLine, width};
}

/** The range of the frames that the plot shows. */
void ShowFrames(PlotPanel& panel, double from, double to)
{
    panel.setAxisScale(QwtPlot::xBottom, from, to);
}

/** A shaky hand that pans to the right, from frame 140 to 180, by 160 pixels. */
QVector<double> ShakyPan()
{
    QVector<double> motion = ShakyHand(300);
    AddPan(motion, 140, 180, -4.0);
    return motion;
}

void DrawTypes(PlotPage& page)
{
    PlotPanel& panel = page.AddPanel(Frames, Pixels, 400);
    const QVector<double> motion = ShakyPan();
    for (const int type : {1, 2, 3})
    {
        AxisFixture axis(type, Depth);
        axis.Run(motion);
        if (type == 1)
        {
            panel.AddCurve(Measured(), axis.Path.ShakinessPath);
        }
        panel.AddCurve(LookOfType(type), axis.Path.Result.Path);
    }
    ShowFrames(panel, 100.0, 220.0);
    panel.setAxisScale(QwtPlot::yLeft, -170.0, 20.0, 50.0);
}

/** What the filter makes of one frame that stands 100 pixels off: the weights, in percent. */
void DrawKick(PlotPanel& panel)
{
    constexpr int frames = 1000;
    constexpr int kicked = 400;
    QVector<double> motion(frames, 0.0);
    motion[kicked] = 100.0;
    motion[kicked + 1] = -100.0;
    for (const int type : {1, 2, 3, 4, 5})
    {
        AxisFixture axis(type, Depth);
        axis.Project.ExportSettings.CropFactor = WideMargin;
        panel.AddCurve(LookOfType(type), axis.Run(motion).Path, -kicked);
    }
    ShowFrames(panel, -80.0, 260.0);
    panel.setAxisScale(QwtPlot::yLeft, 0.0, 4.4, 1.0);
}

/** A steady hand that pans by 2 pixels per frame. */
void DrawSteadyPan(PlotPanel& panel)
{
    QVector<double> motion(700, 0.0);
    AddPan(motion, 200, 350, -2.0);
    AxisFixture source(3, Depth);
    source.Run(motion);
    panel.AddCurve(Measured(5.0), source.Path.ShakinessPath);
    for (const int type : {3, 4, 5})
    {
        AxisFixture axis(type, Depth);
        axis.Project.ExportSettings.CropFactor = WideMargin;
        panel.AddCurve(LookOfType(type), axis.Run(motion).Path);
    }
    ShowFrames(panel, 100.0, 600.0);
    panel.setAxisScale(QwtPlot::yLeft, -320.0, 20.0, 100.0);
}

void DrawResponses(PlotPage& page)
{
    DrawKick(page.AddPanel(QStringLiteral("Frames behind the one that is off"),
                           QStringLiteral("Weight [%]"), 380));
    DrawSteadyPan(page.AddPanel(Frames, Pixels, 380));
}

void DrawDepths(PlotPage& page)
{
    PlotPanel& panel = page.AddPanel(Frames, Pixels, 400);
    const QVector<double> motion = ShakyPan();
    const CurveLook looks[] = {{QStringLiteral("Depth 5"), Orange},
                               {QStringLiteral("Depth 12"), Blue},
                               {QStringLiteral("Depth 30"), Vermilion, Qt::DashLine}};
    const int depths[] = {5, Depth, 30};
    for (int i = 0; i < 3; ++i)
    {
        AxisFixture axis(3, depths[i]);
        axis.Run(motion);
        if (i == 0)
        {
            panel.AddCurve(Measured(), axis.Path.ShakinessPath);
        }
        panel.AddCurve(looks[i], axis.Path.Result.Path);
    }
    ShowFrames(panel, 0.0, 300.0);
}

/** The band of the graph, and the path of the source in it. */
void DrawSource(PlotPanel& panel, const CameraPath& path)
{
    const double border = CropMargin(0.0, 0.0, path.FrameSize, 0, path.Export->CropFactor);
    panel.AddBand(QStringLiteral("band"), path.ShakinessPath, border);
    panel.AddCurve(Measured(), path.ShakinessPath);
}

/** The paths of an axis with an adaptive filter. */
void DrawAdaptivePaths(PlotPanel& panel, const CameraPath& path)
{
    DrawSource(panel, path);
    panel.AddCurve({QStringLiteral("Smoothed Path"), Blue, Qt::SolidLine, 3.5}, path.Result.Path);
    panel.AddCurve({QStringLiteral("F5 Super Smooth"), Orange, Qt::DashLine},
                   path.SuperSmooth.Path);
}

/** The two margins that the graph tells, and how much of the strong filter is in the result. */
void DrawMargins(PlotPanel& panel, const CameraPath& path)
{
    QVector<double> share;
    share.reserve(path.SuperSmooth.Weight.size());
    for (const std::int32_t weight : path.SuperSmooth.Weight)
    {
        share.append(100.0 * weight / path.BlendFrames);
    }
    panel.AddCurve({QStringLiteral("strong path's share"), Black, Qt::DotLine, 3.0}, share);
    panel.AddCurve({QStringLiteral("Applied Margin"), Blue, Qt::SolidLine, 3.5},
                   path.Result.Margin);
    panel.AddCurve({QStringLiteral("F5 Margin"), Orange, Qt::DashLine}, path.SuperSmooth.Margin);
    panel.MarkValue(0.0);
}

/** @param lowest  of the margins that the plot shows, pixels */
void DrawAdaptive(PlotPage& page, int type, const QVector<double>& motion, double lowest)
{
    AxisFixture axis(type, Depth);
    axis.Run(motion);
    PlotPanel& paths = page.AddPanel(Frames, Pixels, 380);
    DrawAdaptivePaths(paths, axis.Path);
    ShowFrames(paths, 0.0, motion.size());
    PlotPanel& margins = page.AddPanel(Frames, QStringLiteral("Margin [pixels], share [%]"), 330);
    DrawMargins(margins, axis.Path);
    ShowFrames(margins, 0.0, motion.size());
    margins.setAxisScale(QwtPlot::yLeft, lowest, 110.0, 50.0);
}

/** Quick pans, between which the camera stands. */
void DrawType4(PlotPage& page)
{
    QVector<double> motion = ShakyHand(1600);
    AddPan(motion, 400, 460, -13.0);
    AddPan(motion, 1000, 1060, 13.0);
    AddPan(motion, 1300, 1360, -13.0);
    DrawAdaptive(page, 4, motion, -30.0);
}

/** A pan that lasts to the end of the video. */
void DrawType5(PlotPage& page)
{
    QVector<double> motion = ShakyHand(1000);
    AddPan(motion, 500, motion.size(), -1.5);
    DrawAdaptive(page, 5, motion, -110.0);
}

/** Something large moves through the picture and is taken for motion of the camera. */
void DrawIgnored(PlotPage& page)
{
    constexpr int from = 150;
    constexpr int to = 180;
    PlotPanel& panel = page.AddPanel(Frames, Pixels, 400);
    QVector<double> motion = ShakyHand(350);
    AddPan(motion, from, to, 8.0);
    AxisFixture plain(3, Depth);
    plain.Run(motion);
    AxisFixture ignoring(3, Depth);
    ignoring.Settings.EnableIgnoreSections = true;
    ignoring.Settings.IgnoreSections = {{from, to, 0.0}};
    ignoring.Run(motion);
    panel.MarkFrames(QStringLiteral("ignored"), from, to);
    panel.AddCurve({QStringLiteral("measured"), Grey, Qt::DashLine, 2.0}, plain.Path.ShakinessPath);
    panel.AddCurve({QStringLiteral("smoothed"), Orange, Qt::DashLine}, plain.Path.Result.Path);
    panel.AddCurve({QStringLiteral("measured, ignoring"), Black, Qt::SolidLine, 1.5},
                   ignoring.Path.ShakinessPath);
    panel.AddCurve({QStringLiteral("smoothed, ignoring"), Blue}, ignoring.Path.Result.Path);
    ShowFrames(panel, 0.0, 350.0);
}

/** The pan is drawn by hand, as one even move. */
void DrawManual(PlotPage& page)
{
    PlotPanel& panel = page.AddPanel(Frames, Pixels, 400);
    const QVector<double> motion = ShakyPan();
    AxisFixture axis(3, Depth);
    axis.Run(motion);
    const double first = axis.Path.ShakinessAt(60);
    const double last = axis.Path.ShakinessAt(260);
    ManualPathSection section;
    section.Points = {{60, first}, {130, first}, {190, last}, {260, last}};
    axis.Settings.EnableManualPath = true;
    axis.Settings.ManualPath = {section};
    axis.Run(motion);
    const CameraPath& path = axis.Path;
    DrawSource(panel, path);
    panel.AddCurve({QStringLiteral("Modified Path"), Orange}, path.ModifiedPath);
    panel.AddCurve({QStringLiteral("Smoothed Path"), Blue}, path.Result.Path);
    QVector<QPointF> dots;
    for (const ManualPathPoint& point : section.Points)
    {
        dots.append({static_cast<double>(point.FrameNr), point.Value});
    }
    panel.AddDots(QStringLiteral("manual points"), dots);
    ShowFrames(panel, 0.0, 300.0);
}
}  // namespace

std::vector<Picture> AllPictures()
{
    return {{"path-types", DrawTypes},   {"path-responses", DrawResponses},
            {"path-depths", DrawDepths}, {"path-type-4", DrawType4},
            {"path-type-5", DrawType5},  {"path-ignored", DrawIgnored},
            {"path-manual", DrawManual}};
}
