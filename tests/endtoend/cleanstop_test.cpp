// SPDX-License-Identifier: MIT
#include "app/jobclips.h"
#include "dialogs/homefiles.h"
#include "endtoend/closingwindow.h"
#include "endtoend/heldpipe.h"
#include "support/files.h"
#include "support/loglines.h"

#include <QFile>
#include <QTest>

namespace
{
/** The informing dialogs' actions, whose dialogs have no parent. */
const char* const DialogActions[] = {"actionAbout", "actionAbout_Qt", "actionAbout_OpenCV",
                                     "actionAbout_Codecs", "actionHelp"};
}  // namespace

/** The window is closed through its question and then ends, whatever goes on in it. */
class CleanStopTest : public ClosingWindowTest
{
    Q_OBJECT

private slots:
    void Stops_data();
    void Stops();
    void StopsDuringReading_data();
    void StopsDuringReading();
    void StopsWithAnOpenDialog_data();
    void StopsWithAnOpenDialog();
    void StopsWithAllDialogsDuringAJob();
    void StaysDuringAJob_data();
    void StaysDuringAJob();
    void StaysWithOpenDialogs();
    void StaysWhilePlaying();
    void StartsAgain_data();
    void StartsAgain();
};

void CleanStopTest::Stops_data()
{
    QTest::addColumn<Step>("enter");
    QTest::addColumn<QString>("lastLine");
    QTest::addColumn<int>("answer");
    struct Row
    {
        const char* Name;
        Step Enter;
        const char* LastLine;
    };
    const Row rows[] = {
        {"idle", &CleanStopTest::Idle, ""},
        {"path calculated", &CleanStopTest::WithPath, ""},
        {"analysis", &CleanStopTest::Analysing, "1 Analyse aborted!"},
        {"export", &CleanStopTest::Exporting, "1 Export aborted!"},
        {"generate all: analysis", &CleanStopTest::GeneratingAnalysis, "1 Analyse aborted!"},
        {"generate all: export", &CleanStopTest::GeneratingExport, "1 Export aborted!"},
        {"player", &CleanStopTest::Playing, ""},
        {"player and analysis", &CleanStopTest::PlayingAndAnalysing, "1 Analyse aborted!"}};
    for (const Row& row : rows)
    {
        const QByteArray name = row.Name;
        QTest::newRow(name + ", saved") << row.Enter << row.LastLine << int(QMessageBox::Yes);
        QTest::newRow(name + ", not saved") << row.Enter << row.LastLine << int(QMessageBox::No);
    }
}

void CleanStopTest::Stops()
{
    QFETCH(Step, enter);
    QFETCH(QString, lastLine);
    QFETCH(int, answer);
    const QByteArray project = ReadBytes(StartProjectPath());
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    (this->*enter)();
    const bool isJob = !lastLine.isEmpty();
    QCOMPARE(IsWorking(), isJob);
    Close(QMessageBox::StandardButton(answer));
    QCOMPARE(IsWorking(), isJob);  // the question is no abort
    const LogLines lines;          // the window's own go with it
    End();
    QCOMPARE(lines.All(), isJob ? QStringList(lastLine) : QStringList());
    if (answer == QMessageBox::Yes)
    {
        QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), 77);
    }
    else
    {
        QCOMPARE(ReadBytes(StartProjectPath()), project);
    }
    QCOMPARE(QFile::exists(File("Tracking.dat")),
             enter == &CleanStopTest::WithPath || lastLine.contains("Export"));
    QVERIFY(CountFrames(File("Export.mp4")) < LongFrames);
}

void CleanStopTest::StopsDuringReading_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("saved") << int(QMessageBox::Yes);
    QTest::newRow("not saved") << int(QMessageBox::No);
}

void CleanStopTest::StopsDuringReading()
{
    QFETCH(int, answer);
    Analyse();
    QVERIFY(QFile::remove(File("Stabilize.dat")));
    HeldPipe pipe(File("Stabilize.dat"));
    Window->Click("pushButtonReadTrack");
    QVERIFY(QTest::qWaitFor([&] { return pipe.HasReader(); }, JobTime));
    Close(QMessageBox::StandardButton(answer));
    QVERIFY(IsWorking());
    pipe.EndWithTheJob();
    const LogLines lines;
    End();
    QCOMPARE(lines.All(), QStringList());  // a file that ends early is not told
}

void CleanStopTest::StopsWithAnOpenDialog_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<int>("answer");
    QList<QByteArray> actions = {"actionFile_Settings"};
    for (const char* action : DialogActions)
    {
        actions.append(action);
    }
    for (const QByteArray& action : actions)
    {
        QTest::newRow(action + ", saved") << action << int(QMessageBox::Yes);
        QTest::newRow(action + ", not saved") << action << int(QMessageBox::No);
    }
}

void CleanStopTest::StopsWithAnOpenDialog()
{
    QFETCH(QByteArray, action);
    QFETCH(int, answer);
    Trigger(action.constData());
    QCOMPARE(OpenDialogs().size(), 1);
    Close(QMessageBox::StandardButton(answer));
    End();
}

void CleanStopTest::StopsWithAllDialogsDuringAJob()
{
    Trigger("actionFile_Settings");
    for (const char* action : DialogActions)
    {
        Trigger(action);
    }
    QCOMPARE(OpenDialogs().size(), 6);
    PlayingAndAnalysing();
    Close(QMessageBox::No);
    QVERIFY(IsWorking());
    End();
}

void CleanStopTest::StaysDuringAJob_data()
{
    QTest::addColumn<Step>("enter");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("lastLine");
    const QString analysed = QStringLiteral("Stabilizing file written!");
    const QString exported = QStringLiteral("Exporting Video finished!");
    QTest::newRow("analysis") << Step(&CleanStopTest::Analysing) << "BUSY" << analysed;
    QTest::newRow("export") << Step(&CleanStopTest::Exporting) << "EXPORTING" << exported;
    QTest::newRow("generate all") << Step(&CleanStopTest::GeneratingAnalysis) << "BUSY" << exported;
}

void CleanStopTest::StaysDuringAJob()
{
    QFETCH(Step, enter);
    QFETCH(QString, word);
    QFETCH(QString, lastLine);
    const QByteArray project = ReadBytes(StartProjectPath());
    const QByteArray configuration = ReadBytes(ConfigurationPath());
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    (this->*enter)();
    CancelClose();
    QVERIFY(IsWorking());
    QCOMPARE(Window->Word(), word);
    QVERIFY(Window->IsEnabled("pushButtonAbort"));
    QVERIFY(!Window->IsEnabled("pushButtonAnalyseTrack"));
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 77.0);
    WaitForIdle();
    QVERIFY2(Window->Log().constLast().endsWith(lastLine), qPrintable(Window->Log().constLast()));
    QVERIFY(Window->IsEnabled("pushButtonExportVideo"));
    QCOMPARE(CountFrames(File("Export.mp4")), lastLine.startsWith("Export") ? LongFrames : 0);
    QCOMPARE(ReadBytes(StartProjectPath()), project);
    QCOMPARE(ReadBytes(ConfigurationPath()), configuration);
    Close(QMessageBox::No);  // and may be closed all the same
    End();
}

void CleanStopTest::StaysWithOpenDialogs()
{
    Trigger("actionFile_Settings");
    for (const char* action : DialogActions)
    {
        Trigger(action);
    }
    const QWidgetList dialogs = OpenDialogs();
    QCOMPARE(dialogs.size(), 6);
    CancelClose();
    QCOMPARE(OpenDialogs(), dialogs);
    End();  // also while they are open
}

void CleanStopTest::StaysWhilePlaying()
{
    Playing();
    CancelClose();
    QVERIFY(Player->IsPlaying());
    static_cast<void>(Player->TakeFrames());
    QVERIFY(QTest::qWaitFor([this] { return !Player->TakeFrames().isEmpty(); }));
    End();
}

void CleanStopTest::StartsAgain_data()
{
    QTest::addColumn<Step>("enter");
    QTest::newRow("after an idle window") << Step(&CleanStopTest::Idle);
    QTest::newRow("after an aborted analysis") << Step(&CleanStopTest::Analysing);
    QTest::newRow("after an aborted export") << Step(&CleanStopTest::Exporting);
    QTest::newRow("after a player") << Step(&CleanStopTest::Playing);
}

void CleanStopTest::StartsAgain()
{
    QFETCH(Step, enter);
    (this->*enter)();
    Trigger("actionHelp");
    Close(QMessageBox::No);
    End();
    Window.reset();

    StartWindow();
    QCOMPARE(Window->Word(), QStringLiteral("IDLE"));
    QVERIFY(!Window->IsEnabled("pushButtonAbort") && !Window->IsEnabled("pushButtonExportVideo"));
    QCOMPARE(OpenDialogs(), QWidgetList());
    Window->SetPaths(Short, Directory->path());
    RunJob("pushButtonGenerateAll");
    QCOMPARE(CountFrames(File("Export.mp4")), ShortFrames);
    ChooseSource(Numbered);
    StartPlay();
    Close(QMessageBox::Yes);
    End();
}

QTEST_MAIN(CleanStopTest)
#include "cleanstop_test.moc"
