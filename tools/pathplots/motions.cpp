// SPDX-License-Identifier: MIT
#include "motions.h"

#include "samplevideo/samplevideo.h"

#include <cstddef>

QVector<double> ShakyHand(int frames)
{
    SampleSettings settings;
    settings.Frames = frames;
    const std::vector<FrameMotion> all = HandHeldMotion(settings);
    settings.Shake = 0.0;
    // What is left without the shake is a slow pan, which would hide those that a picture is about.
    const std::vector<FrameMotion> pan = HandHeldMotion(settings);
    QVector<double> motion(frames);
    for (int frame = 0; frame < frames; ++frame)
    {
        const auto i = static_cast<std::size_t>(frame);
        motion[frame] = all[i].X - pan[i].X;
    }
    return motion;
}

void AddPan(QVector<double>& motion, int from, int to, double step)
{
    for (int frame = from; frame < to; ++frame)
    {
        motion[frame] += step;
    }
}
