// SPDX-License-Identifier: MIT
#include "batch/jobstate.h"
#include "graphs/simpleplot.h"
#include "player/loneplayertest.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <QScrollArea>
#include <QTest>

#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>

namespace
{
const TestHome Home;
}  // namespace

/** The row of settings: zoom, pace, view, crop and the boxes of the graphs. */
class PlayerSettingsTest : public PlayerOnScreenTest
{
    Q_OBJECT

private slots:
    void Zoom();
    void ZoomDuringPlay();
    void Pace();
    void ViewRedraws();
    void Crop();
    void VerticalPlotAnnouncesNewData_data();
    void VerticalPlotAnnouncesNewData();
    void PathBox();
    void TimesFitIntoANarrowGraph_data();
    void TimesFitIntoANarrowGraph();
    void MoreSettings();
};

void PlayerSettingsTest::Zoom()
{
    OpenShown();
    (*Player)->Type("spinBoxIdx", 5);
    QCOMPARE((*Player)->Source().size(), QSize(80, 60));  // half of 160 by 120
    static_cast<void>((*Player)->TakeFrames());
    (*Player)->TypeZoom(0.25);
    QCOMPARE((*Player)->Source().size(), QSize(40, 30));
    (*Player)->TypeZoom(2.0);
    QCOMPARE((*Player)->Source().size(), QSize(320, 240));
    QCOMPARE((*Player)->SourceNumber(), 5);
    QCOMPARE((*Player)->Number("spinBoxIdx"), 5);
    const Numbers redrawn = (*Player)->TakeFrames();
    QCOMPARE(redrawn, Numbers(redrawn.size(), 5));  // the same frame without the file
    (*Player)->TypeZoom(0.05);
    QCOMPARE((*Player)->Source().size(), QSize(8, 6));
}

void PlayerSettingsTest::ZoomDuringPlay()
{
    OpenShown();
    (*Player)->Click("pushButtonPlayPause");
    QTRY_COMPARE((*Player)->Source().size(), QSize(80, 60));
    static_cast<void>((*Player)->TakeFrames());
    (*Player)->TypeZoom(1.0);
    QCOMPARE((*Player)->TakeFrames(), Numbers());  // the next frame takes it
    QTRY_COMPARE((*Player)->Source().size(), QSize(160, 120));
    QVERIFY((*Player)->IsPlaying());
}

/** The position comes every two seconds of play: 4 frames of 500 ms each. */
void PlayerSettingsTest::Pace()
{
    OpenShown();
    (*Player)->Click("pushButtonPlayPause");
    (*Player)->Type("spinBoxFPS", 2);
    QCOMPARE((*Player)->TakePositions(), Numbers{1});
    Numbers positions;
    QTRY_VERIFY_WITH_TIMEOUT(!(positions += (*Player)->TakePositions()).isEmpty(), PlayTime);
    QCOMPARE(positions, Numbers{4});
    QVERIFY((*Player)->TakeFrames().size() <= 4);
    QVERIFY((*Player)->IsPlaying());
    (*Player)->Click("pushButtonPlayPause");
    (*Player)->Click("pushButtonPlayPause");
    QCOMPARE((*Player)->Number("spinBoxFPS"), 2);  // a pause keeps it
}

void PlayerSettingsTest::ViewRedraws()
{
    OpenShown();
    (*Player)->Type("spinBoxIdx", 5);
    static_cast<void>((*Player)->TakeFrames());
    Player->ShowPaths(ClipFrames);
    QCOMPARE((*Player)->TakeFrames(), Numbers());  // the picture on screen does not change yet
    QVERIFY((*Player)->Stabilized().isNull());
    (*Player)->ChooseView(2);
    QVERIFY(!(*Player)->Stabilized().isNull());
    QVERIFY(!(*Player)->TakeFrames().isEmpty());
    QCOMPARE((*Player)->Areas(), QStringList("PlayExport"));
    (*Player)->Click("pushButtonPlayPause");
    (*Player)->ChooseView(1);
    QVERIFY((*Player)->IsPlaying());
    QCOMPARE((*Player)->Areas(), QStringList("PlaySrc"));
}

/** At 125 percent the crop of 80 by 60 is 64 by 48. */
void PlayerSettingsTest::Crop()
{
    Player->Proj.ExportSettings.CropFactor = 1.25;
    Player->ShowPaths(ClipFrames);
    OpenShown();
    (*Player)->Type("spinBoxIdx", 5);
    QCOMPARE((*Player)->Stabilized().size(), QSize(80, 60));
    // A green frame from 8, 6 shows the crop.
    QCOMPARE((*Player)->Stabilized().pixelColor(8, 6), QColor(120, 255, 120));
    (*Player)->Click("checkBoxCrop");
    QCOMPARE((*Player)->Stabilized().size(), QSize(64, 48));
    (*Player)->Type("spinBoxIdx", 6);
    QCOMPARE((*Player)->Stabilized().size(), QSize(64, 48));
    Player->Player().JobStateChanged(JobPathCalculated);
    (*Player)->Type("spinBoxIdx", 7);
    QCOMPARE((*Player)->Stabilized().size(), QSize(64, 48));
    (*Player)->Click("checkBoxCrop");
    QCOMPARE((*Player)->Stabilized().size(), QSize(80, 60));
}

void PlayerSettingsTest::VerticalPlotAnnouncesNewData_data()
{
    QTest::addColumn<bool>("isVertical");
    QTest::addColumn<QSize>("size");
    QTest::newRow("the vertical plot has the crop read anew") << true << QSize(50, 36);
    QTest::newRow("the horizontal plot has no say") << false << QSize(64, 48);
}

/** Of 80 by 60, 125 percent leave 64 by 48, and 160 percent 50 by 36 (37.5 made even). */
void PlayerSettingsTest::VerticalPlotAnnouncesNewData()
{
    QFETCH(bool, isVertical);
    QFETCH(QSize, size);
    Player->Proj.ExportSettings.CropFactor = 1.25;
    Player->ShowPaths(ClipFrames);
    OpenShown();
    (*Player)->Click("checkBoxCrop");
    (*Player)->Type("spinBoxIdx", 5);
    QCOMPARE((*Player)->Stabilized().size(), QSize(64, 48));
    Player->Proj.ExportSettings.CropFactor = 1.6;
    (isVertical ? PathHorizontal : PathVertical).Clear();  // its plot has nothing to announce
    Player->Player().JobStateChanged(JobPathCalculated);
    Player->CalculatePaths(ClipFrames);
    (*Player)->Type("spinBoxIdx", 6);
    QCOMPARE((*Player)->Stabilized().size(), size);
}

void PlayerSettingsTest::PathBox()
{
    Player->Proj.FlowH.EnableManualPath = false;
    Player->ShowPaths(ClipFrames);
    for (const char* area : {"scrollAreaH", "scrollAreaV"})
    {
        QCOMPARE((*Player)->Curves(area), (QStringList{"Shakiness Path", "Smoothed Path"}));
    }
    // Plots without a curve have no scale either, of which the toolkit complains.
    (*Player)->Click("checkBoxPath");
    QCOMPARE((*Player)->Curves("scrollAreaH"), QStringList());
    QCOMPARE((*Player)->Curves("scrollAreaV"), QStringList());
    Player->Player().JobStateChanged(JobPathCalculated);
    QCOMPARE((*Player)->Curves("scrollAreaH"), QStringList());
    (*Player)->Click("checkBoxPath");
    QCOMPARE((*Player)->Curves("scrollAreaH").size(), 2);
    QCOMPARE((*Player)->Curves("scrollAreaV").size(), 2);
    QStringList messages = Guard->TakeUnexpected();
    messages.removeAll(QStringLiteral("QwtLinearScaleEngine::divideScale: overflow"));
    messages.removeAll(QStringLiteral("This plugin does not support propagateSizeHints()"));
    QCOMPARE(messages, QStringList());
}

void PlayerSettingsTest::TimesFitIntoANarrowGraph_data()
{
    QTest::addColumn<int>("frames");  // 25 a second
    QTest::addColumn<QStringList>("times");
    QTest::newRow("4 seconds") << 100 << QStringList{"00:00:000", "00:02:000"};
    QTest::newRow("36 seconds") << 900 << QStringList{"00:00:000", "00:20:000"};
    QTest::newRow("6 minutes") << 9000 << QStringList{"00:00:000", "03:20:000"};
}

/** Beside axis and legend there is room for two times; a plot with more of them has to scroll. */
void PlayerSettingsTest::TimesFitIntoANarrowGraph()
{
    QFETCH(int, frames);
    QFETCH(QStringList, times);
    Player->ShowPaths(frames);
    (*Player)->Click("pushButtonTime");
    for (const char* name : {"scrollAreaH", "scrollAreaV"})
    {
        auto* area = (*Player)->Find<QScrollArea>(name);
        area->setFixedWidth(area->minimumWidth());
        QTRY_COMPARE(area->width(), 400);
        const SimplePlot& plot = (*Player)->Plot(name);
        QTRY_COMPARE(plot.width(), area->viewport()->width());
        const QwtScaleDraw* scale = plot.axisScaleDraw(QwtPlot::xBottom);
        QStringList texts;
        int end = -1;  // pixel column of the last label's right edge
        for (const double tick : scale->scaleDiv().ticks(QwtScaleDiv::MajorTick))
        {
            const QRect label = scale->boundingLabelRect(plot.axisFont(QwtPlot::xBottom), tick);
            QVERIFY2(label.left() > end, name);
            end = label.right();
            texts.append(scale->label(tick).text());
        }
        QCOMPARE(texts, times);
    }
}

void PlayerSettingsTest::MoreSettings()
{
    const auto* row = (*Player)->Find<QWidget>("verticalWidget");
    QVERIFY(row->isVisible());
    (*Player)->Click("checkBoxShowMore");
    QVERIFY(!row->isVisible());
    QVERIFY((*Player)->Find<QWidget>("spinBoxIdx")->isVisible());
    (*Player)->Click("checkBoxShowMore");
    QVERIFY(row->isVisible());
}

QTEST_MAIN(PlayerSettingsTest)
#include "playersettings_test.moc"
