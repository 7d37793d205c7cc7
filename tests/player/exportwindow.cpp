// SPDX-License-Identifier: MIT
#include "player/exportwindow.h"

#include "stabilizer/camerapath.h"
#include "support/testvideo.h"

#include <QFile>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int JobTime = 120000;  // milliseconds, far more than any job here takes

double Largest(const QVector<double>& values)
{
    double largest = 0.0;
    for (const double value : values)
    {
        largest = std::max(largest, std::abs(value));
    }
    return largest;
}
}  // namespace

void ExportWindow::SetCrop(double percent, int offsetH, int offsetV) const
{
    SetChecked("checkBoxEnableZoom", true);
    SetNumber("doubleSpinBoxZoom", percent);
    SetNumber("spinBoxExpOffsetH", offsetH);
    SetNumber("spinBoxExpOffsetV", offsetV);
}

void ExportWindow::SetOutputSize(int width, int height) const
{
    SetChecked("checkBoxRescale", true);
    SetNumber("spinBoxRescaleXAxis", width);
    SetNumber("spinBoxRescaleYAxis", height);
}

void ExportWindow::Analyse(const QString& clip) const
{
    SetPaths(clip, Directory.path());
    Click("pushButtonAnalyseTrack");
    WaitForEnd();
    Click("pushButtonCalculateTrack");
    QVERIFY(PathHorizontal.HasValidData());
    // Else a player that does not warp at all would do.
    QVERIFY(Largest(PathHorizontal.Result.Correction) > 1.0);
    QVERIFY(Largest(PathVertical.Result.Correction) > 1.0);
    QVERIFY(Largest(PathRotation.Result.Correction) > 0.001);
}

void ExportWindow::StartExport(const QString& name) const
{
    ClickTab(0);
    SetText("lineEditExportVideo", Directory.filePath(name));
    Click("pushButtonExportVideo");
}

void ExportWindow::WaitForEnd() const
{
    QVERIFY(QTest::qWaitFor([this] { return Word() == QLatin1String("IDLE"); }, JobTime));
}

std::vector<cv::Mat> ExportWindow::Export() const
{
    const QString name = QStringLiteral("Export.mp4");
    StartExport(name);
    WaitForEnd();
    return TestVideo::ReadAllFrames(Directory.filePath(name));
}

QByteArray ExportWindow::Bytes(const QString& name) const
{
    QFile file(Directory.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
