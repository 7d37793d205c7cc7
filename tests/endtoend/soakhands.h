// SPDX-License-Identifier: MIT
#pragma once

#include "endtoend/soakjob.h"

class PlayerHands;
class TestWindow;

/** The widget. */
[[nodiscard]] const char* ButtonName(SoakButton button);

/** The JobState that the window shows as soon as the button is pressed. */
[[nodiscard]] int StateAfterPress(SoakButton button);

/** The hands of a user who cannot wait: they do what the window lets them do. */
class SoakHands
{
public:
    /** @param window, player  outlive this object */
    SoakHands(const TestWindow& window, const PlayerHands& player) : Window(window), Player(player)
    {}

    /** Types all settings but the video. Leaves the settings tab on show. */
    void Enter(const SoakSettings& settings) const;

    /** Leaves some tab on show. Does nothing where the widget is off or there is no video. */
    void Do(const SoakHand& hand) const;

    /** The player as after the start of the window, on frame 0. */
    void TakeUsualLook() const;

private:
    void PlayOrPause() const;
    void Reset() const;
    void DragSlider(int number) const;
    void TypeFrame(int number) const;

    const TestWindow& Window;
    const PlayerHands& Player;
};
