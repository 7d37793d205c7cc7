// SPDX-License-Identifier: MIT
#include "app/log.h"
#include "batch/batchsetup.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"
#include "support/messageguard.h"
#include "support/testhome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <memory>
#include <thread>

namespace
{
const TestHome Home;
}

/** The helpers that the other tests rely on do notice what they are there to notice. */
class SupportTest : public QObject
{
    Q_OBJECT

private slots:
    void HomeIsEmptyAndElsewhere();
    void LinesKeepLevelAndOrder();
    void LinesSeeMessagesOfTheLabelOnly();
    void LinesSeeTheSameMessageTwice();
    void LinesComeFromTheWorkerInOrder();
    void TakeForgets();
    void HostIsFresh();
    void GuardSeesUnexpectedWarnings();
    void GuardLetsExpectedWarningsPass();
    void GuardSeesOtherThreads();
};

void SupportTest::HomeIsEmptyAndElsewhere()
{
    QCOMPARE(QDir::homePath(), Home.Path());
    QVERIFY(QDir(Home.Path()).isEmpty());
    QCOMPARE(QFileInfo(Home.Path(QStringLiteral("a"))).path(), Home.Path());
}

void SupportTest::LinesKeepLevelAndOrder()
{
    LogLines lines;
    ProgramLog.Add(0, QStringLiteral("first"));
    ProgramLog.Add(1, QStringLiteral("second"));
    ProgramLog.Add(2, QStringLiteral("third"));
    ProgramLog.Add(3, QStringLiteral("fourth"));
    QCOMPARE(lines.All(), QStringList({"0 first", "1 second", "2 third", "3 fourth"}));
    QCOMPARE(lines.OfLevel(2), QStringList({"2 third"}));
    QVERIFY(lines.Has("3 fourth"));
    QVERIFY(!lines.Has("2 fourth"));
}

void SupportTest::LinesSeeMessagesOfTheLabelOnly()
{
    BatchSetup setup;
    ProgramHost.Log(4, "debug");
    ProgramHost.Log(1, "run");
    ProgramHost.Log(4, "more debug");
    ProgramHost.Log(5, "chatter");
    QCOMPARE(setup.Lines.All(), QStringList({"4 debug", "1 run", "4 more debug", "5 chatter"}));
}

void SupportTest::LinesSeeTheSameMessageTwice()
{
    BatchSetup setup;
    ProgramHost.Log(1, "same");
    ProgramHost.Log(1, "same");
    ProgramHost.Log(4, "same");
    ProgramHost.Log(5, "same");
    ProgramHost.Log(4, "same");
    QCOMPARE(setup.Lines.All(), QStringList({"1 same", "1 same", "4 same", "5 same", "4 same"}));
}

void SupportTest::LinesComeFromTheWorkerInOrder()
{
    BatchSetup setup;
    std::thread worker(
        []
        {
            ProgramHost.Log(4, "one");
            ProgramHost.Log(3, "two");
            ProgramHost.Log(4, "three");
        });
    worker.join();
    QCOMPARE(setup.Lines.All(), QStringList());
    QTRY_COMPARE(setup.Lines.All(), QStringList({"4 one", "3 two", "4 three"}));
}

void SupportTest::TakeForgets()
{
    LogLines lines;
    ProgramLog.Add(1, QStringLiteral("text"));
    QCOMPARE(lines.Take(), QStringList({"1 text"}));
    QCOMPARE(lines.All(), QStringList());
}

void SupportTest::HostIsFresh()
{
    {
        BatchSetup setup;
        QVERIFY(ProgramHost.GetThread() != nullptr);
        QVERIFY(PathHorizontal.Settings != nullptr);
        PathRotation.ShakinessPath = {1.0};
    }
    QVERIFY(ProgramHost.GetThread() == nullptr);
    QVERIFY(PathHorizontal.Settings == nullptr);
    QVERIFY(PathRotation.ShakinessPath.isEmpty());
    QVERIFY(PathHorizontal.IsPixelAxis && PathVertical.IsPixelAxis);
    QVERIFY(!PathRotation.IsPixelAxis && !PathRotationDegrees.IsPixelAxis);
}

void SupportTest::GuardSeesUnexpectedWarnings()
{
    MessageGuard guard;
    qWarning("a warning that this test makes");
    qCritical("a critical message that this test makes");
    qDebug("a debug message that this test makes");
    QCOMPARE(guard.TakeUnexpected(), QStringList({"a warning that this test makes",
                                                  "a critical message that this test makes"}));
    QCOMPARE(guard.TakeUnexpected(), QStringList());
}

void SupportTest::GuardLetsExpectedWarningsPass()
{
    MessageGuard guard;
    guard.Expect(QtWarningMsg, QStringLiteral("expected once"));
    qWarning("expected once");
    QCOMPARE(guard.TakeUnexpected(), QStringList());
    qWarning("expected once");
    QCOMPARE(guard.TakeUnexpected(), QStringList({"expected once"}));
}

void SupportTest::GuardSeesOtherThreads()
{
    MessageGuard guard;
    std::thread other([] { qWarning("a warning of another thread"); });
    other.join();
    QCOMPARE(guard.TakeUnexpected(), QStringList({"a warning of another thread"}));
}

QTEST_MAIN(SupportTest)
#include "support_test.moc"
