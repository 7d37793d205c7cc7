// SPDX-License-Identifier: MIT
#pragma once

#include "player/playercapture.h"

#include <QString>
#include <QStringList>
#include <QVector>

/** A capture, and all that it told since, in order: "frame 3 as 2", "position 2", "ended". */
struct CaptureProbe
{
    CaptureProbe();
    CaptureProbe(const CaptureProbe&) = delete;
    CaptureProbe& operator=(const CaptureProbe&) = delete;

    /** @return frames as the file tells them, 0 when it does not open */
    int Open(const QString& path);

    /**
     * Opens a clip and plays it, either in step, frame 0 as number 0, or as it is after Open.
     * Forgets the events so far.
     */
    void Play(const QString& path, bool inStep);

    /** Shots of the timer, one by one. */
    void Shoot(int count);

    QStringList Take();         ///< the events, and forgets them
    QStringList TakeReports();  ///< those that are no frames, and forgets all

    QStringList Events;  ///< outlives the capture, whose end is told too
    PlayerCapture Capture{nullptr};
};

/** Notes the interval of each QTimer that fires, in milliseconds. */
class TimerWatch : public QObject
{
public:
    TimerWatch();

    QVector<int> Intervals;

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;
};

/** Frames from 1 on, each under the number before its own, as a play from Open hands them on. */
[[nodiscard]] QStringList OneAhead(int frames);

/** The five clips of these tests, in folder @p home. @return false when one was not written */
struct CaptureClips
{
    explicit CaptureClips(const QString& home);

    QString Ten;         ///< 10 frames
    QString Long;        ///< 130 frames
    QString Short;       ///< 6 frames, tells of 20
    QString More;        ///< 10 frames, tells of 4
    QString Bare;        ///< opens, tells of 20 frames, has none
    QString Missing;     ///< does not exist
    bool Valid = false;  ///< all were written
};
