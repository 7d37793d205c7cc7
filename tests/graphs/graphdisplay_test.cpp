// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "graphs/graphdisplaytest.h"
#include "support/testhome.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>

#include <qwt_plot_magnifier.h>
#include <qwt_plot_panner.h>

#include <algorithm>

namespace
{
const TestHome Home;

constexpr int Frames = 20;
const QString FrameTitle = QStringLiteral("Frame No.");
const QString TimeTitle = QStringLiteral("Time [min:sec:ms]");

/** Curves of a path of type 3 with the boxes of flow and deviation checked. */
const QStringList AllFlow = {"Detected Shakiness", "Used Shakiness", "Shakiness Path",
                             "Modified Path", "Smoothed Path"};

/** Rows of the boxes that choose curves: which curves stand after a change of the box. */
void AddCurveBoxes()
{
    QTest::addColumn<QStringList>("curves");
    QTest::newRow("checkBoxCamFlow") << QStringList(AllFlow.mid(0, 2));
    QTest::newRow("checkBoxDeviation") << QStringList(AllFlow.mid(2));
    QTest::newRow("checkBoxShowMargin") << (AllFlow + QStringList{"Margin"});
}

/** Smallest and largest of the values that the three curves of the flow show, as "0..19". */
QString FlowSpan(const CameraPath& path)
{
    const QVector<double> all = path.ShakinessPath + path.ModifiedPath + path.Result.Path;
    const auto [lowest, highest] = std::minmax_element(all.cbegin(), all.cend());
    return QStringLiteral("%1..%2").arg(*lowest).arg(*highest);
}
}  // namespace

void GraphDisplayTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Tab = std::make_unique<AxisTab>();
}

void GraphDisplayTest::cleanup()
{
    Tab.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

/** Shows a path of 20 frames with all curves of the flow. */
void GraphDisplayTest::Plot()
{
    Tab->Setup.Generate(SteadyMotion(Frames, 2.0));
    Tab->Box("checkBoxDeviation")->setChecked(true);
    Tab->Show();
    Tab->Window.PlotUpdate();
    QCOMPARE(Tab->Curves(), AllFlow);
}

void GraphDisplayTest::MarginTextOfTheAxis_data()
{
    QTest::addColumn<bool>("isPixelAxis");
    QTest::addColumn<QString>("text");
    QTest::newRow("pixels") << true << "125% => 640-512=128 margin p.";
    QTest::newRow("rotation") << false << QString::fromUtf8("Max rotation 30°/frame");
}

void GraphDisplayTest::MarginTextOfTheAxis()
{
    QFETCH(bool, isPixelAxis);
    QFETCH(QString, text);
    Tab = std::make_unique<AxisTab>(isPixelAxis);
    Tab->Setup.Proj.ExportSettings.CropFactor = 1.25;
    Tab->Setup.Generate(SteadyMotion(Frames, 2.0), 640.0);
    const auto* label = Tab->Find<QLabel>("labelMargin");
    Tab->Window.LoadSettings();
    QCOMPARE(label->text(), QStringLiteral("Margin"));
    Tab->Window.PlotUpdate();
    QCOMPARE(label->text(), text);
}

void GraphDisplayTest::OnlyClicksAskForAPath()
{
    const QSignalSpy asked(&Tab->Window, &GraphWindow::CalculateCameraPath);
    Tab->Show();
    Tab->Window.LoadAndPlot();
    Tab->Window.SaveSettings();
    Tab->Box("checkBoxEnIgnSections")->toggle();
    Tab->Box("checkBoxEnManualCorrect")->toggle();
    Tab->Box("checkBoxEnIgnSectionsGlobal")->toggle();
    Tab->Click("checkBoxLock");
    Tab->Click("checkBoxStartVal");
    Tab->Type("spinBoxAvgFrames", QStringLiteral("20"));
    QCOMPARE(asked.size(), 0);
    QTest::mouseClick(Tab->Find<QPushButton>("pushButtonCalc"), Qt::LeftButton);
    QCOMPARE(asked.size(), 1);
}

void GraphDisplayTest::PlotUpdateFollowsTheBoxes_data()
{
    AddCurveBoxes();
    QTest::newRow("checkBoxShowCorrection") << AllFlow;  // which counts only when clicked
}

void GraphDisplayTest::PlotUpdateFollowsTheBoxes()
{
    QFETCH(QStringList, curves);
    Plot();
    Tab->Box(QTest::currentDataTag())->toggle();
    QCOMPARE(Tab->Curves(), AllFlow);
    Tab->Window.PlotUpdate();
    QCOMPARE(Tab->Curves(), curves);
    QCOMPARE(XTitle(), FrameTitle);
}

void GraphDisplayTest::PlotUpdateKeepsTheCorrection()
{
    Plot();
    Tab->Click("checkBoxShowCorrection");
    Tab->Box("checkBoxShowCorrection")->setChecked(false);
    Tab->Window.PlotUpdate();
    QVERIFY(Tab->Curves().contains(QStringLiteral("Correction")));
}

void GraphDisplayTest::PlotUpdateFollowsShadowAndTime()
{
    Plot();
    QVERIFY(Tab->Grid().ShowMarginBand);
    Tab->Box("checkBoxMarginShadow")->setChecked(false);
    Tab->Window.PlotUpdate();
    QVERIFY(!Tab->Grid().ShowMarginBand);
    QCOMPARE(XTitle(), FrameTitle);
    Tab->Box("checkBoxTime")->setChecked(true);
    Tab->Window.PlotUpdate();
    QCOMPARE(XTitle(), TimeTitle);
    QCOMPARE(Tab->Curves(), AllFlow);
}

void GraphDisplayTest::PlotUpdateEndsClicking()
{
    Plot();
    auto* actions = Tab->Find<QComboBox>("comboBoxGraphMouse");
    const auto* panner = Tab->Plot().findChild<QwtPlotPanner*>();
    QTest::keyClick(actions, Qt::Key_Down);
    QCOMPARE(actions->currentIndex(), 1);
    QTest::mouseClick(Tab->Plot().canvas(), Qt::LeftButton);
    QCOMPARE(Tab->Grid().Line.size(), 1);
    QVERIFY(!panner->isEnabled());
    Tab->Window.PlotUpdate();
    QVERIFY(Tab->Grid().Line.isEmpty());
    QCOMPARE(actions->currentIndex(), 0);
    QVERIFY(panner->isEnabled());
}

void GraphDisplayTest::PlotUpdateWithoutDataEndsClicking()
{
    Tab->Show();
    auto* actions = Tab->Find<QComboBox>("comboBoxGraphMouse");
    QTest::keyClick(actions, Qt::Key_End);
    Tab->Window.PlotUpdate();
    QCOMPARE(actions->currentIndex(), 0);
    QCOMPARE(Tab->Curves(), QStringList());
}

void GraphDisplayTest::ClickOnABoxShowsItsCurves_data()
{
    AddCurveBoxes();
    QStringList curves = AllFlow;
    curves.insert(2, QStringLiteral("Correction"));
    QTest::newRow("checkBoxShowCorrection") << curves;
}

void GraphDisplayTest::ClickOnABoxShowsItsCurves()
{
    QFETCH(QStringList, curves);
    Plot();
    Tab->Click(QTest::currentDataTag());
    QCOMPARE(Tab->Curves(), curves);
    Tab->Click(QTest::currentDataTag());
    QCOMPARE(Tab->Curves(), AllFlow);
}

void GraphDisplayTest::ClickOnShadowAndTime()
{
    Plot();
    Tab->Click("checkBoxMarginShadow");
    QVERIFY(!Tab->Grid().ShowMarginBand);
    Tab->Click("checkBoxTime");
    QCOMPARE(XTitle(), TimeTitle);
    Tab->Click("checkBoxMarginShadow");
    QVERIFY(Tab->Grid().ShowMarginBand);
    QCOMPARE(XTitle(), TimeTitle);
    Tab->Click("checkBoxTime");
    QCOMPARE(XTitle(), FrameTitle);
}

void GraphDisplayTest::ZoomBoxes_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<int>("otherAxis");
    const int x = QwtPlot::xBottom;
    const int y = QwtPlot::yLeft;
    QTest::newRow("checkBoxZoomDeviation") << y << x;
    QTest::newRow("checkBoxZoomTimeline") << x << y;
}

void GraphDisplayTest::ZoomBoxes()
{
    QFETCH(int, axis);
    QFETCH(int, otherAxis);
    Tab->Show();
    const auto* magnifier = Tab->Plot().findChild<QwtPlotMagnifier*>();
    for (const bool zooms : {true, false, true})
    {
        QCOMPARE(magnifier->isAxisEnabled(axis), zooms);
        QVERIFY(magnifier->isAxisEnabled(otherAxis));
        Tab->Click(QTest::currentDataTag());
    }
}

void GraphDisplayTest::MouseInThePlotReachesTheLists()
{
    Plot();
    auto* actions = Tab->Find<QComboBox>("comboBoxGraphMouse");
    QWidget* canvas = Tab->Plot().canvas();
    QTest::keyClick(actions, Qt::Key_Down);
    QTest::mouseClick(canvas, Qt::LeftButton);
    QCOMPARE(Tab->Tree("treeWidgetManualPathList").topLevelItemCount(), 1);
    QTest::keyClick(actions, Qt::Key_End);
    const QPoint middle = canvas->rect().center();
    QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, middle);
    QTest::mouseMove(canvas, middle + QPoint(40, 20));
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, middle + QPoint(40, 20));
    QCOMPARE(Tab->Tree("treeWidgetGlobalIgnore").topLevelItemCount(), 1);
    QCOMPARE(Tab->Tree("treeWidgetIgnore").topLevelItemCount(), 0);
}

void GraphDisplayTest::LoadAndPlotDoesBoth()
{
    Tab->Setup.Generate(SteadyMotion(Frames, 2.0));
    Tab->Setup.Proj.FlowV.AvgPathImages = 33;
    Tab->Window.LoadSettings();
    QCOMPARE(Tab->Curves(), QStringList());
    Tab->Setup.Proj.FlowV.AvgPathImages = 34;
    Tab->Window.LoadAndPlot();
    QCOMPARE(Tab->Number("spinBoxAvgFrames"), 34.0);
    QCOMPARE(Tab->Curves(), QStringList(AllFlow.mid(2)));
}

void GraphDisplayTest::ShowsAtOnceWhatWasPlottedWhileHidden()
{
    Tab->Setup.Generate(SteadyMotion(Frames, 2.0));
    Tab->Window.LoadAndPlot();
    Tab->Window.show();  // and no event comes before the look
    QCOMPARE(Tab->Span(QwtPlot::xBottom), QStringLiteral("0..19"));
    QCOMPARE(Tab->Span(QwtPlot::yLeft), FlowSpan(Tab->Setup.Path));
}

void GraphDisplayTest::ShowsAtOnceWhatWasPlottedOnAHiddenPage()
{
    QTabWidget pages;
    const auto takeOut = qScopeGuard([this]() { Tab->Window.setParent(nullptr); });
    pages.addTab(&Tab->Window, QStringLiteral("graph"));
    pages.addTab(new QWidget, QStringLiteral("another"));
    Tab->Setup.Generate(SteadyMotion(Frames, 2.0));
    pages.show();
    Tab->Window.PlotUpdate();
    QCOMPARE(Tab->Span(QwtPlot::xBottom), QStringLiteral("0..19"));
    pages.setCurrentIndex(1);
    QVERIFY(!Tab->Window.isVisible());
    Tab->Setup.Generate(SteadyMotion(2 * Frames, -3.0));
    Tab->Window.PlotUpdate();
    pages.setCurrentIndex(0);
    QCOMPARE(Tab->Span(QwtPlot::xBottom), QStringLiteral("0..39"));
    QCOMPARE(Tab->Span(QwtPlot::yLeft), FlowSpan(Tab->Setup.Path));
}

QTEST_MAIN(GraphDisplayTest)
