// SPDX-License-Identifier: MIT
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "batch/workersetup.h"
#include "support/messageguard.h"

#include <QtTest>

#include <memory>

/** The road of a message from the worker to the log. */
class WorkerLogTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void LongTextsAreCut_data();
    void LongTextsAreCut();
    void LevelsArrive();
    void SlowWindowKeepsTheOrder();
    void OwnMessagesAreHandledAtOnce();
    void OwnMessageBehindWaitingOnes();
    void EachThreadHasItsQueue();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void WorkerLogTest::LongTextsAreCut_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("kept");
    QTest::newRow("empty") << 0 << 0;
    QTest::newRow("78 characters") << 78 << 78;
    QTest::newRow("79 characters just fit") << 79 << 79;
    QTest::newRow("80 characters") << 80 << 79;
    QTest::newRow("81 characters") << 81 << 79;
    QTest::newRow("a very long text") << 100000 << 79;
}

void WorkerLogTest::LongTextsAreCut()
{
    QFETCH(int, length);
    QFETCH(int, kept);
    BatchSetup setup;
    QByteArray text;
    for (int i = 0; i < length; ++i)
    {
        text.append(static_cast<char>('a' + i % 26));
    }
    ProgramHost.GetThread()->AddLog(1, text.constData());
    QCOMPARE(setup.Lines.All(), QStringList({"1 " + QString::fromLatin1(text.left(kept))}));
}

void WorkerLogTest::LevelsArrive()
{
    WorkerSetup setup;
    setup.Object.OnPrepare = []
    {
        for (unsigned level = 0; level < 6; ++level)
        {
            ProgramHost.Log(level, "text with % and %s and %n");
        }
    };
    setup.Proj.SyncFileNames();
    QCOMPARE(setup.RunJob(JobAnalyse), 9);
    QCOMPARE(setup.Lines.All().mid(1, 6),
             QStringList({"0 text with % and %s and %n", "1 text with % and %s and %n",
                          "2 text with % and %s and %n", "3 text with % and %s and %n",
                          "4 text with % and %s and %n", "5 text with % and %s and %n"}));
}

void WorkerLogTest::SlowWindowKeepsTheOrder()
{
    WorkerSetup setup;
    setup.Object.OnTrack = [](int call, const cv::Mat&, std::vector<cv::Point2f>&)
    {
        for (int i = 0; i < 200; ++i)
        {
            ProgramHost.Log(1, qPrintable(QString("%1 %2").arg(call).arg(i)));
        }
    };
    setup.Thread->StartJob(JobAnalyse);
    QVERIFY(setup.Thread->wait(20000));  // the window looks at nothing meanwhile
    QCOMPARE(setup.Lines.All(), QStringList());
    QCoreApplication::processEvents();
    QStringList expected{"1 Input: Frames= 5 h=64 v=64 fps=25"};
    for (int call = 1; call <= 5; ++call)
    {
        for (int i = 0; i < 200; ++i)
        {
            expected.append(QString("1 %1 %2").arg(call).arg(i));
        }
    }
    expected.append("1 Tracking file written!");
    QCOMPARE(setup.Lines.All(), expected);
}

void WorkerLogTest::OwnMessagesAreHandledAtOnce()
{
    BatchSetup setup;
    ProgramHost.Log(3, "now");
    QCOMPARE(setup.Lines.All(), QStringList({"3 now"}));  // without the event loop
}

void WorkerLogTest::OwnMessageBehindWaitingOnes()
{
    // Each delivery takes the oldest message, whoever sent it, so the order stays.
    WorkerSetup setup;
    setup.Proj.SourceFile = "/nowhere/a.avi";
    setup.Proj.SyncFileNames();
    setup.Thread->StartJob(JobAnalyse);
    QVERIFY(setup.Thread->wait(20000));
    ProgramHost.Log(1, "from the window");
    QCOMPARE(setup.Lines.All(), QStringList({"3 Open /nowhere/a.avi failed!"}));
    QCoreApplication::processEvents();
    QCOMPARE(setup.Lines.All(),
             QStringList({"3 Open /nowhere/a.avi failed!", "1 from the window"}));
}

void WorkerLogTest::EachThreadHasItsQueue()
{
    BatchSetup setup;
    Project project;
    OpCVThread other(&project);
    setup.Lines.Attach(&other);
    other.AddLog(5, "of the other");
    ProgramHost.Log(4, "of the host");
    QCOMPARE(setup.Lines.All(), QStringList({"5 of the other", "4 of the host"}));
}

QTEST_MAIN(WorkerLogTest)
#include "workerlog_test.moc"
