// SPDX-License-Identifier: MIT
#include "graphs/plotprobe.h"
#include "graphs/simpleplottest.h"
#include "support/doublelists.h"

#include <qwt_picker_machine.h>
#include <qwt_plot_magnifier.h>
#include <qwt_plot_panner.h>
#include <qwt_plot_picker.h>

#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

namespace
{
constexpr int X = QwtPlot::xBottom;
constexpr int Y = QwtPlot::yLeft;
constexpr double Rounding = 1e-9;  // of axis values up to 100, which are shifted by subtraction

const QPoint PressedAt(100, 120);
const QPoint ReleasedAt(180, 60);

/** The five mouse tools of a plot, in the order of their making. */
struct Tools
{
    explicit Tools(const SimplePlot& plot)
    {
        for (QObject* child : plot.canvas()->children())
        {
            if (auto* panner = qobject_cast<QwtPlotPanner*>(child))
            {
                Panner = panner;
                Order += QLatin1Char('P');
            }
            else if (auto* magnifier = qobject_cast<QwtPlotMagnifier*>(child))
            {
                Magnifier = magnifier;
                Order += QLatin1Char('M');
            }
            else if (auto* picker = qobject_cast<QwtPlotPicker*>(child))
            {
                Pickers.append(picker);
                Order += QLatin1Char('p');
            }
        }
    }

    /** Panner, tracker, click, rectangle; as a row of the table of modes. */
    [[nodiscard]] QVector<bool> Enabled() const
    {
        return {Panner->isEnabled(), Pickers.at(0)->isEnabled(), Pickers.at(1)->isEnabled(),
                Pickers.at(2)->isEnabled()};
    }

    QwtPlotPanner* Panner = nullptr;
    QwtPlotMagnifier* Magnifier = nullptr;
    QVector<QwtPlotPicker*> Pickers;
    QString Order;
};

/** A plot with a curve in a mouse mode, and who hears what its mouse tools tell. */
struct HeardPlot
{
    explicit HeardPlot(int mode) : IsShown(Plot.ShowWithCurve()), Listener(Plot, Log)
    {
        Plot.SetMouseMode(mode);
        Plot.ConnectPickers(&Listener, SLOT(TakePoint(QPointF)), SLOT(TakeRect(QRectF)));
    }

    const LogView Log;
    PlotProbe Plot;
    const bool IsShown;
    PickerListener Listener;
};

void Click(SimplePlot& plot, const QPoint& pixel)
{
    QTest::mouseClick(plot.canvas(), Qt::LeftButton, Qt::NoModifier, pixel);
}

void Drag(SimplePlot& plot)
{
    QWidget* canvas = plot.canvas();
    QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, PressedAt);
    for (const QPoint& place : {QPoint(140, 100), ReleasedAt})
    {
        QMouseEvent move(QEvent::MouseMove, place, canvas->mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(canvas, &move);
    }
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, ReleasedAt);
}

void TurnWheel(SimplePlot& plot)
{
    const QPointF middle(plot.canvas()->rect().center());
    QWheelEvent turn(middle, plot.canvas()->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, 120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(plot.canvas(), &turn);
}

/** Frames and values between two pixels. */
QRectF Between(const PlotProbe& plot, const QPoint& one, const QPoint& other)
{
    return QRectF(plot.At(one), plot.At(other)).normalized();
}

QString Difference(const QRectF& actual, const QRectF& expected)
{
    return Difference(QVector<double>{actual.x(), actual.y(), actual.right(), actual.bottom()},
                      {expected.x(), expected.y(), expected.right(), expected.bottom()}, Rounding);
}
}  // namespace

void PickerListener::TakePoint(const QPointF& point)
{
    Points.append(point);
    LineAtPoint.append(Plot.Grid().Line);
}

void PickerListener::TakeRect(const QRectF& rect)
{
    Rects.append(rect);
    LogAtRect.append(Log.Label());
}

void SimplePlotTest::ToolsAtTheStart()
{
    const PlotProbe plot;
    const Tools tools(plot);
    QCOMPARE(tools.Order, QStringLiteral("PMppp"));
    for (const QwtPlotPicker* picker : tools.Pickers)
    {
        QCOMPARE(picker->xAxis(), X);
        QCOMPARE(picker->yAxis(), Y);
        QCOMPARE(picker->trackerMode(), QwtPicker::AlwaysOn);
    }
    QCOMPARE(tools.Pickers.at(0)->rubberBand(), QwtPicker::CrossRubberBand);
    QCOMPARE(tools.Pickers.at(1)->rubberBand(), QwtPicker::CrossRubberBand);
    QCOMPARE(tools.Pickers.at(2)->rubberBand(), QwtPicker::RectRubberBand);
    QVERIFY(tools.Pickers.at(0)->stateMachine() == nullptr);
    QVERIFY(dynamic_cast<const QwtPickerClickPointMachine*>(tools.Pickers.at(1)->stateMachine()));
    QVERIFY(dynamic_cast<const QwtPickerDragRectMachine*>(tools.Pickers.at(2)->stateMachine()));
    QVERIFY(tools.Pickers.at(0)->trackerPen() == QPen(QBrush(Qt::lightGray), 2.0));
    QVERIFY(tools.Pickers.at(1)->trackerPen() == QPen(QBrush(Qt::darkMagenta), 2.0));
    QVERIFY(tools.Pickers.at(2)->trackerPen() == QPen(QBrush(Qt::darkMagenta), 2.0));
    QVERIFY(tools.Magnifier->isEnabled());
    QVERIFY(tools.Magnifier->isAxisEnabled(X) && tools.Magnifier->isAxisEnabled(Y));
}

void SimplePlotTest::ModesChooseTheTools_data()
{
    using Row = QVector<bool>;
    QTest::addColumn<QVector<int>>("modes");
    QTest::addColumn<QVector<bool>>("enabled");
    QTest::newRow("0 from the start") << QVector<int>{} << Row{true, true, false, false};
    QTest::newRow("1") << QVector<int>{1} << Row{false, false, true, false};
    QTest::newRow("2") << QVector<int>{2} << Row{false, false, false, true};
    QTest::newRow("1 after 2") << QVector<int>{2, 1} << Row{false, false, true, false};
    QTest::newRow("2 after 1") << QVector<int>{1, 2} << Row{false, false, false, true};
    QTest::newRow("back to 0") << QVector<int>{1, 2, 0} << Row{true, true, false, false};
    QTest::newRow("3 changes nothing") << QVector<int>{1, 3} << Row{false, false, true, false};
    QTest::newRow("-1 changes nothing") << QVector<int>{2, -1} << Row{false, false, false, true};
}

void SimplePlotTest::ModesChooseTheTools()
{
    QFETCH(QVector<int>, modes);
    QFETCH(QVector<bool>, enabled);
    PlotProbe plot;
    for (const int mode : modes)
    {
        plot.SetMouseMode(mode);
    }
    QVERIFY(Tools(plot).Enabled() == enabled);
    QVERIFY(Tools(plot).Magnifier->isEnabled());
}

void SimplePlotTest::ClickReachesTheLineFirst()
{
    HeardPlot heard(1);
    QVERIFY(heard.IsShown);
    PlotProbe& plot = heard.Plot;
    const PickerListener& listener = heard.Listener;
    Click(plot, PressedAt);
    Click(plot, ReleasedAt);
    const QVector<QPointF> points = {plot.At(PressedAt), plot.At(ReleasedAt)};
    QCOMPARE(listener.Points, points);
    QVERIFY(plot.Grid().Line == QPolygonF(points));
    QCOMPARE(listener.LineAtPoint.size(), 2);
    QVERIFY(listener.LineAtPoint.at(0) == QPolygonF(points.mid(0, 1)));
    QVERIFY(listener.LineAtPoint.at(1) == QPolygonF(points));
    QVERIFY(listener.Rects.isEmpty());
    QCOMPARE(plot.Replots, 2);
}

void SimplePlotTest::OtherModesTakeNoPoints_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("0") << 0;
    QTest::newRow("2") << 2;
}

void SimplePlotTest::OtherModesTakeNoPoints()
{
    QFETCH(int, mode);
    HeardPlot heard(mode);
    QVERIFY(heard.IsShown);
    PlotProbe& plot = heard.Plot;
    const PickerListener& listener = heard.Listener;
    Click(plot, PressedAt);
    QVERIFY(listener.Points.isEmpty());
    QVERIFY(plot.Grid().Line.isEmpty());
}

void SimplePlotTest::DragSelectsARectangle()
{
    HeardPlot heard(2);
    QVERIFY(heard.IsShown);
    PlotProbe& plot = heard.Plot;
    const PickerListener& listener = heard.Listener;
    Drag(plot);
    QCOMPARE(listener.Rects.size(), 1);
    const QRectF rect = listener.Rects.constFirst();
    QCOMPARE(Difference(rect, Between(plot, PressedAt, ReleasedAt)), QString());
    const auto number = [](double value) { return QString::number(value, 'g', 6); };
    const QString text = "rect [" + number(rect.x()) + ' ' + number(rect.y()) + "] [" +
                         number(rect.width()) + ' ' + number(rect.height()) + ']';
    QCOMPARE(listener.LogAtRect, QStringList({text}));  // the plot's own slot comes first
    QVERIFY(listener.Points.isEmpty());
    QVERIFY(plot.Grid().Line.isEmpty());
    QCOMPARE(::Difference(plot.Ends(X), {0.0, 100.0}), QString());
}

void SimplePlotTest::DragPansInMode0Only_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("0 pans") << 0;
    QTest::newRow("1 does not") << 1;
    QTest::newRow("2 does not") << 2;
}

void SimplePlotTest::DragPansInMode0Only()
{
    QFETCH(int, mode);
    HeardPlot heard(mode);
    QVERIFY(heard.IsShown);
    PlotProbe& plot = heard.Plot;
    const PickerListener& listener = heard.Listener;
    const QPointF shift = mode == 0 ? plot.At(ReleasedAt) - plot.At(PressedAt) : QPointF();
    Drag(plot);
    QCOMPARE(::Difference(plot.Ends(X), {0.0 - shift.x(), 100.0 - shift.x()}, Rounding), QString());
    QCOMPARE(::Difference(plot.Ends(Y), {-10.0 - shift.y(), 10.0 - shift.y()}, Rounding),
             QString());
    QCOMPARE(listener.Rects.size(), mode == 2 ? 1 : 0);
}

void SimplePlotTest::WheelZoomsTheAxesThatMay_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    for (const int mode : {0, 1, 2})
    {
        QTest::addRow("both in mode %d", mode) << mode << true << true;
        QTest::addRow("x only in mode %d", mode) << mode << true << false;
        QTest::addRow("y only in mode %d", mode) << mode << false << true;
        QTest::addRow("none in mode %d", mode) << mode << false << false;
    }
}

void SimplePlotTest::WheelZoomsTheAxesThatMay()
{
    QFETCH(int, mode);
    QFETCH(bool, horizontal);
    QFETCH(bool, vertical);
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve());
    plot.SetMouseMode(mode);
    plot.ZoomHorizontal(!horizontal);
    plot.ZoomVertical(!vertical);
    plot.ZoomHorizontal(horizontal);
    plot.ZoomVertical(vertical);
    TurnWheel(plot);
    const auto width = [&plot](int axis) { return plot.Ends(axis).at(1) - plot.Ends(axis).at(0); };
    QCOMPARE(width(X) != 100.0, horizontal);
    QCOMPARE(width(Y) != 20.0, vertical);
}

void SimplePlotTest::OwnSignalsAreNeverSent()
{
    HeardPlot heard(1);
    QVERIFY(heard.IsShown);
    PlotProbe& plot = heard.Plot;
    const PickerListener& listener = heard.Listener;
    const QSignalSpy points(&plot, &SimplePlot::LeftClickPoint);
    const QSignalSpy rects(&plot, &SimplePlot::RectDraged);
    Click(plot, PressedAt);
    plot.SetMouseMode(2);
    Drag(plot);
    QCOMPARE(listener.Points.size(), 1);
    QCOMPARE(listener.Rects.size(), 1);
    QVERIFY(points.isEmpty() && rects.isEmpty());
}
