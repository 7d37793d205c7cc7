// SPDX-License-Identifier: MIT
#include "dialogs/dialogguard.h"
#include "dialogs/quickdirectories.h"
#include "dialogs/showndialogs.h"
#include "support/files.h"
#include "userhands/answermodal.h"

#include <QFileDialog>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

namespace
{
const QString Line = QStringLiteral("------------");
const QString Placeholder = QStringLiteral("#########");
constexpr int Beside = -1;  ///< below the entries instead of on one
}  // namespace

/** The menu of the quick access directories' tree. */
class DirMenuTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void EntriesOnAnItem();
    void EntriesBesideItems();
    void OpensAtThePointer();
    void AddByDialog();
    void AddBesideItems();
    void AddCancelled();
    void PlaceholderIsTypedOver();
    void PlaceholderLeftGoes();
    void Remove_data();
    void Remove();
    void RemoveWithoutItem();
    void WithoutEffect_data();
    void WithoutEffect();
    void RemoveInvalid();
    void RemoveAll_data();
    void RemoveAll();

private:
    void Choose(const QString& entry, int row) const;

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QuickDirectoriesDialog> Quick;
};

void DirMenuTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Quick = std::make_unique<QuickDirectoriesDialog>();
    Quick->Fill({"/a", "/b", "/c"});
}

void DirMenuTest::cleanup()
{
    Quick.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

/** Clicks on entry @p row, or beside the entries, and takes @p entry of the menu. */
void DirMenuTest::Choose(const QString& entry, int row) const
{
    const auto menu = AnswerModal::Menu(entry);
    row == Beside ? Quick->RightClickBeside() : Quick->RightClickOn(row);
    QVERIFY(menu.WasAnswered());
}

void DirMenuTest::EntriesOnAnItem()
{
    QStringList texts;
    const auto menu = AnswerModal::Menu(QString(),
                                        [&texts](const QMenu& shown)
                                        {
                                            for (const QAction* action : shown.actions())
                                            {
                                                texts.append(action->text());
                                            }
                                        });
    Quick->RightClickOn(1);
    QVERIFY(menu.WasAnswered());
    const QStringList expected = {"Add Directory",
                                  "Choose Directory",
                                  Line,
                                  "Remove Directory",
                                  Line,
                                  "Remove Invalid Directories",
                                  Line,
                                  "Remove all Directories",
                                  Line};
    QCOMPARE(texts, expected);
}

void DirMenuTest::EntriesBesideItems()
{
    QStringList texts;
    const auto menu = AnswerModal::Menu(QString(),
                                        [&texts](const QMenu& shown)
                                        {
                                            for (const QAction* action : shown.actions())
                                            {
                                                texts.append(action->text());
                                            }
                                        });
    Quick->RightClickBeside();
    QVERIFY(menu.WasAnswered());
    const QStringList expected = {
        "Add Directory", Line, "Remove Invalid Directories", Line, "Remove all Directories", Line};
    QCOMPARE(texts, expected);
}

void DirMenuTest::OpensAtThePointer()
{
    QPoint corner;
    const auto menu = AnswerModal::Menu(
        QString(), [&corner](const QMenu& shown) { corner = shown.geometry().topLeft(); });
    Quick->RightClickOn(1);
    QVERIFY(menu.WasAnswered());
    const QTreeWidget& tree = Quick->Tree();
    QCOMPARE(corner,
             tree.viewport()->mapToGlobal(tree.visualItemRect(tree.topLevelItem(1)).center()));
}

void DirMenuTest::AddByDialog()
{
    const QTemporaryDir directory;
    ShownFileDialog shown;
    const auto dialog = AnswerModal::FileDialog(directory.path(), Into(shown));
    Choose(QStringLiteral("Add Directory"), 0);
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(shown.Title, QStringLiteral("New quick access directory"));
    QCOMPARE(shown.Directory, QDir::homePath());
    QVERIFY(shown.Options.testFlag(QFileDialog::ShowDirsOnly));
    const QStringList expected = {"/a", "/b", "/c", directory.path()};
    QCOMPARE(Quick->Entries(), expected);
    QVERIFY(Quick->CanBeTyped(3));
    QVERIFY(!Quick->CanBeTyped(0));
}

void DirMenuTest::AddBesideItems()
{
    const auto dialog = AnswerModal::FileDialog(QStringLiteral("/"));
    Choose(QStringLiteral("Add Directory"), Beside);
    QVERIFY(dialog.WasAnswered());
    const QStringList expected = {"/a", "/b", "/c", "/"};
    QCOMPARE(Quick->Entries(), expected);
}

void DirMenuTest::AddCancelled()
{
    const auto dialog = AnswerModal::FileDialog(QString());
    Choose(QStringLiteral("Add Directory"), 2);
    QVERIFY(dialog.WasAnswered());
    const QStringList expected = {"/a", "/b", "/c", Placeholder};
    QCOMPARE(Quick->Entries(), expected);
    QVERIFY(Quick->CanBeTyped(3));
}

void DirMenuTest::PlaceholderIsTypedOver()
{
    AddCancelled();
    Quick->TypeOver(3, QStringLiteral("#SrcVideoFileDir/cut"));
    Quick->Press(QDialogButtonBox::Ok);
    const QStringList expected = {"#SrcVideoFileDir/cut", "/c", "/b", "/a"};
    QCOMPARE(Quick->Config.DirList, expected);
}

void DirMenuTest::PlaceholderLeftGoes()
{
    AddCancelled();
    Quick->Press(QDialogButtonBox::Ok);
    const QStringList expected = {"/c", "/b", "/a"};
    QCOMPARE(Quick->Config.DirList, expected);
    QCOMPARE(Quick->Entries().size(), 3);
}

void DirMenuTest::Remove_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("the first") << 0 << QStringList{"/b", "/c"};
    QTest::newRow("the middle one") << 1 << QStringList{"/a", "/c"};
    QTest::newRow("the last") << 2 << QStringList{"/a", "/b"};
}

void DirMenuTest::Remove()
{
    QFETCH(int, row);
    QFETCH(QStringList, left);
    Choose(QStringLiteral("Remove Directory"), row);
    QCOMPARE(Quick->Entries(), left);
}

void DirMenuTest::RemoveWithoutItem()
{
    Choose(QStringLiteral("Remove Directory"), 1);
    Quick->Dialog.Remove();  // the item under the last click is gone
    Choose(QString(), 0);
    Choose(QString(), Beside);
    Quick->Dialog.Remove();
    const QStringList expected = {"/a", "/c"};
    QCOMPARE(Quick->Entries(), expected);
}

void DirMenuTest::WithoutEffect_data()
{
    QTest::addColumn<QString>("entry");
    QTest::newRow("choosing is connected to nothing") << "Choose Directory";
    QTest::newRow("a line does nothing") << Line;
    QTest::newRow("the menu is closed") << QString();
}

void DirMenuTest::WithoutEffect()
{
    QFETCH(QString, entry);
    Choose(entry, 1);
    const QStringList expected = {"/a", "/b", "/c"};
    QCOMPARE(Quick->Entries(), expected);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void DirMenuTest::RemoveInvalid()
{
    const QTemporaryDir directory;
    QVERIFY(QDir().mkpath(directory.filePath(QStringLiteral("sub"))));
    WriteBytes(directory.filePath(QStringLiteral("file")), "x");
    Quick->Project.SourceFile = directory.filePath(QStringLiteral("clip.mov"));
    Quick->Config.ProjectFile = directory.filePath(QStringLiteral("sub/P.mvprj"));
    const QString gone = directory.filePath(QStringLiteral("gone"));
    Quick->Fill({gone, directory.path(), "#SrcVideoFileDir", "#ProjectFilesDir",
                 directory.filePath(QStringLiteral("sub")), "#ExportVideoFileDir", Placeholder,
                 directory.filePath(QStringLiteral("file")), QString(), gone});
    Choose(QStringLiteral("Remove Invalid Directories"), Beside);
    const QStringList expected = {directory.path(), directory.filePath(QStringLiteral("sub")),
                                  directory.filePath(QStringLiteral("file"))};
    QCOMPARE(Quick->Entries(), expected);
    QCOMPARE(Quick->Config.DirList.size(), 10);  // only Ok takes it
}

void DirMenuTest::RemoveAll_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("on an entry") << 1;
    QTest::newRow("beside the entries") << Beside;
}

void DirMenuTest::RemoveAll()
{
    QFETCH(int, row);
    Choose(QStringLiteral("Remove all Directories"), row);
    QCOMPARE(Quick->Entries(), QStringList());
    Quick->Dialog.Remove();  // and remembers none of them
    QCOMPARE(Quick->Config.DirList.size(), 3);
}

QTEST_MAIN(DirMenuTest)
#include "dirmenu_test.moc"
