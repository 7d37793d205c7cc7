// SPDX-License-Identifier: MIT
#include "stabilizer/pathfilter.h"

#include "stabilizer/axisfiltersettings.h"

#include <alloca.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <type_traits>

namespace
{
/** Pixels that the crop leaves on each side of a centred frame. */
double CropBorder(double size, double cropFactor)
{
    return std::floor((size - size / cropFactor) * 0.5);
}

double MarginInsideBorder(double border, double value, double cosine, int offset)
{
    const double margin = value > 0.0 ? offset + (border - value) : (border + value) - offset;
    return cosine > 0.5 ? std::ceil(cosine * margin) : -1.0;
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
template <typename RowCount>
void RunCascade(const CascadeRun& run, RowCount rows, double* sums)
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
    RunCascade(run, std::integral_constant<std::uint64_t, Rows>{}, sums.data());
}

void RunAnyCascade(const CascadeRun& run, std::uint64_t rows, double* sums)
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
            return RunCascade(run, rows, sums);
    }
}

/**
 * The last d entries, for which the cascade has no input: level, or a line to @p endValue. The path
 * is longer than d.
 */
void FinishTail(QVector<double>& path, std::uint64_t delay, bool drawLine, double endValue,
                double factor)
{
    const std::uint64_t done = static_cast<std::uint64_t>(path.size()) - delay;
    const double last = path.constData()[done - 1];
    double* tail = path.data() + done;
    if (!drawLine)
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
void FinishHead(QVector<double>& path, std::uint64_t delay, bool drawLine, double startValue,
                double factor)
{
    double* head = path.data();
    const double first = head[delay];
    if (!drawLine)
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
    // Below 0 for the windows of a strength below 1, which are too short or wrap.
    const auto room = static_cast<std::int64_t>(windowLength + 1 - order);
    if (room < 0)
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
    RunAnyCascade(run, stage.Order, tables + window * stage.Order);

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
