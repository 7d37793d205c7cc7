// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"

#include "batch/stabilize.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"

#include <QtGlobal>

BatchSetup::BatchSetup()
{
    if (!Folder.isValid())
    {
        qFatal("No folder for the test");
    }
    Proj.SourceFile = Path("source.avi");
    Proj.ExportFile = Path("export.mp4");
    Proj.TrackingFile = Path("Tracking.dat");
    Proj.StabilizationFile = Path("Stabilize.dat");
    Proj.SyncFileNames();
    // One moving average over 7 frames: short enough for clips of a few frames.
    for (AxisFilterSettings* axis :
         {&Proj.FlowH, &Proj.FlowV, &Proj.FlowAngle, &Proj.RadianSettings})
    {
        axis->AvgPathImages = 3;
        axis->AvgPathOrder = 1;
    }
    PathHorizontal.Configure(&Proj, &Proj.FlowH, 0);
    PathVertical.Configure(&Proj, &Proj.FlowV, 0);
    PathRotation.Configure(&Proj, &Proj.RadianSettings, 0);
    PathRotationDegrees.Configure(&Proj, &Proj.FlowAngle, 0);
    ProgramHost.CreateStabilizer(1, &Proj);
    Lines.Attach(ProgramHost.GetThread());
}

QString BatchSetup::Path(const char* name) const
{
    return Folder.filePath(QString::fromLatin1(name));
}

void BatchSetup::GivePaths(Stabilize& stabilizer)
{
    Proj.SyncFileNames();
    stabilizer.FileNames = Proj.FileNames;
}
