// SPDX-License-Identifier: MIT
#include "dialogs/dialogguard.h"
#include "dialogs/showndialogs.h"
#include "project/filedialogs.h"
#include "support/files.h"
#include "support/testhome.h"
#include "userhands/answermodal.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace
{
const TestHome Home;
const QString Title = QStringLiteral("New Project");

/** Types @p name into the dialog's field and presses Return, as often as there are names. */
std::function<bool(QWidget*)> TypeInTurn(const QStringList& names)
{
    return [names](QWidget* top)
    {
        const auto* dialog = qobject_cast<QFileDialog*>(top);
        if (dialog == nullptr || !dialog->isVisible())
        {
            return false;
        }
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        for (const QString& name : names)
        {
            QApplication::setActiveWindow(top);
            edit->setFocus();
            edit->selectAll();
            QTest::keyClicks(edit, name);
            QTest::keyClick(edit, Qt::Key_Return);
        }
        return true;
    };
}

/** Tells whether a file appears; what appears goes with it, so that a failure leaves no trace. */
class Newcomer
{
public:
    explicit Newcomer(const QString& file) : File(file), WasThere(QFile::exists(file)) {}
    ~Newcomer()
    {
        if (HasCome())
        {
            QFile::remove(File);
        }
    }
    Newcomer(const Newcomer&) = delete;
    Newcomer& operator=(const Newcomer&) = delete;

    [[nodiscard]] bool HasCome() const { return !WasThere && QFile::exists(File); }

private:
    const QString File;
    const bool WasThere;
};
}  // namespace

/**
 * The dialog that names a project. Around it: the current project "Old", an empty directory
 * "Empty", a project "Done", and a directory "Blocked" where another directory takes the file's
 * name.
 */
class ChooseProjectTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ShowsTheParent();
    void Names_data();
    void Names();
    void Refused_data();
    void Refused();
    void MissingParentIsNotMade();
    void DoubleSlashes();
    void CurrentProjectAgain();
    void EmptiesAnExistingProject();
    void MakesNoDirectoryForAFileInItsOwn();
    void FileInAnotherDirectoryStays();
    void EntersAnExistingDirectory();
    void SelectionOfOneCharacter();
    void Cancel();

private:
    [[nodiscard]] QString In(const QString& name) const { return Parent->filePath(name); }
    void Type(const QString& typed, bool isChosen);

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Parent;
    QString File;
    QString Directory;
};

void ChooseProjectTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Parent = std::make_unique<QTemporaryDir>();
    Directory = In(QStringLiteral("Old"));
    File = In(QStringLiteral("Old/Old.mvprj"));
    WriteBytes(File, "old");
    WriteBytes(In(QStringLiteral("Done/Done.mvprj")), "done");
    QVERIFY(QDir().mkpath(In(QStringLiteral("Empty"))));
    QVERIFY(QDir().mkpath(In(QStringLiteral("Blocked/Blocked.mvprj"))));
}

void ChooseProjectTest::cleanup()
{
    Parent.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void ChooseProjectTest::Type(const QString& typed, bool isChosen)
{
    const auto dialog = AnswerModal::FileDialog(typed);
    QCOMPARE(ChooseProject(File, Directory, Title), isChosen);
    QVERIFY(dialog.WasAnswered());
}

void ChooseProjectTest::ShowsTheParent()
{
    const ShownFileDialog shown =
        CancelledFileDialog([this] { QVERIFY(!ChooseProject(File, Directory, Title)); });
    QCOMPARE(shown.Title, Title);
    QCOMPARE(shown.Directory, Parent->path());
    QCOMPARE(shown.Options, QFileDialog::DontUseNativeDialog | QFileDialog::ShowDirsOnly);
}

void ChooseProjectTest::Names_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("directory");
    QTest::addColumn<QString>("file");
    QTest::newRow("a new directory is made") << "New"
                                             << "New"
                                             << "New/New.mvprj";
    QTest::newRow("a name with a dot") << "New.trip"
                                       << "New.trip"
                                       << "New.trip/New.trip.mvprj";
    QTest::newRow("a new file in its own directory") << "Empty/Empty.mvprj"
                                                     << "Empty"
                                                     << "Empty/Empty.mvprj";
    QTest::newRow("a file in its own directory without the extension") << "Empty/Empty"
                                                                       << "Empty"
                                                                       << "Empty/Empty.mvprj";
    QTest::newRow("an old extension in its own directory") << "Empty/Empty.json"
                                                           << "Empty"
                                                           << "Empty/Empty.mvprj";
    QTest::newRow("the extension in another directory") << "New.mvprj"
                                                        << "New.mvprj"
                                                        << "New.mvprj/New.mvprj";
    QTest::newRow("the old extension in another directory") << "New.json"
                                                            << "New.json"
                                                            << "New.json/New.mvprj";
    QTest::newRow("both extensions go") << "New.json.mvprj"
                                        << "New.json.mvprj"
                                        << "New.json.mvprj/New.mvprj";
    QTest::newRow("an extension within the name goes") << "New.jsonTrip"
                                                       << "New.jsonTrip"
                                                       << "New.jsonTrip/NewTrip.mvprj";
    QTest::newRow("a directory inside another") << "Empty/Trip"
                                                << "Empty/Trip"
                                                << "Empty/Trip/Trip.mvprj";
    QTest::newRow("a trailing slash leaves no name") << "New/"
                                                     << "New"
                                                     << "New/.mvprj";
}

void ChooseProjectTest::Names()
{
    QFETCH(QString, typed);
    QFETCH(QString, directory);
    QFETCH(QString, file);
    Type(typed, true);
    QCOMPARE(Directory, In(directory));
    QCOMPARE(File, In(file));
    QVERIFY(QFileInfo(File).isFile());
    QCOMPARE(QFileInfo(File).size(), 0);
}

void ChooseProjectTest::Refused_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("only one level of directories is made") << "Missing/New";
    QTest::newRow("no directory is made for a file in its own one") << "Missing/Missing.mvprj";
    QTest::newRow("a directory stands in the file's place") << "Blocked/Blocked";
    QTest::newRow("nothing can be made there") << "/proc/New";
}

void ChooseProjectTest::Refused()
{
    QFETCH(QString, typed);
    const QString file = File;
    const QString directory = Directory;
    Type(typed, false);
    QCOMPARE(File, file);
    QCOMPARE(Directory, directory);
    QCOMPARE(ReadBytes(File), QByteArray("old"));
}

void ChooseProjectTest::MissingParentIsNotMade()
{
    Type(QStringLiteral("Missing/New"), false);
    QVERIFY(!QFile::exists(In(QStringLiteral("Missing"))));
}

void ChooseProjectTest::DoubleSlashes()
{
    Type(Parent->path() + QStringLiteral("//Empty//Trip"), true);
    QCOMPARE(Directory, In(QStringLiteral("Empty/Trip")));
    QCOMPARE(File, In(QStringLiteral("Empty/Trip/Trip.mvprj")));
    QVERIFY(QFile::exists(File));
}

void ChooseProjectTest::CurrentProjectAgain()
{
    const QString file = File;
    const QString directory = Directory;
    Type(QStringLiteral("Old/Old.mvprj"), true);
    QCOMPARE(File, file);
    QCOMPARE(Directory, directory);
}

void ChooseProjectTest::EmptiesAnExistingProject()
{
    Type(QStringLiteral("Done/Done.mvprj"), true);
    QCOMPARE(File, In(QStringLiteral("Done/Done.mvprj")));
    QVERIFY(QFile::exists(File));
    QCOMPARE(ReadBytes(File), QByteArray());
}

void ChooseProjectTest::MakesNoDirectoryForAFileInItsOwn()
{
    Type(QStringLiteral("Empty/Empty.mvprj"), true);
    QCOMPARE(QDir(In(QStringLiteral("Empty"))).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("Empty.mvprj")));
}

void ChooseProjectTest::FileInAnotherDirectoryStays()
{
    const QString file = File;
    WriteBytes(In(QStringLiteral("Empty/Other.mvprj")), "other");
    Type(QStringLiteral("Empty/Other.mvprj"), false);
    QCOMPARE(File, file);
    QCOMPARE(ReadBytes(In(QStringLiteral("Empty/Other.mvprj"))), QByteArray("other"));
}

void ChooseProjectTest::EntersAnExistingDirectory()
{
    const QString done = QStringLiteral("Done");
    const AnswerModal dialog(TypeInTurn({done, done}));
    QVERIFY(ChooseProject(File, Directory, Title));
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(Directory, In(done));
    QCOMPARE(File, In(QStringLiteral("Done/Done.mvprj")));
}

void ChooseProjectTest::SelectionOfOneCharacter()
{
    const QString file = File;
    const QString directory = Directory;
    const Newcomer inRoot(QStringLiteral("/.mvprj"));
    QStringList selected;
    // The buttons would enter the root and not select it.
    const AnswerModal dialog(
        [&selected](QWidget* top)
        {
            auto* shown = qobject_cast<QFileDialog*>(top);
            if (shown == nullptr || !shown->isVisible())
            {
                return false;
            }
            shown->setDirectory(QStringLiteral("/"));
            selected = shown->selectedFiles();
            static_cast<QDialog*>(shown)->done(QDialog::Accepted);
            return true;
        });
    QVERIFY(!ChooseProject(File, Directory, Title));
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(selected, QStringList(QStringLiteral("/")));
    QCOMPARE(File, file);
    QCOMPARE(Directory, directory);
    QVERIFY(!inRoot.HasCome());
}

void ChooseProjectTest::Cancel()
{
    const QString file = File;
    const QString directory = Directory;
    Type(QString(), false);
    QCOMPARE(File, file);
    QCOMPARE(Directory, directory);
    QCOMPARE(ReadBytes(File), QByteArray("old"));
}

QTEST_MAIN(ChooseProjectTest)
#include "chooseproject_test.moc"
