// SPDX-License-Identifier: MIT
#include "app/programapplication.h"
#include "project/configuration.h"
#include "support/files.h"
#include "support/testhome.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QtTest>

namespace
{
const TestHome Home;

/** A system without any font, made before the application asks for them. */
bool TakeFontsAway()
{
    const QString file = Home.Path(QStringLiteral("fonts.conf"));
    WriteBytes(file, "<?xml version=\"1.0\"?><fontconfig></fontconfig>");
    return qputenv("FONTCONFIG_FILE", QFile::encodeName(file));
}
const bool AreFontsAway = TakeFontsAway();
}  // namespace

/** The font of the compiled-in look on a system that does not have it. */
class CompiledInFontTest : public QObject
{
    Q_OBJECT

private slots:
    void ComesWithTheProgram();
};

void CompiledInFontTest::ComesWithTheProgram()
{
    const QString family = QStringLiteral("Open Sans");
    QVERIFY(AreFontsAway);
    QVERIFY(!QFontDatabase().hasFamily(family));
    ProgramApplication = qApp;
    GlobalConfiguration().ApplyStyleSheet();
    ProgramApplication = nullptr;
    QVERIFY(QFontDatabase().hasFamily(family));
    QCOMPARE(QFontDatabase().styles(family), QStringList({"Regular", "Bold"}));
    QVERIFY(QFontInfo(QFont(family)).exactMatch());
}

QTEST_MAIN(CompiledInFontTest)
#include "compiledinfont_test.moc"
