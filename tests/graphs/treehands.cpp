// SPDX-License-Identifier: MIT
#include "graphs/treehands.h"

#include "userhands/answermodal.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTreeWidget>

QStringList TreeHands::Rows(const QTreeWidget& tree)
{
    QStringList rows;
    for (int i = 0; i < tree.topLevelItemCount(); ++i)
    {
        const QTreeWidgetItem* item = tree.topLevelItem(i);
        rows.append(item->text(0) + QLatin1Char('|') + item->text(1) + QLatin1Char('|') +
                    item->text(2));
    }
    return rows;
}

QStringList TreeHands::Entries(const QMenu& menu)
{
    QStringList texts;
    for (const QAction* action : menu.actions())
    {
        texts.append(action->text());
    }
    return texts;
}

QPoint TreeHands::Place(const QTreeWidget& tree, int row, int column)
{
    if (row == Beside)
    {
        return tree.viewport()->rect().bottomLeft() + QPoint(5, -5);
    }
    return tree.visualRect(tree.model()->index(row, column)).center();
}

void TreeHands::TypeInto(QTreeWidget& tree, int row, int column, const QString& text)
{
    const QPoint cell = Place(tree, row, column);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    auto* edit = tree.viewport()->findChild<QLineEdit*>();
    QVERIFY2(edit != nullptr, "the cell does not open for typing");
    edit->selectAll();
    text.isEmpty() ? QTest::keyClick(edit, Qt::Key_Delete) : QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
    QTRY_COMPARE(tree.topLevelItem(row)->text(column), text);
    QTRY_VERIFY(tree.viewport()->findChild<QLineEdit*>() == nullptr);
}

void TreeHands::Choose(QTreeWidget& tree, int row, const QString& entry)
{
    const auto menu = AnswerModal::Menu(entry);
    RightClick(tree, row);
    QVERIFY(menu.WasAnswered());
}

void TreeHands::RightClick(QTreeWidget& tree, int row)
{
    const QPoint place = Place(tree, row);
    QCOMPARE(tree.itemAt(place), row == Beside ? nullptr : tree.topLevelItem(row));
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, tree.viewport()->mapToGlobal(place));
    QApplication::sendEvent(tree.viewport(), &event);
}
