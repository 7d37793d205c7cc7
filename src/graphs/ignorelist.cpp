// SPDX-License-Identifier: MIT
#include "graphs/ignorelist.h"

#include <QMenu>
#include <QTreeWidget>

#include <algorithm>
#include <memory>
#include <utility>

namespace
{
constexpr int StartColumn = 0;
constexpr int EndColumn = 1;
constexpr int OffsetColumn = 2;  ///< the global tree does not show it

/** Reads a row. @return false for a row that is to be dropped */
bool ReadRow(const QTreeWidgetItem& item, std::int32_t frameCount, IgnoreSection& section)
{
    bool isStart = false;
    bool isEnd = false;
    bool isOffset = false;
    section.Start = std::max(item.text(StartColumn).toInt(&isStart), 0);
    section.End = item.text(EndColumn).toInt(&isEnd);
    section.End = section.End < 0 ? frameCount : section.End;
    section.Offset = item.text(OffsetColumn).toDouble(&isOffset);
    return isStart && isEnd && isOffset && section.Start <= section.End;
}
}  // namespace

IgnoreList::IgnoreList(QWidget* parent, QTreeWidget* tree)
    : QObject(parent), Parent(parent), Tree(tree)
{
    Tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(Tree, &QTreeWidget::customContextMenuRequested, this, &IgnoreList::ShowMenu);
}

void IgnoreList::AddSection(IgnoreSection section)
{
    auto* item = new QTreeWidgetItem;
    item->setText(StartColumn, QStringLiteral("%1").arg(section.Start, 6));
    item->setText(EndColumn, QStringLiteral("%1").arg(section.End, 6));
    item->setText(OffsetColumn, QStringLiteral("%1").arg(section.Offset, 4, 'g'));
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    Tree->addTopLevelItem(item);
}

void IgnoreList::Rebuild()
{
    Clear();
    for (const IgnoreSection& section : Sections)
    {
        AddSection(section);
    }
}

void IgnoreList::SortList()
{
    if (FrameCount < 1)
    {
        return;
    }
    std::vector<IgnoreSection> read;
    while (Tree->topLevelItemCount() > 0)
    {
        const std::unique_ptr<QTreeWidgetItem> item(Tree->takeTopLevelItem(0));
        IgnoreSection section;
        if (ReadRow(*item, FrameCount, section))
        {
            read.push_back(section);
        }
    }
    Sections = std::move(read);
    Rebuild();
}

void IgnoreList::Add()
{
    AddSection({0, -1, 0.0});
}

void IgnoreList::Remove()
{
    const int index = Tree->indexOfTopLevelItem(MenuItem);  // compares addresses only
    if (index >= 0)
    {
        delete Tree->takeTopLevelItem(index);
    }
}

void IgnoreList::Clear()
{
    while (Tree->topLevelItemCount() > 0)
    {
        delete Tree->takeTopLevelItem(0);
    }
}

void IgnoreList::DoNothing() {}

void IgnoreList::ShowMenu(const QPoint& pos)
{
    MenuItem = Tree->itemAt(pos);
    QMenu menu(Parent);
    menu.addAction(tr("Add Ignore section"), this, &IgnoreList::Add);
    menu.addAction(tr("------------"), this, &IgnoreList::DoNothing);
    if (MenuItem != nullptr)
    {
        menu.addAction(tr("Remove ignore section"), this, &IgnoreList::Remove);
    }
    menu.addAction(tr("Clear all ignore sections"), this, &IgnoreList::Clear);
    menu.exec(Tree->viewport()->mapToGlobal(pos));
}
