// SPDX-License-Identifier: MIT
#include "dialogs/homefiles.h"
#include "dialogs/projectwindow.h"
#include "support/files.h"
#include "userhands/answermodal.h"

#include <QFile>
#include <QTest>

namespace
{
const TestHome OuterHome;
}  // namespace

/** The question before the window closes. */
class ExitQuestionTest : public ProjectWindowTest
{
    Q_OBJECT

private slots:
    void Words();
    void Answers_data();
    void Answers();
    void YesWritesTheConfiguration();
    void ComesWithoutAChange();
    void EscapeCancels();

private:
    void Leave(bool byMenu) const;
};

void ExitQuestionTest::Leave(bool byMenu) const
{
    byMenu ? Trigger("actionexit") : static_cast<void>((*Window)->close());
}

void ExitQuestionTest::Words()
{
    const ShownQuestion shown = QuestionOf("actionexit");
    QCOMPARE(shown.Title, QStringLiteral("Exit"));
    QCOMPARE(shown.Text, QStringLiteral("Save current project or cancel?"));
    QCOMPARE(shown.Buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    QVERIFY(shown.IsCancelDefault);
}

void ExitQuestionTest::Answers_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isByMenu");
    QTest::addColumn<bool>("isOpen");
    QTest::addColumn<bool>("isSaved");
    for (const bool isByMenu : {true, false})
    {
        const QByteArray way = isByMenu ? "menu: " : "window button: ";
        QTest::newRow(way + "yes saves and closes")
            << int(QMessageBox::Yes) << isByMenu << false << true;
        QTest::newRow(way + "no closes") << int(QMessageBox::No) << isByMenu << false << false;
        QTest::newRow(way + "cancel stays")
            << int(QMessageBox::Cancel) << isByMenu << true << false;
    }
}

void ExitQuestionTest::Answers()
{
    QFETCH(int, answer);
    QFETCH(bool, isByMenu);
    QFETCH(bool, isOpen);
    QFETCH(bool, isSaved);
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    const QByteArray project = ReadBytes(StartProjectPath());
    QVERIFY(QFile::remove(ConfigurationPath()));  // whether it is written shows best then
    const AnswerModal question{Button(answer)};
    Leave(isByMenu);
    QVERIFY(question.WasAnswered());
    QCOMPARE((*Window)->isVisible(), isOpen);
    QCOMPARE(QFile::exists(ConfigurationPath()), isSaved);
    if (isSaved)
    {
        QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), 77);
        QCOMPARE(NewLines(), QStringList{"Run      Project file written!"});
    }
    else
    {
        QCOMPARE(ReadBytes(StartProjectPath()), project);
        QCOMPARE(NewLines(), QStringList());
    }
}

void ExitQuestionTest::YesWritesTheConfiguration()
{
    QVERIFY(QFile::remove(ConfigurationPath()));
    const AnswerModal question(QMessageBox::Yes);
    Leave(true);
    QVERIFY(question.WasAnswered());
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), StartProjectPath());
}

void ExitQuestionTest::ComesWithoutAChange()
{
    Trigger("actionsave_project");
    for (int i = 0; i < 2; ++i)
    {
        const AnswerModal question(QMessageBox::Cancel);
        Leave(false);
        QVERIFY(question.WasAnswered());
    }
    QVERIFY((*Window)->isVisible());
}

void ExitQuestionTest::EscapeCancels()
{
    const AnswerModal question(
        [](QWidget* top)
        {
            if (qobject_cast<QMessageBox*>(top) == nullptr || !top->isVisible())
            {
                return false;
            }
            QTest::keyClick(top, Qt::Key_Escape);
            return true;
        });
    Leave(true);
    QVERIFY(question.WasAnswered());
    QVERIFY((*Window)->isVisible());
}

QTEST_MAIN(ExitQuestionTest)
#include "exitquestion_test.moc"
