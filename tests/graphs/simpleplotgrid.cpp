// SPDX-License-Identifier: MIT
#include "graphs/plotprobe.h"
#include "graphs/simpleplottest.h"
#include "support/doublelists.h"

#include <QTest>

namespace
{
constexpr int X = QwtPlot::xBottom;
}  // namespace

void SimplePlotTest::DetachKeepsTheRecords()
{
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    plot.DetachCurves();
    QVERIFY(plot.CurveItems().isEmpty());
    plot.DetachCurves();
    plot.Rescale();
    QCOMPARE(Samples(plot.CurveItems().value(0)), QStringLiteral("0:-10 100:10"));
    QCOMPARE(plot.LegendTexts(), QStringList({"probe"}));
}

void SimplePlotTest::ClearTakesEverything()
{
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    plot.LeftClick({1.0, 2.0});
    plot.SetBand({1.0, 2.0}, 3.0, QPen());
    plot.ClearCurves();
    QVERIFY(plot.CurveItems().isEmpty());
    QVERIFY(plot.Grid().Line.isEmpty());
    QVERIFY(plot.Grid().BandCentres.isEmpty());
    plot.AddCurve(QStringLiteral("next"), Qt::red, 1.0);
    plot.SetCurveData(0, {1.0, 2.0}, {5.0, 6.0});
    plot.Rescale();
    QCOMPARE(plot.LegendTexts(), QStringList({"next"}));
    QCOMPARE(Difference(plot.Ends(X), {5.0, 6.0}), QString());
}

void SimplePlotTest::GridSwitches()
{
    PlotProbe plot;
    const auto switches = [&plot]()
    {
        const GridAndPos& grid = plot.Grid();
        return QVector<bool>{grid.xEnabled(), grid.yEnabled(), grid.ShowPosition, grid.ShowLine};
    };
    plot.SetGrid(false, true, false);
    QVERIFY(switches() == QVector<bool>({false, false, true, false}));
    plot.SetGrid(true, false, false);
    QVERIFY(switches() == QVector<bool>({true, true, false, false}));
    plot.SetGrid(false, false, true);
    QVERIFY(switches() == QVector<bool>({false, false, false, true}));
    QVERIFY(!plot.Grid().ShowMarginBand);
}

void SimplePlotTest::PositionPaintsWithoutReplot()
{
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    plot.SetPosition(17.5);
    QCOMPARE(plot.Grid().Position, 17.5);
    QCOMPARE(plot.Paints, 1);  // at once, without an event loop
    QCOMPARE(plot.Replots, 0);
}

void SimplePlotTest::BandIsStored()
{
    PlotProbe plot;
    const QPen pen(Qt::magenta, 3.0);
    plot.SetBand({1.0, 2.0, 3.0}, 4.5, pen);
    QCOMPARE(Difference(plot.Grid().BandCentres, {1.0, 2.0, 3.0}), QString());
    QCOMPARE(plot.Grid().BandHalfHeight, 4.5);
    QVERIFY(plot.Grid().BandPen == pen);
    QVERIFY(!plot.Grid().ShowMarginBand);
    plot.ShowBand(true);
    QVERIFY(plot.Grid().ShowMarginBand);
    plot.ShowBand(false);
    QVERIFY(!plot.Grid().ShowMarginBand);
}

void SimplePlotTest::BandWithoutCentresStaysOff()
{
    PlotProbe plot;
    plot.ShowBand(true);
    QVERIFY(!plot.Grid().ShowMarginBand);
    plot.SetBand({1.0}, 1.0, QPen());
    plot.ShowBand(true);
    plot.SetBand({}, 1.0, QPen());
    plot.ShowBand(true);
    QVERIFY(!plot.Grid().ShowMarginBand);
}

void SimplePlotTest::ClickLine()
{
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    plot.LeftClick({1.0, 2.0});
    QCOMPARE(plot.Replots, 1);
    QCOMPARE(plot.Paints, 1);
    plot.LeftClick({-3.0, 4.0});
    QVERIFY(plot.Grid().Line == QPolygonF(QVector<QPointF>{{1.0, 2.0}, {-3.0, 4.0}}));
    plot.ClearLine();
    QVERIFY(plot.Grid().Line.isEmpty());
}

void SimplePlotTest::RefreshSkipsWhileHidden()
{
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    const QVector<double> before = plot.Ends(X);
    plot.hide();
    plot.Replots = 0;
    plot.SetCurveData(0, {1.0, 2.0}, {5.0, 6.0});
    plot.Refresh();
    QCOMPARE(plot.Replots, 0);
    QCOMPARE(Difference(plot.Ends(X), before), QString());
    QCOMPARE(Samples(plot.CurveItems().value(0)), QStringLiteral("0:-10 100:10"));
    plot.show();
    plot.Replots = 0;
    plot.Refresh();
    QCOMPARE(plot.Replots, 1);
    QCOMPARE(Difference(plot.Ends(X), {5.0, 6.0}), QString());
    QCOMPARE(Samples(plot.CurveItems().value(0)), QStringLiteral("5:1 6:2"));
}

/** Its update comes while the tab is hidden, and nothing else need follow. */
void SimplePlotTest::HiddenPlotIsDrawnWhenItShows()
{
    PlotProbe plot;
    plot.AddCurve(QString(), Qt::red, 1.0);
    plot.SetCurveData(0, {1.0, 2.0}, {5.0, 6.0});
    plot.Rescale();
    plot.Replots = 0;
    plot.show();
    QVERIFY(plot.Replots > 0);
    QCOMPARE(plot.axisScaleDiv(X).lowerBound(), 5.0);
    QCOMPARE(plot.axisScaleDiv(X).upperBound(), 6.0);
}

void SimplePlotTest::ShowShowsAndHides()
{
    PlotProbe plot;
    plot.Show(true);
    QVERIFY(plot.isVisible());
    plot.Show(false);
    QVERIFY(!plot.isVisible());
}

void SimplePlotTest::RectangleIsLogged_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QString>("text");
    QTest::newRow("four numbers") << QRectF(1.5, -2.0, 30.0, 0.25) << "rect [1.5 -2] [30 0.25]";
    QTest::newRow("six digits, then powers")
        << QRectF(1234567.0, 0.00001, 123456.7, 0.0) << "rect [1.23457e+06 1e-05] [123457 0]";
}

/** Chatter: it shows as the last action and nowhere else. */
void SimplePlotTest::RectangleIsLogged()
{
    QFETCH(QRectF, rect);
    QFETCH(QString, text);
    const LogView log;
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    plot.pointsSelected(rect);
    QCOMPARE(log.Label(), text);
    QCOMPARE(log.Area(), QString());
    QCOMPARE(plot.Replots, 0);
    QVERIFY(plot.Grid().Line.isEmpty());
    QCOMPARE(Difference(plot.Ends(X), {0.0, 100.0}), QString());
}

void SimplePlotTest::PolygonBecomesTheLine_data()
{
    QTest::addColumn<QPolygon>("polygon");
    QTest::addColumn<QString>("text");
    QTest::newRow("no point") << QPolygon() << "Points[0:0] = ";
    QTest::newRow("one point") << QPolygon(QVector<QPoint>{{3, -4}}) << "Points[0:1] = {3:-4},";
    QTest::newRow("x in full, y in six digits")
        << QPolygon(QVector<QPoint>{{1234567, 1234567}, {-2, 0}})
        << "Points[0:2] = {1234567:1.23457e+06},{-2:0},";
}

void SimplePlotTest::PolygonBecomesTheLine()
{
    QFETCH(QPolygon, polygon);
    QFETCH(QString, text);
    const LogView log;
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    plot.LeftClick({1.5, 2.5});
    plot.Replots = 0;
    plot.Line(polygon);
    QVERIFY(plot.Grid().Line == QPolygonF(polygon));
    QCOMPARE(plot.Replots, 1);
    QCOMPARE(log.Label(), text);
    QCOMPARE(log.Area(), QString());
}
