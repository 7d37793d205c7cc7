// SPDX-License-Identifier: MIT
#include "graphs/graphwindow.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/truncation.h"

#include "ui_graphwindow.h"

#include <QMenu>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <mutex>

namespace
{
constexpr int FrameColumn = 0;
constexpr int ValueColumn = 1;
constexpr double Tiny = 0.0001;  ///< values below it count as 0.0
constexpr std::uint64_t AllOnes = ~std::uint64_t{0};

const QString PathValue = QStringLiteral("X");  ///< stands for the path's own value at that frame

QTreeWidgetItem* NewPointItem(const QString& frame, const QString& value)
{
    auto* item = new QTreeWidgetItem(QStringList{frame, value});
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    return item;
}

/** Frames between @p frame and a point; 0 for a point whose frame cannot be read. */
std::int64_t Distance(int frame, const QTreeWidgetItem& point)
{
    bool isNumber = false;
    const int other = point.text(FrameColumn).toInt(&isNumber);
    return isNumber ? std::abs(std::int64_t{frame} - other) : 0;
}

/** Puts a point at its place in ascending frames; one of the same frame gives way. */
void InsertPoint(std::list<ManualPathPoint>& points, const ManualPathPoint& point)
{
    const auto place = std::find_if(points.begin(), points.end(),
                                    [&point](const ManualPathPoint& other)
                                    { return other.FrameNr >= point.FrameNr; });
    if (place != points.end() && place->FrameNr == point.FrameNr)
    {
        place->Value = point.Value;
        return;
    }
    points.insert(place, point);
}
}  // namespace

void GraphWindow::on_treeWidgetManualPathList_customContextMenuRequested(QPoint pos)
{
    MenuItem = ui->treeWidgetManualPathList->itemAt(pos);
    MenuPos = pos;
    const bool isPoint = MenuItem != nullptr && MenuItem->parent() != nullptr;
    const bool isSection = MenuItem != nullptr && MenuItem->parent() == nullptr;
    QMenu menu(this);
    if (MenuItem != nullptr)
    {
        CurrentSection = isPoint ? MenuItem->parent() : MenuItem;
        menu.addAction(tr("Add Point"), this, &GraphWindow::AddPoint);
        menu.addAction(tr("Flat Out"), this, &GraphWindow::FlatOut);
    }
    menu.addAction(tr("Start Section"), this, &GraphWindow::StartFlow);
    menu.addAction(tr("Start Flat In Section"), this, &GraphWindow::FlatIn);
    menu.addAction(tr("------------"), this, &GraphWindow::DoNothing);
    if (isPoint)
    {
        menu.addAction(tr("Remove Point"), this, &GraphWindow::RemovePoint);
    }
    if (isSection)
    {
        menu.addAction(tr("Remove Section"), this, &GraphWindow::RemoveSection);
    }
    menu.addAction(tr("Clear all Sections"), this, &GraphWindow::ClearAllSections);
    menu.exec(ui->treeWidgetManualPathList->viewport()->mapToGlobal(pos));
}

void GraphWindow::SortManList()
{
    if (FrameCount() == 0)
    {
        return;
    }
    const int count = ui->treeWidgetManualPathList->topLevelItemCount();
    ManualSections.resize(static_cast<std::size_t>(count));
    for (int i = count - 1; i >= 0; --i)
    {
        const std::unique_ptr<QTreeWidgetItem> item(
            ui->treeWidgetManualPathList->takeTopLevelItem(i));
        ReadSection(*item, ManualSections[static_cast<std::size_t>(i)]);
    }
    ManualSections.erase(
        std::remove_if(ManualSections.begin(), ManualSections.end(),
                       [](const ManualPathSection& section) { return section.Points.empty(); }),
        ManualSections.end());
    if (count > 0)
    {
        RebuildManualTree();
    }
}

void GraphWindow::StartFlow()
{
    CurrentSection = new QTreeWidgetItem;
    UpdateSectionTitle(CurrentSection);
    ui->treeWidgetManualPathList->addTopLevelItem(CurrentSection);
    ui->comboBoxGraphMouse->setCurrentIndex(AddManualPoints);
}

void GraphWindow::FlatIn()
{
    CurrentSection = new QTreeWidgetItem;
    AddPointItem(0, PathValue);
    AddPointItem(TruncateToInt32(Flow.GetPosition()), PathValue);
    UpdateSectionTitle(CurrentSection);
    ui->treeWidgetManualPathList->addTopLevelItem(CurrentSection);
    CurrentSection->setExpanded(true);
}

void GraphWindow::AddPoint()
{
    if (IsSection(CurrentSection))
    {
        AddPointItem(TruncateToInt32(Flow.GetPosition()), PathValue);
    }
}

void GraphWindow::RemovePoint()
{
    if (IsInTree(MenuItem) && MenuItem->parent() != nullptr)
    {
        delete MenuItem;  // which takes it from its parent
    }
    MenuItem = nullptr;
}

void GraphWindow::RemoveSection()
{
    if (IsSection(MenuItem))
    {
        delete MenuItem;
        MenuItem = nullptr;
    }
}

void GraphWindow::EndFlow()
{
    CurrentSection = nullptr;
}

void GraphWindow::FlatOut()
{
    if (IsSection(CurrentSection))
    {
        AddPointItem(FrameCount() - 1, PathValue);
    }
    CurrentSection = nullptr;
}

void GraphWindow::ClearAllSections()
{
    MenuItem = nullptr;
    while (ui->treeWidgetManualPathList->topLevelItemCount() > 0)
    {
        delete ui->treeWidgetManualPathList->takeTopLevelItem(0);
    }
}

void GraphWindow::DoNothing() {}

void GraphWindow::GraphLeftClick(QPointF pos)
{
    if (MouseMode != AddManualPoints && MouseMode != AddFlatPoints)
    {
        return;
    }
    const int frame = TruncateToInt32(pos.x());
    const bool isFirst = ui->treeWidgetManualPathList->topLevelItemCount() == 0;
    CurrentSection = isFirst ? new QTreeWidgetItem : NearestSection(frame);
    if (CurrentSection == nullptr)
    {
        return;  // so far from all sections that none is near
    }
    AddPointItem(frame,
                 MouseMode == AddManualPoints ? QString::number(pos.y(), 'g', 6) : PathValue);
    UpdateSectionTitle(CurrentSection);
    if (isFirst)
    {
        ui->treeWidgetManualPathList->addTopLevelItem(CurrentSection);
    }
    CurrentSection->setExpanded(true);
}

int GraphWindow::FrameCount() const
{
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    return Path->DetectedShakiness.size();
}

/** @p frame held to the video; without frames -1. */
int GraphWindow::ClampFrame(int frame) const
{
    return std::min(std::max(frame, 0), FrameCount() - 1);
}

bool GraphWindow::IsSection(QTreeWidgetItem* item) const
{
    return ui->treeWidgetManualPathList->indexOfTopLevelItem(item) >= 0;  // compares addresses only
}

bool GraphWindow::IsInTree(const QTreeWidgetItem* item) const
{
    for (QTreeWidgetItemIterator it(ui->treeWidgetManualPathList); *it != nullptr; ++it)
    {
        if (*it == item)
        {
            return true;
        }
    }
    return false;
}

/**
 * The section of which one end is nearest to @p frame; the first of equals, null when none is near.
 * An empty section ends the search. Deliberate: only the ends count, also inside another section.
 */
QTreeWidgetItem* GraphWindow::NearestSection(int frame) const
{
    std::int64_t best = 10000000;  // frames; a section so far off is not meant
    QTreeWidgetItem* nearest = nullptr;
    for (int i = 0; i < ui->treeWidgetManualPathList->topLevelItemCount(); ++i)
    {
        QTreeWidgetItem* section = ui->treeWidgetManualPathList->topLevelItem(i);
        if (section->childCount() == 0)
        {
            return section;
        }
        for (const QTreeWidgetItem* end :
             {section->child(0), section->child(section->childCount() - 1)})
        {
            const std::int64_t distance = Distance(frame, *end);
            if (distance < best)
            {
                best = distance;
                nearest = section;
            }
        }
    }
    return nearest;
}

void GraphWindow::AddPointItem(int frame, const QString& value)
{
    CurrentSection->addChild(NewPointItem(QString::number(frame), value));
}

void GraphWindow::UpdateSectionTitle(QTreeWidgetItem* item)
{
    int min = 100000000;  // beyond any video
    int max = -100000000;
    for (int i = 0; i < item->childCount(); ++i)
    {
        bool isNumber = false;
        const int frame = ClampFrame(item->child(i)->text(FrameColumn).toInt(&isNumber));
        if (isNumber)
        {
            min = std::min(min, frame);
            max = std::max(max, frame);
        }
    }
    QString range = QStringLiteral("-");
    if (item->childCount() > 0)
    {
        range = min > max ? QStringLiteral("[X:X]") : QStringLiteral("[%1:%2]").arg(min).arg(max);
    }
    item->setText(FrameColumn, range);
    item->setText(ValueColumn, tr("Section"));
}

/** From the last row to the first, so that of rows with one frame the upper one wins. */
void GraphWindow::ReadSection(const QTreeWidgetItem& item, ManualPathSection& section) const
{
    section.Points.clear();
    for (int i = item.childCount() - 1; i >= 0; --i)
    {
        const QTreeWidgetItem& row = *item.child(i);
        bool isFrame = false;
        const int frame = ClampFrame(row.text(FrameColumn).toInt(&isFrame));
        if (!isFrame)
        {
            continue;
        }
        bool isValue = false;
        const double typed = row.text(ValueColumn).toDouble(&isValue);
        const double value = isValue ? typed : Path->ShakinessAt(frame);
        InsertPoint(section.Points, {frame, value > -Tiny && value < Tiny ? 0.0 : value});
    }
}

/** Deliberate: the tree is sorted by the sections' first frames, ManualSections is not. */
void GraphWindow::RebuildManualTree()
{
    for (ManualPathSection& section : ManualSections)
    {
        section.SortKey = section.Points.empty() ? -1 : section.Points.front().FrameNr;
    }
    ClearAllSections();
    const auto key = [](const ManualPathSection& section)
    { return static_cast<std::uint64_t>(section.SortKey); };
    while (true)
    {
        const auto lowest =
            std::min_element(ManualSections.begin(), ManualSections.end(),
                             [&key](const ManualPathSection& a, const ManualPathSection& b)
                             { return key(a) < key(b); });
        if (lowest == ManualSections.end() || key(*lowest) == AllOnes)
        {
            return;
        }
        AddSectionItem(*lowest);
        lowest->SortKey = -1;
    }
}

void GraphWindow::AddSectionItem(const ManualPathSection& section)
{
    auto* item = new QTreeWidgetItem;
    for (const ManualPathPoint& point : section.Points)
    {
        item->addChild(NewPointItem(QStringLiteral("%1").arg(point.FrameNr, 6),
                                    QStringLiteral("%1").arg(point.Value, 6, 'g')));
    }
    UpdateSectionTitle(item);
    ui->treeWidgetManualPathList->addTopLevelItem(item);
}
