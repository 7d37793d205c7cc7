// SPDX-License-Identifier: MIT
#include "app/log.h"
#include "app/endguard.h"
#include "app/shownlog.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <limits>
#include <memory>

namespace
{
constexpr int EntryLimit = 1000;
}  // namespace

class LogTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void SlotsInOrder();
    void FormTexts();
    void FormOrder();
    void StartsWithAllFiltersOn();
    void HidesWhatIsNotSupported();
    void ShownLevels_data();
    void ShownLevels();
    void LabelOnlyLevels_data();
    void LabelOnlyLevels();
    void FilterHidesAndBringsBack_data();
    void FilterHidesAndBringsBack();
    void FilteredMessageShowsInLabel();
    void OnlyAClickChangesTheFilter();
    void RedisplayKeepsOrderAndTexts();
    void RedisplayEndsWithNewestInLabel();
    void TrimsAtTheLimit();
    void UnseenEntriesCountForTheLimit();
    void ClearKeepsTheLabel();
    void NotSupported_data();
    void NotSupported();
    void TextIsTakenAsItIs();
    void EarlyMessageIsKept();
    void LateMessageIsKept();
    void FiltersSurviveTheWindow();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void LogTest::init()
{
    Guard = std::make_unique<MessageGuard>();
}

void LogTest::cleanup()
{
    QCOMPARE(EndGuard(Guard), QStringList());
}

void LogTest::SlotsInOrder()
{
    const QMetaObject& meta = Log::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    QCOMPARE(methods, QStringList({"on_pushButtonLoad_clicked()", "on_pushButtonClear_clicked()",
                                   "on_pushButtonSave_clicked()", "on_checkBox_toggled()"}));
}

void LogTest::FormTexts()
{
    const ShownLog log;
    QCOMPARE(log.Window->windowTitle(), QStringLiteral("Logging Window"));
    QVERIFY(log.Find<QPlainTextEdit>("plainTextEdit")->isReadOnly());
    QCOMPARE(log.Text(), QString());
    QCOMPARE(log.LastAction(), QStringLiteral("Last Action:"));
    const QVector<QPair<const char*, const char*>> texts = {
        {"checkBoxInit", "Init"},         {"checkBoxRunning", "Running"},
        {"checkBoxWarnings", "Warnings"}, {"checkBoxErrors", "Errors"},
        {"checkBoxDebug", "Debug"},       {"pushButtonClear", "Clear"},
        {"pushButtonLoad", "Load"},       {"pushButtonSave", "Save"}};
    for (const auto& [name, text] : texts)
    {
        QCOMPARE(log.Find<QAbstractButton>(name)->text(), QString::fromLatin1(text));
    }
    for (const char* name : {"pushButtonClear", "pushButtonLoad", "pushButtonSave"})
    {
        const QSize least = log.Find<QPushButton>(name)->minimumSize();
        QVERIFY2(least.width() >= 100 && least.height() >= 30, name);
    }
}

void LogTest::FormOrder()
{
    const ShownLog log;
    const auto itemsOf = [&log](const char* layout)
    {
        QStringList names;
        auto* row = log.Find<QHBoxLayout>(layout);
        for (int i = 0; i < row->count(); ++i)
        {
            if (const QWidget* widget = row->itemAt(i)->widget())
            {
                names.append(widget->objectName());
            }
        }
        return names;
    };
    QCOMPARE(itemsOf("horizontalLayout_3"),
             QStringList({"checkBoxInit", "checkBoxRunning", "checkBoxWarnings", "checkBoxErrors",
                          "checkBoxDebug"}));
    QCOMPARE(itemsOf("horizontalLayout"),
             QStringList({"pushButtonClear", "pushButtonLoad", "pushButtonSave"}));
    int bottom = -1;
    for (const char* name : {"plainTextEdit", "labelLog", "checkBoxInit", "pushButtonClear"})
    {
        const QRect place = log.Find<QWidget>(name)->geometry();
        QVERIFY2(place.top() > bottom, name);
        bottom = place.bottom();
    }
}

void LogTest::StartsWithAllFiltersOn()
{
    const ShownLog log;
    for (const char* name :
         {"checkBoxInit", "checkBoxRunning", "checkBoxWarnings", "checkBoxErrors"})
    {
        QVERIFY2(log.Find<QCheckBox>(name)->isChecked(), name);
        QVERIFY2(log.Find<QCheckBox>(name)->isVisible(), name);
    }
}

void LogTest::HidesWhatIsNotSupported()
{
    const ShownLog log;
    for (const char* name : {"checkBoxDebug", "pushButtonLoad", "pushButtonSave"})
    {
        QVERIFY2(log.Find<QWidget>(name)->isHidden(), name);
    }
    QVERIFY(log.Find<QPushButton>("pushButtonClear")->isVisible());
}

void LogTest::ShownLevels_data()
{
    QTest::addColumn<unsigned>("level");
    QTest::addColumn<QString>("line");
    QTest::newRow("0 is Init") << 0U << "Init     some text";
    QTest::newRow("1 is Run") << 1U << "Run      some text";
    QTest::newRow("2 is Warning") << 2U << "Warning  some text";
    QTest::newRow("3 is Error") << 3U << "Error    some text";
}

void LogTest::ShownLevels()
{
    QFETCH(unsigned, level);
    QFETCH(QString, line);
    ShownLog log;
    log.Add(level, QStringLiteral("some text"));
    QCOMPARE(log.Text(), line);
    QCOMPARE(log.LastAction(), QStringLiteral("some text"));
}

void LogTest::LabelOnlyLevels_data()
{
    QTest::addColumn<unsigned>("level");
    QTest::newRow("4 is Debug") << 4U;
    QTest::newRow("5 is chatter") << 5U;
    QTest::newRow("an unknown level") << 100U;
    QTest::newRow("the largest level") << std::numeric_limits<unsigned>::max();
}

void LogTest::LabelOnlyLevels()
{
    QFETCH(unsigned, level);
    ShownLog log;
    log.Add(1, QStringLiteral("before"));
    log.Add(level, QStringLiteral("detail"));
    QCOMPARE(log.Lines(), QStringList({"Run      before"}));
    QCOMPARE(log.LastAction(), QStringLiteral("detail"));
    log.ClickBox("checkBoxErrors");
    QCOMPARE(log.Lines(), QStringList({"Run      before"}));
    QCOMPARE(log.LastAction(), QStringLiteral("detail"));
}

void LogTest::FilterHidesAndBringsBack_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<int>("hidden");
    QTest::newRow("Init") << QByteArray("checkBoxInit") << 0;
    QTest::newRow("Running") << QByteArray("checkBoxRunning") << 1;
    QTest::newRow("Warnings") << QByteArray("checkBoxWarnings") << 2;
    QTest::newRow("Errors") << QByteArray("checkBoxErrors") << 3;
}

void LogTest::FilterHidesAndBringsBack()
{
    QFETCH(QByteArray, box);
    QFETCH(int, hidden);
    const QStringList all = {"Init     a", "Run      b", "Warning  c", "Error    d"};
    QStringList rest = all;
    rest.removeAt(hidden);
    ShownLog log;
    log.Add(0, QStringLiteral("a"));
    log.Add(1, QStringLiteral("b"));
    log.Add(2, QStringLiteral("c"));
    log.Add(3, QStringLiteral("d"));
    QCOMPARE(log.Lines(), all);
    log.ClickBox(box.constData());
    QVERIFY(!log.Find<QCheckBox>(box.constData())->isChecked());
    QCOMPARE(log.Lines(), rest);
    log.ClickBox(box.constData());
    QCOMPARE(log.Lines(), all);
}

void LogTest::FilteredMessageShowsInLabel()
{
    ShownLog log;
    log.ClickBox("checkBoxErrors");
    log.Add(3, QStringLiteral("it broke"));
    QCOMPARE(log.Text(), QString());
    QCOMPARE(log.LastAction(), QStringLiteral("it broke"));
    log.ClickBox("checkBoxErrors");
    QCOMPARE(log.Lines(), QStringList({"Error    it broke"}));
}

void LogTest::OnlyAClickChangesTheFilter()
{
    ShownLog log;
    log.Add(1, QStringLiteral("a"));
    log.Find<QCheckBox>("checkBoxRunning")->setChecked(false);
    log.Add(1, QStringLiteral("b"));
    QCOMPARE(log.Lines(), QStringList({"Run      a", "Run      b"}));
    log.ClickBox("checkBoxInit");  // reads all four boxes
    QCOMPARE(log.Lines(), QStringList());
}

void LogTest::RedisplayKeepsOrderAndTexts()
{
    ShownLog log;
    const QStringList expected = {"Error    1", "Init     2", "Error    3"};
    log.Add(3, QStringLiteral("1"));
    log.Add(0, QStringLiteral("2"));
    log.Add(3, QStringLiteral("3"));
    for (int i = 0; i < 4; ++i)
    {
        log.ClickBox("checkBoxWarnings");
        QCOMPARE(log.Lines(), expected);
    }
}

void LogTest::RedisplayEndsWithNewestInLabel()
{
    ShownLog log;
    log.Add(1, QStringLiteral("older"));
    log.Add(2, QStringLiteral("newest"));
    log.Find<QLabel>("labelLog")->setText(QStringLiteral("something else"));
    log.ClickBox("checkBoxWarnings");
    QCOMPARE(log.LastAction(), QStringLiteral("newest"));
}

void LogTest::TrimsAtTheLimit()
{
    ShownLog log;
    for (int i = 1; i <= EntryLimit + 1; ++i)
    {
        log.Add(1, QString::number(i));
    }
    QCOMPARE(log.Lines().size(), EntryLimit + 1);
    QCOMPARE(log.Lines().constFirst(), QStringLiteral("Run      1"));
    log.ClickBox("checkBoxInit");
    QCOMPARE(log.Lines().size(), EntryLimit);
    QCOMPARE(log.Lines().constFirst(), QStringLiteral("Run      2"));
    QCOMPARE(log.Lines().constLast(), QStringLiteral("Run      1001"));
}

void LogTest::UnseenEntriesCountForTheLimit()
{
    ShownLog log;
    log.Add(3, QStringLiteral("goes"));
    log.Add(3, QStringLiteral("stays"));
    for (int i = 1; i < EntryLimit; ++i)
    {
        log.Add(4, QStringLiteral("detail"));
    }
    log.ClickBox("checkBoxInit");
    QCOMPARE(log.Lines(), QStringList({"Error    stays"}));
}

void LogTest::ClearKeepsTheLabel()
{
    ShownLog log;
    log.Add(1, QStringLiteral("a"));
    log.Add(3, QStringLiteral("b"));
    QTest::mouseClick(log.Find<QPushButton>("pushButtonClear"), Qt::LeftButton);
    QCOMPARE(log.Text(), QString());
    QCOMPARE(log.LastAction(), QStringLiteral("b"));
    log.ClickBox("checkBoxInit");  // the list is empty too
    QCOMPARE(log.Text(), QString());
    QCOMPARE(log.LastAction(), QStringLiteral("b"));
    log.Add(1, QStringLiteral("c"));
    QCOMPARE(log.Lines(), QStringList({"Run      c"}));
}

void LogTest::NotSupported_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("Load") << QByteArray("pushButtonLoad");
    QTest::newRow("Save") << QByteArray("pushButtonSave");
}

void LogTest::NotSupported()
{
    QFETCH(QByteArray, button);
    const ShownLog log;
    log.Find<QPushButton>(button.constData())->click();
    QCOMPARE(log.Lines(), QStringList({"Warning  Not Supported"}));
    QCOMPARE(log.LastAction(), QStringLiteral("Not Supported"));
}

void LogTest::TextIsTakenAsItIs()
{
    ShownLog log;
    const QString text = QString::fromUtf8("<b>%1</b> & Ümläut  two blanks ");
    log.Add(1, text);
    QCOMPARE(log.Text(), QStringLiteral("Run      ") + text);
    QCOMPARE(log.LastAction(), text);
}

void LogTest::EarlyMessageIsKept()
{
    Log log;
    log.Add(1, QStringLiteral("early"));
    QWidget window;
    log.Setup(&window);
    QCOMPARE(window.findChild<QLabel*>("labelLog")->text(), QStringLiteral("Last Action:"));
    window.findChild<QCheckBox*>("checkBoxInit")->click();
    QCOMPARE(window.findChild<QPlainTextEdit*>("plainTextEdit")->toPlainText(),
             QStringLiteral("Run      early"));
}

void LogTest::LateMessageIsKept()
{
    ShownLog log;
    log.Add(1, QStringLiteral("shown"));
    log.Window.reset();
    log.Add(3, QStringLiteral("late"));
    log.ReplaceWindow();
    QCOMPARE(log.LastAction(), QStringLiteral("Last Action:"));
    log.ClickBox("checkBoxInit");
    QCOMPARE(log.Lines(), QStringList({"Run      shown", "Error    late"}));
}

void LogTest::FiltersSurviveTheWindow()
{
    ShownLog log;
    log.ClickBox("checkBoxErrors");
    log.ClickBox("checkBoxInit");
    log.ReplaceWindow();
    QVERIFY(!log.Find<QCheckBox>("checkBoxErrors")->isChecked());
    QVERIFY(!log.Find<QCheckBox>("checkBoxInit")->isChecked());
    QVERIFY(log.Find<QCheckBox>("checkBoxRunning")->isChecked());
    QVERIFY(log.Find<QCheckBox>("checkBoxWarnings")->isChecked());
}

QTEST_MAIN(LogTest)
#include "log_test.moc"
