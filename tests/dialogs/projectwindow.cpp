// SPDX-License-Identifier: MIT
#include "dialogs/projectwindow.h"

#include "dialogs/dialogguard.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QMenu>
#include <QTest>

void ProjectWindowTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Home = std::make_unique<TestHome>();
    Window = std::make_unique<TestWindow>();
    SeenLines = Window->Log().size();
}

void ProjectWindowTest::cleanup()
{
    Window.reset();
    Home.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void ProjectWindowTest::Command(const char* action, Button answer, const QString& typed) const
{
    const auto dialog = AnswerModal::FileDialog(typed);
    Command(action, answer);
    QVERIFY2(dialog.WasAnswered(), action);
}

void ProjectWindowTest::Command(const char* action, Button answer) const
{
    const AnswerModal question(answer);
    Trigger(action);
    QVERIFY2(question.WasAnswered(), action);
}

void ProjectWindowTest::Trigger(const char* action) const
{
    QVERIFY2(Window->Find<QAction>(action)->isEnabled(), action);
    Window->Find<QAction>(action)->trigger();
}

ShownQuestion ProjectWindowTest::QuestionOf(const char* action) const
{
    return CancelledQuestion([&] { Trigger(action); });
}

ShownFileDialog ProjectWindowTest::DialogOf(const char* action) const
{
    const AnswerModal question(QMessageBox::No);
    const ShownFileDialog shown = CancelledFileDialog([&] { Trigger(action); });
    return question.WasAnswered() ? shown : ShownFileDialog();
}

void ProjectWindowTest::NewProject(const QString& typed, Button answer) const
{
    Command("actionnew_project", answer, typed);
}

void ProjectWindowTest::OpenProject(const QString& path, Button answer) const
{
    Command("actionopen_project", answer, path);
}

void ProjectWindowTest::SaveProjectAs(const QString& typed, Button answer) const
{
    Command("actionsave_project_as", answer, typed);
}

QMenu* ProjectWindowTest::RecentMenu() const
{
    for (QAction* action : Window->Find<QMenu>("menumain")->actions())
    {
        if (action->text() == QLatin1String("Open Recent"))
        {
            return action->menu();
        }
    }
    qFatal("the menu has no recent projects");
}

QStringList ProjectWindowTest::RecentEntries() const
{
    QStringList texts;
    for (const QAction* action : RecentMenu()->actions())
    {
        texts.append(action->text());
    }
    return texts;
}

void ProjectWindowTest::ClickRecent(const QString& entry, Button answer) const
{
    const AnswerModal question(answer);
    const int row = RecentEntries().indexOf(entry);
    QVERIFY2(row >= 0, qPrintable(entry));
    RecentMenu()->actions().at(row)->trigger();
    QVERIFY(question.WasAnswered());
}

QStringList ProjectWindowTest::NewLines()
{
    const QStringList all = Window->Log();
    QStringList lines = all.mid(SeenLines);
    SeenLines = all.size();
    return lines;
}
