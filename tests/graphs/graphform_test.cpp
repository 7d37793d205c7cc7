// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "graphs/axistab.h"
#include "graphs/graphformrows.h"
#include "support/testhome.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QMetaMethod>
#include <QScrollArea>
#include <QTest>

namespace
{
const TestHome Home;
}  // namespace

/** The form of a graph tab as it stands after construction. */
class GraphFormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void SignalAndSlotOrder();
    void FormIsNamedForm();
    void Texts_data() { GraphFormRows::AddTexts(); }
    void Texts();
    void Ranges_data() { GraphFormRows::AddRanges(); }
    void Ranges();
    void Ticks_data() { GraphFormRows::AddTicks(); }
    void Ticks();
    void Heads_data() { GraphFormRows::AddHeads(); }
    void Heads();
    void MouseActions();
    void LeftColumnStandsInOrder();
    void PlotStandsAboveTheLists();
    void PlotIsSetUp();

private:
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<AxisTab> Tab;
};

void GraphFormTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Tab = std::make_unique<AxisTab>();
}

void GraphFormTest::cleanup()
{
    Tab.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

void GraphFormTest::SignalAndSlotOrder()
{
    const QMetaObject& meta = GraphWindow::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        const bool isFirst = i == meta.methodOffset();
        QCOMPARE(meta.method(i).methodType(), isFirst ? QMetaMethod::Signal : QMetaMethod::Slot);
        names.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    const QStringList expected = {"CalculateCameraPath()",
                                  "on_pushButtonCalc_clicked()",
                                  "on_checkBoxZoomDeviation_clicked(bool)",
                                  "on_checkBoxZoomTimeline_clicked(bool)",
                                  "on_checkBoxTime_clicked(bool)",
                                  "on_checkBoxCamFlow_clicked(bool)",
                                  "on_checkBoxDeviation_clicked(bool)",
                                  "on_checkBoxShowCorrection_clicked(bool)",
                                  "on_checkBoxShowMargin_clicked(bool)",
                                  "on_checkBoxMarginShadow_clicked(bool)",
                                  "on_checkBoxEnIgnSectionsGlobal_clicked(bool)",
                                  "on_checkBoxEnIgnSections_clicked(bool)",
                                  "on_checkBoxEnManualCorrect_clicked(bool)",
                                  "on_treeWidgetManualPathList_customContextMenuRequested(QPoint)",
                                  "on_comboBoxGraphMouse_currentIndexChanged(int)",
                                  "SortManList()",
                                  "StartFlow()",
                                  "FlatIn()",
                                  "AddPoint()",
                                  "RemovePoint()",
                                  "RemoveSection()",
                                  "EndFlow()",
                                  "FlatOut()",
                                  "ClearAllSections()",
                                  "DoNothing()",
                                  "PlotUpdate()",
                                  "GraphLeftClick(QPointF)",
                                  "GraphRect(QRectF)"};
    QCOMPARE(names, expected);
}

void GraphFormTest::FormIsNamedForm()
{
    QCOMPARE(Tab->Window.windowTitle(), QStringLiteral("Form"));
}

void GraphFormTest::Texts()
{
    QFETCH(QByteArray, kind);
    QFETCH(QString, text);
    const auto* widget = Tab->Find<QWidget>(QTest::currentDataTag());
    QCOMPARE(QByteArray(widget->metaObject()->className()), kind);
    QCOMPARE(widget->property(kind == "QGroupBox" ? "title" : "text").toString(), text);
}

/** Also: nothing is loaded by the constructor, or the fields would show the project's numbers. */
void GraphFormTest::Ranges()
{
    QFETCH(QByteArray, kind);
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(double, start);
    const auto* field = Tab->Find<QAbstractSpinBox>(QTest::currentDataTag());
    QCOMPARE(QByteArray(field->metaObject()->className()), kind);
    QCOMPARE(field->property("minimum").toDouble(), minimum);
    QCOMPARE(field->property("maximum").toDouble(), maximum);
    QCOMPARE(field->property("value").toDouble(), start);
    QVERIFY(field->alignment().testFlag(Qt::AlignRight));
    QVERIFY(field->minimumHeight() >= 25);
    if (QByteArray(QTest::currentDataTag()).endsWith("Val"))
    {
        QCOMPARE(field->property("decimals").toInt(), 0);
    }
}

void GraphFormTest::Ticks()
{
    QFETCH(bool, isChecked);
    QCOMPARE(Tab->Box(QTest::currentDataTag())->isChecked(), isChecked);
}

void GraphFormTest::Heads()
{
    QFETCH(QStringList, heads);
    const QTreeWidget& tree = Tab->Tree(QTest::currentDataTag());
    QCOMPARE(tree.columnCount(), heads.size());
    for (int i = 0; i < heads.size(); ++i)
    {
        QCOMPARE(tree.headerItem()->text(i), heads.at(i));
    }
    QCOMPARE(tree.maximumHeight(), 200);
    QCOMPARE(tree.contextMenuPolicy(), Qt::CustomContextMenu);
}

void GraphFormTest::MouseActions()
{
    const auto* actions = Tab->Find<QComboBox>("comboBoxGraphMouse");
    QStringList texts;
    for (int i = 0; i < actions->count(); ++i)
    {
        texts.append(actions->itemText(i));
    }
    const QStringList expected = {"Panning+Zooming", "Add Manual Path Points",
                                  "Add Flat Path Points", "Add Local Ignore Section",
                                  "Add Global Ignore Section"};
    QCOMPARE(texts, expected);
    QCOMPARE(actions->currentIndex(), 0);
}

void GraphFormTest::LeftColumnStandsInOrder()
{
    Tab->Show();
    const char* const names[] = {"checkBoxLock",          "checkBoxEnIgnSectionsGlobal",
                                 "checkBoxEnIgnSections", "checkBoxEnManualCorrect",
                                 "groupBoxSettings",      "spinBoxAvgFrames",
                                 "spinBoxAvgOrder",       "doubleSpinBoxStartVal",
                                 "doubleSpinBoxEndVal",   "spinBoxIgnMargin",
                                 "doubleSpinBoxCrop",     "labelMargin",
                                 "pushButtonCalc",        "groupBox",
                                 "comboBoxGraphMouse",    "checkBoxZoomDeviation",
                                 "checkBoxZoomTimeline",  "checkBoxTime",
                                 "checkBoxCamFlow",       "checkBoxMarginShadow",
                                 "checkBoxShowMargin",    "checkBoxDeviation",
                                 "checkBoxShowCorrection"};
    int above = -1;
    for (const char* name : names)
    {
        const QRect place = Tab->Place(name);
        QVERIFY2(place.top() > above, name);
        QVERIFY2(place.right() < Tab->Place("scrollArea").left(), name);
        above = place.top();
    }
}

void GraphFormTest::PlotStandsAboveTheLists()
{
    Tab->Setup.Proj.EnGlobalIgnoreList = true;
    Tab->Window.LoadSettings();
    Tab->Show();
    const char* const lists[][2] = {{"labelIgnStabListGlobal", "treeWidgetGlobalIgnore"},
                                    {"labelIgnStabList", "treeWidgetIgnore"},
                                    {"labelManPathList", "treeWidgetManualPathList"}};
    for (const auto& [label, tree] : lists)
    {
        QVERIFY(Tab->Place(label).top() > Tab->Place("scrollArea").bottom());
        QVERIFY(Tab->Place(tree).top() > Tab->Place(label).bottom());
    }
    const auto* area = Tab->Find<QScrollArea>("scrollArea");
    QVERIFY(area->widgetResizable());
    QCOMPARE(area->widget(), &Tab->Plot());
}

void GraphFormTest::PlotIsSetUp()
{
    const GridAndPos& grid = Tab->Grid();
    QVERIFY(grid.xEnabled() && grid.yEnabled());
    QVERIFY(!grid.ShowPosition);
    QVERIFY(grid.ShowLine);
    QCOMPARE(Tab->Plot().axisTitle(QwtPlot::yLeft).text(), QStringLiteral("down <- up"));
}

QTEST_MAIN(GraphFormTest)
#include "graphform_test.moc"
