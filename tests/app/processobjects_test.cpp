// SPDX-License-Identifier: MIT
#include "app/log.h"
#include "app/programapplication.h"
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"

#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QList>
#include <QPlainTextEdit>
#include <QTest>
#include <QUrl>

extern QList<QUrl> SidebarUrls;

/** The objects of the process as they are before anything uses them: the order of slots matters. */
class ProcessObjectsTest : public QObject
{
    Q_OBJECT

private slots:
    void CameraPaths();
    void HostIsEmpty();
    void HostDropsMessages();
    void NoSidebarEntries();
    void EngineLockIsRecursive();
    void NoApplicationWithoutMain();
    void ResourcesAreThere();
    void LogShowsEverything();
};

void ProcessObjectsTest::CameraPaths()
{
    QVERIFY(PathHorizontal.IsPixelAxis);
    QVERIFY(PathVertical.IsPixelAxis);
    QVERIFY(!PathRotation.IsPixelAxis);
    QVERIFY(!PathRotationDegrees.IsPixelAxis);
    for (const CameraPath* path :
         {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        QVERIFY(path->Settings == nullptr);
        QVERIFY(path->Export == nullptr);
        QVERIFY(path->GlobalIgnoreSections == nullptr);
        QVERIFY(path->LocalIgnoreSections == nullptr);
        QVERIFY(path->FramesPerSecond == -1.0);
        QVERIFY(path->FrameSize == 0.0);
        QVERIFY(path->DetectedShakiness.isEmpty());
        QVERIFY(!path->HasValidData());
        for (const PathFilterStage* stage :
             {&path->Base, &path->SuperSmooth, &path->ThirdStage, &path->Result})
        {
            QCOMPARE(stage->WindowLength, std::uint64_t(20));
            QCOMPARE(stage->Order, std::uint64_t(3));
            QVERIFY(!stage->Enabled);
        }
    }
}

void ProcessObjectsTest::HostIsEmpty()
{
    QVERIFY(ProgramHost.GetThread() == nullptr);
    QCOMPARE(ProgramHost.GetState(), 0);
    QCOMPARE(ProgramHost.GeneratePath(), ResultNoStabilizer);
}

void ProcessObjectsTest::HostDropsMessages()
{
    ProgramHost.Log(LogError, "to nobody");
    QWidget window;
    ProgramLog.Setup(&window);
    auto* filter = window.findChild<QCheckBox*>("checkBoxInit");
    filter->click();
    filter->click();  // as before, and every entry shown anew
    QCOMPARE(window.findChild<QPlainTextEdit*>("plainTextEdit")->toPlainText(), QString());
}

void ProcessObjectsTest::NoSidebarEntries()
{
    QVERIFY(SidebarUrls.isEmpty());
}

void ProcessObjectsTest::EngineLockIsRecursive()
{
    QVERIFY(EngineLock.try_lock());
    QVERIFY(EngineLock.try_lock());
    EngineLock.unlock();
    EngineLock.unlock();
}

void ProcessObjectsTest::NoApplicationWithoutMain()
{
    QVERIFY(ProgramApplication == nullptr);
}

void ProcessObjectsTest::ResourcesAreThere()
{
    const QImage logo(QStringLiteral(":/l/Logos/logo-kvar-klein.png"));
    QVERIFY(!logo.isNull());
}

void ProcessObjectsTest::LogShowsEverything()
{
    QWidget window;
    ProgramLog.Setup(&window);
    QCOMPARE(window.findChild<QLabel*>("labelLog")->text(), QStringLiteral("Last Action:"));
    for (unsigned level = LogInit; level <= LogError; ++level)
    {
        ProgramLog.Add(level, QString::number(level));
    }
    QCOMPARE(window.findChild<QPlainTextEdit*>("plainTextEdit")->toPlainText(),
             QStringLiteral("Init     0\nRun      1\nWarning  2\nError    3"));
}

QTEST_MAIN(ProcessObjectsTest)
#include "processobjects_test.moc"
