// SPDX-License-Identifier: MIT
#include "graphs/simpleplot.h"
#include "app/endguard.h"
#include "graphs/plotprobe.h"
#include "graphs/scalewatch.h"
#include "graphs/simpleplottest.h"
#include "support/doublelists.h"
#include "support/testhome.h"

#include <qwt_plot_layout.h>

#include <QMetaMethod>
#include <QTest>

#include <limits>
#include <memory>
#include <type_traits>

namespace
{
const TestHome Home;

constexpr int X = QwtPlot::xBottom;
constexpr int Y = QwtPlot::yLeft;

/** Signature with the names of the arguments. */
QString Told(const QMetaMethod& method)
{
    const QByteArray kind = method.methodType() == QMetaMethod::Signal ? "signal " : "slot ";
    return QString::fromLatin1(kind + method.methodSignature() + ' ' +
                               method.parameterNames().join(','));
}

}  // namespace

void SimplePlotTest::init()
{
    Guard = std::make_unique<MessageGuard>();
}

void SimplePlotTest::cleanup()
{
    QCOMPARE(EndGuard(Guard), QStringList());
}

void SimplePlotTest::SignalsAndSlotsInOrder()
{
    const QMetaObject& meta = SimplePlot::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        methods.append(Told(meta.method(i)));
    }
    QCOMPARE(methods,
             QStringList({"signal LeftClickPoint(QPointF) pos", "signal RectDraged(QRectF) rect",
                          "slot Show(bool) on", "slot ZoomHorizontal(bool) Enable",
                          "slot ZoomVertical(bool) Enalbe", "slot LeftClick(QPointF) pos",
                          "slot pointsSelected(QRectF) rect", "slot Line(QPolygon) poly"}));
}

void SimplePlotTest::RecordFieldsInOrder()
{
    PlotCurve record;
    auto& [curve, colour, title, plot, samples, nextX, xStep, maxSamples] = record;
    QVERIFY((std::is_same_v<decltype(curve), QwtPlotCurve*>));
    QVERIFY((std::is_same_v<decltype(colour), QColor>));
    QVERIFY((std::is_same_v<decltype(title), QString>));
    QVERIFY((std::is_same_v<decltype(plot), SimplePlot*>));
    QVERIFY((std::is_same_v<decltype(samples), QVector<QPointF>>));
    QVERIFY((std::is_same_v<decltype(xStep), double>));
    QVERIFY((std::is_same_v<decltype(maxSamples), std::int32_t>));
    QVERIFY(&nextX == &record.NextX && &xStep == &record.XStep);
    QVERIFY(curve == nullptr && samples.isEmpty());
    QCOMPARE(nextX, 0.0);
    QCOMPARE(maxSamples, 3000000);
}

void SimplePlotTest::LooksAtTheStart()
{
    const PlotProbe plot;
    QVERIFY(plot.canvasBackground() == QBrush(Qt::white, Qt::SolidPattern));
    QVERIFY(qobject_cast<const QwtLegend*>(plot.legend()) != nullptr);
    QCOMPARE(plot.plotLayout()->legendPosition(), QwtPlot::RightLegend);
    QCOMPARE(plot.plotLayout()->legendRatio(), 0.5);  // what the toolkit makes of -1.0
    QVERIFY(plot.CurveItems().isEmpty());
    QCOMPARE(plot.itemList().size(), 1);
    QVERIFY(!plot.Grid().ShowPosition && !plot.Grid().ShowMarginBand && !plot.Grid().ShowLine);
}

void SimplePlotTest::CurvesAppearWithRescale()
{
    PlotProbe plot;
    plot.AddCurve(QStringLiteral("one"), Qt::red, 1.0);
    plot.AddCurve(QStringLiteral("two"), Qt::darkGreen, 1.0);
    plot.SetCurveData(1, {4.0, 5.0, 6.5}, {1.0, 2.0, 3.0});
    plot.SetCurveData(0, {7.0, -8.0}, {0.0, 3.0});
    QVERIFY(plot.CurveItems().isEmpty());
    plot.Rescale();
    const QVector<QwtPlotCurve*> curves = plot.CurveItems();
    QCOMPARE(curves.size(), 2);
    QCOMPARE(Samples(curves.at(0)), QStringLiteral("0:7 3:-8"));
    QCOMPARE(Samples(curves.at(1)), QStringLiteral("1:4 2:5 3:6.5"));
    QCOMPARE(curves.at(0)->title().text(), QStringLiteral("one"));
    QVERIFY(curves.at(0)->pen() == QPen(QBrush(Qt::red), 2.0, Qt::SolidLine));
    QVERIFY(curves.at(1)->pen() == QPen(QBrush(Qt::darkGreen), 2.0, Qt::SolidLine));
    QCOMPARE(plot.LegendTexts(), QStringList({"one", "two"}));
    for (const QwtPlotCurve* curve : curves)
    {
        QVERIFY(!curve->testRenderHint(QwtPlotItem::RenderAntialiased));
        QVERIFY(curve->testPaintAttribute(QwtPlotCurve::ClipPolygons));
    }
    QCOMPARE(plot.Replots, 0);
}

void SimplePlotTest::RescaleReplacesTheCurves()
{
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    plot.CurveItems().constFirst()->setTitle(QStringLiteral("touched"));
    plot.SetCurveData(0, {1.0, 2.0}, {5.0, 6.0});
    plot.Rescale();
    QCOMPARE(plot.CurveItems().size(), 1);
    QCOMPARE(Samples(plot.CurveItems().constFirst()), QStringLiteral("5:1 6:2"));
    QCOMPARE(plot.LegendTexts(), QStringList({"probe"}));
}

void SimplePlotTest::BoundsOfTheAxes_data()
{
    using List = QVector<double>;
    QTest::addColumn<QVector<QVector<double>>>("curves");  // x and y of each in turn
    QTest::addColumn<QVector<double>>("x");
    QTest::addColumn<QVector<double>>("y");
    QTest::newRow("one curve") << QVector<List>{{10.0, 20.0}, {5.0, 6.0}} << List{10.0, 20.0}
                               << List{5.0, 6.0};
    QTest::newRow("the widest of all")
        << QVector<List>{{10.0, 20.0}, {5.0, 6.0}, {15.0, 25.0}, {-3.0, 5.5}} << List{10.0, 25.0}
        << List{-3.0, 6.0};
    QTest::newRow("an empty curve pulls both to 0")
        << QVector<List>{{10.0, 20.0}, {5.0, 6.0}, {}, {}} << List{0.0, 20.0} << List{0.0, 6.0};
    QTest::newRow("an empty curve in front does too")
        << QVector<List>{{}, {}, {-20.0, -10.0}, {-6.0, -5.0}} << List{-20.0, 0.0}
        << List{-6.0, 0.0};
    QTest::newRow("x counts from the first to the last sample")
        << QVector<List>{{5.0, 100.0, -50.0, 7.0}, {1.0, 2.0, 3.0, 4.0}} << List{5.0, 7.0}
        << List{1.0, 4.0};
    QTest::newRow("backward samples do")
        << QVector<List>{{7.0, 5.0}, {1.0, 2.0}} << List{5.0, 7.0} << List{1.0, 2.0};
}

void SimplePlotTest::BoundsOfTheAxes()
{
    QFETCH(QVector<QVector<double>>, curves);
    QFETCH(QVector<double>, x);
    QFETCH(QVector<double>, y);
    PlotProbe plot;
    for (int i = 0; i < curves.size(); i += 2)
    {
        plot.AddCurve(QString::number(i), Qt::red, 1.0);
        plot.SetCurveData(i / 2, curves.at(i + 1), curves.at(i));
    }
    plot.Rescale();
    QCOMPARE(Difference(plot.Ends(X), x), QString());
    QCOMPARE(Difference(plot.Ends(Y), y), QString());
    QCOMPARE(plot.axisStepSize(X), 0.0);
    QCOMPARE(plot.axisStepSize(Y), 0.0);
}

/** Whatever the number of samples, each of them may be the lowest or the highest. */
void SimplePlotTest::BoundsSeeEverySample()
{
    for (int count = 2; count <= 11; ++count)
    {
        for (int extreme = 0; extreme < count; ++extreme)
        {
            QVector<double> x;
            for (int i = 0; i < count; ++i)
            {
                x.append(i);
            }
            QVector<double> y(count, 1.0);
            y[extreme] = extreme % 2 == 0 ? 9.0 : -9.0;
            PlotProbe plot;
            plot.AddCurve(QString(), Qt::red, 1.0);
            plot.SetCurveData(0, y, x);
            plot.Rescale();
            const QVector<double> expected =
                extreme % 2 == 0 ? QVector<double>{1.0, 9.0} : QVector<double>{-9.0, 1.0};
            QCOMPARE(Difference(plot.Ends(Y), expected), QString());
        }
    }
}

void SimplePlotTest::LimitsClampTheAxes_data()
{
    QTest::addColumn<QVector<double>>("limits");  // of x 10 to 20 and y 5 to 6
    QTest::addColumn<QVector<double>>("ends");
    using List = QVector<double>;
    QTest::newRow("wider limits") << List{0.0, 30.0, 0.0, 30.0} << List{10.0, 20.0, 5.0, 6.0};
    QTest::newRow("the lower x") << List{12.0, 30.0, 0.0, 30.0} << List{12.0, 20.0, 5.0, 6.0};
    QTest::newRow("the upper x") << List{0.0, 18.0, 0.0, 30.0} << List{10.0, 18.0, 5.0, 6.0};
    QTest::newRow("the lower y") << List{0.0, 30.0, 5.25, 30.0} << List{10.0, 20.0, 5.25, 6.0};
    QTest::newRow("the upper y") << List{0.0, 30.0, 0.0, 5.75} << List{10.0, 20.0, 5.0, 5.75};
}

void SimplePlotTest::LimitsClampTheAxes()
{
    QFETCH(QVector<double>, limits);
    QFETCH(QVector<double>, ends);
    PlotProbe plot;
    plot.AddCurve(QString(), Qt::red, 1.0);
    plot.SetCurveData(0, {5.0, 6.0}, {10.0, 20.0});
    plot.SetLimits(limits.at(0), limits.at(1), limits.at(2), limits.at(3));
    plot.Rescale();
    QCOMPARE(Difference(plot.Ends(X) + plot.Ends(Y), ends), QString());
}

/** Nothing guards the axes; the toolkit complains of the width of each. */
void SimplePlotTest::NoCurvesGiveInvertedBounds()
{
    PlotProbe plot;
    const QString complaint = QStringLiteral("QwtLinearScaleEngine::divideScale: overflow");
    Guard->Expect(QtWarningMsg, complaint);
    Guard->Expect(QtWarningMsg, complaint);
    const ScaleWatch& x = ScaleWatch::On(plot, X);
    const ScaleWatch& y = ScaleWatch::On(plot, Y);
    plot.Rescale();
    plot.replot();
    QCOMPARE(Difference(x.Ends, InvertedExtremes), QString());
    QCOMPARE(Difference(y.Ends, InvertedExtremes), QString());
    QVERIFY(!plot.axisAutoScale(X) && !plot.axisAutoScale(Y));
}

void SimplePlotTest::BadCurveDataChangesNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QVector<double>>("y");
    QTest::addColumn<QVector<double>>("x");
    using List = QVector<double>;
    QTest::newRow("index at the number of curves") << 1 << List{1.0, 2.0} << List{3.0, 4.0};
    QTest::newRow("index far beyond") << 1000 << List{1.0, 2.0} << List{3.0, 4.0};
    QTest::newRow("more x than y") << 0 << List{1.0} << List{3.0, 4.0};
    QTest::newRow("more y than x") << 0 << List{1.0, 2.0} << List{3.0};
    QTest::newRow("no x") << 0 << List{1.0, 2.0} << List{};
}

void SimplePlotTest::BadCurveDataChangesNothing()
{
    QFETCH(int, index);
    QFETCH(QVector<double>, y);
    QFETCH(QVector<double>, x);
    PlotProbe plot;
    plot.AddCurve(QString(), Qt::red, 1.0);
    plot.SetCurveData(index, y, x);
    plot.Rescale();
    QVERIFY(plot.CurveItems().isEmpty());  // a new curve stays empty
    plot.SetCurveData(0, {8.0, 9.0}, {6.0, 7.0});
    plot.SetCurveData(index, y, x);
    plot.Rescale();
    QCOMPARE(Samples(plot.CurveItems().value(0)), QStringLiteral("6:8 7:9"));
}

void SimplePlotTest::EmptyDataKeepsTheDrawnCurve()
{
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    const QwtPlotCurve* drawn = plot.CurveItems().constFirst();
    plot.SetCurveData(0, {}, {});
    plot.AddCurve(QStringLiteral("other"), Qt::red, 1.0);
    plot.SetCurveData(1, {1.0, 2.0}, {5.0, 6.0});
    plot.Rescale();
    QCOMPARE(plot.CurveItems().size(), 2);
    QCOMPARE(plot.CurveItems().constFirst(), drawn);
    QCOMPARE(Samples(drawn), QStringLiteral("0:-10 100:10"));
    QCOMPARE(Difference(plot.Ends(X), {0.0, 6.0}), QString());
}

void SimplePlotTest::AppendContinues()
{
    PlotProbe plot;
    plot.AddCurve(QString(), Qt::red, 0.5);
    plot.AddCurve(QString(), Qt::red, 2.0);
    plot.AppendCurveData(0, {10.0, 11.0, 12.0, 13.0}, 1, 2);
    plot.AppendCurveData(1, {20.0, 21.0}, 0, 2);
    plot.AppendCurveData(0, {14.0}, 0, 1);
    plot.Rescale();
    QCOMPARE(Samples(plot.CurveItems().value(0)), QStringLiteral("0:11 0.5:12 1:14"));
    QCOMPARE(Samples(plot.CurveItems().value(1)), QStringLiteral("0:20 2:21"));
    plot.SetCurveData(0, {1.0}, {7.0});
    plot.AppendCurveData(0, {15.0}, 0, 1);
    plot.Rescale();
    QCOMPARE(Samples(plot.CurveItems().value(0)), QStringLiteral("7:1 1.5:15"));
}

void SimplePlotTest::AppendOutOfRangeIsLeft_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("count");
    QTest::newRow("no such curve") << 1 << 0 << 1;
    QTest::newRow("a curve in front of the first") << -1 << 0 << 1;
    QTest::newRow("from in front of the values") << 0 << -1 << 1;
    QTest::newRow("nothing") << 0 << 0 << 0;
    QTest::newRow("less than nothing") << 0 << 0 << -1;
    QTest::newRow("one value too many") << 0 << 0 << 4;
    QTest::newRow("beyond the last value") << 0 << 2 << 2;
    QTest::newRow("an end beyond all numbers") << 0 << 2 << std::numeric_limits<int>::max();
}

void SimplePlotTest::AppendOutOfRangeIsLeft()
{
    QFETCH(int, index);
    QFETCH(int, first);
    QFETCH(int, count);
    PlotProbe plot;
    plot.AddCurve(QString(), Qt::red, 1.0);
    plot.SetCurveData(0, {7.0, 8.0}, {0.0, 1.0});
    plot.AppendCurveData(index, {1.0, 2.0, 3.0}, first, count);
    plot.Rescale();
    QCOMPARE(plot.CurveItems().size(), 1);
    QCOMPARE(Samples(plot.CurveItems().value(0)), QStringLiteral("0:7 1:8"));
}

void SimplePlotTest::AppendShiftsAtTheLimit()
{
    constexpr int limit = 3000000;
    PlotProbe plot;
    plot.AddCurve(QString(), Qt::red, 1.0);
    plot.AppendCurveData(0, QVector<double>(limit - 5, 1.0), 0, limit - 5);
    plot.AppendCurveData(0, {2.0, 3.0, 4.0, 5.0, 6.0}, 0, 5);
    plot.Rescale();
    QCOMPARE(plot.CurveItems().value(0)->dataSize(), std::size_t{limit});
    QCOMPARE(plot.CurveItems().value(0)->sample(0), QPointF(0.0, 1.0));
    plot.AppendCurveData(0, {7.0, 8.0, 9.0}, 0, 3);
    plot.Rescale();
    const QwtPlotCurve* curve = plot.CurveItems().value(0);
    QCOMPARE(curve->dataSize(), std::size_t{limit});
    QCOMPARE(curve->sample(0), QPointF(3.0, 1.0));
    QCOMPARE(curve->sample(limit - 4), QPointF(limit - 1.0, 6.0));
    QCOMPARE(curve->sample(limit - 1), QPointF(limit + 2.0, 9.0));
}

/** As many fall out as come, also where fewer would do. */
void SimplePlotTest::AppendPastTheLimitDoesNotGrow()
{
    constexpr int limit = 3000000;
    PlotProbe plot;
    plot.AddCurve(QString(), Qt::red, 1.0);
    plot.AppendCurveData(0, QVector<double>(limit - 1, 1.0), 0, limit - 1);
    plot.AppendCurveData(0, {7.0, 8.0, 9.0}, 0, 3);
    plot.Rescale();
    const QwtPlotCurve* curve = plot.CurveItems().value(0);
    QCOMPARE(curve->dataSize(), std::size_t{limit - 1});
    QCOMPARE(curve->sample(0), QPointF(3.0, 1.0));
    QCOMPARE(curve->sample(limit - 2), QPointF(limit + 1.0, 9.0));
}

QTEST_MAIN(SimplePlotTest)
