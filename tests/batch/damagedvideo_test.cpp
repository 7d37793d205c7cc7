// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/damagedclips.h"
#include "batch/filefields.h"
#include "batch/scriptedstabilizer.h"
#include "player/captureprobe.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/files.h"
#include "support/memorylimit.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <opencv2/core.hpp>
#include <opencv2/videoio.hpp>

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

namespace
{
using namespace DamagedClips;

constexpr int Lowest = std::numeric_limits<int>::min();

/** What a source gives to a reader. */
struct Facts
{
    bool Opens = false;
    int Promised = 0;  ///< frames, as it tells
    int Readable = 0;  ///< frames up to the first one that cannot be read
    int Behind = 0;    ///< the same, with the first read left out

    [[nodiscard]] QString Text() const
    {
        return QStringLiteral("opens %1, promises %2, gives %3, or %4 behind the first")
            .arg(Opens)
            .arg(Promised)
            .arg(Readable)
            .arg(Behind);
    }
};

/** Asks the library itself. */
Facts Ask(const QString& path)
{
    cv::VideoCapture capture;
    if (!capture.open(path.toStdString(), cv::CAP_ANY))
    {
        return {};
    }
    const double promised = capture.get(cv::CAP_PROP_FRAME_COUNT);
    Facts facts{true, promised < Lowest ? Lowest : static_cast<int>(promised), 0, 0};
    cv::Mat frame;
    const int first = capture.read(frame) ? 1 : 0;
    while (capture.read(frame))
    {
        ++facts.Behind;
    }
    facts.Readable = first * (1 + facts.Behind);
    return facts;
}

/** A source, and a project that has it. */
struct DamagedSetup : BatchSetup
{
    DamagedSetup(const char* name, const QByteArray& bytes) : DamagedSetup()
    {
        Proj.SourceFile = Path(name);
        WriteBytes(Proj.SourceFile, bytes);
        GivePaths(Object);
    }
    DamagedSetup() { GivePaths(Object); }

    [[nodiscard]] int Analyse() { return Object.AnalyseJob(Proj.TrackingParameters); }

    /** With data as of an analysis of the video before it was damaged. */
    [[nodiscard]] int Export(int frames)
    {
        Object.TrackingLoaded = true;
        Object.StabilizeLoaded = true;
        Object.PathGenerated = true;
        SetZeroCorrections(frames);
        return Object.ExportJob(Proj.ExportSettings);
    }

    [[nodiscard]] QStringList OpenFailed() const
    {
        const QString line = "Open " + Proj.SourceFile + " failed!";
        return {"3 " + line.left(79)};
    }

    PosRotStabilizer Object;
};

void CheckAnalysis(DamagedSetup& setup, const Facts& facts)
{
    if (facts.Opens && facts.Readable == 0)
    {
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(setup.Analyse()), cv::Exception);
        QVERIFY(!QFile::exists(setup.Path("Tracking.dat")));
        QVERIFY(!setup.Object.TrackingLoaded && !setup.Object.StabilizeLoaded);
        return;
    }
    QCOMPARE(setup.Analyse(), facts.Opens ? 0 : 1);
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QCOMPARE(setup.Object.TrackingLoaded, facts.Opens);
    QCOMPARE(setup.Object.StabilizeLoaded, facts.Opens);
    QCOMPARE(QFile::exists(setup.Path("Stabilize.dat")), facts.Opens);
    const int frames = std::max(facts.Promised, 0);
    QCOMPARE(setup.Object.MotionX.size(), frames);
    QCOMPARE(setup.Object.MotionCount, static_cast<std::uint64_t>(frames > 1 ? frames : 0));
    const QStringList lines = setup.Lines.Take();
    if (facts.Opens)
    {
        QVERIFY(lines.first().startsWith("1 Input: Frames= " + QString::number(facts.Promised)));
        QCOMPARE(lines.mid(1),
                 QStringList({"1 Tracking file written!", "1 Stabilizing file written!"}));
    }
    else
    {
        QCOMPARE(lines, setup.OpenFailed());
    }
}

void CheckExport(DamagedSetup& setup, const Facts& facts)
{
    setup.Lines.Take();
    const int frames = std::max(facts.Promised, 0);
    const bool isWhole = facts.Readable >= frames - 2;  // two are not read
    QCOMPARE(setup.Export(frames), !facts.Opens ? 1 : isWhole ? 0 : -1);
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    const QStringList lines = setup.Lines.Take();
    if (!facts.Opens)
    {
        QCOMPARE(lines, setup.OpenFailed());
        return;
    }
    QCOMPARE(lines.filter("1 Input: Frames= ").size(), 2);
    QCOMPARE(lines.at(1), QString("1 Start exporting Video"));
    QCOMPARE(lines.last(),
             QString(isWhole ? "1 Exporting Video finished!" : "3 Exporting failed!"));
    QCOMPARE(lines.filter(QRegularExpression("^3")).size(), isWhole ? 0 : 1);
    // What could be read is in the file, which is whole.
    const int written = isWhole ? frames : facts.Readable;
    QCOMPARE(static_cast<int>(TestVideo::ReadAllFrames(setup.Proj.ExportFile).size()), written);
}

/** Opens the source in the player and plays until it ends. */
void CheckPlayer(const DamagedSetup& setup, const Facts& facts)
{
    CaptureProbe player;
    QCOMPARE(player.Open(setup.Proj.SourceFile), facts.Opens ? facts.Promised : 0);
    QCOMPARE(player.Capture.IsOpen(), facts.Opens);
    QCOMPARE(player.Take(), facts.Opens ? QStringList("position 0") : QStringList());
    if (!facts.Opens)
    {
        return;
    }
    player.Capture.Continue();
    player.Take();
    // The first frame was read when the file was opened; each of the others is a shot.
    for (int shot = 1; shot <= facts.Behind; ++shot)
    {
        player.Shoot(1);
        const QStringList events = player.Take();
        QVERIFY(events.first().endsWith(QStringLiteral(" as %1").arg(shot - 1)));
        QCOMPARE(events.contains("ended"), shot >= facts.Promised);
    }
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList("ended"));
    QVERIFY(!player.Capture.IsPlaying());
}
}  // namespace

/** Sources that break off, are damaged, change, or are no videos at all: how a job with them ends.
 */
class DamagedVideoTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void Sources_data();
    void Sources();
    void Folder();
    void BitsFlipped_data();
    void BitsFlipped();
    void SizeChangesInMidStream();
    void PicturesOfAnotherSize();
    void PromiseBeyondAllMemory();
    void ExportWithoutAnyFrame();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void DamagedVideoTest::Sources_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("opens");
    QTest::addColumn<int>("promised");
    QTest::addColumn<int>("readable");
    const QByteArray mp4 = Good(Kind::Mp4);
    const QByteArray avi = Good(Kind::Avi);
    QTest::newRow("good .mp4") << mp4 << "s.mp4" << true << Frames << Frames;
    QTest::newRow("good .avi") << avi << "s.avi" << true << Frames << Frames;
    for (const int percent : {10, 50, 90})
    {
        QTest::addRow("%d percent of an .mp4", percent)
            << mp4.left(mp4.size() * percent / 100) << "s.mp4" << false << 0 << 0;
    }
    QTest::newRow(".mp4 without its last byte")
        << mp4.left(mp4.size() - 1) << "s.mp4" << true << Frames << Frames;
    QTest::newRow("header of an .avi, in part") << avi.left(100) << "s.avi" << false << 0 << 0;
    QTest::newRow("header of an .avi and no frame")
        << AviOfFrames(0) << "s.avi" << true << Frames << 0;
    for (const int frames : {1, 5, Frames - 3, Frames - 2, Frames - 1})
    {
        QTest::addRow("%d frames of an .avi", frames)
            << AviOfFrames(frames) << "s.avi" << true << Frames << frames;
    }
    QTest::newRow("pictures without a header")
        << Good(Kind::Stream) << "s.mp4" << true << Lowest << Frames;
    QTest::newRow("sound") << Sound() << "s.mp4" << false << 0 << 0;
    QTest::newRow("text") << QByteArray("This is no video.\n") << "s.mp4" << false << 0 << 0;
    QTest::newRow("nothing") << QByteArray() << "s.mp4" << false << 0 << 0;
    QTest::newRow("zeros") << Zeros(100000) << "s.mp4" << false << 0 << 0;
}

void DamagedVideoTest::Sources()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, name);
    QFETCH(bool, opens);
    QFETCH(int, promised);
    QFETCH(int, readable);
    const Facts facts{opens, promised, readable, std::max(readable - 1, 0)};
    DamagedSetup setup(qPrintable(name), bytes);
    QCOMPARE(Ask(setup.Proj.SourceFile).Text(), facts.Text());
    CheckAnalysis(setup, facts);
    CheckExport(setup, facts);
    CheckPlayer(setup, facts);
    QCOMPARE(ReadBytes(setup.Proj.SourceFile), bytes);
}

void DamagedVideoTest::Folder()
{
    DamagedSetup setup;
    QVERIFY(QDir(setup.Folder.path()).mkdir("s.mp4"));
    setup.Proj.SourceFile = setup.Path("s.mp4");
    setup.GivePaths(setup.Object);
    CheckAnalysis(setup, {});
    CheckExport(setup, {});
    CheckPlayer(setup, {});
}

void DamagedVideoTest::BitsFlipped_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray mp4 = Good(Kind::Mp4);
    const QByteArray avi = Good(Kind::Avi);
    for (std::uint32_t number = 1; number <= 8; ++number)
    {
        QTest::addRow(".mp4 number %u", number) << DamagedClips::BitsFlipped(mp4, number);
        QTest::addRow(".avi number %u", number) << DamagedClips::BitsFlipped(avi, number);
    }
}

void DamagedVideoTest::BitsFlipped()
{
    QFETCH(QByteArray, bytes);
    DamagedSetup setup("s.avi", bytes);
    const Facts facts = Ask(setup.Proj.SourceFile);
    qInfo("%s", qPrintable(facts.Text()));
    CheckAnalysis(setup, facts);
    CheckExport(setup, facts);
    CheckPlayer(setup, facts);
}

void DamagedVideoTest::SizeChangesInMidStream()
{
    DamagedSetup setup("s.avi", AviOfTwoSizes());
    const Facts facts{true, Frames, Frames, Frames - 1};
    QCOMPARE(Ask(setup.Proj.SourceFile).Text(), facts.Text());
    for (const cv::Mat& frame : TestVideo::ReadAllFrames(setup.Proj.SourceFile))
    {
        QCOMPARE(frame.cols, 64);
        QCOMPARE(frame.rows, 64);
    }
    CheckAnalysis(setup, facts);
    CheckExport(setup, facts);
    CheckPlayer(setup, facts);
}

void DamagedVideoTest::PicturesOfAnotherSize()
{
    DamagedSetup setup;
    setup.Proj.SourceFile = WritePictures(setup.Folder.path());
    setup.GivePaths(setup.Object);
    const Facts facts{true, Frames, Frames, Frames - 1};
    QCOMPARE(Ask(setup.Proj.SourceFile).Text(), facts.Text());
    CheckPlayer(setup, facts);
    QVERIFY_EXCEPTION_THROWN(static_cast<void>(setup.Analyse()), cv::Exception);
    QVERIFY(!setup.Object.TrackingLoaded);
    // The crop of 58 by 58 pixels is no part of a picture of 48 rows.
    setup.Proj.ExportSettings.EnableCrop = true;
    setup.Proj.ExportSettings.CropFactor = 1.1;
    QVERIFY_EXCEPTION_THROWN(static_cast<void>(setup.Export(Frames)), cv::Exception);
}

void DamagedVideoTest::PromiseBeyondAllMemory()
{
    constexpr int most = std::numeric_limits<int>::max();
    DamagedSetup setup("s.avi", Promising(Good(Kind::Avi), most));
    QCOMPARE(Ask(setup.Proj.SourceFile).Text(), (Facts{true, most, Frames, Frames - 1}.Text()));
    if (!MemoryLimit::IsPossible())
    {
        QSKIP("A sanitizer ends the process without memory");
    }
    const MemoryLimit limit(200U << 20U);
    QVERIFY_EXCEPTION_THROWN(static_cast<void>(setup.Analyse()), std::bad_alloc);
}

void DamagedVideoTest::ExportWithoutAnyFrame()
{
    // A video of two frames exports the picture that is read first; here there is none.
    DamagedSetup setup("s.avi", Promising(AviOfFrames(0), 2));
    QCOMPARE(Ask(setup.Proj.SourceFile).Text(), (Facts{true, 2, 0, 0}.Text()));
    QVERIFY_EXCEPTION_THROWN(static_cast<void>(setup.Export(Frames)), cv::Exception);
}

QTEST_MAIN(DamagedVideoTest)
#include "damagedvideo_test.moc"
