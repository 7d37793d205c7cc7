// SPDX-License-Identifier: MIT
#include "graphs/flowplottest.h"

#include "graphs/gridandpos.h"
#include "graphs/simpleplot.h"
#include "support/doublelists.h"

#include <qwt_plot_magnifier.h>
#include <qwt_plot_panner.h>
#include <qwt_plot_picker.h>
#include <qwt_scale_draw.h>

#include <QElapsedTimer>
#include <QLabel>
#include <QMap>
#include <QSignalSpy>
#include <QTest>

#include <functional>

namespace
{
constexpr int EarliestPass = 280;  ///< milliseconds; a coarse timer of 300 may be 5 % early
constexpr int LongPast = 700;      ///< milliseconds, in which a second pass would have come

QString FrameAxisTitle(const SimplePlot* plot)
{
    return plot->axisTitle(QwtPlot::xBottom).text();
}

/** What the frame axis writes at frame @p frame. */
QString FrameLabel(const SimplePlot* plot, double frame)
{
    return plot->axisScaleDraw(QwtPlot::xBottom)->label(frame).text();
}
}  // namespace

void FlowPlotTest::MarginText_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("size");
    QTest::addColumn<QString>("text");
    QTest::newRow("no crop keeps all") << 1.0 << 1920.0 << "100% => 1920-1920=0 margin p.";
    QTest::newRow("kept pixels are truncated")
        << 1.1 << 1920.0 << "110% => 1920-1745=175 margin p.";
    QTest::newRow("a crop that divides evenly") << 1.25 << 640.0 << "125% => 640-512=128 margin p.";
    QTest::newRow("a fraction of a percent")
        << 1.125 << 1080.0 << "112.5% => 1080-960=120 margin p.";
    QTest::newRow("two digits get a blank") << 0.5 << 1920.0 << " 50% => 1920-3840=-1920 margin p.";
    QTest::newRow("one digit gets two") << 0.05 << 0.0 << "  5% => 0-0=0 margin p.";
    QTest::newRow("five digits widen the field")
        << 100.0 << 1000.0 << "10000% => 1000-10=990 margin p.";
    QTest::newRow("six digits at most")
        << 1.0 << 1234567.0 << "100% => 1.23457e+06-1234567=0 margin p.";
    QTest::newRow("no size") << 1.25 << 0.0 << "125% => 0-0=0 margin p.";
    QTest::newRow("the margin is truncated too")
        << 2.0 << 641.75 << "200% => 641.75-320=321 margin p.";
}

void FlowPlotTest::MarginText()
{
    QFETCH(double, factor);
    QFETCH(double, size);
    QFETCH(QString, text);
    QLabel label;
    Hidden->Flow.SetMarginLabel(&label);
    Hidden->Axis.Path.FrameSize = size;
    Hidden->Axis.Proj.ExportSettings.CropFactor = factor;
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(label.text(), text);
}

void FlowPlotTest::RotationHasAFixedText()
{
    QLabel label;
    HiddenFlow rotation(false);
    FillByHand(rotation.Axis.Path);
    rotation.Flow.SetMarginLabel(&label);
    QVERIFY(rotation.Flow.Update());
    QCOMPARE(label.text(), QString::fromUtf8("Max rotation 30°/frame"));
}

void FlowPlotTest::LabelReadsTheExportOfItsPath()
{
    QLabel label;
    ExportSettings other;
    other.CropFactor = 2.0;
    Hidden->Axis.Proj.ExportSettings.CropFactor = 1.25;
    Hidden->Axis.Path.Export = &other;
    Hidden->Flow.SetMarginLabel(&label);
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(label.text(), QStringLiteral("200% => 640-320=320 margin p."));
    QCOMPARE(Hidden->Grid().BandHalfHeight, 64.0);  // the band asks the project: (640 - 512) / 2
}

void FlowPlotTest::LabelIsOptionalAndReplaceable()
{
    QLabel first;
    QLabel second;
    QVERIFY(Hidden->Flow.Update());
    Hidden->Flow.SetMarginLabel(&first);
    QCOMPARE(first.text(), QString());  // only an update writes
    Hidden->Flow.SetMarginLabel(&second);
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(first.text(), QString());
    QVERIFY(!second.text().isEmpty());
    Hidden->Flow.SetMarginLabel(nullptr);
    second.clear();
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(second.text(), QString());
}

void FlowPlotTest::Axes_data()
{
    QTest::addColumn<double>("fps");
    QTest::addColumn<QString>("label");
    QTest::newRow("frame 50 at 25 frames per second") << 25.0 << "00:02:000";
    QTest::newRow("frame 50 at 40 frames per second") << 40.0 << "00:01:250";
    QTest::newRow("frame 50 at one frame in 4 seconds") << 0.25 << "03:20:000";
    QTest::newRow("no rate gives frame numbers") << -1.0 << "50";
    QTest::newRow("an endless frame gives frame numbers") << 0.0 << "50";
}

void FlowPlotTest::Axes()
{
    QFETCH(double, fps);
    QFETCH(QString, label);
    Hidden->Axis.Path.FramesPerSecond = fps;
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(FrameLabel(Hidden->Plot(), 50.0), QStringLiteral("50"));
    Hidden->Flow.SetTimeAxis(true);
    QCOMPARE(FrameLabel(Hidden->Plot(), 50.0), label);
    QCOMPARE(FrameAxisTitle(Hidden->Plot()), QStringLiteral("Time [min:sec:ms]"));
    QCOMPARE(Hidden->Plot()->axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Pixel"));
    Hidden->Flow.SetTimeAxis(false);
    QCOMPARE(FrameLabel(Hidden->Plot(), 50.0), QStringLiteral("50"));
    QCOMPARE(FrameAxisTitle(Hidden->Plot()), QStringLiteral("Frame No."));
    QCOMPARE(Hidden->Flow.GetFps(), fps);
}

void FlowPlotTest::Band_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("size");
    QTest::addColumn<double>("half");
    QTest::newRow("no crop gives a band of height 0") << 1.0 << 1920.0 << 0.0;
    QTest::newRow("half of what the crop takes") << 1.25 << 640.0 << 64.0;
    QTest::newRow("rounded down") << 1.1 << 1920.0 << 87.0;                   // of 87.27
    QTest::newRow("rounded down below 0 as well") << 0.75 << 100.0 << -17.0;  // of -16.67
    QTest::newRow("degrees") << 1.1 << 90.0 << 4.0;                           // of 4.09
    QTest::newRow("no size gives a band of height 0") << 1.25 << 0.0 << 0.0;
    QTest::newRow("no size wins over no factor") << 0.0 << 0.0 << 0.0;
}

void FlowPlotTest::Band()
{
    QFETCH(double, factor);
    QFETCH(double, size);
    QFETCH(double, half);
    Hidden->Axis.Path.FrameSize = size;
    Hidden->Axis.Path.Offset = 11;  // moves the margins, not the band
    Hidden->Axis.Proj.ExportSettings.CropFactor = factor;
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(Hidden->Grid().BandHalfHeight, half);
    QVERIFY(Hidden->Grid().ShowMarginBand);
}

void FlowPlotTest::BandHugsTheShakinessPath()
{
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(Difference(Hidden->Grid().BandCentres, Marked(4)), QString());
    QCOMPARE(Hidden->Grid().BandPen.color().name(), QStringLiteral("#90ee90"));
    QCOMPARE(Hidden->Grid().BandPen.width(), 1);
    Hidden->Flow.SetFlags(false, false, true, false);  // without the curve as well
    QCOMPARE(Difference(Hidden->Grid().BandCentres, Marked(4)), QString());
}

void FlowPlotTest::BandFollowsItsFlag()
{
    QVERIFY(Hidden->Flow.Update());
    Hidden->Flow.SetShowMarginShadow(false);
    QVERIFY(!Hidden->Grid().ShowMarginBand);
    QVERIFY(Hidden->Grid().BandCentres.isEmpty());  // the clearing took the old ones
    Hidden->Flow.SetShowMarginShadow(true);
    QVERIFY(Hidden->Grid().ShowMarginBand);
    QCOMPARE(Hidden->Grid().BandCentres.size(), MarkedFrames);
}

void FlowPlotTest::UpdateDoesNotAnnounce()
{
    QSignalSpy spy(&Hidden->Flow, &FlowPlot::UpdateAvailable);
    QVERIFY(Hidden->Flow.Update());
    Hidden->Axis.Path.ShakinessPath = Marked(40);
    QVERIFY(!spy.wait(LongPast));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(Difference(Values(Hidden->Plot(), "Shakiness Path"), Marked(4)), QString());
}

namespace
{
/** Everything that announces, by its name. */
const QMap<QString, std::function<void(FlowPlot&)>>& Announcers()
{
    static const QMap<QString, std::function<void(FlowPlot&)>> all = {
        {"SetShowCameraFlow", [](FlowPlot& flow) { flow.SetShowCameraFlow(true); }},
        {"SetShowDeviation", [](FlowPlot& flow) { flow.SetShowDeviation(true); }},
        {"SetShowCorrection", [](FlowPlot& flow) { flow.SetShowCorrection(true); }},
        {"SetShowMargin", [](FlowPlot& flow) { flow.SetShowMargin(true); }},
        {"SetShowMarginShadow", [](FlowPlot& flow) { flow.SetShowMarginShadow(true); }},
        {"SetTimeAxis", [](FlowPlot& flow) { flow.SetTimeAxis(true); }},
        {"SetFlags", [](FlowPlot& flow) { flow.SetFlags(true, true, true, true); }},
        {"UpdateAndAnnounce", [](FlowPlot& flow) { flow.UpdateAndAnnounce(); }},
    };
    return all;
}
}  // namespace

void FlowPlotTest::EachChangeAnnouncesOnce_data()
{
    QTest::addColumn<QString>("announcer");
    for (const QString& name : Announcers().keys())
    {
        QTest::newRow(qPrintable(name + QStringLiteral(" announces once and draws twice"))) << name;
    }
}

void FlowPlotTest::EachChangeAnnouncesOnce()
{
    QFETCH(QString, announcer);
    QSignalSpy spy(&Hidden->Flow, &FlowPlot::UpdateAvailable);
    Announcers()[announcer](Hidden->Flow);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(Difference(Values(Hidden->Plot(), "Shakiness Path"), Marked(4)), QString());
    Hidden->Axis.Path.ShakinessPath = Marked(40);
    QTRY_COMPARE(Difference(Values(Hidden->Plot(), "Shakiness Path"), Marked(40)), QString());
    QCOMPARE(spy.count(), 1);
}

void FlowPlotTest::AnnouncesWhenTheCurvesStand()
{
    Hidden->Axis.Proj.FlowH.EnableManualPath = false;
    QStringList seen;
    connect(&Hidden->Flow, &FlowPlot::UpdateAvailable, this,
            [&] { seen = Curves(Hidden->Plot()); });
    Hidden->Flow.SetFlags(true, false, false, false);
    QCOMPARE(seen, CurvesUnder(CameraFlow));
}

void FlowPlotTest::SecondPassIsTheLastOne()
{
    QSignalSpy spy(&Hidden->Flow, &FlowPlot::UpdateAvailable);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(Hidden->Flow.UpdateAndAnnounce());
    Hidden->Axis.Path.ShakinessPath = Marked(40);
    QTRY_COMPARE_WITH_TIMEOUT(Difference(Values(Hidden->Plot(), "Shakiness Path"), Marked(40)),
                              QString(), LongPast);
    QVERIFY2(clock.elapsed() >= EarliestPass, qPrintable(QString::number(clock.elapsed())));
    Hidden->Axis.Path.ShakinessPath = Marked(41);
    spy.clear();
    QVERIFY(!spy.wait(LongPast));
    QCOMPARE(Difference(Values(Hidden->Plot(), "Shakiness Path"), Marked(40)), QString());
}

void FlowPlotTest::SecondPassEmptiesThePlotOfLostData()
{
    QVERIFY(Hidden->Flow.UpdateAndAnnounce());
    Hidden->Axis.Path.Clear();
    QVERIFY(!Curves(Hidden->Plot()).isEmpty());
    QTRY_COMPARE(Curves(Hidden->Plot()), QStringList());
}

void FlowPlotTest::NextChangePutsTheSecondPassOff()
{
    QVERIFY(Hidden->Flow.UpdateAndAnnounce());
    QSignalSpy spy(&Hidden->Flow, &FlowPlot::UpdateAvailable);
    QVERIFY(!spy.wait(EarliestPass / 2));  // half of the time goes by
    QElapsedTimer clock;
    clock.start();
    QVERIFY(Hidden->Flow.UpdateAndAnnounce());
    Hidden->Axis.Path.ShakinessPath = Marked(40);
    QTRY_COMPARE(Difference(Values(Hidden->Plot(), "Shakiness Path"), Marked(40)), QString());
    QVERIFY2(clock.elapsed() >= EarliestPass, qPrintable(QString::number(clock.elapsed())));
}

/** The slot of the timer, called by itself. */
void FlowPlotTest::WorkAroundOnlyUpdates()
{
    QSignalSpy spy(&Hidden->Flow, &FlowPlot::UpdateAvailable);
    Hidden->Flow.WorkAround();
    QCOMPARE(Difference(Values(Hidden->Plot(), "Shakiness Path"), Marked(4)), QString());
    Hidden->Axis.Path.ShakinessPath = Marked(40);
    QVERIFY(!spy.wait(LongPast));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(Difference(Values(Hidden->Plot(), "Shakiness Path"), Marked(4)), QString());
}

void FlowPlotTest::FalseResultSetsNoTimer()
{
    Hidden->Axis.Path.Clear();
    QSignalSpy spy(&Hidden->Flow, &FlowPlot::UpdateAvailable);
    for (const std::function<void(FlowPlot&)>& announce : Announcers())
    {
        announce(Hidden->Flow);
    }
    QVERIFY(!Hidden->Flow.UpdateAndAnnounce());
    QCOMPARE(spy.count(), 0);
    FillByHand(Hidden->Axis.Path);
    QVERIFY(!spy.wait(LongPast));
    QCOMPARE(Curves(Hidden->Plot()), QStringList());
}

void FlowPlotTest::UpdateEmptiesThePolyline()
{
    QVERIFY(Hidden->Flow.Update());
    Hidden->Flow.GetPlot()->LeftClick({1.0, 2.0});
    QCOMPARE(Hidden->Grid().Line, QPolygonF({{1.0, 2.0}}));
    QVERIFY(Hidden->Flow.Update());
    QVERIFY(Hidden->Grid().Line.isEmpty());
}

void FlowPlotTest::ForwardsToTheGrid()
{
    const GridAndPos& grid = Hidden->Grid();
    Hidden->Flow.SetGrid(true, false, false);
    QVERIFY(grid.xEnabled() && grid.yEnabled() && !grid.ShowPosition && !grid.ShowLine);
    Hidden->Flow.SetGrid(false, true, false);
    QVERIFY(!grid.xEnabled() && !grid.yEnabled() && grid.ShowPosition && !grid.ShowLine);
    Hidden->Flow.SetGrid(false, false, true);
    QVERIFY(!grid.xEnabled() && !grid.yEnabled() && !grid.ShowPosition && grid.ShowLine);

    Hidden->Flow.SetPosition(12.5);
    QCOMPARE(grid.Position, 12.5);
    QCOMPARE(Hidden->Flow.GetPosition(), 12.5);
    QVERIFY(Hidden->Flow.Update());
    QCOMPARE(grid.Position, 12.5);

    Hidden->Flow.GetPlot()->LeftClick({1.0, 2.0});
    QVERIFY(!grid.Line.isEmpty());
    Hidden->Flow.ClearLine();
    QVERIFY(grid.Line.isEmpty());
    QVERIFY(!Curves(Hidden->Plot()).isEmpty());
}

void FlowPlotTest::ForwardsTheMouseMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("pans");
    QTest::addColumn<int>("picker");
    QTest::newRow("0 pans and tells coordinates") << 0 << true << 0;
    QTest::newRow("1 picks points") << 1 << false << 1;
    QTest::newRow("2 picks rectangles") << 2 << false << 2;
}

void FlowPlotTest::ForwardsTheMouseMode()
{
    QFETCH(int, mode);
    QFETCH(bool, pans);
    QFETCH(int, picker);
    Hidden->Flow.SetMouseMode((mode + 1) % 3);
    Hidden->Flow.SetMouseMode(mode);
    const QWidget* canvas = Hidden->Plot()->canvas();
    QCOMPARE(canvas->findChild<QwtPlotPanner*>()->isEnabled(), pans);
    for (const QwtPlotPicker* each : canvas->findChildren<QwtPlotPicker*>())
    {
        const bool isRect = each->rubberBand() == QwtPicker::RectRubberBand;
        const int kind = each->stateMachine() == nullptr ? 0 : isRect ? 2 : 1;
        QCOMPARE(each->isEnabled(), kind == picker);
    }
    QCOMPARE(canvas->findChildren<QwtPlotPicker*>().size(), 3);
}

void FlowPlotTest::ForwardsTheZoom()
{
    const auto* magnifier = Hidden->Plot()->canvas()->findChild<QwtPlotMagnifier*>();
    Hidden->Flow.ZoomHorizontal(false);
    QVERIFY(!magnifier->isAxisEnabled(QwtPlot::xBottom) &&
            magnifier->isAxisEnabled(QwtPlot::yLeft));
    Hidden->Flow.ZoomHorizontal(true);
    Hidden->Flow.ZoomVertical(false);
    QVERIFY(magnifier->isAxisEnabled(QwtPlot::xBottom) &&
            !magnifier->isAxisEnabled(QwtPlot::yLeft));
    Hidden->Flow.ZoomVertical(true);
    QVERIFY(magnifier->isAxisEnabled(QwtPlot::xBottom) && magnifier->isAxisEnabled(QwtPlot::yLeft));
}
