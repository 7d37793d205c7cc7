// SPDX-License-Identifier: MIT
#include "player/loneplayertest.h"
#include "support/testhome.h"

#include <QSpinBox>
#include <QTest>

namespace
{
const TestHome Home;
}  // namespace

/** The user's hands on buttons and slider, over a clip whose frames tell their numbers. */
class PlayerControlsTest : public PlayerOnScreenTest
{
    Q_OBJECT

private slots:
    void PlayOpensTheVideo();
    void PlayAndPause();
    void MissingVideoThenGoodOne();
    void RestartInPause();
    void RestartDuringPlay();
    void SliderInPause();
    void SliderLetGoWhereItStood();
    void SliderDuringPlay();
    void ConnectionsPileUp();
};

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
