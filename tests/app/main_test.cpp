// SPDX-License-Identifier: MIT
#include "support/files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace
{
const char* const UsableProject = R"({"TrackingFile": "t.dat", "StabilizeType": 1,
    "MaxTrackingPoints": 200, "EnableCrop": true, "CropFactor": 1.2, "EnRescale": false})";
const QString Good = QStringLiteral("good.mvprj");
const QString Umlaut = QStringLiteral("gütig.mvprj");
}  // namespace

/** The program as a process: it comes up, shows its window, and ends when that is closed. */
class MainTest : public QObject
{
    Q_OBJECT

private slots:
    void StartsAndEnds_data();
    void StartsAndEnds();
    void ReturnsWhatTheEventLoopReturned();

private:
    /**
     * Runs the program to its end, in an empty home with two projects.
     * @param user  the plug-in that ends it, with what the plug-in is told
     */
    void Run(const QStringList& arguments, const QString& user);

    int ExitCode = -1;
    QString Title;
    QString Errors;
};

void MainTest::Run(const QStringList& arguments, const QString& user)
{
    const QTemporaryDir home;
    for (const QString& project : {Good, Umlaut})
    {
        WriteBytes(home.filePath(project), UsableProject);
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(MOLVANE_TEST_PLUGINS));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), user);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setWorkingDirectory(home.path());
    program.start(QStringLiteral(MOLVANE_PROGRAM), arguments);
    QVERIFY(program.waitForFinished());
    Errors = QString::fromLocal8Bit(program.readAllStandardError());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    ExitCode = program.exitCode();
    Title = QString::fromLocal8Bit(program.readAllStandardOutput()).trimmed();
}

void MainTest::StartsAndEnds_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("project");
    const QString start = QStringLiteral("Start.mvprj");
    const QString gone = QStringLiteral("gone.mvprj");
    QTest::newRow("no argument") << QStringList() << start;
    QTest::newRow("an empty argument") << QStringList({""}) << start;
    QTest::newRow("a project file") << QStringList({Good}) << Good;
    QTest::newRow("a project file with a letter beyond ASCII") << QStringList({Umlaut}) << Umlaut;
    QTest::newRow("a project file that is not there") << QStringList({gone}) << start;
    QTest::newRow("a second and third argument") << QStringList({Good, gone, "--third"}) << Good;
    QTest::newRow("only the first argument counts") << QStringList({gone, Good}) << start;
}

void MainTest::StartsAndEnds()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, project);
    Run(arguments, QStringLiteral("CloseWindow"));
    QCOMPARE(ExitCode, 0);
    QVERIFY2(Title == QStringLiteral("IDLE %1 @ Molvane").arg(project), qPrintable(Title + Errors));
    QVERIFY2(!Errors.contains(QLatin1String("connect")), qPrintable(Errors));
}

void MainTest::ReturnsWhatTheEventLoopReturned()
{
    Run({}, QStringLiteral("CloseWindow:3"));
    QCOMPARE(Title, QStringLiteral("IDLE Start.mvprj @ Molvane"));
    QCOMPARE(ExitCode, 3);
}

QTEST_GUILESS_MAIN(MainTest)
#include "main_test.moc"
