// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/doublelists.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <limits>
#include <memory>

namespace
{
const char Read[] = "1 Stabilizing file read successfully!";

/** x 1.0, y -2.5, angle 0.5 */
QByteArray FirstSample()
{
    return Hex("000000000000f03f 00000000000004c0 000000000000e03f");
}

/** x 0.0, y 3.0, angle -0.125 */
QByteArray SecondSample()
{
    return Hex("0000000000000000 0000000000000840 000000000000c0bf");
}

/** A stabilizer with an up to date stabilization matching file, and @p bytes as the data file. */
struct Reader
{
    explicit Reader(const QByteArray& bytes)
    {
        Setup.GivePaths(Object);
        WriteBytes(Setup.Path("Stabilize.dat.cfg"), PathField(Setup.Path("source.avi").toLatin1()) +
                                                        Hex("80070000 38040000 1d000000 01000000"));
        WriteBytes(Setup.Path("Stabilize.dat"), bytes);
        Object.MotionX = {9.0};
        Object.MotionY = {9.0};
        Object.MotionAngle = {9.0};
        Object.MotionDegrees = {9.0};
        Object.MotionCount = 1;
        Object.PathGenerated = true;
    }

    /** True when the motion is as the constructor set it. */
    [[nodiscard]] bool IsUntouched() const
    {
        const QVector<double> nine{9.0};
        return Object.MotionX == nine && Object.MotionY == nine && Object.MotionAngle == nine &&
               Object.MotionDegrees == nine && Object.MotionCount == 1 && Object.PathGenerated;
    }

    BatchSetup Setup;
    PosRotStabilizer Object;
};

/** A motion of three samples, the first two as above. */
void SetMotion(PosRotStabilizer& stabilizer)
{
    stabilizer.PrepareFrames(3);
    stabilizer.MotionX = {1.0, 0.0, -1.0};
    stabilizer.MotionY = {-2.5, 3.0, 0.5};
    stabilizer.MotionAngle = {0.5, -0.125, 1.0};
    stabilizer.MotionCount = 3;
}
}  // namespace

/** The file of the measured motion. */
class StabilizationFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void BytesOfAFile();
    void CannotBeWritten_data();
    void CannotBeWritten();
    void FullDisk_data();
    void FullDisk();
    void NeverWritesOverTheSource();
    void ReadsSamples();
    void ManySamples();
    void CountsOutsideTheRangeCountAsRead_data();
    void CountsOutsideTheRangeCountAsRead();
    void TruncatedFiles_data();
    void TruncatedFiles();
    void MatchingFileRules_data();
    void MatchingFileRules();
    void TruncatedMatchingFiles_data();
    void TruncatedMatchingFiles();
    void OtherPointsDoNotMatter();
    void MissingFile();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void StabilizationFileTest::BytesOfAFile()
{
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    stabilizer.FrameWidth = 320;
    stabilizer.FrameHeight = 240;
    stabilizer.FrameRate = 25;
    SetMotion(stabilizer);
    QCOMPARE(stabilizer.WriteStabilizeFile(), 0);
    QCOMPARE(setup.Lines.All(), QStringList({"1 Stabilizing file written!"}));
    const QByteArray expected = Hex("03000000") + FirstSample() + SecondSample() +
                                Hex("000000000000f0bf 000000000000e03f 000000000000f03f");
    QCOMPARE(ReadBytes(setup.Path("Stabilize.dat")).toHex(), expected.toHex());
    QCOMPARE(ReadBytes(setup.Path("Stabilize.dat.cfg")),
             PathField(setup.Path("source.avi").toLatin1()) +
                 Hex("40010000 f0000000 19000000 01000000"));
}

void StabilizationFileTest::CannotBeWritten_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("line");
    QTest::newRow("no such folder: the matching file comes first")
        << "nowhere/Stabilize.dat"
        << "3 Could not write matching file (.cfg)!";
    QTest::newRow("path is a folder") << "folder"
                                      << "3 Stabilizing file access error!";
}

void StabilizationFileTest::CannotBeWritten()
{
    QFETCH(QString, file);
    QFETCH(QString, line);
    BatchSetup setup;
    QVERIFY(QDir(setup.Folder.path()).mkdir("folder"));
    setup.Proj.StabilizationFile = setup.Folder.filePath(file);
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    SetMotion(stabilizer);
    QCOMPARE(stabilizer.WriteStabilizeFile(), 1);
    QCOMPARE(setup.Lines.All(), QStringList({line}));
}

void StabilizationFileTest::FullDisk_data()
{
    QTest::addColumn<int>("samples");
    QTest::newRow("far more than any buffer holds") << 100000;
    QTest::newRow("few enough to fail only when the file is closed") << 300;
}

void StabilizationFileTest::FullDisk()
{
    QFETCH(int, samples);
    QVERIFY2(QFile::exists("/dev/full"), "the device that is always full is part of every Linux");
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    SetField(stabilizer.FileNames.StabilizationFile, "/dev/full");
    stabilizer.PrepareFrames(samples);
    stabilizer.MotionCount = static_cast<std::uint64_t>(samples);
    QCOMPARE(stabilizer.WriteStabilizeFile(), -1);
    QCOMPARE(setup.Lines.All(), QStringList());
}

void StabilizationFileTest::NeverWritesOverTheSource()
{
    BatchSetup setup;
    WriteBytes(setup.Path("source.avi"), "the video");
    setup.Proj.StabilizationFile = setup.Path("source.avi");
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    SetMotion(stabilizer);
    QCOMPARE(stabilizer.WriteStabilizeFile(), 1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Stabilizing file access error!"}));
    QCOMPARE(ReadBytes(setup.Path("source.avi")), QByteArray("the video"));
}

void StabilizationFileTest::ReadsSamples()
{
    Reader reader(Int(2) + FirstSample() + SecondSample() + "more");
    QCOMPARE(reader.Object.ReadStabilizeFile(), 0);
    QCOMPARE(reader.Setup.Lines.All(), QStringList({Read}));
    QCOMPARE(Difference(reader.Object.MotionX, {1.0, 0.0}), QString());
    QCOMPARE(Difference(reader.Object.MotionY, {-2.5, 3.0}), QString());
    QCOMPARE(Difference(reader.Object.MotionAngle, {0.5, -0.125}), QString());
    QCOMPARE(Difference(reader.Object.MotionDegrees,
                        {0.5 * 180.0 / 3.141592653589793, -0.125 * 180.0 / 3.141592653589793}),
             QString());
    QCOMPARE(reader.Object.MotionCount, std::uint64_t{2});
    QVERIFY(reader.Object.StabilizeLoaded);
    QVERIFY(!reader.Object.PathGenerated);
    QVERIFY(!reader.Object.TrackingLoaded);
    QCOMPARE(reader.Object.FrameWidth, 1920);
    QCOMPARE(reader.Object.FrameHeight, 1080);
    QCOMPARE(reader.Object.FrameRate, 29);
}

void StabilizationFileTest::ManySamples()
{
    Reader reader(Int(2000) + Zeros(1999 * 24) + SecondSample());
    QCOMPARE(reader.Object.ReadStabilizeFile(), 0);
    QCOMPARE(reader.Object.MotionCount, std::uint64_t{2000});
    QCOMPARE(reader.Object.MotionX.size(), 2000);
    QCOMPARE(reader.Object.MotionY.at(1999), 3.0);
}

void StabilizationFileTest::CountsOutsideTheRangeCountAsRead_data()
{
    QTest::addColumn<qint64>("count");
    QTest::newRow("lowest number") << qint64{std::numeric_limits<qint32>::min()};
    QTest::newRow("negative") << qint64{-1};
    QTest::newRow("none") << qint64{0};
    QTest::newRow("one") << qint64{1};
    QTest::newRow("one beyond the most") << qint64{40000000};
    QTest::newRow("highest number") << qint64{std::numeric_limits<qint32>::max()};
}

// Deliberate, and not as the tracking file: such a file is a success that changes nothing.
void StabilizationFileTest::CountsOutsideTheRangeCountAsRead()
{
    QFETCH(qint64, count);
    Reader reader(Int(count) + FirstSample());
    QCOMPARE(reader.Object.ReadStabilizeFile(), 0);
    QCOMPARE(reader.Setup.Lines.All(), QStringList({Read}));
    QVERIFY(reader.Object.StabilizeLoaded);
    QVERIFY(reader.IsUntouched());
}

void StabilizationFileTest::TruncatedFiles_data()
{
    QTest::addColumn<int>("length");
    for (int length = 0; length < 52; ++length)
    {
        QTest::addRow("%d bytes", length) << length;
    }
}

void StabilizationFileTest::TruncatedFiles()
{
    QFETCH(int, length);
    Reader reader((Int(2) + FirstSample() + SecondSample()).left(length));
    QCOMPARE(reader.Object.ReadStabilizeFile(), -1);
    QCOMPARE(reader.Setup.Lines.All(), QStringList());
    QVERIFY(!reader.Object.StabilizeLoaded);
    if (length < 4)
    {
        QVERIFY(reader.IsUntouched());
        return;
    }
    QCOMPARE(reader.Object.MotionX.size(), 2);
    QVERIFY(!reader.Object.PathGenerated);
    if (length >= 28)
    {
        QCOMPARE(reader.Object.MotionX.at(0), 1.0);
        QCOMPARE(reader.Object.MotionY.at(0), -2.5);
        QCOMPARE(reader.Object.MotionAngle.at(0), 0.5);
    }
}

void StabilizationFileTest::MatchingFileRules_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<int>("result");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("missing") << "missing" << 1
                             << QStringList{"3 Could not open matching file (.cfg)!",
                                            "3 Stabilizing file loading failed!"};
    QTest::newRow("another source")
        << "source" << 2 << QStringList{"3 Out of date!", "3 Stabilizing file out of date!"};
    QTest::newRow("another kind of stabilizer")
        << "type" << 2
        << QStringList{"3 Data file out of date!", "3 Stabilizing file out of date!"};
}

void StabilizationFileTest::MatchingFileRules()
{
    QFETCH(QString, change);
    QFETCH(int, result);
    QFETCH(QStringList, lines);
    for (const bool isLoaded : {false, true})
    {
        Reader reader(Int(2) + FirstSample() + SecondSample());
        reader.Object.StabilizeLoaded = isLoaded;
        const QString matchingFile = reader.Setup.Path("Stabilize.dat.cfg");
        QByteArray bytes = ReadBytes(matchingFile);
        bytes[change == "source" ? 0 : 268] = 'x';
        QVERIFY(QFile::remove(matchingFile));
        if (change != "missing")
        {
            WriteBytes(matchingFile, bytes);
        }
        QCOMPARE(reader.Object.ReadStabilizeFile(), result);
        QCOMPARE(reader.Setup.Lines.All(), lines);
        QCOMPARE(reader.Object.StabilizeLoaded, isLoaded);
        QVERIFY(reader.IsUntouched());
    }
}

void StabilizationFileTest::TruncatedMatchingFiles_data()
{
    QTest::addColumn<int>("length");
    // From 269 bytes on only zeros are missing, which a comparison may find or not.
    for (const int length : {0, 1, 255, 256, 259, 260, 264, 267, 268})
    {
        QTest::addRow("%d bytes", length) << length;
    }
}

void StabilizationFileTest::TruncatedMatchingFiles()
{
    QFETCH(int, length);
    Reader reader(Int(2) + FirstSample() + SecondSample());
    const QString matchingFile = reader.Setup.Path("Stabilize.dat.cfg");
    const QByteArray bytes = ReadBytes(matchingFile).left(length);
    WriteBytes(matchingFile, bytes);
    QCOMPARE(reader.Object.ReadStabilizeFile(), 2);
    QCOMPARE(reader.Setup.Lines.All().size(), 2);
    QCOMPARE(reader.Setup.Lines.All().constLast(), QString("3 Stabilizing file out of date!"));
    QVERIFY(reader.IsUntouched());
}

void StabilizationFileTest::OtherPointsDoNotMatter()
{
    Reader reader(Int(2) + FirstSample() + SecondSample());
    reader.Object.TrackingParameters.MaxTrackingPoints = 4000;
    QCOMPARE(reader.Object.ReadStabilizeFile(), 0);
}

void StabilizationFileTest::MissingFile()
{
    Reader reader("");
    QVERIFY(QFile::remove(reader.Setup.Path("Stabilize.dat")));
    QCOMPARE(reader.Object.ReadStabilizeFile(), 1);
    QCOMPARE(reader.Setup.Lines.All(), QStringList({"3 Stabilizing file access error!"}));
    QVERIFY(!reader.Object.StabilizeLoaded);
    QVERIFY(reader.IsUntouched());
}

QTEST_MAIN(StabilizationFileTest)
#include "stabilizationfile_test.moc"
