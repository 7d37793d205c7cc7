// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "graphs/bandcases.h"
#include "graphs/gridandpos.h"
#include "graphs/plotprobe.h"
#include "graphs/plotsheet.h"
#include "support/testhome.h"

#include <qwt_painter.h>

#include <QPainter>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>

namespace
{
const TestHome Home;

constexpr int Seeds = 30;  // random bands per row

void DrawByGrid(QPainter* painter, const Band& band, const QRectF& canvas)
{
    GridAndPos grid;
    grid.enableX(false);
    grid.enableY(false);
    grid.ShowMarginBand = true;
    grid.BandCentres = band.Centres;
    grid.BandHalfHeight = band.HalfHeight;
    grid.draw(painter, band.X, band.Y, canvas);
}

}  // namespace

class PlotDrawingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void FieldsInOrder();
    void NothingAtTheStart();
    void StrokePerFrame();
    void BandPenIsNotUsed();
    void BandHasItsOwnCentrePerFrame();
    void BandReachesBeyondTheCanvas();
    void GridLiesOverTheBand();
    void MarkerFillsTheCanvas();
    void MarkerLiesOverGridAndBand();
    void LineJoinsItsPoints();
    void OnePointIsADot();
    void DotIsTwoWide();
    void LineNeedsPointsAndItsSwitch();
    void LineLiesOverTheMarker();
    void BandIsThePlainLoop_data();
    void BandIsThePlainLoop();
    void LayersOnThePlot();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void PlotDrawingTest::init()
{
    Guard = std::make_unique<MessageGuard>();
}

void PlotDrawingTest::cleanup()
{
    QCOMPARE(EndGuard(Guard), QStringList());
}

void PlotDrawingTest::FieldsInOrder()
{
    const GridAndPos grid;
    const QVector<const void*> fields = {&grid.ShowPosition, &grid.ShowMarginBand, &grid.ShowLine,
                                         &grid.Position,     &grid.BandHalfHeight, &grid.Line,
                                         &grid.BandCentres,  &grid.BandPen};
    QVERIFY(std::is_sorted(fields.cbegin(), fields.cend(), std::less<const void*>()));
}

void PlotDrawingTest::NothingAtTheStart()
{
    const Sheet sheet;
    QVERIFY(!sheet.Grid.ShowPosition);
    QVERIFY(!sheet.Grid.ShowMarginBand);
    QVERIFY(!sheet.Grid.ShowLine);
    QVERIFY(sheet.Grid.Line.isEmpty());
    QVERIFY(sheet.Grid.BandCentres.isEmpty());
    QVERIFY(Extent(sheet.Painted(), White) == QRect(0, 0, 100, 80));
    QCOMPARE(RowsOf(sheet.Painted(), 50, White), QStringLiteral("0-79"));
}

void PlotDrawingTest::StrokePerFrame()
{
    Sheet sheet;
    sheet.ShowBand(3.0, 1.0);
    const QImage image = sheet.Painted();
    for (int frame = 0; frame < 10; ++frame)  // frame 10 stands at pixel 100, beside the sheet
    {
        QCOMPARE(RowsOf(image, 10 * frame, BandColour), QStringLiteral("40-60"));
        QCOMPARE(RowsOf(image, 10 * frame + 1, White), QStringLiteral("0-79"));
        QCOMPARE(RowsOf(image, 10 * frame + 9, White), QStringLiteral("0-79"));
    }
    sheet.Grid.ShowMarginBand = false;
    QCOMPARE(RowsOf(sheet.Painted(), 50, White), QStringLiteral("0-79"));
}

void PlotDrawingTest::BandPenIsNotUsed()
{
    Sheet sheet;
    sheet.ShowBand(3.0, 1.0);
    const QImage plain = sheet.Painted();
    sheet.Grid.BandPen = QPen(Qt::magenta, 7.0, Qt::DotLine);
    QCOMPARE(FirstDifference(sheet.Painted(), plain), QString());
}

void PlotDrawingTest::BandHasItsOwnCentrePerFrame()
{
    Sheet sheet;
    sheet.ShowBand(3.0, 1.0);
    sheet.Grid.BandCentres = {1.0, 2.5, 7.0};
    const QImage image = sheet.Painted();
    QCOMPARE(RowsOf(image, 0, BandColour), QStringLiteral("60-79"));
    QCOMPARE(RowsOf(image, 10, BandColour), QStringLiteral("45-65"));
    QCOMPARE(RowsOf(image, 20, BandColour), QStringLiteral("0-20"));
    QCOMPARE(RowsOf(image, 30, BandColour), QStringLiteral("none"));
}

/** The canvas does not bound the strokes; that is the task of the painter's clip. */
void PlotDrawingTest::BandReachesBeyondTheCanvas()
{
    Sheet sheet;
    sheet.ShowBand(3.0, 1.0);
    sheet.Canvas = QRectF(30.0, 45.0, 40.0, 10.0);
    const QImage image = sheet.Painted();
    for (const int column : {0, 20, 30, 50, 70, 90})
    {
        QCOMPARE(RowsOf(image, column, BandColour), QStringLiteral("40-60"));
    }
}

void PlotDrawingTest::GridLiesOverTheBand()
{
    Sheet sheet;
    sheet.ShowGrid();
    sheet.ShowBand(3.5, 1.5);  // rows 30 to 60
    const QImage image = sheet.Painted();
    for (const int row : {1, 29, 30, 45, 60, 61})
    {
        QCOMPARE(image.pixelColor(50, row), GridColour);
    }
    QCOMPARE(RowsOf(image, 50, BandColour), QStringLiteral("none"));
    QCOMPARE(RowsOf(image, 40, GridColour), QStringLiteral("40-40"));
    QCOMPARE(RowsOf(image, 40, BandColour), QStringLiteral("30-60 with gaps"));
}

void PlotDrawingTest::MarkerFillsTheCanvas()
{
    Sheet sheet;
    sheet.Grid.ShowPosition = true;
    sheet.Grid.Position = 2.0;
    sheet.Canvas = QRectF(5.0, 10.0, 90.0, 50.0);
    const QImage image = sheet.Painted();
    QVERIFY(Extent(image, MarkerColour) == QRect(20, 10, 1, 50));
    QCOMPARE(RowsOf(image, 20, MarkerColour), QStringLiteral("10-59"));
    sheet.Grid.ShowPosition = false;
    QVERIFY(Extent(sheet.Painted(), MarkerColour).isNull());
}

void PlotDrawingTest::MarkerLiesOverGridAndBand()
{
    Sheet sheet;
    sheet.ShowGrid();
    sheet.ShowBand(3.5, 1.5);
    sheet.Grid.ShowPosition = true;
    sheet.Grid.Position = 5.0;
    QCOMPARE(RowsOf(sheet.Painted(), 50, MarkerColour), QStringLiteral("0-79"));
    sheet.Grid.Position = 4.0;
    QCOMPARE(RowsOf(sheet.Painted(), 40, MarkerColour), QStringLiteral("0-79"));
}

void PlotDrawingTest::LineJoinsItsPoints()
{
    Sheet sheet;
    sheet.ShowLine({{1.0, 1.0}, {5.0, 1.0}, {5.0, 7.0}});
    const QImage image = sheet.Painted();
    QCOMPARE(RowsOf(image, 30, LineColour), QStringLiteral("70-70"));
    QCOMPARE(RowsOf(image, 50, LineColour), QStringLiteral("10-70"));
    QCOMPARE(RowsOf(image, 60, LineColour), QStringLiteral("none"));
    QCOMPARE(image.pixelColor(30, 40), White);  // the last point is not joined with the first
}

void PlotDrawingTest::OnePointIsADot()
{
    Sheet sheet;
    sheet.ShowLine({{3.0, 4.0}});
    const QImage image = sheet.Painted();
    const QRect dot = Extent(image, LineColour);
    QVERIFY(!dot.isEmpty());
    QVERIFY(QRect(29, 39, 4, 4).contains(dot));  // 30, 40 and 2 by 2, half a pen around it
}

/** The dot starts at the first point, and only there is one. */
void PlotDrawingTest::DotIsTwoWide()
{
    Sheet sheet;
    sheet.ShowLine({{3.0, 4.0}, {8.0, 4.0}});
    QImage expected(100, 80, QImage::Format_RGB32);
    expected.fill(White);
    QPainter painter(&expected);
    painter.setPen(Qt::lightGray);
    QwtPainter::drawEllipse(&painter, QRectF(30.0, 40.0, 2.0, 2.0));
    QwtPainter::drawLine(&painter, QPointF(30.0, 40.0), QPointF(80.0, 40.0));
    painter.end();
    QCOMPARE(FirstDifference(sheet.Painted(), expected), QString());
}

void PlotDrawingTest::LineNeedsPointsAndItsSwitch()
{
    Sheet sheet;
    sheet.ShowLine({});
    QVERIFY(Extent(sheet.Painted(), LineColour).isNull());
    sheet.ShowLine({{1.0, 1.0}, {5.0, 1.0}});
    sheet.Grid.ShowLine = false;
    QVERIFY(Extent(sheet.Painted(), LineColour).isNull());
}

void PlotDrawingTest::LineLiesOverTheMarker()
{
    Sheet sheet;
    sheet.ShowGrid();
    sheet.ShowBand(3.5, 1.5);
    sheet.Grid.ShowPosition = true;
    sheet.Grid.Position = 5.0;
    sheet.ShowLine({{4.0, 6.0}, {6.0, 6.0}});
    const QImage image = sheet.Painted();
    QCOMPARE(image.pixelColor(50, 20), LineColour);
    QCOMPARE(image.pixelColor(50, 10), MarkerColour);
    QCOMPARE(image.pixelColor(40, 35), BandColour);
}

void PlotDrawingTest::BandIsThePlainLoop_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<int>("target");
    for (int shape = 0; shape < BandShapes().size(); ++shape)
    {
        for (int target = 0; target < BandTargets().size(); ++target)
        {
            QTest::addRow("%s, %s", BandShapes().at(shape).Name, BandTargets().at(target).Name)
                << shape << target;
        }
    }
}

/** Nobody can tell from the pixels whether strokes were joined or left out. */
void PlotDrawingTest::BandIsThePlainLoop()
{
    QFETCH(int, shape);
    QFETCH(int, target);
    const BandShape of = BandShapes().at(shape);
    const BandTarget on = BandTargets().at(target);
    const QImage empty = PaintedOn(on, [](QPainter*) {});
    int pictures = 0;
    for (int seed = 1; seed <= Seeds; ++seed)
    {
        QRandomGenerator random(static_cast<quint32>(seed));
        const Band band = of.Make(random);
        const QImage expected = PaintedOn(on, [&](QPainter* p) { DrawPlainly(p, band); });
        const QImage actual = PaintedOn(on, [&](QPainter* p) { DrawByGrid(p, band, on.Canvas); });
        const QString difference = FirstDifference(actual, expected);
        QVERIFY2(difference.isEmpty(),
                 qPrintable(QStringLiteral("seed %1: ").arg(seed) + difference));
        pictures += expected == empty ? 0 : 1;
    }
    QVERIFY2(pictures > Seeds / 3 || !of.CanBeSeen, "too few of the bands could be seen");
}

/** The whole way from the plot's calls to its canvas. */
void PlotDrawingTest::LayersOnThePlot()
{
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve(10.0));  // y from -10 to 10
    const QPointF marker = plot.At({57, 100});
    plot.SetGrid(false, true, true);
    plot.SetPosition(marker.x() + 0.4 * (plot.At({58, 100}).x() - marker.x()));
    plot.SetBand(QVector<double>(11, 5.0), 1.0, QPen(Qt::magenta, 3.0));
    plot.ShowBand(true);
    plot.LeftClick(plot.At({150, 200}));
    plot.LeftClick(plot.At({250, 200}));
    plot.replot();
    const QImage image = plot.canvas()->grab().toImage();
    QCOMPARE(image.pixelColor(57, 100), MarkerColour);
    QCOMPARE(image.pixelColor(59, 100), White);
    QCOMPARE(image.pixelColor(200, 200), LineColour);
    const auto bandAt = [&](double frame, double y)
    {
        const QPointF place(plot.canvasMap(QwtPlot::xBottom).transform(frame),
                            plot.canvasMap(QwtPlot::yLeft).transform(y));
        return Extent(image.copy(qRound(place.x()) - 2, qRound(place.y()), 5, 1), BandColour);
    };
    QVERIFY(!bandAt(4.0, 5.0).isNull());
    QVERIFY(!bandAt(4.0, 5.8).isNull());
    QVERIFY(bandAt(4.0, 6.2).isNull());
    QVERIFY(bandAt(4.0, 3.8).isNull());
    QVERIFY(bandAt(4.5, 5.0).isNull());
}

QTEST_MAIN(PlotDrawingTest)
#include "plotdrawing_test.moc"
