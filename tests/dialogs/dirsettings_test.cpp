// SPDX-License-Identifier: MIT
#include "project/dirsettings.h"

#include "dialogs/dialogguard.h"
#include "dialogs/quickdirectories.h"
#include "support/files.h"

#include <QMetaMethod>
#include <QTest>
#include <QTextBrowser>

namespace
{
const QString Placeholder = QStringLiteral("#########");
}  // namespace

/** The dialog's look, its entries, and what Ok and Cancel make of them. */
class DirSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void SlotsInOrder();
    void Form();
    void FixedText();
    void DefaultEntries();
    void EntriesOfTheConfiguration();
    void ShowsWithoutBlocking();
    void OkTakesTheEntriesFromLastToFirst();
    void OkHides();
    void OkWritesTheConfiguration();
    void OkWithoutAPlaceForTheConfiguration();
    void OkOfDefaultEntriesStoresThem();
    void OkOfNothingBringsTheDefaultsBack();
    void OrderFlipsEachTime();
    void EmptyEntriesGo_data();
    void EmptyEntriesGo();
    void NewEntriesCanBeTyped();
    void CancelKeepsChangesUntilTheTreeIsFilled();

private:
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QuickDirectoriesDialog> Quick;
};

void DirSettingsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Quick = std::make_unique<QuickDirectoriesDialog>();
}

void DirSettingsTest::cleanup()
{
    Quick.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void DirSettingsTest::SlotsInOrder()
{
    const QMetaObject& meta = DirSettings::staticMetaObject;
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        found.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    const QStringList expected = {"on_treeWidget_customContextMenuRequested(QPoint)",
                                  "Add()",
                                  "Remove()",
                                  "ClearAll()",
                                  "ClearNonExisisting()",
                                  "ClearEmpty()",
                                  "DoNothing()",
                                  "accept()",
                                  "reject()"};
    QCOMPARE(found, expected);
}

void DirSettingsTest::Form()
{
    QCOMPARE(Quick->Dialog.size(), QSize(580, 566));
    Quick->Show();
    QCOMPARE(Quick->Dialog.windowTitle(), QStringLiteral("Quick access directories"));
    const auto* text = Quick->Dialog.findChild<QTextBrowser*>(QStringLiteral("textBrowser"));
    const auto* buttons = Quick->Dialog.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    QVERIFY(text != nullptr);
    QVERIFY(buttons != nullptr);
    QCOMPARE(text->maximumHeight(), 140);
    QCOMPARE(Quick->Tree().columnCount(), 1);
    QCOMPARE(Quick->Tree().headerItem()->text(0), QStringLiteral("Directories"));
    QCOMPARE(Quick->Tree().contextMenuPolicy(), Qt::CustomContextMenu);
    QCOMPARE(buttons->orientation(), Qt::Horizontal);
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QVERIFY(text->geometry().bottom() < Quick->Tree().geometry().top());
    QVERIFY(Quick->Tree().geometry().bottom() < buttons->geometry().top());
}

void DirSettingsTest::FixedText()
{
    const auto* browser = Quick->Dialog.findChild<QTextBrowser*>(QStringLiteral("textBrowser"));
    const QString text = browser->toPlainText();
    for (const char* part : {"left", "right mouse", "add", "remove", "#ProjectFilesDir",
                             "#SrcVideoFileDir", "#ExportVideoFileDir", "replaced"})
    {
        QVERIFY2(text.contains(QLatin1String(part)), part);
    }
    QVERIFY(browser->isReadOnly());
}

void DirSettingsTest::DefaultEntries()
{
    const QStringList expected = {QDir::homePath() + QStringLiteral("/Molvane"), "#ProjectFilesDir",
                                  "#SrcVideoFileDir", "#ExportVideoFileDir"};
    QCOMPARE(Quick->Entries(), expected);
    for (int i = 0; i < expected.size(); ++i)
    {
        QVERIFY(Quick->CanBeTyped(i));
    }
}

void DirSettingsTest::EntriesOfTheConfiguration()
{
    const QStringList expected = {"/b", "/a", "#SrcVideoFileDir/cut", "/b"};
    Quick->Fill(expected);
    QCOMPARE(Quick->Entries(), expected);
    for (int i = 0; i < expected.size(); ++i)
    {
        QVERIFY(!Quick->CanBeTyped(i));
    }
}

void DirSettingsTest::ShowsWithoutBlocking()
{
    Quick->Config.DirList = QStringList{"/a"};
    QVERIFY(!Quick->Dialog.isVisible());
    Quick->Dialog.ShowDialog();
    QVERIFY(Quick->Dialog.isVisible());
    QVERIFY(!Quick->Dialog.isModal());
    QCOMPARE(Quick->Entries(), QStringList{"/a"});  // filled anew
}

void DirSettingsTest::OkTakesTheEntriesFromLastToFirst()
{
    Quick->Project.SourceFile = QStringLiteral("/videos/clip.mov");
    Quick->Fill({"/a", "#SrcVideoFileDir", "/c"});
    Quick->Press(QDialogButtonBox::Ok);
    const QStringList reversed = {"/c", "#SrcVideoFileDir", "/a"};
    QCOMPARE(Quick->Config.DirList, reversed);  // the word stays
    const QList<QUrl> urls = {QUrl::fromLocalFile("/c"), QUrl::fromLocalFile("/videos"),
                              QUrl::fromLocalFile("/a")};
    QCOMPARE(SidebarUrls, urls);
    const QStringList tree = {"/a", "#SrcVideoFileDir", "/c"};
    QCOMPARE(Quick->Entries(), tree);  // until it is filled
}

void DirSettingsTest::OkHides()
{
    Quick->Show();
    Quick->Press(QDialogButtonBox::Ok);
    QVERIFY(!Quick->Dialog.isVisible());
}

void DirSettingsTest::OkWritesTheConfiguration()
{
    WriteBytes(ConfigurationPath(), "");
    Quick->Config.ProjectFile = QStringLiteral("/p/P.mvprj");
    Quick->Fill({"/a", "/b"});
    Quick->Press(QDialogButtonBox::Ok);
    const QStringList reversed = {"/b", "/a"};
    QCOMPARE(QuickDirectories(), reversed);
    QCOMPARE(RecentProjects(), QStringList{"/p/P.mvprj"});
}

void DirSettingsTest::OkWithoutAPlaceForTheConfiguration()
{
    Quick->Fill({"/a", "/b"});
    Quick->Press(QDialogButtonBox::Ok);
    QVERIFY(!QFile::exists(ConfigurationPath()));
    QCOMPARE(SidebarUrls.size(), 2);  // shows all the same
}

void DirSettingsTest::OkOfDefaultEntriesStoresThem()
{
    const QStringList defaults = Quick->Entries();
    Quick->Press(QDialogButtonBox::Ok);
    const QStringList reversed = {defaults.at(3), defaults.at(2), defaults.at(1), defaults.at(0)};
    QCOMPARE(Quick->Config.DirList, reversed);
    Quick->Show();
    QCOMPARE(Quick->Entries(), reversed);
    QVERIFY(!Quick->CanBeTyped(0));
}

void DirSettingsTest::OkOfNothingBringsTheDefaultsBack()
{
    const QStringList defaults = Quick->Entries();
    Quick->Fill({"/a"});
    Quick->Dialog.ClearAll();
    Quick->Press(QDialogButtonBox::Ok);
    QCOMPARE(Quick->Config.DirList, QStringList());
    QCOMPARE(SidebarUrls, QList<QUrl>());
    Quick->Show();
    QCOMPARE(Quick->Entries(), defaults);
}

void DirSettingsTest::OrderFlipsEachTime()
{
    const QStringList forward = {"/a", "/b", "/c"};
    const QStringList backward = {"/c", "/b", "/a"};
    Quick->Fill(forward);
    for (const QStringList& expected : {backward, forward, backward})
    {
        Quick->Press(QDialogButtonBox::Ok);
        Quick->Show();
        QCOMPARE(Quick->Entries(), expected);
    }
}

void DirSettingsTest::EmptyEntriesGo_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("isKept");
    QTest::newRow("the placeholder") << "#########" << false;
    QTest::newRow("the placeholder twice") << "##################" << false;
    QTest::newRow("blanks only") << "   " << false;
    QTest::newRow("nothing at all") << "" << false;
    QTest::newRow("blanks and the placeholder") << " ######### #########  " << false;
    QTest::newRow("eight characters of the nine") << "########" << true;
    QTest::newRow("one character more") << "##########" << true;
    QTest::newRow("text behind the placeholder") << "#########/a" << true;
    QTest::newRow("blanks around text") << " /a b " << true;
}

void DirSettingsTest::EmptyEntriesGo()
{
    QFETCH(QString, entry);
    QFETCH(bool, isKept);
    Quick->Fill({entry, "/first", entry, entry, "/last", entry});
    Quick->Press(QDialogButtonBox::Ok);
    const QStringList all = {entry, "/last", entry, entry, "/first", entry};
    const QStringList others = {"/last", "/first"};
    QCOMPARE(Quick->Config.DirList, isKept ? all : others);  // unchanged text
    QCOMPARE(SidebarUrls.size(), Quick->Config.DirList.size());
}

void DirSettingsTest::NewEntriesCanBeTyped()
{
    Quick->Show();
    Quick->TypeOver(1, QStringLiteral("/typed"));
    Quick->Press(QDialogButtonBox::Ok);
    QCOMPARE(Quick->Config.DirList.at(2), QStringLiteral("/typed"));
}

void DirSettingsTest::CancelKeepsChangesUntilTheTreeIsFilled()
{
    Quick->Fill({"/a", "/b"});
    Quick->Press(QDialogButtonBox::Ok);
    const QList<QUrl> urls = SidebarUrls;
    Quick->Show();
    Quick->Tree().topLevelItem(0)->setText(0, QStringLiteral("/changed"));
    Quick->Press(QDialogButtonBox::Cancel);
    QVERIFY(!Quick->Dialog.isVisible());
    const QStringList changed = {"/changed", "/a"};
    const QStringList stored = {"/b", "/a"};
    QCOMPARE(Quick->Entries(), changed);
    QCOMPARE(Quick->Config.DirList, stored);
    QCOMPARE(SidebarUrls, urls);
    Quick->Show();
    QCOMPARE(Quick->Entries(), stored);
}

QTEST_MAIN(DirSettingsTest)
#include "dirsettings_test.moc"
