// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "app/jobclips.h"
#include "app/testwindow.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <memory>

namespace
{
const TestHome Home;

constexpr int JobTime = 20000;       // milliseconds, far more than any job here takes
constexpr int SourcePathSize = 256;  // bytes at the head of a matching file

QByteArray Bytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

qint32 NumberAt(const QByteArray& bytes, int offset)
{
    return qFromLittleEndian<qint32>(bytes.constData() + offset);
}
}  // namespace

/** What the fields of the form do to the files that jobs write. */
class JobSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void MatchingFileHasTheSettings();
    void ReadingChecksTrackingPoints();
    void TypedTextsReachTheJob();
    void FilesGoWhereTheFieldsSay();
    void ChangesDuringAJobWait();
    void ExportSize_data();
    void ExportSize();

private:
    [[nodiscard]] QString File(const char* name) const
    {
        return Directory->filePath(QString::fromLatin1(name));
    }
    void Run(const char* button) const;
    void WaitForEnd() const;

    QTemporaryDir Clips;
    QString Short;  ///< path
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;
    std::unique_ptr<TestWindow> Window;
};

void JobSettingsTest::initTestCase()
{
    Short = Clips.filePath(QStringLiteral("short.avi"));
    QVERIFY(WriteShortClip(Short));
}

void JobSettingsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    Window = std::make_unique<TestWindow>();
    Window->SetPaths(Short, Directory->path());
}

void JobSettingsTest::cleanup()
{
    Window.reset();
    Directory.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

void JobSettingsTest::Run(const char* button) const
{
    Window->Click(button);
    WaitForEnd();
}

void JobSettingsTest::WaitForEnd() const
{
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
}

void JobSettingsTest::MatchingFileHasTheSettings()
{
    Window->SetNumber("spinBoxMaxTrackingPoints", 345);
    Run("pushButtonAnalyseTrack");
    const QByteArray bytes = Bytes(File("Tracking.dat.cfg"));
    QCOMPARE(bytes.size(), SourcePathSize + 24);
    QCOMPARE(QString::fromLatin1(bytes.constData()), Short);
    QCOMPARE(NumberAt(bytes, 256), ClipWidth);
    QCOMPARE(NumberAt(bytes, 260), ClipHeight);
    QCOMPARE(NumberAt(bytes, 264), ClipFps);
    QCOMPARE(NumberAt(bytes, 268), 345);
    QCOMPARE(NumberAt(bytes, 272), 0);
    QCOMPARE(NumberAt(bytes, 276), -1);
}

void JobSettingsTest::ReadingChecksTrackingPoints()
{
    Window->SetNumber("spinBoxMaxTrackingPoints", 345);
    Run("pushButtonAnalyseTrack");
    Window->SetNumber("spinBoxMaxTrackingPoints", 346);
    Run("pushButtonReadTrack");
    QVERIFY(Window->Log().contains(QStringLiteral("Error    Tracking file out of date!")));
    QVERIFY(!Window->IsEnabled("pushButtonExportVideo"));
    Window->SetNumber("spinBoxMaxTrackingPoints", 345);
    Run("pushButtonReadTrack");
    QVERIFY(Window->IsEnabled("pushButtonExportVideo"));
}

void JobSettingsTest::TypedTextsReachTheJob()
{
    auto* field = Window->Find<QWidget>("lineEditSourceVideo");
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, QStringLiteral("typed.avi"));
    Run("pushButtonAnalyseTrack");
    QVERIFY(Window->Log().contains(QStringLiteral("Error    Open typed.avi failed!")));
}

void JobSettingsTest::FilesGoWhereTheFieldsSay()
{
    Window->SetText("lineEditTrackingPathFile", File("points"));
    Window->SetText("lineEditStabilizeFile", File("motion.x.dat"));
    Window->SetText("lineEditExportVideo", File("result.avi"));
    Run("pushButtonGenerateAll");
    QCOMPARE(
        QDir(Directory->path()).entryList(QDir::Files, QDir::Name),
        QStringList({"motion.x.dat", "motion.x.dat.cfg", "points", "points.cfg", "result.avi"}));
    QCOMPARE(CountFrames(File("result.avi")), ShortFrames);
}

void JobSettingsTest::ChangesDuringAJobWait()
{
    // The field stays on during the job; the job keeps what was in it at the start.
    Window->SetNumber("spinBoxMaxTrackingPoints", 30);
    Window->Click("pushButtonAnalyseTrack");
    Window->SetNumber("spinBoxMaxTrackingPoints", 31);
    WaitForEnd();
    QCOMPARE(NumberAt(Bytes(File("Tracking.dat.cfg")), 268), 30);
}

void JobSettingsTest::ExportSize_data()
{
    QTest::addColumn<bool>("crops");
    QTest::addColumn<double>("percent");
    QTest::addColumn<bool>("rescales");
    QTest::addColumn<QSize>("size");
    QTest::newRow("neither: as the source") << false << 125.0 << false << QSize(160, 120);
    QTest::newRow("crop at 125 %") << true << 125.0 << false << QSize(128, 96);
    // 160 / 1.1 = 145.45 and 120 / 1.1 = 109.09: whole and even numbers of pixels.
    QTest::newRow("crop at 110 %") << true << 110.0 << false << QSize(144, 108);
    QTest::newRow("rescaled") << false << 125.0 << true << QSize(96, 64);
    QTest::newRow("crop and rescaled") << true << 125.0 << true << QSize(96, 64);
}

void JobSettingsTest::ExportSize()
{
    QFETCH(bool, crops);
    QFETCH(double, percent);
    QFETCH(bool, rescales);
    QFETCH(QSize, size);
    Window->SetChecked("checkBoxEnableZoom", crops);
    Window->SetNumber("doubleSpinBoxZoom", percent);
    Window->SetChecked("checkBoxRescale", rescales);
    Window->SetNumber("spinBoxRescaleXAxis", 96);
    Window->SetNumber("spinBoxRescaleYAxis", 64);
    Run("pushButtonGenerateAll");
    const std::vector<cv::Mat> frames = TestVideo::ReadAllFrames(File("Export.mp4"));
    QCOMPARE(frames.size(), std::size_t(ShortFrames));
    QCOMPARE(QSize(frames.front().cols, frames.front().rows), size);
}

QTEST_MAIN(JobSettingsTest)
#include "jobsettings_test.moc"
