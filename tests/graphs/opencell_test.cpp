// SPDX-License-Identifier: MIT
#include "app/tabindex.h"
#include "app/testwindow.h"
#include "dialogs/dialogguard.h"
#include "graphs/axissetup.h"
#include "graphs/treehands.h"
#include "stabilizer/axisfiltersettings.h"
#include "support/testhome.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include <functional>
#include <memory>

namespace
{
const TestHome Home;

/** What ends the editing: it takes no focus, so that the cell stays open. */
using WayOut = std::function<void(const TestWindow&)>;

void ToTab(const TestWindow& window, int index)
{
    window.ClickTab(index);
}
}  // namespace

Q_DECLARE_METATYPE(WayOut)

/** What the user has typed into a cell of a tree counts, also without the Return key. */
class OpenCellTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void TypedFrameOfAPointCounts_data() { WaysOut(); }
    void TypedFrameOfAPointCounts();
    void TypedStartOfASectionCounts_data() { WaysOut(); }
    void TypedStartOfASectionCounts();
    void NewPointsAreSeen();

private:
    static void WaysOut();
    [[nodiscard]] QTreeWidget* Tree(const char* name) const;
    static void TypeWithoutReturn(QTreeWidgetItem* item, const QString& text);
    [[nodiscard]] static const AxisFilterSettings& Stored() { return *PathHorizontal.Settings; }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestWindow> Window;
};

void OpenCellTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    QDir(Home.Path(QStringLiteral("Molvane"))).removeRecursively();  // what a row before has saved
    Window = std::make_unique<TestWindow>();
    PathHorizontal.Generate(SteadyMotion(100, 1.0), 640.0, 25.0);
    Window->ClickTab(HorizontalTab);
}

void OpenCellTest::cleanup()
{
    Window.reset();
    QCOMPARE(EndDialogGuard(Guard), QStringList());
}

void OpenCellTest::WaysOut()
{
    QTest::addColumn<WayOut>("leave");
    QTest::newRow("by the settings tab")
        << WayOut([](const TestWindow& window) { ToTab(window, SettingsTab); });
    QTest::newRow("by the player tab")
        << WayOut([](const TestWindow& window) { ToTab(window, PlayerTab); });
    QTest::newRow("by a click on the same tab")
        << WayOut([](const TestWindow& window) { ToTab(window, HorizontalTab); });
    QTest::newRow("by Save Project") << WayOut(
        [](const TestWindow& window) { window.Find<QAction>("actionsave_project")->trigger(); });
}

QTreeWidget* OpenCellTest::Tree(const char* name) const
{
    QWidget* page = Window->Find<QTabWidget>("tabWidgetMain")->widget(HorizontalTab);
    return page->findChild<QTreeWidget*>(QString::fromLatin1(name));
}

/** Into the first column. */
void OpenCellTest::TypeWithoutReturn(QTreeWidgetItem* item, const QString& text)
{
    QTreeWidget* tree = item->treeWidget();
    const int indent = item->parent() != nullptr ? 2 * tree->indentation() : 0;
    const QPoint place(indent + 20, tree->visualItemRect(item).center().y());
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    auto* editor = tree->viewport()->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, text);
}

void OpenCellTest::TypedFrameOfAPointCounts()
{
    QFETCH(const WayOut, leave);
    QTreeWidget* tree = Tree("treeWidgetManualPathList");
    TreeHands::Choose(*tree, TreeHands::Beside, QStringLiteral("Start Flat In Section"));
    TypeWithoutReturn(tree->topLevelItem(0)->child(1), QStringLiteral("37"));
    leave(*Window);
    QCOMPARE(Stored().ManualPath.size(), std::size_t(1));
    QCOMPARE(Stored().ManualPath.front().Points.size(), std::size_t(2));
    QCOMPARE(Stored().ManualPath.front().Points.back().FrameNr, 37);
}

void OpenCellTest::TypedStartOfASectionCounts()
{
    QFETCH(const WayOut, leave);
    QTreeWidget* tree = Tree("treeWidgetIgnore");
    TreeHands::Choose(*tree, TreeHands::Beside, QStringLiteral("Add Ignore section"));
    TypeWithoutReturn(tree->topLevelItem(0), QStringLiteral("42"));
    leave(*Window);
    QCOMPARE(Stored().IgnoreSections.size(), std::size_t(1));
    QCOMPARE(Stored().IgnoreSections.front().Start, 42);
}

void OpenCellTest::NewPointsAreSeen()
{
    QTreeWidget* tree = Tree("treeWidgetManualPathList");
    TreeHands::Choose(*tree, TreeHands::Beside, QStringLiteral("Start Flat In Section"));
    QVERIFY(tree->topLevelItem(0)->isExpanded());
}

QTEST_MAIN(OpenCellTest)
#include "opencell_test.moc"
