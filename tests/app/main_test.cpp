// SPDX-License-Identifier: MIT
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/** The program as a process: it comes up, shows its window, and ends when that is closed. */
class MainTest : public QObject
{
    Q_OBJECT

private slots:
    void StartsAndEnds_data();
    void StartsAndEnds();
};

void MainTest::StartsAndEnds_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("project");
    const QString start = QStringLiteral("Start.mvprj");
    const QString good = QStringLiteral("good.mvprj");
    const QString gone = QStringLiteral("gone.mvprj");
    QTest::newRow("no argument") << QStringList() << start;
    QTest::newRow("an empty argument") << QStringList({""}) << start;
    QTest::newRow("a project file") << QStringList({good}) << good;
    QTest::newRow("a project file that is not there") << QStringList({gone}) << start;
    QTest::newRow("a second and third argument") << QStringList({good, gone, "--third"}) << good;
    QTest::newRow("only the first argument counts") << QStringList({gone, good}) << start;
}

void MainTest::StartsAndEnds()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, project);
    const QTemporaryDir home;
    QFile file(home.filePath(QStringLiteral("good.mvprj")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(R"({"TrackingFile": "t.dat", "StabilizeType": 1, "MaxTrackingPoints": 200,
                   "EnableCrop": true, "CropFactor": 1.2, "EnRescale": false})");
    file.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(MOLVANE_TEST_PLUGINS));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("CloseWindow"));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setWorkingDirectory(home.path());
    program.start(QStringLiteral(MOLVANE_PROGRAM), arguments);
    QVERIFY(program.waitForFinished());
    const QString errors = QString::fromLocal8Bit(program.readAllStandardError());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    const QString title = QString::fromLocal8Bit(program.readAllStandardOutput()).trimmed();
    QVERIFY2(title == QStringLiteral("IDLE %1 @ Molvane").arg(project), qPrintable(title + errors));
    QVERIFY2(!errors.contains(QLatin1String("connect")), qPrintable(errors));
}

QTEST_GUILESS_MAIN(MainTest)
#include "main_test.moc"
