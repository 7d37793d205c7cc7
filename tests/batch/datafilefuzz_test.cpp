// SPDX-License-Identifier: MIT
#include "batch/datafilemodel.h"
#include "batch/datafilemutator.h"
#include "batch/filefields.h"
#include "project/project.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/files.h"
#include "support/fuzzrun.h"
#include "support/memorylimit.h"
#include "support/samebits.h"

#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <new>

namespace
{
using Points = std::vector<cv::Point2f>;

constexpr std::uint32_t HugeEvery = 32768;

bool HaveBitsOf(const ModelPointLists& actual, const ModelPointLists& expected)
{
    return std::equal(actual.begin(), actual.end(), expected.begin(), expected.end(),
                      [](const Points& a, const Points& b) { return HasBitsOf(a, b); });
}

/** A stabilizer as after a reading of @p frames frames. */
void Fill(PosRotStabilizer& object, int frames)
{
    object.FrameWidth = 1920;
    object.FrameHeight = 1080;
    object.FrameRate = 29;
    object.PrepareFrames(frames);
    object.TrackingPoints.clear();
    for (int i = 0; i < frames; ++i)
    {
        object.MotionX[i] = std::sin(i) * 3.0;
        object.MotionY[i] = std::cos(i) * 2.0;
        object.MotionAngle[i] = std::sin(i * 0.5) * 0.01;
        object.MotionDegrees[i] = object.MotionAngle[i] * 180.0 / 3.141592653589793;
        const int points = i == 0 ? 0 : 3 + i % 3;
        object.TrackingPoints.emplace_back(points, cv::Point2f(0.5F, 100.25F));
    }
    object.MotionCount = static_cast<std::uint64_t>(frames);
}

ModelMotion MotionOf(const PosRotStabilizer& object)
{
    const auto list = [](const QVector<double>& values)
    { return std::vector<double>(values.cbegin(), values.cend()); };
    return {list(object.MotionX),       list(object.MotionY), list(object.MotionAngle),
            list(object.MotionDegrees), object.MotionCount,   object.PathGenerated,
            object.StabilizeLoaded};
}

bool IsMotion(const PosRotStabilizer& object, const ModelMotion& expected)
{
    return HasBitsOf(object.MotionX, expected.X) && HasBitsOf(object.MotionY, expected.Y) &&
           HasBitsOf(object.MotionAngle, expected.Angle) &&
           HasBitsOf(object.MotionDegrees, expected.Degrees) &&
           object.MotionCount == expected.Count && object.PathGenerated == expected.PathGenerated &&
           object.StabilizeLoaded == expected.Loaded;
}

ModelFacts FactsOf(const PosRotStabilizer& object)
{
    return {object.FrameWidth, object.FrameHeight, object.FrameRate};
}
}  // namespace

/**
 * Damaged data files and matching files: whatever they hold, each reading gives the result and
 * leaves the memory that the bytes of the file stand for, and a reading that fails sets no flag.
 */
class DataFileFuzzTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void SeedsReadBack();
    void SameNumberSameFile();
    void NoMemoryForTheFrames();
    void TrackingFiles();
    void StabilizationFiles();
    void TrackingMatchingFiles();
    void StabilizationMatchingFiles();

private:
    void TryTracking(std::uint32_t number, const QByteArray& matching, const QByteArray& data);
    void TryStabilization(std::uint32_t number, const QByteArray& matching, const QByteArray& data);
    void Prepare(PosRotStabilizer& object, std::uint32_t number) const;

    QTemporaryDir Directory;
    Project Proj;
    QByteArray SourceField;
    QByteArray TrackingPayload = Int(200) + Int(0) + Int(-1);
    // Of the longest seed each.
    QByteArray TrackingMatching;
    QByteArray Tracking;
    QByteArray StabilizationMatching;
    QByteArray Stabilization;
    QList<QByteArray> TrackingSeeds;
    QList<QByteArray> StabilizationSeeds;
};

void DataFileFuzzTest::initTestCase()
{
    QVERIFY(Directory.isValid());
    Proj.SourceFile = "/videos/source.avi";  // part of the files: the same in each run
    Proj.TrackingFile = Directory.filePath("t");
    Proj.StabilizationFile = Directory.filePath("s");
    Proj.SyncFileNames();
    SourceField = PathField(Proj.SourceFile.toLatin1());
    for (const int frames : {0, 2, 3, 9})
    {
        PosRotStabilizer writer;
        writer.FileNames = Proj.FileNames;
        Fill(writer, frames);
        writer.TrackingLoaded = true;
        writer.StabilizeLoaded = true;
        QCOMPARE(writer.SaveData(), 0);
        Tracking = ReadBytes(Proj.TrackingFile);
        Stabilization = ReadBytes(Proj.StabilizationFile);
        TrackingSeeds += Tracking;
        StabilizationSeeds += Stabilization;
    }
    TrackingMatching = ReadBytes(Proj.TrackingFile + ".cfg");
    StabilizationMatching = ReadBytes(Proj.StabilizationFile + ".cfg");
}

/** Every second object is new, the others hold an earlier reading, with flags that differ. */
void DataFileFuzzTest::Prepare(PosRotStabilizer& object, std::uint32_t number) const
{
    object.FileNames = Proj.FileNames;
    if (number % 2 == 0)
    {
        Fill(object, 6);
        object.PathGenerated = true;
        object.StabilizeLoaded = number % 4 == 0;
        object.TrackingLoaded = number % 16 == 0;
    }
}

void DataFileFuzzTest::TryTracking(std::uint32_t number, const QByteArray& matching,
                                   const QByteArray& data)
{
    RenewFile(Proj.TrackingFile + ".cfg", matching);
    RenewFile(Proj.TrackingFile, data);
    PosRotStabilizer object;
    Prepare(object, number);
    const bool wasLoaded = object.TrackingLoaded;
    const ModelMotion motion = MotionOf(object);
    ModelPointLists points = object.TrackingPoints;
    ModelFacts facts = FactsOf(object);

    int expected = ModelCheckMatching(matching, SourceField, TrackingPayload, facts);
    if (expected == 0 && !wasLoaded)
    {
        expected = ModelReadPoints(data, points);
    }
    QCOMPARE(object.ReadTracking(TrackingParameters()), expected);
    QCOMPARE(object.TrackingLoaded, wasLoaded || expected == 0);
    QVERIFY(HaveBitsOf(object.TrackingPoints, points));
    QVERIFY(FactsOf(object) == facts);
    QVERIFY(IsMotion(object, motion));
}

void DataFileFuzzTest::TryStabilization(std::uint32_t number, const QByteArray& matching,
                                        const QByteArray& data)
{
    RenewFile(Proj.StabilizationFile + ".cfg", matching);
    RenewFile(Proj.StabilizationFile, data);
    PosRotStabilizer object;
    Prepare(object, number);
    const bool wasTracked = object.TrackingLoaded;
    const ModelPointLists points = object.TrackingPoints;
    ModelMotion motion = MotionOf(object);
    ModelFacts facts = FactsOf(object);

    int expected = ModelCheckMatching(matching, SourceField, Int(1), facts);
    if (expected == 0)
    {
        expected = ModelReadMotion(data, motion);
    }
    QCOMPARE(object.ReadStabilizeFile(), expected);
    QVERIFY(IsMotion(object, motion));
    QVERIFY(FactsOf(object) == facts);
    QCOMPARE(object.TrackingLoaded, wasTracked);
    QVERIFY(HaveBitsOf(object.TrackingPoints, points));
}

void DataFileFuzzTest::SeedsReadBack()
{
    QCOMPARE(TrackingMatching.size(), 280);
    QCOMPARE(StabilizationMatching.size(), 272);
    PosRotStabilizer longest;
    Fill(longest, 9);
    ModelPointLists points;
    QCOMPARE(ModelReadPoints(Tracking, points), 0);
    QVERIFY(HaveBitsOf(points, longest.TrackingPoints));
    ModelMotion motion;
    QCOMPARE(ModelReadMotion(Stabilization, motion), 0);
    QVERIFY(HasBitsOf(longest.MotionX, motion.X) && HasBitsOf(longest.MotionAngle, motion.Angle));
    for (std::uint32_t number = 0; number < 17; ++number)
    {
        for (int i = 0; i < TrackingSeeds.size(); ++i)
        {
            TryTracking(number, TrackingMatching, TrackingSeeds[i]);
            TryStabilization(number, StabilizationMatching, StabilizationSeeds[i]);
        }
    }
}

void DataFileFuzzTest::SameNumberSameFile()
{
    DataFileMutator mutator(TrackingSeeds);
    const QByteArray fifth = mutator.CountedFile(5, HugeEvery);
    QVERIFY(mutator.CountedFile(6, HugeEvery) != fifth);
    QCOMPARE(mutator.CountedFile(5, HugeEvery), fifth);
    // Enough of them still are files that a reader goes through, and enough are not.
    int good = 0;
    for (std::uint32_t number = 0; number < 400; ++number)
    {
        ModelPointLists points;
        good += ModelReadPoints(mutator.CountedFile(number, HugeEvery), points) == 0 ? 1 : 0;
    }
    QVERIFY2(good >= 100 && good <= 300, qPrintable(QString::number(good)));
}

void DataFileFuzzTest::NoMemoryForTheFrames()
{
    if (!MemoryLimit::IsPossible())
    {
        QSKIP("A sanitizer ends the process without memory");
    }
    // 4 bytes that ask for a gigabyte: the library's exception, and no flag.
    const QByteArray data = Int(39999999);
    RenewFile(Proj.TrackingFile + ".cfg", TrackingMatching);
    RenewFile(Proj.TrackingFile, data);
    RenewFile(Proj.StabilizationFile + ".cfg", StabilizationMatching);
    RenewFile(Proj.StabilizationFile, data);
    PosRotStabilizer object;
    Prepare(object, 2);
    const ModelPointLists points = object.TrackingPoints;
    const MemoryLimit limit(100U << 20U);
    QVERIFY_EXCEPTION_THROWN(static_cast<void>(object.ReadTracking(TrackingParameters())),
                             std::bad_alloc);
    QVERIFY(!object.TrackingLoaded);
    QVERIFY(HaveBitsOf(object.TrackingPoints, points));
    QVERIFY_EXCEPTION_THROWN(static_cast<void>(object.ReadStabilizeFile()), std::bad_alloc);
    QVERIFY(!object.StabilizeLoaded);
}

void DataFileFuzzTest::TrackingFiles()
{
    DataFileMutator mutator(TrackingSeeds);
    RunFuzz([&](std::uint32_t number)
            { TryTracking(number, TrackingMatching, mutator.CountedFile(number, HugeEvery)); });
}

void DataFileFuzzTest::StabilizationFiles()
{
    DataFileMutator mutator(StabilizationSeeds);
    RunFuzz(
        [&](std::uint32_t number) {
            TryStabilization(number, StabilizationMatching, mutator.CountedFile(number, HugeEvery));
        });
}

void DataFileFuzzTest::TrackingMatchingFiles()
{
    DataFileMutator mutator({TrackingMatching, StabilizationMatching});
    RunFuzz([&](std::uint32_t number)
            { TryTracking(number, mutator.MatchingFile(number), Tracking); });
}

void DataFileFuzzTest::StabilizationMatchingFiles()
{
    DataFileMutator mutator({TrackingMatching, StabilizationMatching});
    RunFuzz([&](std::uint32_t number)
            { TryStabilization(number, mutator.MatchingFile(number), Stabilization); });
}

QTEST_APPLESS_MAIN(DataFileFuzzTest)
#include "datafilefuzz_test.moc"
