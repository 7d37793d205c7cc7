// SPDX-License-Identifier: MIT
#include "graphs/flowplottest.h"

#include "graphs/gridandpos.h"
#include "graphs/simpleplot.h"
#include "support/doublelists.h"
#include "support/testhome.h"

#include <QLabel>
#include <QMetaMethod>
#include <QPointer>
#include <QTest>

namespace
{
const TestHome Home;

QString AxisTitle(const SimplePlot* plot, int axis)
{
    return plot->axisTitle(axis).text();
}
}  // namespace

void FlowPlotTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Hidden = std::make_unique<HiddenFlow>();
    FillByHand(Hidden->Axis.Path);
}

void FlowPlotTest::cleanup()
{
    Hidden.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

void FlowPlotTest::ConstructedPlotIsEmpty()
{
    AxisSetup axis;
    FlowPlot flow(&axis.Proj, &axis.Path, QStringLiteral("Vertical [px]"));
    QVERIFY(flow.GetPlot() != nullptr);
    QCOMPARE(flow.GetPlot()->parentWidget(), nullptr);
    QVERIFY(!flow.GetPlot()->isVisible());
    QCOMPARE(AxisTitle(flow.GetPlot(), QwtPlot::yLeft), QStringLiteral("Vertical [px]"));
    QCOMPARE(AxisTitle(flow.GetPlot(), QwtPlot::xBottom), QStringLiteral("Frame No."));
    QCOMPARE(Curves(flow.GetPlot()), QStringList());
    QCOMPARE(flow.GetPosition(), 0.0);
    QCOMPARE(flow.GetFps(), -1.0);  // that of a path before its first calculation
    QVERIFY(flow.findChildren<QObject*>().isEmpty());
}

void FlowPlotTest::DestructorDeletesThePlot()
{
    auto flow = std::make_unique<FlowPlot>(&Hidden->Axis.Proj, &Hidden->Axis.Path, QString());
    const QPointer<SimplePlot> plot = flow->GetPlot();  // without a parent that could delete it
    QVERIFY(!plot.isNull());
    flow.reset();
    QVERIFY(plot.isNull());
}

void FlowPlotTest::SignalsAndSlotsInOrder()
{
    const QMetaObject& meta = FlowPlot::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        const QMetaMethod method = meta.method(i);
        const bool isSignal = method.methodType() == QMetaMethod::Signal;
        methods.append(QString::fromLatin1((isSignal ? "signal " : "slot ") +
                                           method.methodSignature() + ' ' +
                                           method.parameterNames().join(',')));
    }
    QCOMPARE(methods,
             QStringList({"signal UpdateAvailable() ", "slot WorkAround() ",
                          "slot ZoomHorizontal(bool) Enable", "slot ZoomVertical(bool) Enalbe"}));
}

/** Camera flow and deviation, no correction, no margin; the settings of a new project. */
void FlowPlotTest::CurvesOfAFreshPlot()
{
    FillStrongFilter(Hidden->Axis.Path);
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(Titles(Hidden->Plot()),
             QStringList({"Detected Shakiness", "Used Shakiness", "Shakiness Path", "Modified Path",
                          "F5 Super Smooth", "Smoothed Path"}));
    QVERIFY(Hidden->Grid().ShowMarginBand);
}

void FlowPlotTest::CurvesOfConditions_data()
{
    QTest::addColumn<unsigned>("conditions");
    QTest::addColumn<QStringList>("titles");
    const auto titles = [](std::initializer_list<const char*> list)
    {
        QStringList all;
        for (const char* title : list)
        {
            all.append(QLatin1String(title));
        }
        return all;
    };
    QTest::newRow("camera flow without a manual path")
        << unsigned(CameraFlow) << titles({"Shakiness Path", "Smoothed Path"});
    QTest::newRow("ignore sections without deviation show no used shakiness")
        << (CameraFlow | LocalIgnore | GlobalIgnore) << titles({"Shakiness Path", "Smoothed Path"});
    QTest::newRow("deviation without ignore sections shows no used shakiness")
        << unsigned(Deviation) << titles({"Detected Shakiness"});
    QTest::newRow("used shakiness with the axis' sections")
        << (Deviation | LocalIgnore) << titles({"Detected Shakiness", "Used Shakiness"});
    QTest::newRow("used shakiness with the global sections")
        << (Deviation | GlobalIgnore) << titles({"Detected Shakiness", "Used Shakiness"});
    QTest::newRow("margin of the plain types") << unsigned(Margin) << titles({"Margin"});
    QTest::newRow("margins of the adaptive types")
        << (Margin | Adaptive) << titles({"F5 Margin", "Applied Margin"});
    QTest::newRow("manual path and strong filter without camera flow show nothing")
        << (Manual | Adaptive) << titles({});
    QTest::newRow("correction alone") << unsigned(Correction) << titles({"Correction"});
    QTest::newRow("everything") << unsigned(AllConditions)
                                << titles({"Detected Shakiness", "Used Shakiness", "Correction",
                                           "Shakiness Path", "Modified Path", "F5 Super Smooth",
                                           "Smoothed Path", "F5 Margin", "Applied Margin"});
}

namespace
{
void Establish(unsigned conditions, HiddenFlow& hidden)
{
    const auto given = [conditions](unsigned condition) { return (conditions & condition) != 0; };
    hidden.Axis.Proj.FlowH.EnableIgnoreSections = given(LocalIgnore);
    hidden.Axis.Proj.EnGlobalIgnoreList = given(GlobalIgnore);
    hidden.Axis.Proj.FlowH.EnableManualPath = given(Manual);
    hidden.Axis.Path.SuperSmooth.Enabled = given(Adaptive);
    hidden.Flow.SetShowCorrection(given(Correction));
    hidden.Flow.SetFlags(given(CameraFlow), given(Deviation), given(Margin), false);
}
}  // namespace

void FlowPlotTest::CurvesOfConditions()
{
    QFETCH(unsigned, conditions);
    QFETCH(QStringList, titles);
    FillStrongFilter(Hidden->Axis.Path);
    Establish(conditions, *Hidden);
    QCOMPARE(Titles(Hidden->Plot()), titles);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(conditions));
}

void FlowPlotTest::CurvesOfAllCombinations()
{
    FillStrongFilter(Hidden->Axis.Path);
    for (unsigned conditions = 0; conditions <= AllConditions; ++conditions)
    {
        Establish(conditions, *Hidden);
        const QStringList curves = Curves(Hidden->Plot());
        QVERIFY2(curves == CurvesUnder(conditions), qPrintable(curves.join('\n')));
    }
}

/** Not from what the last calculation used, and not from another axis. */
void FlowPlotTest::ConditionsComeFromAxisAndProject()
{
    Hidden->Axis.Path.UseGlobalIgnore = true;
    Hidden->Axis.Proj.EnGlobalIgnoreList = false;
    Hidden->Axis.Proj.FlowH.EnableIgnoreSections = true;
    Hidden->Axis.Proj.FlowH.EnableManualPath = true;
    Hidden->Axis.Proj.FlowV.EnableIgnoreSections = false;
    Hidden->Axis.Proj.FlowV.EnableManualPath = false;
    Hidden->Axis.Path.Settings = &Hidden->Axis.Proj.FlowV;
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(Titles(Hidden->Plot()),
             QStringList({"Detected Shakiness", "Shakiness Path", "Smoothed Path"}));
}

void FlowPlotTest::CurvesOfFilterTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isAdaptive");
    QTest::newRow("type 1 has one margin") << 1 << false;
    QTest::newRow("type 2 has one margin") << 2 << false;
    QTest::newRow("type 3 has one margin") << 3 << false;
    QTest::newRow("type 4 has two margins and the strong path") << 4 << true;
    QTest::newRow("type 5 has two margins and the strong path") << 5 << true;
}

void FlowPlotTest::CurvesOfFilterTypes()
{
    QFETCH(int, type);
    QFETCH(bool, isAdaptive);
    AxisSetup& axis = Hidden->Axis;
    axis.Proj.FlowH.AvgPathOrder = type;
    axis.Proj.FlowH.AvgPathImages = 3;
    QVector<double> motion(60, 0.0);
    motion[30] = 8.0;
    axis.Generate(motion);
    Hidden->Flow.SetFlags(true, false, true, false);
    QStringList titles = {"Shakiness Path", "Modified Path", "Smoothed Path", "Margin"};
    if (isAdaptive)
    {
        titles = QStringList{"Shakiness Path", "Modified Path", "F5 Super Smooth",
                             "Smoothed Path",  "F5 Margin",     "Applied Margin"};
    }
    QCOMPARE(Titles(Hidden->Plot()), titles);
    const QVector<double> step = QVector<double>(30, 0.0) + QVector<double>(30, 8.0);
    QCOMPARE(Difference(Values(Hidden->Plot(), "Shakiness Path"), step), QString());
    QCOMPARE(Difference(Values(Hidden->Plot(), "Smoothed Path"), axis.Path.Result.Path), QString());
    QCOMPARE(Difference(Values(Hidden->Plot(), titles.last()), axis.Path.Result.Margin), QString());
}

void FlowPlotTest::TypeChangeWithoutCalculationEmptiesThePlot()
{
    AxisSetup& axis = Hidden->Axis;
    axis.Generate(SteadyMotion(60, 1.0));
    QVERIFY(Hidden->Flow.Update());
    axis.Proj.FlowH.AvgPathOrder = 5;
    axis.Configure();  // enables the strong filter, whose data are still missing
    QVERIFY(!Hidden->Flow.Update());
    QCOMPARE(Curves(Hidden->Plot()), QStringList());
    axis.Generate(SteadyMotion(60, 1.0));
    QVERIFY(Hidden->Flow.Update());
    QVERIFY(Titles(Hidden->Plot()).contains("F5 Super Smooth"));
}

void FlowPlotTest::FramesFollowTheLength()
{
    Hidden->Flow.SetFlags(false, true, false, false);
    Hidden->Axis.Proj.EnGlobalIgnoreList = false;
    Hidden->Axis.Proj.FlowH.EnableIgnoreSections = false;
    Hidden->Axis.Generate({5.0, 6.0, 7.0, 8.0, 9.0, 10.0, 11.0, 12.0});
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(Curves(Hidden->Plot()),
             QStringList({"Detected Shakiness #0000ff 0:5 1:6 2:7 3:8 4:9 5:10 6:11 7:12"}));
    Hidden->Axis.Generate({1.0, 2.0, 3.0, 4.0, 5.0});
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(Curves(Hidden->Plot()),
             QStringList({"Detected Shakiness #0000ff 0:1 1:2 2:3 3:4 4:5"}));
}

/** Whether data are complete does not depend on the result, so it may lag behind. */
void FlowPlotTest::ListOfAnotherLengthLeavesItsCurveOut()
{
    FillStrongFilter(Hidden->Axis.Path);
    Hidden->Axis.Path.Result.Path.removeLast();
    Hidden->Flow.SetFlags(true, false, true, false);
    QStringList expected = CurvesUnder(CameraFlow | Manual | Margin | Adaptive);
    expected.removeAt(3);
    QCOMPARE(Curves(Hidden->Plot()), expected);
}

void FlowPlotTest::TooLittleData_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("no frame at all") << 0 << false;
    QTest::newRow("4 frames are too few") << 4 << false;
    QTest::newRow("5 frames are enough") << 5 << true;
}

void FlowPlotTest::TooLittleData()
{
    QFETCH(int, frames);
    QFETCH(bool, isShown);
    Hidden->Axis.Generate(SteadyMotion(frames, 2.0));
    QCOMPARE(Hidden->Flow.Update(), isShown);
    QCOMPARE(Hidden->Flow.UpdateAndAnnounce(), isShown);
    QCOMPARE(Titles(Hidden->Plot()).isEmpty(), !isShown);
    QCOMPARE(Hidden->Grid().BandCentres.size(), isShown ? frames : 0);
}

/** Curves, polyline and band go; label and axes stay, for nothing replaces them. */
void FlowPlotTest::FalseResultClearsWhatStood()
{
    QLabel label;
    Hidden->Flow.SetMarginLabel(&label);
    QVERIFY(Hidden->Flow.Update());
    Hidden->Flow.GetPlot()->LeftClick({1.0, 2.0});
    label.setText(QStringLiteral("as it was"));
    Hidden->Axis.Path.Clear();
    Hidden->Flow.SetTimeAxis(true);
    QVERIFY(!Hidden->Flow.Update());
    QCOMPARE(Curves(Hidden->Plot()), QStringList());
    QVERIFY(Hidden->Grid().Line.isEmpty());
    QVERIFY(Hidden->Grid().BandCentres.isEmpty());
    QCOMPARE(label.text(), QStringLiteral("as it was"));
    QCOMPARE(AxisTitle(Hidden->Plot(), QwtPlot::xBottom), QStringLiteral("Frame No."));
}

void FlowPlotTest::EachSetterStoresItsFlag()
{
    FlowPlot& flow = Hidden->Flow;
    Hidden->Axis.Proj.FlowH.EnableManualPath = false;
    flow.SetShowDeviation(false);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(CameraFlow));
    flow.SetShowMargin(true);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(CameraFlow | Margin));
    flow.SetShowCorrection(true);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(CameraFlow | Margin | Correction));
    flow.SetShowCameraFlow(false);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(Margin | Correction));
    flow.SetShowDeviation(true);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(Margin | Correction | Deviation | LocalIgnore));
    flow.SetShowMargin(false);
    flow.SetShowCorrection(false);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(Deviation | LocalIgnore));
    flow.SetShowCameraFlow(true);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(CameraFlow | Deviation | LocalIgnore));
}

void FlowPlotTest::SetFlagsLeavesCorrectionAndShadow()
{
    Hidden->Axis.Proj.FlowH.EnableManualPath = false;
    Hidden->Flow.SetShowCorrection(true);
    Hidden->Flow.SetShowMarginShadow(false);
    Hidden->Flow.SetFlags(true, true, true, true);
    Hidden->Flow.SetFlags(false, false, true, false);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(Correction | Margin));
    QVERIFY(!Hidden->Grid().ShowMarginBand);
    Hidden->Flow.SetShowCorrection(false);
    Hidden->Flow.SetShowMarginShadow(true);
    Hidden->Flow.SetFlags(true, false, false, true);
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(CameraFlow));
    QVERIFY(Hidden->Grid().ShowMarginBand);
    QCOMPARE(AxisTitle(Hidden->Plot(), QwtPlot::xBottom), QStringLiteral("Time [min:sec:ms]"));
}

void FlowPlotTest::FlagsOutlastMissingData()
{
    Hidden->Axis.Proj.FlowH.EnableManualPath = false;
    Hidden->Axis.Path.Clear();
    Hidden->Flow.SetFlags(false, false, true, true);
    Hidden->Flow.SetShowCorrection(true);
    Hidden->Flow.SetShowMarginShadow(false);
    FillByHand(Hidden->Axis.Path);
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(Curves(Hidden->Plot()), CurvesUnder(Correction | Margin));
    QVERIFY(!Hidden->Grid().ShowMarginBand);
    QCOMPARE(AxisTitle(Hidden->Plot(), QwtPlot::xBottom), QStringLiteral("Time [min:sec:ms]"));
}

QTEST_MAIN(FlowPlotTest)
