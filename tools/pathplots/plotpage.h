// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>
#include <QVector>
#include <QWidget>

#include <qwt_plot.h>

/** How a curve looks. Colours that a colour-blind reader can tell apart, and line styles. */
struct CurveLook
{
    QString Title;  ///< in the legend
    QColor Colour;
    Qt::PenStyle Style = Qt::SolidLine;
    double Width = 2.5;  ///< pixels
};

/**
 * One plot of a page, with its legend above. Unlike the plots of the window it is made for paper:
 * large letters, curves in several line styles, and areas in pale colours.
 */
class PlotPanel : public QwtPlot
{
public:
    PlotPanel(const QString& xTitle, const QString& yTitle, QWidget* parent);

    /** @param values  one per frame. @param firstX  frame of the first value */
    void AddCurve(const CurveLook& look, const QVector<double>& values, double firstX = 0.0);

    /** An area that reaches from @p half below to @p half above the @p centres, one per frame. */
    void AddBand(const QString& title, const QVector<double>& centres, double half);

    /** Shades the frames from @p from to @p to and writes @p label into them. */
    void MarkFrames(const QString& label, double from, double to);

    /** A thin line across the plot. */
    void MarkValue(double value);

    /** Dots at @p points: frame and value. */
    void AddDots(const QString& title, const QVector<QPointF>& points);
};

/** A picture in the making: plots below one another, as wide as the page. */
class PlotPage : public QWidget
{
public:
    PlotPage();

    /** Adds a plot at the bottom, owned by the page. @param height  pixels */
    PlotPanel& AddPanel(const QString& xTitle, const QString& yTitle, int height);

    /** @return false when the file could not be written */
    [[nodiscard]] bool Save(const QString& file);
};
