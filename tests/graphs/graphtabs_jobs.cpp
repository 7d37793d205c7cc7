// SPDX-License-Identifier: MIT
#include "graphs/graphtabs.h"

#include "app/jobclips.h"
#include "batch/jobstate.h"
#include "stabilizer/camerapath.h"
#include "support/doublelists.h"

#include <QTest>

// The graph tabs while a job runs and when one has ended without a path.

void GraphTabsTest::StartLongAnalysis() const
{
    Window->ClickTab(SettingsTab);
    Window->SetText("lineEditSourceVideo", Long);
    Window->Click("pushButtonAnalyseTrack");
    QVERIFY(QTest::qWaitFor(
        [this] { return Window->LastAction().startsWith(QLatin1String("Frame: ")); }, JobTime));
}

void GraphTabsTest::NoCalculationDuringAJob_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QByteArray>("button");
    const QByteArray button("pushButtonCalc");
    QTest::newRow("horizontal") << int(HorizontalTab) << button;
    QTest::newRow("vertical") << int(VerticalTab) << button;
    QTest::newRow("rotation") << int(RotationTab) << button;
    for (const char* box :
         {"checkBoxEnIgnSectionsGlobal", "checkBoxEnIgnSections", "checkBoxEnManualCorrect"})
    {
        QTest::newRow(box) << int(VerticalTab) << QByteArray(box);
    }
}

void GraphTabsTest::NoCalculationDuringAJob()
{
    QFETCH(int, tab);
    QFETCH(QByteArray, button);
    AnalyseAndCalculate();
    StartLongAnalysis();
    const CameraPath& path = PathOfTab(tab);
    const QVector<double> shown = Tab(tab).Values("Smoothed Path");
    const auto window = path.Base.WindowLength;
    QCOMPARE(shown.size(), ShortFrames);
    Window->ClickTab(tab);
    Tab(tab).Type("spinBoxAvgFrames", 40);
    Tab(tab).Click(button.constData());
    QCOMPARE(Window->Word(), QStringLiteral("BUSY"));
    QVERIFY(Window->IsEnabled("pushButtonAbort"));
    QCOMPARE(path.Base.WindowLength, window);
    QCOMPARE(Difference(path.Result.Path, shown), QString());
    QCOMPARE(Difference(Tab(tab).Values("Smoothed Path"), shown), QString());
    Window->ClickTab(SettingsTab);
    Window->Click("pushButtonAbort");
    WaitForIdle();
    QCOMPARE(Calculations(), 1);
}

/** All that the user can do on the graph tabs while analysis, calculation and export run. */
void GraphTabsTest::HandsOnDuringAJob()
{
    Window->SetText("lineEditSourceVideo", Long);
    Window->Click("pushButtonGenerateAll");
    int clicks = 0;
    int clicksInExport = 0;
    const auto click = [&](const GraphTab& tab, const char* button)
    {
        QCoreApplication::processEvents();
        if (Window->Word() == QLatin1String("BUSY"))
        {
            tab.Click(button);
            ++clicks;
            clicksInExport += Window->LastAction().endsWith(QLatin1String("exported!")) ? 1 : 0;
        }
    };
    for (int round = 0; clicksInExport < 5 && Window->Word() == QLatin1String("BUSY"); ++round)
    {
        const int index = GraphTabs[round % 3];
        const GraphTab tab = Tab(index);
        Window->ClickTab(index);
        tab.SetBox("checkBoxDeviation", true);  // so that there is always a curve
        tab.Type("spinBoxAvgOrder", 1 + round % 5);
        for (const char* button :
             {"checkBoxCamFlow", "checkBoxShowMargin", "checkBoxShowCorrection",
              "checkBoxMarginShadow", "checkBoxTime", "checkBoxZoomDeviation",
              "checkBoxEnIgnSectionsGlobal", "checkBoxEnIgnSections", "checkBoxEnManualCorrect",
              "pushButtonCalc"})
        {
            click(tab, button);
        }
    }
    QVERIFY2(clicks - clicksInExport >= 30, qPrintable(QString::number(clicks)));  // on all tabs
    QVERIFY2(clicksInExport > 0, "the export was over at once");
    Window->ClickTab(SettingsTab);
    Window->Click("pushButtonAbort");
    WaitForIdle();
    QVERIFY(Window->Log().contains(QStringLiteral("Run      Export aborted!")));
    QCOMPARE(Calculations(), 1);  // the job's own
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Values("Detected Shakiness").size(), LongFrames);
    }
}

void GraphTabsTest::FailedJobEmptiesTheGraphs()
{
    AnalyseAndCalculate();
    Window->SetText("lineEditSourceVideo", QStringLiteral("gone.avi"));
    Analyse();
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Curves(), NoCurves);
        Window->ClickTab(tab);
        QCOMPARE(Tab(tab).Curves(), NoCurves);
    }
}

void GraphTabsTest::JobNoneEmptiesTheGraphs()
{
    AnalyseAndCalculate();
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Curves(), UsualCurves);
    }
    (*Window)->ProcessUpdate(JobNone);
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Curves(), NoCurves);
    }
    Window->ClickTab(HorizontalTab);
    Tab(HorizontalTab).Click("pushButtonCalc");  // the motion is still there
    for (int tab : GraphTabs)
    {
        QCOMPARE(Tab(tab).Curves(), UsualCurves);
    }
}

void GraphTabsTest::EndDuringAJob()
{
    AnalyseAndCalculate();
    StartLongAnalysis();
    Window->ClickTab(VerticalTab);
    Tab(VerticalTab).SetBox("checkBoxShowMargin", true);  // which has the plot drawn once more
    QCOMPARE(Tab(VerticalTab).Curves(), UsualCurves + QStringList("Margin"));
    Window->End();
    QCoreApplication::processEvents();  // the worker's last words find no window
}
