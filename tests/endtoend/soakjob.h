// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

/** What the user presses. */
enum class SoakButton
{
    Analyse,
    Read,
    Calculate,
    Export,
    GenerateAll,
};

/** What the user does besides. */
enum class SoakAct
{
    PlayOrPause,
    Reset,
    DragSlider,
    TypeFrame,
    ChangeZoom,
    ChooseView,
    ToggleCrop,
    VisitGraph,
    SaveProject,
    Watch,
};

/** One move of the user's hands. */
struct SoakHand
{
    SoakAct Act;
    int Number;  ///< where to, from 0; what it means depends on the act
};

/** The videos of the soak, as indices. */
enum SoakVideo : int
{
    UsualVideo,
    OtherVideo,  ///< of another size and length
    BlackVideo,  ///< nothing in it can be measured
    GoneVideo,   ///< no such file
    VideoCount,
};

/** The export's settings, as indices. */
enum SoakLook : int
{
    PlainLook,
    CropLook,
    ScaledLook,   ///< cropped, out of the middle, and scaled
    OutsideLook,  ///< a crop that leaves the frame: no export
    LookCount,
};

/** What stands in the form when a job begins. */
struct SoakSettings
{
    int Video = UsualVideo;
    int Look = PlainLook;
    int MaxPoints = 200;
    int Strength = 10;  ///< frames, of the horizontal filter
};

/** One job and the user's hands around it. */
struct SoakJob
{
    SoakButton Button = SoakButton::Analyse;
    bool IsOnGraphTab = false;  ///< where the calculation is asked for
    SoakSettings Settings;
    std::vector<SoakHand> Before;
    std::vector<SoakHand> During;
    int AbortLines = 0;  ///< progress lines until the abort, if above 0
    int AbortMs = -1;    ///< milliseconds until the abort, if not below 0

    [[nodiscard]] bool HasAbort() const { return AbortLines > 0 || AbortMs >= 0; }
};

/**
 * The jobs of a soak. Equal arguments give equal jobs, and a longer soak begins like a shorter one.
 */
[[nodiscard]] std::vector<SoakJob> DrawSoakJobs(std::uint32_t seed, int count);
