// SPDX-License-Identifier: MIT
#pragma once

#include "app/mainwindow.h"

#include <QDir>
#include <QString>

class Report;

/**
 * Works the real main window by its widgets, as a user would: types, clicks, and waits for the
 * title.
 */
class Walk
{
public:
    /**
     * Shows the window in its designed size.
     * @param out    existing directory for all that the walk leaves
     * @param video  source video, absolute
     */
    Walk(const QDir& out, const QString& video, Report& report);

    void MakeProject();  ///< new project by its dialogs, source chosen, export beside the project
    void SaveProject();
    void OpenRecentProject();  ///< the project of an earlier walk, by the recent menu
    void Analyse();
    void ReadAnalysedData();
    void CalculatePath();
    void Export();
    void CheckExport();      ///< frame count, rate, size and codec of the exported file
    void TakeScreenshots();  ///< one per tab
    void WatchPlayer();      ///< works the player tab
    void ShapePath();        ///< works the graph tabs; what comes of it is not saved
    void IllustrateManual(const QDir& pictures);  ///< needs analysed data

    /**
     * Shake of source and result. @param atMost  largest share of the source's shake that may be
     * left
     */
    void CompareShake(double atMost);

    [[nodiscard]] QString ExportFile() const;

private:
    template <typename Widget>
    Widget* Find(const char* name);
    void CheckField(const char* lineEdit, const QString& text);
    [[nodiscard]] QString ProjectFile() const;
    bool RunJob(const char* button, const QString& titleWord);
    [[nodiscard]] QString LastAction();

    QDir Out;
    QString Video;
    Report& Story;
    MainWindow Window;
    qint64 JobTime = 0;  ///< milliseconds that the last job took
};
