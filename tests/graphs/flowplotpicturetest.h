// SPDX-License-Identifier: MIT
#pragma once

#include "app/endguard.h"
#include "graphs/axissetup.h"
#include "graphs/flowplot.h"
#include "graphs/plotpicture.h"
#include "graphs/simpleplot.h"

#include <QObject>
#include <QPoint>
#include <QWidget>

#include <cstdlib>
#include <memory>

[[nodiscard]] inline bool IsNear(double actual, double expected, double tolerance)
{
    return std::abs(actual - expected) <= tolerance;
}

/** What the user sees of an axis: the canvas of a plot of known size over a known path. */
class FlowPlotPictureTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void UpdateShowsThePlot();
    void MissingDataShowNoPlot();
    void LineAndMeanAtTheirPlaces_data();
    void LineAndMeanAtTheirPlaces();
    void StepAtItsPlace();
    void EveryCurveInItsColour_data();
    void EveryCurveInItsColour();
    void LegendNamesTheCurves();
    void BandEdges_data();
    void BandEdges();
    void BandFollowsAStep();
    void BandHasOneStrokePerFrame();
    void BandOfNoHeightIsALine();
    void BandIsGoneWithoutItsFlag();
    void GridLiesOverTheBand();
    void GridCanBeOff();
    void MarkerAtItsFrame_data();
    void MarkerAtItsFrame();
    void MarkerFollowsAtOnce();
    void TimeAxisWritesTimes();
    void TicksStandUnderTheGrid_data();
    void TicksStandUnderTheGrid();
    void PolylineJoinsTheClicks();
    void PolylineGoesWithTheNextUpdate();
    void PickersReachTheirReceiver();
    void LostDataLeaveNothing();
    void NoCurvesAtAll();
    void HiddenPlotWaits();
    void SecondPassIsSeen();

private:
    void MakeLine();
    void MakeStep();
    void FinishLayout();
    [[nodiscard]] SimplePlot* Plot() const { return Flow->GetPlot(); }
    [[nodiscard]] PlotPicture Picture() const { return PlotPicture(Plot()); }
    [[nodiscard]] QPoint PixelOf(double frame, double value) const
    {
        return PlotPicture::PixelOf(Plot(), {frame, value});
    }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<AxisSetup> Axis;
    std::unique_ptr<QWidget> Page;  ///< of the plot, in one test; goes after it
    std::unique_ptr<FlowPlot> Flow;
};
