// SPDX-License-Identifier: MIT
#include "graphs/flowplotpicturetest.h"

#include <qwt_plot_grid.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <QMouseEvent>
#include <QTest>

namespace
{
const QColor BandColour(0x00, 0x80, 0x80);  ///< dark cyan
const QColor MarkerColour(0xff, 0xff, 0x00);
const QColor PolylineColour(0xc0, 0xc0, 0xc0);

/** Notes what the mouse tools send. */
class PickReceiver : public QObject
{
    Q_OBJECT

public:
    QVector<QPointF> Points;
    QVector<QRectF> Rects;

public slots:
    void TakePoint(QPointF point) { Points.append(point); }
    void TakeRect(QRectF rect) { Rects.append(rect); }
};

/** With the left button held, which QTest::mouseMove does not tell. */
void Drag(QWidget* canvas, const QPoint& from, const QPoint& to)
{
    QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, to, canvas->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(canvas, &move);
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, to);
}
}  // namespace

void FlowPlotPictureTest::GridLiesOverTheBand()
{
    Flow->SetGrid(true, false, false);
    MakeLine();
    const auto* grid =
        static_cast<QwtPlotGrid*>(Plot()->itemList(QwtPlotItem::Rtti_PlotGrid).first());
    const QColor colour = grid->majorPen().color();
    const PlotPicture picture = Picture();
    const QList<double> frames =
        Plot()->axisScaleDiv(QwtPlot::xBottom).ticks(QwtScaleDiv::MajorTick);
    const QList<double> values = Plot()->axisScaleDiv(QwtPlot::yLeft).ticks(QwtScaleDiv::MajorTick);
    QVERIFY(frames.size() > 2 && values.size() > 2);
    for (const double frame : frames)
    {
        QVERIFY(picture.CountInColumn(colour, frame) > picture.Height() * 9 / 10);
    }
    for (const double value : values)
    {
        QVERIFY(picture.Shows(colour, {12.5, value}));
        QVERIFY(picture.Shows(colour, {87.5, value}));
    }
    // Where a line of the grid crosses the band, in the stroke of a frame off the red curve.
    const double frame = 43.0;  // the path at 440, its band from 376 to 504
    QVERIFY(values.contains(400.0));
    QVERIFY(picture.Shows(BandColour, {frame, 390.0}));
    QVERIFY(picture.ShowsAcross(colour, {frame, 400.0}));
}

void FlowPlotPictureTest::GridCanBeOff()
{
    Flow->SetGrid(true, false, false);
    MakeLine();
    const PlotPicture picture = Picture();
    QVERIFY(picture.ShowsAcross(Qt::black, {12.5, 400.0}));
    Flow->SetGrid(false, false, false);
    QVERIFY(Flow->Update());
    FinishLayout();
    QVERIFY(Picture().ShowsAcross(Qt::white, {12.5, 400.0}));
    QVERIFY(!Picture().Shows(Qt::black, {12.5, 400.0}));
}

void FlowPlotPictureTest::MarkerAtItsFrame_data()
{
    QTest::addColumn<bool>("inTime");
    QTest::addColumn<double>("frame");
    QTest::newRow("a frame of the frame axis") << false << 25.0;
    QTest::newRow("the same frame of the time axis") << true << 25.0;
    QTest::newRow("near the end") << false << 98.0;
    QTest::newRow("between two frames") << true << 66.5;
}

void FlowPlotPictureTest::MarkerAtItsFrame()
{
    QFETCH(bool, inTime);
    QFETCH(double, frame);
    Flow->SetTimeAxis(inTime);
    Flow->SetPosition(frame);
    MakeLine();
    QCOMPARE(Picture().Count(MarkerColour), 0);  // not yet switched on
    Flow->SetGrid(false, true, false);
    QVERIFY(Flow->Update());
    FinishLayout();
    const PlotPicture picture = Picture();
    QCOMPARE(Flow->GetPosition(), frame);
    // From top to bottom, but for the curves over it, and nowhere else.
    const int seen = picture.CountInColumn(MarkerColour, frame);
    QVERIFY2(IsNear(seen, picture.Height(), 12.0), qPrintable(QString::number(seen)));
    QCOMPARE(picture.Count(MarkerColour), seen);
    const PlotPicture::Rows rows = picture.RowsOf(MarkerColour, frame);
    const QRect canvas = Plot()->canvas()->contentsRect();
    QVERIFY(IsNear(rows.First, canvas.top(), 1.0));
    QVERIFY(IsNear(rows.Last, canvas.bottom(), 1.0));
}

void FlowPlotPictureTest::MarkerFollowsAtOnce()
{
    Flow->SetGrid(false, true, false);
    MakeLine();
    Flow->SetPosition(80.0);
    const PlotPicture picture = Picture();
    QVERIFY(picture.CountInColumn(MarkerColour, 80.0) > 0);
    QCOMPARE(picture.Count(MarkerColour), picture.CountInColumn(MarkerColour, 80.0));
}

void FlowPlotPictureTest::TicksStandUnderTheGrid_data()
{
    QTest::addColumn<bool>("inTime");
    QTest::newRow("frame numbers") << false;
    QTest::newRow("times, which are wide") << true;
}

/** The scale below the canvas and the canvas itself count pixels each for itself. */
void FlowPlotPictureTest::TicksStandUnderTheGrid()
{
    QFETCH(const bool, inTime);
    Axis->Generate(SteadyMotion(300, 3.0));  // no label stands at the end
    Flow->SetTimeAxis(inTime);
    FinishLayout();
    QVERIFY(Flow->Update());  // this one leaves the sizes alone
    FinishLayout();
    const int X = QwtPlot::xBottom;
    const QwtScaleMap scale = Plot()->axisScaleDraw(X)->scaleMap();
    const QwtScaleMap canvas = Plot()->canvasMap(X);
    for (const double frame : Plot()->axisScaleDiv(X).ticks(QwtScaleDiv::MajorTick))
    {
        const double tick = Plot()->axisWidget(X)->x() + scale.transform(frame);
        const double line = Plot()->canvas()->x() + canvas.transform(frame);
        QVERIFY2(IsNear(tick, line, 0.5),
                 qPrintable(QStringLiteral("%1: %2 and %3").arg(frame).arg(tick).arg(line)));
    }
}

void FlowPlotPictureTest::TimeAxisWritesTimes()
{
    Flow->SetTimeAxis(true);
    MakeLine();
    QCOMPARE(Plot()->axisScaleDraw(QwtPlot::xBottom)->label(50.0).text(),
             QStringLiteral("00:02:000"));
    QCOMPARE(Plot()->axisTitle(QwtPlot::xBottom).text(), QStringLiteral("Time [min:sec:ms]"));
}

void FlowPlotPictureTest::PolylineJoinsTheClicks()
{
    Flow->SetGrid(false, false, true);
    MakeLine();
    Flow->SetMouseMode(1);
    const QPoint first = PixelOf(10.0, 800.0);
    const QPoint second = PixelOf(40.0, 800.0);
    const QPoint third = PixelOf(40.0, 950.0);
    QTest::mouseClick(Plot()->canvas(), Qt::LeftButton, Qt::NoModifier, first);
    QCOMPARE(Picture().CountInColumn(PolylineColour, 25.0), 0);  // one point joins nothing
    QTest::mouseClick(Plot()->canvas(), Qt::LeftButton, Qt::NoModifier, second);
    QVERIFY(Picture().Shows(PolylineColour, {25.0, 800.0}));
    QVERIFY(!Picture().Shows(PolylineColour, {40.0, 870.0}));
    QTest::mouseClick(Plot()->canvas(), Qt::LeftButton, Qt::NoModifier, third);
    QVERIFY(Picture().Shows(PolylineColour, {12.0, 800.0}));
    QVERIFY(Picture().Shows(PolylineColour, {25.0, 800.0}));
    QVERIFY(Picture().Shows(PolylineColour, {40.0, 870.0}));
    QVERIFY(!Picture().Shows(PolylineColour, {25.0, 875.0}));  // the line is not closed
}

void FlowPlotPictureTest::PolylineGoesWithTheNextUpdate()
{
    Flow->SetGrid(false, false, true);
    MakeLine();
    Flow->SetMouseMode(1);
    QTest::mouseClick(Plot()->canvas(), Qt::LeftButton, Qt::NoModifier, PixelOf(10.0, 800.0));
    QTest::mouseClick(Plot()->canvas(), Qt::LeftButton, Qt::NoModifier, PixelOf(40.0, 800.0));
    QVERIFY(Picture().Shows(PolylineColour, {25.0, 800.0}));
    QVERIFY(Flow->Update());
    QVERIFY(!Picture().Shows(PolylineColour, {25.0, 800.0}));
}

void FlowPlotPictureTest::PickersReachTheirReceiver()
{
    PickReceiver receiver;
    Flow->ConnectPickers(&receiver, SLOT(TakePoint(QPointF)), SLOT(TakeRect(QRectF)));
    MakeLine();
    QTest::mouseClick(Plot()->canvas(), Qt::LeftButton, Qt::NoModifier, PixelOf(20.0, 700.0));
    QVERIFY(receiver.Points.isEmpty());  // mode 0 only reads coordinates
    Flow->SetMouseMode(1);
    QTest::mouseClick(Plot()->canvas(), Qt::LeftButton, Qt::NoModifier, PixelOf(20.0, 700.0));
    QCOMPARE(receiver.Points.size(), 1);
    // A pixel is worth less than a fifth of a frame and less than 3 units.
    QVERIFY(IsNear(receiver.Points.first().x(), 20.0, 0.2));
    QVERIFY(IsNear(receiver.Points.first().y(), 700.0, 3.0));
    Flow->SetMouseMode(2);
    Drag(Plot()->canvas(), PixelOf(20.0, 700.0), PixelOf(60.0, 300.0));
    QCOMPARE(receiver.Points.size(), 1);
    QCOMPARE(receiver.Rects.size(), 1);
    const QRectF rect = receiver.Rects.first().normalized();
    QVERIFY(IsNear(rect.left(), 20.0, 0.4) && IsNear(rect.right(), 60.0, 0.4));
    QVERIFY(IsNear(rect.top(), 300.0, 6.0) && IsNear(rect.bottom(), 700.0, 6.0));
}

#include "flowplotmarks.moc"
