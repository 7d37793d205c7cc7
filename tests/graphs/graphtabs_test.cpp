// SPDX-License-Identifier: MIT
#include "graphs/graphtabs.h"

#include "app/jobclips.h"
#include "dialogs/dialogguard.h"
#include "stabilizer/camerapath.h"
#include "support/doublelists.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <qwt_plot.h>

#include <QDir>
#include <QTest>
#include <QTreeWidget>

#include <algorithm>

namespace
{
const TestHome Home;

constexpr const char* LocalTree = "treeWidgetIgnore";
constexpr const char* GlobalTree = "treeWidgetGlobalIgnore";
constexpr const char* ManualTree = "treeWidgetManualPathList";

bool AreZero(const QVector<double>& values, int first, int end)
{
    return std::all_of(values.begin() + first, values.begin() + end,
                       [](double value) { return value == 0.0; });
}
}  // namespace

void GraphTabsTest::initTestCase()
{
    Short = Clips.filePath(QStringLiteral("short.avi"));
    Long = Clips.filePath(QStringLiteral("long.avi"));
    QVERIFY(WriteShortClip(Short));
    QVERIFY(WriteLongClip(Long));
}

void GraphTabsTest::init()
{
    QDir(Home.Path(QStringLiteral("Molvane"))).removeRecursively();
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    Window = std::make_unique<TestWindow>();
    Window->SetPaths(Short, Directory->path());
}

void GraphTabsTest::cleanup()
{
    Window.reset();
    Directory.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void GraphTabsTest::Analyse() const
{
    Window->Click("pushButtonAnalyseTrack");
    WaitForIdle();
}

void GraphTabsTest::WaitForIdle() const
{
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
}

void GraphTabsTest::AnalyseAndCalculate() const
{
    Analyse();
    Window->Click("pushButtonCalculateTrack");
}

void GraphTabsTest::AxisTitles_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("title");
    QTest::newRow("horizontal") << 1 << "right <- Horizontal pixel movement -> left";
    QTest::newRow("vertical") << 2 << "down <- Vertical pixel movement -> up";
    QTest::newRow("rotation") << 3 << QStringLiteral("Rotation in 360°");
}

void GraphTabsTest::AxisTitles()
{
    QFETCH(int, tab);
    QFETCH(QString, title);
    Window->ClickTab(tab);
    QVERIFY(Tab(tab).Plot()->isVisible());
    QCOMPARE(Tab(tab).Plot()->axisTitle(QwtPlot::yLeft).text(), title);
    QCOMPARE(Tab(tab).Plot()->axisTitle(QwtPlot::xBottom).text(), QStringLiteral("Frame No."));
}

void GraphTabsTest::EmptyUntilTheCalculation()
{
    for (int tab : GraphTabs)
    {
        Window->ClickTab(tab);
        QCOMPARE(Tab(tab).Curves(), NoCurves);
    }
    Window->ClickTab(SettingsTab);
    Analyse();
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Curves(), NoCurves);
        Window->ClickTab(tab);
        QCOMPARE(Tab(tab).Curves(), NoCurves);
    }
}

void GraphTabsTest::CalculationShowsOnAllTabs_data()
{
    QTest::addColumn<int>("from");
    QTest::newRow("from the settings") << int(SettingsTab);
    QTest::newRow("from the horizontal tab") << int(HorizontalTab);
    QTest::newRow("from the vertical tab") << int(VerticalTab);
    QTest::newRow("from the rotation tab") << int(RotationTab);
}

void GraphTabsTest::CalculationShowsOnAllTabs()
{
    QFETCH(int, from);
    Analyse();
    if (from == SettingsTab)
    {
        Window->Click("pushButtonCalculateTrack");
    }
    else
    {
        Window->ClickTab(from);
        Tab(from).Click("pushButtonCalc");
    }
    for (int tab : GraphTabs)
    {
        const CameraPath& path = PathOfTab(tab);
        QCOMPARE(Tab(tab).Curves(), UsualCurves);
        QCOMPARE(Tab(tab).Values("Shakiness Path").size(), ShortFrames);
        QCOMPARE(Difference(Tab(tab).Values("Shakiness Path"), path.ShakinessPath), QString());
        QCOMPARE(Difference(Tab(tab).Values("Modified Path"), path.ModifiedPath), QString());
        QCOMPARE(Difference(Tab(tab).Values("Smoothed Path"), path.Result.Path), QString());
    }
    QVERIFY(Tab(HorizontalTab).Values("Shakiness Path") !=
            Tab(VerticalTab).Values("Shakiness Path"));
}

void GraphTabsTest::FewFrames_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<QStringList>("curves");
    QTest::newRow("4 frames leave the plots empty") << 4 << QStringList();
    QTest::newRow("5 frames show")
        << 5 << QStringList{"Shakiness Path", "Modified Path", "Smoothed Path"};
}

void GraphTabsTest::FewFrames()
{
    QFETCH(int, frames);
    QFETCH(QStringList, curves);
    const QString clip = Directory->filePath(QStringLiteral("few.avi"));
    QVERIFY(!TestVideo::WriteStreetClip(clip, {ClipWidth, ClipHeight, frames, ClipFps}).empty());
    Window->SetText("lineEditSourceVideo", clip);
    AnalyseAndCalculate();
    for (int tab : GraphTabs)
    {
        QCOMPARE(PathOfTab(tab).DetectedShakiness.size(), frames);
        QCOMPARE(PathOfTab(tab).HasValidData(), !curves.isEmpty());
        Window->ClickTab(tab);
        QCOMPARE(Tab(tab).Curves(), curves);
    }
    QCOMPARE(PathRotation.HasValidData(), !curves.isEmpty());
}

void GraphTabsTest::EveryTabCalculates_data()
{
    AddGraphTabRows();
}

void GraphTabsTest::EveryTabCalculates()
{
    QFETCH(int, tab);
    AnalyseAndCalculate();
    Window->ClickTab(tab);
    const QVector<double> before = Tab(tab).Values("Smoothed Path");
    Tab(tab).Type("spinBoxAvgFrames", 40);
    QCOMPARE(Tab(tab).Values("Smoothed Path"), before);
    Tab(tab).Click("pushButtonCalc");
    QCOMPARE(Calculations(), 2);
    QCOMPARE(PathOfTab(tab).Base.WindowLength, std::uint64_t{81});  // twice 40 and the frame itself
    const QVector<double> after = Tab(tab).Values("Smoothed Path");
    QCOMPARE(Difference(after, PathOfTab(tab).Result.Path), QString());
    QVERIFY(after != before);
    QCOMPARE(Window->Word(), QStringLiteral("IDLE"));
    QVERIFY(Window->IsEnabled("pushButtonExportVideo"));
}

void GraphTabsTest::CalculationIsOnBeforeAnyJob()
{
    QVERIFY(!Window->IsEnabled("pushButtonCalculateTrack"));
    Window->ClickTab(VerticalTab);
    Tab(VerticalTab).Type("spinBoxAvgFrames", 40);
    Tab(VerticalTab).Click("pushButtonCalc");
    QTRY_VERIFY(Window->Log().contains(QStringLiteral("Error    No data to smooth!")));
    QCOMPARE(PathVertical.Base.WindowLength, std::uint64_t{81});
    QCOMPARE(Tab(VerticalTab).Curves(), NoCurves);
    QVERIFY(Window->IsEnabled("pushButtonCalculateTrack"));  // the window shows a calculated path
}

void GraphTabsTest::LocalBoxRecalculates_data()
{
    AddGraphTabRows();
}

void GraphTabsTest::LocalBoxRecalculates()
{
    QFETCH(int, tab);
    AnalyseAndCalculate();
    Window->ClickTab(tab);
    Tab(tab).AddIgnore(LocalTree, 2, 5);
    Tab(tab).SetBox("checkBoxDeviation", true);
    QVERIFY(!AreZero(Tab(tab).Values("Used Shakiness"), 2, 5));  // drawing alone changes no path
    Tab(tab).SetBox("checkBoxEnIgnSections", false);
    QCOMPARE(Calculations(), 2);
    QCOMPARE(Tab(tab).Rows(LocalTree), QStringList("2,5,0"));
    QCOMPARE(Difference(Tab(tab).Values("Used Shakiness"), Tab(tab).Values("Detected Shakiness")),
             QString());
    const QVector<double> whole = Tab(tab).Values("Shakiness Path");
    Tab(tab).SetBox("checkBoxEnIgnSections", true);
    QCOMPARE(Calculations(), 3);
    QVERIFY(AreZero(Tab(tab).Values("Used Shakiness"), 2, 5));
    QVERIFY(!AreZero(Tab(tab).Values("Used Shakiness"), 5, 6));  // counts again
    const QVector<double> shown = Tab(tab).Values("Shakiness Path");
    QVERIFY(shown != whole);
    QCOMPARE(shown.at(4), shown.at(1));
    for (int other : GraphTabs)
    {
        if (other != tab)
        {
            QVERIFY(!AreZero(PathOfTab(other).UsedShakiness, 2, 5));
        }
    }
}

void GraphTabsTest::GlobalBoxRecalculatesAllAxes_data()
{
    AddGraphTabRows();
}

void GraphTabsTest::GlobalBoxRecalculatesAllAxes()
{
    QFETCH(int, tab);
    AnalyseAndCalculate();
    Window->ClickTab(tab);
    Tab(tab).AddIgnore(GlobalTree, 3, 6);
    Tab(tab).Click("checkBoxEnIgnSectionsGlobal");
    QVERIFY(!Tab(tab).IsChecked("checkBoxEnIgnSectionsGlobal"));
    QCOMPARE(Calculations(), 2);
    QVERIFY(!AreZero(PathOfTab(tab).UsedShakiness, 3, 6));
    Tab(tab).Click("checkBoxEnIgnSectionsGlobal");
    QCOMPARE(Calculations(), 3);
    for (int other : GraphTabs)
    {
        const QVector<double> shown = Tab(other).Values("Shakiness Path");
        QVERIFY(AreZero(PathOfTab(other).UsedShakiness, 3, 6));
        QCOMPARE(shown.at(5), shown.at(2));
    }
    QVERIFY(AreZero(PathRotation.UsedShakiness, 3, 6));
    Tab(tab).SetBox("checkBoxEnIgnSectionsGlobal", false);
    QCOMPARE(Calculations(), 4);
    for (int other : GraphTabs)
    {
        const CameraPath& path = PathOfTab(other);
        QCOMPARE(Difference(path.UsedShakiness, path.DetectedShakiness), QString());
        QCOMPARE(Difference(Tab(other).Values("Shakiness Path"), path.ShakinessPath), QString());
    }
    QCOMPARE(Tab(tab).Rows(GlobalTree), QStringList("3,6,0"));  // kept for the next time
}

void GraphTabsTest::ManualBoxRecalculates_data()
{
    AddGraphTabRows();
}

void GraphTabsTest::ManualBoxRecalculates()
{
    QFETCH(int, tab);
    AnalyseAndCalculate();
    Window->ClickTab(tab);
    Tab(tab).ChooseFromTree(ManualTree, "Start Flat In Section");
    QTreeWidgetItem* section = Tab(tab).Find<QTreeWidget>(ManualTree)->topLevelItem(0);
    Tab(tab).TypeIntoCell(ManualTree, section->child(0), 0, QStringLiteral("2"));
    Tab(tab).TypeIntoCell(ManualTree, section->child(0), 1, QStringLiteral("5"));
    Tab(tab).TypeIntoCell(ManualTree, section->child(1), 0, QStringLiteral("6"));
    Tab(tab).TypeIntoCell(ManualTree, section->child(1), 1, QStringLiteral("15"));
    Tab(tab).SetBox("checkBoxEnManualCorrect", false);
    QCOMPARE(Calculations(), 2);
    QCOMPARE(Tab(tab).Curves(), (QStringList{"Shakiness Path", "Smoothed Path"}));
    const QVector<double> smooth = Tab(tab).Values("Smoothed Path");
    Tab(tab).SetBox("checkBoxEnManualCorrect", true);
    QCOMPARE(Calculations(), 3);
    QCOMPARE(Tab(tab).Curves(), UsualCurves);
    const QVector<double> drawn = Tab(tab).Values("Modified Path");
    QCOMPARE(drawn.mid(2, 5), (QVector<double>{5.0, 7.5, 10.0, 12.5, 15.0}));
    QCOMPARE(drawn.at(1), Tab(tab).Values("Shakiness Path").at(1));
    QCOMPARE(drawn.at(7), Tab(tab).Values("Shakiness Path").at(7));
    QVERIFY(Tab(tab).Values("Smoothed Path") != smooth);
}

void GraphTabsTest::FramePastTheEnd()
{
    AnalyseAndCalculate();
    Window->ClickTab(HorizontalTab);
    const GraphTab tab = Tab(HorizontalTab);
    tab.ChooseFromTree(ManualTree, "Start Flat In Section");
    QTreeWidgetItem* section = tab.Find<QTreeWidget>(ManualTree)->topLevelItem(0);
    tab.TypeIntoCell(ManualTree, section->child(0), 1, QStringLiteral("4"));
    tab.TypeIntoCell(ManualTree, section->child(1), 0, QStringLiteral("1000000"));
    tab.TypeIntoCell(ManualTree, section->child(1), 1, QStringLiteral("26"));
    tab.Click("pushButtonCalc");
    QCOMPARE(tab.Rows(ManualTree), (QStringList{"[0:11],Section", "0,4", "11,26"}));
    QVector<double> line;
    for (int i = 0; i < ShortFrames; ++i)
    {
        line.append(4.0 + 2.0 * i);  // from 4 to 26 over 11 frames
    }
    QCOMPARE(Difference(tab.Values("Modified Path"), line, 1e-12), QString());
}

void GraphTabsTest::RowsOfOneFrame()
{
    AnalyseAndCalculate();
    Window->ClickTab(VerticalTab);
    const GraphTab tab = Tab(VerticalTab);
    tab.ChooseFromTree(ManualTree, "Start Flat In Section");
    QTreeWidgetItem* section = tab.Find<QTreeWidget>(ManualTree)->topLevelItem(0);
    for (int row : {0, 1})
    {
        tab.TypeIntoCell(ManualTree, section->child(row), 0, QStringLiteral("3"));
    }
    tab.TypeIntoCell(ManualTree, section->child(0), 1, QStringLiteral("8"));
    tab.TypeIntoCell(ManualTree, section->child(1), 1, QStringLiteral("9"));
    tab.Click("pushButtonCalc");
    QCOMPARE(tab.Rows(ManualTree), (QStringList{"[3:3],Section", "3,8"}));
    QCOMPARE(PathVertical.ModifiedPath.at(3), 8.0);
}

void GraphTabsTest::RotationPathTurnsNoFrame()
{
    AnalyseAndCalculate();
    Window->ClickTab(RotationTab);
    const QVector<double> correction = PathRotation.Result.Correction;
    const GraphTab tab = Tab(RotationTab);
    tab.ChooseFromTree(ManualTree, "Start Flat In Section");
    QTreeWidgetItem* section = tab.Find<QTreeWidget>(ManualTree)->topLevelItem(0);
    tab.TypeIntoCell(ManualTree, section->child(0), 1, QStringLiteral("45"));
    tab.Click("pushButtonCalc");
    QCOMPARE(tab.Values("Modified Path").at(0), 45.0);
    QCOMPARE(PathRotationDegrees.ModifiedPath.at(0), 45.0);
    QCOMPARE(Difference(PathRotation.ModifiedPath, PathRotation.ShakinessPath, 1e-12), QString());
    QCOMPARE(Difference(PathRotation.Result.Correction, correction), QString());
}

QTEST_MAIN(GraphTabsTest)
