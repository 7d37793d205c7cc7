// SPDX-License-Identifier: MIT
#pragma once

#include "app/testwindow.h"
#include "graphs/graphtabhands.h"
#include "support/messageguard.h"

#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/**
 * The graph tabs in the window: what they show after jobs, and the calculations that they ask for,
 * over a real video of 12 frames.
 */
class GraphTabsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void AxisTitles_data();
    void AxisTitles();
    void EmptyUntilTheCalculation();
    void CalculationShowsOnAllTabs_data();
    void CalculationShowsOnAllTabs();
    void FewFrames_data();
    void FewFrames();
    void EveryTabCalculates_data();
    void EveryTabCalculates();
    void CalculationIsOnBeforeAnyJob();
    void LocalBoxRecalculates_data();
    void LocalBoxRecalculates();
    void GlobalBoxRecalculatesAllAxes_data();
    void GlobalBoxRecalculatesAllAxes();
    void ManualBoxRecalculates_data();
    void ManualBoxRecalculates();
    void FramePastTheEnd();
    void RowsOfOneFrame();
    void RotationPathTurnsNoFrame();
    void NoCalculationDuringAJob_data();
    void NoCalculationDuringAJob();
    void HandsOnDuringAJob();
    void FailedJobEmptiesTheGraphs();
    void JobNoneEmptiesTheGraphs();
    void EndDuringAJob();

private:
    [[nodiscard]] GraphTab Tab(int index) const { return GraphTab(*Window, index); }
    void Analyse() const;
    void WaitForIdle() const;
    void AnalyseAndCalculate() const;
    [[nodiscard]] int Calculations() const  ///< that the log tells of
    {
        return Window->Log().count(QStringLiteral("Run      Generate Smoothing Path"));
    }
    void StartLongAnalysis() const;

    static constexpr int JobTime = 60000;  ///< milliseconds, far more than any job here takes
    /** What a new project's graphs show: the path of the camera, no manual path in it yet. */
    const QStringList UsualCurves{"Shakiness Path", "Modified Path", "Smoothed Path"};
    const QStringList NoCurves;

    QTemporaryDir Clips;
    QString Short;  ///< path
    QString Long;   ///< path
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;
    std::unique_ptr<TestWindow> Window;
};
