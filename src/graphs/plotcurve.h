// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPointF>
#include <QString>
#include <QVector>

#include <cstdint>

class QwtPlotCurve;
class SimplePlot;

/** One curve of a plot. The samples wait here until the plot makes a curve item of them. */
struct PlotCurve
{
    QwtPlotCurve* Curve = nullptr;  ///< owned by the plot; null until the curve has been drawn once
    QColor Colour;                  ///< of the line, and of the mark in the legend
    QString Title;                  ///< also the text of the legend
    SimplePlot* Plot = nullptr;     ///< not owned; the plot to attach to
    QVector<QPointF> Samples;       ///< x is the frame number, y the value; rising x
    double NextX = 0.0;             ///< x of the next appended sample
    double XStep = 0.0;             ///< x distance of appended samples
    std::int32_t MaxSamples = 3000000;  ///< the oldest fall out beyond it
};
