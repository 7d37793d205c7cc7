// SPDX-License-Identifier: MIT
#include "stabilizer/pathfilter.h"
#include "support/doublelists.h"

#include <QtTest>

#include <cmath>
#include <limits>

/** Pixels between crop border and moved frame. */
class CropMarginTest : public QObject
{
    Q_OBJECT

private slots:
    void Margin_data();
    void Margin();
    void Angle_data();
    void Angle();
    void ExtremeNumbers_data();
    void ExtremeNumbers();
    void MarginsOfAList();
    void MarginsWithoutASize();
};

void CropMarginTest::Margin_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("size");
    QTest::addColumn<int>("offset");
    QTest::addColumn<double>("cropFactor");
    QTest::addColumn<double>("expected");
    // 1920 - 1745.45 is 174.5, half of it 87.27.
    QTest::newRow("frame at rest has the border") << 0.0 << 1920.0 << 0 << 1.1 << 87.0;
    QTest::newRow("right") << 10.0 << 1920.0 << 0 << 1.1 << 77.0;
    QTest::newRow("left") << -10.0 << 1920.0 << 0 << 1.1 << 77.0;
    QTest::newRow("a fraction to the right rounds up") << 10.5 << 1920.0 << 0 << 1.1 << 77.0;
    QTest::newRow("a fraction to the left rounds up") << -10.25 << 1920.0 << 0 << 1.1 << 77.0;
    QTest::newRow("up to the border") << 87.0 << 1920.0 << 0 << 1.1 << 0.0;
    QTest::newRow("a fraction short of the border leaves 1") << 86.5 << 1920.0 << 0 << 1.1 << 1.0;
    QTest::newRow("a fraction beyond the border is 0") << 87.5 << 1920.0 << 0 << 1.1 << 0.0;
    QTest::newRow("beyond the border right") << 97.5 << 1920.0 << 0 << 1.1 << -10.0;
    QTest::newRow("beyond the border left") << -97.5 << 1920.0 << 0 << 1.1 << -10.0;
    // A crop moved to the right leaves more room to its left, where a move to the right shows
    // black.
    QTest::newRow("right with the crop to the right") << 10.0 << 1920.0 << 20 << 1.1 << 97.0;
    QTest::newRow("left with the crop to the right") << -10.0 << 1920.0 << 20 << 1.1 << 57.0;
    QTest::newRow("right with the crop to the left") << 10.0 << 1920.0 << -20 << 1.1 << 57.0;
    QTest::newRow("at rest counts as a move to the left") << 0.0 << 1920.0 << 20 << 1.1 << 67.0;
    QTest::newRow("no crop has no border") << 0.0 << 1920.0 << 0 << 1.0 << 0.0;
    QTest::newRow("no crop, moved") << 3.0 << 1920.0 << 0 << 1.0 << -3.0;
    QTest::newRow("twice the size") << 0.0 << 100.0 << 0 << 2.0 << 25.0;
    QTest::newRow("the border is rounded down") << 0.0 << 101.0 << 0 << 2.0 << 25.0;
    QTest::newRow("a factor below 1 has a negative border") << 0.0 << 100.0 << 0 << 0.8 << -13.0;
    QTest::newRow("radians axis") << 0.0 << 0.5 << 0 << 1.1 << 0.0;
    QTest::newRow("radians axis at a factor of 1.5") << 0.0 << 0.5 << 0 << 1.5 << 0.0;
    QTest::newRow("degrees axis") << 0.0 << 90.0 << 0 << 1.1 << 4.0;
}

void CropMarginTest::Margin()
{
    QFETCH(double, value);
    QFETCH(double, size);
    QFETCH(int, offset);
    QFETCH(double, cropFactor);
    QFETCH(double, expected);
    const double margin = CropMargin(value, 0.0, size, offset, cropFactor);
    QVERIFY2(margin == expected, qPrintable(QString::number(margin)));
}

void CropMarginTest::Angle_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("expected");  // of a margin of 50 pixels
    QTest::newRow("0") << 0.0 << 50.0;
    QTest::newRow("30 degrees, 43.3 rounded up") << 0.5235987755982988 << 44.0;
    QTest::newRow("minus 30 degrees") << -0.5235987755982988 << 44.0;
    QTest::newRow("just below 60 degrees") << 1.0471 << 26.0;
    QTest::newRow("just beyond 60 degrees") << 1.0473 << -1.0;
    QTest::newRow("90 degrees") << 1.5707963267948966 << -1.0;
    QTest::newRow("180 degrees") << 3.141592653589793 << -1.0;
    QTest::newRow("a whole turn") << 6.283185307179586 << 50.0;
    QTest::newRow("not a number") << std::nan("") << -1.0;
}

void CropMarginTest::Angle()
{
    QFETCH(double, angle);
    QFETCH(double, expected);
    QCOMPARE(CropMargin(0.0, angle, 200.0, 0, 2.0), expected);
}

void CropMarginTest::ExtremeNumbers_data()
{
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("cropFactor");
    QTest::addColumn<double>("expected");
    QTest::newRow("factor 0") << 0.0 << 0.0 << -infinity;
    QTest::newRow("negative factor") << 0.0 << -1.0 << 100.0;
    QTest::newRow("tiny factor") << 0.0 << 1e-300 << -0.5e302;
    QTest::newRow("huge factor leaves half the size") << 0.0 << 1e300 << 50.0;
    QTest::newRow("factor not a number") << 0.0 << std::nan("") << std::nan("");
    QTest::newRow("infinite factor") << 0.0 << infinity << 50.0;
    QTest::newRow("huge value") << 1e300 << 2.0 << -1e300;
    QTest::newRow("value not a number") << std::nan("") << 2.0 << std::nan("");
}

void CropMarginTest::ExtremeNumbers()
{
    QFETCH(double, value);
    QFETCH(double, cropFactor);
    QFETCH(double, expected);
    const QVector<double> margin = {CropMargin(value, 0.0, 100.0, 0, cropFactor)};
    // Division, difference and half round once each, so 1e-300 misses its power of ten a little.
    const double rounding = std::isfinite(expected) ? 1e-15 * std::abs(expected) : 0.0;
    QCOMPARE(Difference(margin, {expected}, rounding), QString());
}

void CropMarginTest::MarginsOfAList()
{
    QVector<double> margins = {7.0, 7.0, 7.0, 7.0, 7.0};
    CropMargins({0.0, 30.0, -30.5}, 200.0, 5, 2.0, margins);
    QCOMPARE(Difference(margins, {45.0, 25.0, 15.0}), QString());
    CropMargins({}, 200.0, 5, 2.0, margins);
    QVERIFY(margins.isEmpty());
}

void CropMarginTest::MarginsWithoutASize()
{
    // Without the special case these would be -5, -25 and so on.
    QVector<double> margins;
    CropMargins({0.0, 30.0, -30.5}, 0.0, 5, 2.0, margins);
    QCOMPARE(Difference(margins, {0.0, 0.0, 0.0}), QString());
    CropMargins({0.0, 30.0}, 0.0, 0, std::nan(""), margins);
    QCOMPARE(Difference(margins, {0.0, 0.0}), QString());
}

QTEST_APPLESS_MAIN(CropMarginTest)
#include "cropmargin_test.moc"
