// SPDX-License-Identifier: MIT
#include "app/help.h"
#include "app/contrast.h"
#include "app/programapplication.h"
#include "app/testwindow.h"
#include "app/windowtexts.h"
#include "dialogs/dialogguard.h"
#include "support/testhome.h"
#include "support/toplevels.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace
{
const TestHome Home;

template <typename Visit>
void ForEachFragment(const QTextDocument& text, const Visit& visit)
{
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
    {
        for (auto it = block.begin(); !it.atEnd(); ++it)
        {
            visit(block, it.fragment());
        }
    }
}

/** The headings of @p level, which counts from 1, in their order. */
QStringList Headings(const QTextDocument& text, int level)
{
    QStringList headings;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
    {
        if (block.blockFormat().headingLevel() == level)
        {
            headings.append(block.text().trimmed());
        }
    }
    return headings;
}

/** What stands in bold outside headings: texts of the window, by the manual's own rule. */
QStringList QuotedTexts(const QTextDocument& text)
{
    QStringList quoted;
    ForEachFragment(text,
                    [&quoted](const QTextBlock& block, const QTextFragment& fragment)
                    {
                        if (block.blockFormat().headingLevel() == 0 &&
                            fragment.charFormat().fontWeight() >= QFont::Bold)
                        {
                            quoted.append(fragment.text().trimmed());
                        }
                    });
    quoted.removeDuplicates();
    return quoted;
}

/** Names of all pictures, with repeats. */
QStringList Pictures(const QTextDocument& text)
{
    QStringList names;
    ForEachFragment(text,
                    [&names](const QTextBlock& /*block*/, const QTextFragment& fragment)
                    {
                        if (fragment.charFormat().isImageFormat())
                        {
                            names.append(fragment.charFormat().toImageFormat().name());
                        }
                    });
    return names;
}

/** Targets of all links, with repeats. */
QStringList Links(const QTextDocument& text)
{
    QStringList links;
    ForEachFragment(text,
                    [&links](const QTextBlock& /*block*/, const QTextFragment& fragment)
                    {
                        if (!fragment.charFormat().anchorHref().isEmpty())
                        {
                            links.append(fragment.charFormat().anchorHref());
                        }
                    });
    return links;
}

/** The text from the heading @p title up to the next heading of any level. */
QString TextUnder(const QTextDocument& text, const QString& title)
{
    QString under;
    bool isIn = false;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
    {
        isIn = block.blockFormat().headingLevel() > 0 ? block.text().trimmed() == title : isIn;
        under += isIn ? block.text() + QLatin1Char('\n') : QString();
    }
    return under;
}

Help* ShownHelp()
{
    for (Help* help : TopLevels<Help>())
    {
        if (help->isVisible())
        {
            return help;
        }
    }
    return nullptr;
}
}  // namespace

/** The manual: complete, whole, and true to the texts of the window. */
class HelpTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ProgramApplication = qApp; }  // for the style sheet
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(EndDialogGuard(Guard), QStringList()); }
    void Form();
    void SectionsComeInOrder();
    void SubsectionsComeInOrder();
    void TellsWhatMatters_data();
    void TellsWhatMatters();
    void PicturesAreThereAndSmallEnough();
    void PicturesAreDescribed();
    void LinksLeadSomewhere();
    void LinksScrollTheText();
    void LinksAreReadable();
    void QuotesOnlyWhatTheWindowSays();
    void HasPlainCharacters();
    void ShowsByMenu();
    void KeepsItsPlaceWhileClosed();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void HelpTest::Form()
{
    const Help help;
    QCOMPARE(help.size(), QSize(1205, 714));
    QCOMPARE(help.windowTitle(), QStringLiteral("Help Quick Start Guide"));
    const QImage icon(QStringLiteral(":/l/Logos/logo-kvar-klein.png"));
    QVERIFY(!icon.isNull());
    QCOMPARE(help.windowIcon().pixmap(icon.size()).toImage(), QPixmap::fromImage(icon).toImage());
    const auto* layout = qobject_cast<QHBoxLayout*>(help.layout());
    QVERIFY(layout != nullptr);
    QCOMPARE(layout->objectName(), QStringLiteral("horizontalLayout"));
    QCOMPARE(layout->count(), 1);
    const auto* text = qobject_cast<QTextBrowser*>(layout->itemAt(0)->widget());
    QVERIFY(text != nullptr);
    QCOMPARE(text->objectName(), QStringLiteral("textBrowser"));
}

void HelpTest::SectionsComeInOrder()
{
    const Help help;
    QCOMPARE(Headings(*help.findChild<QTextBrowser*>()->document(), 2),
             QStringList({"Introduction", "Quick Start Guide", "Filter Settings",
                          "Custom Start and End Values", "Manual Camera Path Editing",
                          "Ignore Stabilization Sections", "Questions and Answers", "Audio",
                          "Release Notes"}));
}

void HelpTest::SubsectionsComeInOrder()
{
    const Help help;
    const QString expected = QStringLiteral(
        "Step 1: Create a project and see a first result|"
        "Step 2: Set a crop and check the filter paths|Step 3: Export|"
        "Step 4: Come back later with \"Read Analyzed Data\"|"
        "The graph|Which filter type to choose|Filter type 1|Filter type 2|Filter type 3|"
        "Filter type 4|Filter type 5|Rotation|"
        "Add sections and points in the list|Delete sections and points|"
        "Add points in the graph plot|"
        "How do I zoom in the plot?|How do I change between time and frame view?|"
        "What is the FT5 start margin?|Why does the picture wobble?|"
        "Why are some frames unsharp?|Why was my crop not saved?|"
        "The player shows only the source, or does not play. Why?|0.4.1 (Beta)");
    QCOMPARE(Headings(*help.findChild<QTextBrowser*>()->document(), 3),
             expected.split(QLatin1Char('|')));
}

void HelpTest::TellsWhatMatters_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("facts");
    QTest::newRow("scratch place") << "Step 1: Create a project and see a first result"
                                   << QStringList{"Molvane/Start", "scratch place"};
    QTest::newRow("decimal comma") << "Step 2: Set a crop and check the filter paths"
                                   << QStringList{"with a comma: 110,5", "110.5 counts as 1105"};
    QTest::newRow("type 1") << "Filter type 1" << QStringList{"average", "needs the least crop"};
    QTest::newRow("type 2") << "Filter type 2" << QStringList{"done twice", "2N frames"};
    QTest::newRow("type 3") << "Filter type 3"
                            << QStringList{"done three times", "3N frames", "does not lag"};
    QTest::newRow("type 4") << "Filter type 4"
                            << QStringList{"8N frames", "24N frames", "does not lag"};
    QTest::newRow("type 5") << "Filter type 5"
                            << QStringList{"18N frames", "54N frames",     "7.5N frames late",
                                           "F5 Margin",  "Applied Margin", "The band"};
}

void HelpTest::TellsWhatMatters()
{
    QFETCH(QString, title);
    QFETCH(QStringList, facts);
    const Help help;
    const QString text = TextUnder(*help.findChild<QTextBrowser*>()->document(), title);
    for (const QString& fact : facts)
    {
        QVERIFY2(text.contains(fact), qPrintable(fact));
    }
}

void HelpTest::PicturesAreThereAndSmallEnough()
{
    const Help help;
    const QStringList names = Pictures(*help.findChild<QTextBrowser*>()->document());
    QVERIFY(!names.isEmpty());
    qint64 bytes = 0;
    for (const QString& name : names)
    {
        QVERIFY2(name.startsWith(QStringLiteral(":/screenshots/Screenshots/")), qPrintable(name));
        const QImage picture(name);
        QVERIFY2(!picture.isNull(), qPrintable(name));
        QVERIFY2(picture.width() <= 900, qPrintable(name));
        bytes += QFileInfo(name).size();
    }
    QVERIFY(bytes < 700LL * 1024);
    // None lies in the program without being shown.
    QStringList there = QDir(QStringLiteral(":/screenshots/Screenshots")).entryList();
    for (QString& name : there)
    {
        name.prepend(QStringLiteral(":/screenshots/Screenshots/"));
    }
    QStringList shown = names;
    shown.removeDuplicates();
    shown.sort();
    there.sort();
    QCOMPARE(there, shown);
}

void HelpTest::PicturesAreDescribed()
{
    const Help help;
    const QString html = help.findChild<QTextBrowser*>()->document()->toHtml();
    QRegularExpressionMatchIterator images =
        QRegularExpression(QStringLiteral("<img [^>]*>")).globalMatch(html);
    QVERIFY(images.hasNext());
    while (images.hasNext())
    {
        const QString image = images.next().captured();
        QVERIFY2(
            QRegularExpression(QStringLiteral("alt=\"[A-Z][^\"]{20,}\"")).match(image).hasMatch(),
            qPrintable(image));
    }
}

void HelpTest::LinksLeadSomewhere()
{
    const Help help;
    const QTextDocument& text = *help.findChild<QTextBrowser*>()->document();
    QStringList anchors;
    ForEachFragment(text, [&anchors](const QTextBlock& /*block*/, const QTextFragment& fragment)
                    { anchors += fragment.charFormat().anchorNames(); });
    const QStringList links = Links(text);
    QVERIFY(links.size() > Headings(text, 2).size());
    for (const QString& link : links)
    {
        QVERIFY2(link.startsWith(QLatin1Char('#')), qPrintable(link));
        QCOMPARE(anchors.count(link.mid(1)), 1);
    }
}

void HelpTest::LinksScrollTheText()
{
    Help help;
    help.show();
    auto* browser = help.findChild<QTextBrowser*>();
    const QList<QPair<QString, QString>> places = {
        {"#start", "Quick Start Guide"}, {"#type5", "Filter type 5"}, {"#custom", "Custom Start"}};
    for (const auto& [link, heading] : places)
    {
        browser->setSource(QUrl(link));
        const QString first = browser->cursorForPosition(QPoint(10, 12)).block().text();
        QVERIFY2(first.startsWith(heading), qPrintable(first));
    }
}

void HelpTest::LinksAreReadable()
{
    const TestWindow window;
    window.Find<QAction>("actionHelp")->trigger();
    QVERIFY(ShownHelp() != nullptr);
    auto* browser = ShownHelp()->findChild<QTextBrowser*>();
    QWidget* page = browser->viewport();
    const QColor ground =
        page->grab().toImage().pixelColor(page->width() - 5, 5);  // beside the text
    int count = 0;
    ForEachFragment(
        *browser->document(),
        [&](const QTextBlock& /*block*/, const QTextFragment& fragment)
        {
            const QTextCharFormat format = fragment.charFormat();
            if (!format.anchorHref().isEmpty())
            {
                QVERIFY(Contrast(format.foreground().color(), ground) >= ReadableContrast);
                ++count;
            }
        });
    QVERIFY(count > 0);
}

void HelpTest::QuotesOnlyWhatTheWindowSays()
{
    const TestWindow window;
    const WindowTexts texts(window);
    const Help help;
    const QStringList quoted = QuotedTexts(*help.findChild<QTextBrowser*>()->document());
    QVERIFY(quoted.size() > 40);
    QStringList unknown;
    for (const QString& text : quoted)
    {
        if (!texts.Has(text))
        {
            unknown.append(text);
        }
    }
    QCOMPARE(unknown.join(QLatin1Char('\n')), QString());
}

void HelpTest::HasPlainCharacters()
{
    const Help help;
    for (const QChar letter : help.findChild<QTextBrowser*>()->toPlainText())
    {
        const bool isPlain = letter == QLatin1Char('\n') ||
                             letter == QChar::ObjectReplacementCharacter ||
                             (letter >= QLatin1Char(' ') && letter <= QLatin1Char('~'));
        QVERIFY2(isPlain, qPrintable(QString::number(letter.unicode(), 16)));
    }
}

void HelpTest::ShowsByMenu()
{
    const TestWindow window;
    QVERIFY(ShownHelp() == nullptr);
    window.Find<QAction>("actionHelp")->trigger();
    QVERIFY(ShownHelp() != nullptr);
    QVERIFY(!ShownHelp()->isModal());
    window.ClickTab(1);  // the window still works
    ShownHelp()->close();
    QVERIFY(ShownHelp() == nullptr);
}

void HelpTest::KeepsItsPlaceWhileClosed()
{
    const TestWindow window;
    window.Find<QAction>("actionHelp")->trigger();
    QVERIFY(ShownHelp() != nullptr);
    QScrollBar* bar = ShownHelp()->findChild<QTextBrowser*>()->verticalScrollBar();
    QVERIFY(bar->maximum() > 1000);
    bar->setValue(777);
    ShownHelp()->close();
    QVERIFY(ShownHelp() == nullptr);
    window.Find<QAction>("actionHelp")->trigger();
    QVERIFY(ShownHelp() != nullptr);
    QCOMPARE(bar->value(), 777);
}

QTEST_MAIN(HelpTest)
#include "help_test.moc"
