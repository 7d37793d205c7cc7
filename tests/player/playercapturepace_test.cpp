// SPDX-License-Identifier: MIT
#include "player/captureprobe.h"
#include "support/messageguard.h"
#include "support/testhome.h"

#include <QtTest>

#include <memory>

namespace
{
const TestHome Home;

constexpr int FastFps = 500;  ///< frames per second: a clip is over in no time
}  // namespace

/** The frame source of the preview at play: its timer, when it reports, and how a play ends. */
class PlayerCapturePaceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }
    void PositionIsThinned_data();
    void PositionIsThinned();
    void PositionCountsFromTheLastReport();
    void PlayedTimeFollowsTheShotsAlone();
    void EndByFailedRead_data();
    void EndByFailedRead();
    void EndByCountKeepsTheTimer();
    void EndRepeatsAtAndBehindTheCount();
    void IntervalIsCut_data();
    void IntervalIsCut();
    void IntervalStartsAtThirtyFrames();
    void IntervalChangesDuringPlay();
    void IntervalCountsAtOnce();
    void PlaysByItsTimer();
    void SlowReceiverLosesNoFrame();

private:
    const CaptureClips Clips{Home.Path()};  // before the rows of the tests, which name them
    std::unique_ptr<MessageGuard> Guard;
};

void PlayerCapturePaceTest::initTestCase()
{
    QVERIFY(Clips.Valid);
}

void PlayerCapturePaceTest::PositionIsThinned_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("fps");
    QTest::addColumn<bool>("inStep");
    QTest::addColumn<QStringList>("reports");
    const QStringList at30{"position 60", "position 120", "position 130", "ended"};
    QTest::newRow("30 frames per second: every 60 frames and at the end")
        << Clips.Long << 30 << true << at30;
    QTest::newRow("0 counts as 30") << Clips.Long << 0 << true << at30;
    QTest::newRow("25 frames per second: every 50 frames")
        << Clips.Long << 25 << true
        << QStringList{"position 50", "position 100", "position 130", "ended"};
    QTest::newRow("from Open the file ends first: none at the end")
        << Clips.Long << 25 << false << QStringList{"position 50", "position 100", "ended"};
    QTest::newRow("1000 frames per second: at the end alone")
        << Clips.Long << 1000 << true << QStringList{"position 130", "ended"};
    QTest::newRow("due and at the end: twice")
        << Clips.Ten << 5 << true << QStringList{"position 10", "position 10", "ended"};
    QTest::newRow("1 frame per second: every second frame")
        << Clips.Ten << 1 << false
        << QStringList{"position 2", "position 4", "position 6", "position 8", "ended"};
}

void PlayerCapturePaceTest::PositionIsThinned()
{
    QFETCH(QString, file);
    QFETCH(int, fps);
    QFETCH(bool, inStep);
    CaptureProbe player;
    player.Capture.SetIntervall(fps);
    player.Play(file, inStep);
    for (int shots = 0; shots < 200 && !player.Events.contains("ended"); ++shots)
    {
        player.Shoot(1);
    }
    QTEST(player.TakeReports(), "reports");
}

void PlayerCapturePaceTest::PositionCountsFromTheLastReport()
{
    CaptureProbe player;
    player.Capture.SetIntervall(25);
    player.Play(Clips.Long, false);
    player.Shoot(30);
    player.Capture.Pause();
    player.Capture.Continue();
    player.Take();
    player.Shoot(49);
    QCOMPARE(player.TakeReports(), QStringList());
    player.Shoot(1);
    QCOMPARE(player.TakeReports(), QStringList{"position 80"});
}

void PlayerCapturePaceTest::PlayedTimeFollowsTheShotsAlone()
{
    // A move changes the played time with its first shot: far ahead, that shot is due at once; far
    // back, the next report waits until play has passed the old place by two seconds.
    CaptureProbe player;
    player.Capture.SetIntervall(25);
    player.Play(Clips.Long, false);
    player.Shoot(10);
    player.Capture.Goto(100);
    player.Take();
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList({"frame 100 as 100", "position 101"}));
    player.Capture.Goto(0);
    QCOMPARE(player.Take(), QStringList{"position 0"});
    player.Shoot(129);
    QCOMPARE(player.TakeReports(), QStringList());
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList({"frame 129 as 129", "position 130", "ended"}));
}

void PlayerCapturePaceTest::EndByFailedRead_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("inStep");
    QTest::addColumn<int>("shots");
    QTest::newRow("all read, as Open took the first frame") << Clips.Ten << false << 9;
    QTest::newRow("shorter than it says") << Clips.Short << false << 5;
    QTest::newRow("shorter than it says, numbers in step") << Clips.Short << true << 6;
}

void PlayerCapturePaceTest::EndByFailedRead()
{
    QFETCH(int, shots);
    QFETCH(QString, file);
    QFETCH(bool, inStep);
    CaptureProbe player;
    player.Play(file, inStep);
    player.Shoot(shots);
    QVERIFY(player.Capture.IsPlaying());
    QCOMPARE(player.TakeReports(), QStringList());
    bool playing = true;
    connect(&player.Capture, &PlayerCapture::Ended, &player.Capture,
            [&] { playing = player.Capture.IsPlaying(); });
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList{"ended"});
    QVERIFY(!playing);
    player.Capture.Pause();
    QCOMPARE(player.Take(), QStringList{QStringLiteral("position %1").arg(shots)});
}

void PlayerCapturePaceTest::EndByCountKeepsTheTimer()
{
    CaptureProbe player;
    player.Play(Clips.Ten, true);
    player.Shoot(9);
    QCOMPARE(player.TakeReports(), QStringList());
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList({"frame 9 as 9", "position 10", "ended"}));
    QVERIFY(player.Capture.IsPlaying());
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList{"ended"});
    QVERIFY(!player.Capture.IsPlaying());
}

void PlayerCapturePaceTest::EndRepeatsAtAndBehindTheCount()
{
    CaptureProbe player;
    player.Play(Clips.More, false);
    player.Shoot(3);
    QCOMPARE(player.TakeReports(), QStringList());
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList({"frame 4 as 3", "position 4", "ended"}));
    player.Capture.Goto(4);
    player.Shoot(1);
    // Which frame the library finds there is its own affair.
    QCOMPARE(player.TakeReports(), QStringList({"position 4", "position 5", "ended"}));
    QVERIFY(player.Capture.IsPlaying());
}

void PlayerCapturePaceTest::IntervalIsCut_data()
{
    QTest::addColumn<int>("fps");
    QTest::addColumn<int>("interval");
    QTest::newRow("0 plays at 33 ms") << 0 << 33;
    QTest::newRow("30") << 30 << 33;
    QTest::newRow("25") << 25 << 40;
    QTest::newRow("60: 16.7 is cut") << 60 << 16;
    QTest::newRow("7: 142.9 is cut") << 7 << 142;
    QTest::newRow("1000") << 1000 << 1;
    QTest::newRow("10000: as fast as it goes") << 10000 << 0;
}

void PlayerCapturePaceTest::IntervalIsCut()
{
    QFETCH(int, fps);
    CaptureProbe player;
    player.Capture.SetIntervall(fps);
    QVERIFY(!player.Capture.IsPlaying());
    player.Play(Clips.Ten, false);
    const TimerWatch watch;
    QTRY_VERIFY(!watch.Intervals.isEmpty());
    QTEST(watch.Intervals.constFirst(), "interval");
}

void PlayerCapturePaceTest::IntervalStartsAtThirtyFrames()
{
    CaptureProbe player;
    player.Play(Clips.Long, false);
    player.Shoot(59);
    QCOMPARE(player.TakeReports(), QStringList());
    player.Shoot(1);
    QCOMPARE(player.TakeReports(), QStringList{"position 60"});
    const TimerWatch watch;
    QTRY_VERIFY(!watch.Intervals.isEmpty());
    QCOMPARE(watch.Intervals.constFirst(), 33);
}

void PlayerCapturePaceTest::IntervalChangesDuringPlay()
{
    CaptureProbe player;
    player.Capture.SetIntervall(1);
    player.Play(Clips.Long, false);
    const TimerWatch watch;
    player.Capture.SetIntervall(FastFps);
    QVERIFY(player.Capture.IsPlaying());
    QTRY_VERIFY(watch.Intervals.size() >= 3);
    QCOMPARE(watch.Intervals.mid(0, 3), QVector<int>({2, 2, 2}));
    QVERIFY(player.Capture.IsPlaying());
    player.Capture.SetIntervall(50);
    QTRY_COMPARE(watch.Intervals.constLast(), 20);
    QVERIFY(player.Capture.IsPlaying());
}

void PlayerCapturePaceTest::IntervalCountsAtOnce()
{
    // 10 frames of 40 ms bring no report; 11 of 200 ms do.
    CaptureProbe player;
    player.Capture.SetIntervall(25);
    player.Play(Clips.Long, false);
    player.Shoot(10);
    player.Capture.SetIntervall(5);
    QCOMPARE(player.TakeReports(), QStringList());
    player.Shoot(1);
    QCOMPARE(player.TakeReports(), QStringList{"position 11"});
}

void PlayerCapturePaceTest::PlaysByItsTimer()
{
    CaptureProbe player;
    int elsewhere = 0;
    connect(
        &player.Capture, &PlayerCapture::frameReady, this,
        [&] { elsewhere += QThread::currentThread() != qApp->thread() ? 1 : 0; },
        Qt::DirectConnection);
    player.Capture.SetIntervall(FastFps);
    player.Play(Clips.Ten, false);
    QTRY_VERIFY(!player.Capture.IsPlaying());
    QCOMPARE(player.Take(), OneAhead(9) + QStringList{"ended"});
    QCOMPARE(elsewhere, 0);
}

void PlayerCapturePaceTest::SlowReceiverLosesNoFrame()
{
    CaptureProbe player;
    connect(&player.Capture, &PlayerCapture::frameReady, &player.Capture,
            [] { QThread::msleep(15); });
    player.Capture.SetIntervall(FastFps);
    player.Play(Clips.Ten, false);
    QTRY_VERIFY(!player.Capture.IsPlaying());
    QCOMPARE(player.Take(), OneAhead(9) + QStringList{"ended"});
}
QTEST_MAIN(PlayerCapturePaceTest)
#include "playercapturepace_test.moc"
