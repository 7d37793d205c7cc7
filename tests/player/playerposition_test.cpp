// SPDX-License-Identifier: MIT
#include "batch/jobstate.h"
#include "player/loneplayertest.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <QElapsedTimer>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

#include <algorithm>

namespace
{
const TestHome Home;

const QString Time = QStringLiteral("Time [min:sec:ms]");
const QString Number = QStringLiteral("Frame No.");
}  // namespace

/** Where the player stands: controls, markers, the end of the video and of the player. */
class PlayerPositionTest : public LonePlayerTest
{
    Q_OBJECT

private slots:
    void EachSeekWaits();
    void PositionAsTime_data();
    void PositionAsTime();
    void PositionWithoutVideo();
    void MarkersInPause();
    void MarkersDuringPlay_data();
    void MarkersDuringPlay();
    void CloseStops();
    void FailedSeekChangesNothing();
    void EndOfTheVideo_data();
    void EndOfTheVideo();
    void EndedPauses();
    void WorkaroundOpens();
    void WorkaroundDuringPlay_data();
    void WorkaroundDuringPlay();
    void EndDuringPlay();

private:
    void OpenAt(int frame);
};

/** Opens the video on the screen and goes to a frame other than 0. */
void PlayerPositionTest::OpenAt(int frame)
{
    Player->Show();
    Player->Player().Open();
    (*Player)->Type("spinBoxIdx", frame);
    QCOMPARE((*Player)->TakeFrames(), QVector<int>{frame});
    static_cast<void>((*Player)->TakePositions());
}

/** Without a video no frame comes, whose conversion would wait, too. */
void PlayerPositionTest::EachSeekWaits()
{
    QElapsedTimer time;
    time.start();
    for (int frame = 0; frame < 20; ++frame)
    {
        Player->Player().SetPosition(frame);
    }
    QVERIFY2(time.elapsed() >= 180, qPrintable(QString::number(time.elapsed())));  // 10 ms each
}

void PlayerPositionTest::PositionAsTime_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("minutes");
    QTest::addColumn<int>("seconds");
    QTest::newRow("start") << 0 << 0 << 0;
    QTest::newRow("half a second does not count") << 1 << 0 << 0;
    QTest::newRow("a second") << 2 << 0 << 1;
    QTest::newRow("59.5 seconds") << 119 << 0 << 59;
    QTest::newRow("a minute") << 120 << 1 << 0;
    QTest::newRow("75 seconds") << 150 << 1 << 15;
    QTest::newRow("more than an hour") << 7330 << 61 << 5;
    // 2147484 times 1000 is beyond 32 bits and turns negative, which the fields do not show.
    QTest::newRow("a product beyond 32 bits") << 2147484 << 0 << 0;
}

void PlayerPositionTest::PositionAsTime()
{
    QFETCH(int, frame);
    QFETCH(int, minutes);
    QFETCH(int, seconds);
    const QString longClip = Clips.filePath(QStringLiteral("long.avi"));
    QVERIFY(TestVideo::WriteShortClip(longClip, {32, 24, 1, 2.0}, 9000));
    Player->SetSource(longClip);
    Player->Show();
    (*Player)->Click("pushButtonPlayPause");  // the controls only follow now
    Player->Player().PositionUpdate(frame);
    QCOMPARE((*Player)->Number("spinBoxMin"), minutes);
    QCOMPARE((*Player)->Number("spinBoxSec"), seconds);
    QCOMPARE((*Player)->Number("spinBoxIdx"), std::min(frame, 8999));
    QCOMPARE((*Player)->Slider(), std::min(frame, 8999));
}

void PlayerPositionTest::PositionWithoutVideo()
{
    Player->Player().PositionUpdate(150);
    QCOMPARE((*Player)->Number("spinBoxIdx"), 150);
    QCOMPARE((*Player)->Number("spinBoxMin"), 0);
    QCOMPARE((*Player)->Number("spinBoxSec"), 0);
    QCOMPARE((*Player)->Markers(), 150.0);
}

void PlayerPositionTest::MarkersInPause()
{
    OpenAt(4);
    QCOMPARE((*Player)->Markers(), 4.0);  // although the margin band is on
    (*Player)->Click("checkBoxMargin");
    (*Player)->Type("spinBoxIdx", 7);
    QCOMPARE((*Player)->Markers(), 7.0);
    QCOMPARE((*Player)->Slider(), 7);
}

void PlayerPositionTest::MarkersDuringPlay_data()
{
    QTest::addColumn<bool>("hasMargin");
    QTest::addColumn<double>("marker");
    QTest::newRow("with the margin band they stay") << true << 4.0;
    QTest::newRow("without the margin band they follow") << false << 0.0;
}

void PlayerPositionTest::MarkersDuringPlay()
{
    QFETCH(bool, hasMargin);
    QFETCH(double, marker);
    OpenAt(4);
    if (!hasMargin)
    {
        (*Player)->Click("checkBoxMargin");
    }
    (*Player)->Click("pushButtonPlayPause");
    (*Player)->Click("pushButtonReset");
    QVERIFY((*Player)->IsPlaying());
    QCOMPARE((*Player)->Number("spinBoxIdx"), 0);
    QCOMPARE((*Player)->Slider(), 0);
    QCOMPARE((*Player)->Markers(), marker);
    (*Player)->Click("pushButtonPlayPause");
    QCOMPARE((*Player)->Markers(), double((*Player)->Number("spinBoxIdx")));
    QVERIFY((*Player)->Markers() != 4.0);
}

void PlayerPositionTest::CloseStops()
{
    OpenAt(4);
    (*Player)->Click("pushButtonPlayPause");
    Player->Player().Close();
    QVERIFY(!(*Player)->IsPlaying());
    QCOMPARE((*Player)->Number("spinBoxIdx"), 0);
    QCOMPARE((*Player)->Slider(), 0);
    QCOMPARE((*Player)->Markers(), 0.0);
    QCOMPARE((*Player)->Find<QSpinBox>("spinBoxIdx")->maximum(), 9);
}

/**
 * A job that ends the play closes the video as well, so that the next seek fails: no position comes
 * back to connect the controls again. What was sought last shows which numbers came through.
 */
void PlayerPositionTest::FailedSeekChangesNothing()
{
    OpenAt(4);
    (*Player)->Click("pushButtonPlayPause");
    QVERIFY((*Player)->IsPlaying());
    Player->Player().JobStateChanged(JobAnalyse);
    QCOMPARE((*Player)->Markers(), 0.0);
    static_cast<void>((*Player)->TakeFrames());
    static_cast<void>((*Player)->TakePositions());
    for (const int number : {5, 6})
    {
        (*Player)->Type("spinBoxIdx", number);
        QCOMPARE((*Player)->TakeFrames(), QVector<int>());
        QCOMPARE((*Player)->TakePositions(), QVector<int>());
        QCOMPARE((*Player)->Number("spinBoxIdx"), number);
        QCOMPARE((*Player)->Slider(), 0);
        QCOMPARE((*Player)->Markers(), 0.0);
    }
    Player->Player().Ended();  // of the job
    QCOMPARE((*Player)->TakePositions(), QVector<int>{0});
    QCOMPARE((*Player)->Number("spinBoxIdx"), 0);
    Player->Player().Open();
    QCOMPARE((*Player)->TakeFrames(), QVector<int>());
    (*Player)->Type("spinBoxIdx", 5);  // the failed one was the last: not again
    QCOMPARE((*Player)->TakeFrames(), QVector<int>());
    (*Player)->Type("spinBoxIdx", 6);  // was typed into a field without connection
    QCOMPARE((*Player)->TakeFrames(), QVector<int>{6});
    (*Player)->Type("spinBoxIdx", 3);
    QCOMPARE((*Player)->TakeFrames(), QVector<int>{3});
}

void PlayerPositionTest::EndOfTheVideo_data()
{
    QTest::addColumn<int>("promised");
    QTest::newRow("as long as promised") << 10;
    QTest::newRow("shorter than promised") << 40;
}

void PlayerPositionTest::EndOfTheVideo()
{
    QFETCH(int, promised);
    const QString clip = Clips.filePath(QStringLiteral("end.avi"));
    QVERIFY(TestVideo::WriteShortClip(clip, {160, 120, 10, 25.0}, promised));
    Player->SetSource(clip);
    OpenAt(2);
    (*Player)->Click("pushButtonPlayPause");
    QTRY_VERIFY_WITH_TIMEOUT(!(*Player)->IsPlaying(), PlayTime);
    QCOMPARE((*Player)->TakeFrames(), (QVector<int>{3, 4, 5, 6, 7, 8, 9}));
    // Number 2 goes with frame 3, and so on: 9 comes next.
    QCOMPARE((*Player)->Number("spinBoxIdx"), 9);
    QCOMPARE((*Player)->TakePositions(), (QVector<int>{2, 9}));
    (*Player)->Type("spinBoxIdx", 6);  // the controls are connected
    QCOMPARE((*Player)->TakeFrames(), QVector<int>{6});
    QVERIFY(!(*Player)->IsPlaying());
}

void PlayerPositionTest::EndedPauses()
{
    OpenAt(2);
    (*Player)->Click("pushButtonPlayPause");
    Player->Player().Ended();
    QVERIFY(!(*Player)->IsPlaying());
    (*Player)->Type("spinBoxIdx", 5);
    QCOMPARE((*Player)->TakeFrames(), QVector<int>{5});
    Player->Player().Ended();  // in pause, and again
    Player->Player().Ended();
    (*Player)->Type("spinBoxIdx", 6);
    QCOMPARE((*Player)->TakeFrames(), QVector<int>{6});
    (*Player)->Click("pushButtonPlayPause");
    QVERIFY((*Player)->IsPlaying());
}

void PlayerPositionTest::WorkaroundOpens()
{
    Player->Show();
    Player->ShowPaths(10);
    (*Player)->Click("pushButtonTime");
    Player->Player().Workaround();
    QVERIFY((*Player)->Capture.IsOpen());
    QVERIFY(!(*Player)->IsPlaying());
    QCOMPARE((*Player)->Find<QSpinBox>("spinBoxIdx")->maximum(), 1000000);  // nothing more
    QCOMPARE((*Player)->XTitle("scrollAreaH"), Number);
    QCOMPARE((*Player)->XTitle("scrollAreaV"), Number);
}

void PlayerPositionTest::WorkaroundDuringPlay_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<QString>("title");
    QTest::newRow("at frame 0 the graphs are drawn") << 0 << Number;
    QTest::newRow("at another frame nothing happens") << 5 << Time;
}

void PlayerPositionTest::WorkaroundDuringPlay()
{
    QFETCH(int, frame);
    QFETCH(QString, title);
    Player->ShowPaths(10);
    OpenAt(5);
    (*Player)->Click("pushButtonPlayPause");
    if (frame == 0)
    {
        (*Player)->Click("pushButtonReset");
    }
    QCOMPARE((*Player)->Number("spinBoxIdx"), frame);
    (*Player)->Click("pushButtonTime");
    Player->Player().Workaround();
    QVERIFY((*Player)->IsPlaying());
    QCOMPARE((*Player)->XTitle("scrollAreaH"), title);
}

void PlayerPositionTest::EndDuringPlay()
{
    Player->ShowPaths(10);
    OpenAt(5);
    (*Player)->Click("pushButtonPlayPause");
    QTRY_VERIFY((*Player)->SourceNumber() > 5);
    QVERIFY((*Player)->IsPlaying());
    static_cast<void>((*Player)->TakePositions());
    QCOMPARE(EndPlayer(Player, Guard), QStringList());
    StartPlayer();
}

QTEST_MAIN(PlayerPositionTest)
#include "playerposition_test.moc"
