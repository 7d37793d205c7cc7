// SPDX-License-Identifier: MIT
#include "app/aboutforms.h"
#include "app/contrast.h"
#include "app/endguard.h"
#include "app/programapplication.h"
#include "project/configuration.h"

#include <QFile>
#include <QProcess>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTest>
#include <QTextBlock>

#include <memory>

namespace
{
/** All text of a new dialog, each white space one blank. */
QString WordsOf(const QString& className)
{
    return TextOf(*MakeAbout(className))->toPlainText().simplified();
}

/** The texts of the lines that are headings or not. */
QStringList LinesOf(const QString& className, bool isHeading)
{
    const std::unique_ptr<QDialog> dialog = MakeAbout(className);
    QStringList lines;
    for (QTextBlock block = TextOf(*dialog)->document()->begin(); block.isValid();
         block = block.next())
    {
        const int level = block.blockFormat().headingLevel();
        // Deeper headings are those of the quoted licences.
        if (isHeading ? level == 1 || level == 2 : level == 0)
        {
            lines.append(block.text());
        }
    }
    return lines;
}

/** @return empty when it cannot be read */
QString ReadText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString CommonLicence(const QString& name)
{
    return QStringLiteral("/usr/share/common-licenses/%1").arg(name);
}

/** What stands from @p first on and before @p end. */
QString Section(const QString& text, const QString& first, const QString& end)
{
    const int from = text.indexOf(first);
    return from < 0 ? QString() : text.mid(from, text.indexOf(end, from) - from);
}
}  // namespace

/** What the dialogs with notes and licences say. */
class AboutTextsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void HeadingsInOrder_data();
    void HeadingsInOrder();
    void AboutTellsTheVersion();
    void AboutShowsTheLogo();
    void AboutHoldsTheConditions();
    void AboutQtNamesVersionAndCompiler();
    void AboutQtHasTheFontOfTheOthers();
    void LicencesAreWhole_data();
    void LicencesAreWhole();
    void NoticesOfOpenCV();
    void LicenceOfQwt();
    void BuildOptionsOfFFmpeg();
    void EverythingIsReadable_data();
    void EverythingIsReadable();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void AboutTextsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    ProgramApplication = qApp;
}

void AboutTextsTest::cleanup()
{
    qApp->setStyleSheet(QString());
    ProgramApplication = nullptr;
    QCOMPARE(EndGuard(Guard), QStringList());
}

void AboutTextsTest::HeadingsInOrder_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QStringList>("headings");
    QTest::newRow("About") << "About"
                           << QStringList({"Molvane", "Conditions of use", "Disclaimer of warranty",
                                           "Libraries and font", "Contact"});
    QTest::newRow("AboutQt") << "AboutQt"
                             << QStringList({"About Qt", "Licence notes", "GNU LGPL version 3",
                                             "About Qwt", "Licence", "GNU LGPL version 2.1"});
    QTest::newRow("AboutOpenCV") << "AboutOpenCV"
                                 << QStringList({"OpenCV", "Copyright", "Apache License 2.0",
                                                 "BSD licence"});
    QTest::newRow("AboutCodecs") << "AboutCodecs"
                                 << QStringList({"Video codecs", "Libraries of videoio",
                                                 "Codec libraries of libavcodec",
                                                 "Build options of FFmpeg", "Licence notes",
                                                 "GNU GPL version 2", "GNU LGPL version 2.1"});
}

void AboutTextsTest::HeadingsInOrder()
{
    QFETCH(QString, className);
    QTEST(LinesOf(className, true), "headings");
}

void AboutTextsTest::AboutTellsTheVersion()
{
    QCOMPARE(LinesOf("About", false).filter("Version"), QStringList("Version 0.4.1 (Beta)"));
}

void AboutTextsTest::AboutShowsTheLogo()
{
    const std::unique_ptr<QDialog> dialog = MakeAbout("About");
    const QTextDocument* document = TextOf(*dialog)->document();
    QStringList pictures;
    for (const QTextFormat& format : document->allFormats())
    {
        if (format.isImageFormat())
        {
            pictures.append(format.toImageFormat().name());
        }
    }
    QCOMPARE(pictures, QStringList(":/l/Logos/logo-kvar-gross.png"));
    const QImage logo(pictures.first());
    QCOMPARE(logo.size(), QSize(256, 256));
    QVERIFY(document->begin().text().contains(QChar::ObjectReplacementCharacter));
}

void AboutTextsTest::AboutHoldsTheConditions()
{
    const QString licence = ReadText(QFINDTESTDATA("../../LICENSE")).simplified();
    const int disclaimer = licence.indexOf("THE SOFTWARE IS PROVIDED");
    QVERIFY(licence.startsWith("MIT License") && disclaimer > 0);
    const QString words = WordsOf("About");
    const QString conditions = "Conditions of use " + licence.left(disclaimer).trimmed();
    const QString warranty = "Disclaimer of warranty " + licence.mid(disclaimer);
    QVERIFY2(words.contains(conditions + ' ' + warranty), qPrintable(words));
}

void AboutTextsTest::AboutQtNamesVersionAndCompiler()
{
    const QString line =
        QStringLiteral("Molvane uses Qt %1 from GCC 7.3.0 mingw-w64 under the GNU LGPL.")
            .arg(QString::fromLatin1(qVersion()));
    QCOMPARE(LinesOf("AboutQt", false).first(), line);
    QVERIFY(!WordsOf("AboutQt").contains("XXX"));
}

void AboutTextsTest::AboutQtHasTheFontOfTheOthers()
{
    const std::unique_ptr<QDialog> dialog = MakeAbout("AboutQt");
    const QTextBlock line = TextOf(*dialog)->document()->begin().next();
    const QFont font = line.begin().fragment().charFormat().font();
    QCOMPARE(font.family(), QStringLiteral("Open Sans"));
    QCOMPARE(font.pixelSize(), 13);
}

void AboutTextsTest::LicencesAreWhole_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("heading");
    QTest::addColumn<QString>("licence");
    QTest::newRow("Qt") << "AboutQt"
                        << "GNU LGPL version 3"
                        << "LGPL-3";
    QTest::newRow("Qwt") << "AboutQt"
                         << "GNU LGPL version 2.1"
                         << "LGPL-2.1";
    QTest::newRow("OpenCV") << "AboutOpenCV"
                            << "Apache License 2.0"
                            << "Apache-2.0";
    QTest::newRow("codecs, GPL") << "AboutCodecs"
                                 << "GNU GPL version 2"
                                 << "GPL-2";
    QTest::newRow("codecs, LGPL") << "AboutCodecs"
                                  << "GNU LGPL version 2.1"
                                  << "LGPL-2.1";
}

void AboutTextsTest::LicencesAreWhole()
{
    QFETCH(QString, className);
    QFETCH(QString, heading);
    QFETCH(QString, licence);
    const QString path = CommonLicence(licence);
    if (!QFile::exists(path))
    {
        QSKIP("the system has no copy to compare with");
    }
    const QString text = ReadText(path).simplified();
    QVERIFY(!text.isEmpty());
    const QString words = WordsOf(className);
    QVERIFY2(words.contains(heading + ' ' + text), qPrintable(words));
}

void AboutTextsTest::NoticesOfOpenCV()
{
    QString text = ReadText("/usr/share/doc/libopencv-dev/copyright").simplified();
    if (text.isEmpty())
    {
        QSKIP("the system has no copy to compare with");
    }
    text.replace(" . ", " ");  // how Debian marks an empty line
    const QString holders = Section(text, "2000-2022, Intel", " License:");
    const QString conditions = Section(text, "Redistribution and use", " License:");
    QVERIFY(holders.endsWith("Respective opencv contributors."));
    QVERIFY(conditions.endsWith("the possibility of such damage."));
    const QString words = WordsOf("AboutOpenCV");
    QVERIFY2(words.contains("Copyright " + holders), qPrintable(words));
    QVERIFY2(words.endsWith("BSD licence " + conditions), qPrintable(words));
}

void AboutTextsTest::LicenceOfQwt()
{
    const QString text = ReadText("/usr/share/doc/libqwt-qt5-dev/copyright").simplified();
    if (text.isEmpty())
    {
        QSKIP("the system has no copy to compare with");
    }
    const QString exceptions = Section(text, "Qwt License Version 1.0", " -----");
    const QString notice = Section(text, "This package is free software", " On Debian systems");
    QVERIFY(exceptions.endsWith("(http://qwt.sf.net)."));
    QVERIFY(notice.endsWith("<http://www.gnu.org/licenses/>."));
    const QString words = WordsOf("AboutQt");
    QVERIFY2(words.contains("Licence " + exceptions + ' ' + notice + " GNU LGPL version 2.1"),
             qPrintable(words));
    QVERIFY(
        words.contains("Molvane is based in part on the work of the Qwt project "
                       "(http://qwt.sf.net)."));
}

void AboutTextsTest::BuildOptionsOfFFmpeg()
{
    const auto isOption = [](const QString& line) { return line.startsWith("--"); };
    QStringList shown;
    const std::unique_ptr<QDialog> dialog = MakeAbout("AboutCodecs");
    for (const QString& line : TextOf(*dialog)->toPlainText().split('\n'))
    {
        isOption(line) ? shown.append(line) : void();
    }
    QVERIFY(shown.contains("--enable-gpl") && shown.contains("--enable-shared"));

    const QString program = QStandardPaths::findExecutable("ffmpeg");
    QProcess ffmpeg;
    ffmpeg.start(program, {"-hide_banner", "-buildconf"});
    QStringList told;
    if (ffmpeg.waitForFinished())
    {
        for (const QString& line : QString::fromUtf8(ffmpeg.readAllStandardOutput()).split('\n'))
        {
            isOption(line.trimmed()) ? told.append(line.trimmed()) : void();
        }
    }
    const QStringList versions = told.filter("--extra-version=");
    if (versions.filter("+deb12").isEmpty() || !told.contains("--arch=amd64"))
    {
        QSKIP("not the build that the text is about");
    }
    // The security updates count this one on.
    told.removeOne(versions.first());
    shown.removeOne(shown.filter("--extra-version=").value(0));
    QCOMPARE(shown, told);
}

void AboutTextsTest::EverythingIsReadable_data()
{
    QTest::addColumn<QString>("className");
    for (const QString& name : AboutClasses)
    {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void AboutTextsTest::EverythingIsReadable()
{
    QFETCH(QString, className);
    const std::unique_ptr<QDialog> dialog = MakeAbout(className);
    GlobalConfiguration().ApplyStyleSheet();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    QTextEdit* text = TextOf(*dialog);
    text->moveCursor(QTextCursor::End);  // only what is above has been laid out
    QVERIFY(text->verticalScrollBar()->value() > 0);
    QCOMPARE(text->horizontalScrollBar()->maximum(), 0);

    const QColor ground = text->viewport()->grab().toImage().pixelColor(1, 1);
    for (const QTextFormat& format : text->document()->allFormats())
    {
        const bool isLink = format.isCharFormat() && format.toCharFormat().isAnchor();
        if (isLink || format.hasProperty(QTextFormat::ForegroundBrush))
        {
            QVERIFY(Contrast(format.foreground().color(), ground) >= ReadableContrast);
        }
    }
}

QTEST_MAIN(AboutTextsTest)
#include "abouttexts_test.moc"
