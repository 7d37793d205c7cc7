// SPDX-License-Identifier: MIT
#include "dialogs/quickdirectories.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

QuickDirectoriesDialog::QuickDirectoriesDialog()
{
    SidebarUrls.clear();
}

void QuickDirectoriesDialog::Show()
{
    Dialog.ShowDialog();
    QVERIFY(QTest::qWaitForWindowExposed(&Dialog));
}

void QuickDirectoriesDialog::Fill(const QStringList& entries)
{
    Config.DirList = entries;
    Show();
}

void QuickDirectoriesDialog::Press(QDialogButtonBox::StandardButton button) const
{
    const auto* box = Dialog.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    QTest::mouseClick(box->button(button), Qt::LeftButton);
}

QTreeWidget& QuickDirectoriesDialog::Tree() const
{
    return *Dialog.findChild<QTreeWidget*>(QStringLiteral("treeWidget"));
}

QStringList QuickDirectoriesDialog::Entries() const
{
    QStringList texts;
    for (int i = 0; i < Tree().topLevelItemCount(); ++i)
    {
        texts.append(Tree().topLevelItem(i)->text(0));
    }
    return texts;
}

bool QuickDirectoriesDialog::CanBeTyped(int row) const
{
    return Tree().topLevelItem(row)->flags().testFlag(Qt::ItemIsEditable);
}

void QuickDirectoriesDialog::TypeOver(int row, const QString& text) const
{
    const QPoint middle = Tree().visualItemRect(Tree().topLevelItem(row)).center();
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, Qt::NoModifier, middle);
    QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, Qt::NoModifier, middle);
    auto* edit = Tree().viewport()->findChild<QLineEdit*>();
    QVERIFY(edit != nullptr);
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
    QTRY_COMPARE(Tree().topLevelItem(row)->text(0), text);
}

void QuickDirectoriesDialog::RightClickOn(int row) const
{
    RightClick(Tree().visualItemRect(Tree().topLevelItem(row)).center());
}

void QuickDirectoriesDialog::RightClickBeside() const
{
    const QPoint pos = Tree().viewport()->rect().bottomRight() - QPoint(5, 5);
    QVERIFY(Tree().itemAt(pos) == nullptr);
    RightClick(pos);
}

void QuickDirectoriesDialog::RightClick(const QPoint& pos) const
{
    QWidget* viewport = Tree().viewport();
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, viewport->mapToGlobal(pos));
    QApplication::sendEvent(viewport, &event);
}
