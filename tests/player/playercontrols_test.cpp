// SPDX-License-Identifier: MIT
#include "player/loneplayer.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

namespace
{
const TestHome Home;

constexpr int ClipFrames = 200;
constexpr TestVideo::Format ClipFormat{160, 120, ClipFrames, 25.0};
constexpr int PlayTime = 20000;  // milliseconds, far more than any play here takes
using Numbers = QVector<int>;
}  // namespace

/** The user's hands on the controls, over a clip whose frames tell their numbers. */
class PlayerControlsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void PlayOpensTheVideo();
    void PlayAndPause();
    void MissingVideoThenGoodOne();
    void RestartInPause();
    void RestartDuringPlay();
    void SliderInPause();
    void SliderLetGoWhereItStood();
    void SliderDuringPlay();
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
    void ConnectionsPileUp();

private:
    void OpenShown();
    void PlayFor(int frames);

    QTemporaryDir Clips;
    QString Clip;  ///< path
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<LonePlayer> Player;
};

void PlayerControlsTest::initTestCase()
{
    Clip = Clips.filePath(QStringLiteral("clip.avi"));
    QVERIFY(TestVideo::WriteNumberedClip(Clip, ClipFormat));
}

void PlayerControlsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Player = std::make_unique<LonePlayer>(Clip);
    Player->Show();
}

void PlayerControlsTest::cleanup()
{
    QCOMPARE(EndPlayer(Player, Guard), QStringList());
}

/** Opens the video and gets over the first frame, which never shows. */
void PlayerControlsTest::OpenShown()
{
    Player->Player().Open();
    (*Player)->Type("spinBoxIdx", 1);
    QCOMPARE((*Player)->TakeFrames(), Numbers{1});
    QVERIFY((*Player)->Source().isNull());
    static_cast<void>((*Player)->TakePositions());
}

/** Plays at least @p frames frames and pauses. */
void PlayerControlsTest::PlayFor(int frames)
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

void PlayerControlsTest::PlayOpensTheVideo()
{
    QVERIFY(!(*Player)->Capture.IsOpen());
    (*Player)->Click("pushButtonPlayPause");
    QVERIFY((*Player)->IsPlaying());
    QCOMPARE((*Player)->Find<QSpinBox>("spinBoxIdx")->maximum(), ClipFrames - 1);
    QCOMPARE((*Player)->Max(), QStringLiteral("/199"));
    QCOMPARE((*Player)->Number("spinBoxFPS"), 25);
    // The first shot brings the second frame of the file, which does not show; the next one does.
    QTRY_COMPARE_WITH_TIMEOUT((*Player)->SourceNumber(), 2, PlayTime);
}

void PlayerControlsTest::PlayAndPause()
{
    OpenShown();
    for (int i = 0; i < 3; ++i)
    {
        const int from = (*Player)->Number("spinBoxIdx");
        (*Player)->Click("pushButtonPlayPause");
        QVERIFY((*Player)->IsPlaying());
        QTRY_VERIFY((*Player)->SourceNumber() > from);
        (*Player)->Click("pushButtonPlayPause");
        QVERIFY(!(*Player)->IsPlaying());
        const int shown = (*Player)->SourceNumber();
        QCOMPARE((*Player)->Number("spinBoxIdx"), shown);
        QCOMPARE((*Player)->Slider(), shown);
        QCOMPARE((*Player)->Markers(), double(shown));
    }
}

void PlayerControlsTest::MissingVideoThenGoodOne()
{
    Player->SetSource(QStringLiteral("gone.avi"));
    for (int i = 0; i < 2; ++i)
    {
        (*Player)->Click("pushButtonPlayPause");
        QTRY_VERIFY(!(*Player)->IsPlaying());
        QCOMPARE((*Player)->Max(), QStringLiteral("/-1"));
    }
    (*Player)->Click("pushButtonReset");
    QCOMPARE((*Player)->TakeFrames(), Numbers());
    Player->SetSource(Clip);
    (*Player)->Click("pushButtonPlayPause");
    QVERIFY((*Player)->IsPlaying());
    QCOMPARE((*Player)->Max(), QStringLiteral("/199"));
    QCOMPARE((*Player)->Number("spinBoxIdx"), 0);
    QCOMPARE((*Player)->Slider(), 0);
    QTRY_COMPARE_WITH_TIMEOUT((*Player)->SourceNumber(), 2, PlayTime);
    (*Player)->Click("pushButtonPlayPause");
    static_cast<void>((*Player)->TakeFrames());
    (*Player)->Type("spinBoxIdx", 9);
    QCOMPARE((*Player)->SourceNumber(), 9);
    QCOMPARE((*Player)->TakeFrames(), Numbers{9});
}

void PlayerControlsTest::RestartInPause()
{
    OpenShown();
    (*Player)->Type("spinBoxIdx", 7);
    QCOMPARE((*Player)->SourceNumber(), 7);
    (*Player)->Click("pushButtonReset");
    QVERIFY(!(*Player)->IsPlaying());
    QCOMPARE((*Player)->SourceNumber(), 0);
    QCOMPARE((*Player)->Number("spinBoxIdx"), 0);
    QCOMPARE((*Player)->Slider(), 0);
    QCOMPARE((*Player)->Markers(), 0.0);
}

void PlayerControlsTest::RestartDuringPlay()
{
    OpenShown();
    (*Player)->Type("spinBoxIdx", 100);
    (*Player)->Click("pushButtonPlayPause");
    QTRY_VERIFY((*Player)->SourceNumber() > 100);
    static_cast<void>((*Player)->TakeFrames());
    (*Player)->Click("pushButtonReset");
    QVERIFY((*Player)->IsPlaying());
    QCOMPARE((*Player)->TakeFrames(), Numbers());  // the next shot brings it
    QCOMPARE((*Player)->Number("spinBoxIdx"), 0);
    Numbers played;
    QTRY_VERIFY((played += (*Player)->TakeFrames()).size() >= 3);
    QCOMPARE(played.mid(0, 3), (Numbers{0, 1, 2}));
    QVERIFY((*Player)->IsPlaying());
}

void PlayerControlsTest::SliderInPause()
{
    OpenShown();
    (*Player)->TakeSlider();
    (*Player)->MoveSlider(50);
    (*Player)->MoveSlider(120);
    QCOMPARE((*Player)->TakeFrames(), Numbers());
    QCOMPARE((*Player)->TakePositions(), Numbers());
    QCOMPARE((*Player)->Number("spinBoxIdx"), 1);
    (*Player)->LetSliderGo(120);
    QCOMPARE((*Player)->TakeFrames(), Numbers{120});
    QCOMPARE((*Player)->SourceNumber(), 120);
    QCOMPARE((*Player)->Number("spinBoxIdx"), 120);
    QCOMPARE((*Player)->Markers(), 120.0);
    (*Player)->TakeSlider();  // connected again
    (*Player)->MoveSlider(30);
    (*Player)->LetSliderGo(30);
    QCOMPARE((*Player)->SourceNumber(), 30);
}

void PlayerControlsTest::SliderLetGoWhereItStood()
{
    OpenShown();
    (*Player)->Type("spinBoxIdx", 60);
    static_cast<void>((*Player)->TakeFrames());
    (*Player)->TakeSlider();
    (*Player)->MoveSlider(120);
    (*Player)->MoveSlider(60);
    (*Player)->LetSliderGo(60);
    QCOMPARE((*Player)->TakeFrames(), Numbers());
}

void PlayerControlsTest::SliderDuringPlay()
{
    OpenShown();
    (*Player)->Click("pushButtonPlayPause");
    (*Player)->TakeSlider();
    (*Player)->MoveSlider(150);
    (*Player)->LetSliderGo(150);
    QVERIFY((*Player)->IsPlaying());
    QCOMPARE((*Player)->TakePositions(), Numbers{1});  // of the start of play
    Numbers played;
    QTRY_VERIFY((played += (*Player)->TakeFrames()).size() >= 2);
    QCOMPARE(played.mid(0, 2), (Numbers{2, 3}));
}

/** Each key changes the number, and each change seeks. */
void PlayerControlsTest::TypedFrames()
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

void PlayerControlsTest::SameNumberTwice()
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
void PlayerControlsTest::LastSoughtNumberAfterPlay()
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

void PlayerControlsTest::FieldsDuringPlay()
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

void PlayerControlsTest::MinutesAndSeconds()
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

void PlayerControlsTest::TimeOfTheFrameOnShow()
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
void PlayerControlsTest::TimeOfAPlayedFrame()
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

void PlayerControlsTest::TimeWithoutPath_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<Numbers>("frames");
    QTest::addColumn<int>("position");
    // The rate of no path is -1.
    QTest::newRow("frame -2 counts as 0") << 2 << Numbers{0} << 0;
    QTest::newRow("frame -1 is what was sought at first") << 1 << Numbers() << 0;
}

void PlayerControlsTest::TimeWithoutPath()
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

void PlayerControlsTest::TimeFieldsSwitch()
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

void PlayerControlsTest::ConnectionsPileUp()
{
    OpenShown();
    for (int i = 0; i < 20; ++i)
    {
        Player->Player().Open();
        Player->Player().Ended();
        (*Player)->Click("pushButtonReset");
    }
    static_cast<void>((*Player)->TakeFrames());
    (*Player)->Type("spinBoxIdx", 5);
    QCOMPARE((*Player)->TakeFrames(), Numbers{5});
    Player->Player().Ended();
    (*Player)->TakeSlider();
    (*Player)->MoveSlider(100);
    (*Player)->LetSliderGo(100);
    QCOMPARE((*Player)->TakeFrames(), Numbers{100});
    Player->Player().Ended();
    Player->Player().Ended();
    (*Player)->Click("pushButtonPlayPause");  // one disconnection undoes them all
    static_cast<void>((*Player)->TakePositions());
    (*Player)->Type("spinBoxIdx", 7);
    QCOMPARE((*Player)->TakePositions(), Numbers());
    QVERIFY((*Player)->IsPlaying());
}

QTEST_MAIN(PlayerControlsTest)
#include "playercontrols_test.moc"
