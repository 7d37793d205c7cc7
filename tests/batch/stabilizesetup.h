// SPDX-License-Identifier: MIT
#pragma once

#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "batch/opcvthread.h"
#include "batch/scriptedstabilizer.h"
#include "batch/stabilizerhost.h"
#include "support/files.h"
#include "support/testvideo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QObject>
#include <QVector>

#include <algorithm>

/** Bytes of a matching file for @p source with facts that no clip here has: 7 by 9 pixels, 11 Hz.
 */
[[nodiscard]] inline QByteArray MatchingBytes(const QString& source, const QByteArray& payload)
{
    return PathField(source.toLatin1()) + Int(7) + Int(9) + Int(11) + payload;
}

/** The payload of the tracking matching file for that many points. */
[[nodiscard]] inline QByteArray PointsPayload(int maxPoints)
{
    return Int(maxPoints) + Int(0) + Int(-1);
}

/** Whether this process has the file open. */
[[nodiscard]] inline bool IsOpenHere(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    const QStringList names = descriptors.entryList(QDir::Files | QDir::System);
    return std::any_of(names.cbegin(), names.cend(),
                       [&](const QString& name)
                       { return QFile::symLinkTarget(descriptors.filePath(name)) == canonical; });
}

/**
 * A numbered clip and a stabilizer with tracking points for its frames in memory, as many as the
 * frame's number says, which fit the tracking matching file. There is no stabilization file.
 */
struct StabilizeSetup : BatchSetup
{
    explicit StabilizeSetup(int frames = 5)
    {
        if (!TestVideo::WriteNumberedClip(Path("source.avi"), {64, 64, frames, 25.0}))
        {
            qFatal("No clip for the test");
        }
        GivePaths(Object);
        Object.TrackingLoaded = true;
        Object.ReadResult = 1;
        StorePoints(frames);
        WriteBytes(Path("Tracking.dat.cfg"), MatchingBytes(Proj.SourceFile, PointsPayload(200)));
    }

    /** Makes as many entries; entry i holds i points in column i. */
    void StorePoints(int frames)
    {
        Object.TrackingPoints.clear();
        for (int i = 0; i < frames; ++i)
        {
            auto& points = Object.TrackingPoints.emplace_back();
            for (int row = 0; row < i; ++row)
            {
                points.emplace_back(static_cast<float>(i), static_cast<float>(row));
            }
        }
    }

    void WriteStabilizationMatch(const QByteArray& bytes)
    {
        WriteBytes(Path("Stabilize.dat.cfg"), bytes);
    }

    [[nodiscard]] int Run() { return Object.StabilizeJob(&Proj.TrackingParameters); }

    /** The calls of a measurement that the object starts after it found no stabilization file. */
    [[nodiscard]] static QStringList MeasureCalls(int frames, int tracked, bool isWritten = true)
    {
        QStringList calls{"ReadStabilizeFile", QStringLiteral("PrepareFrames %1").arg(frames)};
        for (int i = 0; i < tracked; ++i)
        {
            calls.append("TrackFrame");
        }
        return isWritten ? calls << "WriteStabilizeFile" : calls;
    }

    ScriptedStabilizer Object;
};

/** Whether the source was open at each log line. */
class SourceAtLines : public QObject
{
public:
    explicit SourceAtLines(const QString& source)
    {
        connect(ProgramHost.GetThread(), &OpCVThread::SignalLogEntry, this,
                [this, source] { WasOpen.append(IsOpenHere(source)); });
    }
    QVector<bool> WasOpen;
};
