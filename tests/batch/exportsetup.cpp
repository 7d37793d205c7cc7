// SPDX-License-Identifier: MIT
#include "batch/exportsetup.h"

#include <QtGlobal>

ExportSetup::ExportSetup(const TestVideo::Format& format)
{
    if (!TestVideo::WriteNumberedClip(Path("source.avi"), format))
    {
        qFatal("No clip for the test");
    }
    GivePaths(Object);
    Object.PretendDataLoaded();
    SetZeroCorrections(format.Frames);
}

QVector<int> ExportSetup::ShownNumbers() const
{
    QVector<int> numbers;
    for (const cv::Mat& frame : TestVideo::ReadAllFrames(Proj.ExportFile))
    {
        numbers.append(TestVideo::NumberOf(frame));
    }
    return numbers;
}

QStringList ExportSetup::WarpCalls(int frames)
{
    QStringList calls;
    for (int i = 0; i < frames; ++i)
    {
        calls.append(QStringLiteral("WarpFrame %1").arg(i));
    }
    return calls;
}
