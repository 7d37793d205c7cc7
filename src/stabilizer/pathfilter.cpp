// SPDX-License-Identifier: MIT
#include "stabilizer/pathfilter.h"

#include "stabilizer/axisfiltersettings.h"

#include <alloca.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <type_traits>
#include <vector>

namespace
{
/** std::ceil, bit for bit, without the library call that a plain x86-64 build makes of it. */
double CeilInline(double value)
{
    constexpr double wholeFrom =
        4503599627370496.0;  // 2 to the 52nd: from here on all doubles are whole
    if (!(value > -wholeFrom && value < wholeFrom))
    {
        return value;
    }
    const auto truncated = static_cast<double>(static_cast<std::int64_t>(value));
    return std::copysign(truncated < value ? truncated + 1.0 : truncated, value);
}

/** Pixels that the crop leaves on each side of a centred frame. */
double CropBorder(double size, double cropFactor)
{
    return std::floor((size - size / cropFactor) * 0.5);
}

double MarginInsideBorder(double border, double value, double cosine, int offset)
{
    const double margin = value > 0.0 ? offset + (border - value) : (border + value) - offset;
    return cosine > 0.5 ? CeilInline(cosine * margin) : -1.0;
}

void FillWithMean(QVector<double>& path, const QVector<double>& input)
{
    double sum = 0.0;
    for (const double value : input)
    {
        sum += value;
    }
    path.fill(sum / input.size());
}

/** W to the power K, in 64-bit integers. */
double CascadeDivisor(std::uint64_t window, std::uint64_t order)
{
    std::uint64_t product = 1;
    for (std::uint64_t k = 0; k < order; ++k)
    {
        product *= window;
    }
    return static_cast<double>(product);
}

/** What one run of the cascade works on. */
struct CascadeRun
{
    const double* Input = nullptr;
    double* Path = nullptr;
    std::uint64_t Length = 0;  ///< entries of Input
    std::uint64_t Window = 0;
    std::uint64_t Delay = 0;  ///< entries of Input before the first one of Path
    double Divisor = 1.0;
    double* Ring = nullptr;  ///< Window slots of one value per row, zeroed
};

/**
 * Moving sums in a row, each fed by the one before. The old value leaves a sum before the new one
 * enters; a sum over the whole window is never taken. @p rows is a compile-time constant for the
 * usual orders, so that the sums stay in registers.
 */
template <typename RowCount, typename RowSums>
void RunCascade(const CascadeRun& run, RowCount rows, RowSums& sums)
{
    double* slot = run.Ring;
    double* const ringEnd = run.Ring + run.Window * rows;
    const auto step = [&](double value)
    {
        for (std::uint64_t k = 0; k < rows; ++k)
        {
            double sum = sums[k] - slot[k];
            slot[k] = value;
            sum += value;
            sums[k] = sum;
            value = sum;
        }
        slot += rows;
        slot = slot == ringEnd ? run.Ring : slot;
        return value;
    };
    for (std::uint64_t i = 0; i < run.Delay; ++i)
    {
        step(run.Input[i]);
    }
    for (std::uint64_t i = run.Delay; i < run.Length; ++i)
    {
        run.Path[i - run.Delay] = step(run.Input[i]) / run.Divisor;
    }
}

template <std::uint64_t Rows>
void RunCascade(const CascadeRun& run)
{
    std::array<double, Rows> sums{};
    RunCascade(run, std::integral_constant<std::uint64_t, Rows>{}, sums);
}

void RunCascade(const CascadeRun& run, std::uint64_t rows, double* sums)
{
    switch (rows)
    {
        case 1:
            return RunCascade<1>(run);
        case 2:
            return RunCascade<2>(run);
        case 3:
            return RunCascade<3>(run);
        default:
            return RunCascade<std::uint64_t, double*>(run, rows, sums);
    }
}

/** The last d entries, for which the cascade has no input: level, or a line to @p endValue. */
void FinishTail(QVector<double>& path, std::uint64_t delay, bool isLine, double endValue,
                double factor)
{
    const auto length = static_cast<std::uint64_t>(path.size());
    double* tail = path.data() + (length - delay);
    const double last = tail[-1];
    if (!isLine)
    {
        std::fill_n(tail, delay, last);
        return;
    }
    const double fromStep = last * factor;
    const double toStep = endValue * factor;
    for (std::uint64_t t = 1; t <= delay; ++t)
    {
        tail[t - 1] = static_cast<double>(delay - t) * fromStep + static_cast<double>(t) * toStep;
    }
}

/** The first d entries, spoiled by the empty rings: level, or a line from @p startValue. */
void FinishHead(QVector<double>& path, std::uint64_t delay, bool isLine, double startValue,
                double factor)
{
    double* head = path.data();
    const double first = head[delay];
    if (!isLine)
    {
        std::fill_n(head, delay, first);
        return;
    }
    const double toStep = first * factor;
    const double fromStep = startValue * factor;
    for (std::uint64_t t = 0; t < delay; ++t)
    {
        head[t] = static_cast<double>(t) * toStep + static_cast<double>(delay - t) * fromStep;
    }
}

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
 * Drops brief good and bad patches: a good one is kept if it, and the time since the last kept
 * bad one began, are longer than @p shortest. The first change always stands; the last one never
 * enters. Deliberate: a last good patch is measured by the length of the one before it.
 */
std::vector<MarginChange> ChooseChanges(std::vector<MarginChange> changes, std::int32_t ignoreStart,
                                        std::int64_t shortest)
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
            if (std::min(before, measured) > shortest && !kept.back().Good)
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

/** Weights of the frames [begin, end), and in short good stretches of frames before it: see below.
 */
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
 * Deliberate: in a section shorter than a ramp the ramp down begins in front of the section.
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

double CropMargin(double value, double angle, double size, int offset, double cropFactor)
{
    return MarginInsideBorder(CropBorder(size, cropFactor), value, std::cos(angle), offset);
}

void CropMargins(const QVector<double>& values, double size, int offset, double cropFactor,
                 QVector<double>& margins)
{
    margins.resize(values.size());
    if (size == 0.0)
    {
        margins.fill(0.0);
        return;
    }
    const double border = CropBorder(size, cropFactor);
    const auto marginOf = [=](double value)
    { return MarginInsideBorder(border, value, 1.0, offset); };
    std::transform(values.cbegin(), values.cend(), margins.begin(), marginOf);
}

std::uint64_t CascadeDelay(std::uint64_t windowLength, std::uint64_t order)
{
    // A strength below 1 gives a window that is shorter than the cascade, or wraps: nothing to
    // delay.
    if (static_cast<std::int64_t>(windowLength + 1) < static_cast<std::int64_t>(order))
    {
        return 0;
    }
    return (((windowLength + 1 - order) * order) >> 1U) + (order == 3 ? 2 : 0);
}

void Integrate(const QVector<double>& values, QVector<double>& sums)
{
    sums.resize(values.size());
    double* out = sums.data();
    double sum = 0.0;
    for (const double value : values)
    {
        sum += value;
        *out++ = sum;
    }
}

void FilterPath(PathFilterStage& stage, const QVector<double>& input,
                const AxisFilterSettings& settings)
{
    if (!stage.Enabled)
    {
        return;
    }
    stage.Path.resize(input.size());
    if (input.isEmpty())
    {
        return;
    }
    const auto length = static_cast<std::uint64_t>(input.size());
    const std::uint64_t window = stage.WindowLength;
    const std::uint64_t delay = stage.Delay;
    if (settings.Lock || window >= length || window <= 5 || delay >= length)
    {
        FillWithMean(stage.Path, input);
        return;
    }

    // The tables live on the stack: at most 84 kB for all that the window offers, N = 500 and
    // type 5. Only a hand-written project can ask for more than 1 MiB; then the heap takes over.
    const std::uint64_t cells = (window + 1) * stage.Order;
    constexpr std::uint64_t stackCells = (1U << 20U) / sizeof(double);
    const std::unique_ptr<double[]> onHeap =
        cells > stackCells ? std::make_unique<double[]>(cells) : nullptr;
    double* tables =
        onHeap ? onHeap.get() : static_cast<double*>(alloca((cells + 1) * sizeof(double)));
    std::fill_n(tables, cells, 0.0);

    const CascadeRun run{input.constData(),
                         stage.Path.data(),
                         length,
                         window,
                         delay,
                         CascadeDivisor(window, stage.Order),
                         tables};
    RunCascade(run, stage.Order, tables + window * stage.Order);

    const double factor = 1.0 / static_cast<double>(delay);
    const bool canDraw = factor > -4000.0 && factor < 4000.0;
    FinishTail(stage.Path, delay, settings.UseEndValue && canDraw, settings.EndValue, factor);
    FinishHead(stage.Path, delay, settings.UseStartValue && canDraw, settings.StartValue, factor);
}

void StripPadding(PathFilterStage& stage)
{
    const std::uint64_t size = static_cast<std::uint64_t>(stage.Path.size());
    if (stage.Delay > size / 2)
    {
        stage.Path.clear();
        return;
    }
    const int delay = static_cast<int>(stage.Delay);
    const int frames = stage.Path.size() - 2 * delay;
    std::copy_n(stage.Path.cbegin() + delay, frames, stage.Path.begin());
    stage.Path.resize(frames);
}

void CalculateCorrection(PathFilterStage& stage, const QVector<double>& shakinessPath,
                         const QVector<double>& usedShakiness)
{
    const int frames = stage.Path.size();
    stage.Correction.resize(frames);
    stage.Margin.resize(frames);
    stage.Weight.resize(frames);
    const double* path = stage.Path.constData();
    const double* shakiness = shakinessPath.constData();
    const double* used = usedShakiness.constData();
    double* correction = stage.Correction.data();
    for (int frame = 0; frame < frames; ++frame)
    {
        correction[frame] = path[frame] - shakiness[frame] + used[frame];
    }
}

void CalculateWeights(PathFilterStage& stage, std::int32_t ignoreStart, std::int32_t blendFrames)
{
    if (!stage.Enabled || stage.Margin.isEmpty())
    {
        return;
    }
    std::vector<MarginChange> changes = ListChanges(stage.Margin);
    const std::vector<MarginChange> kept =
        changes.size() > 1
            ? ChooseChanges(std::move(changes), ignoreStart, std::int64_t{3} * blendFrames)
            : std::move(changes);
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
