// SPDX-License-Identifier: MIT
#include "batch/damagedclips.h"
#include "player/playerwindow.h"
#include "support/files.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QScrollArea>
#include <QSpinBox>
#include <QTest>

namespace
{
const TestHome OuterHome;
using Numbers = QVector<int>;
}  // namespace

/** The player in the real window follows its source: chosen, of a project, of the start. */
class PlayerSourcesTest : public PlayerWindowTest
{
    Q_OBJECT

private slots:
    void StandsOnItsTab();
    void NewSourceOpens();
    void SourceWithoutLength();
    void NewSourceEndsPlay();
    void OpenedProjectOpensItsSource();
    void NewProjectClosesTheSource();
    void CommandLineProjectIsOpen();
};

void PlayerSourcesTest::StandsOnItsTab()
{
    QCOMPARE(Window->Find<QScrollArea>("scrollAreaPlay")->widget(), &Player->Player);
    Window->ClickTab(PlayerTab);
    QVERIFY(Player->Player.isVisible());
    QCOMPARE(Player->Areas(), QStringList("PlaySrc"));
    QVERIFY(Player->Find<QWidget>(Play)->isEnabled());
    QVERIFY(Player->Find<QWidget>("pushButtonReset")->isEnabled());
}

void PlayerSourcesTest::NewSourceOpens()
{
    QVERIFY(!Player->Capture.IsOpen());
    ChooseSource(Numbered);
    QVERIFY(Player->Capture.IsOpen());
    QCOMPARE(Player->Max(), QStringLiteral("/99"));
    QCOMPARE(Player->Find<QSpinBox>("spinBoxIdx")->maximum(), 99);
    QCOMPARE(Player->Number("spinBoxFPS"), 25);
    ChooseSource(Twenty);
    QCOMPARE(Player->Max(), QStringLiteral("/19"));
    QCOMPARE(Player->Number("spinBoxFPS"), 10);
    Window->ClickTab(PlayerTab);
    Player->Type("spinBoxIdx", 5);
    QCOMPARE(Player->TakeFrames(), Numbers{5});
    Window->ClickTab(SettingsTab);
    QCOMPARE(Player->Markers(), 5.0);
    ChooseSource(QStringLiteral("gone.avi"));
    QCOMPARE(Player->Max(), QStringLiteral("/-1"));
    QCOMPARE(Player->Markers(), 0.0);  // the old video was closed first
    ChooseSource(Numbered);
    QCOMPARE(Player->Max(), QStringLiteral("/99"));
    QCOMPARE(Player->Number("spinBoxIdx"), 0);
}

/** Such as a raw stream, of which the video library tells a length of less than nothing. */
void PlayerSourcesTest::SourceWithoutLength()
{
    const QString stream = Home.Path("stream.mjpeg");
    WriteBytes(stream, DamagedClips::Good(DamagedClips::Kind::Stream));
    ChooseSource(stream);
    QVERIFY(Player->Capture.IsOpen());
    QCOMPARE(Player->Max(), QStringLiteral("/-2147483648"));
    ChooseSource(Numbered);
    QCOMPARE(Player->Max(), QStringLiteral("/99"));
    QCOMPARE(Player->Find<QSpinBox>("spinBoxIdx")->minimum(), 0);
    QCOMPARE(Player->Number("spinBoxIdx"), 0);
}

void PlayerSourcesTest::NewSourceEndsPlay()
{
    ChooseSource(Numbered);
    StartPlay();
    Window->ClickTab(SettingsTab);
    QVERIFY(Player->IsPlaying());  // a tab that is left plays on
    ChooseSource(Twenty);
    QVERIFY(!Player->IsPlaying());
    QCOMPARE(Player->Max(), QStringLiteral("/19"));
    QCOMPARE(Player->Number("spinBoxIdx"), 0);
    StartPlay();
}

void PlayerSourcesTest::OpenedProjectOpensItsSource()
{
    Window->SetText("lineEditSourceVideo", Twenty);
    const QString project = Home.Path(QStringLiteral("Molvane/Start/Start.mvprj"));
    Window->Find<QAction>("actionsave_project")->trigger();
    ChooseSource(Numbered);
    StartPlay();
    const AnswerModal question(QMessageBox::No);
    const auto dialog = AnswerModal::FileDialog(project);
    Window->Find<QAction>("actionopen_project")->trigger();
    QVERIFY(question.WasAnswered() && dialog.WasAnswered());
    QVERIFY(!Player->IsPlaying());
    QVERIFY(Player->Capture.IsOpen());
    QCOMPARE(Player->Max(), QStringLiteral("/19"));
    QCOMPARE(Player->Number("spinBoxIdx"), 0);
    QCOMPARE(Player->Number("spinBoxFPS"), 10);
    StartPlay();
}

/** A new project's source is the relative "Source.mp4", which is not here. */
void PlayerSourcesTest::NewProjectClosesTheSource()
{
    ChooseSource(Numbered);
    StartPlay();
    const AnswerModal question(QMessageBox::No);
    const auto dialog = AnswerModal::FileDialog(QStringLiteral("Fresh"));
    Window->Find<QAction>("actionnew_project")->trigger();
    QVERIFY(question.WasAnswered() && dialog.WasAnswered());
    QVERIFY(!Player->IsPlaying());
    QCOMPARE(Player->Max(), QStringLiteral("/-1"));
    QTRY_VERIFY(Window->Log().contains(QStringLiteral("Error    Open Source.mp4 failed!")));
}

void PlayerSourcesTest::CommandLineProjectIsOpen()
{
    Window->SetText("lineEditSourceVideo", Numbered);
    Window->Find<QAction>("actionsave_project")->trigger();
    EndWindow();
    StartWindow(Home.Path(QStringLiteral("Molvane/Start/Start.mvprj")));
    QVERIFY(Player->Capture.IsOpen());
    QCOMPARE(Player->Max(), QStringLiteral("/99"));
    StartPlay();
}

QTEST_MAIN(PlayerSourcesTest)
#include "playersources_test.moc"
