// SPDX-License-Identifier: MIT
#include "batch/exportsetup.h"
#include "batch/filefields.h"
#include "stabilizer/camerapath.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <opencv2/videoio.hpp>

#include <QFile>
#include <QtTest>

#include <memory>

/** The export job: which frames it writes, what it tells, and how it ends. */
class ExportJobTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void FramesOfTheOutput_data();
    void FramesOfTheOutput();
    void SourceShorterThanItSays_data();
    void SourceShorterThanItSays();
    void ProgressLines_data();
    void ProgressLines();
    void RateOfTheSource();
    void DataMissing_data();
    void DataMissing();
    void PathIsGeneratedWhenMissing_data();
    void PathIsGeneratedWhenMissing();
    void SourceCannotBeOpened();
    void OutputCannotBeOpened_data();
    void OutputCannotBeOpened();
    void Aborts_data();
    void Aborts();
    void OldRequestIsForgotten();
    void TakesTheSettings();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void ExportJobTest::FramesOfTheOutput_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<QVector<int>>("shown");
    QTest::newRow("one frame") << 1 << QVector<int>{0};
    QTest::newRow("two frames both show the first") << 2 << QVector<int>{0, 0};
    QTest::newRow("three frames") << 3 << QVector<int>{0, 0, 0};
    QTest::newRow("four frames") << 4 << QVector<int>{0, 1, 1, 1};
    QTest::newRow("the last two repeat the one before") << 7 << QVector<int>{0, 1, 2, 3, 4, 4, 4};
}

void ExportJobTest::FramesOfTheOutput()
{
    QFETCH(int, frames);
    QFETCH(QVector<int>, shown);
    ExportSetup setup({64, 64, frames, 25.0});
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.ShownNumbers(), shown);
    QCOMPARE(setup.Object.Calls, setup.WarpCalls(frames));
    const QString input = QStringLiteral("1 Input: Frames= %1 h=64 v=64 fps=25").arg(frames);
    QCOMPARE(setup.Lines.All(), QStringList({input, "1 Start exporting Video", input,
                                             QStringLiteral("4 Frame: 0/%1 exported!").arg(frames),
                                             "1 Exporting Video finished!"}));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(setup.Object.TrackingLoaded && setup.Object.StabilizeLoaded);
    QVERIFY(!QFile::exists(setup.Path("Tracking.dat")));
    QVERIFY(!QFile::exists(setup.Path("Stabilize.dat")));
}

void ExportJobTest::SourceShorterThanItSays_data()
{
    QTest::addColumn<int>("promised");
    QTest::addColumn<int>("result");
    QTest::addColumn<QVector<int>>("shown");
    QTest::newRow("by one frame") << 5 << 0 << QVector<int>{0, 1, 2, 2, 2};
    QTest::newRow("by two frames") << 6 << 0 << QVector<int>{0, 1, 2, 3, 3, 3};
    QTest::newRow("by three frames") << 7 << -1 << QVector<int>{0, 1, 2, 3};
}

void ExportJobTest::SourceShorterThanItSays()
{
    QFETCH(int, promised);
    QFETCH(int, result);
    QFETCH(QVector<int>, shown);
    ExportSetup setup;
    QVERIFY(TestVideo::WriteShortClip(setup.Path("source.avi"), {64, 64, 4, 25.0}, promised));
    SetZeroCorrections(promised);
    QCOMPARE(setup.Run(), result);
    QCOMPARE(setup.Lines.All().constLast(),
             QString(result == 0 ? "1 Exporting Video finished!" : "3 Exporting failed!"));
    QCOMPARE(setup.ShownNumbers(), shown);
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
}

void ExportJobTest::ProgressLines_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("50 frames") << 50 << QStringList{"4 Frame: 0/50 exported!"};
    QTest::newRow("51 frames") << 51
                               << QStringList{"4 Frame: 0/51 exported!",
                                              "4 Frame: 50/51 exported!"};
    QTest::newRow("120 frames") << 120
                                << QStringList{"4 Frame: 0/120 exported!",
                                               "4 Frame: 50/120 exported!",
                                               "4 Frame: 100/120 exported!"};
}

void ExportJobTest::ProgressLines()
{
    QFETCH(int, frames);
    QFETCH(QStringList, lines);
    ExportSetup setup({64, 64, frames, 25.0});
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.OfLevel(4), lines);
}

void ExportJobTest::RateOfTheSource()
{
    ExportSetup setup({64, 64, 5, 29.97});
    QCOMPARE(setup.Run(), 0);
    cv::VideoCapture written(setup.Path("export.mp4").toStdString());
    QVERIFY(std::abs(written.get(cv::CAP_PROP_FPS) - 29.97) < 1e-3);
    QVERIFY(ReadBytes(setup.Path("export.mp4")).contains("mp4v"));
}

void ExportJobTest::DataMissing_data()
{
    QTest::addColumn<bool>("tracking");
    QTest::addColumn<bool>("motion");
    QTest::newRow("nothing") << false << false;
    QTest::newRow("no tracking points") << false << true;
    QTest::newRow("no motion") << true << false;
}

void ExportJobTest::DataMissing()
{
    QFETCH(bool, tracking);
    QFETCH(bool, motion);
    ExportSetup setup;
    setup.Object.TrackingLoaded = tracking;
    setup.Object.StabilizeLoaded = motion;
    setup.Object.PathGenerated = false;
    QCOMPARE(setup.Run(), 2);
    QCOMPARE(setup.Lines.All(), QStringList());
    QCOMPARE(setup.Object.Calls, QStringList());
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void ExportJobTest::PathIsGeneratedWhenMissing_data()
{
    QTest::addColumn<bool>("hadPath");
    QTest::newRow("missing") << false;
    QTest::newRow("there") << true;
}

void ExportJobTest::PathIsGeneratedWhenMissing()
{
    QFETCH(bool, hadPath);
    ExportSetup setup;
    setup.Object.PathGenerated = hadPath;
    QStringList linesBefore{"not called"};
    setup.Object.OnGenerate = [&] { linesBefore = setup.Lines.All(); };
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Object.Calls.contains("GeneratePath"), !hadPath);
    if (!hadPath)
    {
        QCOMPARE(setup.Object.Calls.constFirst(), QString("GeneratePath"));
        QCOMPARE(linesBefore, QStringList());  // before the source is opened
    }
}

void ExportJobTest::SourceCannotBeOpened()
{
    ExportSetup setup;
    SetField(setup.Object.FileNames.SourceFile, "/nowhere/source.avi");
    QCOMPARE(setup.Run(), 1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Open /nowhere/source.avi failed!"}));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void ExportJobTest::OutputCannotBeOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("frames");
    QTest::addColumn<bool>("fails");
    QTest::newRow("no such folder, 4 frames") << "nowhere/export.mp4" << 4 << true;
    QTest::newRow("no such folder, 5 frames") << "nowhere/export.mp4" << 5 << true;
    QTest::newRow("container without this codec") << "export.webm" << 5 << true;
    QTest::newRow("3 frames end as finished") << "nowhere/export.mp4" << 3 << false;
    QTest::newRow("2 frames end as finished") << "nowhere/export.mp4" << 2 << false;
    QTest::newRow("1 frame ends as finished") << "export.webm" << 1 << false;
}

void ExportJobTest::OutputCannotBeOpened()
{
    QFETCH(QString, name);
    QFETCH(int, frames);
    QFETCH(bool, fails);
    ExportSetup setup({64, 64, frames, 25.0});
    setup.Proj.ExportFile = setup.Folder.filePath(name);
    setup.GivePaths(setup.Object);
    QCOMPARE(setup.Run(), fails ? -1 : 0);
    const QString input = QStringLiteral("1 Input: Frames= %1 h=64 v=64 fps=25").arg(frames);
    QCOMPARE(setup.Lines.All(),
             QStringList({input, "1 Start exporting Video", input,
                          QStringLiteral("4 Frame: 0/%1 exported!").arg(frames),
                          fails ? "3 Exporting failed!" : "1 Exporting Video finished!"}));
    QCOMPARE(setup.Object.Calls, setup.WarpCalls(fails ? 1 : frames));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(TestVideo::ReadAllFrames(setup.Proj.ExportFile).empty());
}

void ExportJobTest::Aborts_data()
{
    QTest::addColumn<int>("requestAt");
    QTest::addColumn<int>("written");
    QTest::newRow("before the first frame") << -1 << 0;
    QTest::newRow("during the first frame") << 0 << 1;
    QTest::newRow("in the middle") << 3 << 4;
    QTest::newRow("during the last frame but one") << 5 << 6;
    QTest::newRow("during the last frame: too late") << 6 << 7;
}

void ExportJobTest::Aborts()
{
    QFETCH(int, requestAt);
    QFETCH(int, written);
    const bool isAborted = written < 7;
    ExportSetup setup({64, 64, 7, 25.0});
    setup.Object.PathGenerated = false;
    const auto request = [&setup](bool now)
    { setup.Object.JobStatus = now ? int{JobAbortRequested} : setup.Object.JobStatus; };
    setup.Object.OnGenerate = [&] { request(requestAt == -1); };
    setup.Object.OnWarp = [&](int frame) { request(frame == requestAt); };
    QCOMPARE(setup.Run(), isAborted ? 10 : 0);
    QCOMPARE(setup.Lines.All().constLast(),
             QString(isAborted ? "1 Export aborted!" : "1 Exporting Video finished!"));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(setup.Object.TrackingLoaded && setup.Object.StabilizeLoaded);
    // What was written is closed and can be played.
    const QVector<int> all{0, 1, 2, 3, 4, 4, 4};
    QCOMPARE(setup.ShownNumbers(), all.mid(0, written));
}

void ExportJobTest::OldRequestIsForgotten()
{
    ExportSetup setup;
    setup.Object.JobStatus = JobAbortRequested;
    QCOMPARE(setup.Run(), 0);
}

void ExportJobTest::TakesTheSettings()
{
    ExportSetup setup;
    setup.Object.TrackingLoaded = false;
    setup.Settings.EnableCrop = true;
    setup.Settings.CropFactor = 1.5;
    setup.Settings.ExpAngle = -3.25;
    setup.Settings.ExpOffV = 17;
    QCOMPARE(setup.Run(), 2);
    QCOMPARE(setup.Object.ExportSettings.EnableCrop, true);
    QCOMPARE(setup.Object.ExportSettings.CropFactor, 1.5);
    QCOMPARE(setup.Object.ExportSettings.ExpAngle, -3.25);
    QCOMPARE(setup.Object.ExportSettings.ExpOffV, 17);
}

QTEST_MAIN(ExportJobTest)
#include "exportjob_test.moc"
