// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <filesystem>
#include <limits>
#include <memory>

namespace
{
using Points = std::vector<cv::Point2f>;

const char Read[] = "1 Tracking file read successfully!";
const char LoadingFailed[] = "3 Tracking file loading failed!";

/** Three points: (1.5, -2.25), (100, 0.5), (0, 3). */
QByteArray ThreePoints()
{
    return Hex("0000c03f 000010c0  0000c842 0000003f  00000000 00004040");
}

Points ThreePointsRead()
{
    return {{1.5F, -2.25F}, {100.0F, 0.5F}, {0.0F, 3.0F}};
}

/** A stabilizer whose tracking matching file is up to date and whose tracking file is @p bytes. */
struct Reader
{
    explicit Reader(const QByteArray& bytes)
    {
        Setup.GivePaths(Object);
        WriteBytes(Setup.Path("Tracking.dat.cfg"),
                   PathField(Setup.Path("source.avi").toLatin1()) +
                       Hex("80070000 38040000 1d000000 c8000000 00000000 ffffffff"));
        WriteBytes(Setup.Path("Tracking.dat"), bytes);
    }
    int Run() { return Object.ReadTracking(TrackingParameters()); }

    BatchSetup Setup;
    PosRotStabilizer Object;
};
}  // namespace

/** The file of the points that were tracked. */
class TrackingFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void BytesOfAFile();
    void EmptyList();
    void CannotBeWritten_data();
    void CannotBeWritten();
    void NeverWritesOverTheSource();
    void FrameCounts_data();
    void FrameCounts();
    void ManyFrames();
    void PointCounts_data();
    void PointCounts();
    void MostPoints();
    void OutOfStepAfterOnePoint();
    void OutOfStepAfterTwoPoints();
    void SurplusFramesGo();
    void BytesBehindTheLastFrame();
    void TruncatedFiles_data();
    void TruncatedFiles();
    void LoadedPointsStand();
    void MatchingFileRules_data();
    void MatchingFileRules();
    void MissingTrackingFile();
    void RoundTrip();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void TrackingFileTest::BytesOfAFile()
{
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    stabilizer.FrameWidth = 1920;
    stabilizer.FrameHeight = 1080;
    stabilizer.FrameRate = 29;
    stabilizer.TrackingPoints = {{}, {{1.5F, -2.25F}, {100.0F, 0.5F}}, {{0.0F, 3.0F}}};
    QCOMPARE(stabilizer.WriteTracking(), 0);
    QCOMPARE(setup.Lines.All(), QStringList({"1 Tracking file written!"}));
    const QByteArray expected =
        Hex("03000000  00000000  02000000 0000c03f 000010c0 0000c842"
            "0000003f  01000000 00000000 00004040");
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat")).toHex(), expected.toHex());
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat.cfg")),
             PathField(setup.Path("source.avi").toLatin1()) +
                 Hex("80070000 38040000 1d000000 c8000000 00000000 ffffffff"));
}

void TrackingFileTest::EmptyList()
{
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    QCOMPARE(stabilizer.WriteTracking(), 0);
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat")), Int(0));
}

void TrackingFileTest::CannotBeWritten_data()
{
    QTest::addColumn<QString>("trackingFile");
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("hasMatchingFile");
    QTest::newRow("no such folder: the matching file comes first")
        << "nowhere/Tracking.dat"
        << "3 Could not write matching file (.cfg)!" << false;
    QTest::newRow("path is a folder") << "folder"
                                      << "3 Could not write Tracking file!" << true;
}

void TrackingFileTest::CannotBeWritten()
{
    QFETCH(QString, trackingFile);
    QFETCH(QString, line);
    QFETCH(bool, hasMatchingFile);
    BatchSetup setup;
    QVERIFY(QDir(setup.Folder.path()).mkdir("folder"));
    setup.Proj.TrackingFile = setup.Folder.filePath(trackingFile);
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    QCOMPARE(stabilizer.WriteTracking(), 1);
    QCOMPARE(setup.Lines.All(), QStringList({line}));
    QCOMPARE(QFile::exists(setup.Proj.TrackingFile + ".cfg"), hasMatchingFile);
}

void TrackingFileTest::NeverWritesOverTheSource()
{
    BatchSetup setup;
    WriteBytes(setup.Path("source.avi"), "the video");
    std::filesystem::create_hard_link(qPrintable(setup.Path("source.avi")),
                                      qPrintable(setup.Path("link")));
    for (const char* name : {"source.avi", "link"})
    {
        setup.Proj.TrackingFile = setup.Path(name);
        PosRotStabilizer stabilizer;
        setup.GivePaths(stabilizer);
        QCOMPARE(stabilizer.WriteTracking(), 1);
        QCOMPARE(setup.Lines.Take(), QStringList({"3 Could not write Tracking file!"}));
        QCOMPARE(ReadBytes(setup.Path("source.avi")), QByteArray("the video"));
    }
}

void TrackingFileTest::FrameCounts_data()
{
    QTest::addColumn<qint64>("count");
    QTest::addColumn<bool>("isGood");
    QTest::newRow("lowest number") << qint64{std::numeric_limits<qint32>::min()} << false;
    QTest::newRow("negative") << qint64{-1} << false;
    QTest::newRow("none") << qint64{0} << false;
    QTest::newRow("one") << qint64{1} << false;
    QTest::newRow("two is the fewest") << qint64{2} << true;
    QTest::newRow("one beyond the most") << qint64{40000000} << false;
    QTest::newRow("highest number") << qint64{std::numeric_limits<qint32>::max()} << false;
}

void TrackingFileTest::FrameCounts()
{
    QFETCH(qint64, count);
    QFETCH(bool, isGood);
    Reader reader(Int(count) + Int(0) + Int(3) + ThreePoints());
    reader.Object.TrackingPoints = {{{7.0F, 7.0F}}};
    QCOMPARE(reader.Run(), isGood ? 0 : -1);
    QCOMPARE(reader.Setup.Lines.All(), QStringList({isGood ? Read : "3 Tracking file error!"}));
    QCOMPARE(reader.Object.TrackingLoaded, isGood);
    if (isGood)
    {
        // The list of frame 0 stays as it was, the new one is filled.
        QVERIFY((reader.Object.TrackingPoints ==
                 std::vector<Points>{{{7.0F, 7.0F}}, ThreePointsRead()}));
        QCOMPARE(reader.Object.FrameWidth, 1920);
        QCOMPARE(reader.Object.FrameHeight, 1080);
        QCOMPARE(reader.Object.FrameRate, 29);
    }
    else
    {
        QVERIFY((reader.Object.TrackingPoints == std::vector<Points>{{{7.0F, 7.0F}}}));
    }
}

void TrackingFileTest::ManyFrames()
{
    Reader reader(Int(2000) + Zeros(2000 * 4));  // none with points
    QCOMPARE(reader.Run(), 0);
    QCOMPARE(reader.Setup.Lines.All(), QStringList({Read}));
    QVERIFY(reader.Object.TrackingPoints == std::vector<Points>(2000));
}

void TrackingFileTest::PointCounts_data()
{
    QTest::addColumn<qint64>("count");
    QTest::newRow("none") << qint64{0};
    QTest::newRow("negative") << qint64{-1};
    QTest::newRow("lowest number") << qint64{std::numeric_limits<qint32>::min()};
    QTest::newRow("one beyond the most") << qint64{20000};
    QTest::newRow("highest number") << qint64{std::numeric_limits<qint32>::max()};
}

void TrackingFileTest::PointCounts()
{
    QFETCH(qint64, count);
    // The count of frame 1 reads no points, so the next number is the count of frame 2.
    Reader reader(Int(3) + Int(0) + Int(count) + Int(3) + ThreePoints());
    const Points kept{{7.0F, 8.0F}, {9.0F, 10.0F}};
    reader.Object.TrackingPoints = {{}, kept, {}, {}};
    QCOMPARE(reader.Run(), 0);
    QCOMPARE(reader.Setup.Lines.All(), QStringList({Read}));
    QVERIFY((reader.Object.TrackingPoints == std::vector<Points>{{}, kept, ThreePointsRead()}));
}

void TrackingFileTest::MostPoints()
{
    QByteArray points;
    for (int i = 0; i < 19999; ++i)
    {
        points += Hex("0000c03f 000010c0");
    }
    Reader reader(Int(3) + Int(0) + Int(19999) + points + Int(3) + ThreePoints());
    QCOMPARE(reader.Run(), 0);
    const std::vector<Points>& read = reader.Object.TrackingPoints;
    QCOMPARE(read[1].size(), std::size_t{19999});
    QCOMPARE(read[1].back(), cv::Point2f(1.5F, -2.25F));
    QVERIFY(read[2] == ThreePointsRead());
}

// Deliberate: the reader does not skip points that it does not read. Whoever mends this changes
// what old files with such frames give.
void TrackingFileTest::OutOfStepAfterOnePoint()
{
    // The x of frame 1's one point has the bits of the whole number 3 and is taken for frame 2's
    // count; its y is the first coordinate of frame 2.
    Reader reader(Int(3) + Int(0) + Int(1) + Int(3) + ThreePoints());
    QCOMPARE(reader.Run(), 0);
    QVERIFY((reader.Object.TrackingPoints == std::vector<Points>{{}, {}, ThreePointsRead()}));
    QVERIFY(reader.Object.TrackingLoaded);
}

void TrackingFileTest::OutOfStepAfterTwoPoints()
{
    // Frame 1's points are (0, 0), whose bits count as empty frames 2 and 3, and (3, 1.5) as bits.
    Reader reader(Int(5) + Int(0) + Int(2) + Int(0) + Int(0) + Int(3) + ThreePoints());
    QCOMPARE(reader.Run(), 0);
    QVERIFY(
        (reader.Object.TrackingPoints == std::vector<Points>{{}, {}, {}, {}, ThreePointsRead()}));
    QCOMPARE(reader.Setup.Lines.All(), QStringList({Read}));
}

void TrackingFileTest::SurplusFramesGo()
{
    Reader reader(Int(2) + Int(0) + Int(3) + ThreePoints());
    reader.Object.TrackingPoints.resize(5, ThreePointsRead());
    QCOMPARE(reader.Run(), 0);
    QVERIFY((reader.Object.TrackingPoints ==
             std::vector<Points>{ThreePointsRead(), ThreePointsRead()}));
}

void TrackingFileTest::BytesBehindTheLastFrame()
{
    Reader reader(Int(2) + Int(0) + Int(3) + ThreePoints() + "more");
    QCOMPARE(reader.Run(), 0);
    QVERIFY(reader.Object.TrackingLoaded);
}

void TrackingFileTest::TruncatedFiles_data()
{
    QTest::addColumn<int>("length");
    for (int length = 0; length <= 40; ++length)
    {
        QTest::addRow("%d bytes", length) << length;
    }
}

void TrackingFileTest::TruncatedFiles()
{
    QFETCH(int, length);
    // 4 + 4 + (4 + 24) + 4 bytes
    const QByteArray whole = Int(3) + Int(0) + Int(3) + ThreePoints() + Int(0);
    QCOMPARE(whole.size(), 40);
    Reader reader(whole.left(length));
    const bool isWhole = length == 40;
    QCOMPARE(reader.Run(), isWhole ? 0 : -1);
    QCOMPARE(reader.Setup.Lines.All(), isWhole ? QStringList({Read}) : QStringList());
    QCOMPARE(reader.Object.TrackingLoaded, isWhole);
    // What was read stays.
    QCOMPARE(reader.Object.TrackingPoints.size(), std::size_t{length < 4 ? 0U : 3U});
    if (length >= 36)
    {
        QVERIFY(reader.Object.TrackingPoints[1] == ThreePointsRead());
    }
}

void TrackingFileTest::LoadedPointsStand()
{
    Reader reader("no tracking file at all");
    QVERIFY(QFile::remove(reader.Setup.Path("Tracking.dat")));
    reader.Object.TrackingLoaded = true;
    reader.Object.TrackingPoints = {{}, {{5.0F, 6.0F}}};
    QCOMPARE(reader.Run(), 0);
    QCOMPARE(reader.Setup.Lines.All(), QStringList());
    QVERIFY((reader.Object.TrackingPoints == std::vector<Points>{{}, {{5.0F, 6.0F}}}));
    QCOMPARE(reader.Object.FrameWidth, 1920);  // the matching file is looked at all the same
}

void TrackingFileTest::MatchingFileRules_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<int>("result");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("missing") << "missing" << 1
                             << QStringList{"3 Could not open matching file (.cfg)!",
                                            LoadingFailed};
    QTest::newRow("another source")
        << "source" << 2 << QStringList{"3 Out of date!", "3 Tracking file out of date!"};
    QTest::newRow("another number of points")
        << "points" << 2 << QStringList{"3 Data file out of date!", "3 Tracking file out of date!"};
}

void TrackingFileTest::MatchingFileRules()
{
    QFETCH(QString, change);
    QFETCH(int, result);
    QFETCH(QStringList, lines);
    for (const bool isLoaded : {false, true})
    {
        Reader reader(Int(2) + Int(0) + Int(0));
        reader.Object.TrackingLoaded = isLoaded;
        TrackingParameters parameters;
        if (change == "missing")
        {
            QVERIFY(QFile::remove(reader.Setup.Path("Tracking.dat.cfg")));
        }
        else if (change == "source")
        {
            reader.Object.FileNames.SourceFile[0] = 'x';
        }
        else
        {
            parameters.MaxTrackingPoints = 201;
        }
        QCOMPARE(reader.Object.ReadTracking(parameters), result);
        QCOMPARE(reader.Setup.Lines.All(), lines);
        QCOMPARE(reader.Object.TrackingLoaded, isLoaded);
        QVERIFY(reader.Object.TrackingPoints.empty());
        // Taken over before anything else.
        QCOMPARE(reader.Object.TrackingParameters.MaxTrackingPoints, parameters.MaxTrackingPoints);
    }
}

void TrackingFileTest::MissingTrackingFile()
{
    Reader reader("");
    QVERIFY(QFile::remove(reader.Setup.Path("Tracking.dat")));
    QCOMPARE(reader.Run(), 1);
    QCOMPARE(reader.Setup.Lines.All(), QStringList({LoadingFailed}));
    QVERIFY(!reader.Object.TrackingLoaded);
}

void TrackingFileTest::RoundTrip()
{
    BatchSetup setup;
    PosRotStabilizer writer;
    setup.GivePaths(writer);
    writer.TrackingPoints = {{}, ThreePointsRead(), {}, Points(250, cv::Point2f(0.1F, -1e30F))};
    QCOMPARE(writer.WriteTracking(), 0);
    PosRotStabilizer reader;
    setup.GivePaths(reader);
    QCOMPARE(reader.ReadTracking(writer.TrackingParameters), 0);
    QVERIFY(reader.TrackingPoints == writer.TrackingPoints);
    QCOMPARE(setup.Lines.All(), QStringList({"1 Tracking file written!", Read}));
}

QTEST_MAIN(TrackingFileTest)
#include "trackingfile_test.moc"
