// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "app/testwindow.h"
#include "support/files.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace
{
const TestHome Home;

constexpr int Frames = 6;
const QString Input = QStringLiteral("Run      Input: Frames= 6 h=160 v=120 fps=25");
}  // namespace

/** The copy behind the hidden "Test" button: source to export by the codec alone, no job. */
class VideoCopyTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void CopiesFrameByFrame();
    void MissingSourceIsToldTwice();
    void ExportWithoutFolderReturns();
    void SparesTheSource();

private:
    [[nodiscard]] QString File(const char* name) const
    {
        return Directory->filePath(QString::fromLatin1(name));
    }

    /** Presses the button. @return the lines that the log has more */
    [[nodiscard]] QStringList Copy() const
    {
        const int before = Window->Log().size();
        (*Window)->on_pushButtonTest_clicked();
        return Window->Log().mid(before);
    }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;  ///< of the source and the export
    std::unique_ptr<TestWindow> Window;
};

void VideoCopyTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    QVERIFY(TestVideo::WriteNumberedClip(File("source.avi"), {160, 120, Frames, 25.0}));
    Window = std::make_unique<TestWindow>();
    Window->SetPaths(File("source.avi"), Directory->path());
}

void VideoCopyTest::cleanup()
{
    Window.reset();
    Directory.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

void VideoCopyTest::CopiesFrameByFrame()
{
    QCOMPARE(Copy(), QStringList({Input, Input}));  // read through whole, then once more
    const std::vector<cv::Mat> frames = TestVideo::ReadAllFrames(File("Export.mp4"));
    QCOMPARE(frames.size(), std::size_t{Frames});
    for (std::size_t i = 0; i < frames.size(); ++i)
    {
        QCOMPARE(TestVideo::NumberOf(frames[i]), static_cast<int>(i));
    }
    QCOMPARE(Window->Word(), QStringLiteral("IDLE"));
    QVERIFY(!QFile::exists(File("Tracking.dat")));
}

void VideoCopyTest::MissingSourceIsToldTwice()
{
    Window->SetText("lineEditSourceVideo", QStringLiteral("gone.avi"));
    const QString line = QStringLiteral("Error    Open gone.avi failed!");
    QCOMPARE(Copy(), QStringList({line, line}));  // the second try does not ask about the first
    QVERIFY(!QFile::exists(File("Export.mp4")));
}

void VideoCopyTest::ExportWithoutFolderReturns()
{
    Window->SetText("lineEditExportVideo", File("nowhere/Export.mp4"));
    QCOMPARE(Copy(), QStringList({Input, Input}));  // of the writer nothing is told
    QVERIFY(!QFile::exists(File("nowhere")));
    QCOMPARE(Window->Word(), QStringLiteral("IDLE"));
}

void VideoCopyTest::SparesTheSource()
{
    const QByteArray source = ReadBytes(File("source.avi"));
    Window->SetText("lineEditExportVideo", File("source.avi"));
    QCOMPARE(Copy(), QStringList({Input}));  // read through, but not opened for an export
    QCOMPARE(ReadBytes(File("source.avi")), source);
}

QTEST_MAIN(VideoCopyTest)
#include "videocopy_test.moc"
