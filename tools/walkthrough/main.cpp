// SPDX-License-Identifier: MIT
#include "report.h"
#include "walk.h"

#include "app/allocator.h"
#include "app/programapplication.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTextStream>

namespace
{
const QString SecondRun = QStringLiteral("second-run");
const QString Screenshots = QStringLiteral("screenshots");

QByteArray ContentOf(const QString& file)
{
    QFile content(file);
    content.open(QIODevice::ReadOnly);
    return content.readAll();
}

/** Passes messages on, but for what Qt's offscreen platform says of features that it lacks. */
void PassMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!text.startsWith(QStringLiteral("This plugin does not support")))
    {
        QTextStream(stderr) << qFormatLogMessage(type, context, text) << Qt::endl;
    }
}

/** From the source to the stabilized video. */
void WalkFirst(const QDir& out, const QString& video, double atMost, Report& report)
{
    Walk walk(out, video, report);
    walk.MakeProject();
    walk.Analyse();
    walk.CalculatePath();
    walk.Export();
    walk.CheckExport();
    walk.SaveProject();
    walk.TakeScreenshots();
    walk.CompareShake(atMost);
    walk.WatchPlayer();
    walk.ShapePath();
}

/** The pictures that the manual shows. */
void WalkForManual(const QDir& out, const QString& video, const QDir& pictures, Report& report)
{
    Walk walk(out, video, report);
    walk.MakeProject();
    walk.Analyse();
    walk.IllustrateManual(pictures);
}

/** After a restart: the analysed data come back and lead to the same video. */
void WalkAgain(const QDir& out, const QString& video, Report& report)
{
    Walk walk(out, video, report);
    walk.OpenRecentProject();
    const QByteArray before = ContentOf(walk.ExportFile());
    walk.ReadAnalysedData();
    walk.CalculatePath();
    walk.Export();
    report.Step(!before.isEmpty() && ContentOf(walk.ExportFile()) == before,
                QStringLiteral("the same video again, byte for byte"));
}
}  // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(PassMessage);
    KeepFreedMemory();  // as the program does
    QApplication application(argc, argv);
    ProgramApplication = &application;
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Works the real window on a video like a user and reports what came of it."));
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("out"), QStringLiteral("Directory for results."), QStringLiteral("DIR")},
         {QStringLiteral("at-most"), QStringLiteral("Largest share of the shake that may be left."),
          QStringLiteral("SHARE"), QStringLiteral("1.0")},
         {Screenshots, QStringLiteral("Only take the pictures of the manual, into DIR."),
          QStringLiteral("DIR")},
         {SecondRun, QStringLiteral("Only the part after a restart; used internally.")}});
    parser.addPositionalArgument(QStringLiteral("video"), QStringLiteral("Source video."));
    parser.process(application);
    if (parser.positionalArguments().size() != 1 || !parser.isSet(QStringLiteral("out")))
    {
        parser.showHelp(2);
    }

    const QDir out(QDir().absoluteFilePath(parser.value(QStringLiteral("out"))));
    out.mkpath(QStringLiteral("home"));
    qputenv("HOME", out.filePath(QStringLiteral("home")).toLocal8Bit());  // never the user's own
    const QString video = QFileInfo(parser.positionalArguments().constFirst()).absoluteFilePath();
    const QString reportFile = out.filePath(QStringLiteral("report.txt"));
    if (parser.isSet(SecondRun))
    {
        Report report(reportFile);
        WalkAgain(out, video, report);
        return report.AllWorked() ? 0 : 1;
    }

    QFile::remove(reportFile);
    Report report(reportFile);
    if (parser.isSet(Screenshots))
    {
        WalkForManual(out, video, QDir(parser.value(Screenshots)), report);
        return report.AllWorked() ? 0 : 1;
    }
    WalkFirst(out, video, parser.value(QStringLiteral("at-most")).toDouble(), report);
    report.Fact(QStringLiteral("the program is started again"));
    const int secondRun = QProcess::execute(
        QApplication::applicationFilePath(),
        {QStringLiteral("--") + SecondRun, QStringLiteral("--out"), out.path(), video});
    report.Step(secondRun == 0, QStringLiteral("everything worked after the restart"));
    return report.AllWorked() ? 0 : 1;
}
