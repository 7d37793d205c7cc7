// SPDX-License-Identifier: MIT
#include "batch/videofile.h"
#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "support/files.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <opencv2/core.hpp>
#include <opencv2/videoio.hpp>

#include <QFile>
#include <QtTest>

#include <memory>

namespace
{
constexpr TestVideo::Format Small{160, 120, 6, 25.0};

/** A folder with a numbered clip of that format as source.avi. */
struct ClipSetup : BatchSetup
{
    explicit ClipSetup(const TestVideo::Format& format = Small)
        : Source(Path("source.avi").toLocal8Bit()), Output(Path("export.mp4").toLocal8Bit())
    {
        if (!TestVideo::WriteNumberedClip(Path("source.avi"), format))
        {
            qFatal("No clip for the test");
        }
    }

    QByteArray Source;
    QByteArray Output;
};

/** The number that the next frame of @p video shows; -2 when none came. */
int NextNumber(VideoFile& video)
{
    cv::Mat frame;
    return video.ReadFrame(frame) == 0 ? TestVideo::NumberOf(frame) : -2;
}
}  // namespace

/** Reading a source and writing an export. */
class VideoFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void StartValues();
    void OpenTellsTheFacts_data();
    void OpenTellsTheFacts();
    void OpenFails_data();
    void OpenFails();
    void FailureLineIsCut();
    void FailureKeepsTheFactsBefore();
    void ReadsAllFramesThenNone();
    void OpenStartsAnew();
    void Seek();
    void OpenedStaysAfterClose();
    void NoOutputWithoutAsking();
    void ReservedModeRefusesFrames();
    void FailedOpenForExportChangesNothing();
    void WritesWhatTheFirstFrameSays_data();
    void WritesWhatTheFirstFrameSays();
    void OutputOpensWithTheFirstFrame();
    void FramesOfAnotherSizePass();
    void OutputCannotBeOpened_data();
    void OutputCannotBeOpened();
    void CloseWithoutSourceLeavesTheMode();
    void CopyOfAClip();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void VideoFileTest::StartValues()
{
    BatchSetup setup;
    VideoFile video;
    cv::Mat frame(120, 160, CV_8UC3, cv::Scalar(0));
    QVERIFY(!video.IsOpened());
    QCOMPARE(video.GetFrameCount(), 0);
    QCOMPARE(video.GetWidth(), 0);
    QCOMPARE(video.GetHeight(), 0);
    QCOMPARE(video.GetFps(), 0.0);
    QCOMPARE(video.Close(), 0);
    QCOMPARE(video.ReadFrame(frame), -1);
    QCOMPARE(video.SeekFrame(0), -1);
    QCOMPARE(video.WriteFrame(cv::Mat(120, 160, CV_8UC3, cv::Scalar(0))), -1);
    QVERIFY(!video.IsOpened());
    QCOMPARE(setup.Lines.All(), QStringList());
}

void VideoFileTest::OpenTellsTheFacts_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("frames");
    QTest::addColumn<double>("fps");
    QTest::addColumn<QString>("line");
    QTest::newRow("whole rate") << 160 << 120 << 6 << 25.0
                                << "1 Input: Frames= 6 h=160 v=120 fps=25";
    QTest::newRow("two digits") << 64 << 128 << 3 << 29.97
                                << "1 Input: Frames= 3 h=64 v=128 fps=29.97";
    QTest::newRow("three digits") << 64 << 64 << 2 << 23.976
                                  << "1 Input: Frames= 2 h=64 v=64 fps=23.976";
    QTest::newRow("six digits in all")
        << 64 << 64 << 2 << 119.881 << "1 Input: Frames= 2 h=64 v=64 fps=119.881";
    QTest::newRow("odd size") << 161 << 121 << 2 << 25.0 << "1 Input: Frames= 2 h=161 v=121 fps=25";
    QTest::newRow("one frame") << 64 << 64 << 1 << 50.0 << "1 Input: Frames= 1 h=64 v=64 fps=50";
}

void VideoFileTest::OpenTellsTheFacts()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, frames);
    QFETCH(double, fps);
    QFETCH(QString, line);
    ClipSetup setup({width, height, frames, fps});
    VideoFile video;
    QCOMPARE(video.Open(setup.Source), 0);
    QCOMPARE(setup.Lines.All(), QStringList({line}));
    QCOMPARE(video.GetWidth(), width);
    QCOMPARE(video.GetHeight(), height);
    QCOMPARE(video.GetFrameCount(), frames);
    QVERIFY2(std::abs(video.GetFps() - fps) < 1e-9, qPrintable(QString::number(video.GetFps())));
    QVERIFY(video.IsOpened());
}

void VideoFileTest::OpenFails_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such file") << "missing.avi";
    QTest::newRow("no video") << "text.avi";
    QTest::newRow("empty file") << "empty.avi";
    QTest::newRow("a folder") << "";
}

void VideoFileTest::OpenFails()
{
    QFETCH(QString, name);
    BatchSetup setup;
    WriteBytes(setup.Path("text.avi"), "this is no video\n");
    WriteBytes(setup.Path("empty.avi"), "");
    VideoFile video;
    const QByteArray path = setup.Folder.filePath(name).toLocal8Bit();
    QCOMPARE(video.Open(path), 1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Open " + QString(path) + " failed!"}));
    QVERIFY(!video.IsOpened());
    QCOMPARE(video.GetFps(), 0.0);
}

void VideoFileTest::FailureLineIsCut()
{
    BatchSetup setup;
    VideoFile video;
    const QByteArray path = "/nowhere/" + QByteArray(150, 'x') + ".avi";
    QCOMPARE(video.Open(path), 1);
    // "Open " and 74 characters of the path: 79 in all.
    QCOMPARE(setup.Lines.All(), QStringList({"3 Open /nowhere/" + QString(65, 'x')}));
}

void VideoFileTest::FailureKeepsTheFactsBefore()
{
    ClipSetup setup;
    VideoFile video;
    QCOMPARE(video.Open(setup.Source), 0);
    QCOMPARE(video.Open("/nowhere/missing.avi"), 1);
    QCOMPARE(video.GetFrameCount(), 6);
    QCOMPARE(video.GetWidth(), 160);
    QVERIFY(video.IsOpened());
}

void VideoFileTest::ReadsAllFramesThenNone()
{
    ClipSetup setup;
    VideoFile video;
    QCOMPARE(video.Open(setup.Source), 0);
    for (int i = 0; i < 6; ++i)
    {
        QCOMPARE(NextNumber(video), i);
    }
    QCOMPARE(NextNumber(video), -2);
    QCOMPARE(NextNumber(video), -2);
    QCOMPARE(setup.Lines.All().size(), 1);  // the input line alone
}

void VideoFileTest::OpenStartsAnew()
{
    ClipSetup setup;
    VideoFile video;
    QCOMPARE(video.Open(setup.Source), 0);
    QCOMPARE(NextNumber(video), 0);
    QCOMPARE(NextNumber(video), 1);
    QCOMPARE(video.Open(setup.Source), 0);
    QCOMPARE(NextNumber(video), 0);
}

void VideoFileTest::Seek()
{
    ClipSetup setup;
    VideoFile video;
    QCOMPARE(video.Open(setup.Source), 0);
    QCOMPARE(video.SeekFrame(4), 0);
    QCOMPARE(NextNumber(video), 4);
    QCOMPARE(video.SeekFrame(1), 0);
    QCOMPARE(NextNumber(video), 1);
    QCOMPARE(video.Close(), 0);
    QCOMPARE(video.SeekFrame(1), -1);
}

void VideoFileTest::OpenedStaysAfterClose()
{
    ClipSetup setup;
    VideoFile video;
    QCOMPARE(video.Open(setup.Source), 0);
    QCOMPARE(video.GetFps(), 25.0);
    QCOMPARE(video.Close(), 0);
    QVERIFY(video.IsOpened());
    QCOMPARE(NextNumber(video), -2);
    QCOMPARE(video.GetFrameCount(), 6);
    QCOMPARE(video.GetFps(), 0.0);  // asked anew
}

void VideoFileTest::NoOutputWithoutAsking()
{
    ClipSetup setup;
    const cv::Mat frame(120, 160, CV_8UC3, cv::Scalar(0));
    VideoFile video;
    QCOMPARE(video.Open(setup.Source), 0);
    QCOMPARE(video.WriteFrame(frame), -1);
    // An output asked for is forgotten by Close and by Open.
    QCOMPARE(video.OpenForExport(setup.Source, setup.Output, false), 0);
    QCOMPARE(video.Close(), 0);
    QCOMPARE(video.WriteFrame(frame), -1);
    QCOMPARE(video.OpenForExport(setup.Source, setup.Output, false), 0);
    QCOMPARE(video.Open(setup.Source), 0);
    QCOMPARE(video.WriteFrame(frame), -1);
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void VideoFileTest::ReservedModeRefusesFrames()
{
    ClipSetup setup;
    const cv::Mat frame(120, 160, CV_8UC3, cv::Scalar(0));
    VideoFile video;
    QCOMPARE(video.OpenForExport(setup.Source, setup.Output, true), 0);
    QCOMPARE(video.WriteFrame(frame), -1);
    QCOMPARE(video.WriteFrame(frame), -1);
    QCOMPARE(NextNumber(video), 0);  // reading works
    QCOMPARE(video.Close(), 0);
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void VideoFileTest::FailedOpenForExportChangesNothing()
{
    ClipSetup setup;
    VideoFile video;
    QCOMPARE(video.OpenForExport("/nowhere/missing.avi", setup.Output, false), 1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Open /nowhere/missing.avi failed!"}));
    QCOMPARE(video.WriteFrame(cv::Mat(120, 160, CV_8UC3, cv::Scalar(0))), -1);
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void VideoFileTest::WritesWhatTheFirstFrameSays_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<double>("fps");
    QTest::newRow("smaller than the source") << 80 << 64 << 25.0;
    QTest::newRow("larger than the source") << 320 << 200 << 25.0;
    QTest::newRow("rate that is no whole number") << 160 << 120 << 29.97;
}

void VideoFileTest::WritesWhatTheFirstFrameSays()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(double, fps);
    ClipSetup setup({160, 120, 6, fps});
    VideoFile video;
    QCOMPARE(video.OpenForExport(setup.Source, setup.Output, false), 0);
    for (const int number : {7, 8, 9, 10})
    {
        const cv::Vec3b colour = TestVideo::ColourOf(number);
        QCOMPARE(video.WriteFrame(cv::Mat(height, width, CV_8UC3, cv::Scalar(colour))), 0);
    }
    QCOMPARE(video.Close(), 0);
    cv::VideoCapture written(setup.Output.toStdString());
    QVERIFY(written.isOpened());
    QCOMPARE(static_cast<int>(written.get(cv::CAP_PROP_FRAME_WIDTH)), width);
    QCOMPARE(static_cast<int>(written.get(cv::CAP_PROP_FRAME_HEIGHT)), height);
    QVERIFY(std::abs(written.get(cv::CAP_PROP_FPS) - fps) < 1e-3);
    const QByteArray bytes = ReadBytes(setup.Path("export.mp4"));
    QVERIFY(bytes.contains("mp4v"));
    QVERIFY(bytes.contains(Hex("000001b0")));  // how MPEG-4 video begins; other codecs do not
    const std::vector<cv::Mat> frames = TestVideo::ReadAllFrames(setup.Path("export.mp4"));
    QCOMPARE(frames.size(), std::size_t{4});
    for (std::size_t i = 0; i < frames.size(); ++i)
    {
        QCOMPARE(TestVideo::NumberOf(frames[i]), static_cast<int>(i) + 7);
    }
}

void VideoFileTest::OutputOpensWithTheFirstFrame()
{
    ClipSetup setup;
    VideoFile video;
    QCOMPARE(video.OpenForExport(setup.Source, setup.Output, false), 0);
    QCOMPARE(NextNumber(video), 0);
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
    QCOMPARE(video.WriteFrame(cv::Mat(120, 160, CV_8UC3, cv::Scalar(0))), 0);
    QVERIFY(QFile::exists(setup.Path("export.mp4")));
    QCOMPARE(NextNumber(video), 1);
}

void VideoFileTest::FramesOfAnotherSizePass()
{
    ClipSetup setup;
    VideoFile video;
    QCOMPARE(video.OpenForExport(setup.Source, setup.Output, false), 0);
    QCOMPARE(video.WriteFrame(cv::Mat(120, 160, CV_8UC3, cv::Scalar(0))), 0);
    QCOMPARE(video.WriteFrame(cv::Mat(60, 80, CV_8UC3, cv::Scalar(0))), 0);
    QCOMPARE(video.Close(), 0);
    cv::VideoCapture written(setup.Output.toStdString());
    QCOMPARE(static_cast<int>(written.get(cv::CAP_PROP_FRAME_WIDTH)), 160);
    QCOMPARE(static_cast<int>(written.get(cv::CAP_PROP_FRAME_HEIGHT)), 120);
}

void VideoFileTest::OutputCannotBeOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << "nowhere/export.mp4";
    QTest::newRow("container without this codec") << "export.webm";
}

void VideoFileTest::OutputCannotBeOpened()
{
    QFETCH(QString, name);
    ClipSetup setup;
    const QByteArray output = setup.Folder.filePath(name).toLocal8Bit();
    const cv::Mat frame(120, 160, CV_8UC3, cv::Scalar(0));
    VideoFile video;
    QCOMPARE(video.OpenForExport(setup.Source, output, false), 0);
    QCOMPARE(NextNumber(video), 0);
    QCOMPARE(video.WriteFrame(frame), 1);
    QCOMPARE(setup.Lines.All().size(), 1);  // the input line: the failure has none
    QCOMPARE(NextNumber(video), -2);        // the source was closed too
    QCOMPARE(video.GetFps(), 0.0);
    QCOMPARE(video.WriteFrame(frame), -1);  // closed: no output is wanted any more
}

void VideoFileTest::CloseWithoutSourceLeavesTheMode()
{
    ClipSetup setup;
    const QByteArray output = setup.Path("nowhere/export.mp4").toLocal8Bit();
    const cv::Mat frame(120, 160, CV_8UC3, cv::Scalar(0));
    VideoFile video;
    QCOMPARE(video.OpenForExport(setup.Source, output, false), 0);
    QCOMPARE(video.Open("/nowhere/missing.avi"), 1);  // lets the source go, the wish stays
    QCOMPARE(video.Close(), 0);
    QCOMPARE(video.WriteFrame(frame), 1);  // tries to open the output: the wish still stood
    QCOMPARE(video.WriteFrame(frame), 0);  // and counts as open since, as nothing closed it
}

void VideoFileTest::CopyOfAClip()
{
    // What the window's codec test does: read to the end, close, copy.
    ClipSetup setup;
    VideoFile video;
    cv::Mat frame;
    QCOMPARE(video.Open(setup.Source), 0);
    while (video.ReadFrame(frame) == 0)
    {}
    QCOMPARE(video.Close(), 0);
    QCOMPARE(video.OpenForExport(setup.Source, setup.Output, false), 0);
    while (video.ReadFrame(frame) == 0 && video.WriteFrame(frame) == 0)
    {}
    QCOMPARE(video.Close(), 0);
    const std::vector<cv::Mat> frames = TestVideo::ReadAllFrames(setup.Path("export.mp4"));
    QCOMPARE(frames.size(), std::size_t{6});
    for (std::size_t i = 0; i < frames.size(); ++i)
    {
        QCOMPARE(TestVideo::NumberOf(frames[i]), static_cast<int>(i));
    }
}

QTEST_MAIN(VideoFileTest)
#include "videofile_test.moc"
