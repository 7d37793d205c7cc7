// SPDX-License-Identifier: MIT
#include "stabilizer/pathmodel.h"

#include <algorithm>
#include <cstddef>

namespace
{
struct Change
{
    std::int64_t Frame;
    bool Good;
};

std::vector<Change> ListChanges(const std::vector<double>& margin)
{
    std::vector<Change> changes{{0, margin[0] > 0.0}};
    for (std::size_t f = 1; f < margin.size(); ++f)
    {
        const bool good = margin[f] > 0.0;
        const bool before = margin[f - 1] > 0.0;
        if (good != before)
        {
            changes.push_back({static_cast<std::int64_t>(f), good});
        }
    }
    return changes;
}

/** The walk over the changes between the first and the last one. */
void ChooseChanges(const std::vector<Change>& changes, std::int64_t r, std::vector<Change>& kept)
{
    bool open = true;
    std::int64_t sectionStart = 0;
    std::int64_t measured = 0;
    const std::size_t m = changes.size() - 1;
    for (std::size_t j = 1; j < m; ++j)
    {
        const Change e = changes[j];
        if (e.Good)
        {
            const std::int64_t before = e.Frame - sectionStart;
            const bool isLastStep = j + 1 == m;
            if (!isLastStep)
            {
                measured = changes[j + 1].Frame - e.Frame;
                open = false;
            }
            if (std::min(before, measured) > 3 * r && !kept.back().Good)
            {
                kept.push_back(e);
                open = open || !isLastStep;
            }
        }
        else if (open)
        {
            kept.push_back(e);
            sectionStart = changes[j - 1].Frame;
            open = false;
        }
    }
}

void FillFirstGood(std::vector<std::int64_t>& weight, std::int64_t b, std::int64_t r)
{
    const std::int64_t e = std::max<std::int64_t>(b - r, 0);
    for (std::int64_t f = 0; f < e; ++f)
    {
        weight[static_cast<std::size_t>(f)] = r;
    }
    std::int64_t v = std::min(b - e, r);
    for (std::int64_t f = e; f < b; ++f)
    {
        weight[static_cast<std::size_t>(f)] = std::max<std::int64_t>(v, 0);
        v = v - 1;
    }
}

void FillLaterGood(std::vector<std::int64_t>& weight, std::int64_t a, std::int64_t b,
                   std::int64_t r)
{
    const std::int64_t e = std::max<std::int64_t>(b - r, 0);
    std::int64_t up = 1;
    for (std::int64_t f = a; f < e; ++f)
    {
        weight[static_cast<std::size_t>(f)] = std::min(up, r);
        up = up + 1;
    }
    std::int64_t v = b - e;
    if (v >= r)
    {
        v = e == 0 ? r - 1 : weight[static_cast<std::size_t>(e - 1)] - 1;
    }
    for (std::int64_t f = e; f < b; ++f)
    {
        weight[static_cast<std::size_t>(f)] = std::max<std::int64_t>(v, 0);
        v = v - 1;
    }
}

std::vector<std::int64_t> FillWeights(const std::vector<Change>& kept, std::size_t frames,
                                      std::int64_t r)
{
    if (kept.size() == 1)
    {
        return std::vector<std::int64_t>(frames, kept[0].Good ? r : 0);
    }
    std::vector<std::int64_t> weight(frames, 0);
    for (std::size_t i = 0; i < kept.size(); ++i)
    {
        const bool isLast = i + 1 == kept.size();
        const std::int64_t a = kept[i].Frame;
        const std::int64_t b = isLast ? static_cast<std::int64_t>(frames) : kept[i + 1].Frame;
        if (!kept[i].Good)
        {
            std::fill(weight.begin() + a, weight.begin() + b, 0);
        }
        else if (i == 0)
        {
            FillFirstGood(weight, b, r);
        }
        else
        {
            FillLaterGood(weight, a, b, r);
        }
    }
    return weight;
}
}  // namespace

std::vector<std::int32_t> ModelWeights(const std::vector<double>& margin, int ignore,
                                       std::int64_t r)
{
    if (margin.empty())
    {
        return {};
    }
    std::vector<Change> changes = ListChanges(margin);
    std::vector<Change> kept{changes[0]};
    for (std::size_t j = 0; j + 1 < changes.size(); ++j)
    {
        if (ignore >= changes[j].Frame)
        {
            changes[j].Good = true;
        }
    }
    if (changes.size() > 2)
    {
        ChooseChanges(changes, r, kept);
    }
    const std::vector<std::int64_t> weight = FillWeights(kept, margin.size(), r);
    std::vector<std::int32_t> narrow;
    for (const std::int64_t w : weight)
    {
        narrow.push_back(static_cast<std::int32_t>(w));
    }
    return narrow;
}
