// SPDX-License-Identifier: MIT
#include "stabilizer/pathcorrections.h"

#include <algorithm>
#include <iterator>

namespace
{
/** Index of a frame in a padded array; wraps for frames that lie in front of it. */
std::uint64_t PaddedIndex(std::int32_t frame, std::uint64_t delay)
{
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(frame)) + delay;
}

/**
 * @p value cut toward zero to an unsigned 64-bit integer: negative ones wrap. What no 64-bit
 * integer can hold gives 2 to the 63rd, so that it is the same on every machine.
 */
double ThroughUnsigned(double value)
{
    constexpr double half = 9223372036854775808.0;  // 2 to the 63rd
    if (value > -half && value < half)
    {
        return static_cast<double>(static_cast<std::uint64_t>(static_cast<std::int64_t>(value)));
    }
    return value >= half && value < 2.0 * half ? value : half;
}

/** An end of a straight line of the manual path. */
struct LineEnd
{
    std::uint64_t Index = 0;
    double Value = 0.0;
};

/** The line from @p from to @p to, without its last entry. */
void DrawLine(QVector<double>& position, const LineEnd& from, const LineEnd& to)
{
    const auto size = static_cast<std::uint64_t>(position.size());
    if (from.Index >= size)
    {
        return;
    }
    double* entry = position.data() + from.Index;
    if (from.Index == to.Index)
    {
        *entry = from.Value;
        return;
    }
    const std::uint64_t length = to.Index - from.Index;
    const std::uint64_t inside = std::min(length, size - from.Index);
    const double inverse = 1.0 / static_cast<double>(length);
    for (std::uint64_t t = 0; t < inside; ++t)
    {
        entry[t] =
            (static_cast<double>(t) * to.Value + static_cast<double>(length - t) * from.Value) *
            inverse;
    }
}

/** Which ends of the video the lines of a manual path have reached. */
struct ReachedEnds
{
    bool First = false;
    bool Last = false;
};

/** Draws one section with points; @p endIndex lies behind the last frame. */
void DrawSection(QVector<double>& position, std::uint64_t delay, std::uint64_t endIndex,
                 const std::list<ManualPathPoint>& points, ReachedEnds& reached)
{
    LineEnd start{PaddedIndex(points.front().FrameNr, delay), points.front().Value};
    for (auto point = std::next(points.begin()); point != points.end(); ++point)
    {
        const LineEnd read{PaddedIndex(point->FrameNr, delay), point->Value};
        LineEnd from = start;
        LineEnd to = read;
        if (from.Index > to.Index)
        {
            from = {read.Index, ThroughUnsigned(read.Value)};
            to = start;
        }
        reached.First = reached.First || from.Index == delay;
        reached.Last = reached.Last || to.Index == endIndex - 1;
        DrawLine(position, from, to);
        start = read;
    }
    if (start.Index < static_cast<std::uint64_t>(position.size()))
    {
        position[static_cast<int>(start.Index)] = start.Value;
    }
}
}  // namespace

void ApplyIgnoreSections(QVector<double>& motion, std::uint64_t delay,
                         const std::vector<IgnoreSection>& sections)
{
    const auto size = static_cast<std::uint64_t>(motion.size());
    bool fromFirstFrame = false;
    for (const IgnoreSection& section : sections)
    {
        const std::uint64_t begin = PaddedIndex(section.Start, delay);
        const std::uint64_t end = std::min(PaddedIndex(section.End, delay), size);
        if (begin < end)
        {
            std::fill(motion.begin() + static_cast<int>(begin),
                      motion.begin() + static_cast<int>(end), 0.0);
        }
        fromFirstFrame = fromFirstFrame || section.Start == 0;
    }
    if (fromFirstFrame)
    {
        const std::uint64_t count = std::min(static_cast<std::uint64_t>(sections.size()), size);
        std::fill_n(motion.begin(), static_cast<int>(count), 0.0);
    }
}

void ApplyManualPath(QVector<double>& position, std::uint64_t delay,
                     const std::vector<ManualPathSection>& sections)
{
    const auto size = static_cast<std::uint64_t>(position.size());
    const std::uint64_t endIndex = size - delay;
    ReachedEnds reached;
    for (const ManualPathSection& section : sections)
    {
        if (!section.Points.empty())
        {
            DrawSection(position, delay, endIndex, section.Points, reached);
        }
    }
    if (delay == 0 || delay >= size)
    {
        return;
    }
    if (reached.First)
    {
        const double first = position.at(static_cast<int>(delay));
        std::fill_n(position.begin(), static_cast<int>(delay), first);
    }
    if (reached.Last)
    {
        const double last = position.at(static_cast<int>(endIndex) - 1);
        std::fill(position.begin() + static_cast<int>(endIndex), position.end(), last);
    }
}
