// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "graphs/graphwindowtest.h"
#include "graphs/treehands.h"
#include "support/testhome.h"

#include <QComboBox>
#include <QTest>

#include <qwt_plot_panner.h>

#include <limits>

namespace
{
const TestHome Home;

constexpr int Frames = 20;
constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();

void SetNumber(Project& project, const QByteArray& field, double value)
{
    if (field == "spinBoxAvgFrames")
    {
        project.FlowV.AvgPathImages = static_cast<int>(value);
    }
    else if (field == "spinBoxAvgOrder")
    {
        project.FlowV.AvgPathOrder = static_cast<int>(value);
    }
    else if (field == "doubleSpinBoxStartVal")
    {
        project.FlowV.StartValue = value;
    }
    else if (field == "doubleSpinBoxEndVal")
    {
        project.FlowV.EndValue = value;
    }
    else
    {
        project.ExportSettings.CropFactor = value;
    }
}

double NumberOf(const Project& project, const QByteArray& field)
{
    return field == "spinBoxAvgFrames"        ? project.FlowV.AvgPathImages
           : field == "spinBoxAvgOrder"       ? project.FlowV.AvgPathOrder
           : field == "doubleSpinBoxStartVal" ? project.FlowV.StartValue
           : field == "doubleSpinBoxEndVal"   ? project.FlowV.EndValue
                                              : project.ExportSettings.CropFactor;
}
}  // namespace

void GraphWindowTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Tab = std::make_unique<AxisTab>();
}

void GraphWindowTest::cleanup()
{
    Tab.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

void GraphWindowTest::LoadShowsTheTabsOwnNumbers()
{
    Proj().FlowV.AvgPathImages = 33;
    Proj().FlowV.AvgPathOrder = 4;
    Proj().FlowV.StartValue = -40.0;
    Proj().FlowV.EndValue = 60000.0;
    Proj().ExportSettings.CropFactor = 1.25;
    Tab->Window.LoadSettings();
    QCOMPARE(Tab->Number("spinBoxAvgFrames"), 33.0);
    QCOMPARE(Tab->Number("spinBoxAvgOrder"), 4.0);
    QCOMPARE(Tab->Number("doubleSpinBoxStartVal"), -40.0);
    QCOMPARE(Tab->Number("doubleSpinBoxEndVal"), 60000.0);
    QCOMPARE(Tab->Number("doubleSpinBoxCrop"), 125.0);
}

void GraphWindowTest::LoadTicksTheBoxes()
{
    QFETCH(bool, otherBoxes);
    for (const BoxField& field : BoxFields)
    {
        field.Field(Proj()) = IsOnInRow(field.Box, otherBoxes);
    }
    Tab->Window.LoadSettings();
    for (const BoxField& field : BoxFields)
    {
        QVERIFY2(Tab->Box(field.Box)->isChecked() == IsOnInRow(field.Box, otherBoxes), field.Box);
    }
}

void GraphWindowTest::NumbersAreHeldToTheirRange_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<double>("stored");
    QTest::addColumn<double>("shown");
    QTest::addColumn<double>("saved");
    const auto add = [](const char* name, const char* field, double stored, double shown)
    { QTest::newRow(name) << QByteArray(field) << stored << shown << shown; };
    add("a depth of 2 becomes 3", "spinBoxAvgFrames", 2, 3);
    add("a depth of 3 stays", "spinBoxAvgFrames", 3, 3);
    add("a depth of 500 stays", "spinBoxAvgFrames", 500, 500);
    add("a depth of 501 becomes 500", "spinBoxAvgFrames", 501, 500);
    add("a type of 0 becomes 1", "spinBoxAvgOrder", 0, 1);
    add("a type of 6 becomes 5", "spinBoxAvgOrder", 6, 5);
    add("a start far below", "doubleSpinBoxStartVal", -1e300, -150000);
    add("a start just above", "doubleSpinBoxStartVal", 150001, 150000);
    add("a start loses its decimals", "doubleSpinBoxStartVal", 12.4, 12);
    add("an end just below", "doubleSpinBoxEndVal", -150001, -150000);
    add("an infinite end", "doubleSpinBoxEndVal", Infinite, 150000);
    add("an end loses its decimals", "doubleSpinBoxEndVal", -12.6, -13);
    const auto addCrop = [](const char* name, double stored, double shown, double saved)
    { QTest::newRow(name) << QByteArray("doubleSpinBoxCrop") << stored << shown << saved; };
    addCrop("a crop factor of 0", 0.0, 1.0, 0.01);
    addCrop("a crop factor below 0", -2.0, 1.0, 0.01);
    addCrop("a crop factor of 8 stays", 8.0, 800.0, 8.0);
    addCrop("a crop factor of 9 becomes 8", 9.0, 800.0, 8.0);
    addCrop("an infinite crop factor becomes 8", Infinite, 800.0, 8.0);
    addCrop("a crop factor of 1.1 comes back as it was", 1.1, 110.0, 1.1);
    addCrop("a crop factor of 1.15 comes back, being divided by 100", 1.15, 115.0, 1.15);
}

void GraphWindowTest::NumbersAreHeldToTheirRange()
{
    QFETCH(QByteArray, field);
    QFETCH(double, stored);
    QFETCH(double, shown);
    QFETCH(double, saved);
    SetNumber(Proj(), field, stored);
    Tab->Window.LoadSettings();
    QCOMPARE(Tab->Number(field), shown);
    QCOMPARE(NumberOf(Proj(), field), stored);
    Tab->Window.SaveSettings();
    QVERIFY(NumberOf(Proj(), field) == saved);
}

void GraphWindowTest::WhatIsNoNumberLandsInTheRange_data()
{
    QTest::addColumn<double>("smallest");
    QTest::addColumn<double>("largest");
    QTest::newRow("doubleSpinBoxStartVal") << -150000.0 << 150000.0;
    QTest::newRow("doubleSpinBoxEndVal") << -150000.0 << 150000.0;
    QTest::newRow("doubleSpinBoxCrop") << 0.01 << 8.0;
}

void GraphWindowTest::WhatIsNoNumberLandsInTheRange()
{
    QFETCH(double, smallest);
    QFETCH(double, largest);
    SetNumber(Proj(), QTest::currentDataTag(), NoNumber);
    Tab->Window.LoadSettings();
    Tab->Window.SaveSettings();
    const double saved = NumberOf(Proj(), QTest::currentDataTag());
    QVERIFY2(saved >= smallest && saved <= largest, qPrintable(QString::number(saved)));
}

void GraphWindowTest::LoadShowsTheListsOfThePath()
{
    FillLists(Proj());
    Tab->Window.LoadSettings();
    QCOMPARE(TreeHands::Rows(Tab->Tree("treeWidgetGlobalIgnore")),
             QStringList{"     1|     2|   0"});
    QCOMPARE(TreeHands::Rows(Tab->Tree("treeWidgetIgnore")), QStringList{"     3|     4|   0"});
    const QTreeWidget& manual = Tab->Tree("treeWidgetManualPathList");
    QCOMPARE(manual.topLevelItemCount(), 1);
    QCOMPARE(manual.topLevelItem(0)->childCount(), 1);
    QCOMPARE(manual.topLevelItem(0)->child(0)->text(0), QStringLiteral("     7"));
    QCOMPARE(manual.topLevelItem(0)->child(0)->text(1), QStringLiteral("   1.5"));
}

void GraphWindowTest::LoadTwiceShowsTheListsOnce()
{
    FillLists(Proj());
    Tab->Window.LoadSettings();
    Proj().FlowH.ManualPath = {OnePoint(8, 0.0)};
    Tab->Window.LoadSettings();
    QCOMPARE(Tab->Tree("treeWidgetGlobalIgnore").topLevelItemCount(), 1);
    QCOMPARE(Tab->Tree("treeWidgetIgnore").topLevelItemCount(), 1);
    QCOMPARE(Tab->Tree("treeWidgetManualPathList").topLevelItemCount(), 1);
    QCOMPARE(Tab->Tree("treeWidgetManualPathList").topLevelItem(0)->child(0)->text(0),
             QStringLiteral("     8"));
}

void GraphWindowTest::LoadGoesBackToPanning()
{
    Tab->Show();
    auto* actions = Tab->Find<QComboBox>("comboBoxGraphMouse");
    const auto* panner = Tab->Plot().findChild<QwtPlotPanner*>();
    QTest::keyClick(actions, Qt::Key_End);
    QCOMPARE(actions->currentIndex(), 4);
    QVERIFY(!panner->isEnabled());
    Tab->Window.LoadSettings();
    QCOMPARE(actions->currentIndex(), 0);
    QVERIFY(panner->isEnabled());
}

/** What the fields cannot hold stays in the records until the user's settings are taken. */
void GraphWindowTest::LoadSavesNothing()
{
    Tab->Setup.Generate(SteadyMotion(Frames, 1.0));
    FillLists(Proj());
    Proj().GlobalIgnoreSections = {{9, 2, 0.0}};  // which is no section
    Tab->Window.LoadSettings();
    QCOMPARE(Spans(Proj().GlobalIgnoreSections), QStringList{"9,2"});
    QCOMPARE(TreeHands::Rows(Tab->Tree("treeWidgetGlobalIgnore")),
             QStringList{"     9|     2|   0"});
    Tab->Window.SaveSettings();
    QVERIFY(Proj().GlobalIgnoreSections.empty());
}

QTEST_MAIN(GraphWindowTest)
