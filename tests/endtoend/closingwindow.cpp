// SPDX-License-Identifier: MIT
#include "endtoend/closingwindow.h"

#include "app/jobclips.h"
#include "support/toplevels.h"
#include "userhands/answermodal.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QMenu>
#include <QTest>
#include <QTimer>

ClosingWindowTest::ClosingWindowTest() : Long(Clips.filePath(QStringLiteral("long.avi")))
{
    if (!WriteLongClip(Long))
    {
        qFatal("No clip for the test");
    }
}

void ClosingWindowTest::WaitForAction(const char* part) const
{
    QVERIFY(QTest::qWaitFor([&] { return Window->LastAction().contains(QLatin1String(part)); },
                            JobTime));
}

void ClosingWindowTest::WaitForIdle() const
{
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
}

void ClosingWindowTest::WithPath()
{
    Analyse();
    Calculate();
}

void ClosingWindowTest::Analysing()
{
    UseLong();
    Window->Click("pushButtonAnalyseTrack");
    WaitForAction("Tracked points");
}

void ClosingWindowTest::Exporting()
{
    UseLong();
    Analyse();
    Window->Click("pushButtonExportVideo");
    WaitForAction("exported!");
}

void ClosingWindowTest::GeneratingAnalysis()
{
    UseLong();
    Window->Click("pushButtonGenerateAll");
    WaitForAction("Tracked points");
}

void ClosingWindowTest::GeneratingExport()
{
    UseLong();
    Window->Click("pushButtonGenerateAll");
    WaitForAction("exported!");
}

void ClosingWindowTest::Playing()
{
    ChooseSource(Numbered);
    StartPlay();
}

void ClosingWindowTest::PlayingAndAnalysing()
{
    ChooseSource(Long);
    StartPlay();
    Window->ClickTab(SettingsTab);
    Window->Click("pushButtonAnalyseTrack");
    WaitForAction("Tracked points");
}

QWidgetList ClosingWindowTest::OpenDialogs()
{
    QWidgetList dialogs;
    for (QDialog* dialog : TopLevels<QDialog>())
    {
        if (dialog->isVisible())
        {
            dialogs.append(dialog);
        }
    }
    return dialogs;
}

void ClosingWindowTest::Close(QMessageBox::StandardButton answer) const
{
    constexpr int stillRuns = 1;
    QTimer::singleShot(0, Window->operator->(), &QWidget::close);
    QTimer patience;
    connect(&patience, &QTimer::timeout, qApp, [] { QApplication::exit(stillRuns); });
    patience.start(3 * PromptTime);
    const AnswerModal question(answer);
    const int exitCode = QApplication::exec();
    // Each dialog that closed with the window may have asked too; the next box must not hear it.
    QCoreApplication::removePostedEvents(qApp, QEvent::Quit);
    QCOMPARE(exitCode, 0);
    QVERIFY(question.WasAnswered());
    QVERIFY(!(*Window)->isVisible());
}

void ClosingWindowTest::CancelClose() const
{
    const AnswerModal question(QMessageBox::Cancel);
    QVERIFY(!(*Window)->close());
    QVERIFY(question.WasAnswered());
    QVERIFY((*Window)->isVisible());
}

void ClosingWindowTest::End()
{
    Player->ExpectEnd(*Guard);
    QElapsedTimer clock;
    clock.start();
    Window->End();
    const qint64 took = clock.elapsed();
    Player.reset();
    QVERIFY2(took < PromptTime, qPrintable(QString::number(took)));
    QVERIFY(!IsWorking());
    QCoreApplication::processEvents();  // the worker's last words find no window
    QCOMPARE(OpenDialogs(), QWidgetList());
    DeleteRecentMenu();
}

/** A window leaves its menu to the end of the process, which here is to show no leak. */
void ClosingWindowTest::DeleteRecentMenu()
{
    int count = 0;
    for (const QMenu* menu : TopLevels<QMenu>())
    {
        if (menu->title() == QLatin1String("Open Recent"))
        {
            delete menu;
            ++count;
        }
    }
    QCOMPARE(count, 1);
}
