// SPDX-License-Identifier: MIT
#include "endtoend/shownstate.h"

#include "app/testwindow.h"
#include "batch/jobstate.h"

#include <QAction>

namespace
{
/** "on", "off", or "partly" when the widgets differ. */
QString OnOrOff(int on, int all)
{
    return on == all ? QStringLiteral("on") : QString::fromLatin1(on == 0 ? "off" : "partly");
}

QString Widgets(const TestWindow& window, std::initializer_list<const char*> names)
{
    int on = 0;
    for (const char* name : names)
    {
        on += window.IsEnabled(name) ? 1 : 0;
    }
    return OnOrOff(on, static_cast<int>(names.size()));
}

QString Commands(const TestWindow& window)
{
    int on = 0;
    const auto names = {"actionnew_project", "actionopen_project", "actionsave_project_as",
                        "actionexit"};
    for (const char* name : names)
    {
        on += window.Find<QAction>(name)->isEnabled() ? 1 : 0;
    }
    return OnOrOff(on, static_cast<int>(names.size()));
}

QString InWords(const QString& word, const QString& abort, const QString& start,
                const QString& path, const QString& files, const QString& play,
                const QString& commands)
{
    return QStringLiteral("%1: abort %2, start %3, path %4, files %5, play %6, commands %7")
        .arg(word, abort, start, path, files, play, commands);
}
}  // namespace

QString ShownState(const TestWindow& window)
{
    return InWords(
        window.Word(), Widgets(window, {"pushButtonAbort"}),
        Widgets(window, {"pushButtonGenerateAll", "pushButtonAnalyseTrack", "pushButtonReadTrack"}),
        Widgets(window, {"pushButtonCalculateTrack", "pushButtonExportVideo"}),
        Widgets(window, {"lineEditSourceVideo", "lineEditTrackingPathFile", "lineEditStabilizeFile",
                         "lineEditExportVideo", "pushButtonSourceVideo", "pushButtonTrackingFile",
                         "pushButtonStabilizeFile", "pushButtonExportVideoFile"}),
        Widgets(window, {"pushButtonPlayPause", "pushButtonReset"}), Commands(window));
}

QString ShownStateOf(int state)
{
    const QString on = QStringLiteral("on");
    const QString off = QStringLiteral("off");
    switch (state)
    {
        case JobNone:
        case JobTrackingReady:
            return InWords(QStringLiteral("IDLE"), off, on, off, on, on, on);
        case JobPathReady:
        case JobPathCalculated:
            return InWords(QStringLiteral("IDLE"), off, on, on, on, on, on);
        case JobExport:
            return InWords(QStringLiteral("EXPORTING"), on, off, off, off, off, off);
        default:
            return InWords(QStringLiteral("BUSY"), on, off, off, off, off, off);
    }
}
