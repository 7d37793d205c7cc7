// SPDX-License-Identifier: MIT
#pragma once

#include "app/tabindex.h"
#include "app/testwindow.h"
#include "player/playerhands.h"
#include "support/messageguard.h"
#include "support/testhome.h"

#include <QObject>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/** Base of the tests of the player in the real window, which starts in an empty home. */
class PlayerWindowTest : public QObject
{
    Q_OBJECT

protected:
    static constexpr int JobTime = 60000;  ///< milliseconds, far more than any job here takes
    static constexpr const char* Play = "pushButtonPlayPause";

    void StartWindow(const QString& projectFile = QString());
    void EndWindow();
    void ChooseSource(const QString& path);  ///< by its button, on the settings tab
    /** From the player's tab; at least one frame has come when this returns. */
    void StartPlay();
    void RunJob(const char* button);  ///< and waits for its end
    void Analyse();
    void Calculate();

    const TestHome Home;
    QTemporaryDir Clips;
    QString Short;     ///< path; a shaking camera
    QString Numbered;  ///< path; 100 numbered frames
    QString Twenty;    ///< path; 20 numbered frames
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;  ///< of the data files and the export
    std::unique_ptr<TestWindow> Window;
    std::unique_ptr<PlayerHands> Player;

private slots:
    void initTestCase();
    void init();
    void cleanup();
};
