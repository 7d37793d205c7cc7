// SPDX-License-Identifier: MIT
#pragma once

#include "batch/videofile.h"

#include <QObject>
#include <QTimer>

#include <opencv2/core/mat.hpp>

#include <cstdint>

/**
 * The frame source of the preview: reads one frame of the video per timer shot and hands it on,
 * without a copy. Its connections are direct, so that a frame has been converted when frameReady
 * returns; a slow frame delays the next one, none is dropped here. User interface thread only.
 *
 * The number that goes with a frame: Open and a Goto in pause leave the video one frame ahead of
 * CurrentFrame. Deliberate: the first frame of the play that follows is the next one of the file
 * under the same number, and all later ones of that play are one ahead of their numbers.
 */
class PlayerCapture : public QObject
{
    Q_OBJECT

public:
    explicit PlayerCapture(QObject* parent);
    ~PlayerCapture() override;
    PlayerCapture(const PlayerCapture&) = delete;
    PlayerCapture& operator=(const PlayerCapture&) = delete;

    [[nodiscard]] bool IsPlaying() const { return Timer.isActive(); }
    [[nodiscard]] bool IsOpen() const { return Video.IsOpened(); }  ///< stays true after Stop
    [[nodiscard]] double GetFps() const { return Video.GetFps(); }  ///< 0.0 without a video

    // The order of signals and slots is part of the design.
signals:
    void Ended();                               ///< no frame is left; the receiver pauses
    void frameReady(cv::Mat frame, int index);  ///< 8-bit BGR; a later read overwrites it
    void Position(int FrameNr);  ///< at each change of the state, and every two seconds of play

public slots:
    /**
     * Opens a video and reads its first frame, which is not handed on; ends a running play.
     * @param filename  zero-terminated, 8-bit. @return frames as the file reports them; 0 when it
     *                  did not open
     */
    int Open(char* filename);

    void Redraw();  ///< in pause hands the last frame on once more
    void Pause();
    void Continue();  ///< plays on
    void Stop();      ///< ends the play and closes the video

    /** Moves to a frame, those below 0 count as 0; in pause the frame is read and handed on. */
    void Goto(int FrameNr);

    /** Sets the pace. @param FPS  frames per second; 0 gives 30 */
    void SetIntervall(int FPS);

    void Timeout();  ///< one shot of the timer: one frame

private:
    [[nodiscard]] bool ReadNext();
    void Report();

    // Field order is part of the design.
    cv::Mat Frame;  ///< the last one read
    VideoFile Video;
    QTimer Timer;                   ///< a late shot delays the next ones; none is made up for
    std::int32_t CurrentFrame = 0;  ///< number of the next frame to hand on
    std::int32_t FrameCount = 0;    ///< as the file reports it
    double IntervalMs;              ///< milliseconds per frame
    double PlayedMs = 0.0;          ///< milliseconds of video up to CurrentFrame, at the last shot
    double ReportedMs = 0.0;        ///< PlayedMs of the last Position
    cv::Mat Next;                   ///< buffer of the next read; a failed one empties it, not Frame
};
