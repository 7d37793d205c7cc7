// SPDX-License-Identifier: MIT
#include "endtoend/soakledger.h"

#include "batch/jobstate.h"

#include <utility>

namespace
{
constexpr int LongestMessage = 79;    ///< characters that the worker's records hold
constexpr int AnalysisProgress = 20;  ///< frames between two lines
constexpr int ExportProgress = 50;    ///< frames between two lines

QString Run(const char* text)
{
    return QStringLiteral("Run      ") + QLatin1String(text);
}

QString Error(const QString& text)
{
    return QStringLiteral("Error    ") + text.left(LongestMessage);
}

QString Error(const char* text)
{
    return Error(QString::fromLatin1(text));
}

QString OpenFailure(const SoakClip& clip)
{
    return Error(QStringLiteral("Open %1 failed!").arg(clip.Path));
}
}  // namespace

SoakEnd SoakLedger::WholeAnalysis(const SoakSettings& settings) const
{
    const SoakClip& clip = Clip(settings.Video);
    SoakEnd end;
    if (clip.Frames == 0)
    {
        end.Lines = QStringList{OpenFailure(clip)};
        end.State = JobNone;
        return end;
    }
    end.Lines = QStringList{clip.InputLine, Run("Tracking file written!"),
                            Run("Stabilizing file written!")};
    end.State = JobPathReady;
    end.Progress = (clip.Frames - 1) / AnalysisProgress;
    end.HasDataFiles = true;
    return end;
}

/** The points are in memory from the first analysis on, and are not read again. */
SoakEnd SoakLedger::WholeRead(const SoakSettings& settings) const
{
    SoakEnd end;
    if (settings.Video != Files.Video || settings.MaxPoints != Files.MaxPoints)
    {
        const bool isOther = settings.Video != Files.Video;
        end.Lines = QStringList{Error(isOther ? "Out of date!" : "Data file out of date!"),
                                Error("Tracking file out of date!")};
        end.State = JobNone;
        return end;
    }
    end.Lines = QStringList{Run("Stabilizing file read successfully!")};
    end.State = JobPathReady;
    return end;
}

SoakEnd SoakLedger::WholeExport(const SoakSettings& settings, int motionFrames, bool hasPath) const
{
    const SoakClip& clip = Clip(settings.Video);
    SoakEnd end;
    end.State = JobPathReady;
    if (!hasPath)
    {
        end.Lines.append(Run("Generate Smoothing Path"));
    }
    if (clip.Frames == 0)
    {
        end.Lines.append(OpenFailure(clip));
        return end;
    }
    end.Lines.append(clip.InputLine);
    if (settings.Look == OutsideLook)
    {
        return end;  // the message is one that the player has too
    }
    end.Lines.append(Run("Start exporting Video"));
    if (clip.Frames > motionFrames)
    {
        end.Lines.append(Error("Exporting failed!"));
        return end;
    }
    end.Lines.append({clip.InputLine, Run("Exporting Video finished!")});
    end.Progress = (clip.Frames - 1) / ExportProgress + 1;
    end.HasExport = true;
    return end;
}

SoakEnd SoakLedger::WholeJob(SoakButton button, const SoakSettings& settings) const
{
    switch (button)
    {
        case SoakButton::Analyse:
            return WholeAnalysis(settings);
        case SoakButton::Read:
            return WholeRead(settings);
        case SoakButton::Export:
            return WholeExport(settings, Clip(Memory.Video).Frames, Path.has_value());
        case SoakButton::GenerateAll:
        {
            SoakEnd end = WholeAnalysis(settings);
            if (end.HasDataFiles)
            {
                const SoakEnd second = WholeExport(settings, Clip(settings.Video).Frames, false);
                end.Lines += second.Lines;
                end.Progress += second.Progress;
                end.HasExport = second.HasExport;
            }
            return end;
        }
        case SoakButton::Calculate:
            break;
    }
    SoakEnd end;
    end.Lines = QStringList{Run("Generate Smoothing Path")};
    end.State = JobPathCalculated;
    return end;
}

std::vector<SoakEnd> SoakLedger::Ends(SoakButton button, const SoakSettings& settings,
                                      std::int32_t stateBefore, bool isAborted) const
{
    const SoakEnd whole = WholeJob(button, settings);
    std::vector<SoakEnd> ends{whole};
    if (!isAborted)
    {
        return ends;
    }
    SoakEnd none;
    none.Result = SoakResult::NeverBegun;
    none.State = stateBefore;
    ends.push_back(none);
    if (whole.HasDataFiles)
    {
        SoakEnd end;
        end.Result = SoakResult::AnalysisAborted;
        end.Lines = QStringList{whole.Lines.constFirst(), Run("Analyse aborted!")};
        end.State = JobNone;
        ends.push_back(end);
    }
    if (whole.HasExport)
    {
        SoakEnd end = whole;
        end.Result = SoakResult::ExportAborted;
        end.Lines.last() = Run("Export aborted!");
        end.HasExport = false;
        ends.push_back(end);
    }
    return ends;
}

void SoakLedger::Note(SoakButton button, const SoakSettings& settings, const SoakEnd& end)
{
    if (end.Result == SoakResult::NeverBegun)
    {
        return;
    }
    if (end.Result == SoakResult::AnalysisAborted)
    {
        Memory = Motion{settings.Video, settings.MaxPoints, true};
        Path.reset();
        return;
    }
    if (end.HasDataFiles)
    {
        Memory = Motion{settings.Video, settings.MaxPoints, false};
        Files = Memory;
        Path.reset();
    }
    if (button == SoakButton::Read && end.State == JobPathReady)
    {
        Memory = Files;
        Path.reset();
    }
    if (end.Lines.contains(Run("Generate Smoothing Path")))
    {
        Path = settings;
    }
}

/** What a black clip measures is what the clip before it ended with. */
QString SoakLedger::Name(const Motion& motion) const
{
    return motion.IsMixed || motion.Video == BlackVideo
               ? QString()
               : QStringLiteral("video %1 points %2").arg(motion.Video).arg(motion.MaxPoints);
}

QString SoakLedger::NameOfData() const
{
    return Name(Files);
}

QString SoakLedger::NameOfExport(const SoakSettings& settings) const
{
    const QString motion = Name(Memory);
    return motion.isEmpty() || !Path.has_value() ? QString()
                                                 : QStringLiteral("%1 path %2 %3 export %4 %5")
                                                       .arg(motion)
                                                       .arg(Path->Look)
                                                       .arg(Path->Strength)
                                                       .arg(settings.Video)
                                                       .arg(settings.Look);
}
