// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/axissetup.h"
#include "graphs/flowplot.h"

#include <QStringList>
#include <QVector>
#include <QWidget>

class GridAndPos;
class QwtPlotCurve;
class SimplePlot;

/** What a curve of a flow plot may depend on, to be combined. */
enum CurveCondition : unsigned
{
    CameraFlow = 1,
    Deviation = 2,
    Correction = 4,
    Margin = 8,
    LocalIgnore = 16,
    GlobalIgnore = 32,
    Manual = 64,
    Adaptive = 128,
    AllConditions = 255,
};

/** A flow plot on a page that is not shown, as in a tab behind another. */
struct HiddenFlow
{
    explicit HiddenFlow(bool isPixelAxis = true);

    [[nodiscard]] const SimplePlot* Plot() const { return Flow.GetPlot(); }
    [[nodiscard]] const GridAndPos& Grid() const;

    AxisSetup Axis;
    QWidget Page;
    FlowPlot Flow{&Axis.Proj, &Axis.Path, QStringLiteral("Pixel")};  ///< goes first, with its plot
};

/** Frames of a path that is filled by hand. */
constexpr int MarkedFrames = 6;

/** A list that can be told from all others: 100 k, 100 k + 1, and so on. */
[[nodiscard]] QVector<double> Marked(int k);

/** Complete data of types 1 to 3; each list is Marked by a number of its own. */
void FillByHand(CameraPath& path);

/** Adds the data of the strong filter, as after types 4 and 5. */
void FillStrongFilter(CameraPath& path);

/** The curves that the conditions ask for, over a path filled by hand, told as by Curves. */
[[nodiscard]] QStringList CurvesUnder(unsigned conditions);

[[nodiscard]] QStringList Titles(const SimplePlot* plot);

/** Each curve in the order of drawing: title, colour, and frame and value of each sample. */
[[nodiscard]] QStringList Curves(const SimplePlot* plot);

/** The values of the curve of that title; empty when there is none. */
[[nodiscard]] QVector<double> Values(const SimplePlot* plot, const QString& title);
