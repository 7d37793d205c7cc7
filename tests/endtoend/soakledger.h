// SPDX-License-Identifier: MIT
#pragma once

#include "endtoend/soakjob.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

/** How a job went. */
enum class SoakResult
{
    Whole,            ///< to its end, which may be a failure
    AnalysisAborted,  ///< the export of a "Generate All" then never begins
    ExportAborted,
    NeverBegun,  ///< the abort came before the worker looked up
};

/** One way in which a job can end. */
struct SoakEnd
{
    SoakResult Result = SoakResult::Whole;
    QStringList Lines;          ///< in the log's text area, prefixes and all
    std::int32_t State = 0;     ///< JobState that the window then shows
    int Progress = 0;           ///< lines of progress, of a whole job only
    bool HasDataFiles = false;  ///< written
    bool HasExport = false;     ///< a whole one
};

/** A video of the soak. */
struct SoakClip
{
    QString Path;
    QString InputLine;  ///< in the log, when it is opened
    int Frames = 0;     ///< 0 when there is no such file
};

/**
 * What the program should hold, by the jobs so far: in memory and on disk. Foretells the ends of
 * the next job.
 */
class SoakLedger
{
public:
    explicit SoakLedger(std::array<SoakClip, VideoCount> clips) : Clips(std::move(clips)) {}

    [[nodiscard]] const SoakClip& Clip(int video) const { return Clips.at(std::size_t(video)); }

    /**
     * The ends that a job may come to.
     * @param stateBefore  of the worker; shows again when a job never begins
     */
    [[nodiscard]] std::vector<SoakEnd> Ends(SoakButton button, const SoakSettings& settings,
                                            std::int32_t stateBefore, bool isAborted) const;

    /** Takes down how a job ended. */
    void Note(SoakButton button, const SoakSettings& settings, const SoakEnd& end);

    /**
     * A name of what the data files were made of: equal names, equal bytes. Empty when they need
     * not be equal.
     */
    [[nodiscard]] QString NameOfData() const;
    /** The same of an export that has just been made with @p settings. */
    [[nodiscard]] QString NameOfExport(const SoakSettings& settings) const;

private:
    /** An analysis. */
    struct Motion
    {
        int Video = GoneVideo;
        int MaxPoints = 0;
        bool IsMixed = false;  ///< part of it is of an analysis that was aborted
    };

    [[nodiscard]] SoakEnd WholeAnalysis(const SoakSettings& settings) const;
    [[nodiscard]] SoakEnd WholeRead(const SoakSettings& settings) const;
    [[nodiscard]] SoakEnd WholeExport(const SoakSettings& settings, int motionFrames,
                                      bool hasPath) const;
    [[nodiscard]] SoakEnd WholeJob(SoakButton button, const SoakSettings& settings) const;
    [[nodiscard]] QString Name(const Motion& motion) const;

    std::array<SoakClip, VideoCount> Clips;
    Motion Files;                      ///< what the data files on disk were made of
    Motion Memory;                     ///< what the program would calculate with
    std::optional<SoakSettings> Path;  ///< settings that the camera path was calculated with
};
