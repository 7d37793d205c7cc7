// SPDX-License-Identifier: MIT
#include "player/captureprobe.h"

#include "support/testvideo.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QTimer>

namespace
{
/** Writes what an uncompressed .avi has before its first frame. @return whether it was written */
bool WriteWithoutFrames(const QString& path, const QString& clip)
{
    QFile whole(clip);
    QFile file(path);
    if (!whole.open(QIODevice::ReadOnly) || !file.open(QIODevice::WriteOnly))
    {
        return false;
    }
    const QByteArray bytes = whole.readAll();
    const QByteArray beforeFrames("movi");
    const int length = bytes.indexOf(beforeFrames) + beforeFrames.size();
    return length > beforeFrames.size() && file.write(bytes.left(length)) == length && file.flush();
}
}  // namespace

CaptureProbe::CaptureProbe()
{
    QObject::connect(&Capture, &PlayerCapture::frameReady, &Capture,
                     [this](const cv::Mat& frame, int index)
                     {
                         const QString shown = frame.empty()
                                                   ? QStringLiteral("nothing")
                                                   : QString::number(TestVideo::NumberOf(frame));
                         Events.append(QStringLiteral("frame %1 as %2").arg(shown).arg(index));
                     });
    QObject::connect(&Capture, &PlayerCapture::Position, &Capture,
                     [this](int frame)
                     { Events.append(QStringLiteral("position %1").arg(frame)); });
    QObject::connect(&Capture, &PlayerCapture::Ended, &Capture,
                     [this] { Events.append(QStringLiteral("ended")); });
}

int CaptureProbe::Open(const QString& path)
{
    QByteArray name = path.toLocal8Bit();
    return Capture.Open(name.data());
}

void CaptureProbe::Play(const QString& path, bool inStep)
{
    Open(path);
    Capture.Continue();
    if (inStep)
    {
        Capture.Goto(0);
    }
    Events.clear();
}

void CaptureProbe::Shoot(int count)
{
    for (int i = 0; i < count; ++i)
    {
        Capture.Timeout();
    }
}

QStringList CaptureProbe::Take()
{
    QStringList taken = Events;
    Events.clear();
    return taken;
}

QStringList CaptureProbe::TakeReports()
{
    QStringList reports;
    for (const QString& event : Take())
    {
        if (!event.startsWith(QLatin1String("frame")))
        {
            reports.append(event);
        }
    }
    return reports;
}

TimerWatch::TimerWatch()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool TimerWatch::eventFilter(QObject* receiver, QEvent* event)
{
    const auto* timer = qobject_cast<QTimer*>(receiver);
    if (timer != nullptr && event->type() == QEvent::Timer)
    {
        Intervals.append(timer->interval());
    }
    return false;
}

QStringList OneAhead(int frames)
{
    QStringList events;
    for (int i = 0; i < frames; ++i)
    {
        events.append(QStringLiteral("frame %1 as %2").arg(i + 1).arg(i));
    }
    return events;
}

CaptureClips::CaptureClips(const QString& home)
    : Ten(home + "/ten.avi"),
      Long(home + "/long.avi"),
      Short(home + "/short.avi"),
      More(home + "/more.avi"),
      Bare(home + "/bare.avi"),
      Missing(home + "/missing.avi")
{
    Valid = TestVideo::WriteNumberedClip(Ten, {64, 64, 10, 25.0}) &&
            TestVideo::WriteNumberedClip(Long, {64, 64, 130, 25.0}) &&
            TestVideo::WriteShortClip(Short, {64, 64, 6, 25.0}, 20) &&
            TestVideo::WriteShortClip(More, {64, 64, 10, 25.0}, 4) &&
            WriteWithoutFrames(Bare, Short);
}
