// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/ignoresection.h"
#include "stabilizer/manualpath.h"
#include "stabilizer/pathfilterstage.h"

#include <QVector>

#include <cstdint>
#include <mutex>
#include <vector>

struct AxisFilterSettings;
struct ExportSettings;
struct Project;

/**
 * The path of the camera along one axis: what was measured, what it integrates to, the smoothed
 * path, and per frame how far it must move to follow that path. Indices are frame numbers.
 *
 * Generate runs on the thread that asks for it, the user interface or the worker, under the engine
 * lock. The operations here that read take no lock but HasValidData: graphs and player hold it
 * themselves while they read, and an export reads what nobody changes. After Generate on a
 * non-empty motion the measured lists, those of the enabled stages and those of Result have its
 * length; a disabled stage keeps its old ones.
 */
class CameraPath
{
public:
    explicit CameraPath(bool isPixelAxis) : IsPixelAxis(isPixelAxis) {}
    CameraPath(const CameraPath&) = delete;
    CameraPath& operator=(const CameraPath&) = delete;

    /**
     * Binds the object to the settings of its axis and derives the filter stages from the filter
     * type. The caller keeps a calculation from running meanwhile. A filter type outside 1 to 5
     * sets the blend ramp alone and keeps the stages as they are.
     * @param project   not owned, outlives the object's use
     * @param settings  not owned, a record of @p project
     * @param offset    export offset of the axis, pixels or whole degrees
     */
    void Configure(Project* project, AxisFilterSettings* settings, std::int32_t offset);

    /**
     * Calculates everything below from @p motion. Needs Configure. Takes the engine lock. Time and
     * memory go with the frames plus six times the strength; std::bad_alloc when they are not to be
     * had.
     * @param motion           per frame, the motion to the next frame, units of the axis
     * @param frameSize        size that margins are measured against, units of the axis
     * @param framesPerSecond  for the time axis of the graphs
     */
    void Generate(const QVector<double>& motion, double frameSize, double framesPerSecond);

    /** Correction of a frame, units of the axis. @p frame is not checked. */
    [[nodiscard]] double CorrectionAt(int frame) const { return Result.Correction.at(frame); }

    /**
     * Entry of ShakinessPath for the editor of the manual path: the first one for negative frames,
     * the last one at the end and behind it, 0.0 when there is none.
     */
    [[nodiscard]] double ShakinessAt(int frame) const;

    /**
     * True when there are at least 5 frames, the shakiness path is as long as the shakiness, and
     * all enabled stages but Result, which is not looked at, are complete: graphs and preview may
     * read. Takes the engine lock.
     */
    [[nodiscard]] bool HasValidData() const;

    /** Forgets the motion and its sums, so that HasValidData is false; the stages keep theirs. */
    void Clear();

    /** Copies Settings->IgnoreSections; without Settings @p list stays as it is. */
    void GetIgnoreSections(std::vector<IgnoreSection>& list) const;

    /** Replaces Settings->IgnoreSections, under the engine lock; without Settings does nothing. */
    void SetIgnoreSections(const std::vector<IgnoreSection>& list);

    /** Copies Settings->ManualPath; without Settings @p list becomes empty. */
    void GetManualPath(std::vector<ManualPathSection>& list) const;

    // Field order is part of the design.
    QVector<double> DetectedShakiness;       ///< measured motion
    AxisFilterSettings* Settings = nullptr;  ///< not owned, null until Configure
    ExportSettings* Export = nullptr;        ///< not owned, null until Configure
    bool UseGlobalIgnore = false;            ///< apply GlobalIgnoreSections
    const std::vector<IgnoreSection>* GlobalIgnoreSections =
        nullptr;                                                      ///< not owned, of the project
    const std::vector<IgnoreSection>* LocalIgnoreSections = nullptr;  ///< not owned, of Settings
    QVector<double> ShakinessPath;  ///< running sum of UsedShakiness
    QVector<double> UsedShakiness;  ///< motion with ignore sections zeroed
    QVector<double> ModifiedPath;   ///< running sum after the manual path
    PathFilterStage Base;           ///< first filter
    PathFilterStage SuperSmooth;    ///< strong filter of types 4 and 5
    PathFilterStage ThirdStage;     ///< no filter type enables it
    PathFilterStage Result;         ///< the outcome, what the warp follows
    double FrameSize = 0.0;         ///< units of the axis
    double FramesPerSecond = -1.0;  ///< whole number; -1 until the first calculation
    std::int32_t BlendFrames = 0;   ///< R, frames of a blend ramp
    std::int32_t Offset = 0;        ///< export offset of this axis
    bool IsPixelAxis = false;       ///< horizontal and vertical

private:
    [[nodiscard]] bool StageIsComplete(const PathFilterStage& stage) const;
    void PreparePath(std::uint64_t delay);
    void CompleteStage(PathFilterStage& stage);
};

/**
 * Guards the camera paths during their calculation. Recursive; never held together with the log
 * mutex.
 */
extern std::recursive_mutex EngineLock;

extern CameraPath PathHorizontal;       ///< pixels, moves the frames
extern CameraPath PathVertical;         ///< pixels, moves the frames
extern CameraPath PathRotation;         ///< radians, turns the frames
extern CameraPath PathRotationDegrees;  ///< degrees, for the rotation graph alone

/**
 * True when the paths that move and turn the frames have corrections for the first @p frameCount
 * frames. False for a source that has grown since it was analysed, or for motion that a damaged
 * file left short. Takes no lock.
 */
[[nodiscard]] bool HasCorrections(std::int64_t frameCount);
