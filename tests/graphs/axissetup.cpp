// SPDX-License-Identifier: MIT
#include "graphs/axissetup.h"

AxisSetup::AxisSetup(bool isPixelAxis) : Path(isPixelAxis)
{
    QString noFile;
    static_cast<void>(Proj.Load(noFile, false));  // the defaults of a new project
    Configure();
}

void AxisSetup::Configure()
{
    Path.Configure(&Proj, &Proj.FlowH, Proj.ExportSettings.ExpOffH);
}

void AxisSetup::Generate(const QVector<double>& motion, double frameSize, double fps)
{
    Configure();
    Path.Generate(motion, frameSize, fps);
}
