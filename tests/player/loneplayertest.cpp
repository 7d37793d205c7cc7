// SPDX-License-Identifier: MIT
#include "player/loneplayertest.h"

#include "support/testvideo.h"

#include <QTest>

void LonePlayerTest::initTestCase()
{
    Clip = Clips.filePath(QStringLiteral("clip.avi"));
    QVERIFY(TestVideo::WriteNumberedClip(Clip, {160, 120, Frames, 25.0}));
}

void LonePlayerTest::StartPlayer()
{
    Guard = std::make_unique<MessageGuard>();
    Player = std::make_unique<LonePlayer>(Clip);
}

void LonePlayerTest::cleanup()
{
    QCOMPARE(EndPlayer(Player, Guard), QStringList());
}

void PlayerOnScreenTest::init()
{
    StartPlayer();
    Player->Show();
}

void PlayerOnScreenTest::OpenShown()
{
    Player->Player().Open();
    (*Player)->Type("spinBoxIdx", 1);
    QCOMPARE((*Player)->TakeFrames(), Numbers{1});
    QVERIFY((*Player)->Source().isNull());
    static_cast<void>((*Player)->TakePositions());
}
