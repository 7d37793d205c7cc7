// SPDX-License-Identifier: MIT
#include "endtoend/soakjob.h"

#include "support/seededrandom.h"

namespace
{
constexpr int MostHands = 3;       ///< in front of a job; and in it
constexpr int MostLines = 4;       ///< of progress before an abort; most jobs have more
constexpr int LongestWait = 200;   ///< milliseconds before an abort
constexpr int MostNumbers = 1000;  ///< a hand's choices

void DrawSettings(SeededRandom& random, SoakSettings& settings)
{
    constexpr int videos[] = {UsualVideo, UsualVideo, UsualVideo, UsualVideo, OtherVideo,
                              OtherVideo, OtherVideo, BlackVideo, GoneVideo};
    constexpr int looks[] = {PlainLook, CropLook, CropLook, ScaledLook, ScaledLook, OutsideLook};
    constexpr int points[] = {200, 200, 60};
    constexpr int strengths[] = {5, 10, 25};
    if (random.OneIn(5) || settings.Video == GoneVideo)
    {
        settings.Video = random.Any(videos);
    }
    if (random.OneIn(3))
    {
        settings.Look = random.Any(looks);
    }
    if (random.OneIn(6))
    {
        settings.MaxPoints = random.Any(points);
    }
    if (random.OneIn(4))
    {
        settings.Strength = random.Any(strengths);
    }
}

std::vector<SoakHand> DrawHands(SeededRandom& random, const std::vector<SoakAct>& acts)
{
    std::vector<SoakHand> hands;
    for (int count = random.Below(MostHands + 1); count > 0; --count)
    {
        const SoakAct act = random.Any(acts);
        hands.push_back({act, random.Below(MostNumbers)});
    }
    return hands;
}

void DrawAbort(SeededRandom& random, SoakJob& job)
{
    switch (random.Below(4))
    {
        case 0:
            job.AbortLines = 1 + random.Below(MostLines);
            return;
        case 1:
            job.AbortMs = random.Below(LongestWait);
            return;
        case 2:
            job.AbortMs = random.OneIn(3) ? 0 : -1;  // before the worker is awake
            return;
        default:
            return;
    }
}
}  // namespace

std::vector<SoakJob> DrawSoakJobs(std::uint32_t seed, int count)
{
    constexpr SoakButton buttons[] = {
        SoakButton::Analyse,     SoakButton::Analyse,   SoakButton::Read,        SoakButton::Read,
        SoakButton::Calculate,   SoakButton::Export,    SoakButton::Export,      SoakButton::Export,
        SoakButton::GenerateAll, SoakButton::Calculate, SoakButton::GenerateAll,
    };
    const std::vector<SoakAct> before{
        SoakAct::PlayOrPause, SoakAct::PlayOrPause, SoakAct::Reset,      SoakAct::DragSlider,
        SoakAct::TypeFrame,   SoakAct::ChangeZoom,  SoakAct::ChooseView, SoakAct::ToggleCrop,
        SoakAct::VisitGraph,  SoakAct::SaveProject, SoakAct::Watch,      SoakAct::Watch,
    };
    // What stays on while a job runs.
    const std::vector<SoakAct> during{
        SoakAct::DragSlider, SoakAct::TypeFrame,  SoakAct::TypeFrame,
        SoakAct::ChangeZoom, SoakAct::ChooseView, SoakAct::ToggleCrop,
        SoakAct::VisitGraph, SoakAct::VisitGraph, SoakAct::SaveProject,
    };
    SeededRandom random;
    random.Begin(seed);
    SoakSettings settings;
    std::vector<SoakJob> jobs;
    for (int i = 0; i < count; ++i)
    {
        SoakJob job;
        job.Button = random.Any(buttons);
        job.IsOnGraphTab = random.OneIn(3);
        DrawSettings(random, settings);
        job.Settings = settings;
        job.Before = DrawHands(random, before);
        DrawAbort(random, job);
        if (job.AbortMs != 0)
        {
            job.During = DrawHands(random, during);
        }
        jobs.push_back(job);
    }
    return jobs;
}
