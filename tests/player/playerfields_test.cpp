// SPDX-License-Identifier: MIT
#include "player/loneplayertest.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <QSpinBox>
#include <QTest>

namespace
{
const TestHome Home;
}  // namespace

/** The fields that seek: the number of a frame, or minutes and seconds. */
class PlayerFieldsTest : public PlayerOnScreenTest
{
    Q_OBJECT

private slots:
    void TypedFrames();
    void SameNumberTwice();
    void LastSoughtNumberAfterPlay();
    void FieldsDuringPlay();
    void MinutesAndSeconds();
    void TimeOfTheFrameOnShow();
    void TimeOfAPlayedFrame();
    void TimeWithoutPath_data();
    void TimeWithoutPath();
    void TimeFieldsSwitch();

private:
    void PlayFor(int frames);
};

/** Plays at least @p frames frames and pauses. */
void PlayerFieldsTest::PlayFor(int frames)
{
    Numbers played;
    (*Player)->Click("pushButtonPlayPause");
    QTRY_VERIFY_WITH_TIMEOUT((played += (*Player)->TakeFrames()).size() >= frames, PlayTime);
    QVERIFY((*Player)->IsPlaying());
    (*Player)->Click("pushButtonPlayPause");
    QVERIFY(!(*Player)->IsPlaying());
    for (int i = 1; i < played.size(); ++i)
    {
        QCOMPARE(played.at(i), played.at(i - 1) + 1);
    }
}

/** Each key changes the number, and each change seeks. */
void PlayerFieldsTest::TypedFrames()
{
    OpenShown();
    (*Player)->Type("spinBoxIdx", 157);
    QCOMPARE((*Player)->TakeFrames(), (Numbers{15, 157}));  // 1 was sought last
    QCOMPARE((*Player)->SourceNumber(), 157);
    QCOMPARE((*Player)->Number("spinBoxIdx"), 157);
    QCOMPARE((*Player)->Slider(), 157);
    QTest::keyClick((*Player)->Find<QSpinBox>("spinBoxIdx"), Qt::Key_Up);
    QTest::keyClick((*Player)->Find<QSpinBox>("spinBoxIdx"), Qt::Key_Up);
    QTest::keyClick((*Player)->Find<QSpinBox>("spinBoxIdx"), Qt::Key_Down);
    QCOMPARE((*Player)->TakeFrames(), (Numbers{158, 159, 158}));
    (*Player)->Type("spinBoxIdx", 0);
    QCOMPARE((*Player)->SourceNumber(), 0);
}

void PlayerFieldsTest::SameNumberTwice()
{
    OpenShown();
    (*Player)->Type("spinBoxIdx", 5);
    QCOMPARE((*Player)->TakeFrames(), Numbers{5});
    (*Player)->Type("spinBoxIdx", 5);
    QCOMPARE((*Player)->TakeFrames(), Numbers());
    Player->Player().SetPosition(5);
    QCOMPARE((*Player)->TakeFrames(), Numbers());
}

/** The player has gone on from there, and still the number of the last seek does nothing. */
void PlayerFieldsTest::LastSoughtNumberAfterPlay()
{
    OpenShown();
    (*Player)->Type("spinBoxIdx", 5);
    static_cast<void>((*Player)->TakeFrames());
    PlayFor(2);
    const int shown = (*Player)->SourceNumber();
    QVERIFY(shown > 5);
    static_cast<void>((*Player)->TakePositions());
    (*Player)->Type("spinBoxIdx", 5);
    QCOMPARE((*Player)->TakeFrames(), Numbers());
    QCOMPARE((*Player)->TakePositions(), Numbers());
    QCOMPARE((*Player)->SourceNumber(), shown);
    (*Player)->Type("spinBoxIdx", 6);
    QCOMPARE((*Player)->TakeFrames(), Numbers{6});
}

void PlayerFieldsTest::FieldsDuringPlay()
{
    Player->ShowPaths(ClipFrames);
    OpenShown();
    (*Player)->Click("pushButtonPlayPause");
    (*Player)->Type("spinBoxIdx", 150);
    (*Player)->Click("pushButtonTime");
    (*Player)->Type("spinBoxSec", 5);
    QVERIFY((*Player)->IsPlaying());
    QCOMPARE((*Player)->TakePositions(), Numbers{1});  // of the start of play
    Numbers played;
    QTRY_VERIFY((played += (*Player)->TakeFrames()).size() >= 2);
    QCOMPARE(played.mid(0, 2), (Numbers{2, 3}));
}

void PlayerFieldsTest::MinutesAndSeconds()
{
    Player->SetSource(Clips.filePath(QStringLiteral("slow.avi")));
    QVERIFY(TestVideo::WriteNumberedClip(Player->Proj.SourceFile, {160, 120, ClipFrames, 2.0}));
    Player->ShowPaths(ClipFrames, 2.0);
    OpenShown();
    (*Player)->Click("pushButtonTime");
    (*Player)->Type("spinBoxSec", 7);  // 7 seconds at 2 frames per second
    QCOMPARE((*Player)->TakeFrames(), Numbers{14});
    QCOMPARE((*Player)->SourceNumber(), 14);
    QCOMPARE((*Player)->Number("spinBoxIdx"), 14);
    QCOMPARE((*Player)->Slider(), 14);
    (*Player)->Type("spinBoxMin", 1);
    QCOMPARE((*Player)->TakeFrames(), Numbers{134});
    QCOMPARE((*Player)->Number("spinBoxMin"), 1);
    QCOMPARE((*Player)->Number("spinBoxSec"), 7);
    QTest::keyClick((*Player)->Find<QSpinBox>("spinBoxSec"), Qt::Key_Up);
    QCOMPARE((*Player)->TakeFrames(), Numbers{136});
}

void PlayerFieldsTest::TimeOfTheFrameOnShow()
{
    Player->ShowPaths(ClipFrames);
    OpenShown();
    (*Player)->Type("spinBoxIdx", 50);
    static_cast<void>((*Player)->TakeFrames());
    (*Player)->Click("pushButtonTime");
    QCOMPARE((*Player)->Number("spinBoxSec"), 2);
    (*Player)->Type("spinBoxSec", 2);  // frame 50 is on show
    QCOMPARE((*Player)->TakeFrames(), Numbers());
    Player->Player().TimeChanged(0);
    QCOMPARE((*Player)->TakeFrames(), Numbers());
    (*Player)->Type("spinBoxSec", 3);
    QCOMPARE((*Player)->TakeFrames(), Numbers{75});
}

/** The frame on show is not sought, though another one was sought last. */
void PlayerFieldsTest::TimeOfAPlayedFrame()
{
    Player->ShowPaths(ClipFrames);
    OpenShown();
    (*Player)->Type("spinBoxIdx", 50);
    (*Player)->Type("spinBoxFPS", 1);  // no frame comes within this test
    (*Player)->Click("pushButtonPlayPause");
    (*Player)->Click("pushButtonReset");
    (*Player)->Click("pushButtonPlayPause");
    QCOMPARE((*Player)->Number("spinBoxIdx"), 0);
    static_cast<void>((*Player)->TakeFrames());
    Player->Player().TimeChanged(0);
    QCOMPARE((*Player)->TakeFrames(), Numbers());
    (*Player)->Type("spinBoxIdx", 9);
    QCOMPARE((*Player)->TakeFrames(), Numbers{9});
}

void PlayerFieldsTest::TimeWithoutPath_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<Numbers>("frames");
    QTest::addColumn<int>("position");
    // The rate of no path is -1.
    QTest::newRow("frame -2 counts as 0") << 2 << Numbers{0} << 0;
    QTest::newRow("frame -1 is what was sought at first") << 1 << Numbers() << 0;
}

void PlayerFieldsTest::TimeWithoutPath()
{
    QFETCH(int, seconds);
    QFETCH(Numbers, frames);
    QFETCH(int, position);
    Player->Player().Open();
    static_cast<void>((*Player)->TakeFrames());
    (*Player)->Click("pushButtonTime");
    (*Player)->Type("spinBoxSec", seconds);
    QCOMPARE((*Player)->TakeFrames(), frames);
    QCOMPARE((*Player)->Number("spinBoxIdx"), position);
    QCOMPARE((*Player)->Number("spinBoxSec"), frames.isEmpty() ? seconds : 0);
}

void PlayerFieldsTest::TimeFieldsSwitch()
{
    Player->Player().Open();
    for (bool isTime : {true, false, true})
    {
        (*Player)->Click("pushButtonTime");
        QCOMPARE((*Player)->Find<QSpinBox>("spinBoxIdx")->isVisible(), !isTime);
        QCOMPARE((*Player)->Find<QSpinBox>("spinBoxMin")->isVisible(), isTime);
        QCOMPARE((*Player)->Find<QSpinBox>("spinBoxSec")->isVisible(), isTime);
        QCOMPARE((*Player)->Max(), isTime ? QStringLiteral("/0:7") : QStringLiteral("/199"));
    }
}

QTEST_MAIN(PlayerFieldsTest)
#include "playerfields_test.moc"
