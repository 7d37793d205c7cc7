// SPDX-License-Identifier: MIT
#pragma once

#include "app/endguard.h"
#include "graphs/flowcurves.h"

#include <QObject>

#include <memory>

/** What a flow plot makes of a path: curves, band, label, axes; when it does so and tells it. */
class FlowPlotTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ConstructedPlotIsEmpty();
    void DestructorDeletesThePlot();
    void SignalsAndSlotsInOrder();
    void CurvesOfAFreshPlot();
    void CurvesOfConditions_data();
    void CurvesOfConditions();
    void CurvesOfAllCombinations();
    void ConditionsComeFromAxisAndProject();
    void CurvesOfFilterTypes_data();
    void CurvesOfFilterTypes();
    void TypeChangeWithoutCalculationEmptiesThePlot();
    void FramesFollowTheLength();
    void ListOfAnotherLengthLeavesItsCurveOut();
    void TooLittleData_data();
    void TooLittleData();
    void FalseResultClearsWhatStood();
    void EachSetterStoresItsFlag();
    void SetFlagsLeavesCorrectionAndShadow();
    void FlagsOutlastMissingData();
    void MarginText_data();
    void MarginText();
    void RotationHasAFixedText();
    void LabelReadsTheExportOfItsPath();
    void LabelIsOptionalAndReplaceable();
    void Axes_data();
    void Axes();
    void Band_data();
    void Band();
    void BandHugsTheShakinessPath();
    void BandFollowsItsFlag();
    void UpdateDoesNotAnnounce();
    void EachChangeAnnouncesOnce_data();
    void EachChangeAnnouncesOnce();
    void AnnouncesWhenTheCurvesStand();
    void SecondPassIsTheLastOne();
    void SecondPassEmptiesThePlotOfLostData();
    void NextChangePutsTheSecondPassOff();
    void WorkAroundOnlyUpdates();
    void FalseResultSetsNoTimer();
    void UpdateEmptiesThePolyline();
    void ForwardsToTheGrid();
    void ForwardsTheMouseMode_data();
    void ForwardsTheMouseMode();
    void ForwardsTheZoom();

private:
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<HiddenFlow> Hidden;
};
