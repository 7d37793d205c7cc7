// SPDX-License-Identifier: MIT
#include "app/windowtexts.h"

#include "batch/jobstate.h"
#include "stabilizer/camerapath.h"
#include "userhands/answermodal.h"

#include <qwt_plot.h>
#include <qwt_plot_curve.h>

#include <QtTest>
#include <QtWidgets>

namespace
{
/** Each curve on one of the axes: with type 5, and with type 3. */
void FillGraphs(const TestWindow& window)
{
    auto* tabs = window.Find<QTabWidget>("tabWidgetMain");
    window.ClickTab(1);
    tabs->widget(1)->findChild<QSpinBox*>(QStringLiteral("spinBoxAvgOrder"))->setValue(5);
    const QRegularExpression shows(
        QStringLiteral("^checkBox(ShowMargin|Deviation|ShowCorrection)$"));
    for (QCheckBox* box : tabs->widget(1)->findChildren<QCheckBox*>(shows))
    {
        box->click();
    }
    window.ClickTab(2);
    tabs->widget(2)->findChild<QCheckBox*>(QStringLiteral("checkBoxShowMargin"))->click();
    window.ClickTab(0);
    window.Commit();
    const QVector<double> still(100, 0.0);
    PathHorizontal.Generate(still, 640.0, 30.0);
    PathVertical.Generate(still, 360.0, 30.0);
    window->ProcessUpdate(JobPathCalculated);
}
}  // namespace

WindowTexts::WindowTexts(const TestWindow& window)
{
    FillGraphs(window);
    for (const QObject* object : window->findChildren<QObject*>())
    {
        AddTextsOf(object);
        AddItemsOf(object);
    }
    AddContextMenus(window);
    for (QString& text : Texts)
    {
        text = text.remove(QLatin1Char('&')).trimmed();
    }
}

void WindowTexts::AddTextsOf(const QObject* object)
{
    for (const char* property : {"text", "title"})
    {
        const QVariant value = object->property(property);
        Texts += value.type() == QVariant::String ? value.toString() : QString();
    }
    if (const auto* menu = qobject_cast<const QMenu*>(object))
    {
        for (const QAction* action : menu->actions())
        {
            Texts += action->text();  // of sub-menus, which need not be children
        }
    }
    if (const auto* plot = dynamic_cast<const QwtPlot*>(object))
    {
        for (const QwtPlotItem* curve : plot->itemList(QwtPlotItem::Rtti_PlotCurve))
        {
            Texts += curve->title().text();
        }
    }
}

void WindowTexts::AddItemsOf(const QObject* object)
{
    if (const auto* tabs = qobject_cast<const QTabWidget*>(object))
    {
        for (int i = 0; i < tabs->count(); ++i)
        {
            Texts += tabs->tabText(i);
        }
    }
    if (const auto* box = qobject_cast<const QComboBox*>(object))
    {
        for (int i = 0; i < box->count(); ++i)
        {
            Texts += box->itemText(i);
        }
    }
    if (const auto* tree = qobject_cast<const QTreeWidget*>(object))
    {
        for (int i = 0; i < tree->columnCount(); ++i)
        {
            Texts += tree->headerItem()->text(i);
        }
    }
}

/** Of the manual list with a section and a point, and of an ignore list with a row. */
void WindowTexts::AddContextMenus(const TestWindow& window)
{
    window.ClickTab(1);
    const QWidget* page = window.Find<QTabWidget>("tabWidgetMain")->widget(1);
    auto* ignored = page->findChild<QTreeWidget*>(QStringLiteral("treeWidgetIgnore"));
    ReadMenu(ignored, {10, 60}, QStringLiteral("Add Ignore section"));
    ReadMenu(ignored, ignored->visualItemRect(ignored->topLevelItem(0)).center());
    auto* manual = page->findChild<QTreeWidget*>(QStringLiteral("treeWidgetManualPathList"));
    ReadMenu(manual, {10, 60}, QStringLiteral("Start Flat In Section"));
    QTreeWidgetItem* section = manual->topLevelItem(0);
    section->setExpanded(true);
    ReadMenu(manual, manual->visualItemRect(section).center());
    ReadMenu(manual, manual->visualItemRect(section->child(0)).center());
}

/** Chooses @p entry if there is one. */
void WindowTexts::ReadMenu(QTreeWidget* tree, const QPoint& place, const QString& entry)
{
    const auto read = [this](const QMenu& shown)
    {
        for (const QAction* action : shown.actions())
        {
            Texts += action->text();
        }
    };
    const AnswerModal menu = AnswerModal::Menu(entry, read);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, tree->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(tree->viewport(), &event);
    QVERIFY(menu.WasAnswered());
}
