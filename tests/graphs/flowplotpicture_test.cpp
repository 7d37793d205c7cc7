// SPDX-License-Identifier: MIT
#include "graphs/flowplotpicturetest.h"
#include "graphs/scalewatch.h"
#include "support/doublelists.h"
#include "support/testhome.h"

#include <qwt_legend.h>
#include <qwt_legend_label.h>
#include <qwt_scale_div.h>

#include <QTest>

namespace
{
const TestHome Home;

const QColor Red(0xff, 0x00, 0x00);         ///< Shakiness Path
const QColor Pink(0xff, 0xc0, 0xcb);        ///< Smoothed Path
const QColor Blue(0x00, 0x00, 0xff);        ///< Detected Shakiness
const QColor LightBlue(0xad, 0xd8, 0xe6);   ///< Used Shakiness
const QColor Green(0x00, 0x80, 0x00);       ///< Correction
const QColor Purple(0x80, 0x00, 0x80);      ///< Modified Path
const QColor Grey(0x80, 0x80, 0x80);        ///< F5 Super Smooth
const QColor Brown(0xa5, 0x2a, 0x2a);       ///< F5 Margin
const QColor Orange(0xff, 0xa5, 0x00);      ///< Applied Margin, Margin
const QColor BandColour(0x00, 0x80, 0x80);  ///< dark cyan

constexpr int FrameCount = 101;  ///< so that the x axis runs from 0 to 100
constexpr double FrameSize = 640.0;
}  // namespace

void FlowPlotPictureTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Axis = std::make_unique<AxisSetup>();
    Axis->Proj.FlowH.EnableManualPath = false;  // else that curve would hide the path's own
    Axis->Proj.FlowH.Lock = true;               // a flat smoothed path
    Axis->Proj.ExportSettings.CropFactor = 1.25;
    Flow = std::make_unique<FlowPlot>(&Axis->Proj, &Axis->Path, QStringLiteral("Pixel"));
    Flow->SetFlags(true, false, false, false);
    Flow->SetGrid(false, false, false);
    Plot()->setFixedSize(900, 600);
}

void FlowPlotPictureTest::cleanup()
{
    Flow.reset();
    Page.reset();
    Axis.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

/** 10 pixels more each frame: the path runs from 10 to 1010. */
void FlowPlotPictureTest::MakeLine()
{
    Axis->Generate(SteadyMotion(FrameCount, 10.0), FrameSize);
    QVERIFY(Flow->Update());
    FinishLayout();
}

/** The path stands at 0, from frame 50 on at 1000. */
void FlowPlotPictureTest::MakeStep()
{
    QVector<double> motion(FrameCount, 0.0);
    motion[50] = 1000.0;
    Axis->Generate(motion, FrameSize);
    QVERIFY(Flow->Update());
    FinishLayout();
}

/** Room for legend and titles is made when the event loop runs, as before the user looks. */
void FlowPlotPictureTest::FinishLayout()
{
    QVERIFY(QTest::qWaitForWindowExposed(Plot()->window()));
    QCoreApplication::processEvents();
}

void FlowPlotPictureTest::UpdateShowsThePlot()
{
    QVERIFY(!Plot()->isVisible());
    MakeLine();
    QVERIFY(Plot()->isVisible());
    Plot()->hide();
    QVERIFY(Flow->Update());
    QVERIFY(Plot()->isVisible());
}

void FlowPlotPictureTest::MissingDataShowNoPlot()
{
    Axis->Generate(SteadyMotion(4, 10.0), FrameSize);
    QVERIFY(!Flow->Update());
    QVERIFY(!Plot()->isVisible());
}

void FlowPlotPictureTest::LineAndMeanAtTheirPlaces_data()
{
    QTest::addColumn<bool>("inTime");
    QTest::newRow("frames") << false;
    QTest::newRow("a time axis moves nothing") << true;
}

void FlowPlotPictureTest::LineAndMeanAtTheirPlaces()
{
    QFETCH(bool, inTime);
    Flow->SetTimeAxis(inTime);
    MakeLine();
    QCOMPARE(Plot()->axisScaleDiv(QwtPlot::xBottom).lowerBound(), 0.0);
    QCOMPARE(Plot()->axisScaleDiv(QwtPlot::xBottom).upperBound(), 100.0);
    QCOMPARE(Plot()->axisScaleDiv(QwtPlot::yLeft).lowerBound(), 10.0);
    QCOMPARE(Plot()->axisScaleDiv(QwtPlot::yLeft).upperBound(), 1010.0);
    const PlotPicture picture = Picture();
    // The filter averages 36 zeros ahead, 10 to 1010, and 36 times 1010 behind.
    constexpr double mean = (101 * 510.0 + 36 * 1010.0) / (101 + 2 * 36);
    for (const double frame : {3.0, 20.0, 35.0, 70.0, 99.0})
    {
        const double value = 10.0 + 10.0 * frame;
        QVERIFY(picture.Shows(Red, {frame, value}));
        QVERIFY(!picture.Shows(Red, {frame, value + 20.0}));
        QVERIFY(!picture.Shows(Red, {frame, value - 20.0}));
        QVERIFY(picture.Shows(Pink, {frame, mean}));
        QVERIFY(!picture.Shows(Pink, {frame, mean + 20.0}));
        QVERIFY(!picture.Shows(Pink, {frame, mean - 20.0}));
    }
    QVERIFY(picture.Shows(Pink, {50.0, mean}));  // drawn last, over the path
    QCOMPARE(picture.Count(Blue), 0);
    QCOMPARE(picture.Count(Orange), 0);
}

void FlowPlotPictureTest::StepAtItsPlace()
{
    MakeStep();
    const PlotPicture picture = Picture();
    for (const double frame : {10.0, 40.0, 48.0})
    {
        QVERIFY(picture.Shows(Red, {frame, 0.0}));
        QVERIFY(!picture.Shows(Red, {frame, 1000.0}));
    }
    for (const double frame : {50.0, 51.0, 60.0, 90.0})
    {
        QVERIFY(picture.Shows(Red, {frame, 1000.0}));
        QVERIFY(!picture.Shows(Red, {frame, 0.0}));
    }
    QVERIFY(picture.Shows(Red, {49.5, 500.0}));  // one frame joins the levels
    QVERIFY(!picture.Shows(Red, {48.0, 500.0}));
    QVERIFY(!picture.Shows(Red, {51.0, 500.0}));
}

void FlowPlotPictureTest::EveryCurveInItsColour_data()
{
    QTest::addColumn<bool>("isAdaptive");
    QTest::newRow("types 1 to 3") << false;
    QTest::newRow("types 4 and 5") << true;
}

/** Each list gets a level of its own, so that each curve is a straight line at that height. */
void FlowPlotPictureTest::EveryCurveInItsColour()
{
    QFETCH(bool, isAdaptive);
    const auto level = [](double value) { return QVector<double>(FrameCount, value); };
    Axis->Proj.FlowH.AvgPathOrder = 5;
    Axis->Proj.FlowH.EnableManualPath = true;
    Axis->Generate(SteadyMotion(FrameCount, 1.0), FrameSize);
    CameraPath& path = Axis->Path;
    path.DetectedShakiness = level(100.0);
    path.UsedShakiness = level(200.0);
    path.Result.Correction = level(300.0);
    path.ShakinessPath = level(400.0);
    path.ModifiedPath = level(500.0);
    path.SuperSmooth.Path = level(600.0);
    path.Result.Path = level(700.0);
    path.SuperSmooth.Margin = level(800.0);
    path.Result.Margin = level(900.0);
    path.SuperSmooth.Enabled = isAdaptive;
    Flow->SetShowMarginShadow(false);
    Flow->SetShowCorrection(true);
    Flow->SetFlags(true, true, true, false);
    FinishLayout();
    const PlotPicture picture = Picture();
    const QVector<QColor> colours = {Blue, LightBlue, Green, Red,   Purple,
                                     Grey, Pink,      Brown, Orange};
    for (int i = 0; i < colours.size(); ++i)
    {
        const bool isSeen = isAdaptive || (colours.at(i) != Grey && colours.at(i) != Brown);
        const QPointF place(33.3, 100.0 * (i + 1));
        QVERIFY2(picture.Shows(colours.at(i), place) == isSeen, qPrintable(colours.at(i).name()));
        const int widthOfCanvas = Plot()->canvas()->contentsRect().width();
        const bool isLong = picture.Count(colours.at(i)) > widthOfCanvas / 2;
        QVERIFY2(isLong == isSeen, qPrintable(colours.at(i).name()));
    }
}

void FlowPlotPictureTest::LegendNamesTheCurves()
{
    Axis->Proj.FlowH.EnableManualPath = true;
    Flow->SetFlags(true, true, true, false);
    MakeLine();
    auto* legend = qobject_cast<QwtLegend*>(Plot()->legend());
    QVERIFY(legend != nullptr && legend->isVisible());
    QStringList names;
    for (const QwtLegendLabel* label : legend->findChildren<QwtLegendLabel*>())
    {
        QVERIFY(label->isVisible());
        names.append(label->text().text());
    }
    QCOMPARE(names, QStringList({"Detected Shakiness", "Used Shakiness", "Shakiness Path",
                                 "Modified Path", "Smoothed Path", "Margin"}));
}

void FlowPlotPictureTest::BandEdges_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("half");
    QTest::newRow("a quarter: 640 - 512 leaves 64 on each side") << 1.25 << 64.0;
    QTest::newRow("the double: 640 - 320 leaves 160 on each side") << 2.0 << 160.0;
}

void FlowPlotPictureTest::BandEdges()
{
    QFETCH(double, factor);
    QFETCH(double, half);
    Axis->Proj.ExportSettings.CropFactor = factor;
    MakeLine();
    const PlotPicture picture = Picture();
    for (const double frame : {30.0, 50.0, 75.0})
    {
        const double value = 10.0 + 10.0 * frame;
        const PlotPicture::Rows rows = picture.RowsOf(BandColour, frame);
        QVERIFY(IsNear(rows.First, PixelOf(frame, value + half).y(), 1.0));
        QVERIFY(IsNear(rows.Last, PixelOf(frame, value - half).y(), 1.0));
        // Without a gap, but for the curves that lie over it, each two pixels high.
        const int seen = picture.CountInColumn(BandColour, frame);
        QVERIFY2(rows.Last - rows.First + 1 - seen <= 8, qPrintable(QString::number(seen)));
        QVERIFY(picture.Shows(Red, {frame, value}));
    }
}

void FlowPlotPictureTest::BandFollowsAStep()
{
    MakeStep();
    const PlotPicture picture = Picture();
    // Not at frames 49 and 50, whose strokes the steep piece of the path covers.
    for (const double frame : {10.0, 47.0})
    {
        QVERIFY(IsNear(picture.RowsOf(BandColour, frame).First, PixelOf(frame, 64.0).y(), 1.0));
    }
    for (const double frame : {52.0, 90.0})
    {
        QVERIFY(IsNear(picture.RowsOf(BandColour, frame).Last, PixelOf(frame, 936.0).y(), 1.0));
    }
}

void FlowPlotPictureTest::BandHasOneStrokePerFrame()
{
    MakeLine();
    const PlotPicture picture = Picture();
    QVERIFY(PixelOf(51.0, 0.0).x() - PixelOf(50.0, 0.0).x() >= 5);  // room between two strokes
    for (int frame = 10; frame <= 90; ++frame)
    {
        QVERIFY(picture.CountInColumn(BandColour, frame) > 20);
        QCOMPARE(picture.CountInColumn(BandColour, frame + 0.5), 0);
    }
}

/** Over an axis from 10 to 11 nothing but the band stands at 10.5. */
void FlowPlotPictureTest::BandOfNoHeightIsALine()
{
    Axis->Proj.ExportSettings.CropFactor = 1.0;
    Flow->SetFlags(false, true, false, false);
    MakeLine();
    Axis->Path.ShakinessPath = QVector<double>(FrameCount, 10.5);
    Axis->Path.DetectedShakiness[0] = 11.0;
    QVERIFY(Flow->Update());
    FinishLayout();
    for (const double frame : {30.0, 60.0, 90.0})
    {
        QVERIFY(Picture().CountInColumn(BandColour, frame) <= 1);
    }
}

void FlowPlotPictureTest::BandIsGoneWithoutItsFlag()
{
    MakeLine();
    QVERIFY(Picture().Count(BandColour) > 1000);
    Flow->SetShowMarginShadow(false);
    FinishLayout();
    QCOMPARE(Picture().Count(BandColour), 0);
    QVERIFY(Picture().Shows(Red, {30.0, 310.0}));
    Flow->SetShowMarginShadow(true);
    FinishLayout();
    QVERIFY(Picture().Count(BandColour) > 1000);
}

void FlowPlotPictureTest::LostDataLeaveNothing()
{
    Flow->SetGrid(false, false, true);
    Flow->SetFlags(true, true, true, false);
    MakeLine();
    QVERIFY(Picture().Count(Red) > 100);
    Axis->Path.Clear();
    QVERIFY(!Flow->Update());
    FinishLayout();
    for (const QColor& colour : {Red, Pink, Blue, LightBlue, Orange, BandColour})
    {
        QTRY_VERIFY2(Picture().Count(colour) == 0, qPrintable(colour.name()));
    }
    const auto* legend = qobject_cast<QwtLegend*>(Plot()->legend());
    QVERIFY(legend->isEmpty());
}

/** Without a box to scale to, both axes get the inverted extremes, of which the toolkit warns. */
void FlowPlotPictureTest::NoCurvesAtAll()
{
    MakeLine();
    for (int axis = 0; axis < 2; ++axis)
    {
        Guard->Expect(QtWarningMsg, QStringLiteral("QwtLinearScaleEngine::divideScale: overflow"));
    }
    const ScaleWatch& x = ScaleWatch::On(*Plot(), QwtPlot::xBottom);
    const ScaleWatch& y = ScaleWatch::On(*Plot(), QwtPlot::yLeft);
    Flow->SetFlags(false, false, false, false);
    QCOMPARE(Difference(x.Ends, InvertedExtremes), QString());
    QCOMPARE(Difference(y.Ends, InvertedExtremes), QString());
    QVERIFY(Plot()->itemList(QwtPlotItem::Rtti_PlotCurve).isEmpty());
    QCOMPARE(Picture().Count(Red), 0);
    QCOMPARE(Picture().Count(Pink), 0);
}

/** On a page behind another, axes and canvas keep what they show until the page is shown. */
void FlowPlotPictureTest::HiddenPlotWaits()
{
    Page = std::make_unique<QWidget>();
    Page->resize(920, 620);
    Plot()->setParent(Page.get());
    Axis->Generate(SteadyMotion(FrameCount, 10.0), FrameSize);
    const double untouched = Plot()->axisScaleDiv(QwtPlot::yLeft).upperBound();
    QVERIFY(untouched != 1010.0);
    QVERIFY(Flow->Update());
    QVERIFY(!Plot()->isVisible());
    QCOMPARE(Plot()->itemList(QwtPlotItem::Rtti_PlotCurve).size(), 2);
    QCOMPARE(Plot()->axisScaleDiv(QwtPlot::yLeft).upperBound(), untouched);
    Page->show();
    FinishLayout();
    QVERIFY(Plot()->isVisible());
    QTRY_COMPARE(Plot()->axisScaleDiv(QwtPlot::yLeft).upperBound(), 1010.0);
    QVERIFY(Picture().Shows(Red, {30.0, 310.0}));

    Page->hide();
    Axis->Generate(SteadyMotion(FrameCount, 20.0), FrameSize);
    QVERIFY(Flow->Update());
    QCOMPARE(Plot()->axisScaleDiv(QwtPlot::yLeft).upperBound(), 1010.0);
    Page->show();
    QVERIFY(Flow->Update());
    QCOMPARE(Plot()->axisScaleDiv(QwtPlot::yLeft).upperBound(), 2020.0);
    FinishLayout();
    QVERIFY(Picture().Shows(Red, {30.0, 620.0}));
}

/** What has come in since an announced change is on the screen without a further one. */
void FlowPlotPictureTest::SecondPassIsSeen()
{
    MakeLine();
    QVERIFY(Flow->UpdateAndAnnounce());
    QVERIFY(!Picture().Shows(Red, {20.0, 800.0}));
    Axis->Path.ShakinessPath[20] = 800.0;
    QVERIFY(!Picture().Shows(Red, {20.0, 800.0}));
    QTRY_VERIFY(Picture().Shows(Red, {20.0, 800.0}));
}

QTEST_MAIN(FlowPlotPictureTest)
