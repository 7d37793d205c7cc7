// SPDX-License-Identifier: MIT
#include "project/project.h"
#include "stabilizer/bitcompare.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/pathcases.h"
#include "stabilizer/pathcorrections.h"
#include "stabilizer/pathmodel.h"

#include <QtTest>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

namespace
{
constexpr double FrameWidth = 1920.0;

/** One calculation by the program and by the model. */
struct Comparison
{
    ::Project Project;
    CameraPath Path{true};
    PathModel Model;

    QString Run(const ModelSettings& settings, const std::vector<double>& motion, double size)
    {
        FillProject(settings, Project, Project.FlowH);
        Path.Configure(&Project, &Project.FlowH, settings.Offset);
        Path.Generate(ToQVector(motion), size, 25.0);
        Model.Configure(settings);
        Model.Generate(motion, size);
        return PathDifference(Path, Model);
    }
};

QString Told(unsigned seed, const QString& difference)
{
    return QStringLiteral("seed %1: %2").arg(seed).arg(difference);
}
}  // namespace

/** The whole calculation against a naive one, bit for bit, on motions and settings by chance. */
class PathOracleTest : public QObject
{
    Q_OBJECT

private slots:
    void Corrections();
    void AllTypes_data();
    void AllTypes();
    void OtherSizes_data();
    void OtherSizes();
    void OneObjectAgainAndAgain();
    void AdaptiveTypesSwitch_data();
    void AdaptiveTypesSwitch();
    void VeryStrongFilter();
};

void PathOracleTest::Corrections()
{
    for (unsigned seed = 0; seed < 3000; ++seed)
    {
        std::mt19937 generator(seed);
        const int frames = static_cast<int>(generator() % 80) + 1;
        const std::uint64_t delay = generator() % 40 + 3;
        const ModelSettings settings = RandomSettings(generator, 3, 1, frames);
        std::vector<double> expected(static_cast<std::size_t>(frames) + 2 * delay, 3.25);
        ::Project project;
        FillProject(settings, project, project.FlowH);
        QVector<double> actual = ToQVector(expected);
        ApplyIgnoreSections(actual, delay, project.FlowH.IgnoreSections);
        ModelIgnore(expected, delay, settings.Local);
        const QString ignored = BitDifference(actual, expected);
        QVERIFY2(ignored.isEmpty(), qPrintable(Told(seed, ignored)));
        ApplyManualPath(actual, delay, project.FlowH.ManualPath);
        ModelManual(expected, delay, settings.Manual);
        const QString drawn = BitDifference(actual, expected);
        QVERIFY2(drawn.isEmpty(), qPrintable(Told(seed, drawn)));
    }
}

void PathOracleTest::AllTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("strength");
    for (int type = 1; type <= 5; ++type)
    {
        for (const int strength : {1, 2, 3, 5, 12, 50, 500})
        {
            QTest::addRow("type %d, N %d", type, strength) << type << strength;
        }
    }
    QTest::addRow("unknown type from the start") << 9 << 12;
}

void PathOracleTest::AllTypes()
{
    QFETCH(int, type);
    QFETCH(int, strength);
    for (const int frames : {0, 1, 2, 3, 4, 5, 6, 20, 37, 100, 500, 3000})
    {
        for (unsigned seed = 0; seed < 8; ++seed)
        {
            std::mt19937 generator(seed * 1000 + static_cast<unsigned>(frames));
            const ModelSettings settings = RandomSettings(generator, strength, type, frames);
            const std::vector<double> motion = RandomMotion(generator, frames, FrameWidth);
            Comparison comparison;
            const QString difference = comparison.Run(settings, motion, FrameWidth);
            QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("%1 frames, ").arg(frames) +
                                                      Told(seed, difference)));
        }
    }
}

void PathOracleTest::OtherSizes_data()
{
    QTest::addColumn<double>("size");
    QTest::newRow("rotation in radians") << 0.5;
    QTest::newRow("rotation in degrees") << 90.0;
    QTest::newRow("no size") << 0.0;
}

void PathOracleTest::OtherSizes()
{
    QFETCH(double, size);
    for (unsigned seed = 0; seed < 100; ++seed)
    {
        std::mt19937 generator(seed);
        const int type = static_cast<int>(generator() % 5) + 1;
        const ModelSettings settings = RandomSettings(generator, 3, type, 900);
        Comparison comparison;
        const std::vector<double> motion = RandomMotion(generator, 900, std::max(size, 0.5));
        const QString difference = comparison.Run(settings, motion, size);
        QVERIFY2(difference.isEmpty(), qPrintable(Told(seed, difference)));
    }
}

void PathOracleTest::OneObjectAgainAndAgain()
{
    // The lists that a calculation finds must not matter, nor those that a disabled stage keeps.
    Comparison comparison;
    std::mt19937 generator(77);
    for (unsigned run = 0; run < 300; ++run)
    {
        const int frames = static_cast<int>(generator() % 200);
        const int type = static_cast<int>(generator() % 7);
        const int strength = static_cast<int>(generator() % 9) + 1;
        const ModelSettings settings = RandomSettings(generator, strength, type, frames);
        const std::vector<double> motion = RandomMotion(generator, frames, FrameWidth);
        const QString difference = comparison.Run(settings, motion, FrameWidth);
        QVERIFY2(difference.isEmpty(), qPrintable(Told(run, difference)));
    }
}

void PathOracleTest::AdaptiveTypesSwitch_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("type 4") << 4;
    QTest::newRow("type 5") << 5;
}

void PathOracleTest::AdaptiveTypesSwitch()
{
    QFETCH(int, type);
    int switched = 0;
    for (unsigned seed = 0; seed < 60; ++seed)
    {
        std::mt19937 generator(seed);
        ModelSettings settings;
        settings.Type = type;
        settings.Strength = 3;
        settings.CropFactor = 1.1;
        settings.IgnoreStart = 5;
        const std::vector<double> motion = RandomMotion(generator, 3000, FrameWidth);
        Comparison comparison;
        const QString difference = comparison.Run(settings, motion, FrameWidth);
        QVERIFY2(difference.isEmpty(), qPrintable(Told(seed, difference)));
        const QVector<std::int32_t>& weight = comparison.Path.SuperSmooth.Weight;
        const bool goesDown = weight.contains(0) && weight.contains(comparison.Path.BlendFrames);
        const int rest = weight.indexOf(0);
        switched += goesDown && weight.indexOf(1, rest) > rest ? 1 : 0;
    }
    QVERIFY2(switched >= 10, "too few of the videos come back to the strong filter");
}

void PathOracleTest::VeryStrongFilter()
{
    // Tables of 3 rows of 70001 numbers: more than a stack may be asked for at once.
    std::mt19937 generator(3);
    ModelSettings settings;
    settings.Type = 5;
    settings.Strength = 10000;
    settings.CropFactor = 1.1;
    const std::vector<double> motion = RandomMotion(generator, 12000, FrameWidth);
    Comparison comparison;
    QCOMPARE(comparison.Run(settings, motion, FrameWidth), QString());
    QVERIFY(comparison.Path.SuperSmooth.Path.first() != comparison.Path.SuperSmooth.Path.last());
}

QTEST_APPLESS_MAIN(PathOracleTest)
#include "pathoracle_test.moc"
