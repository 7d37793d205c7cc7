// SPDX-License-Identifier: MIT
#include "stabilizer/camerapath.h"

#include "batch/exportsettings.h"
#include "project/project.h"
#include "stabilizer/axisfiltersettings.h"
#include "stabilizer/pathcorrections.h"
#include "stabilizer/pathfilter.h"
#include "stabilizer/truncation.h"

#include <algorithm>
#include <limits>

namespace
{
/** Below this number of frames there is nothing worth showing. */
constexpr int FewestFrames = 5;

/** Averaging window of @p factor times the strength; wraps for a strength below 0. */
std::uint64_t Window(std::int64_t factor, std::int32_t strength)
{
    return static_cast<std::uint64_t>(factor * strength + 1);
}

std::int32_t Ramp(std::int64_t factor, std::int32_t strength)
{
    return SaturateToInt32(factor * strength);
}

/** Length of the working arrays. Ends like a failed allocation where a list cannot be so long. */
int PaddedLength(int frames, std::uint64_t delay)
{
    constexpr auto longest = static_cast<std::uint64_t>(std::numeric_limits<int>::max());
    if (delay > longest / 2 || static_cast<std::uint64_t>(frames) + 2 * delay > longest)
    {
        qBadAlloc();
    }
    return static_cast<int>(static_cast<std::uint64_t>(frames) + 2 * delay);
}
}  // namespace

void CameraPath::Configure(Project* project, AxisFilterSettings* settings, std::int32_t offset)
{
    UseGlobalIgnore = project->EnGlobalIgnoreList;
    GlobalIgnoreSections = &project->GlobalIgnoreSections;
    LocalIgnoreSections = &settings->IgnoreSections;
    Settings = settings;
    Export = &project->ExportSettings;
    Offset = offset;

    const std::int32_t strength = settings->AvgPathImages;
    const std::int32_t type = settings->AvgPathOrder;
    BlendFrames = Ramp(18, strength);
    if (type < 1 || type > 5)
    {
        return;
    }
    Base.WindowLength = Window(2, strength);
    Base.Order = static_cast<std::uint64_t>(std::min(type, 3));
    Base.Enabled = true;
    SuperSmooth.WindowLength = Window(1, strength);
    SuperSmooth.Enabled = type >= 4;
    if (type == 4)
    {
        SuperSmooth.WindowLength = Window(3, strength);
        SuperSmooth.Order = 2;
        BlendFrames = Ramp(8, strength);
    }
    else if (type == 5)
    {
        SuperSmooth.WindowLength = Window(7, strength);
        SuperSmooth.Order = 3;
    }
}

void CameraPath::Generate(const QVector<double>& motion, double frameSize, double framesPerSecond)
{
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    FrameSize = frameSize;
    FramesPerSecond = framesPerSecond;
    DetectedShakiness = motion;

    // Deliberate: the delay of the first filter serves all. The strong filter of type 5 has a
    // longer one of its own, and its path therefore trails; that is part of the look of type 5.
    const std::uint64_t delay = CascadeDelay(Base.WindowLength, Base.Order);
    Base.Delay = delay;
    SuperSmooth.Delay = delay;
    ThirdStage.Delay = delay;

    PreparePath(delay);
    FilterPath(SuperSmooth, Base.Path, *Settings);
    FilterPath(ThirdStage, SuperSmooth.Path, *Settings);
    for (PathFilterStage* stage : {&Base, &SuperSmooth, &ThirdStage})
    {
        CompleteStage(*stage);
    }

    if (Base.Enabled)
    {
        BlendPaths(Base, SuperSmooth, BlendFrames, Result);
    }
    else
    {
        Result.Path = ModifiedPath;
    }
    Result.Enabled = true;
    CalculateCorrection(Result, ShakinessPath, UsedShakiness);
    CropMargins(Result.Correction, FrameSize, Offset, Export->CropFactor, Result.Margin);
}

/** Everything up to the first filter: ignore sections, integration, manual path, custom ends. */
void CameraPath::PreparePath(std::uint64_t delay)
{
    const int frames = DetectedShakiness.size();
    const int length = PaddedLength(frames, delay);
    const int pad = static_cast<int>(delay);

    QVector<double> motion(length, 0.0);
    std::copy(DetectedShakiness.cbegin(), DetectedShakiness.cend(), motion.begin() + pad);
    if (UseGlobalIgnore)
    {
        ApplyIgnoreSections(motion, delay, *GlobalIgnoreSections);
    }
    if (Settings->EnableIgnoreSections)
    {
        ApplyIgnoreSections(motion, delay, *LocalIgnoreSections);
    }
    UsedShakiness.resize(frames);
    std::copy_n(motion.cbegin() + pad, frames, UsedShakiness.begin());

    QVector<double> position;
    Integrate(motion, position);
    if (Settings->EnableManualPath)
    {
        ApplyManualPath(position, delay, Settings->ManualPath);
    }
    ModifiedPath.resize(frames);
    std::copy_n(position.cbegin() + pad, frames, ModifiedPath.begin());
    if (Settings->UseStartValue)
    {
        std::fill_n(position.begin(), pad, Settings->StartValue);
    }
    if (Settings->UseEndValue)
    {
        std::fill_n(position.begin() + pad + frames, pad, Settings->EndValue);
    }
    FilterPath(Base, position, *Settings);
    Integrate(UsedShakiness, ShakinessPath);
}

void CameraPath::CompleteStage(PathFilterStage& stage)
{
    if (!stage.Enabled)
    {
        return;
    }
    StripPadding(stage);
    CalculateCorrection(stage, ShakinessPath, UsedShakiness);
    CropMargins(stage.Correction, FrameSize, 0, Export->CropFactor, stage.Margin);
    CalculateWeights(stage, Settings->IgnoreStartFramesMargin, BlendFrames);
}

double CameraPath::ShakinessAt(int frame) const
{
    if (ShakinessPath.isEmpty())
    {
        return 0.0;
    }
    const int frames = ShakinessPath.size();
    return ShakinessPath.at(std::clamp(frame, 0, frames - 1));
}

bool CameraPath::HasValidData() const
{
    return ShakinessPath.size() == DetectedShakiness.size() &&
           DetectedShakiness.size() >= FewestFrames && StageIsComplete(Base) &&
           StageIsComplete(SuperSmooth) && StageIsComplete(ThirdStage);
}

bool CameraPath::StageIsComplete(const PathFilterStage& stage) const
{
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    const int frames = DetectedShakiness.size();
    return !stage.Enabled || (stage.Path.size() == frames && stage.Correction.size() == frames &&
                              stage.Margin.size() == frames && stage.Weight.size() == frames);
}

void CameraPath::Clear()
{
    DetectedShakiness.clear();
    ShakinessPath.clear();
    UsedShakiness.clear();
    ModifiedPath.clear();
}

void CameraPath::GetIgnoreSections(std::vector<IgnoreSection>& list) const
{
    if (Settings != nullptr)
    {
        list = Settings->IgnoreSections;
    }
}

void CameraPath::SetIgnoreSections(const std::vector<IgnoreSection>& list)
{
    if (Settings != nullptr)
    {
        const std::lock_guard<std::recursive_mutex> lock(EngineLock);
        Settings->IgnoreSections = list;
    }
}

void CameraPath::GetManualPath(std::vector<ManualPathSection>& list) const
{
    if (Settings != nullptr)
    {
        list = Settings->ManualPath;
    }
    else
    {
        list.clear();
    }
}

bool HasCorrections(std::int64_t frameCount)
{
    return PathHorizontal.Result.Correction.size() >= frameCount &&
           PathVertical.Result.Correction.size() >= frameCount &&
           PathRotation.Result.Correction.size() >= frameCount;
}
