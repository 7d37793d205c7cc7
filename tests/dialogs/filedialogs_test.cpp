// SPDX-License-Identifier: MIT
#include "project/filedialogs.h"

#include "dialogs/dialogguard.h"
#include "dialogs/showndialogs.h"
#include "support/files.h"
#include "support/testhome.h"
#include "userhands/answermodal.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace
{
const TestHome Home;

const QString Title = QStringLiteral("Choose one");
const QString Filter = QStringLiteral("Data (*.dat)");
}  // namespace

/** The dialogs for one file, on a real directory with typed names. */
class FileDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void CommonSetup();
    void DirectorySetup();
    void SidebarIsTheList();
    void ShowsTheCurrentFile();
    void StartsInADirectory();
    void TypedName_data();
    void TypedName();
    void CancelLeavesThePath();
    void ExistingFile();
    void ExistingFileRefusesOthers();

private:
    [[nodiscard]] QString File(const QString& name) const { return Directory->filePath(name); }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;
};

void FileDialogsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    WriteBytes(File(QStringLiteral("here.dat")), "x");
    SidebarUrls = {QUrl::fromLocalFile(Directory->path()), QUrl::fromLocalFile(Home.Path())};
}

void FileDialogsTest::cleanup()
{
    SidebarUrls.clear();
    Directory.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void FileDialogsTest::CommonSetup()
{
    QFileDialog dialog;
    SetupFileDialog(dialog, Directory->path() + QLatin1Char('/'), Title, Filter);
    QCOMPARE(dialog.windowTitle(), Title);
    QCOMPARE(dialog.nameFilters(), QStringList(Filter));
    QCOMPARE(dialog.viewMode(), QFileDialog::Detail);
    QCOMPARE(dialog.options(), QFileDialog::Options(QFileDialog::DontUseNativeDialog));
    QCOMPARE(dialog.directory().path(), Directory->path());
    QCOMPARE(dialog.sidebarUrls(), SidebarUrls);
    const QIcon logo(QStringLiteral(":/l/Logos/logo-kvar-klein.png"));
    QVERIFY(!logo.pixmap(32).isNull());
    QCOMPARE(dialog.windowIcon().pixmap(32).toImage(), logo.pixmap(32).toImage());
}

void FileDialogsTest::DirectorySetup()
{
    QFileDialog dialog;
    SetupDirDialog(dialog, Directory->path(), Title);
    QCOMPARE(dialog.windowTitle(), Title);
    QCOMPARE(dialog.nameFilters().join(QString()), QString());
    QCOMPARE(dialog.viewMode(), QFileDialog::Detail);
    QCOMPARE(dialog.options(), QFileDialog::Options(QFileDialog::DontUseNativeDialog));
    QCOMPARE(dialog.directory().path(), Directory->path());
    QCOMPARE(dialog.sidebarUrls(), SidebarUrls);
    QVERIFY(!dialog.windowIcon().isNull());
}

void FileDialogsTest::SidebarIsTheList()
{
    QCOMPARE(&GetSidebarUrls(), &SidebarUrls);
}

void FileDialogsTest::ShowsTheCurrentFile()
{
    ShownFileDialog shown;
    QString path = File(QStringLiteral("here.dat"));
    const auto dialog = AnswerModal::FileDialog(QString(), Into(shown));
    QVERIFY(!ChooseFile(path, Title, Filter));
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(shown.Title, Title);
    QCOMPARE(shown.Filters, QStringList(Filter));
    QCOMPARE(shown.Mode, QFileDialog::AnyFile);
    QVERIFY(shown.Options.testFlag(QFileDialog::DontUseNativeDialog));
    QCOMPARE(shown.Directory, Directory->path());
    QCOMPARE(shown.Name, QStringLiteral("here.dat"));
    QCOMPARE(shown.Sidebar, SidebarUrls);
}

void FileDialogsTest::StartsInADirectory()
{
    ShownFileDialog shown;
    QString path = Directory->path();
    const auto dialog = AnswerModal::FileDialog(QStringLiteral("new.dat"), Into(shown));
    QVERIFY(ChooseFile(path, Title, Filter));
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(shown.Directory, Directory->path());
    QCOMPARE(path, File(QStringLiteral("new.dat")));
}

void FileDialogsTest::TypedName_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("a file that is there") << "here.dat"
                                          << "here.dat";
    QTest::newRow("a name that does not exist") << "new.dat"
                                                << "new.dat";
    QTest::newRow("another extension than the filter's") << "new.txt"
                                                         << "new.txt";
    QTest::newRow("no extension is added") << "new"
                                           << "new";
    QTest::newRow("in a directory that does not exist") << "gone/new.dat"
                                                        << "gone/new.dat";
}

void FileDialogsTest::TypedName()
{
    QFETCH(QString, typed);
    QFETCH(QString, chosen);
    for (const bool isAbsolute : {false, true})
    {
        QString path = File(QStringLiteral("here.dat"));
        const auto dialog = AnswerModal::FileDialog(isAbsolute ? File(typed) : typed);
        QVERIFY(ChooseFile(path, Title, Filter));
        QVERIFY(dialog.WasAnswered());
        QCOMPARE(path, File(chosen));
    }
    QVERIFY(!QFile::exists(File(QStringLiteral("new.dat"))));  // choosing makes no file
}

void FileDialogsTest::CancelLeavesThePath()
{
    const QString before = File(QStringLiteral("here.dat"));
    QString path = before;
    const auto dialog = AnswerModal::FileDialog(QString());
    QVERIFY(!ChooseFile(path, Title, Filter));
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(path, before);
}

void FileDialogsTest::ExistingFile()
{
    ShownFileDialog shown;
    QString path = Directory->path();
    const auto dialog = AnswerModal::FileDialog(QStringLiteral("here.dat"), Into(shown));
    QVERIFY(ChooseExistingFile(path, Title, Filter));
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(shown.Title, Title);
    QCOMPARE(shown.Filters, QStringList(Filter));
    QCOMPARE(shown.Mode, QFileDialog::ExistingFile);
    QCOMPARE(path, File(QStringLiteral("here.dat")));
}

void FileDialogsTest::ExistingFileRefusesOthers()
{
    QString path = Directory->path();
    const auto dialog = AnswerModal::FileDialog(QStringLiteral("new.dat"));
    QVERIFY(!ChooseExistingFile(path, Title, Filter));
    QVERIFY(!dialog.WasAnswered());  // it stayed open and had to be closed
    QCOMPARE(path, Directory->path());
}

QTEST_MAIN(FileDialogsTest)
#include "filedialogs_test.moc"
