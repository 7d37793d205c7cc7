// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/plotprobe.h"
#include "support/messageguard.h"

#include <QObject>
#include <QPolygonF>
#include <QStringList>
#include <QVector>

#include <memory>

/** Hears the pickers of a plot, and notes how far plot and log had come by then. */
class PickerListener : public QObject
{
    Q_OBJECT

public:
    /** @param plot, log  outlive the object */
    PickerListener(const PlotProbe& plot, const LogView& log) : Plot(plot), Log(log) {}

    QVector<QPointF> Points;
    QVector<QPolygonF> LineAtPoint;
    QVector<QRectF> Rects;
    QStringList LogAtRect;

public slots:
    void TakePoint(const QPointF& point);
    void TakeRect(const QRectF& rect);

private:
    const PlotProbe& Plot;
    const LogView& Log;
};

/** The plot widget: curves and axes, grid and log, mouse; each theme in a file of its own. */
class SimplePlotTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void SignalsAndSlotsInOrder();
    void RecordFieldsInOrder();
    void LooksAtTheStart();
    void CurvesAppearWithRescale();
    void RescaleReplacesTheCurves();
    void BoundsOfTheAxes_data();
    void BoundsOfTheAxes();
    void BoundsSeeEverySample();
    void LimitsClampTheAxes_data();
    void LimitsClampTheAxes();
    void NoCurvesGiveInvertedBounds();
    void BadCurveDataChangesNothing_data();
    void BadCurveDataChangesNothing();
    void EmptyDataKeepsTheDrawnCurve();
    void AppendContinues();
    void AppendOutOfRangeIsLeft_data();
    void AppendOutOfRangeIsLeft();
    void AppendShiftsAtTheLimit();
    void AppendPastTheLimitDoesNotGrow();
    void DetachKeepsTheRecords();
    void ClearTakesEverything();
    void GridSwitches();
    void PositionPaintsWithoutReplot();
    void BandIsStored();
    void BandWithoutCentresStaysOff();
    void ClickLine();
    void RefreshSkipsWhileHidden();
    void HiddenPlotIsDrawnWhenItShows();
    void ShowShowsAndHides();
    void RectangleIsLogged_data();
    void RectangleIsLogged();
    void PolygonBecomesTheLine_data();
    void PolygonBecomesTheLine();
    void ToolsAtTheStart();
    void ModesChooseTheTools_data();
    void ModesChooseTheTools();
    void ClickReachesTheLineFirst();
    void OtherModesTakeNoPoints_data();
    void OtherModesTakeNoPoints();
    void DragSelectsARectangle();
    void DragPansInMode0Only_data();
    void DragPansInMode0Only();
    void WheelZoomsTheAxesThatMay_data();
    void WheelZoomsTheAxesThatMay();
    void OwnSignalsAreNeverSent();

private:
    std::unique_ptr<MessageGuard> Guard;
};
