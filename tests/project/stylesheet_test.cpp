// SPDX-License-Identifier: MIT
#include "app/programapplication.h"
#include "project/configuration.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{
const char* const Resource = ":/l/Logos/standard.css";

QString CompiledIn()
{
    return QString::fromLatin1(ReadBytes(Resource));
}

/** The value that @p selector gets from a rule of its own; the last one wins. */
QString ValueOf(const QString& selector, const QString& property)
{
    static const QRegularExpression Comment(R"(/\*.*?\*/)",
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression Rule(R"(([^{}]+)\{([^}]*)\})");
    QString value;
    auto rules = Rule.globalMatch(CompiledIn().remove(Comment));
    while (rules.hasNext())
    {
        const QRegularExpressionMatch rule = rules.next();
        QStringList selectors = rule.captured(1).split(',');
        for (QString& each : selectors)
        {
            each = each.trimmed();
        }
        if (!selectors.contains(selector))
        {
            continue;
        }
        for (const QString& declaration : rule.captured(2).split(';'))
        {
            if (declaration.section(':', 0, 0).trimmed() == property)
            {
                value = declaration.section(':', 1).trimmed();
            }
        }
    }
    return value;
}
}  // namespace

/** Where the look of the program comes from. */
class StyleSheetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FormerDirectory = QDir::currentPath(); }
    void init();
    void cleanup();
    void FallsBackToTheCompiledIn_data();
    void FallsBackToTheCompiledIn();
    void TakesTheUsersFile();
    void FileInTheCurrentDirectoryReplaces();
    void FileIsReadAnew();
    void Bytes_data();
    void Bytes();
    void FileThatCannotBeOpened();
    void WithoutApplication();
    void WritesNothing();
    void CompiledInColours_data();
    void CompiledInColours();
    void CompiledInArrows();

private:
    [[nodiscard]] QString Path(const QString& name) const { return Directory->filePath(name); }

    QString FormerDirectory;
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;
    GlobalConfiguration Configuration;
};

void StyleSheetTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    QVERIFY(Directory->isValid() && QDir::setCurrent(Directory->path()));
    ProgramApplication = qApp;
    Configuration = GlobalConfiguration();
    qApp->setStyleSheet("QLabel { color: red }");
}

void StyleSheetTest::cleanup()
{
    qApp->setStyleSheet(QString());
    ProgramApplication = nullptr;
    QVERIFY(QDir::setCurrent(FormerDirectory));
    QCOMPARE(Guard->TakeUnexpected(), QStringList());
}

void StyleSheetTest::FallsBackToTheCompiledIn_data()
{
    QTest::addColumn<QString>("styleSheet");
    QTest::newRow("the default") << "standard.css";
    QTest::newRow("a missing file") << "/missing/look.css";
    QTest::newRow("no name") << "";
}

void StyleSheetTest::FallsBackToTheCompiledIn()
{
    QFETCH(QString, styleSheet);
    Configuration.StyleSheet = styleSheet;
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), CompiledIn());
    QVERIFY(qApp->styleSheet().contains("#122000"));
}

void StyleSheetTest::TakesTheUsersFile()
{
    WriteBytes(Path("look.css"), "QLabel { color: #010203 }\n");
    Configuration.StyleSheet = Path("look.css");
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), QString("QLabel { color: #010203 }\n"));
    WriteBytes(Path("relative.css"), "QLabel { color: #040506 }");
    Configuration.StyleSheet = "relative.css";
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), QString("QLabel { color: #040506 }"));
}

void StyleSheetTest::FileInTheCurrentDirectoryReplaces()
{
    WriteBytes(Path("standard.css"), "QLabel { color: blue }");
    Configuration.StyleSheet = "standard.css";
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), QString("QLabel { color: blue }"));
}

void StyleSheetTest::FileIsReadAnew()
{
    Configuration.StyleSheet = Path("look.css");
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), CompiledIn());
    WriteBytes(Path("look.css"), "QLabel { color: blue }");
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), QString("QLabel { color: blue }"));
    QVERIFY(QFile::remove(Path("look.css")));
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), CompiledIn());
}

void StyleSheetTest::Bytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const QString umlaut(QChar(0xE4));
    QTest::newRow("empty file") << QByteArray() << QString();
    QTest::newRow("Latin-1") << QByteArray("/* \xE4 */") << "/* " + umlaut + " */";
    QTest::newRow("UTF-8 is read as Latin-1")
        << QByteArray("/* \xC3\xA4 */") << "/* " + QString::fromLatin1("\xC3\xA4") + " */";
    QTest::newRow("a zero byte ends it") << QByteArray("/* a */\0/* b */", 15) << "/* a */";
    QTest::newRow("a zero byte first") << QByteArray("\0/* b */", 8) << QString();
    QTest::newRow("CR LF stays") << QByteArray("/* a */\r\n") << "/* a */\r\n";
}

void StyleSheetTest::Bytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    WriteBytes(Path("look.css"), bytes);
    Configuration.StyleSheet = Path("look.css");
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), text);
}

void StyleSheetTest::FileThatCannotBeOpened()
{
    Configuration.StyleSheet = Directory->path();  // a directory is there, but is no file
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), QString());
}

void StyleSheetTest::WithoutApplication()
{
    ProgramApplication = nullptr;
    Configuration.StyleSheet = "standard.css";
    Configuration.ApplyStyleSheet();
    QCOMPARE(qApp->styleSheet(), QString("QLabel { color: red }"));
}

void StyleSheetTest::WritesNothing()
{
    Configuration.StyleSheet = "standard.css";
    Configuration.ApplyStyleSheet();
    QVERIFY(QDir(Directory->path()).isEmpty());
    QCOMPARE(Configuration.StyleSheet, QString("standard.css"));
}

void StyleSheetTest::CompiledInColours_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("value");
    const auto row = [](const QString& selector, const QString& property, const QString& value)
    { QTest::newRow(qPrintable(selector + ' ' + property)) << selector << property << value; };
    row("QWidget", "background-color", "#122000");
    row("QWidget", "color", "palegoldenrod");
    row("QWidget", "border-color", "#051703");
    row("QWidget", "border-radius", "2px");
    row("QWidget", "font-size", "13px");
    row("QWidget", "font-family", "\"Open Sans\"");
    for (const QString button : {"QPushButton", "QToolButton", "QComboBox"})
    {
        row(button, "background-color", "#3C7000");
        row(button + ":hover", "background-color", "#4e6d26");
        row(button + ":pressed", "background-color", "#498100");
    }
    row("QWidget:disabled", "background-color", "#404040");
    row("QWidget:disabled", "color", "#656565");
    row("QMenuBar", "background-color", "#0a1700");
    row("QMenuBar::item:selected", "background-color", "#3C7000");
    row("QMenu", "background-color", "#122000");
    row("QMenu::item:selected", "background-color", "#498100");
    row("QAbstractSpinBox", "background-color", "#525251");
    row("QAbstractSpinBox:hover", "background-color", "#626262");
}

void StyleSheetTest::CompiledInColours()
{
    QFETCH(QString, selector);
    QFETCH(QString, property);
    QFETCH(QString, value);
    QCOMPARE(ValueOf(selector, property).toLower(), value.toLower());
}

void StyleSheetTest::CompiledInArrows()
{
    static const QRegularExpression Url(R"re(url\("?([^")]*)"?\))re");
    int count = 0;
    auto urls = Url.globalMatch(CompiledIn());
    for (; urls.hasNext(); ++count)
    {
        const QString image = urls.next().captured(1);
        QVERIFY2(image.startsWith(":/l/Logos/gelb_eee8aa/60h/"), qPrintable(image));
        QVERIFY2(!QImage(image).isNull(), qPrintable(image));
    }
    QVERIFY(count >= 2);  // a spin box has two arrows
}

QTEST_MAIN(StyleSheetTest)
#include "stylesheet_test.moc"
