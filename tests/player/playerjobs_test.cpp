// SPDX-License-Identifier: MIT
#include "app/jobclips.h"
#include "batch/jobstate.h"
#include "player/playerwindow.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QTest>

namespace
{
const TestHome OuterHome;
using Numbers = QVector<int>;
}  // namespace

/** The player in the real window: jobs, calculated paths, and the end of the window. */
class PlayerJobsTest : public PlayerWindowTest
{
    Q_OBJECT

private slots:
    void JobStopsPlay_data();
    void JobStopsPlay();
    void JobInPauseKeepsTheVideo();
    void PlayAfterAStoppedPlayEndsAtOnce();
    void JobNonePauses();
    void SaveAsPauses();
    void ViewFollowsTheJobs();
    void NextFrameAfterTheCalculation();
    void NewSettingsShowWithTheNextFrame();
    void FailedJobTakesTheGraphsAway();
    void RefusedCloseGoesOnPlaying();
    void CloseDuringPlay();
    void EndOfTheWindow_data();
    void EndOfTheWindow();
};

void PlayerJobsTest::JobStopsPlay_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("all") << QByteArray("pushButtonGenerateAll");
    QTest::newRow("analysis") << QByteArray("pushButtonAnalyseTrack");
    QTest::newRow("read") << QByteArray("pushButtonReadTrack");
    QTest::newRow("export") << QByteArray("pushButtonExportVideo");
}

void PlayerJobsTest::JobStopsPlay()
{
    QFETCH(QByteArray, button);
    ChooseSource(Numbered);
    (*Window)->ProcessUpdate(JobPathReady);
    StartPlay();
    Window->ClickTab(SettingsTab);
    Window->Click(button.constData());
    QVERIFY(!Player->IsPlaying());  // before the worker does anything
    QVERIFY(!Player->Find<QWidget>(Play)->isEnabled());
    QVERIFY(!Player->Find<QWidget>("pushButtonReset")->isEnabled());
    QCOMPARE(Player->Number("spinBoxIdx"), 0);
    Window->Click("pushButtonAbort");
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
    QVERIFY(!Player->IsPlaying());
    QVERIFY(Player->Find<QWidget>(Play)->isEnabled());
    QVERIFY(Player->Find<QWidget>("pushButtonReset")->isEnabled());
}

void PlayerJobsTest::JobInPauseKeepsTheVideo()
{
    ChooseSource(Short);
    Window->ClickTab(PlayerTab);
    Player->Type("spinBoxIdx", 5);
    Window->ClickTab(SettingsTab);
    Analyse();
    QCOMPARE(Player->Number("spinBoxIdx"), 5);
    StartPlay();
}

/** The video counts as open although it is closed, until the source is opened again. */
void PlayerJobsTest::PlayAfterAStoppedPlayEndsAtOnce()
{
    ChooseSource(Short);
    StartPlay();
    Window->ClickTab(SettingsTab);
    Analyse();
    Window->ClickTab(PlayerTab);
    static_cast<void>(Player->TakeFrames());
    Player->Click(Play);
    QTRY_VERIFY(!Player->IsPlaying());
    QCOMPARE(Player->TakeFrames(), Numbers());
    Window->ClickTab(SettingsTab);
    ChooseSource(Short);
    StartPlay();
}

void PlayerJobsTest::JobNonePauses()
{
    ChooseSource(Numbered);
    StartPlay();
    (*Window)->ProcessUpdate(JobNone);
    QVERIFY(!Player->IsPlaying());
    static_cast<void>(Player->TakeFrames());
    Player->Type("spinBoxIdx", 90);  // paused, not closed, and the controls seek
    QCOMPARE(Player->TakeFrames().last(), 90);
    QVERIFY(Player->Find<QWidget>(Play)->isEnabled());
    StartPlay();
}

void PlayerJobsTest::SaveAsPauses()
{
    ChooseSource(Numbered);
    StartPlay();
    const AnswerModal question(QMessageBox::No);
    const auto dialog = AnswerModal::FileDialog(QStringLiteral("Copy"));
    Window->Find<QAction>("actionsave_project_as")->trigger();
    QVERIFY(question.WasAnswered() && dialog.WasAnswered());
    QVERIFY(!Player->IsPlaying());
    QCOMPARE(Player->Max(), QStringLiteral("/99"));
    StartPlay();
}

void PlayerJobsTest::ViewFollowsTheJobs()
{
    const QStringList all{"PlaySrc", "PlayExport", "H", "V"};
    QCOMPARE(Player->Areas(), QStringList("PlaySrc"));
    Window->Click("pushButtonAnalyseTrack");
    QCOMPARE(Player->Areas(), QStringList("PlaySrc"));
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
    QCOMPARE(Player->Areas(), all);
    QCOMPARE(Player->Curves("scrollAreaH"), QStringList());
    Calculate();
    QCOMPARE(Player->Areas(), all);
    QVERIFY(Player->Curves("scrollAreaH").contains(QStringLiteral("Smoothed Path")));
    QVERIFY(Player->Curves("scrollAreaV").contains(QStringLiteral("Smoothed Path")));
    Window->Click("pushButtonExportVideo");
    QCOMPARE(Player->Areas(), all);
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
    QCOMPARE(Player->Areas(), all);
}

void PlayerJobsTest::NextFrameAfterTheCalculation()
{
    ChooseSource(Short);
    Analyse();
    Window->ClickTab(PlayerTab);
    Player->Type("spinBoxIdx", 3);
    Player->Type("spinBoxIdx", 4);
    QCOMPARE(Player->Source().size(), QSize(ClipWidth / 2, ClipHeight / 2));
    QVERIFY(Player->Stabilized().isNull());
    Window->ClickTab(SettingsTab);
    Calculate();
    Window->ClickTab(PlayerTab);
    QCoreApplication::processEvents();
    QVERIFY(Player->Stabilized().isNull());  // the picture on the screen does not change yet
    Player->Type("spinBoxIdx", 5);
    QCOMPARE(Player->Stabilized().size(), QSize(ClipWidth / 2, ClipHeight / 2));
    QVERIFY(Player->Stabilized() != Player->Source());
}

/** Of 80 by 60, 125 percent leave 64 by 48, and 160 percent 50 by 36 (37.5 made even). */
void PlayerJobsTest::NewSettingsShowWithTheNextFrame()
{
    ChooseSource(Short);
    Window->SetNumber("doubleSpinBoxZoom", 125.0);
    Analyse();
    Calculate();
    Window->ClickTab(PlayerTab);
    Player->Click("checkBoxCrop");
    Player->Type("spinBoxIdx", 3);
    Player->Type("spinBoxIdx", 4);
    QCOMPARE(Player->Stabilized().size(), QSize(64, 48));
    Window->ClickTab(SettingsTab);
    Window->SetNumber("doubleSpinBoxZoom", 160.0);
    Calculate();
    QCOMPARE(Player->Stabilized().size(), QSize(64, 48));
    Window->ClickTab(PlayerTab);
    Player->Type("spinBoxIdx", 5);
    QCOMPARE(Player->Stabilized().size(), QSize(50, 36));
    QCOMPARE(Player->Source().size(), QSize(80, 60));
}

void PlayerJobsTest::FailedJobTakesTheGraphsAway()
{
    Analyse();
    Calculate();
    QVERIFY(!Player->Curves("scrollAreaH").isEmpty());
    Window->SetText("lineEditSourceVideo", QStringLiteral("gone.avi"));
    Analyse();
    QCOMPARE(Player->Areas(), QStringList("PlaySrc"));
    QCOMPARE(Player->Curves("scrollAreaH"), QStringList());
    QCOMPARE(Player->Curves("scrollAreaV"), QStringList());
}

void PlayerJobsTest::RefusedCloseGoesOnPlaying()
{
    ChooseSource(Numbered);
    StartPlay();
    const AnswerModal question(QMessageBox::Cancel);
    QVERIFY(!(*Window)->close());
    QVERIFY(question.WasAnswered());
    QVERIFY(Player->IsPlaying());
    static_cast<void>(Player->TakeFrames());
    Numbers played;
    QTRY_VERIFY((played += Player->TakeFrames()).size() >= 2);
}

void PlayerJobsTest::CloseDuringPlay()
{
    ChooseSource(Short);
    Analyse();
    Calculate();
    StartPlay();
    const AnswerModal question(QMessageBox::No);
    QVERIFY((*Window)->close());
    QVERIFY(question.WasAnswered());
    QVERIFY(!(*Window)->isVisible());
    static_cast<void>(Player->TakeFrames());
    EndWindow();
    QCoreApplication::processEvents();
}

void PlayerJobsTest::EndOfTheWindow_data()
{
    QTest::addColumn<bool>("hasPath");
    QTest::addColumn<bool>("plays");
    QTest::newRow("with a path, during play") << true << true;
    QTest::newRow("with a path, in pause") << true << false;
    QTest::newRow("without a path, during play") << false << true;
}

/** The form goes before the player, which must not reach for what is gone. */
void PlayerJobsTest::EndOfTheWindow()
{
    QFETCH(bool, hasPath);
    QFETCH(bool, plays);
    ChooseSource(Short);
    if (hasPath)
    {
        Analyse();
        Calculate();
    }
    StartPlay();
    if (!plays)
    {
        Player->Click(Play);
    }
    Player->Click("pushButtonTime");  // a second update of the graphs is on its way
    static_cast<void>(Player->TakePositions());
    Player->ExpectEnd(*Guard);
    Window->End();
    QCoreApplication::processEvents();
    QCOMPARE(Player->TakePositions(), Numbers());  // nobody is told any more
    Player.reset();
}

QTEST_MAIN(PlayerJobsTest)
#include "playerjobs_test.moc"
