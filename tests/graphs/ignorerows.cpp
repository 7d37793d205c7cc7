// SPDX-License-Identifier: MIT
#include "graphs/ignorerows.h"

#include <QTest>

QStringList Texts(const std::vector<IgnoreSection>& sections)
{
    QStringList texts;
    for (const IgnoreSection& section : sections)
    {
        texts.append(
            QStringLiteral("%1,%2,%3").arg(section.Start).arg(section.End).arg(section.Offset));
    }
    return texts;
}

void AddReadableRows()
{
    const auto add = [](const char* name, const QStringList& texts, const char* section,
                        const char* row) { QTest::newRow(name) << texts << section << row; };
    add("plain numbers", {"3", "9", "1.5"}, "3,9,1.5", "     3|     9| 1.5");
    add("an end of -7 becomes the frame count", {"3", "-7", "0"}, "3,200,0", "     3|   200|   0");
    add("an end of -1 becomes the frame count", {"3", "-1", "0"}, "3,200,0", "     3|   200|   0");
    add("an end of 0 stays", {"0", "0", "0"}, "0,0,0", "     0|     0|   0");
    add("a start below 0 becomes 0", {"-5", "9", "0"}, "0,9,0", "     0|     9|   0");
    add("a start below 0 comes before the end", {"-5", "0", "0"}, "0,0,0", "     0|     0|   0");
    add("start and end may be one", {"40", "40", "0"}, "40,40,0", "    40|    40|   0");
    add("start and end at the frame count", {"200", "-1", "0"}, "200,200,0", "   200|   200|   0");
    add("the end is not limited from above", {"3", "99999", "0"}, "3,99999,0",
        "     3| 99999|   0");
    add("both may lie behind the video", {"500", "600", "0"}, "500,600,0", "   500|   600|   0");
    add("blanks around numbers", {"  3 ", " 9", " 2 "}, "3,9,2", "     3|     9|   2");
    add("an offset below 0", {"3", "9", "-2.25"}, "3,9,-2.25", "     3|     9|-2.25");
    add("an offset with an exponent", {"3", "9", "5e-1"}, "3,9,0.5", "     3|     9| 0.5");
}

void AddDroppedRows()
{
    QTest::newRow("that ends before it starts") << QStringList{"500", "100", "0"};
    QTest::newRow("that starts one frame behind its end") << QStringList{"41", "40", "0"};
    QTest::newRow("that starts behind the video and has no end") << QStringList{"201", "-1", "0"};
    QTest::newRow("with letters as start") << QStringList{"abc", "9", "0"};
    QTest::newRow("without a start") << QStringList{"", "9", "0"};
    QTest::newRow("that starts in mid-frame") << QStringList{"1.5", "9", "0"};
    QTest::newRow("that starts beyond 32 bits") << QStringList{"-2147483649", "9", "0"};
    QTest::newRow("with letters as end") << QStringList{"0", "end", "0"};
    QTest::newRow("without an end") << QStringList{"0", "", "0"};
    QTest::newRow("that ends in mid-frame") << QStringList{"0", "9.0", "0"};
    QTest::newRow("that ends beyond 32 bits") << QStringList{"0", "2147483648", "0"};
    QTest::newRow("with letters as offset") << QStringList{"3", "9", "x"};
    QTest::newRow("without an offset") << QStringList{"3", "9", ""};
    QTest::newRow("with an offset cell that was never set") << QStringList{"3", "9"};
    QTest::newRow("with a decimal comma in the offset") << QStringList{"3", "9", "1,5"};
}

BareList::BareList() : Tree(&Frame), List(nullptr)
{
    Tree.setHeaderLabels({"Start", "End", "Offset"});
    Tree.resize(320, 240);
    List = new IgnoreList(&Frame, &Tree);
}

void BareList::Show()
{
    Frame.show();
    QVERIFY(QTest::qWaitForWindowExposed(&Frame));
}

ListWindow::ListWindow(int frames) : Window(&Setup.Proj, &Setup.Path, "", &Setup.Proj.FlowH)
{
    if (frames > 0)
    {
        Setup.Generate(SteadyMotion(frames, 1.0));
    }
    Setup.Proj.EnGlobalIgnoreList = true;
    Setup.Proj.GlobalIgnoreSections = {{10, 20, 1.5}, {30, 40, 0.0}};
    Setup.Proj.FlowH.IgnoreSections = {{50, 60, 2.5}};
    Window.LoadSettings();
    Window.show();
}

QTreeWidget& ListWindow::Find(const char* name) const
{
    return *Window.findChild<QTreeWidget*>(QString::fromLatin1(name));
}
