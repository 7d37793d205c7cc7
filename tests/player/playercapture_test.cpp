// SPDX-License-Identifier: MIT
#include "player/captureprobe.h"
#include "support/messageguard.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <QtTest>

#include <memory>
#include <set>
#include <vector>

namespace
{
const TestHome Home;
}  // namespace

/** The frame source of the preview: which frames it hands on, and under which numbers. */
class PlayerCaptureTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }
    void SignalsAndSlotsInOrder();
    void NothingOpen();
    void OpenTellsFramesAndPosition();
    void OpenFails();
    void OpenEndsAPlay_data();
    void OpenEndsAPlay();
    void OpenStartsAnew();
    void PlayAfterOpenIsOneAhead();
    void GotoInPause_data();
    void GotoInPause();
    void PlayAfterGotoInPauseRepeatsTheNumber();
    void GotoInPlayOnlyMoves();
    void GotoBehindTheLastFrameShowsTheOldOne();
    void GotoWithoutVideoDoesNothing();
    void RedrawInPause();
    void RedrawInPlayDoesNothing();
    void RedrawAfterTheEndShowsTheLastFrame();
    void VideoWithoutFramesShowsNothing();
    void PauseAndContinueReport();
    void StopGoesToZeroAndCloses();
    void DestructorStops();
    void FramesAreNotCopied();

private:
    const CaptureClips Clips{Home.Path()};  // before the rows of the tests, which name them
    std::unique_ptr<MessageGuard> Guard;
};

void PlayerCaptureTest::initTestCase()
{
    QVERIFY(Clips.Valid);
}

void PlayerCaptureTest::SignalsAndSlotsInOrder()
{
    const QStringList expected{
        "void Ended()",       "void frameReady(cv::Mat,int)",
        "void Position(int)", "int Open(char*)",
        "void Redraw()",      "void Pause()",
        "void Continue()",    "void Stop()",
        "void Goto(int)",     "void SetIntervall(int)",
        "void Timeout()",
    };
    const QMetaObject& meta = PlayerCapture::staticMetaObject;
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        const QMetaMethod method = meta.method(i);
        found.append(QString::fromLatin1(method.typeName()) + ' ' + method.methodSignature());
        QCOMPARE(method.methodType(),
                 i - meta.methodOffset() < 3 ? QMetaMethod::Signal : QMetaMethod::Slot);
    }
    QCOMPARE(found, expected);
}

void PlayerCaptureTest::NothingOpen()
{
    CaptureProbe player;
    QVERIFY(!player.Capture.IsOpen());
    QVERIFY(!player.Capture.IsPlaying());
    QCOMPARE(player.Capture.GetFps(), 0.0);
    player.Capture.Redraw();
    QCOMPARE(player.Take(), QStringList());
    // The shot finds no frame.
    player.Capture.Continue();
    QVERIFY(player.Capture.IsPlaying());
    player.Shoot(1);
    QVERIFY(!player.Capture.IsPlaying());
    QCOMPARE(player.Take(), QStringList({"position 0", "ended"}));
}

void PlayerCaptureTest::OpenTellsFramesAndPosition()
{
    CaptureProbe player;
    QCOMPARE(player.Open(Clips.Ten), 10);
    QCOMPARE(player.Take(), QStringList{"position 0"});  // the first frame is not handed on
    QVERIFY(player.Capture.IsOpen());
    QVERIFY(!player.Capture.IsPlaying());
    QCOMPARE(player.Capture.GetFps(), 25.0);
    QCOMPARE(player.Open(Clips.Short), 20);  // what the file says
}

void PlayerCaptureTest::OpenFails()
{
    CaptureProbe player;
    QCOMPARE(player.Open(Clips.Missing), 0);
    QVERIFY(!player.Capture.IsOpen());
    QCOMPARE(player.Take(), QStringList());
}

void PlayerCaptureTest::OpenEndsAPlay_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QStringList>("events");
    QTest::newRow("a video") << Clips.Ten << 10 << QStringList{"position 0"};
    QTest::newRow("also a file that does not open") << Clips.Missing << 0 << QStringList();
}

void PlayerCaptureTest::OpenEndsAPlay()
{
    QFETCH(QString, file);
    bool playing = false;
    CaptureProbe player;
    player.Play(Clips.Ten, false);
    QVERIFY(player.Capture.IsPlaying());
    connect(&player.Capture, &PlayerCapture::Position, &player.Capture,
            [&] { playing = player.Capture.IsPlaying(); });
    QTEST(player.Open(file), "frames");
    QTEST(player.Take(), "events");
    QVERIFY(!player.Capture.IsPlaying());
    QVERIFY(!playing);  // the position is told last
}

void PlayerCaptureTest::OpenStartsAnew()
{
    // Kept, the 1800 ms of the old video would put the next report off.
    CaptureProbe player;
    player.Capture.SetIntervall(25);
    player.Play(Clips.Long, false);
    player.Shoot(45);
    QCOMPARE(player.Open(Clips.Long), 130);
    player.Take();
    player.Shoot(49);
    QCOMPARE(player.Take(), OneAhead(49));
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList({"frame 50 as 49", "position 50"}));
}

void PlayerCaptureTest::PlayAfterOpenIsOneAhead()
{
    CaptureProbe player;
    QCOMPARE(player.Open(Clips.Ten), 10);
    player.Capture.Continue();
    QCOMPARE(player.Take(), QStringList({"position 0", "position 0"}));
    player.Shoot(4);
    QCOMPARE(player.Take(), OneAhead(4));
}

void PlayerCaptureTest::GotoInPause_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("shown");
    QTest::newRow("first") << 0 << 0;
    QTest::newRow("-3 counts as 0") << -3 << 0;
    QTest::newRow("middle") << 5 << 5;
    QTest::newRow("last") << 9 << 9;
}

void PlayerCaptureTest::GotoInPause()
{
    QFETCH(int, frame);
    QFETCH(int, shown);
    CaptureProbe player;
    QCOMPARE(player.Open(Clips.Ten), 10);
    player.Capture.Goto(2);
    player.Take();
    player.Capture.Goto(frame);
    QCOMPARE(player.Take(), QStringList({QStringLiteral("frame %1 as %1").arg(shown),
                                         QStringLiteral("position %1").arg(shown)}));
    QVERIFY(!player.Capture.IsPlaying());
}

void PlayerCaptureTest::PlayAfterGotoInPauseRepeatsTheNumber()
{
    CaptureProbe player;
    QCOMPARE(player.Open(Clips.Ten), 10);
    player.Capture.Goto(5);
    player.Capture.Continue();
    player.Take();
    player.Shoot(3);
    QCOMPARE(player.Take(), QStringList({"frame 6 as 5", "frame 7 as 6", "frame 8 as 7"}));
}

void PlayerCaptureTest::GotoInPlayOnlyMoves()
{
    CaptureProbe player;
    player.Play(Clips.Ten, false);
    player.Shoot(1);
    player.Take();
    player.Capture.Goto(7);
    QCOMPARE(player.Take(), QStringList{"position 7"});
    QVERIFY(player.Capture.IsPlaying());
    player.Shoot(2);
    QCOMPARE(player.Take(), QStringList({"frame 7 as 7", "frame 8 as 8"}));
    player.Capture.Goto(-3);
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList({"position 0", "frame 0 as 0"}));
}

void PlayerCaptureTest::GotoBehindTheLastFrameShowsTheOldOne()
{
    CaptureProbe player;
    QCOMPARE(player.Open(Clips.Short), 20);
    player.Capture.Goto(3);
    player.Take();
    player.Capture.Goto(15);  // promised, and not there
    QCOMPARE(player.Take(), QStringList({"frame 3 as 15", "position 15"}));
}

void PlayerCaptureTest::GotoWithoutVideoDoesNothing()
{
    CaptureProbe player;
    player.Capture.Goto(4);
    QCOMPARE(player.Take(), QStringList());
    player.Capture.Pause();
    QCOMPARE(player.Take(), QStringList{"position 0"});
}

void PlayerCaptureTest::RedrawInPause()
{
    CaptureProbe player;
    QCOMPARE(player.Open(Clips.Ten), 10);
    player.Take();
    player.Capture.Redraw();
    player.Capture.Redraw();
    QCOMPARE(player.Take(), QStringList({"frame 0 as 0", "frame 0 as 0"}));
    player.Capture.Goto(6);
    player.Take();
    player.Capture.Redraw();
    QCOMPARE(player.Take(), QStringList{"frame 6 as 6"});
    // The file has not moved.
    player.Capture.Continue();
    player.Shoot(1);
    player.Capture.Pause();
    player.Capture.Redraw();
    QCOMPARE(player.Take(),
             QStringList({"position 6", "frame 7 as 6", "position 7", "frame 7 as 7"}));
}

void PlayerCaptureTest::RedrawInPlayDoesNothing()
{
    CaptureProbe player;
    player.Play(Clips.Ten, false);
    player.Shoot(2);
    player.Take();
    player.Capture.Redraw();
    QCOMPARE(player.Take(), QStringList());
}

void PlayerCaptureTest::RedrawAfterTheEndShowsTheLastFrame()
{
    CaptureProbe player;
    player.Play(Clips.Ten, false);
    player.Shoot(10);
    QVERIFY(!player.Capture.IsPlaying());
    player.Take();
    player.Capture.Redraw();
    QCOMPARE(player.Take(), QStringList{"frame 9 as 9"});
}

/** The picture of the video before is not shown for it. */
void PlayerCaptureTest::VideoWithoutFramesShowsNothing()
{
    CaptureProbe player;
    QCOMPARE(player.Open(Clips.Ten), 10);
    player.Capture.Goto(6);
    player.Capture.Redraw();
    QCOMPARE(player.Take(),
             QStringList({"position 0", "frame 6 as 6", "position 6", "frame 6 as 6"}));
    QCOMPARE(player.Open(Clips.Bare), 20);
    player.Capture.Redraw();
    QCOMPARE(player.Take(), QStringList({"position 0", "frame nothing as 0"}));
    player.Capture.Continue();
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList({"position 0", "ended"}));
}

void PlayerCaptureTest::PauseAndContinueReport()
{
    QVector<bool> playing;  // outlives the player, whose end is told too
    CaptureProbe player;
    player.Play(Clips.Ten, false);
    player.Shoot(3);
    player.Take();
    connect(&player.Capture, &PlayerCapture::Position, &player.Capture,
            [&] { playing.append(player.Capture.IsPlaying()); });
    player.Capture.Pause();
    QVERIFY(!player.Capture.IsPlaying());
    player.Capture.Continue();
    QVERIFY(player.Capture.IsPlaying());
    QCOMPARE(player.Take(), QStringList({"position 3", "position 3"}));
    QCOMPARE(playing, QVector<bool>({false, true}));
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList{"frame 4 as 3"});
}

void PlayerCaptureTest::StopGoesToZeroAndCloses()
{
    CaptureProbe player;
    player.Play(Clips.Ten, false);
    player.Shoot(3);
    player.Take();
    player.Capture.Stop();
    QCOMPARE(player.Take(), QStringList{"position 0"});
    QVERIFY(!player.Capture.IsPlaying());
    QCOMPARE(player.Capture.GetFps(), 0.0);  // closed
    player.Capture.Goto(2);
    QCOMPARE(player.Take(), QStringList());
    // A source that was opened once counts as open for good: its last frame shows, and play ends at
    // once.
    QVERIFY(player.Capture.IsOpen());
    player.Capture.Redraw();
    QCOMPARE(player.Take(), QStringList{"frame 3 as 0"});
    player.Capture.Continue();
    player.Shoot(1);
    QCOMPARE(player.Take(), QStringList({"position 0", "ended"}));
}

void PlayerCaptureTest::DestructorStops()
{
    QStringList events;
    {
        PlayerCapture capture(nullptr);
        QByteArray path = Clips.Ten.toLocal8Bit();
        QCOMPARE(capture.Open(path.data()), 10);
        capture.Goto(4);
        capture.Continue();
        connect(
            &capture, &PlayerCapture::Position, this,
            [&](int frame) {
                events.append(QStringLiteral("%1 playing %2").arg(frame).arg(capture.IsPlaying()));
            });
    }
    QCOMPARE(events, QStringList{"0 playing 0"});
}

void PlayerCaptureTest::FramesAreNotCopied()
{
    // Frames that are kept are refilled by later reads: two buffers, at most, serve them all.
    std::vector<cv::Mat> kept;
    CaptureProbe player;
    QVERIFY(player.Open(Clips.Ten) > 0);
    connect(&player.Capture, &PlayerCapture::frameReady, &player.Capture,
            [&](const cv::Mat& frame) { kept.push_back(frame); });
    player.Shoot(8);
    std::set<const uchar*> places;
    for (const cv::Mat& frame : kept)
    {
        places.insert(frame.data);
        QVERIFY(TestVideo::NumberOf(frame) >= 7);
    }
    QCOMPARE(kept.size(), std::size_t{8});
    QVERIFY(places.size() <= 2);
}

QTEST_MAIN(PlayerCaptureTest)
#include "playercapture_test.moc"
