// SPDX-License-Identifier: MIT
#pragma once

#include "app/testwindow.h"
#include "graphs/graphtabhands.h"
#include "project/project.h"
#include "stabilizer/axisfiltersettings.h"
#include "support/messageguard.h"

#include <QMessageBox>
#include <QObject>

#include <memory>

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

/**
 * The way of the settings between graph tabs, settings form, project and camera paths. The project
 * is the window's own; the camera paths point at its records, so that is where a test looks.
 */
class GraphTabSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void AllTabsShowTheProject_data();
    void AllTabsShowTheProject();
    void LeavingStores_data();
    void LeavingStores();
    void EnteringLoads_data();
    void EnteringLoads();
    void ClickOnTheCurrentTab_data();
    void ClickOnTheCurrentTab();
    void PlayerKeepsTheTabNoted_data();
    void PlayerKeepsTheTabNoted();
    void FromSettingsOverPlayer();
    void CalculationCommitsItsTab_data();
    void CalculationCommitsItsTab();
    void OtherTabsKeepWhatWasStored();
    void SaveCommitsAllTabs_data();
    void SaveCommitsAllTabs();
    void CropOfTheTabOnShow_data();
    void CropOfTheTabOnShow();
    void CropOfTheFormReachesTheTabs();
    void GlobalListIsShared();
    void LastGlobalListWins_data();
    void LastGlobalListWins();
    void AxisThatFollowsHorizontal_data();
    void AxisThatFollowsHorizontal();
    void ListsOfAnAxisThatFollows();
    void RotationIsCommittedInRadians();
    void EveryJobStateUpdatesTheGraphs_data();
    void EveryJobStateUpdatesTheGraphs();
    void OtherProject_data();
    void OtherProject();
    void SaveAsShowsOnAllTabs();
    void Closing_data();
    void Closing();
    void CancelledClosing();

private:
    [[nodiscard]] GraphTab Tab(int index) const { return GraphTab(*Window, index); }
    void OpenWindowOn(const Project& project);
    void ShowAPath() const;
    void Save() const;
    /** The settings that the path of a tab is bound to. */
    [[nodiscard]] static AxisFilterSettings& RecordOfTab(int tab);
    [[nodiscard]] static QString InHome(const char* name);
    [[nodiscard]] static QString StartProject() { return InHome("Molvane/Start/Start.mvprj"); }
    [[nodiscard]] static Project ReadProject(const QString& path);  ///< what a file says
    [[nodiscard]] static Project DefaultProject() { return ReadProject(QString()); }

    static constexpr int Frames = 12;  ///< of the path that ShowAPath shows
    static constexpr const char* LocalTree = "treeWidgetIgnore";
    static constexpr const char* GlobalTree = "treeWidgetGlobalIgnore";

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestWindow> Window;
};
