// SPDX-License-Identifier: MIT
#include "player/converterprobe.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <QTimerEvent>
#include <QtTest>

#include <memory>

namespace
{
const TestHome Home;

const QStringList Both{"source 40x30", "stabilized 36x26"};
const QString Dropped = QStringLiteral("5 Converter dropped frame!");  // 5: in the label alone

/** Counts the timer events of one object. */
class TimerCount : public QObject
{
public:
    explicit TimerCount(QObject* object) { object->installEventFilter(this); }

    int Count = 0;

protected:
    bool eventFilter(QObject* /*receiver*/, QEvent* event) override
    {
        Count += event->type() == QEvent::Timer ? 1 : 0;
        return false;
    }
};

/** Lets the event loop turn until nothing is left to do, and a few times more. */
void TurnEventLoop()
{
    for (int i = 0; i < 20; ++i)
    {
        QCoreApplication::processEvents();
    }
}

/** All pictures lay in one place in memory. */
bool IsOnePlace(const QVector<const uchar*>& bits)
{
    return !bits.isEmpty() && bits.constFirst() != nullptr &&
           bits.count(bits.constFirst()) == bits.size();
}
}  // namespace

/** The frames that wait for the event loop, and the memory of the pictures. */
class PlayerConverterQueueTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void QueueConvertsTheNewestOnly();
    void QueueGoesOn();
    void QueueDropsTheFirstFrameToo();
    void QueueHoldsNoFrameBack();
    void EmptyFrameInTheQueue();
    void OtherTimersAreIgnored();
    void BuffersStayWhileTheSizeStays();
    void BuffersStayWithARefusedCrop();
    void BuffersFollowTheVideo();
    void NextFrameOverwritesThePicture();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void PlayerConverterQueueTest::QueueConvertsTheNewestOnly()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Proj.ExportSettings.CropFactor = 1.0;
    PathHorizontal.Result.Correction = {0.0, 2.0, 4.0, 6.0, 8.0};
    probe.Wake(*Guard);
    probe.Converter.setProperty("processAll", false);
    QCOMPARE(probe.Convert(cv::Mat(60, 80, CV_8UC3, cv::Scalar::all(7)), 1), QStringList{Dropped});
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 3), QStringList{Dropped});
    TurnEventLoop();
    QCOMPARE(probe.Take(), QStringList({"3 Offset vertical=0 exceeds limits with higher value 30",
                                        "source 40x30", "stabilized 40x30"}));
    QCOMPARE(Difference(probe.Source, {40, 30}), QString());
    QCOMPARE(Difference(probe.Stabilized, {40, 30},
                        [](int x, int y) { return x < 3 ? qRgb(0, 0, 0) : ColourAt(x - 3, y); }),
             QString());
}

void PlayerConverterQueueTest::QueueGoesOn()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    probe.Converter.setProperty("processAll", false);
    for (int index = 1; index < 4; ++index)
    {
        QCOMPARE(probe.Convert(SquareFrame(40, 30), index), QStringList{Dropped});
        TurnEventLoop();
        QCOMPARE(probe.Take(), Both);
    }
    probe.Converter.setProperty("processAll", true);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 4), Both);
}

void PlayerConverterQueueTest::QueueDropsTheFirstFrameToo()
{
    ConverterProbe probe;
    probe.Converter.setProperty("processAll", false);
    probe.Wake(*Guard);
    TurnEventLoop();
    QCOMPARE(probe.Take(), QStringList{Dropped});
    probe.Converter.processFrame(SquareFrame(40, 30), 1);
    TurnEventLoop();
    QCOMPARE(probe.Take(), QStringList({Dropped, "source 40x30"}));
}

void PlayerConverterQueueTest::QueueHoldsNoFrameBack()
{
    ConverterProbe probe;
    probe.Wake(*Guard);
    probe.Converter.setProperty("processAll", false);
    const TimerCount timers(&probe.Converter);
    const cv::Mat frame = SquareFrame(40, 30);
    probe.Converter.processFrame(frame, 1);
    QCOMPARE(frame.u->refcount, 2);
    TurnEventLoop();
    QCOMPARE(timers.Count, 1);  // stopped by its first shot
    QCOMPARE(frame.u->refcount, 1);
}

void PlayerConverterQueueTest::EmptyFrameInTheQueue()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    probe.Converter.setProperty("processAll", false);
    QCOMPARE(probe.Convert(cv::Mat(), 1), QStringList());  // no line for it
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 2), QStringList{Dropped});
    TurnEventLoop();
    QCOMPARE(probe.Take(), Both);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 2), QStringList{Dropped});
    QCOMPARE(probe.Convert(cv::Mat(), 1), QStringList());  // takes the place of the one before
    TurnEventLoop();
    QCOMPARE(probe.Take(), QStringList());
}

void PlayerConverterQueueTest::OtherTimersAreIgnored()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    probe.Converter.setProperty("processAll", false);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 1), QStringList{Dropped});
    QTimerEvent other(1000000);
    QCoreApplication::sendEvent(&probe.Converter, &other);
    QCOMPARE(probe.Take(), QStringList());
    TurnEventLoop();
    QCOMPARE(probe.Take(), Both);
}

void PlayerConverterQueueTest::BuffersStayWhileTheSizeStays()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    const cv::Mat frame = SquareFrame(40, 30);
    for (const bool cut : {true, false})
    {
        probe.StabilizedBits.clear();
        probe.Converter.SetCrop(cut);
        for (int round = 0; round < 3; ++round)
        {
            probe.Convert(frame, 0);
            probe.Convert(frame, 1);
            probe.Converter.NewStabilizationData();
            probe.Convert(frame, 2);
            probe.Converter.SetZoom(0.5);
            probe.Convert(frame, 3);
        }
        QCOMPARE(probe.StabilizedBits.size(), 12);
        QVERIFY(IsOnePlace(probe.StabilizedBits));
    }
    QCOMPARE(probe.SourceBits.size(), 24);
    QVERIFY(IsOnePlace(probe.SourceBits));
}

void PlayerConverterQueueTest::BuffersStayWithARefusedCrop()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Proj.ExportSettings.CropFactor = 1.0;
    probe.Wake(*Guard);
    for (int index = 1; index < 5; ++index)
    {
        probe.Convert(SquareFrame(40, 30), index);
    }
    QVERIFY(IsOnePlace(probe.SourceBits));
    QVERIFY(IsOnePlace(probe.StabilizedBits));
}

void PlayerConverterQueueTest::BuffersFollowTheVideo()
{
    // First the height changes alone, then the width: the next video starts with its frame 0.
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    for (const QSize& size : {QSize(40, 30), QSize(40, 20), QSize(30, 20)})
    {
        // Divided by 1.1 and made even: 36, 36, 26 by 26, 18, 18. The crop starts 2 pixels in,
        // 1 row down where 20 rows leave 18.
        const QSize crop(size.width() == 40 ? 36 : 26, size.height() == 30 ? 26 : 18);
        const int top = size.height() == 30 ? 2 : 1;
        probe.Convert(SquareFrame(size.width(), size.height()), 0);
        QCOMPARE(Difference(probe.Source, size), QString());
        QCOMPARE(Difference(probe.Stabilized, crop,
                            [&](int x, int y) { return ColourAt(x + 2, y + top); }),
                 QString());
    }
}

void PlayerConverterQueueTest::NextFrameOverwritesThePicture()
{
    // A receiver that keeps a picture without a copy sees the next one in it.
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    QImage source;
    QImage stabilized;
    const auto keep = [](QImage& kept, const QImage& image)
    { kept = kept.isNull() ? image : kept; };
    connect(&probe.Converter, &PlayerConverter::SrcImageReady, &probe.Converter,
            [&](const QImage& image) { keep(source, image); });
    connect(&probe.Converter, &PlayerConverter::ExpImageReady, &probe.Converter,
            [&](const QImage& image) { keep(stabilized, image); });
    probe.Convert(cv::Mat(60, 80, CV_8UC3, cv::Scalar::all(7)), 1);
    QCOMPARE(source.pixel(9, 9), qRgb(7, 7, 7));
    QCOMPARE(stabilized.pixel(9, 9), qRgb(7, 7, 7));
    probe.Convert(SquareFrame(40, 30), 2);
    QCOMPARE(source.pixel(9, 9), ColourAt(9, 9));
    QCOMPARE(stabilized.pixel(9, 9), ColourAt(11, 11));
}

QTEST_MAIN(PlayerConverterQueueTest)
#include "playerconverterqueue_test.moc"
