// SPDX-License-Identifier: MIT
#include "graphs/graphtabsettings.h"

#include "batch/exportsettings.h"
#include "batch/jobstate.h"
#include "stabilizer/camerapath.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QComboBox>
#include <QTest>

// What stands on several tabs, axes that share settings, and the commands for whole projects.

void GraphTabSettingsTest::CropOfTheTabOnShow_data()
{
    QTest::addColumn<int>("then");
    QTest::addColumn<double>("factor");
    QTest::newRow("saved on the tab itself") << int(HorizontalTab) << 1.5;
    QTest::newRow("the next graph tab takes it along") << int(VerticalTab) << 1.5;
    QTest::newRow("the rotation takes it along") << int(RotationTab) << 1.5;
    QTest::newRow("the settings take it along") << int(SettingsTab) << 1.5;
    // The player has no crop of its own: what the form last held counts.
    QTest::newRow("from the player the form's counts") << int(PlayerTab) << 1.2;
}

/** 120 % in the form, then 150 % on the horizontal tab; the other graph tabs still hold 110 %. */
void GraphTabSettingsTest::CropOfTheTabOnShow()
{
    QFETCH(int, then);
    QFETCH(double, factor);
    Window->SetNumber("doubleSpinBoxZoom", 120.0);
    Window->ClickTab(HorizontalTab);
    QCOMPARE(Tab(HorizontalTab).Number("doubleSpinBoxCrop"), 120.0);
    Tab(HorizontalTab).Type("doubleSpinBoxCrop", 150);
    if (then != HorizontalTab)
    {
        Window->ClickTab(then);
    }
    Save();
    QCOMPARE(PathHorizontal.Export->CropFactor, factor);
    QCOMPARE(ReadProject(StartProject()).ExportSettings.CropFactor, factor);
    QCOMPARE(Window->Number("doubleSpinBoxZoom"), then == SettingsTab ? 150.0 : 120.0);
}

void GraphTabSettingsTest::CropOfTheFormReachesTheTabs()
{
    QCOMPARE(PathHorizontal.Export->CropFactor, 1.1);
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Number("doubleSpinBoxCrop"), 110.0);
    }
    Window->ClickTab(HorizontalTab);
    Tab(HorizontalTab).Type("doubleSpinBoxCrop", 150);
    Window->ClickTab(SettingsTab);
    Window->SetNumber("doubleSpinBoxZoom", 130.0);
    Window->Commit();
    QCOMPARE(PathHorizontal.Export->CropFactor, 1.3);
    for (int tab : GraphTabs)
    {
        Window->ClickTab(tab);
        QCOMPARE(Tab(tab).Number("doubleSpinBoxCrop"), 130.0);
    }
}

void GraphTabSettingsTest::GlobalListIsShared()
{
    ShowAPath();
    QStringList rows;
    for (int tab : GraphTabs)
    {
        Window->ClickTab(tab);
        QCOMPARE(Tab(tab).Rows(GlobalTree), rows);
        Tab(tab).AddIgnore(GlobalTree, tab, tab + 5);
        rows.append(QString("%1,%2,0").arg(tab).arg(tab + 5));
    }
    for (int tab : GraphTabs)
    {
        Window->ClickTab(tab);
        QCOMPARE(Tab(tab).Rows(GlobalTree), rows);
        QVERIFY(Tab(tab).Rows(LocalTree).isEmpty());
    }
    Tab(RotationTab).ChooseFromTree(GlobalTree, "Clear all ignore sections");
    QCOMPARE(PathVertical.GlobalIgnoreSections->size(), std::size_t{3});  // not yet
    Window->ClickTab(HorizontalTab);
    QVERIFY(PathVertical.GlobalIgnoreSections->empty());
    QVERIFY(Tab(HorizontalTab).Rows(GlobalTree).isEmpty());
}

void GraphTabSettingsTest::LastGlobalListWins_data()
{
    QTest::addColumn<QVector<int>>("visits");
    QTest::addColumn<bool>("survives");
    QTest::newRow("saved on the tab itself") << QVector<int>{} << true;
    QTest::newRow("saved on the next tab") << QVector<int>{VerticalTab} << true;
    // All tabs are stored there, the rotation as the last, with what it was last loaded with.
    QTest::newRow("rotation, not visited, wins in the settings")
        << QVector<int>{SettingsTab} << false;
    QTest::newRow("rotation, not visited, wins on the player") << QVector<int>{PlayerTab} << false;
    QTest::newRow("rotation wins over the visited vertical")
        << QVector<int>{VerticalTab, SettingsTab} << false;
    QTest::newRow("a visit to the rotation takes it along")
        << QVector<int>{RotationTab, SettingsTab} << true;
}

void GraphTabSettingsTest::LastGlobalListWins()
{
    QFETCH(QVector<int>, visits);
    QFETCH(bool, survives);
    ShowAPath();
    Window->ClickTab(HorizontalTab);
    Tab(HorizontalTab).AddIgnore(GlobalTree, 2, 4);
    Tab(HorizontalTab).SetBox("checkBoxEnIgnSectionsGlobal", false);
    QCOMPARE(PathHorizontal.GlobalIgnoreSections->size(), std::size_t{1});
    for (int tab : visits)
    {
        Window->ClickTab(tab);
        QCOMPARE(PathHorizontal.GlobalIgnoreSections->size(), std::size_t{1});
    }
    Save();
    const Project saved = ReadProject(StartProject());
    QCOMPARE(saved.GlobalIgnoreSections.size(), std::size_t(survives ? 1 : 0));
    QCOMPARE(saved.EnGlobalIgnoreList, !survives);
    QCOMPARE(PathVertical.UseGlobalIgnore, !survives);
}

void GraphTabSettingsTest::AxisThatFollowsHorizontal_data()
{
    QTest::addColumn<int>("tab");
    QTest::newRow("vertical") << int(VerticalTab);
    QTest::newRow("rotation") << int(RotationTab);
}

void GraphTabSettingsTest::AxisThatFollowsHorizontal()
{
    QFETCH(int, tab);
    Project project = DefaultProject();
    (tab == VerticalTab ? project.UseFlowVSettings : project.UseFlowRotSettings) = false;
    OpenWindowOn(project);
    ShowAPath();
    const CameraPath& path = PathOfTab(tab);
    const QVector<double> before = path.Result.Path;
    Window->ClickTab(tab);
    Tab(tab).Type("spinBoxAvgFrames", 40);
    Tab(tab).Type("spinBoxAvgOrder", 1);
    Tab(tab).SetBox("checkBoxLock", true);
    Tab(tab).Click("pushButtonCalc");
    ShowAPath();
    QCOMPARE(path.Settings, PathHorizontal.Settings);
    QCOMPARE(path.Base.WindowLength, std::uint64_t{25});  // of the horizontal strength, 12
    QCOMPARE(path.Base.Order, std::uint64_t{3});
    QVERIFY(path.Result.Path == before);
    Save();
    const Project saved = ReadProject(InHome("told.mvprj"));
    const AxisFilterSettings& own = tab == VerticalTab ? saved.FlowV : saved.FlowAngle;
    QCOMPARE(own.AvgPathImages, 40);  // in the tab's own record, for later
    QVERIFY(own.Lock);
    QCOMPARE(saved.FlowH.AvgPathImages, 12);
    Window->ClickTab(HorizontalTab);
    Tab(HorizontalTab).Type("spinBoxAvgFrames", 7);
    Tab(HorizontalTab).Click("pushButtonCalc");
    QCOMPARE(path.Base.WindowLength, std::uint64_t{15});
}

/** The lists, other than the fields, go by the path and so to the record that it follows. */
void GraphTabSettingsTest::ListsOfAnAxisThatFollows()
{
    Project project = DefaultProject();
    project.UseFlowVSettings = false;
    project.FlowH.IgnoreSections = {{1, 3, 0.0}};
    project.FlowV.IgnoreSections = {{5, 9, 0.0}};
    OpenWindowOn(project);
    ShowAPath();
    Window->ClickTab(VerticalTab);
    QCOMPARE(Tab(VerticalTab).Rows(LocalTree), QStringList("1,3,0"));
    Tab(VerticalTab).AddIgnore(LocalTree, 6, 8);
    Window->ClickTab(HorizontalTab);
    QCOMPARE(Tab(HorizontalTab).Rows(LocalTree), (QStringList{"1,3,0", "6,8,0"}));
}

void GraphTabSettingsTest::RotationIsCommittedInRadians()
{
    Window->ClickTab(RotationTab);
    Tab(RotationTab).Type("doubleSpinBoxStartVal", 90);
    Tab(RotationTab).SetBox("checkBoxStartVal", true);
    QVERIFY(PathRotation.Settings->StartValue == 0.0);
    Tab(RotationTab).Click("pushButtonCalc");
    QVERIFY(PathRotation.Settings->UseStartValue);
    QVERIFY(PathRotation.Settings->StartValue == 1.5707963267948966);
    QVERIFY(PathRotationDegrees.Settings->StartValue == 90.0);
}

void GraphTabSettingsTest::EveryJobStateUpdatesTheGraphs_data()
{
    QTest::addColumn<int>("state");
    for (int state = 0; state <= 11; ++state)
    {
        QTest::addRow("state %d", state) << state;
    }
}

/** An update shows in that the mouse pans again; after state 0 alone there is nothing to see. */
void GraphTabSettingsTest::EveryJobStateUpdatesTheGraphs()
{
    QFETCH(int, state);
    ShowAPath();
    for (int tab : GraphTabs)
    {
        Window->ClickTab(tab);
        Tab(tab).ChooseMouse(3);
    }
    (*Window)->ProcessUpdate(state);
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Find<QComboBox>("comboBoxGraphMouse")->currentIndex(), 0);
        QCOMPARE(Tab(tab).Curves().isEmpty(), state == JobNone);
    }
}

void GraphTabSettingsTest::OtherProject_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QVector<int>>("strengths");  // per axis, afterwards
    QTest::newRow("open") << QByteArray("actionopen_project") << QVector<int>{31, 32, 33};
    QTest::newRow("new") << QByteArray("actionnew_project") << QVector<int>{12, 12, 5};
    QTest::newRow("save as") << QByteArray("actionsave_project_as") << QVector<int>{21, 12, 5};
}

/** Given on a graph tab with a strength typed: what it shows is the project's, without a path. */
void GraphTabSettingsTest::OtherProject()
{
    QFETCH(QByteArray, command);
    QFETCH(QVector<int>, strengths);
    Project other = DefaultProject();
    other.FlowH.AvgPathImages = 31;
    other.FlowV.AvgPathImages = 32;
    other.FlowAngle.AvgPathImages = 33;
    other.Save(InHome("Other.mvprj"));
    ShowAPath();
    Window->ClickTab(HorizontalTab);
    Tab(HorizontalTab).Type("spinBoxAvgFrames", 21);
    const char* typed = command == "actionopen_project" ? "Other.mvprj" : "Trip";
    const AnswerModal question(QMessageBox::No);
    const auto dialog = AnswerModal::FileDialog(InHome(typed));
    Window->Find<QAction>(command.constData())->trigger();
    QVERIFY(question.WasAnswered() && dialog.WasAnswered());
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Curves(), QStringList());
        QCOMPARE(Tab(tab).Number("spinBoxAvgFrames"), double(strengths.at(tab - HorizontalTab)));
        QCOMPARE(RecordOfTab(tab).AvgPathImages, strengths.at(tab - HorizontalTab));
        QVERIFY(!PathOfTab(tab).HasValidData());
    }
    Tab(HorizontalTab).Type("spinBoxAvgFrames", 44);
    Window->ClickTab(VerticalTab);
    QCOMPARE(RecordOfTab(HorizontalTab).AvgPathImages, 44);
}

/** What was committed from one tab shows on all the others without a visit. */
void GraphTabSettingsTest::SaveAsShowsOnAllTabs()
{
    Window->ClickTab(HorizontalTab);
    Tab(HorizontalTab).Type("doubleSpinBoxCrop", 150);
    const AnswerModal question(QMessageBox::No);
    const auto dialog = AnswerModal::FileDialog(InHome("Trip"));
    Window->Find<QAction>("actionsave_project_as")->trigger();
    QVERIFY(question.WasAnswered() && dialog.WasAnswered());
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Number("doubleSpinBoxCrop"), 150.0);
    }
    QCOMPARE(Window->Number("doubleSpinBoxZoom"), 150.0);
    QCOMPARE(ReadProject(InHome("Trip/Trip.mvprj")).ExportSettings.CropFactor, 1.5);
}

void GraphTabSettingsTest::Closing_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<int>("saved");
    QTest::newRow("horizontal, saved") << int(HorizontalTab) << QMessageBox::Yes << 21;
    QTest::newRow("vertical, saved") << int(VerticalTab) << QMessageBox::Yes << 21;
    QTest::newRow("rotation, saved") << int(RotationTab) << QMessageBox::Yes << 21;
    QTest::newRow("horizontal, not saved") << int(HorizontalTab) << QMessageBox::No << 12;
    QTest::newRow("vertical, not saved") << int(VerticalTab) << QMessageBox::No << 12;
    QTest::newRow("rotation, not saved") << int(RotationTab) << QMessageBox::No << 5;
}

void GraphTabSettingsTest::Closing()
{
    QFETCH(int, tab);
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(int, saved);
    ShowAPath();
    Window->ClickTab(tab);
    Tab(tab).Type("spinBoxAvgFrames", 21);
    const AnswerModal question(answer);
    QVERIFY((*Window)->close());
    QVERIFY(question.WasAnswered());
    Window->End();
    const Project project = ReadProject(StartProject());
    const AxisFilterSettings* const records[] = {&project.FlowH, &project.FlowV,
                                                 &project.FlowAngle};
    QCOMPARE(records[tab - HorizontalTab]->AvgPathImages, saved);
}

void GraphTabSettingsTest::CancelledClosing()
{
    ShowAPath();
    Window->ClickTab(VerticalTab);
    Tab(VerticalTab).Type("spinBoxAvgFrames", 21);
    const AnswerModal question(QMessageBox::Cancel);
    QVERIFY(!(*Window)->close());
    QVERIFY(question.WasAnswered());
    QVERIFY((*Window)->isVisible());
    QCOMPARE(Tab(VerticalTab).Number("spinBoxAvgFrames"), 21.0);
    QVERIFY(!Tab(VerticalTab).Curves().isEmpty());
    QCOMPARE(ReadProject(StartProject()).FlowV.AvgPathImages, 12);
}
