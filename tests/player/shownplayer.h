// SPDX-License-Identifier: MIT
#pragma once

#include "app/tabindex.h"
#include "app/testwindow.h"
#include "player/playerhands.h"

#include <opencv2/core/mat.hpp>

#include <Qt>

/** The player tab of the whole window, with the hands and eyes of a user who compares pictures. */
class ShownPlayer
{
public:
    /** Changes to the player tab of @p window, which outlives this object's use. */
    explicit ShownPlayer(const TestWindow& window);

    [[nodiscard]] PlayerHands* operator->() { return &Hands; }

    /** Opens the source by a play that ends at once, and shows frame 0. */
    void OpenVideo() const;

    void SetChecked(const char* box, bool isChecked) const;  ///< by a click where it differs
    void StepFrame() const;                                  ///< one up in the frame field
    void DragSlider(int frame) const;                        ///< there, and lets it go
    void PressZoom(Qt::Key key) const;  ///< the arrows step by 0.025, the page keys by 0.25
    [[nodiscard]] double Zoom() const;

    [[nodiscard]] cv::Mat Source() const;      ///< picture on show; blue first, a copy
    [[nodiscard]] cv::Mat Stabilized() const;  ///< picture on show; blue first, a copy

private:
    PlayerHands Hands;
};
