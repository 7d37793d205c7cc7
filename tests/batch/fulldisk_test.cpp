// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QFile>
#include <QtTest>

#include <memory>

namespace
{
const char FullDevice[] = "/dev/full";  // opens, and refuses each byte
}

/**
 * The matching files and the tracking file on a full disk. Deliberate: their writers do not look
 * whether the bytes arrived.
 */
class FullDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void MatchingFileIsNotTold_data();
    void MatchingFileIsNotTold();
    void TrackingFileCountsAsWritten_data();
    void TrackingFileCountsAsWritten();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void FullDiskTest::initTestCase()
{
    QVERIFY2(QFile::exists(FullDevice), "the device that is always full is part of every Linux");
}

void FullDiskTest::MatchingFileIsNotTold_data()
{
    QTest::addColumn<int>("payloadSize");
    QTest::newRow("of stabilization data: refused at the end") << 4;
    QTest::newRow("of tracking data: refused at the end") << 12;
    QTest::newRow("beyond any buffer: refused on the way") << 1000000;
}

void FullDiskTest::MatchingFileIsNotTold()
{
    QFETCH(int, payloadSize);
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    const QByteArray payload = Zeros(payloadSize);
    QCOMPARE(stabilizer.WriteMatchingFile(FullDevice, payload.constData(),
                                          static_cast<std::size_t>(payload.size())),
             0);
    QCOMPARE(setup.Lines.All(), QStringList());
}

void FullDiskTest::TrackingFileCountsAsWritten_data()
{
    QTest::addColumn<int>("frames");
    QTest::newRow("nothing tracked: refused at the end") << 0;
    QTest::newRow("a few frames: refused at the end") << 2;
    QTest::newRow("beyond any buffer: refused on the way") << 1000;
}

void FullDiskTest::TrackingFileCountsAsWritten()
{
    QFETCH(int, frames);
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);  // the matching file has room
    SetField(stabilizer.FileNames.TrackingFile, FullDevice);
    const std::vector<cv::Point2f> points(100, cv::Point2f(1.5F, -2.25F));
    stabilizer.TrackingPoints.assign(static_cast<std::size_t>(frames), points);
    QCOMPARE(stabilizer.WriteTracking(), 0);
    QCOMPARE(setup.Lines.All(), QStringList({"1 Tracking file written!"}));
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat.cfg")).size(), 280);
}

QTEST_MAIN(FullDiskTest)
#include "fulldisk_test.moc"
