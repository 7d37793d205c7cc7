// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/axistab.h"
#include "graphs/settingrecords.h"
#include "support/messageguard.h"

#include <QObject>

#include <memory>

/**
 * The settings of a graph tab: what goes from project and path to the widgets and back. The tab is
 * that of FlowV while its path follows FlowH, so that one sees which of the two records counts.
 * Loading and saving have each a file of their own.
 */
class GraphWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void LoadShowsTheTabsOwnNumbers();
    void LoadTicksTheBoxes_data() { AddBoxes(); }
    void LoadTicksTheBoxes();
    void NumbersAreHeldToTheirRange_data();
    void NumbersAreHeldToTheirRange();
    void WhatIsNoNumberLandsInTheRange_data();
    void WhatIsNoNumberLandsInTheRange();
    void LoadShowsTheListsOfThePath();
    void LoadTwiceShowsTheListsOnce();
    void LoadGoesBackToPanning();
    void LoadSavesNothing();
    void SaveTakesTypedNumbers();
    void SaveTakesTheBoxes_data() { AddBoxes(); }
    void SaveTakesTheBoxes();
    void MarginOfIgnoredFramesIsWiredToNothing();
    void SaveGivesTheListsToThePath();
    void SaveBeforeAnAnalysisKeepsTheLists();
    void SaveBeforeTheFirstLoadEmptiesTheLists();
    void SaveOfAPathWithoutSettings();
    void SaveEmptiesTheManualPath();

private:
    [[nodiscard]] Project& Proj() const { return Tab->Setup.Proj; }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<AxisTab> Tab;
};
