// SPDX-License-Identifier: MIT
#include "longvideo.h"

#include "batch/resultcodes.h"
#include "project/project.h"
#include "stabilizer/posrotstabilizer.h"

#include <random>

namespace
{
/** What an analysis of the video would have measured. */
void WriteDataFiles(const Project& project, int frames)
{
    PosRotStabilizer stabilizer;
    stabilizer.FileNames = project.FileNames;
    stabilizer.TrackingParameters = project.TrackingParameters;
    stabilizer.FrameWidth = 1920;
    stabilizer.FrameHeight = 1080;
    stabilizer.FrameRate = 30;
    stabilizer.MotionX = ShakyMotion(frames);
    stabilizer.MotionY = stabilizer.MotionX;
    for (double motion : qAsConst(stabilizer.MotionX))
    {
        stabilizer.MotionAngle.append(motion / 4000.0);
    }
    stabilizer.TrackingPoints.assign(static_cast<std::size_t>(frames), {cv::Point2f(1.0F, 1.0F)});
    if (stabilizer.WriteTracking() != ResultOk || stabilizer.WriteStabilizeFile() != ResultOk)
    {
        qFatal("the data files could not be written");
    }
}
}  // namespace

QVector<double> ShakyMotion(int frames)
{
    std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): always the same
    QVector<double> motion(frames);
    for (double& value : motion)
    {
        value = static_cast<double>(random()) * (8.0 / 4294967296.0) - 4.0;
    }
    return motion;
}

QString WriteAnalysedProject(const QDir& dir, int frames, int type, int depth)
{
    Project project;
    QString noFile;
    static_cast<void>(project.Load(noFile, false));  // the defaults of a new project
    project.SourceFile = dir.filePath(QStringLiteral("video.avi"));
    project.ExportFile = dir.filePath(QStringLiteral("video.mp4"));
    project.TrackingFile = dir.filePath(QStringLiteral("Tracking.dat"));
    project.StabilizationFile = dir.filePath(QStringLiteral("Stabilize.dat"));
    for (AxisFilterSettings* settings : {&project.FlowH, &project.FlowV, &project.FlowAngle})
    {
        settings->AvgPathOrder = type;
        settings->AvgPathImages = depth;
    }
    project.SyncFileNames();
    WriteDataFiles(project, frames);
    QString file = dir.filePath(QStringLiteral("video.mvprj"));
    project.Save(file);
    return file;
}
