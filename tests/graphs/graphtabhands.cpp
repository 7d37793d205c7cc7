// SPDX-License-Identifier: MIT
#include "graphs/graphtabhands.h"

#include "stabilizer/camerapath.h"
#include "support/buttonclick.h"
#include "userhands/answermodal.h"

#include <qwt_plot.h>
#include <qwt_plot_curve.h>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QScrollArea>
#include <QTest>
#include <QTreeWidget>

CameraPath& PathOfTab(int index)
{
    CameraPath* const paths[] = {&PathHorizontal, &PathVertical, &PathRotationDegrees};
    return *paths[index - HorizontalTab];
}

void AddGraphTabRows()
{
    QTest::addColumn<int>("tab");
    QTest::newRow("horizontal") << HorizontalTab;
    QTest::newRow("vertical") << VerticalTab;
    QTest::newRow("rotation") << RotationTab;
}

GraphTab::GraphTab(const TestWindow& window, int index) : Page(nullptr)
{
    const char* const areas[] = {"scrollAreaXAxis", "scrollAreaYAxis", "scrollAreaAngle"};
    Page = window.Find<QScrollArea>(areas[index - HorizontalTab])->widget();
}

void GraphTab::Click(const char* button) const
{
    ClickOn(Find<QAbstractButton>(button));
}

void GraphTab::SetBox(const char* checkBox, bool isChecked) const
{
    if (IsChecked(checkBox) != isChecked)
    {
        Click(checkBox);
    }
    QCOMPARE(IsChecked(checkBox), isChecked);
}

void GraphTab::Type(const char* field, int number) const
{
    auto* box = Find<QAbstractSpinBox>(field);
    QVERIFY2(box->isVisible() && box->isEnabled(), field);
    box->selectAll();
    QTest::keyClicks(box, QString::number(number));
    QCOMPARE(Number(field), double(number));
}

void GraphTab::Slip(const char* field, double number) const
{
    auto* box = Find<QAbstractSpinBox>(field);
    QVERIFY2(!box->isVisible(), field);
    QVERIFY(box->setProperty("value", number));
    QCOMPARE(Number(field), number);
}

void GraphTab::ChooseMouse(int item) const
{
    auto* box = Find<QComboBox>("comboBoxGraphMouse");
    QVERIFY(box->isVisible());
    QTest::keyClick(box, Qt::Key_Home);
    for (int i = 0; i < item; ++i)
    {
        QTest::keyClick(box, Qt::Key_Down);
    }
    QCOMPARE(box->currentIndex(), item);
}

double GraphTab::Number(const char* field) const
{
    return Find<QAbstractSpinBox>(field)->property("value").toDouble();
}

bool GraphTab::IsChecked(const char* checkBox) const
{
    return Find<QAbstractButton>(checkBox)->isChecked();
}

QwtPlot* GraphTab::Plot() const
{
    return Page->findChild<QwtPlot*>();
}

QStringList GraphTab::Curves() const
{
    QStringList titles;
    for (const QwtPlotItem* item : Plot()->itemList(QwtPlotItem::Rtti_PlotCurve))
    {
        titles.append(item->title().text());
    }
    return titles;
}

QVector<double> GraphTab::Values(const char* curve) const
{
    QVector<double> values;
    for (const QwtPlotItem* item : Plot()->itemList(QwtPlotItem::Rtti_PlotCurve))
    {
        if (item->title().text() == QLatin1String(curve))
        {
            const auto* samples = static_cast<const QwtPlotCurve*>(item);
            for (std::size_t i = 0; i < samples->dataSize(); ++i)
            {
                values.append(samples->sample(static_cast<int>(i)).y());
            }
        }
    }
    return values;
}

void GraphTab::ChooseFromTree(const char* tree, const char* entry, int row) const
{
    auto* widget = Find<QTreeWidget>(tree);
    QVERIFY2(widget->isVisible() && widget->isEnabled(), tree);
    QWidget* viewport = widget->viewport();
    const QPoint pos = row < 0 ? viewport->rect().bottomLeft() - QPoint(0, 2)
                               : widget->visualItemRect(widget->topLevelItem(row)).center();
    QCOMPARE(widget->itemAt(pos), row < 0 ? nullptr : widget->topLevelItem(row));
    const auto menu = AnswerModal::Menu(QString::fromLatin1(entry));
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, viewport->mapToGlobal(pos));
    QApplication::sendEvent(viewport, &event);
    QVERIFY2(menu.WasAnswered(), entry);
}

void GraphTab::TypeIntoCell(const char* tree, QTreeWidgetItem* item, int column,
                            const QString& text) const
{
    auto* widget = Find<QTreeWidget>(tree);
    QVERIFY2(widget->isVisible() && widget->isEnabled(), tree);
    widget->expandAll();
    widget->scrollToItem(item);
    const QRect row = widget->visualItemRect(item);
    const QPoint cell(widget->columnViewportPosition(column) + widget->columnWidth(column) - 4,
                      row.center().y());
    QTest::mouseClick(widget->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QTest::mouseDClick(widget->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    auto* editor = widget->viewport()->findChild<QLineEdit*>();
    QVERIFY2(editor != nullptr, tree);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(item->text(column), text);
    QTRY_VERIFY(widget->viewport()->findChild<QLineEdit*>() == nullptr);
}

void GraphTab::AddIgnore(const char* tree, int start, int end) const
{
    auto* widget = Find<QTreeWidget>(tree);
    ChooseFromTree(tree, "Add Ignore section");
    QTreeWidgetItem* item = widget->topLevelItem(widget->topLevelItemCount() - 1);
    TypeIntoCell(tree, item, 0, QString::number(start));
    TypeIntoCell(tree, item, 1, QString::number(end));
}

QStringList GraphTab::Rows(const char* tree) const
{
    QStringList rows;
    for (QTreeWidgetItemIterator it(Find<QTreeWidget>(tree)); *it != nullptr; ++it)
    {
        QStringList texts;
        for (int column = 0; column < (*it)->columnCount(); ++column)
        {
            texts.append((*it)->text(column).trimmed());
        }
        rows.append(texts.join(QLatin1Char(',')));
    }
    return rows;
}
