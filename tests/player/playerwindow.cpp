// SPDX-License-Identifier: MIT
#include "player/playerwindow.h"

#include "app/jobclips.h"
#include "dialogs/dialogguard.h"
#include "support/testvideo.h"
#include "userhands/answermodal.h"

#include <QDir>
#include <QTest>

void PlayerWindowTest::initTestCase()
{
    Short = Clips.filePath(QStringLiteral("short.avi"));
    Numbered = Clips.filePath(QStringLiteral("numbered.avi"));
    Twenty = Clips.filePath(QStringLiteral("twenty.avi"));
    QVERIFY(WriteShortClip(Short));
    QVERIFY(TestVideo::WriteNumberedClip(Numbered, {ClipWidth, ClipHeight, 100, ClipFps}));
    QVERIFY(TestVideo::WriteNumberedClip(Twenty, {ClipWidth, ClipHeight, 20, 10.0}));
}

void PlayerWindowTest::init()
{
    QDir(Home.Path(QStringLiteral("Molvane"))).removeRecursively();
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    StartWindow();
    Window->SetPaths(Short, Directory->path());
}

void PlayerWindowTest::cleanup()
{
    EndWindow();
    Directory.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void PlayerWindowTest::StartWindow(const QString& projectFile)
{
    Window = std::make_unique<TestWindow>(projectFile);
    Player = std::make_unique<PlayerHands>(*Window->Find<PreviewPlayer>("PreviewPlayer"));
}

void PlayerWindowTest::EndWindow()
{
    if (Player != nullptr)
    {
        Player->ExpectEnd(*Guard);
    }
    Window.reset();
    Player.reset();
}

void PlayerWindowTest::ChooseSource(const QString& path)
{
    const auto dialog = AnswerModal::FileDialog(path);
    Window->Click("pushButtonSourceVideo");
    QVERIFY(dialog.WasAnswered());
}

/** From the player's tab; at least one frame has come when this returns. */
void PlayerWindowTest::StartPlay()
{
    Window->ClickTab(PlayerTab);
    static_cast<void>(Player->TakeFrames());
    Player->Click(Play);
    QVector<int> played;
    QTRY_VERIFY(!(played += Player->TakeFrames()).isEmpty());
    QVERIFY(Player->IsPlaying());
}

void PlayerWindowTest::RunJob(const char* button)
{
    Window->Click(button);
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
}

void PlayerWindowTest::Analyse()
{
    RunJob("pushButtonAnalyseTrack");
}

void PlayerWindowTest::Calculate()
{
    Window->Click("pushButtonCalculateTrack");
}
