// SPDX-License-Identifier: MIT
#include "batch/exportsettings.h"
#include "batch/filenames.h"
#include "batch/jobstate.h"
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/trackingparameters.h"
#include "stabilizer/posrotstabilizer.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstring>

/** Numbers that travel between threads, into files or into the project, and start values. */
class RecordsTest : public QObject
{
    Q_OBJECT

private slots:
    void JobStates_data();
    void JobStates();
    void StatusValues();
    void ResultCodes();
    void LogLevels();
    void LogRecordLayout();
    void TrackingParametersLayout();
    void FileNamesLayout();
    void ExportSettingsStart();
    void RotationLimits_data();
    void RotationLimits();
    void StabilizerStart();
    void PrepareFramesSizes();
};

void RecordsTest::JobStates_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isJob");
    QTest::addColumn<bool>("isIdle");
    QTest::newRow("none") << int{JobNone} << 0 << false << true;
    QTest::newRow("the free number") << 1 << 1 << false << false;
    QTest::newRow("analyse") << int{JobAnalyse} << 2 << true << false;
    QTest::newRow("stabilize") << int{JobStabilize} << 3 << true << false;
    QTest::newRow("export") << int{JobExport} << 4 << true << false;
    QTest::newRow("generate all") << int{JobGenerateAll} << 5 << true << false;
    QTest::newRow("read tracking") << int{JobReadTracking} << 6 << true << false;
    QTest::newRow("read all") << int{JobReadAll} << 7 << true << false;
    QTest::newRow("tracking ready") << int{JobTrackingReady} << 8 << false << true;
    QTest::newRow("path ready") << int{JobPathReady} << 9 << false << true;
    QTest::newRow("path calculated") << int{JobPathCalculated} << 10 << false << true;
    QTest::newRow("no state") << 11 << 11 << false << false;
}

void RecordsTest::JobStates()
{
    QFETCH(int, state);
    QFETCH(int, number);
    QFETCH(bool, isJob);
    QFETCH(bool, isIdle);
    QCOMPARE(state, number);
    QCOMPARE(IsJob(state), isJob);
    QCOMPARE(IsIdle(state), isIdle);
}

void RecordsTest::StatusValues()
{
    QCOMPARE(int{JobRunning}, 0);
    QCOMPARE(int{JobAbortRequested}, 1);
    QCOMPARE(int{JobEnded}, 2);
}

void RecordsTest::ResultCodes()
{
    QCOMPARE(ResultOk, 0);
    QCOMPARE(ResultNoAccess, 1);
    QCOMPARE(ResultOutOfDate, 2);
    QCOMPARE(ResultNoData, 2);
    QCOMPARE(ResultDamaged, -1);
    QCOMPARE(ResultAborted, 10);
    QCOMPARE(ResultNoStabilizer, 100);
}

void RecordsTest::LogLevels()
{
    QCOMPARE(unsigned{LogInit}, 0U);
    QCOMPARE(unsigned{LogRun}, 1U);
    QCOMPARE(unsigned{LogWarning}, 2U);
    QCOMPARE(unsigned{LogError}, 3U);
    QCOMPARE(unsigned{LogDebug}, 4U);
}

void RecordsTest::LogRecordLayout()
{
    QCOMPARE(sizeof(LogRecord), std::size_t{84});
    QCOMPARE(offsetof(LogRecord, Text), std::size_t{4});
    QCOMPARE(sizeof(LogRecord::Text), std::size_t{80});
}

void RecordsTest::TrackingParametersLayout()
{
    QCOMPARE(sizeof(TrackingParameters), std::size_t{12});
    const TrackingParameters parameters;
    QCOMPARE(parameters.MaxTrackingPoints, 200);
    // 200, then 0, then -1, lowest byte first.
    const char bytes[12] = {'\xC8', 0, 0, 0, 0, 0, 0, 0, '\xFF', '\xFF', '\xFF', '\xFF'};
    QCOMPARE(std::memcmp(&parameters, bytes, sizeof(bytes)), 0);
}

void RecordsTest::FileNamesLayout()
{
    QCOMPARE(sizeof(FileNames), std::size_t{3073});
    QCOMPARE(offsetof(FileNames, SourceFile), std::size_t{0});
    QCOMPARE(offsetof(FileNames, ExportFile), std::size_t{512});
    QCOMPARE(offsetof(FileNames, TrackingFile), std::size_t{1024});
    QCOMPARE(offsetof(FileNames, TrackingMatchingFile), std::size_t{1536});
    QCOMPARE(offsetof(FileNames, StabilizationFile), std::size_t{2048});
    QCOMPARE(offsetof(FileNames, StabilizationMatchingFile), std::size_t{2560});
    QCOMPARE(offsetof(FileNames, End), std::size_t{3072});
    const FileNames names;
    const char* first = names.SourceFile;
    QVERIFY(std::all_of(first, first + sizeof(names), [](char c) { return c == 0; }));
}

void RecordsTest::ExportSettingsStart()
{
    const ExportSettings settings;
    QCOMPARE(settings.EnableCrop, false);
    QCOMPARE(settings.EnRescale, false);
    QCOMPARE(settings.CropFactor, 1.0);
    QCOMPARE(settings.ExpAngle, 0.0);
    QCOMPARE(settings.ExpResH, 1920);
    QCOMPARE(settings.ExpResV, 1080);
    QCOMPARE(settings.ExpOffH, 0);
    QCOMPARE(settings.ExpOffV, 0);
}

void RecordsTest::RotationLimits_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<bool>("turns");
    QTest::newRow("none") << 0.0 << false;
    QTest::newRow("0.0005 degrees are none") << 0.0005 << false;
    QTest::newRow("0.001 degrees are none") << 0.001 << false;
    QTest::newRow("just beyond 0.001") << 0.0011 << true;
    QTest::newRow("just below a full turn") << 359.999 << true;
    QTest::newRow("a full turn is none") << 360.0 << false;
    QTest::newRow("-0.001 degrees are none") << -0.001 << false;
    QTest::newRow("just beyond -0.001") << -0.0011 << true;
    QTest::newRow("a full turn back is none") << -360.0 << false;
    QTest::newRow("no number") << std::nan("") << false;
}

void RecordsTest::RotationLimits()
{
    QFETCH(double, angle);
    QFETCH(bool, turns);
    QCOMPARE(IsRotation(angle), turns);
}

void RecordsTest::StabilizerStart()
{
    const PosRotStabilizer stabilizer;
    QCOMPARE(stabilizer.TypeId(), 1);
    QCOMPARE(stabilizer.JobStatus, int{JobEnded});
    QVERIFY(!stabilizer.StabilizeLoaded);
    QVERIFY(!stabilizer.PathGenerated);
    QVERIFY(!stabilizer.TrackingLoaded);
    QVERIFY(stabilizer.TrackingPoints.empty());
    QCOMPARE(stabilizer.TrackingParameters.MaxTrackingPoints, 200);
    QCOMPARE(stabilizer.Transform.rows, 2);
    QCOMPARE(stabilizer.Transform.cols, 3);
    QCOMPARE(stabilizer.Transform.type(), CV_64F);
    QVERIFY(stabilizer.LastTransform.empty());
    QVERIFY(stabilizer.MotionX.isEmpty());
    QVERIFY(stabilizer.MotionY.isEmpty());
    QVERIFY(stabilizer.MotionAngle.isEmpty());
    QVERIFY(stabilizer.MotionDegrees.isEmpty());
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{0});
}

void RecordsTest::PrepareFramesSizes()
{
    PosRotStabilizer stabilizer;
    stabilizer.MotionX = {1.0, 2.0, 3.0};
    stabilizer.MotionY = {4.0, 5.0, 6.0};
    stabilizer.MotionAngle = {0.1, 0.2, 0.3};
    stabilizer.MotionDegrees = {7.0, 8.0, 9.0};
    stabilizer.MotionCount = 3;
    stabilizer.PathGenerated = true;
    stabilizer.PrepareFrames(2);
    QCOMPARE(stabilizer.MotionX, QVector<double>({1.0, 2.0}));
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{0});
    QVERIFY(!stabilizer.PathGenerated);
    stabilizer.PrepareFrames(4);
    QCOMPARE(stabilizer.MotionX, QVector<double>({1.0, 2.0, 0.0, 0.0}));
    QCOMPARE(stabilizer.MotionY, QVector<double>({4.0, 5.0, 0.0, 0.0}));
    QCOMPARE(stabilizer.MotionAngle, QVector<double>({0.1, 0.2, 0.0, 0.0}));
    QCOMPARE(stabilizer.MotionDegrees, QVector<double>({7.0, 8.0, 0.0, 0.0}));
}

QTEST_MAIN(RecordsTest)
#include "records_test.moc"
