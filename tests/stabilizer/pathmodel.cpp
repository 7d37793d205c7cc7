// SPDX-License-Identifier: MIT
#include "stabilizer/pathmodel.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{
/** The line of one pair, a not above b, cut to the list. */
void DrawPair(std::vector<double>& position, std::int64_t a, double va, std::int64_t b, double vb)
{
    const auto size = static_cast<std::int64_t>(position.size());
    const std::int64_t length = b - a;
    const double share = 1.0 / static_cast<double>(length);
    for (std::int64_t i = std::max<std::int64_t>(a, 0); i < std::min(b, size); ++i)
    {
        const auto t = static_cast<double>(i - a);
        const auto rest = static_cast<double>(length - (i - a));
        position[static_cast<std::size_t>(i)] = (t * vb + rest * va) * share;
    }
}

void SetEntry(std::vector<double>& position, std::int64_t index, double value)
{
    if (index >= 0 && index < static_cast<std::int64_t>(position.size()))
    {
        position[static_cast<std::size_t>(index)] = value;
    }
}

/**
 * The values of the cascade, not yet divided. Each average keeps all that it was fed, so that the
 * value which leaves the window can be looked up.
 */
std::vector<double> Cascade(std::uint64_t w, std::uint64_t k, std::vector<double> fed)
{
    for (std::uint64_t row = 0; row < k; ++row)
    {
        double sum = 0.0;
        std::vector<double> sums(fed.size());
        for (std::size_t i = 0; i < fed.size(); ++i)
        {
            sum = sum - (i >= w ? fed[i - w] : 0.0);
            sum = sum + fed[i];
            sums[i] = sum;
        }
        fed = sums;
    }
    return fed;
}

std::vector<double> RunningSum(const std::vector<double>& values)
{
    std::vector<double> sums;
    double sum = 0.0;
    for (const double value : values)
    {
        sum += value;
        sums.push_back(sum);
    }
    return sums;
}
}  // namespace

void ModelIgnore(std::vector<double>& motion, std::uint64_t d,
                 const std::vector<ModelRange>& ranges)
{
    bool anyAtStart = false;
    for (const ModelRange& range : ranges)
    {
        const std::uint64_t a = static_cast<std::uint64_t>(std::int64_t{range.first}) + d;
        const std::uint64_t b = static_cast<std::uint64_t>(std::int64_t{range.second}) + d;
        for (std::uint64_t i = 0; i < motion.size(); ++i)
        {
            if (a <= i && i < b)
            {
                motion[i] = 0.0;
            }
        }
        anyAtStart = anyAtStart || range.first == 0;
    }
    for (std::size_t i = 0; anyAtStart && i < std::min(ranges.size(), motion.size()); ++i)
    {
        motion[i] = 0.0;
    }
}

double ModelThroughUnsigned(double value)
{
    const auto whole = static_cast<std::int64_t>(value);  // truncated
    return static_cast<double>(static_cast<std::uint64_t>(whole));
}

void ModelManual(std::vector<double>& position, std::uint64_t d,
                 const std::vector<ModelPoints>& sections)
{
    const auto pad = static_cast<std::int64_t>(d);
    const std::int64_t endIndex = static_cast<std::int64_t>(position.size()) - pad;
    bool firstSeen = false;
    bool lastSeen = false;
    for (const ModelPoints& points : sections)
    {
        for (std::size_t p = 1; p < points.size(); ++p)
        {
            std::int64_t a = points[p - 1].first + pad;
            std::int64_t b = points[p].first + pad;
            double va = points[p - 1].second;
            double vb = points[p].second;
            if (a > b)
            {
                const double lower = ModelThroughUnsigned(vb);
                std::swap(a, b);
                vb = va;
                va = lower;
            }
            firstSeen = firstSeen || a == pad;
            lastSeen = lastSeen || b == endIndex - 1;
            if (a == b)
            {
                SetEntry(position, a, va);
            }
            else
            {
                DrawPair(position, a, va, b, vb);
            }
        }
        if (!points.empty())
        {
            SetEntry(position, points.back().first + pad, points.back().second);
        }
    }
    for (std::size_t i = 0; firstSeen && i < d; ++i)
    {
        position[i] = position[d];
    }
    for (auto i = static_cast<std::size_t>(endIndex); lastSeen && d != 0 && i < position.size();
         ++i)
    {
        position[i] = position[static_cast<std::size_t>(endIndex) - 1];
    }
}

std::uint64_t ModelDelay(std::uint64_t w, std::uint64_t k)
{
    return (((w + 1 - k) * k) >> 1) + (k == 3 ? 2 : 0);
}

std::vector<double> ModelFilter(std::uint64_t w, std::uint64_t k, std::uint64_t d,
                                const ModelSettings& settings, const std::vector<double>& input)
{
    const std::size_t length = input.size();
    if (settings.Lock || w >= length || w <= 5)
    {
        const std::vector<double> sums = RunningSum(input);
        const double total = sums.empty() ? 0.0 : sums.back();
        return std::vector<double>(length, total / static_cast<double>(length));
    }
    std::uint64_t power = 1;
    for (std::uint64_t row = 0; row < k; ++row)
    {
        power *= w;
    }
    const std::vector<double> sums = Cascade(w, k, input);
    std::vector<double> path(length);
    const std::size_t count = length - d;
    for (std::size_t j = 0; j < count; ++j)
    {
        path[j] = sums[j + d] / static_cast<double>(power);
    }
    if (d == 0)
    {
        return path;
    }
    const double factor = 1.0 / static_cast<double>(d);
    const double last = path[count - 1];
    for (std::size_t t = 1; t <= d; ++t)
    {
        const double line = static_cast<double>(d - t) * (last * factor) +
                            static_cast<double>(t) * (settings.End * factor);
        path[count + t - 1] = settings.UseEnd ? line : last;
    }
    const double first = path[d];
    for (std::size_t t = 0; t < d; ++t)
    {
        const double line = static_cast<double>(t) * (first * factor) +
                            static_cast<double>(d - t) * (settings.Start * factor);
        path[t] = settings.UseStart ? line : first;
    }
    return path;
}

double ModelMargin(double value, double size, int offset, double cropFactor)
{
    const double border = std::floor((size - size / cropFactor) * 0.5);
    return std::ceil(value > 0.0 ? offset + (border - value) : (border + value) - offset);
}

void PathModel::Configure(const ModelSettings& settings)
{
    Settings = settings;
    const auto n = static_cast<std::uint64_t>(settings.Strength);
    R = std::int64_t{settings.Strength} * (settings.Type == 4 ? 8 : 18);
    if (settings.Type < 1 || settings.Type > 5)
    {
        return;
    }
    Base.W = 2 * n + 1;
    Base.K = static_cast<std::uint64_t>(std::min(settings.Type, 3));
    Base.Enabled = true;
    Super.Enabled = settings.Type >= 4;
    Super.W = n + 1;
    if (settings.Type == 4)
    {
        Super.W = 3 * n + 1;
        Super.K = 2;
    }
    if (settings.Type == 5)
    {
        Super.W = 7 * n + 1;
        Super.K = 3;
    }
}

std::vector<double> PathModel::PreparePosition(const std::vector<double>& motion, std::uint64_t d)
{
    std::vector<double> padded(motion.size() + 2 * d, 0.0);
    std::copy(motion.begin(), motion.end(), padded.begin() + static_cast<std::ptrdiff_t>(d));
    if (Settings.UseGlobal)
    {
        ModelIgnore(padded, d, Settings.Global);
    }
    if (Settings.UseLocal)
    {
        ModelIgnore(padded, d, Settings.Local);
    }
    const auto first = static_cast<std::ptrdiff_t>(d);
    const auto end = static_cast<std::ptrdiff_t>(d + motion.size());
    Used.assign(padded.begin() + first, padded.begin() + end);
    std::vector<double> position = RunningSum(padded);
    if (Settings.UseManual)
    {
        ModelManual(position, d, Settings.Manual);
    }
    Modified.assign(position.begin() + first, position.begin() + end);
    if (Settings.UseStart)
    {
        std::fill(position.begin(), position.begin() + first, Settings.Start);
    }
    if (Settings.UseEnd)
    {
        std::fill(position.begin() + end, position.end(), Settings.End);
    }
    Shakiness = RunningSum(Used);
    return position;
}

void PathModel::Correct(ModelStage& stage) const
{
    stage.Correction.clear();
    for (std::size_t f = 0; f < stage.Path.size(); ++f)
    {
        stage.Correction.push_back(stage.Path[f] - Shakiness[f] + Used[f]);
    }
}

void PathModel::Complete(ModelStage& stage, double size, std::uint64_t d)
{
    const auto pad = static_cast<std::ptrdiff_t>(d);
    stage.Path = std::vector<double>(stage.Path.begin() + pad, stage.Path.end() - pad);
    Correct(stage);
    stage.Margin.clear();
    for (const double value : stage.Correction)
    {
        stage.Margin.push_back(size == 0.0 ? 0.0
                                           : ModelMargin(value, size, 0, Settings.CropFactor));
    }
    stage.Weight = ModelWeights(stage.Margin, Settings.IgnoreStart, R);
}

void PathModel::Blend()
{
    Result.Path = Base.Enabled ? Base.Path : Modified;
    const double inverse = 1.0 / static_cast<double>(R);
    for (std::size_t f = 0; Super.Enabled && f < Modified.size(); ++f)
    {
        const auto weight = static_cast<std::int32_t>(R - Super.Weight[f]);
        Base.Weight[f] = weight;
        Result.Path[f] = (Super.Weight[f] * Super.Path[f] + weight * Base.Path[f]) * inverse;
    }
}

void PathModel::Generate(const std::vector<double>& motion, double size)
{
    const std::uint64_t d = ModelDelay(Base.W, Base.K);
    const std::vector<double> position = PreparePosition(motion, d);
    if (Base.Enabled)
    {
        Base.Path = ModelFilter(Base.W, Base.K, d, Settings, position);
    }
    if (Super.Enabled)
    {
        Super.Path = ModelFilter(Super.W, Super.K, d, Settings, Base.Path);
    }
    if (Base.Enabled)
    {
        Complete(Base, size, d);
    }
    if (Super.Enabled)
    {
        Complete(Super, size, d);
    }
    Blend();
    Correct(Result);
    Result.Enabled = true;
    Result.Weight.resize(motion.size(), 0);
    Result.Margin.clear();
    for (const double value : Result.Correction)
    {
        Result.Margin.push_back(
            size == 0.0 ? 0.0 : ModelMargin(value, size, Settings.Offset, Settings.CropFactor));
    }
}
