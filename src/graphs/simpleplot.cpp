// SPDX-License-Identifier: MIT
#include "graphs/simpleplot.h"

#include "app/log.h"
#include "batch/logrecord.h"
#include "graphs/gridandpos.h"
#include "graphs/timescaledraw.h"

#include <qwt_legend.h>
#include <qwt_picker_machine.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_magnifier.h>
#include <qwt_plot_panner.h>
#include <qwt_plot_picker.h>
#include <qwt_scale_engine.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace
{
constexpr double Largest = std::numeric_limits<double>::max();
constexpr int MostNumbers = 8;             ///< ticks with a label, as Qwt has it
constexpr int MostTimes = 4;               ///< times are long, and the player's graphs narrow
constexpr double LongestFrame = 100000.0;  ///< milliseconds; beyond it the axis shows frame numbers

/** Smallest box around points; inverted when there are none. */
struct Bounds
{
    double MinX = Largest;
    double MaxX = -Largest;
    double MinY = Largest;
    double MaxY = -Largest;

    void WidenX(double x)
    {
        MinX = std::min(MinX, x);
        MaxX = std::max(MaxX, x);
    }

    void WidenY(double y)
    {
        MinY = std::min(MinY, y);
        MaxY = std::max(MaxY, y);
    }
};

void Widen(Bounds& bounds, const QVector<QPointF>& samples)
{
    if (samples.isEmpty())
    {
        bounds.WidenX(0.0);
        bounds.WidenY(0.0);
        return;
    }
    bounds.WidenX(samples.first().x());
    bounds.WidenX(samples.last().x());
    // Several boxes side by side: with one, each sample would wait for the one before it.
    constexpr int lanes = 4;
    std::array<Bounds, lanes> boxes;
    int i = 0;
    for (; i + lanes <= samples.size(); i += lanes)
    {
        for (int lane = 0; lane < lanes; ++lane)
        {
            boxes[static_cast<std::size_t>(lane)].WidenY(samples.at(i + lane).y());
        }
    }
    for (; i < samples.size(); ++i)
    {
        bounds.WidenY(samples.at(i).y());
    }
    for (const Bounds& box : boxes)
    {
        bounds.MinY = std::min(bounds.MinY, box.MinY);
        bounds.MaxY = std::max(bounds.MaxY, box.MaxY);
    }
}

QwtScaleEngine* NewScaleEngine(bool isLog)
{
    constexpr int base = 10;
    return isLog ? static_cast<QwtScaleEngine*>(new QwtLogScaleEngine(base))
                 : new QwtLinearScaleEngine(base);
}
}  // namespace

SimplePlot::SimplePlot(QWidget* parent)
    : QwtPlot(parent),
      Grid(nullptr),
      Magnifier(nullptr),
      Panner(nullptr),
      TrackerPicker(nullptr),
      ClickPicker(nullptr),
      RectPicker(nullptr),
      MinX(-Largest),
      MaxX(Largest),
      MinY(-Largest),
      MaxY(Largest)
{
    setCanvasBackground(QBrush(Qt::white));
    insertLegend(new QwtLegend, QwtPlot::RightLegend, -1.0);
    Grid = new GridAndPos;
    Grid->attach(this);
    Panner = new QwtPlotPanner(canvas());
    Magnifier = new QwtPlotMagnifier(canvas());
    MakePickers();
    SetMouseMode(0);
}

void SimplePlot::MakePickers()
{
    const auto newPicker = [this](QwtPicker::RubberBand rubberBand)
    { return new QwtPlotPicker(xBottom, yLeft, rubberBand, QwtPicker::AlwaysOn, canvas()); };
    TrackerPicker =
        newPicker(QwtPicker::CrossRubberBand);  // without a machine it only shows coordinates

    ClickPicker = newPicker(QwtPicker::CrossRubberBand);
    ClickPicker->setStateMachine(new QwtPickerClickPointMachine);
    connect(ClickPicker, qOverload<const QPointF&>(&QwtPlotPicker::selected), this,
            &SimplePlot::LeftClick);

    RectPicker = newPicker(QwtPicker::RectRubberBand);
    auto* dragMachine = new QwtPickerDragRectMachine;
    dragMachine->setState(1);
    RectPicker->setStateMachine(dragMachine);
    connect(RectPicker, qOverload<const QRectF&>(&QwtPlotPicker::selected), this,
            &SimplePlot::pointsSelected);

    TrackerPen = QPen(Qt::lightGray, 2);
    PickerPen = QPen(Qt::darkMagenta, 2);
    TrackerPicker->setTrackerPen(TrackerPen);
    ClickPicker->setTrackerPen(PickerPen);
    RectPicker->setTrackerPen(PickerPen);
}

SimplePlot::~SimplePlot()
{
    ClearCurves();
}

/**
 * A hidden plot leaves its axes alone; without this they would follow only at the second update.
 */
void SimplePlot::showEvent(QShowEvent* e)
{
    QwtPlot::showEvent(e);
    replot();
}

void SimplePlot::Refresh()
{
    if (isVisible())
    {
        Rescale();
        replot();
    }
}

void SimplePlot::AddCurve(QString title, QColor colour, double xStep)
{
    auto* curve = new PlotCurve;
    curve->Title = title;
    curve->Colour = colour;
    curve->XStep = xStep;
    curve->Plot = this;
    Curves.append(curve);
}

void SimplePlot::SetCurveData(int index, QVector<double> y, QVector<double> x)
{
    if (index < 0 || index >= Curves.size() || x.size() != y.size())
    {
        return;
    }
    QVector<QPointF>& samples = Curves.at(index)->Samples;
    samples.resize(y.size());
    std::transform(x.cbegin(), x.cend(), y.cbegin(), samples.begin(),
                   [](double xValue, double yValue) { return QPointF(xValue, yValue); });
}

void SimplePlot::AppendCurveData(int index, QVector<double> values, int first, int count)
{
    if (index < 0 || index >= Curves.size() || first < 0 || count <= 0 ||
        count > values.size() - first)
    {
        return;
    }
    PlotCurve& curve = *Curves.at(index);
    if (curve.Samples.size() > curve.MaxSamples - count)
    {
        curve.Samples.remove(0, std::min(count, curve.Samples.size()));
    }
    curve.Samples.reserve(curve.Samples.size() + count);
    for (int i = first; i < first + count; ++i)
    {
        curve.Samples.append(QPointF(curve.NextX, values.at(i)));
        curve.NextX += curve.XStep;
    }
    curve.Samples.remove(0, std::max(0, curve.Samples.size() - curve.MaxSamples));
}

void SimplePlot::ClearCurves()
{
    DetachCurves();
    qDeleteAll(Curves);
    Curves.clear();
    Grid->Line.clear();
    Grid->itemChanged();
    Grid->BandCentres.clear();
}

void SimplePlot::DetachCurves()
{
    for (PlotCurve* curve : qAsConst(Curves))
    {
        delete curve->Curve;  // which detaches it
        curve->Curve = nullptr;
    }
}

void SimplePlot::Rescale()
{
    Bounds bounds;
    for (const PlotCurve* curve : qAsConst(Curves))
    {
        Widen(bounds, curve->Samples);
    }
    setAxisScale(yLeft, std::max(bounds.MinY, MinY), std::min(bounds.MaxY, MaxY), 0);
    setAxisScale(xBottom, std::max(bounds.MinX, MinX), std::min(bounds.MaxX, MaxX), 0);
    for (PlotCurve* curve : qAsConst(Curves))
    {
        if (!curve->Samples.isEmpty())
        {
            DrawCurve(*curve);
        }
    }
}

void SimplePlot::DrawCurve(PlotCurve& curve)
{
    constexpr double width = 2.0;
    delete curve.Curve;
    curve.Curve = new QwtPlotCurve(curve.Title);
    curve.Curve->setPen(curve.Colour, width, Qt::SolidLine);
    curve.Curve->setRenderHint(QwtPlotItem::RenderAntialiased, false);
    curve.Curve->setPaintAttribute(QwtPlotCurve::ClipPolygons, true);
    curve.Curve->setSamples(curve.Samples);
    curve.Curve->attach(curve.Plot);
}

void SimplePlot::SetGrid(bool enable, bool position, bool line)
{
    Grid->enableX(enable);
    Grid->enableY(enable);
    Grid->ShowPosition = position;
    Grid->ShowLine = line;
}

void SimplePlot::SetPosition(double x)
{
    Grid->Position = x;
    Grid->itemChanged();
    // The canvas would paint its picture of the old place once more.
    static_cast<QwtPlotCanvas*>(canvas())->invalidateBackingStore();
    QWidget::repaint();
}

void SimplePlot::SetBand(QVector<double> centres, double halfHeight, QPen pen)
{
    Grid->BandCentres = centres;
    Grid->BandHalfHeight = halfHeight;
    Grid->BandPen = pen;
}

void SimplePlot::ShowBand(bool on)
{
    Grid->ShowMarginBand = on && !Grid->BandCentres.isEmpty();
    Grid->itemChanged();
}

void SimplePlot::ClearLine()
{
    Grid->Line.clear();
    Grid->itemChanged();
}

void SimplePlot::SetXTitle(QString text)
{
    setAxisTitle(xBottom, QwtText(text));
}

void SimplePlot::SetYTitle(QString text)
{
    setAxisLabelRotation(yLeft, -90.0);
    setAxisLabelAlignment(yLeft, Qt::AlignLeft | Qt::AlignVCenter);
    setAxisTitle(yLeft, QwtText(text));
}

void SimplePlot::SetTimeScale(double msPerFrame)
{
    const bool isTime = msPerFrame > 0.0 && msPerFrame <= LongestFrame;
    QwtScaleDraw* scale = isTime ? new TimeScaleDraw(msPerFrame) : new QwtScaleDraw;
    // The scale is laid out by the places of its labels: without a length they all lie in one, and
    // the ticks would miss the lines of the grid.
    scale->move(axisScaleDraw(xBottom)->pos());
    scale->setLength(axisScaleDraw(xBottom)->length());
    setAxisScaleDraw(xBottom, scale);
    setAxisMaxMajor(xBottom, isTime ? MostTimes : MostNumbers);
}

void SimplePlot::SetScaleEngines(bool logX, bool logY)
{
    setAxisScaleEngine(xBottom, NewScaleEngine(logX));
    setAxisScaleEngine(yLeft, NewScaleEngine(logY));
}

void SimplePlot::SetLimits(double minX, double maxX, double minY, double maxY)
{
    MinX = minX;
    MaxX = maxX;
    MinY = minY;
    MaxY = maxY;
}

void SimplePlot::SetMouseMode(int mode)
{
    if (mode < 0 || mode > 2)
    {
        return;
    }
    Panner->setEnabled(mode == 0);
    TrackerPicker->setEnabled(mode == 0);
    ClickPicker->setEnabled(mode == 1);
    RectPicker->setEnabled(mode == 2);
}

void SimplePlot::ConnectPickers(QObject* receiver, const char* pointSlot, const char* rectSlot)
{
    connect(ClickPicker, SIGNAL(selected(QPointF)), receiver, pointSlot);
    connect(RectPicker, SIGNAL(selected(QRectF)), receiver, rectSlot);
}

void SimplePlot::Show(bool on)
{
    on ? show() : hide();
}

void SimplePlot::ZoomHorizontal(bool Enable)
{
    Magnifier->setAxisEnabled(xBottom, Enable);
}

void SimplePlot::ZoomVertical(bool Enalbe)
{
    Magnifier->setAxisEnabled(yLeft, Enalbe);
}

void SimplePlot::LeftClick(QPointF pos)
{
    Grid->Line.append(pos);
    Grid->itemChanged();
    replot();
    QWidget::repaint();
}

void SimplePlot::pointsSelected(QRectF rect)
{
    ProgramLog.Add(LogTrace, QStringLiteral("rect [%1 %2] [%3 %4]")
                                 .arg(rect.x(), 0, 'g')
                                 .arg(rect.y(), 0, 'g')
                                 .arg(rect.width(), 0, 'g')
                                 .arg(rect.height(), 0, 'g'));
}

void SimplePlot::Line(QPolygon poly)
{
    QString text = QStringLiteral("Points[0:%1] = ").arg(poly.size());
    for (const QPoint& point : qAsConst(poly))
    {
        text +=
            QStringLiteral("{%1:%2},").arg(point.x()).arg(static_cast<double>(point.y()), 0, 'g');
    }
    Grid->Line = QPolygonF(poly);
    Grid->itemChanged();
    replot();
    ProgramLog.Add(LogTrace, text);
}
