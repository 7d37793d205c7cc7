// SPDX-License-Identifier: MIT
#include "player/playerconverter.h"

#include "batch/exportsettings.h"
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/truncation.h"

#include <opencv2/imgproc.hpp>

#include <QTimerEvent>

#include <mutex>

namespace
{
constexpr int GateMs = 10;                              ///< milliseconds that each frame waits
const cv::Scalar CropColour(120.0, 255.0, 120.0, 0.0);  ///< red, green, blue

/** Makes @p image of that size, unless it has it. @return a header over its bits, if it has any */
cv::Mat Fit(QImage& image, int width, int height)
{
    if (image.width() != width || image.height() != height)
    {
        image = QImage(width, height, QImage::Format_RGB888);
    }
    return image.isNull() ? cv::Mat()
                          : cv::Mat(height, width, CV_8UC3, image.bits(),
                                    static_cast<std::size_t>(image.bytesPerLine()));
}
}  // namespace

PlayerConverter::PlayerConverter(QObject* parent, ExportSettings* settings)
    : QObject(parent), Export(settings)
{}

void PlayerConverter::processFrame(cv::Mat frame, int index)
{
    if (processAll)
    {
        Process(frame, index);
    }
    else
    {
        Queue(frame, index);
    }
}

void PlayerConverter::SetZoom(double f)
{
    Zoom = f;
    Crop.Reset();
}

void PlayerConverter::SetCrop(bool Enable)
{
    ShowCrop = Enable;
}

void PlayerConverter::NewStabilizationData()
{
    NewData = true;
}

void PlayerConverter::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == QueueTimer.timerId())
    {
        Process(PendingFrame, PendingIndex);
        PendingFrame.release();
        QueueTimer.stop();
    }
}

void PlayerConverter::Process(const cv::Mat& frame, int index)
{
    if (frame.empty() || Gate.tryLock(GateMs))
    {
        return;
    }
    if (index == 0 || NewData)
    {
        Crop.Reset();
        NewData = false;
    }
    if (!Crop.Valid)
    {
        PrepareBuffers(frame);
    }
    if (SrcMat.empty() || ExpMat.empty())
    {
        return;  // zoomed to nothing, or beyond all memory
    }
    cv::resize(frame, SrcMat, SrcMat.size(), 0, 0, cv::INTER_AREA);
    cv::cvtColor(SrcMat, SrcMat, cv::COLOR_BGR2RGB, 0);
    emit SrcImageReady(SrcImage);
    if (Stabilized(index))
    {
        SendStabilized();
    }
    else
    {
        Crop.Reset();
    }
}

/**
 * Deliberate: the line comes with each frame, as the one that comes in is asked for and not the one
 * that waits.
 */
void PlayerConverter::Queue(const cv::Mat& frame, int index)
{
    if (!frame.empty())
    {
        ProgramHost.Log(LogTrace, "Converter dropped frame!");
    }
    PendingFrame = frame;
    PendingIndex = index;
    if (!QueueTimer.isActive())
    {
        QueueTimer.start(0, this);
    }
}

/** Images and crop for the present zoom and settings. A crop that leaves the frame is logged. */
void PlayerConverter::PrepareBuffers(const cv::Mat& frame)
{
    const int width = TruncateToInt32(frame.cols * Zoom);
    const int height = TruncateToInt32(frame.rows * Zoom);
    SrcMat = Fit(SrcImage, width, height);
    ::ExportSettings scaled = *Export;
    scaled.ExpOffH = TruncateToInt32(scaled.ExpOffH * Zoom);
    scaled.ExpOffV = TruncateToInt32(scaled.ExpOffV * Zoom);
    const bool isInside = Crop.Calculate(scaled, height, width) == ResultOk;
    ExpMat = Fit(ExpImage, width, height);
    if (isInside)  // the size of any other may be beyond all memory
    {
        CropMat = Fit(CropImage, Crop.CropWidth, Crop.CropHeight);
        RoiMat = cv::Mat(Crop.CropHeight, Crop.CropWidth, CV_8UC3);
    }
}

/**
 * Warps the source picture onto the path, into ExpMat. Under the engine lock: an export on the
 * worker may calculate the path meanwhile. @return false while there is no path for the frame
 */
bool PlayerConverter::Stabilized(int index)
{
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    if (!PathHorizontal.HasValidData() || !PathRotation.HasValidData() || index < 0 ||
        !HasCorrections(std::int64_t{index} + 1))
    {
        return false;
    }
    ProgramHost.WarpFrameScaled(SrcMat, ExpMat, index, Zoom);
    return true;
}

void PlayerConverter::SendStabilized()
{
    if (!Crop.Valid)
    {
        emit ExpImageReady(ExpImage);
        return;
    }
    if (!ShowCrop)
    {
        cv::rectangle(ExpMat, cv::Point(Crop.Left, Crop.Top), cv::Point(Crop.Right, Crop.Bottom),
                      CropColour, 1, cv::LINE_8, 0);
        emit ExpImageReady(ExpImage);
        return;
    }
    RoiMat = ExpMat(cv::Range(Crop.Top, Crop.Bottom), cv::Range(Crop.Left, Crop.Right));
    RoiMat.copyTo(CropMat);
    emit ExpImageReady(CropImage);
}
