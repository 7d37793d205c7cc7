// SPDX-License-Identifier: MIT
#include "app/help.h"
#include "batch/jobstate.h"
#include "dialogs/homefiles.h"
#include "dialogs/projectwindow.h"
#include "support/files.h"
#include "support/toplevels.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QApplication>
#include <QSet>
#include <QTest>

namespace
{
const TestHome OuterHome;

/** The one help dialog, which stands alone beside the window. */
const QWidget* HelpDialog()
{
    return TopLevels<Help>().value(0);
}
}  // namespace

/** The commands by their keys. */
class ShortcutsTest : public ProjectWindowTest
{
    Q_OBJECT

private slots:
    void KeysOfTheActions_data();
    void KeysOfTheActions();
    void NoKeyStandsForTwoActions();
    void KeyAsksItsQuestion_data();
    void KeyAsksItsQuestion();
    void SaveKeySaves();
    void HelpKeyShowsTheHelp();
    void ExitKeyCloses();
    void KeysWorkFromEveryTab_data();
    void KeysWorkFromEveryTab();
    void KeysWorkFromAField_data();
    void KeysWorkFromAField();
    void KeysDuringAJob();

private:
    /** Presses keys where the focus is. */
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers) const;
    /** @return title of the question that the keys bring up, answered with Cancel; else nothing */
    [[nodiscard]] QString QuestionOf(Qt::Key key, Qt::KeyboardModifiers modifiers) const;
};

void ShortcutsTest::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    QApplication::setActiveWindow(Window->operator->());
    QVERIFY(QTest::qWaitForWindowActive(Window->operator->()));
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : Window->operator->(), key, modifiers);
}

QString ShortcutsTest::QuestionOf(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    return CancelledQuestion([&] { Press(key, modifiers); }).Title;
}

void ShortcutsTest::KeysOfTheActions_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("keys");
    const auto add = [](const char* action, const char* keys)
    { QTest::newRow(action) << QByteArray(action) << QString::fromLatin1(keys); };
    add("actionnew_project", "Ctrl+N");
    add("actionopen_project", "Ctrl+O");
    add("actionsave_project", "Ctrl+S");
    add("actionsave_project_as", "Ctrl+Shift+S");
    add("actionexit", "Ctrl+Q");
    add("actionHelp", "F1");
    add("actionFile_Settings", "");
    add("actionAbout", "");
    add("actionAbout_Qt", "");
    add("actionAbout_OpenCV", "");
    add("actionAbout_Codecs", "");
    add("actionDefault_Settings", "");
    add("actionLook_Feel", "");
}

void ShortcutsTest::KeysOfTheActions()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, keys);
    QCOMPARE(Window->Find<QAction>(action.constData())->shortcut().toString(), keys);
}

void ShortcutsTest::NoKeyStandsForTwoActions()
{
    QSet<QString> seen;
    for (const QAction* action : (*Window)->findChildren<QAction*>())
    {
        for (const QKeySequence& keys : action->shortcuts())
        {
            QVERIFY2(!seen.contains(keys.toString()), qPrintable(keys.toString()));
            seen.insert(keys.toString());
        }
    }
    QVERIFY(seen.size() >= 6);
}

void ShortcutsTest::KeyAsksItsQuestion_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("title");
    const int ctrl = Qt::ControlModifier;
    const int ctrlShift = Qt::ControlModifier | Qt::ShiftModifier;
    QTest::newRow("Ctrl+N") << Qt::Key_N << ctrl << "Create new Project";
    QTest::newRow("Ctrl+O") << Qt::Key_O << ctrl << "Open Project";
    QTest::newRow("Ctrl+Shift+S") << Qt::Key_S << ctrlShift << "Save as new Project";
    QTest::newRow("Ctrl+Q") << Qt::Key_Q << ctrl << "Exit";
    QTest::newRow("N alone does nothing") << Qt::Key_N << int(Qt::NoModifier) << QString();
    QTest::newRow("Ctrl+Shift+N does nothing") << Qt::Key_N << ctrlShift << QString();
}

void ShortcutsTest::KeyAsksItsQuestion()
{
    QFETCH(Qt::Key, key);
    QFETCH(int, modifiers);
    QFETCH(QString, title);
    const QByteArray before = ReadBytes(StartProjectPath());
    QCOMPARE(QuestionOf(key, Qt::KeyboardModifiers(modifiers)), title);
    QVERIFY((*Window)->isVisible());
    QCOMPARE(ReadBytes(StartProjectPath()), before);
}

void ShortcutsTest::SaveKeySaves()
{
    static_cast<void>(NewLines());
    Window->SetNumber("spinBoxMaxTrackingPoints", 345);
    Press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(NewLines(), QStringList("Run      Project file written!"));
    QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), 345);
}

void ShortcutsTest::HelpKeyShowsTheHelp()
{
    QVERIFY(HelpDialog() != nullptr && !HelpDialog()->isVisible());
    Press(Qt::Key_F1, Qt::NoModifier);
    QVERIFY(HelpDialog()->isVisible());
    QVERIFY(!HelpDialog()->isModal());
}

void ShortcutsTest::ExitKeyCloses()
{
    const AnswerModal question(QMessageBox::No);
    Press(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(question.WasAnswered());
    QVERIFY(!(*Window)->isVisible());
}

void ShortcutsTest::KeysWorkFromEveryTab_data()
{
    QTest::addColumn<int>("tab");
    for (int tab = 0; tab < 5; ++tab)
    {
        QTest::addRow("%d", tab) << tab;
    }
}

void ShortcutsTest::KeysWorkFromEveryTab()
{
    QFETCH(int, tab);
    Window->ClickTab(tab);
    QCOMPARE(QuestionOf(Qt::Key_N, Qt::ControlModifier), QStringLiteral("Create new Project"));
    static_cast<void>(NewLines());
    Press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(NewLines(), QStringList("Run      Project file written!"));
}

void ShortcutsTest::KeysWorkFromAField_data()
{
    QTest::addColumn<QByteArray>("field");
    for (const char* field :
         {"lineEditSourceVideo", "spinBoxMaxTrackingPoints", "doubleSpinBoxZoom", "checkBoxRescale",
          "plainTextEdit", "pushButtonAnalyseTrack"})
    {
        QTest::newRow(field) << QByteArray(field);
    }
}

void ShortcutsTest::KeysWorkFromAField()
{
    QFETCH(QByteArray, field);
    auto* widget = Window->Find<QWidget>(field.constData());
    QApplication::setActiveWindow(Window->operator->());
    widget->setFocus();
    QTRY_VERIFY(widget->hasFocus());
    QCOMPARE(QuestionOf(Qt::Key_O, Qt::ControlModifier), QStringLiteral("Open Project"));
    QCOMPARE(QuestionOf(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier),
             QStringLiteral("Save as new Project"));
}

void ShortcutsTest::KeysDuringAJob()
{
    (*Window)->ProcessUpdate(JobAnalyse);
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_O, Qt::Key_Q})
    {
        QCOMPARE(QuestionOf(key, Qt::ControlModifier), QString());
    }
    QCOMPARE(QuestionOf(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier), QString());
    static_cast<void>(NewLines());
    Press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(NewLines(), QStringList("Run      Project file written!"));
    Press(Qt::Key_F1, Qt::NoModifier);
    QVERIFY(HelpDialog()->isVisible());
}

QTEST_MAIN(ShortcutsTest)
#include "shortcuts_test.moc"
