// SPDX-License-Identifier: MIT
#include "batch/pairjobs.h"

#include "batch/jobstate.h"
#include "batch/scriptedstabilizer.h"
#include "support/files.h"
#include "support/testvideo.h"

#include <QTest>

Pairs GrayPairs(const Pairs& numbers)
{
    Pairs levels;
    for (const auto& [first, second] : numbers)
    {
        levels.emplace_back(GrayOf(TestVideo::ColourOf(first)),
                            GrayOf(TestVideo::ColourOf(second)));
    }
    return levels;
}

void AddPairRows()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<Pairs>("pairs");
    QTest::addColumn<std::vector<int>>("lists");
    QTest::newRow("one frame is not followed at all") << 1 << Pairs{} << std::vector<int>{};
    QTest::newRow("two frames") << 2 << Pairs{{0, 1}, {1, 1}} << std::vector<int>{1, 1};
    QTest::newRow("three frames") << 3 << Pairs{{0, 1}, {1, 2}, {2, 2}}
                                  << std::vector<int>{1, 2, 2};
    QTest::newRow("four frames") << 4 << Pairs{{0, 1}, {1, 2}, {2, 3}, {3, 3}}
                                 << std::vector<int>{1, 2, 3, 3};
}

void AddProgressRows()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("20 frames: the last one is number 19") << 20 << QStringList();
    QTest::newRow("21 frames") << 21 << QStringList{"4 Frame: 20/21 -  Tracked points : 3"};
    QTest::newRow("45 frames") << 45
                               << QStringList{"4 Frame: 20/45 -  Tracked points : 3",
                                              "4 Frame: 40/45 -  Tracked points : 3"};
}

void AddAbortRows()
{
    QTest::addColumn<int>("requestAt");
    QTest::addColumn<bool>("isAborted");
    QTest::newRow("before the first pair") << 0 << true;
    QTest::newRow("during the first pair") << 1 << true;
    QTest::newRow("in the middle") << 2 << true;
    QTest::newRow("during the last pair but one") << 3 << true;
    QTest::newRow("during the last pair: too late") << 4 << false;
    QTest::newRow("during the last step: too late") << 5 << false;
}

void AddFailedWriteRows()
{
    QTest::addColumn<int>("result");
    QTest::newRow("no access") << 1;
    QTest::newRow("damaged") << -1;
    QTest::newRow("any other number") << 7;
}

void RequestStopAt(ScriptedStabilizer& object, int call)
{
    const auto request = [&object](bool now)
    { object.JobStatus = now ? int{JobAbortRequested} : object.JobStatus; };
    object.OnPrepare = [request, call] { request(call == 0); };
    object.OnTrack = [request, call](int now, const cv::Mat&, std::vector<cv::Point2f>&)
    { request(call == now); };
}

void WriteClipOfABrokenFrame(const QString& path)
{
    if (!TestVideo::WriteShortClip(path, {64, 64, 1, 25.0}, 3))
    {
        qFatal("No clip for the test");
    }
    // Header and the first bytes of the only frame.
    const QByteArray bytes = ReadBytes(path);
    WriteBytes(path, bytes.left(bytes.indexOf("movi") + 100));
}
