// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/axistab.h"
#include "support/messageguard.h"

#include <QObject>
#include <QStringList>

#include <memory>

/**
 * The check boxes and lists of a graph tab, and when its plot follows; the lists have a file of
 * their own.
 */
class GraphDisplayTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void MarginTextOfTheAxis_data();
    void MarginTextOfTheAxis();
    void ListStates_data();
    void ListStates();
    void ClickOnAListBox_data();
    void ClickOnAListBox();
    void OnlyClicksAskForAPath();
    void PlotUpdateFollowsTheBoxes_data();
    void PlotUpdateFollowsTheBoxes();
    void PlotUpdateKeepsTheCorrection();
    void PlotUpdateFollowsShadowAndTime();
    void PlotUpdateEndsClicking();
    void PlotUpdateWithoutDataEndsClicking();
    void ClickOnABoxShowsItsCurves_data();
    void ClickOnABoxShowsItsCurves();
    void ClickOnShadowAndTime();
    void ZoomBoxes_data();
    void ZoomBoxes();
    void MouseInThePlotReachesTheLists();
    void LoadAndPlotDoesBoth();
    void ShowsAtOnceWhatWasPlottedWhileHidden();
    void ShowsAtOnceWhatWasPlottedOnAHiddenPage();

private:
    void Plot();
    [[nodiscard]] QStringList ShownLists() const;
    [[nodiscard]] QStringList EnabledLists() const;
    [[nodiscard]] QString XTitle() const { return Tab->Plot().axisTitle(QwtPlot::xBottom).text(); }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<AxisTab> Tab;
};
