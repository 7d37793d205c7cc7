// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "graphs/plotprobe.h"
#include "graphs/timescaledraw.h"
#include "support/testhome.h"

#include <qwt_scale_engine.h>
#include <qwt_text.h>

#include <QTest>
#include <QTime>

#include <cmath>
#include <limits>
#include <memory>
#include <typeinfo>

namespace
{
const TestHome Home;

constexpr int OtherAxes[] = {QwtPlot::yLeft, QwtPlot::yRight, QwtPlot::xTop};

template <typename Engine>
bool IsOfBaseTen(const QwtScaleEngine* engine)
{
    return typeid(*engine) == typeid(Engine) && engine->base() == 10;
}
}  // namespace

/** What stands at the axes of a plot: times, titles, kinds of scale. */
class TimeScaleTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void Label_data();
    void Label();
    void ScaleOfMilliseconds_data();
    void ScaleOfMilliseconds();
    void LastCallCounts();
    void TimesStandAtTheAxis();
    void NumbersStandDenserThanTimes();
    void Titles();
    void Engines_data();
    void Engines();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void TimeScaleTest::init()
{
    Guard = std::make_unique<MessageGuard>();
}

void TimeScaleTest::cleanup()
{
    QCOMPARE(EndGuard(Guard), QStringList());
}

void TimeScaleTest::Label_data()
{
    QTest::addColumn<double>("msPerFrame");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 40.0 << 0.0 << "00:00:000";
    QTest::newRow("125 seconds and 7 ms") << 1.0 << 125007.0 << "02:05:007";
    QTest::newRow("125 seconds and 7 ms in frames") << 0.5 << 250014.0 << "02:05:007";
    QTest::newRow("frame 25 at 40 ms is a second") << 40.0 << 25.0 << "00:01:000";
    QTest::newRow("the last millisecond of a second") << 1.0 << 999.0 << "00:00:999";
    QTest::newRow("the last millisecond of a minute") << 1.0 << 59999.0 << "00:59:999";
    QTest::newRow("a full minute") << 1.0 << 60000.0 << "01:00:000";
    QTest::newRow("parts of a millisecond are cut") << 0.999 << 1.0 << "00:00:000";
    QTest::newRow("30 frames of 33.3667 ms are cut") << 33.3667 << 30.0 << "00:01:001";
    QTest::newRow("half a frame") << 40.0 << 12.5 << "00:00:500";
    QTest::newRow("ten of all") << 1.0 << 610010.0 << "10:10:010";
    QTest::newRow("an hour is 60 minutes") << 1000.0 << 3600.0 << "60:00:000";
    QTest::newRow("minutes grow to three digits") << 1000.0 << 6000.5 << "100:00:500";
    QTest::newRow("the largest time") << 1.0 << 2147483647.0 << "35791:23:647";
    QTest::newRow("the longest frame") << 100000.0 << 1.0 << "01:40:000";
    QTest::newRow("minus one has its sign behind the padding") << 1.0 << -1.0 << "00:00:0-1";
    QTest::newRow("minus a part is cut to zero") << 1.0 << -0.9 << "00:00:000";
    QTest::newRow("minus ten") << 1.0 << -10.0 << "00:00:-10";
    QTest::newRow("minus one second") << 40.0 << -25.0 << "00:-1:000";
    QTest::newRow("minus 1500 fills its field") << 1.0 << -1500.0 << "00:-1:-500";
    QTest::newRow("every part is negative") << 1.0 << -61001.0 << "-1:-1:0-1";
    QTest::newRow("minus 125 seconds and 7 ms") << 1.0 << -125007.0 << "-2:-5:0-7";
}

void TimeScaleTest::Label()
{
    QFETCH(double, msPerFrame);
    QFETCH(double, value);
    QFETCH(QString, text);
    const TimeScaleDraw scale(msPerFrame);
    QCOMPARE(scale.label(value).text(), text);
    const QwtScaleDraw& asTheToolkitSees = scale;
    QCOMPARE(asTheToolkitSees.label(value).text(), text);
}

void TimeScaleTest::ScaleOfMilliseconds_data()
{
    QTest::addColumn<double>("msPerFrame");
    QTest::addColumn<QString>("textOfFrame3");  // empty for the plain scale of numbers
    QTest::newRow("40 ms show times") << 40.0 << "00:00:120";
    QTest::newRow("100000 ms is the last that shows times") << 100000.0 << "05:00:000";
    QTest::newRow("100000.5 ms show numbers") << 100000.5 << "";
    QTest::newRow("endless frames show numbers") << std::numeric_limits<double>::infinity() << "";
    QTest::newRow("0 shows numbers") << 0.0 << "";
    QTest::newRow("the smallest time shows times")
        << std::numeric_limits<double>::denorm_min() << "00:00:000";
    QTest::newRow("-1 shows numbers") << -1.0 << "";
    QTest::newRow("-40 shows numbers") << -40.0 << "";
    QTest::newRow("no number shows numbers") << std::nan("") << "";
}

void TimeScaleTest::ScaleOfMilliseconds()
{
    QFETCH(double, msPerFrame);
    QFETCH(QString, textOfFrame3);
    PlotProbe plot;
    plot.SetTimeScale(msPerFrame);
    const QwtScaleDraw* scale = plot.axisScaleDraw(QwtPlot::xBottom);
    const auto* times = dynamic_cast<const TimeScaleDraw*>(scale);
    QCOMPARE(times != nullptr, !textOfFrame3.isEmpty());
    if (times != nullptr)
    {
        QCOMPARE(times->label(3.0).text(), textOfFrame3);
    }
    else
    {
        QVERIFY(typeid(*scale) == typeid(QwtScaleDraw));
    }
    for (const int axis : OtherAxes)
    {
        QVERIFY(dynamic_cast<const TimeScaleDraw*>(plot.axisScaleDraw(axis)) == nullptr);
    }
}

void TimeScaleTest::LastCallCounts()
{
    PlotProbe plot;
    const auto times = [&plot]()
    { return dynamic_cast<const TimeScaleDraw*>(plot.axisScaleDraw(QwtPlot::xBottom)); };
    QVERIFY(times() == nullptr);
    plot.SetTimeScale(40.0);
    QCOMPARE(times()->label(1.0).text(), QStringLiteral("00:00:040"));
    plot.SetTimeScale(20.0);
    QCOMPARE(times()->label(1.0).text(), QStringLiteral("00:00:020"));
    plot.SetTimeScale(-1.0);
    QVERIFY(times() == nullptr);
    plot.SetTimeScale(20.0);
    QVERIFY(times() != nullptr);
}

/** The axis writes what the scale says, at each of its ticks. */
void TimeScaleTest::TimesStandAtTheAxis()
{
    PlotProbe plot;
    plot.SetTimeScale(1000.0);
    QVERIFY(plot.ShowWithCurve(120.0));
    const QwtScaleDraw* scale = plot.axisScaleDraw(QwtPlot::xBottom);
    const QList<double> ticks = scale->scaleDiv().ticks(QwtScaleDiv::MajorTick);
    QVERIFY(ticks.size() > 1);
    for (const double tick : ticks)  // frames of a second
    {
        const QTime time = QTime(0, 0).addMSecs(qRound(tick * 1000.0));
        QCOMPARE(scale->label(tick).text(), time.toString(QStringLiteral("mm:ss:zzz")));
    }
}

/** Steps count 1, 2, 5, 10 and so on: the first one that divides 100 frames 8 or 4 times at most.
 */
void TimeScaleTest::NumbersStandDenserThanTimes()
{
    PlotProbe plot;
    QVERIFY(plot.ShowWithCurve(100.0));
    const auto ticks = [&plot]()
    {
        plot.updateAxes();
        return plot.axisScaleDiv(QwtPlot::xBottom).ticks(QwtScaleDiv::MajorTick);
    };
    const QList<double> numbers = {0.0, 20.0, 40.0, 60.0, 80.0, 100.0};
    const QList<double> times = {0.0, 50.0, 100.0};
    QCOMPARE(ticks(), numbers);
    plot.SetTimeScale(40.0);
    QCOMPARE(ticks(), times);
    plot.SetTimeScale(-1.0);
    QCOMPARE(ticks(), numbers);
}

void TimeScaleTest::Titles()
{
    PlotProbe plot;
    plot.SetXTitle(QStringLiteral("frames"));
    plot.SetYTitle(QStringLiteral("pixels"));
    QCOMPARE(plot.axisTitle(QwtPlot::xBottom).text(), QStringLiteral("frames"));
    QCOMPARE(plot.axisTitle(QwtPlot::yLeft).text(), QStringLiteral("pixels"));
    QCOMPARE(plot.axisScaleDraw(QwtPlot::yLeft)->labelRotation(), -90.0);
    QVERIFY(plot.axisScaleDraw(QwtPlot::yLeft)->labelAlignment() ==
            (Qt::AlignLeft | Qt::AlignVCenter));
    QCOMPARE(plot.axisScaleDraw(QwtPlot::xBottom)->labelRotation(), 0.0);
    plot.SetXTitle(QString());
    QCOMPARE(plot.axisTitle(QwtPlot::xBottom).text(), QString());
    QCOMPARE(plot.axisTitle(QwtPlot::yLeft).text(), QStringLiteral("pixels"));
}

void TimeScaleTest::Engines_data()
{
    QTest::addColumn<bool>("logX");
    QTest::addColumn<bool>("logY");
    QTest::newRow("both linear") << false << false;
    QTest::newRow("x logarithmic") << true << false;
    QTest::newRow("y logarithmic") << false << true;
    QTest::newRow("both logarithmic") << true << true;
}

void TimeScaleTest::Engines()
{
    QFETCH(bool, logX);
    QFETCH(bool, logY);
    PlotProbe plot;
    const auto isAs = [&plot](int axis, bool isLog)
    {
        const QwtScaleEngine* engine = plot.axisScaleEngine(axis);
        return isLog ? IsOfBaseTen<QwtLogScaleEngine>(engine)
                     : IsOfBaseTen<QwtLinearScaleEngine>(engine);
    };
    QVERIFY(isAs(QwtPlot::xBottom, false) && isAs(QwtPlot::yLeft, false));
    plot.SetScaleEngines(!logX, !logY);
    plot.SetScaleEngines(logX, logY);
    QVERIFY(isAs(QwtPlot::xBottom, logX));
    QVERIFY(isAs(QwtPlot::yLeft, logY));
    QVERIFY(isAs(QwtPlot::xTop, false) && isAs(QwtPlot::yRight, false));
}

QTEST_MAIN(TimeScaleTest)
#include "timescale_test.moc"
