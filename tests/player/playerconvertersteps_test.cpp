// SPDX-License-Identifier: MIT
#include "player/converterprobe.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <QElapsedTimer>
#include <QtTest>

#include <atomic>
#include <limits>
#include <memory>
#include <mutex>
#include <thread>

namespace
{
const TestHome Home;

const QStringList Both{"source 40x30", "stabilized 36x26"};

}  // namespace

/** Which frames the preview converts, and when it reads the settings anew. */
class PlayerConverterStepsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void FirstFrameIsDropped_data();
    void FirstFrameIsDropped();
    void EmptyFramesAreNoFrames();
    void EachFrameWaits();
    void ConvertsInLine();
    void NothingBeforeAPath_data();
    void NothingBeforeAPath();
    void VerticalPathIsNotAskedFor();
    void PathTooShortForTheFrame_data();
    void PathTooShortForTheFrame();
    void WithoutPathTheCropIsStillTried();
    void PathOfALaterCalculation();
    void WaitsForACalculation();
    void CalculationsAreSeenWhole();
    void ReceiversAreOutsideTheLock();
    void SettingsAreReadAnew_data();
    void SettingsAreReadAnew();
    void NewDataCountsOnce_data();
    void NewDataCountsOnce();
    void ZoomShowsWithTheNextFrame();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void PlayerConverterStepsTest::FirstFrameIsDropped_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("frame 0") << 0;
    QTest::newRow("another frame") << 3;
}

void PlayerConverterStepsTest::FirstFrameIsDropped()
{
    QFETCH(int, index);
    ConverterProbe probe;
    LayStillPath(5);
    Guard->Expect(QtWarningMsg, "QMutex: destroying locked mutex");
    QCOMPARE(probe.Convert(SquareFrame(40, 30), index), QStringList());
    QCOMPARE(probe.Convert(SquareFrame(40, 30), index), Both);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), index), Both);
}

void PlayerConverterStepsTest::EmptyFramesAreNoFrames()
{
    {
        ConverterProbe probe;  // its gate stays open: nothing is complained of
        LayStillPath(5);
        QCOMPARE(probe.Convert(cv::Mat(), 0), QStringList());
        QCOMPARE(probe.Convert(cv::Mat(), 1), QStringList());
    }
    ConverterProbe probe;
    LayStillPath(5);
    QCOMPARE(probe.Convert(cv::Mat(), 0), QStringList());
    probe.Wake(*Guard);
    QCOMPARE(probe.Take(), QStringList());  // still the first one
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 1), Both);
    QCOMPARE(probe.Convert(cv::Mat(), 2), QStringList());
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 3), Both);
}

void PlayerConverterStepsTest::EachFrameWaits()
{
    ConverterProbe probe;
    probe.Wake(*Guard);
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < 20; ++i)
    {
        probe.Convert(SquareFrame(4, 4), 1);
    }
    QVERIFY2(time.elapsed() >= 180, qPrintable(QString::number(time.elapsed())));  // 10 ms each
}

void PlayerConverterStepsTest::ConvertsInLine()
{
    // The crop is tried first, then comes the source, in its final colours, then the other picture.
    ConverterProbe probe;
    LayStillPath(5);
    probe.Proj.ExportSettings.CropFactor = 1.0;
    probe.Wake(*Guard);
    QString atSource("no source");
    probe.OnSource = [&] { atSource = Difference(probe.Source, {40, 30}); };
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 1),
             QStringList({"3 Offset vertical=0 exceeds limits with higher value 30", "source 40x30",
                          "stabilized 40x30"}));
    QCOMPARE(atSource, QString());
    QCoreApplication::processEvents();
    QCOMPARE(probe.Take(), QStringList());
}

void PlayerConverterStepsTest::NothingBeforeAPath_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<bool>("clearHorizontal");
    QTest::addColumn<bool>("clearRotation");
    QTest::newRow("no path at all") << 0 << false << false;
    QTest::newRow("a path of 4 frames is none") << 4 << false << false;
    QTest::newRow("no horizontal path") << 5 << true << false;
    QTest::newRow("no path of the rotation") << 5 << false << true;
}

void PlayerConverterStepsTest::NothingBeforeAPath()
{
    QFETCH(bool, clearHorizontal);
    QFETCH(bool, clearRotation);
    QFETCH(int, frames);
    ConverterProbe probe;
    LayStillPath(frames);
    if (clearHorizontal)
    {
        PathHorizontal.Clear();
    }
    if (clearRotation)
    {
        PathRotation.Clear();
    }
    probe.Wake(*Guard);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 0), QStringList{"source 40x30"});
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 1), QStringList{"source 40x30"});
    QCOMPARE(Difference(probe.Source, {40, 30}), QString());
}

void PlayerConverterStepsTest::VerticalPathIsNotAskedFor()
{
    ConverterProbe probe;
    LayStillPath(5);
    PathVertical.Result.Correction[1] = 6.0;
    PathVertical.Clear();  // not complete, and followed all the same
    probe.Proj.ExportSettings.CropFactor = 1.0;
    probe.Wake(*Guard);
    probe.Convert(SquareFrame(40, 30), 1);
    QCOMPARE(Difference(probe.Stabilized, {40, 30},
                        [](int x, int y) { return y < 3 ? qRgb(0, 0, 0) : ColourAt(x, y - 3); }),
             QString());
}

void PlayerConverterStepsTest::PathTooShortForTheFrame_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("pictures");
    QTest::newRow("last frame of the path") << 4 << Both;
    QTest::newRow("the frame behind it") << 5 << QStringList{"source 40x30"};
    QTest::newRow("far behind it") << 1000000 << QStringList{"source 40x30"};
    QTest::newRow("the largest number there is")
        << std::numeric_limits<int>::max() << QStringList{"source 40x30"};
}

void PlayerConverterStepsTest::PathTooShortForTheFrame()
{
    QFETCH(int, index);
    for (CameraPath* shortPath : {&PathHorizontal, &PathVertical, &PathRotation})
    {
        ConverterProbe probe;
        LayStillPath(5);
        for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation})
        {
            path->Result.Correction.resize(path == shortPath ? 5 : 8);
        }
        probe.Wake(*Guard);
        QTEST(probe.Convert(SquareFrame(40, 30), index), "pictures");
    }
}

void PlayerConverterStepsTest::WithoutPathTheCropIsStillTried()
{
    ConverterProbe probe;
    probe.Proj.ExportSettings.CropFactor = 1.0;
    probe.Wake(*Guard);
    const QStringList expected{"3 Offset vertical=0 exceeds limits with higher value 30",
                               "source 40x30"};
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 1), expected);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 2), expected);
}

void PlayerConverterStepsTest::PathOfALaterCalculation()
{
    ConverterProbe probe;
    probe.Wake(*Guard);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 1), QStringList{"source 40x30"});
    LayStillPath(5);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 2), Both);
    PathHorizontal.Result.Correction[3] = 10.0;
    probe.Convert(SquareFrame(40, 30), 3);
    QCOMPARE(
        Difference(probe.Stabilized, {36, 26},
                   [](int x, int y) { return x < 3 ? qRgb(0, 0, 0) : ColourAt(x - 3, y + 2); }),
        QString());
    PathRotation.Clear();
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 4), QStringList{"source 40x30"});
}

void PlayerConverterStepsTest::WaitsForACalculation()
{
    // The other thread has the lock while the source is sent, and lays the path before it ends.
    ConverterProbe probe;
    probe.Wake(*Guard);
    QSemaphore locked;
    QSemaphore sent;
    std::thread calculation(
        [&]
        {
            const std::lock_guard<std::recursive_mutex> lock(EngineLock);
            locked.release();
            sent.tryAcquire(1, 5000);  // milliseconds, should no source come
            LayStillPath(5);
        });
    locked.acquire();
    probe.OnSource = [&] { sent.release(); };
    const QStringList events = probe.Convert(SquareFrame(40, 30), 1);
    sent.release();
    calculation.join();
    QCOMPARE(events, Both);
}

void PlayerConverterStepsTest::CalculationsAreSeenWhole()
{
    // The other thread calculates again and again; in the midst of it there is no path.
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    std::atomic<bool> isOver{false};
    std::thread calculation(
        [&isOver]
        {
            while (!isOver)
            {
                {
                    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
                    LayStillPath(0);
                    QThread::usleep(1000);
                    LayStillPath(5);
                }
                QThread::usleep(50);
            }
        });
    QStringList events;
    for (int index = 0; index < 30; ++index)
    {
        events += probe.Convert(SquareFrame(40, 30), index % 5);
    }
    isOver = true;
    calculation.join();
    QCOMPARE(events.count(Both.at(0)), 30);
    QCOMPARE(events.count(Both.at(1)), 30);
}

void PlayerConverterStepsTest::ReceiversAreOutsideTheLock()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    int locks = 0;
    connect(&probe.Converter, &PlayerConverter::ExpImageReady, &probe.Converter,
            [&]
            {
                std::thread other(
                    [&]
                    {
                        if (EngineLock.try_lock())
                        {
                            ++locks;
                            EngineLock.unlock();
                        }
                    });
                other.join();
            });
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 1), Both);
    QCOMPARE(locks, 1);
}

void PlayerConverterStepsTest::SettingsAreReadAnew_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("not by the next frame") << "none" << false;
    QTest::newRow("not by a change of the crop") << "crop" << false;
    QTest::newRow("by new stabilization data") << "data" << true;
    QTest::newRow("by the same zoom") << "zoom" << true;
    QTest::newRow("by frame 0") << "frame 0" << true;
    QTest::newRow("by a frame without a path") << "no path" << true;
}

void PlayerConverterStepsTest::SettingsAreReadAnew()
{
    QFETCH(QString, event);
    QFETCH(bool, isRead);
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    const cv::Mat frame = SquareFrame(40, 30);
    QCOMPARE(probe.Convert(frame, 1), Both);
    probe.Proj.ExportSettings.CropFactor = 2.0;
    probe.Proj.ExportSettings.ExpOffH = 6;
    if (event == "crop")
    {
        probe.Converter.SetCrop(false);
        probe.Converter.SetCrop(true);
    }
    else if (event == "data")
    {
        probe.Converter.NewStabilizationData();
    }
    else if (event == "zoom")
    {
        probe.Converter.SetZoom(0.5);
    }
    else if (event == "no path")
    {
        QCOMPARE(probe.Convert(frame, 7), QStringList{"source 40x30"});
    }
    QCOMPARE(probe.Take(), QStringList());  // nothing happens until the next frame
    probe.Convert(frame, event == "frame 0" ? 0 : 2);
    const QRect crop = isRead ? QRect(13, 8, 20, 14) : QRect(2, 2, 36, 26);
    QCOMPARE(Difference(probe.Stabilized, crop.size(),
                        [&](int x, int y) { return ColourAt(x + crop.x(), y + crop.y()); }),
             QString());
}

void PlayerConverterStepsTest::NewDataCountsOnce_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("for one frame") << 2;
    QTest::newRow("frame 0 uses it up") << 0;
}

void PlayerConverterStepsTest::NewDataCountsOnce()
{
    QFETCH(int, index);
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    probe.Converter.NewStabilizationData();
    QCOMPARE(probe.Convert(SquareFrame(40, 30), index), Both);
    probe.Proj.ExportSettings.CropFactor = 2.0;
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 3), Both);
}

void PlayerConverterStepsTest::ZoomShowsWithTheNextFrame()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    const cv::Mat frame = SquareFrame(20, 15, 4);
    QCOMPARE(probe.Convert(frame, 1), Both);
    probe.Converter.SetZoom(0.25);
    QCOMPARE(probe.Take(), QStringList());
    // 20 / 1.1 is 18.2 and 15 / 1.1 is 13.6, made even 12.
    QCOMPARE(probe.Convert(frame, 2), QStringList({"source 20x15", "stabilized 18x12"}));
    QCOMPARE(Difference(probe.Source, {20, 15}), QString());
    probe.Converter.SetZoom(0.5);
    QCOMPARE(probe.Convert(frame, 3), Both);
}

QTEST_MAIN(PlayerConverterStepsTest)
#include "playerconvertersteps_test.moc"
