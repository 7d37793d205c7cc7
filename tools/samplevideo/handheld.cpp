// SPDX-License-Identifier: MIT
#include "samplevideo/noise.h"
#include "samplevideo/samplevideo.h"

#include <algorithm>

namespace
{
/** Where a hand holds the picture's content. */
struct Hold
{
    double X = 0.0;     ///< pixels
    double Y = 0.0;     ///< pixels
    double Roll = 0.0;  ///< radians about the frame's centre
};

/** One part of the unrest: noise whose value changes with a certain pace. */
struct Unrest
{
    double Pace;   ///< new directions per second
    double Shift;  ///< largest shift, share of the frame's height
    double Roll;   ///< largest rotation, radians
};

constexpr Unrest Pan = {0.22, 0.34, 0.006};
constexpr Unrest Shakes[] = {
    {0.9, 0.028, 0.012},    // the body sways
    {3.0, 0.013, 0.004},    // the arm corrects
    {9.0, 0.0060, 0.0014},  // the hand trembles
    {30.0, 0.0014, 0.0004},
};

/**
 * With fewer frames per second the hand slows down, in frames per second. So no step, even with
 * MaxShake, gets beyond a quarter of the height or 0.07 radians, and all can be measured.
 */
constexpr double SlowestFps = 24.0;

void AddUnrest(Hold& hold, const Unrest& unrest, double seconds, double height, std::uint32_t seed)
{
    const double t = seconds * unrest.Pace;
    hold.X += unrest.Shift * height * ValueNoise(t, 0.5, seed);
    // A person looks about sideways more than up and down.
    hold.Y += 0.5 * unrest.Shift * height * ValueNoise(t, 0.5, seed + 1);
    hold.Roll += unrest.Roll * ValueNoise(t, 0.5, seed + 2);
}

Hold HoldAt(const SampleSettings& settings, int frame)
{
    const double seconds = frame / std::max(settings.Fps, SlowestFps);
    const auto height = static_cast<double>(settings.Height);
    const std::uint32_t seed = SeedFor(settings.Seed, 3);
    const double shake = std::clamp(settings.Shake, 0.0, MaxShake);
    Hold hold;
    AddUnrest(hold, Pan, seconds, height, seed);
    std::uint32_t stream = seed;
    for (const Unrest& unrest : Shakes)
    {
        stream += 3;
        AddUnrest(hold, {unrest.Pace, shake * unrest.Shift, shake * unrest.Roll}, seconds, height,
                  stream);
    }
    return hold;
}
}  // namespace

std::vector<FrameMotion> HandHeldMotion(const SampleSettings& settings)
{
    const double centreX = 0.5 * (settings.Width - 1);
    const double centreY = 0.5 * (settings.Height - 1);
    std::vector<FrameMotion> motions(static_cast<std::size_t>(std::max(settings.Frames, 0)));
    Hold now = HoldAt(settings, 0);
    for (int i = 0; i + 1 < settings.Frames; ++i)
    {
        const Hold next = HoldAt(settings, i + 1);
        // The hand turns the picture about its centre, the motion is told about the top left
        // corner.
        const double angle = next.Roll - now.Roll;
        const Rotation turn = RotationOf(angle);
        const double fromX = centreX + now.X;
        const double fromY = centreY + now.Y;
        FrameMotion& motion = motions[static_cast<std::size_t>(i)];
        motion.X = centreX + next.X - (turn.Cos * fromX - turn.Sin * fromY);
        motion.Y = centreY + next.Y - (turn.Sin * fromX + turn.Cos * fromY);
        motion.Angle = angle;
        now = next;
    }
    return motions;
}

std::vector<FrameMotion> ConstantMotion(int frames, const FrameMotion& motion)
{
    std::vector<FrameMotion> motions(static_cast<std::size_t>(std::max(frames, 0)), motion);
    if (!motions.empty())
    {
        motions.back() = {};
    }
    return motions;
}
