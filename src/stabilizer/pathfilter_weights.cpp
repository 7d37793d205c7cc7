// SPDX-License-Identifier: MIT
#include "stabilizer/pathfilter.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{
/** A frame from which on the margin is good, or bad. */
struct MarginChange
{
    std::int64_t Frame = 0;
    bool Good = false;
};

/** Frame 0, and each frame that differs in good from the one before it. */
std::vector<MarginChange> ListChanges(const QVector<double>& margin)
{
    std::vector<MarginChange> changes{{0, margin.front() > 0.0}};
    for (int frame = 1; frame < margin.size(); ++frame)
    {
        const bool good = margin.at(frame) > 0.0;
        if (good != changes.back().Good)
        {
            changes.push_back({frame, good});
        }
    }
    return changes;
}

/**
 * Drops brief good and bad patches. A good one is kept behind a bad one if its length, and the time
 * since the stretch before the last kept bad one began, both exceed @p mustExceed frames. The first
 * change always stands as it was, the last one never enters.
 *
 * Deliberate: the good patch before the last change is measured by the one before it.
 */
std::vector<MarginChange> ChooseChanges(std::vector<MarginChange> changes, std::int32_t ignoreStart,
                                        std::int64_t mustExceed)
{
    std::vector<MarginChange> kept{changes.front()};
    const std::size_t last = changes.size() - 1;
    for (std::size_t i = 0; i < last; ++i)
    {
        changes[i].Good = changes[i].Good || ignoreStart >= changes[i].Frame;
    }
    bool open = true;
    std::int64_t sectionStart = 0;
    std::int64_t measured = 0;
    for (std::size_t j = 1; j < last; ++j)
    {
        const MarginChange& change = changes[j];
        if (change.Good)
        {
            const std::int64_t before = change.Frame - sectionStart;
            if (j + 1 < last)
            {
                measured = changes[j + 1].Frame - change.Frame;
                open = false;
            }
            if (std::min(before, measured) > mustExceed && !kept.back().Good)
            {
                kept.push_back(change);
                open = true;
            }
        }
        else if (open)
        {
            kept.push_back(change);
            sectionStart = changes[j - 1].Frame;
            open = false;
        }
    }
    return kept;
}

/** Frames from Begin up to End. */
struct WeightSection
{
    std::int64_t Begin = 0;
    std::int64_t End = 0;
};

/** Ramp from @p value down to 0 over the frames from @p frame to @p end. */
void RampDown(std::int32_t* weight, std::int64_t frame, std::int64_t end, std::int64_t value)
{
    for (; frame < end; ++frame, --value)
    {
        weight[frame] = static_cast<std::int32_t>(std::max<std::int64_t>(value, 0));
    }
}

/** The video starts at full weight, and a ramp leads out of the section, down to 1. */
void FillFirstGood(std::int32_t* weight, const WeightSection& section, std::int32_t ramp)
{
    const std::int64_t rampStart = std::max<std::int64_t>(section.End - ramp, 0);
    std::fill(weight, weight + std::min(rampStart, section.End), ramp);
    RampDown(weight, rampStart, section.End, std::min<std::int64_t>(section.End - rampStart, ramp));
}

/**
 * A ramp up, and one down that ends at 0 with the section, also at the end of the video.
 *
 * Deliberate: in a section shorter than a ramp the ramp down begins in front of the section, over
 * frames that are filled already, and from the weight before them, which usually is 0.
 */
void FillLaterGood(std::int32_t* weight, const WeightSection& section, std::int32_t ramp)
{
    const std::int64_t rampStart = std::max<std::int64_t>(section.End - ramp, 0);
    const std::int64_t upEnd = std::min(rampStart, section.End);
    for (std::int64_t frame = section.Begin, value = 1; frame < upEnd; ++frame, ++value)
    {
        weight[frame] = static_cast<std::int32_t>(std::min<std::int64_t>(value, ramp));
    }
    std::int64_t value = section.End - rampStart;
    if (value >= ramp)
    {
        value = rampStart > 0 && rampStart <= section.End ? std::int64_t{weight[rampStart - 1]} - 1
                                                          : std::int64_t{ramp} - 1;
    }
    RampDown(weight, rampStart, section.End, value);
}
}  // namespace

void CalculateWeights(PathFilterStage& stage, std::int32_t ignoreStart, std::int32_t blendFrames)
{
    if (!stage.Enabled || stage.Margin.isEmpty())
    {
        return;
    }
    std::vector<MarginChange> kept = ListChanges(stage.Margin);
    if (kept.size() > 1)
    {
        kept = ChooseChanges(std::move(kept), ignoreStart, std::int64_t{3} * blendFrames);
    }
    stage.Weight.resize(stage.Margin.size());
    if (kept.size() == 1)
    {
        stage.Weight.fill(kept.front().Good ? blendFrames : 0);
        return;
    }
    std::int32_t* weight = stage.Weight.data();
    for (std::size_t i = 0; i < kept.size(); ++i)
    {
        const std::int64_t end = i + 1 < kept.size() ? kept[i + 1].Frame : stage.Margin.size();
        const WeightSection section{kept[i].Frame, end};
        if (!kept[i].Good)
        {
            std::fill(weight + section.Begin, weight + section.End, 0);
        }
        else if (i == 0)
        {
            FillFirstGood(weight, section, blendFrames);
        }
        else
        {
            FillLaterGood(weight, section, blendFrames);
        }
    }
}

void BlendPaths(PathFilterStage& base, const PathFilterStage& super, std::int32_t blendFrames,
                PathFilterStage& result)
{
    const int frames = base.Path.size();
    result.Path.resize(frames);
    double* out = result.Path.data();
    if (!super.Enabled)
    {
        std::copy_n(base.Path.cbegin(), frames, out);
        return;
    }
    const double inverse = 1.0 / blendFrames;
    const double* weak = base.Path.constData();
    const double* strong = super.Path.constData();
    const std::int32_t* share = super.Weight.constData();
    std::int32_t* rest = base.Weight.data();
    for (int frame = 0; frame < frames; ++frame)
    {
        rest[frame] = blendFrames - share[frame];
        out[frame] = (share[frame] * strong[frame] + rest[frame] * weak[frame]) * inverse;
    }
}
