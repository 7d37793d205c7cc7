// SPDX-License-Identifier: MIT
#include "graphs/graphwindowtest.h"
#include "graphs/treehands.h"

#include <QDoubleSpinBox>
#include <QTest>

namespace
{
constexpr int Frames = 20;
}  // namespace

void GraphWindowTest::SaveTakesTypedNumbers()
{
    Tab->Window.LoadSettings();
    Tab->Show();
    Tab->Type("spinBoxAvgFrames", QStringLiteral("77"));
    Tab->Type("spinBoxAvgOrder", QStringLiteral("2"));
    Tab->Type("doubleSpinBoxStartVal", QStringLiteral("-1234"));
    Tab->Type("doubleSpinBoxEndVal", QStringLiteral("4321"));
    Tab->Type("doubleSpinBoxCrop",
              QStringLiteral("112") + Tab->Window.locale().decimalPoint() + QLatin1Char('5'));
    QCOMPARE(Proj().FlowV.AvgPathImages, 12);
    Tab->Window.SaveSettings();
    QCOMPARE(Proj().FlowV.AvgPathImages, 77);
    QCOMPARE(Proj().FlowV.AvgPathOrder, 2);
    QCOMPARE(Proj().FlowV.StartValue, -1234.0);
    QCOMPARE(Proj().FlowV.EndValue, 4321.0);
    QCOMPARE(Proj().ExportSettings.CropFactor, 1.125);
    QCOMPARE(Proj().FlowH.AvgPathImages, 12);  // of the path, not of the tab
    QCOMPARE(Proj().FlowH.AvgPathOrder, 3);
    QCOMPARE(Proj().FlowH.StartValue, 0.0);
    QCOMPARE(Proj().FlowH.EndValue, 0.0);
}

void GraphWindowTest::SaveTakesTheBoxes()
{
    QFETCH(bool, otherBoxes);
    const AxisFilterSettings ofThePath = Proj().FlowH;
    for (const BoxField& field : BoxFields)
    {
        Tab->Box(field.Box)->setChecked(IsOnInRow(field.Box, otherBoxes));
        field.Field(Proj()) = !IsOnInRow(field.Box, otherBoxes);
    }
    Tab->Window.SaveSettings();
    for (const BoxField& field : BoxFields)
    {
        QVERIFY2(field.Field(Proj()) == IsOnInRow(field.Box, otherBoxes), field.Box);
    }
    QCOMPARE(Proj().FlowH.Lock, ofThePath.Lock);
    QCOMPARE(Proj().FlowH.UseStartValue, ofThePath.UseStartValue);
    QCOMPARE(Proj().FlowH.UseEndValue, ofThePath.UseEndValue);
    QCOMPARE(Proj().FlowH.EnableIgnoreSections, ofThePath.EnableIgnoreSections);
    QCOMPARE(Proj().FlowH.EnableManualPath, ofThePath.EnableManualPath);
}

void GraphWindowTest::MarginOfIgnoredFramesIsWiredToNothing()
{
    Proj().FlowV.IgnoreStartFramesMargin = 8;
    Proj().FlowV.UseModified = true;
    Tab->Show();
    Tab->Type("spinBoxIgnMargin", QStringLiteral("300"));
    Tab->Window.SaveSettings();
    QCOMPARE(Proj().FlowV.IgnoreStartFramesMargin, 8);
    QCOMPARE(Proj().FlowH.IgnoreStartFramesMargin, 5);
    Tab->Window.LoadSettings();
    QCOMPARE(Tab->Number("spinBoxIgnMargin"), 300.0);
    QVERIFY(Proj().FlowV.UseModified);  // which has no widget
}

void GraphWindowTest::SaveGivesTheListsToThePath()
{
    FillLists(Proj());
    Tab->Setup.Generate(SteadyMotion(Frames, 1.0));
    Tab->Window.LoadSettings();
    Tab->Tree("treeWidgetGlobalIgnore").topLevelItem(0)->setText(1, QStringLiteral("-1"));
    Tab->Tree("treeWidgetIgnore").topLevelItem(0)->setText(1, QStringLiteral("-1"));
    Tab->Tree("treeWidgetManualPathList").topLevelItem(0)->child(0)->setText(0, "11");
    Tab->Window.SaveSettings();
    QCOMPARE(Spans(Proj().GlobalIgnoreSections), QStringList{"1,20"});
    QCOMPARE(Spans(Proj().FlowH.IgnoreSections), QStringList{"3,20"});
    QCOMPARE(Points(Proj().FlowH.ManualPath), QStringList{"11:1.5"});
    QCOMPARE(Spans(Proj().FlowV.IgnoreSections), QStringList{"5,6"});
    QCOMPARE(Points(Proj().FlowV.ManualPath), QStringList{"9:2.5"});
    QCOMPARE(TreeHands::Rows(Tab->Tree("treeWidgetIgnore")), QStringList{"     3|    20|   0"});
}

void GraphWindowTest::SaveBeforeAnAnalysisKeepsTheLists()
{
    FillLists(Proj());
    Tab->Window.LoadSettings();
    Tab->Tree("treeWidgetGlobalIgnore").topLevelItem(0)->setText(1, QStringLiteral("-1"));
    Tab->Tree("treeWidgetIgnore").topLevelItem(0)->setText(1, QStringLiteral("x"));
    Tab->Tree("treeWidgetManualPathList").topLevelItem(0)->child(0)->setText(0, "11");
    Tab->Window.SaveSettings();
    QCOMPARE(Spans(Proj().GlobalIgnoreSections), QStringList{"1,2"});
    QCOMPARE(Spans(Proj().FlowH.IgnoreSections), QStringList{"3,4"});
    QCOMPARE(Points(Proj().FlowH.ManualPath), QStringList{"7:1.5"});
    QCOMPARE(TreeHands::Rows(Tab->Tree("treeWidgetIgnore")), QStringList{"     3|x|   0"});
    QCOMPARE(Tab->Tree("treeWidgetManualPathList").topLevelItem(0)->child(0)->text(0),
             QStringLiteral("11"));
}

/** The working copies of the lists are what is stored, and they are empty at first. */
void GraphWindowTest::SaveBeforeTheFirstLoadEmptiesTheLists()
{
    FillLists(Proj());
    Tab->Window.SaveSettings();
    QVERIFY(Proj().GlobalIgnoreSections.empty());
    QVERIFY(Proj().FlowH.IgnoreSections.empty());
    QVERIFY(Proj().FlowH.ManualPath.empty());
    QCOMPARE(Proj().FlowV.AvgPathImages, 50);  // as the form says
}

void GraphWindowTest::SaveOfAPathWithoutSettings()
{
    FillLists(Proj());
    CameraPath unbound(true);
    GraphWindow window(&Proj(), &unbound, QString(), &Proj().FlowV);
    window.LoadAndPlot();
    QCOMPARE(window.findChild<QTreeWidget*>("treeWidgetManualPathList")->topLevelItemCount(), 0);
    window.findChild<QSpinBox*>("spinBoxAvgFrames")->setValue(44);
    window.SaveSettings();
    QCOMPARE(Proj().FlowV.AvgPathImages, 44);
    QCOMPARE(Spans(Proj().FlowV.IgnoreSections), QStringList{"5,6"});
    QCOMPARE(Points(Proj().FlowV.ManualPath), QStringList{"9:2.5"});
}

void GraphWindowTest::SaveEmptiesTheManualPath()
{
    FillLists(Proj());
    Tab->Setup.Generate(SteadyMotion(Frames, 1.0));
    Tab->Window.LoadSettings();
    Tab->Window.ClearAllSections();
    QCOMPARE(Points(Proj().FlowH.ManualPath), QStringList{"7:1.5"});
    Tab->Window.SaveSettings();
    QVERIFY(Proj().FlowH.ManualPath.empty());
}
