// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "batch/videofile.h"
#include "support/files.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <QtTest>

#include <cmath>
#include <memory>

/** Frame rates that no clip of the tests can be written with, as the log shows them. */
class VideoRateTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void ShownWithSixDigits_data();
    void ShownWithSixDigits();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void VideoRateTest::ShownWithSixDigits_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("scale");  // the rate's divisor
    QTest::addColumn<QString>("shown");
    QTest::newRow("59.940059..., the television's rate") << 60000 << 1001 << "59.9401";
    QTest::newRow("29.970029..., without zeros at the end") << 30000 << 1001 << "29.97";
    QTest::newRow("25.123456, rounded up") << 25123456 << 1000000 << "25.1235";
    QTest::newRow("1234.567, rounded up") << 1234567 << 1000 << "1234.57";
}

void VideoRateTest::ShownWithSixDigits()
{
    QFETCH(int, rate);
    QFETCH(int, scale);
    QFETCH(QString, shown);
    BatchSetup setup;
    const QString path = setup.Path("source.avi");
    QVERIFY(TestVideo::WriteNumberedClip(path, {64, 64, 3, 25.0}));
    QByteArray bytes = ReadBytes(path);
    // Scale and rate are fields of the stream's header, in this order.
    const int fields = bytes.indexOf("strh") + 8 + 20;
    bytes.replace(fields, 8, Int(scale) + Int(rate));
    WriteBytes(path, bytes);
    VideoFile video;
    QCOMPARE(video.Open(path.toLocal8Bit()), 0);
    QVERIFY(std::abs(video.GetFps() - static_cast<double>(rate) / scale) < 1e-9);
    QCOMPARE(setup.Lines.All(), QStringList({"1 Input: Frames= 3 h=64 v=64 fps=" + shown}));
}

QTEST_MAIN(VideoRateTest)
#include "videorate_test.moc"
