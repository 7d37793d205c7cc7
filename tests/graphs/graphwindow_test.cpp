// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "graphs/axistab.h"
#include "graphs/graphwindowsuites.h"
#include "graphs/treehands.h"
#include "support/testhome.h"

#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QTest>

#include <qwt_plot_panner.h>

#include <limits>
#include <memory>

namespace
{
const TestHome Home;

constexpr int Frames = 20;
constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();

/** A check box that stands for a field of the project, and the place of that field. */
struct BoxField
{
    const char* Box;
    bool& (*Field)(Project& project);
};

const BoxField BoxFields[] = {
    {"checkBoxLock", [](Project& p) -> bool& { return p.FlowV.Lock; }},
    {"checkBoxStartVal", [](Project& p) -> bool& { return p.FlowV.UseStartValue; }},
    {"checkBoxEndVal", [](Project& p) -> bool& { return p.FlowV.UseEndValue; }},
    {"checkBoxEnIgnSectionsGlobal", [](Project& p) -> bool& { return p.EnGlobalIgnoreList; }},
    {"checkBoxEnIgnSections", [](Project& p) -> bool& { return p.FlowV.EnableIgnoreSections; }},
    {"checkBoxEnManualCorrect", [](Project& p) -> bool& { return p.FlowV.EnableManualPath; }},
};

/** One row per box: its name. */
void AddBoxes()
{
    QTest::addColumn<bool>("otherBoxes");
    for (const BoxField& field : BoxFields)
    {
        QTest::addRow("%s on, all others off", field.Box) << false;
        QTest::addRow("%s off, all others on", field.Box) << true;
    }
}

/** Whether the row of AddBoxes at hand has that box checked. */
bool IsOnInRow(const char* box, bool otherBoxes)
{
    const QByteArray row = QTest::currentDataTag();
    return row.startsWith(QByteArray(box) + ' ') ? !otherBoxes : otherBoxes;
}

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

ManualPathSection OnePoint(int frame, double value)
{
    ManualPathSection section;
    section.Points = {{frame, value}};
    return section;
}

/** The points of all sections as "frame:value". */
QStringList Points(const std::vector<ManualPathSection>& sections)
{
    QStringList texts;
    for (const ManualPathSection& section : sections)
    {
        for (const ManualPathPoint& point : section.Points)
        {
            texts.append(QStringLiteral("%1:%2").arg(point.FrameNr).arg(point.Value));
        }
    }
    return texts;
}

/** The sections as "start,end". */
QStringList Spans(const std::vector<IgnoreSection>& sections)
{
    QStringList texts;
    for (const IgnoreSection& section : sections)
    {
        texts.append(QStringLiteral("%1,%2").arg(section.Start).arg(section.End));
    }
    return texts;
}

/** Two different lists of each kind: those of FlowH and those of FlowV. */
void FillLists(Project& project)
{
    project.GlobalIgnoreSections = {{1, 2, 0.0}};
    project.FlowH.IgnoreSections = {{3, 4, 0.0}};
    project.FlowV.IgnoreSections = {{5, 6, 0.0}};
    project.FlowH.ManualPath = {OnePoint(7, 1.5)};
    project.FlowV.ManualPath = {OnePoint(9, 2.5)};
}
}  // namespace

/**
 * The settings of a graph tab: what goes from project and path to the widgets and back. The tab is
 * that of FlowV while its path follows FlowH, so that one sees which of the two records counts.
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

/** Three classes, one after the other. @return the number of tests that failed */
int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    GraphWindowTest settings;
    int failures = QTest::qExec(&settings, argc, argv);
    failures += QTest::qExec(NewGraphFormTest().get(), argc, argv);
    failures += QTest::qExec(NewGraphDisplayTest().get(), argc, argv);
    return failures;
}

#include "graphwindow_test.moc"
