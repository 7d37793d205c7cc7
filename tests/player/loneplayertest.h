// SPDX-License-Identifier: MIT
#pragma once

#include "player/loneplayer.h"

#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QVector>

#include <memory>

/** Base of the tests of a player without the main window, over a clip of numbered frames. */
class LonePlayerTest : public QObject
{
    Q_OBJECT

protected:
    static constexpr int PlayTime = 20000;  ///< milliseconds, far more than any play here takes

    /** @param frames  of the clip: 160 by 120 pixels, 25 frames per second */
    explicit LonePlayerTest(int frames = 10) : Frames(frames) {}
    void StartPlayer();

    QTemporaryDir Clips;
    QString Clip;  ///< path
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<LonePlayer> Player;

private slots:
    void initTestCase();
    void init() { StartPlayer(); }
    void cleanup();

private:
    const int Frames;
};

/** The same with the player on the screen, for mouse and keys, and a longer clip. */
class PlayerOnScreenTest : public LonePlayerTest
{
    Q_OBJECT

protected:
    static constexpr int ClipFrames = 200;
    using Numbers = QVector<int>;

    PlayerOnScreenTest() : LonePlayerTest(ClipFrames) {}

    /** Opens the video and gets over the first frame, which never shows. */
    void OpenShown();

private slots:
    void init();
};
