// SPDX-License-Identifier: MIT
#pragma once

#include "app/endguard.h"
#include "player/playerhands.h"
#include "project/project.h"
#include "support/freshhost.h"

#include <QString>

#include <memory>

/** A player without the main window, over a project of its own with the defaults of a new one. */
class LonePlayer
{
public:
    /** @param clip  source of the project; need not exist */
    explicit LonePlayer(const QString& clip);

    [[nodiscard]] PlayerHands* operator->() { return &Hands; }
    [[nodiscard]] PreviewPlayer& Player() { return Hands.Player; }

    void SetSource(const QString& clip);

    /** Calculates all paths from a steady motion, without telling the player. */
    void CalculatePaths(int frames, double fps = 25.0);

    /** The same and tells the player, as the window does after a calculation. */
    void ShowPaths(int frames, double fps = 25.0);

    void Show();  ///< on the screen, for mouse and keys

    Project Proj;

private:
    FreshHost Host;
    std::unique_ptr<PreviewPlayer> Window;
    PlayerHands Hands;
};

/** Ends player and guard. @return what Qt complained of and nobody announced */
[[nodiscard]] QStringList EndPlayer(std::unique_ptr<LonePlayer>& player,
                                    std::unique_ptr<MessageGuard>& guard);
