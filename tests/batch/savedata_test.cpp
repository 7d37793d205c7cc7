// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/messageguard.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <memory>

namespace
{
const char TrackingWritten[] = "1 Tracking file written!";
const char StabilizingWritten[] = "1 Stabilizing file written!";

/** Gives it the paths, points and motion of two frames, and the flags that tell what is loaded. */
void Fill(PosRotStabilizer& stabilizer, BatchSetup& setup, bool hasTracking = true,
          bool hasMotion = true)
{
    setup.GivePaths(stabilizer);
    stabilizer.TrackingPoints = {{}, {{1.0F, 2.0F}}};
    stabilizer.PrepareFrames(2);
    stabilizer.MotionCount = 2;
    stabilizer.TrackingLoaded = hasTracking;
    stabilizer.StabilizeLoaded = hasMotion;
}
}  // namespace

/** Saving what is in memory. */
class SaveDataTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void Rules_data();
    void Rules();
    void FailedTrackingFileEndsIt();
    void FailedStabilizationFileIsTold();
    void HostWithoutStabilizer();
    void HostTakesThePaths();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void SaveDataTest::Rules_data()
{
    QTest::addColumn<bool>("trackingLoaded");
    QTest::addColumn<bool>("stabilizeLoaded");
    QTest::addColumn<int>("result");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("nothing in memory") << false << false << 2 << QStringList();
    QTest::newRow("motion without points") << false << true << 2 << QStringList();
    QTest::newRow("points alone") << true << false << 0 << QStringList{TrackingWritten};
    QTest::newRow("both, points first")
        << true << true << 0 << QStringList{TrackingWritten, StabilizingWritten};
}

void SaveDataTest::Rules()
{
    QFETCH(bool, trackingLoaded);
    QFETCH(bool, stabilizeLoaded);
    QFETCH(int, result);
    QFETCH(QStringList, lines);
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    Fill(stabilizer, setup, trackingLoaded, stabilizeLoaded);
    QCOMPARE(stabilizer.SaveData(), result);
    QCOMPARE(setup.Lines.All(), lines);
    const bool writesTracking = lines.contains(TrackingWritten);
    const bool writesMotion = lines.contains(StabilizingWritten);
    QCOMPARE(QFile::exists(setup.Path("Tracking.dat")), writesTracking);
    QCOMPARE(QFile::exists(setup.Path("Tracking.dat.cfg")), writesTracking);
    QCOMPARE(QFile::exists(setup.Path("Stabilize.dat")), writesMotion);
    QCOMPARE(QFile::exists(setup.Path("Stabilize.dat.cfg")), writesMotion);
    QCOMPARE(stabilizer.TrackingLoaded, trackingLoaded);
    QCOMPARE(stabilizer.StabilizeLoaded, stabilizeLoaded);
}

void SaveDataTest::FailedTrackingFileEndsIt()
{
    BatchSetup setup;
    setup.Proj.TrackingFile = setup.Path("nowhere/Tracking.dat");
    PosRotStabilizer stabilizer;
    Fill(stabilizer, setup);
    QCOMPARE(stabilizer.SaveData(), 1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Could not write matching file (.cfg)!"}));
    QVERIFY(!QFile::exists(setup.Path("Stabilize.dat")));
}

void SaveDataTest::FailedStabilizationFileIsTold()
{
    BatchSetup setup;
    QVERIFY(QDir(setup.Folder.path()).mkdir("Stabilize.dat"));
    PosRotStabilizer stabilizer;
    Fill(stabilizer, setup);
    QCOMPARE(stabilizer.SaveData(), 1);
    QCOMPARE(setup.Lines.All(), QStringList({TrackingWritten, "3 Stabilizing file access error!"}));
}

void SaveDataTest::HostWithoutStabilizer()
{
    FreshHost host;
    QCOMPARE(ProgramHost.SaveData(FileNames()), 100);
}

void SaveDataTest::HostTakesThePaths()
{
    // A fresh stabilizer holds no points: 2, where a host without one would say 100.
    BatchSetup setup;
    QCOMPARE(ProgramHost.SaveData(setup.Proj.FileNames), 2);
    QCOMPARE(setup.Lines.All(), QStringList());
}

QTEST_MAIN(SaveDataTest)
#include "savedata_test.moc"
