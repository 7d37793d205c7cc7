// SPDX-License-Identifier: MIT
#include "player/playercapture.h"

#include "batch/resultcodes.h"
#include "stabilizer/truncation.h"

#include <algorithm>
#include <cstdint>

namespace
{
constexpr double MsPerSecond = 1000.0;
constexpr double DefaultInterval = 33.333333333333336;  ///< milliseconds, of 30 frames per second
constexpr double ReportEvery = 2000.0;                  ///< milliseconds of played video
}  // namespace

PlayerCapture::PlayerCapture(QObject* parent) : QObject(parent), IntervalMs(DefaultInterval)
{
    Timer.setTimerType(Qt::PreciseTimer);  // a coarse one may miss the pace by a twentieth
    Timer.setInterval(TruncateToInt32(IntervalMs));
    connect(&Timer, &QTimer::timeout, this, &PlayerCapture::Timeout);
}

PlayerCapture::~PlayerCapture()
{
    Stop();
}

/** Into Frame, which stays as it is when no frame comes. */
bool PlayerCapture::ReadNext()
{
    if (Video.ReadFrame(Next) != ResultOk)
    {
        return false;
    }
    cv::swap(Frame, Next);
    return true;
}

void PlayerCapture::Report()
{
    ReportedMs = PlayedMs;
    emit Position(CurrentFrame);
}

int PlayerCapture::Open(char* filename)
{
    const int result = Video.Open(filename);
    Timer.stop();
    if (result != ResultOk)
    {
        return 0;
    }
    FrameCount = Video.GetFrameCount();
    CurrentFrame = 0;
    PlayedMs = 0.0;
    ReportedMs = 0.0;
    if (!ReadNext())
    {
        Frame.release();  // a video without frames ends at its first shot; no picture of the last
                          // one
    }
    Report();
    return FrameCount;
}

void PlayerCapture::Redraw()
{
    if (!IsPlaying() && IsOpen())
    {
        emit frameReady(Frame, CurrentFrame);
    }
}

void PlayerCapture::Pause()
{
    Timer.stop();
    Report();
}

void PlayerCapture::Continue()
{
    Timer.start(TruncateToInt32(IntervalMs));
    Report();
}

void PlayerCapture::Stop()
{
    Timer.stop();
    Video.Close();
    CurrentFrame = 0;
    Report();
}

void PlayerCapture::Goto(int FrameNr)
{
    const int frame = std::max(FrameNr, 0);
    if (Video.SeekFrame(frame) != ResultOk)
    {
        return;
    }
    CurrentFrame = frame;
    if (!IsPlaying())
    {
        static_cast<void>(ReadNext());  // without a new frame the old one shows
        emit frameReady(Frame, CurrentFrame);
    }
    Report();
}

void PlayerCapture::SetIntervall(int FPS)
{
    IntervalMs = FPS == 0 ? DefaultInterval : MsPerSecond / FPS;
    Timer.setInterval(TruncateToInt32(IntervalMs));
}

void PlayerCapture::Timeout()
{
    if (!ReadNext())
    {
        Timer.stop();
        emit Ended();
        return;
    }
    emit frameReady(Frame, CurrentFrame);
    // Spin boxes, slider and markers move every two seconds, not with every frame.
    const double threshold = ReportedMs + ReportEvery;
    CurrentFrame = SaturateToInt32(std::int64_t{CurrentFrame} + 1);
    PlayedMs = CurrentFrame * IntervalMs;
    if (PlayedMs >= threshold)
    {
        Report();
    }
    if (CurrentFrame >= FrameCount)
    {
        Report();
        emit Ended();
    }
}
