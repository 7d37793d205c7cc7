// SPDX-License-Identifier: MIT
#include "plotpage.h"

#include <qwt_legend.h>
#include <qwt_painter.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_intervalcurve.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_zoneitem.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_widget.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <QFont>
#include <QImage>
#include <QVBoxLayout>

namespace
{
constexpr int PageWidth = 900;    ///< pixels
constexpr int LetterHeight = 17;  ///< pixels; can be read at half size
constexpr int ScaleExtent = 62;   ///< pixels; equal, so that frames stand below one another
constexpr int LegendIcon = 38;    ///< pixels; long enough for a line style to show
const QColor Ink(40, 40, 40);
const QColor GridLines(222, 222, 222);
const QColor BandFill(214, 231, 242);
const QColor ZoneFill(245, 236, 205);

QFont Letters()
{
    QFont font(QStringLiteral("Open Sans"));
    font.setPixelSize(LetterHeight);
    font.setHintingPreference(QFont::PreferNoHinting);  // the machine's setting does not count
    return font;
}

QwtText Label(const QString& text)
{
    QwtText label(text);
    label.setFont(Letters());
    label.setColor(Ink);
    return label;
}
}  // namespace

PlotPanel::PlotPanel(const QString& xTitle, const QString& yTitle, QWidget* parent)
    : QwtPlot(parent)
{
    auto* frame = new QwtPlotCanvas;
    frame->setFrameShape(QFrame::Box);
    frame->setFrameShadow(QFrame::Plain);
    frame->setLineWidth(1);
    setCanvas(frame);
    setCanvasBackground(QBrush(Qt::white));
    plotLayout()->setAlignCanvasToScales(true);
    auto* legend = new QwtLegend;
    legend->setFont(Letters());
    insertLegend(legend, QwtPlot::TopLegend);
    for (const int axis : {yLeft, xBottom})
    {
        setAxisFont(axis, Letters());
    }
    axisScaleDraw(yLeft)->setMinimumExtent(ScaleExtent);
    setAxisTitle(xBottom, Label(xTitle));
    setAxisTitle(yLeft, Label(yTitle));
    auto* grid = new QwtPlotGrid;
    grid->setPen(GridLines, 1.0);
    grid->attach(this);
}

void PlotPanel::AddCurve(const CurveLook& look, const QVector<double>& values, double firstX)
{
    QVector<QPointF> samples;
    samples.reserve(values.size());
    for (const double value : values)
    {
        samples.append({firstX + samples.size(), value});
    }
    auto* curve = new QwtPlotCurve(Label(look.Title));
    QPen pen(look.Colour, look.Width, look.Style);
    pen.setCapStyle(Qt::FlatCap);
    curve->setPen(pen);
    curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->setLegendIconSize(QSize(LegendIcon, LetterHeight));
    curve->setSamples(samples);
    curve->attach(this);
}

void PlotPanel::AddBand(const QString& title, const QVector<double>& centres, double half)
{
    QVector<QwtIntervalSample> samples;
    samples.reserve(centres.size());
    for (const double centre : centres)
    {
        samples.append({static_cast<double>(samples.size()), centre - half, centre + half});
    }
    auto* band = new QwtPlotIntervalCurve(Label(title));
    band->setPen(QPen(Qt::NoPen));
    band->setBrush(BandFill);
    band->setLegendIconSize(QSize(LetterHeight, LetterHeight));
    band->setSamples(samples);
    band->setZ(0.0);  // below the grid
    band->attach(this);
}

void PlotPanel::MarkFrames(const QString& label, double from, double to)
{
    auto* zone = new QwtPlotZoneItem;
    zone->setBrush(ZoneFill);
    zone->setPen(QPen(Qt::NoPen));
    zone->setInterval(from, to);
    zone->setZ(0.0);
    zone->attach(this);
    auto* text = new QwtPlotMarker;
    text->setLineStyle(QwtPlotMarker::VLine);  // with a line the label stands at the top
    text->setLinePen(QPen(Qt::NoPen));
    text->setLabel(Label(label));
    text->setLabelAlignment(Qt::AlignHCenter | Qt::AlignTop);
    text->setXValue((from + to) / 2.0);
    text->attach(this);
}

void PlotPanel::MarkValue(double value)
{
    auto* line = new QwtPlotMarker;
    line->setLineStyle(QwtPlotMarker::HLine);
    line->setLinePen(Ink, 1.0);
    line->setYValue(value);
    line->attach(this);
}

void PlotPanel::AddDots(const QString& title, const QVector<QPointF>& points)
{
    auto* dots = new QwtPlotCurve(Label(title));
    dots->setStyle(QwtPlotCurve::NoCurve);
    dots->setSymbol(new QwtSymbol(QwtSymbol::Ellipse, Qt::white, QPen(Ink, 2.0), QSize(10, 10)));
    dots->setRenderHint(QwtPlotItem::RenderAntialiased);
    dots->setLegendAttribute(QwtPlotCurve::LegendShowSymbol);
    dots->setSamples(points);
    dots->attach(this);
}

PlotPage::PlotPage()
{
    // In pieces, as long curves are drawn otherwise, each piece would begin its line style anew.
    QwtPainter::setPolylineSplitting(false);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(6, 4, 14, 4);
    rows->setSpacing(6);
    setFixedWidth(PageWidth);
}

PlotPanel& PlotPage::AddPanel(const QString& xTitle, const QString& yTitle, int height)
{
    auto* panel = new PlotPanel(xTitle, yTitle, this);
    panel->setFixedHeight(height);
    layout()->addWidget(panel);
    return *panel;
}

bool PlotPage::Save(const QString& file)
{
    adjustSize();
    for (QwtPlot* panel : findChildren<QwtPlot*>())
    {
        panel->replot();
    }
    constexpr int smallest = 0;  // of the qualities, which for this format are sizes
    return grab().toImage().convertToFormat(QImage::Format_RGB888).save(file, "PNG", smallest);
}
