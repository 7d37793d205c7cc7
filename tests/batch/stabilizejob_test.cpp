// SPDX-License-Identifier: MIT
#include "batch/pairjobs.h"
#include "batch/stabilizesetup.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QtTest>

#include <memory>

namespace
{
using Points = std::vector<std::vector<cv::Point2f>>;

const char Input[] = "1 Input: Frames= 5 h=64 v=64 fps=25";
const char Start[] = "1 Start Stabilizing!";
const char Done[] = "1 Stabilizing done!";
const char NoData[] = "3 No Tracking Data (execute Analyse Source Video)!";
const char NoMatchingFile[] = "3 Could not open matching file (.cfg)!";
const char TrackingWritten[] = "1 Tracking file written!";
const QStringList PointsChanged = {"3 Data file out of date!", "3 Tracking file out of date!"};
}  // namespace

/** Where the stabilize job takes the motion from, and what it ends in. */
class StabilizeJobTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void NoTrackingData_data();
    void NoTrackingData();
    void NoParametersMeanAnalysis();
    void OutOfDateMeansAnalysis_data();
    void OutOfDateMeansAnalysis();
    void ResultOfTheAnalysis_data();
    void ResultOfTheAnalysis();
    void TrackingDataCannotBeChecked();
    void MotionInMemoryIsCurrent();
    void MotionInMemoryIsForeign_data();
    void MotionInMemoryIsForeign();
    void ReadsTheFile();
    void AnyOtherResultMeasures_data();
    void AnyOtherResultMeasures();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void StabilizeJobTest::NoTrackingData_data()
{
    QTest::addColumn<bool>("hasParameters");
    QTest::addColumn<bool>("hadMotion");
    QTest::newRow("nothing at all") << true << false;
    QTest::newRow("motion without points is worth nothing") << true << true;
    QTest::newRow("no parameters: no analysis either") << false << true;
}

void StabilizeJobTest::NoTrackingData()
{
    QFETCH(bool, hasParameters);
    QFETCH(bool, hadMotion);
    StabilizeSetup setup;
    setup.Object.TrackingLoaded = false;
    setup.Object.StabilizeLoaded = hadMotion;
    setup.Object.ReadResult = 0;
    const ::TrackingParameters& parameters = setup.Proj.TrackingParameters;
    QCOMPARE(setup.Object.StabilizeJob(hasParameters ? &parameters : nullptr), 2);
    QCOMPARE(setup.Lines.All(), QStringList(NoData));
    QCOMPARE(setup.Object.Calls, QStringList());
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(!setup.Object.StabilizeLoaded && !setup.Object.TrackingLoaded);
}

void StabilizeJobTest::NoParametersMeanAnalysis()
{
    StabilizeSetup setup;
    setup.Object.TrackingParameters.MaxTrackingPoints = 33;
    setup.Proj.TrackingParameters.MaxTrackingPoints = 44;
    QVERIFY(QFile::remove(setup.Path("Tracking.dat.cfg")));  // is not asked for
    QCOMPARE(setup.Object.StabilizeJob(nullptr), 0);
    QCOMPARE(setup.Lines.All(), QStringList({Input, TrackingWritten}));
    QCOMPARE(setup.Object.Calls, StabilizeSetup::MeasureCalls(5, 5).mid(1));
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat.cfg")).mid(268), PointsPayload(33));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(setup.Object.StabilizeLoaded);
}

void StabilizeJobTest::OutOfDateMeansAnalysis_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("points");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("other number of points") << "" << 44 << PointsChanged;
    QTest::newRow("other source") << "/nowhere/source.avi" << 200
                                  << QStringList{"3 Out of date!", "3 Tracking file out of date!"};
}

void StabilizeJobTest::OutOfDateMeansAnalysis()
{
    QFETCH(QString, source);
    QFETCH(int, points);
    QFETCH(QStringList, lines);
    StabilizeSetup setup;
    if (!source.isEmpty())
    {
        WriteBytes(setup.Path("Tracking.dat.cfg"), MatchingBytes(source, PointsPayload(200)));
    }
    setup.Object.TrackingParameters.MaxTrackingPoints = 33;
    setup.Proj.TrackingParameters.MaxTrackingPoints = points;
    setup.Object.ReadResult = 0;  // motion that could be read does not help
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.All(), lines + QStringList({Input, TrackingWritten}));
    QCOMPARE(setup.Object.Calls, StabilizeSetup::MeasureCalls(5, 5).mid(1));
    // A plain colour has no corners: none of the old points is left but those of frame 0.
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat")), Int(5) + Zeros(20));
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat.cfg")).mid(268), PointsPayload(points));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(setup.Object.StabilizeLoaded);
}

void StabilizeJobTest::ResultOfTheAnalysis_data()
{
    QTest::addColumn<bool>("hasParameters");
    QTest::addColumn<int>("writeResult");
    QTest::addColumn<int>("requestAt");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("lastLine");
    for (const bool has : {false, true})
    {
        const QByteArray why = has ? "out of date: " : "no parameters: ";
        QTest::newRow(why + "motion not written") << has << 7 << -1 << 7 << TrackingWritten;
        QTest::newRow(why + "aborted") << has << 0 << 2 << 10 << "1 Analyse aborted!";
    }
}

void StabilizeJobTest::ResultOfTheAnalysis()
{
    QFETCH(bool, hasParameters);
    QFETCH(int, writeResult);
    QFETCH(int, requestAt);
    QFETCH(int, result);
    QFETCH(QString, lastLine);
    StabilizeSetup setup;
    setup.Object.StabilizeLoaded = true;
    setup.Object.WriteResult = writeResult;
    RequestStopAt(setup.Object, requestAt);
    setup.Proj.TrackingParameters.MaxTrackingPoints = 44;
    const ::TrackingParameters& parameters = setup.Proj.TrackingParameters;
    QCOMPARE(setup.Object.StabilizeJob(hasParameters ? &parameters : nullptr), result);
    QCOMPARE(setup.Lines.All(),
             (hasParameters ? PointsChanged : QStringList()) + QStringList({Input, lastLine}));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(setup.Object.StabilizeLoaded);  // an analysis that fails clears nothing
}

void StabilizeJobTest::TrackingDataCannotBeChecked()
{
    for (const bool hadMotion : {false, true})
    {
        StabilizeSetup setup;
        QVERIFY(QFile::remove(setup.Path("Tracking.dat.cfg")));
        setup.Object.StabilizeLoaded = hadMotion;
        setup.Object.ReadResult = 0;
        setup.Proj.TrackingParameters.MaxTrackingPoints = 44;
        QCOMPARE(setup.Run(), 1);
        QCOMPARE(setup.Lines.All(),
                 QStringList({NoMatchingFile, "3 Tracking file loading failed!"}));
        QCOMPARE(setup.Object.Calls, QStringList());
        QCOMPARE(setup.Object.JobStatus, int{JobRunning});  // deliberate
        QCOMPARE(setup.Object.TrackingParameters.MaxTrackingPoints, 44);
        QCOMPARE(setup.Object.StabilizeLoaded, hadMotion);
        QVERIFY(setup.Object.TrackingLoaded);
    }
}

void StabilizeJobTest::MotionInMemoryIsCurrent()
{
    StabilizeSetup setup;
    setup.Object.StabilizeLoaded = true;
    setup.WriteStabilizationMatch(MatchingBytes(setup.Proj.SourceFile, Int(1)));
    const Points points = setup.Object.TrackingPoints;
    QVERIFY(QFile::remove(setup.Path("source.avi")));
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.All(), QStringList());
    QCOMPARE(setup.Object.Calls, QStringList());
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(setup.Object.StabilizeLoaded);
    QVERIFY(setup.Object.TrackingPoints == points);
}

void StabilizeJobTest::MotionInMemoryIsForeign_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("line");
    QTest::newRow("no matching file") << QByteArray() << NoMatchingFile;
    QTest::newRow("other source") << MatchingBytes("/nowhere/source.avi", Int(1))
                                  << "3 Out of date!";
    QTest::newRow("other type") << QByteArray("same source") << "3 Data file out of date!";
}

void StabilizeJobTest::MotionInMemoryIsForeign()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, line);
    for (const int readResult : {0, 2})
    {
        StabilizeSetup setup;
        setup.Object.StabilizeLoaded = true;
        setup.Object.ReadResult = readResult;
        if (!file.isEmpty())
        {
            setup.WriteStabilizationMatch(
                file == "same source" ? MatchingBytes(setup.Proj.SourceFile, Int(2)) : file);
        }
        QCOMPARE(setup.Run(), 0);
        const bool isRead = readResult == 0;
        QCOMPARE(setup.Lines.All(),
                 QStringList(line) + (isRead ? QStringList() : QStringList({Input, Start, Done})));
        QCOMPARE(setup.Object.Calls,
                 isRead ? QStringList("ReadStabilizeFile") : StabilizeSetup::MeasureCalls(5, 5));
        QVERIFY(setup.Object.StabilizeLoaded);
    }
}

void StabilizeJobTest::ReadsTheFile()
{
    StabilizeSetup setup;
    setup.Object.ReadResult = 0;
    QVERIFY(QFile::remove(setup.Path("source.avi")));
    QCOMPARE(setup.Run(), 0);
    // The reader is left to check the matching file.
    QCOMPARE(setup.Lines.All(), QStringList());
    QCOMPARE(setup.Object.Calls, QStringList("ReadStabilizeFile"));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(setup.Object.StabilizeLoaded);
}

void StabilizeJobTest::AnyOtherResultMeasures_data()
{
    QTest::addColumn<int>("readResult");
    QTest::newRow("no access") << 1;
    QTest::newRow("out of date") << 2;
    QTest::newRow("damaged") << -1;
    QTest::newRow("any other number") << 7;
}

void StabilizeJobTest::AnyOtherResultMeasures()
{
    QFETCH(int, readResult);
    StabilizeSetup setup;
    setup.Object.ReadResult = readResult;
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.All(), QStringList({Input, Start, Done}));
    QCOMPARE(setup.Object.Calls, StabilizeSetup::MeasureCalls(5, 5));
}

QTEST_MAIN(StabilizeJobTest)
#include "stabilizejob_test.moc"
