// SPDX-License-Identifier: MIT
#include "app/aboutforms.h"
#include "app/aboutqt.h"
#include "app/programapplication.h"
#include "app/testwindow.h"
#include "dialogs/dialogguard.h"
#include "support/testhome.h"
#include "support/toplevels.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QTest>

#include <memory>

namespace
{
const TestHome Home;

/** Notes the titles that widgets of a class get, from the constructor on. */
class TitleNotes : public QObject
{
    Q_OBJECT

public:
    explicit TitleNotes(const QString& className) : ClassName(className)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        const auto* widget = qobject_cast<QWidget*>(object);
        if (event->type() == QEvent::WindowTitleChange && widget != nullptr &&
            ClassName == QLatin1String(widget->metaObject()->className()))
        {
            Titles.append(widget->windowTitle());
        }
        return false;
    }

    QStringList Titles;

private:
    QString ClassName;
};

/** Notes whether the program had a style sheet each time a widget was shown. */
class SheetAtShow : public QObject
{
    Q_OBJECT

public:
    explicit SheetAtShow(QWidget* widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Show)
        {
            HadSheet.append(!qApp->styleSheet().isEmpty());
        }
        return false;
    }

    QList<bool> HadSheet;
};
}  // namespace

/** The program's notes and those on the libraries, alone and as the window shows them. */
class AboutDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void FactsOfTheClass_data();
    void FactsOfTheClass();
    void AboutQtShowsItsText();
    void ActionShowsItsDialog_data();
    void ActionShowsItsDialog();
    void DialogsStandSideBySide();
    void ClosedDialogKeepsItsPlace_data();
    void ClosedDialogKeepsItsPlace();
    void OnlyAboutAppliesTheStyleSheet();
    void WindowTakesThemAlong_data();
    void WindowTakesThemAlong();

private:
    static void AddActions();
    [[nodiscard]] static QDialog* DialogOf(const QString& className);

    std::unique_ptr<MessageGuard> Guard;
};

void AboutDialogsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    ProgramApplication = qApp;
}

void AboutDialogsTest::cleanup()
{
    qApp->setStyleSheet(QString());
    ProgramApplication = nullptr;
    QCOMPARE(EndDialogGuard(Guard), QStringList());
}

void AboutDialogsTest::AddActions()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("className");
    QTest::addColumn<bool>("isOffered");
    QTest::newRow("About Molvane") << QByteArray("actionAbout") << "About" << true;
    QTest::newRow("About Qt") << QByteArray("actionAbout_Qt") << "AboutQt" << true;
    QTest::newRow("About OpenCV") << QByteArray("actionAbout_OpenCV") << "AboutOpenCV" << true;
    QTest::newRow("About Codecs, not in the menu")
        << QByteArray("actionAbout_Codecs") << "AboutCodecs" << false;
}

/** The one that belongs to the window that stands. */
QDialog* AboutDialogsTest::DialogOf(const QString& className)
{
    for (QDialog* dialog : TopLevels<QDialog>())
    {
        if (ClassOf(*dialog) == className)
        {
            return dialog;
        }
    }
    qFatal("the window has no %s", qPrintable(className));
}

void AboutDialogsTest::FactsOfTheClass_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("textName");
    QTest::addColumn<bool>("isBrowser");
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<bool>("hasIcon");
    QTest::newRow("About") << "About" << QSize(580, 739) << "textBrowser" << true
                           << QStringList({"About", "Molvane License"}) << true;
    QTest::newRow("AboutQt") << "AboutQt" << QSize(519, 669) << "textBrowser" << true
                             << QStringList({"AboutQt", "Qt LGPL License"}) << true;
    QTest::newRow("AboutOpenCV") << "AboutOpenCV" << QSize(559, 557) << "textEdit" << false
                                 << QStringList({"AboutOpenCV", "OpenCV License"}) << true;
    QTest::newRow("AboutCodecs has no icon and keeps the form's title")
        << "AboutCodecs" << QSize(662, 751) << "textBrowser" << true << QStringList("AboutCodecs")
        << false;
}

void AboutDialogsTest::FactsOfTheClass()
{
    QFETCH(QString, className);
    QFETCH(QString, textName);
    QFETCH(bool, isBrowser);
    const TitleNotes notes(className);
    const std::unique_ptr<QDialog> dialog = MakeAbout(className);
    QTEST(notes.Titles, "titles");
    QTEST(dialog->size(), "size");
    const auto* layout = qobject_cast<QHBoxLayout*>(dialog->layout());
    QVERIFY(layout != nullptr);
    QCOMPARE(layout->objectName(), QStringLiteral("horizontalLayout"));
    QCOMPARE(layout->count(), 1);
    const QTextEdit* text = TextOf(*dialog);
    QCOMPARE(layout->itemAt(0)->widget(), text);
    QCOMPARE(text->objectName(), textName);
    QCOMPARE(text->metaObject()->className(), isBrowser ? "QTextBrowser" : "QTextEdit");
    QVERIFY(text->isReadOnly());
    const QMetaObject* meta = dialog->metaObject();
    QCOMPARE(meta->methodCount(), meta->methodOffset());

    QFETCH(bool, hasIcon);
    QCOMPARE(dialog->windowIcon().isNull(), !hasIcon);
    if (hasIcon)
    {
        const QIcon icon(QStringLiteral(":/l/Logos/logo-kvar-klein.png"));
        QVERIFY(!icon.pixmap(128).isNull());
        QCOMPARE(dialog->windowIcon().pixmap(128).toImage(), icon.pixmap(128).toImage());
    }
}

void AboutDialogsTest::AboutQtShowsItsText()
{
    AboutQt dialog;
    QVERIFY(!TextOf(dialog)->isHidden());
    dialog.show();
    QVERIFY(TextOf(dialog)->isVisible());
}

void AboutDialogsTest::ActionShowsItsDialog_data()
{
    AddActions();
}

void AboutDialogsTest::ActionShowsItsDialog()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, className);
    const TestWindow window;
    const QDialog* dialog = DialogOf(className);
    auto* entry = window.Find<QAction>(action.constData());
    QTEST(entry->isVisible(), "isOffered");
    QVERIFY(dialog->isHidden());
    QVERIFY(dialog->parentWidget() == nullptr);
    entry->trigger();
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->isModal());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    for (const QString& other : AboutClasses)
    {
        QCOMPARE(DialogOf(other)->isVisible(), other == className);
    }
}

void AboutDialogsTest::DialogsStandSideBySide()
{
    const TestWindow window;
    for (const char* action :
         {"actionAbout", "actionAbout_Qt", "actionAbout_OpenCV", "actionAbout_Codecs"})
    {
        window.Find<QAction>(action)->trigger();
    }
    for (const QString& name : AboutClasses)
    {
        QVERIFY2(DialogOf(name)->isVisible(), qPrintable(name));
    }
    QVERIFY(window->isVisible());
}

void AboutDialogsTest::ClosedDialogKeepsItsPlace_data()
{
    AddActions();
}

void AboutDialogsTest::ClosedDialogKeepsItsPlace()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, className);
    const TestWindow window;
    auto* entry = window.Find<QAction>(action.constData());
    QDialog* dialog = DialogOf(className);
    entry->trigger();
    QVERIFY(QTest::qWaitForWindowExposed(dialog));
    QScrollBar* bar = TextOf(*dialog)->verticalScrollBar();
    const int place = bar->maximum() / 2;
    QVERIFY(place > 0);
    bar->setValue(place);
    QVERIFY(dialog->close());
    QVERIFY(dialog->isHidden());
    QVERIFY(window->isVisible());
    entry->trigger();
    QVERIFY(QTest::qWaitForWindowExposed(dialog));
    QVERIFY(dialog->isVisible());
    QCOMPARE(bar->value(), place);
}

void AboutDialogsTest::OnlyAboutAppliesTheStyleSheet()
{
    const TestWindow window;
    const QString sheet = qApp->styleSheet();
    QVERIFY(!sheet.isEmpty());
    qApp->setStyleSheet(QString());
    for (const char* action : {"actionAbout_Qt", "actionAbout_OpenCV", "actionAbout_Codecs"})
    {
        window.Find<QAction>(action)->trigger();
        QCOMPARE(qApp->styleSheet(), QString());
    }
    const SheetAtShow notes(DialogOf("About"));
    window.Find<QAction>("actionAbout")->trigger();
    QCOMPARE(qApp->styleSheet(), sheet);
    QCOMPARE(notes.HadSheet, QList<bool>{true});
}

void AboutDialogsTest::WindowTakesThemAlong_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isOpen");
    QTest::newRow("no closes window and dialogs") << int(QMessageBox::No) << false;
    QTest::newRow("cancel leaves all open") << int(QMessageBox::Cancel) << true;
}

void AboutDialogsTest::WindowTakesThemAlong()
{
    QFETCH(int, answer);
    QFETCH(bool, isOpen);
    const TestWindow window;
    for (const char* action :
         {"actionAbout", "actionAbout_Qt", "actionAbout_OpenCV", "actionAbout_Codecs"})
    {
        window.Find<QAction>(action)->trigger();
    }
    const AnswerModal question{QMessageBox::StandardButton(answer)};
    window->close();
    QVERIFY(question.WasAnswered());
    QCOMPARE(window->isVisible(), isOpen);
    for (const QString& name : AboutClasses)
    {
        QCOMPARE(DialogOf(name)->isVisible(), isOpen);
    }
}

QTEST_MAIN(AboutDialogsTest)
#include "aboutdialogs_test.moc"
