// SPDX-License-Identifier: MIT
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
    QTest::newRow("no argument") << QStringList();
    QTest::newRow("an empty argument") << QStringList({""});
    QTest::newRow("a project file") << QStringList({"gone.mvprj"});
    QTest::newRow("only the first argument counts")
        << QStringList({"gone.mvprj", "second", "--third"});
}

void MainTest::StartsAndEnds()
{
    QFETCH(QStringList, arguments);
    const QTemporaryDir home;
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
    QVERIFY2(title.startsWith(QLatin1String("IDLE ")), qPrintable(title + errors));
    QVERIFY2(title.endsWith(QLatin1String(" @ Molvane")), qPrintable(title));
    QVERIFY2(!errors.contains(QLatin1String("connect")), qPrintable(errors));
}

QTEST_GUILESS_MAIN(MainTest)
#include "main_test.moc"
