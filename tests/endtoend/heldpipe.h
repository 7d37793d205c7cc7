// SPDX-License-Identifier: MIT
#pragma once

#include "batch/jobstate.h"
#include "batch/stabilizerhost.h"

#include <QElapsedTimer>
#include <QFile>
#include <QString>

#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/** A pipe in the place of a file: who reads it waits until the other end is let go. */
class HeldPipe
{
public:
    explicit HeldPipe(const QString& path) : Path(QFile::encodeName(path))
    {
        if (::mkfifo(Path.constData(), S_IRUSR | S_IWUSR) != 0)
        {
            qFatal("No pipe for the test");
        }
    }
    ~HeldPipe()
    {
        if (Feeder.joinable())
        {
            Feeder.join();
        }
    }
    HeldPipe(const HeldPipe&) = delete;
    HeldPipe& operator=(const HeldPipe&) = delete;

    /** Whether somebody reads by now; from then on they wait. */
    [[nodiscard]] bool HasReader()
    {
        End = End >= 0 ? End : ::open(Path.constData(), O_WRONLY | O_NONBLOCK);
        return End >= 0;
    }

    /** Lets go, and the file ends early, as soon as the job's state has been taken back. */
    void EndWithTheJob()
    {
        Feeder = std::thread(
            [end = End]
            {
                QElapsedTimer clock;
                clock.start();
                while (IsJob(ProgramHost.GetState()) && clock.elapsed() < Patience)
                {
                    std::this_thread::sleep_for(std::chrono::milliseconds(1));
                }
                ::close(end);
            });
    }

private:
    static constexpr int Patience = 50000;  ///< milliseconds; ends a test that would hang

    QByteArray Path;
    int End = -1;
    std::thread Feeder;
};
