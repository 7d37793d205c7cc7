// SPDX-License-Identifier: MIT
#pragma once

#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "player/playerwindow.h"

#include <QAction>
#include <QMessageBox>
#include <QWidgetList>

/**
 * Base of the tests of the window's close: brings the window into the states in which a user may
 * leave it, closes it through its question and ends it as the program does.
 */
class ClosingWindowTest : public PlayerWindowTest
{
    Q_OBJECT

protected:
    static constexpr int PromptTime = 5000;  ///< milliseconds; an abort takes one frame and 10 ms

    ClosingWindowTest();

    // The states.
    void Idle() {}
    void WithPath();
    void Analysing();
    void Exporting();
    void GeneratingAnalysis();
    void GeneratingExport();
    void Playing();
    void PlayingAndAnalysing();

    void WaitForAction(const char* part) const;  ///< the last message has that in it
    void WaitForIdle() const;
    void Trigger(const char* action) const { Window->Find<QAction>(action)->trigger(); }
    [[nodiscard]] static bool IsWorking() { return ProgramHost.GetThread()->isRunning(); }
    [[nodiscard]] static QWidgetList OpenDialogs();
    [[nodiscard]] QString File(const char* name) const
    {
        return Directory->filePath(QString::fromLatin1(name));
    }

    /** Closes the window in the event loop of the program, which this ends. */
    void Close(QMessageBox::StandardButton answer) const;

    /** Wants to close the window and thinks better of it. */
    void CancelClose() const;

    /** Ends the window, closed or not, as the end of the program does. */
    void End();

private:
    void UseLong() const { Window->SetText("lineEditSourceVideo", Long); }
    static void DeleteRecentMenu();

    QString Long;  ///< path; a job over it takes seconds
};

using Step = void (ClosingWindowTest::*)();
Q_DECLARE_METATYPE(Step)
