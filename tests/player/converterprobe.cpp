// SPDX-License-Identifier: MIT
#include "player/converterprobe.h"

#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"

namespace
{
QString Told(const char* name, const QImage& image)
{
    return QStringLiteral("%1 %2x%3").arg(name).arg(image.width()).arg(image.height());
}
}  // namespace

ConverterProbe::ConverterProbe() : Converter(nullptr, &Proj.ExportSettings)
{
    ProgramHost.CreateStabilizer(PosRotStabilizer::Type, &Proj);
    Lines.Attach(ProgramHost.GetThread());
    Proj.ExportSettings = ::ExportSettings();
    Proj.ExportSettings.CropFactor = 1.1;
    QObject::connect(&Converter, &PlayerConverter::SrcImageReady, &Converter,
                     [this](const QImage& image)
                     {
                         Source = image.copy();
                         SourceBits.append(image.constBits());
                         Events += Lines.Take() + QStringList(Told("source", image));
                         OnSource();
                     });
    QObject::connect(&Converter, &PlayerConverter::ExpImageReady, &Converter,
                     [this](const QImage& image)
                     {
                         Stabilized = image.copy();
                         StabilizedBits.append(image.constBits());
                         Events += Lines.Take() + QStringList(Told("stabilized", image));
                     });
}

void ConverterProbe::Wake(MessageGuard& guard)
{
    guard.Expect(QtWarningMsg, QStringLiteral("QMutex: destroying locked mutex"));
    Converter.processFrame(SquareFrame(4, 4), 1);
}

QStringList ConverterProbe::Convert(const cv::Mat& frame, int index)
{
    Converter.processFrame(frame, index);
    return Take();
}

QStringList ConverterProbe::Take()
{
    QStringList taken = Events + Lines.Take();
    Events.clear();
    return taken;
}

void LayStillPath(int frames)
{
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation})
    {
        path->DetectedShakiness.fill(0.0, frames);
        path->ShakinessPath.fill(0.0, frames);
        path->Result.Correction.fill(0.0, frames);
    }
}

QRgb ColourAt(int x, int y)
{
    return qRgb(x % 250, y % 250, 100 + 10 * (x / 250) + y / 250);
}

cv::Mat SquareFrame(int width, int height, int scale)
{
    cv::Mat frame(height * scale, width * scale, CV_8UC3);
    for (int y = 0; y < frame.rows; ++y)
    {
        for (int x = 0; x < frame.cols; ++x)
        {
            const QRgb colour = ColourAt(x / scale, y / scale);
            frame.at<cv::Vec3b>(y, x) =
                cv::Vec3b(static_cast<uchar>(qBlue(colour)), static_cast<uchar>(qGreen(colour)),
                          static_cast<uchar>(qRed(colour)));
        }
    }
    return frame;
}

QString Difference(const QImage& actual, const QSize& size, const Painting& expected)
{
    if (actual.size() != size || actual.format() != QImage::Format_RGB888)
    {
        return QStringLiteral("%1x%2, format %3")
            .arg(actual.width())
            .arg(actual.height())
            .arg(actual.format());
    }
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
        {
            if (actual.pixel(x, y) != expected(x, y))
            {
                return QStringLiteral("%1 at (%2, %3), not %4")
                    .arg(actual.pixel(x, y), 0, 16)
                    .arg(x)
                    .arg(y)
                    .arg(expected(x, y), 0, 16);
            }
        }
    }
    return QString();
}
