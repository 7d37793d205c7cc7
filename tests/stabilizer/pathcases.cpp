// SPDX-License-Identifier: MIT
#include "stabilizer/pathcases.h"

#include "project/project.h"
#include "stabilizer/bitcompare.h"
#include "stabilizer/camerapath.h"

#include <QStringList>

#include <cmath>
#include <cstdint>

namespace
{
/** From -1.0 to 1.0. */
double Random(std::mt19937& generator)
{
    return static_cast<double>(generator()) / 2147483647.5 - 1.0;
}

bool Chance(std::mt19937& generator, unsigned oneIn)
{
    return generator() % oneIn == 0;
}

/** A frame number from @p lowest on, at times some way behind the video. */
std::int32_t RandomFrame(std::mt19937& generator, int lowest, int frames)
{
    const auto range = static_cast<std::uint32_t>(frames + 11 - lowest);
    return static_cast<std::int32_t>(generator() % range) + lowest;
}

std::vector<ModelRange> RandomRanges(std::mt19937& generator, int lowest, int frames)
{
    std::vector<ModelRange> ranges;
    // Some lists are long enough to clear more than the padding.
    const auto count = Chance(generator, 4) ? generator() % 40 : generator() % 4;
    for (auto i = count; i > 0; --i)
    {
        const std::int32_t start =
            Chance(generator, 5) ? 0 : RandomFrame(generator, lowest, frames);
        const auto length = static_cast<std::int32_t>(generator() % 30);
        ranges.emplace_back(start, Chance(generator, 9) ? -1 : start + length - 3);
    }
    return ranges;
}

std::vector<ModelPoints> RandomPoints(std::mt19937& generator, int lowest, int frames, double size)
{
    std::vector<ModelPoints> sections(generator() % 4);
    for (ModelPoints& points : sections)
    {
        std::int32_t frame = Chance(generator, 3) ? 0 : RandomFrame(generator, lowest, frames);
        const bool sorted = !Chance(generator, 3);
        for (auto count = generator() % 5; count > 0; --count)
        {
            points.emplace_back(frame, Random(generator) * size * 0.2);
            frame = sorted ? frame + static_cast<std::int32_t>(generator() % 60)
                           : RandomFrame(generator, lowest, frames);
        }
        if (Chance(generator, 3))
        {
            points.emplace_back(frames - 1, Random(generator) * size * 0.2);
        }
    }
    return sections;
}

void FillIgnore(const std::vector<ModelRange>& ranges, std::vector<IgnoreSection>& sections)
{
    sections.clear();
    for (const ModelRange& range : ranges)
    {
        sections.push_back({range.first, range.second, 0.25});
    }
}

QString StageDifference(const PathFilterStage& actual, const ModelStage& expected,
                        const QString& name)
{
    const QStringList differences = {BitDifference(actual.Path, expected.Path),
                                     BitDifference(actual.Correction, expected.Correction),
                                     BitDifference(actual.Margin, expected.Margin),
                                     WeightDifference(actual.Weight, expected.Weight)};
    const QStringList lists = {QStringLiteral("Path"), QStringLiteral("Correction"),
                               QStringLiteral("Margin"), QStringLiteral("Weight")};
    for (int i = 0; i < lists.size(); ++i)
    {
        if (!differences.at(i).isEmpty())
        {
            return QStringLiteral("%1.%2: %3").arg(name, lists.at(i), differences.at(i));
        }
    }
    return actual.Enabled == expected.Enabled ? QString() : name + QStringLiteral(".Enabled");
}
}  // namespace

void FillProject(const ModelSettings& model, Project& project, AxisFilterSettings& axis)
{
    axis.Lock = model.Lock;
    axis.UseStartValue = model.UseStart;
    axis.UseEndValue = model.UseEnd;
    axis.EnableIgnoreSections = model.UseLocal;
    axis.EnableManualPath = model.UseManual;
    axis.AvgPathImages = model.Strength;
    axis.AvgPathOrder = model.Type;
    axis.IgnoreStartFramesMargin = model.IgnoreStart;
    axis.StartValue = model.Start;
    axis.EndValue = model.End;
    FillIgnore(model.Local, axis.IgnoreSections);
    axis.ManualPath.clear();
    for (const ModelPoints& points : model.Manual)
    {
        ManualPathSection section;
        for (const auto& [frame, value] : points)
        {
            section.Points.push_back({frame, value});
        }
        axis.ManualPath.push_back(section);
    }
    project.EnGlobalIgnoreList = model.UseGlobal;
    FillIgnore(model.Global, project.GlobalIgnoreSections);
    project.ExportSettings.CropFactor = model.CropFactor;
}

ModelSettings RandomSettings(std::mt19937& generator, int strength, int type, int frames)
{
    constexpr double CropFactors[] = {1.0, 1.05, 1.1, 1.25, 2.0, 0.9};
    ModelSettings settings;
    settings.Strength = strength;
    settings.Type = type;
    settings.Lock = Chance(generator, 12);
    settings.UseStart = Chance(generator, 3);
    settings.UseEnd = Chance(generator, 3);
    settings.UseGlobal = Chance(generator, 3);
    settings.UseLocal = Chance(generator, 3);
    settings.UseManual = Chance(generator, 3);
    settings.IgnoreStart = static_cast<int>(generator() % 12) - 1;
    settings.Offset = Chance(generator, 2) ? 0 : static_cast<int>(generator() % 61) - 30;
    settings.Start = Random(generator) * 500.0;
    settings.End = Random(generator) * 20000.0;
    settings.CropFactor = CropFactors[generator() % 6];
    settings.Global = RandomRanges(generator, -20, frames);
    settings.Local = RandomRanges(generator, -20, frames);
    // No filter pads with less than its strength: the points lie inside the padded list.
    settings.Manual = RandomPoints(generator, -strength, frames, 1920.0);
    return settings;
}

std::vector<double> RandomMotion(std::mt19937& generator, int frames, double size)
{
    std::vector<double> motion;
    const double tremble = size * 0.001;
    double throws = 0.0;
    for (int f = 0; f < frames; ++f)
    {
        if (Chance(generator, 150))
        {
            throws = Chance(generator, 2) ? 0.0 : Random(generator) * size * 0.02;
        }
        const double drift = std::sin(f * 0.01) * size * 0.0005;
        motion.push_back(drift + (tremble + throws) * Random(generator) +
                         throws * std::sin(f * 0.2));
    }
    return motion;
}

QString PathDifference(const CameraPath& path, const PathModel& model)
{
    const QStringList differences = {
        BitDifference(path.UsedShakiness, model.Used),
        BitDifference(path.ShakinessPath, model.Shakiness),
        BitDifference(path.ModifiedPath, model.Modified),
        StageDifference(path.Base, model.Base, QStringLiteral("Base")),
        StageDifference(path.SuperSmooth, model.Super, QStringLiteral("SuperSmooth")),
        StageDifference(path.Result, model.Result, QStringLiteral("Result"))};
    const QStringList lists = {QStringLiteral("UsedShakiness: "), QStringLiteral("ShakinessPath: "),
                               QStringLiteral("ModifiedPath: ")};
    for (int i = 0; i < differences.size(); ++i)
    {
        if (!differences.at(i).isEmpty())
        {
            return lists.value(i) + differences.at(i);
        }
    }
    return {};
}
