// SPDX-License-Identifier: MIT
#include "graphs/manualpathwindow.h"

#include "userhands/answermodal.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

namespace
{
constexpr double PixelsPerFrame = 2.0;

QModelIndex IndexOf(const QTreeWidget& tree, const QTreeWidgetItem* item, int column)
{
    const QTreeWidgetItem* section = item->parent();
    return section == nullptr
               ? tree.model()->index(tree.indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item)),
                                     column)
               : tree.model()->index(section->indexOfChild(const_cast<QTreeWidgetItem*>(item)),
                                     column, IndexOf(tree, section, 0));
}
}  // namespace

ManualPathWindow::ManualPathWindow(int frames)
    : Window(&Axis.Proj, &Axis.Path, QStringLiteral("pixels"), &Axis.Proj.FlowH)
{
    if (frames > 0)
    {
        Axis.Generate(SteadyMotion(frames, PixelsPerFrame));
    }
    Window.LoadSettings();
    Window.resize(1400, 900);  // wide enough for both columns of the tree
    Window.show();
}

void ManualPathWindow::Load(const std::vector<ManualPathSection>& sections)
{
    Axis.Proj.FlowH.ManualPath = sections;
    Window.LoadSettings();
    Tree().expandAll();
}

QStringList ManualPathWindow::RowsOf(const QTreeWidget& tree)
{
    QStringList rows;
    for (QTreeWidgetItemIterator it(&const_cast<QTreeWidget&>(tree)); *it != nullptr; ++it)
    {
        rows.append(((*it)->parent() != nullptr ? QStringLiteral(">") : QString()) +
                    (*it)->text(0) + QLatin1Char('|') + (*it)->text(1));
    }
    return rows;
}

QStringList ManualPathWindow::Saved() const
{
    QStringList lines;
    for (const ManualPathSection& section : Axis.Proj.FlowH.ManualPath)
    {
        QStringList points;
        for (const ManualPathPoint& point : section.Points)
        {
            points.append(QString::number(point.FrameNr) + QLatin1Char('=') +
                          QString::number(point.Value));
        }
        lines.append(points.join(QLatin1Char(' ')));
    }
    return lines;
}

QTreeWidget& ManualPathWindow::Tree(const char* name) const
{
    return *Window.findChild<QTreeWidget*>(QLatin1String(name));
}

QPoint ManualPathWindow::Place(const QTreeWidgetItem* item, int column) const
{
    if (item == nullptr)
    {
        return Tree().viewport()->rect().bottomLeft() + QPoint(5, -5);
    }
    return Tree().visualRect(IndexOf(Tree(), item, column)).center();
}

QLineEdit* ManualPathWindow::OpenEditor(const QTreeWidgetItem* item, int column) const
{
    QTreeWidget& tree = Tree();
    tree.scrollToItem(item);
    const QPoint cell = Place(item, column);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    return tree.viewport()->findChild<QLineEdit*>();
}

void ManualPathWindow::Type(const QTreeWidgetItem* item, int column, const QString& text) const
{
    QLineEdit* edit = OpenEditor(item, column);
    QVERIFY2(edit != nullptr, "the cell does not open for typing");
    edit->selectAll();
    text.isEmpty() ? QTest::keyClick(edit, Qt::Key_Delete) : QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
    QTRY_COMPARE(item->text(column), text);
    QTRY_VERIFY(Tree().viewport()->findChild<QLineEdit*>() == nullptr);
}

void ManualPathWindow::RightClick(const QTreeWidgetItem* item) const
{
    QTreeWidget& tree = Tree();
    if (item != nullptr)
    {
        tree.scrollToItem(item);
    }
    const QPoint place = Place(item);
    QVERIFY(tree.itemAt(place) == item);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, tree.viewport()->mapToGlobal(place));
    QApplication::sendEvent(tree.viewport(), &event);
}

void ManualPathWindow::Choose(const QTreeWidgetItem* item, const QString& entry) const
{
    const auto menu = AnswerModal::Menu(entry);
    RightClick(item);
    QVERIFY(menu.WasAnswered());
}
