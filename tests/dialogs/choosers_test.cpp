// SPDX-License-Identifier: MIT
#include "dialogs/homefiles.h"
#include "dialogs/projectwindow.h"
#include "support/files.h"
#include "userhands/answermodal.h"

#include <QTest>

namespace
{
const TestHome OuterHome;
const QString VideoFilter = QStringLiteral("video files (*.avi *.mov *.mp4 *.webm *.av1)");
}  // namespace

/** The four buttons "Choose". */
class ChoosersTest : public ProjectWindowTest
{
    Q_OBJECT

private slots:
    void Dialog_data() { Each_data(); }
    void Dialog();
    void TypedName_data() { Each_data(); }
    void TypedName();
    void Cancel_data() { Each_data(); }
    void Cancel();
    void ReachesTheProject_data() { Each_data(); }
    void ReachesTheProject();
    void StartsAtItsOwnFile_data() { Each_data(); }
    void StartsAtItsOwnFile();
    void ExportNameFollowsTheSource_data();
    void ExportNameFollowsTheSource();
    void ExportNameFollowsIntoTheProject();
    void ExportNameStaysWithoutANewSource();

private:
    static void Each_data();
    void Choose(const char* button, const QString& typed) const;
};

void ChoosersTest::Choose(const char* button, const QString& typed) const
{
    const auto dialog = AnswerModal::FileDialog(typed);
    Window->Click(button);
    QVERIFY(dialog.WasAnswered());
}

void ChoosersTest::Each_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("filter");
    QTest::newRow("source") << QByteArray("pushButtonSourceVideo")
                            << QByteArray("lineEditSourceVideo") << "SourceFile"
                            << "Source Video File" << VideoFilter;
    QTest::newRow("export") << QByteArray("pushButtonExportVideoFile")
                            << QByteArray("lineEditExportVideo") << "ExportFile"
                            << "Export Video File" << VideoFilter;
    QTest::newRow("tracking") << QByteArray("pushButtonTrackingFile")
                              << QByteArray("lineEditTrackingPathFile") << "TrackingFile"
                              << "Tracking File"
                              << "Tracking File (*.dat)";
    QTest::newRow("stabilize") << QByteArray("pushButtonStabilizeFile")
                               << QByteArray("lineEditStabilizeFile") << "StabilizationFile"
                               << "Stabilize File"
                               << "Stabilize File (*.dat)";
}

void ChoosersTest::Dialog()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, title);
    QFETCH(QString, filter);
    const ShownFileDialog shown = CancelledFileDialog([&] { Window->Click(button); });
    QCOMPARE(shown.Title, title);
    QCOMPARE(shown.Filters, QStringList(filter));
    QCOMPARE(shown.Mode, QFileDialog::AnyFile);
}

void ChoosersTest::TypedName()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, field);
    const QString path = InHome(QStringLiteral("not.there"));
    Choose(button, path);
    QCOMPARE(Window->Text(field), path);
    const bool isSource = field == "lineEditSourceVideo";  // which the player opens
    QCOMPARE(NewLines(), isSource ? QStringList(NotOpened(path)) : QStringList());
    QVERIFY(!QFile::exists(path));
}

void ChoosersTest::Cancel()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, field);
    const QString before = Window->Text(field);
    const QString exportBefore = Window->Text("lineEditExportVideo");
    Choose(button, QString());
    QCOMPARE(Window->Text(field), before);
    QCOMPARE(Window->Text("lineEditExportVideo"), exportBefore);
    QCOMPARE(NewLines(), QStringList());  // here a cancel is no error
}

void ChoosersTest::ReachesTheProject()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, key);
    const QString path = InHome(QStringLiteral("chosen.file"));
    Choose(button, path);
    Trigger("actionsave_project");
    QCOMPARE(ReadObject(StartProjectPath()).value(key).toString(), path);
}

void ChoosersTest::StartsAtItsOwnFile()
{
    QFETCH(QByteArray, button);
    const QString path = InHome(QStringLiteral("place/own.file"));
    WriteBytes(path, "x");
    Choose(button, path);
    const ShownFileDialog shown = CancelledFileDialog([&] { Window->Click(button); });
    QCOMPARE(shown.Directory, InHome(QStringLiteral("place")));
    QCOMPARE(shown.Name, QStringLiteral("own.file"));
}

void ChoosersTest::ExportNameFollowsTheSource_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("exported");  // in the project's directory
    QTest::newRow("another extension") << "/videos/clip.mov"
                                       << "clip.mp4";
    QTest::newRow("the same extension") << "/videos/clip.mp4"
                                        << "clip.mp4";
    QTest::newRow("no dot in the name") << "/videos/clip"
                                        << "clip.mp4";
    QTest::newRow("a dot in the directory only") << "/videos.old/clip"
                                                 << "clip.mp4";
    QTest::newRow("several dots") << "/videos/clip.part.2.avi"
                                  << "clip.part.2.mp4";
    QTest::newRow("a dot at the end") << "/videos/clip."
                                      << "clip.mp4";
    QTest::newRow("a dot at the front only") << "/videos/.clip"
                                             << ".mp4";
    QTest::newRow("blanks and percent signs") << "/videos/my %1 clip %2.avi"
                                              << "my %1 clip %2.mp4";
}

void ChoosersTest::ExportNameFollowsTheSource()
{
    QFETCH(QString, source);
    QFETCH(QString, exported);
    Choose("pushButtonExportVideoFile", QStringLiteral("/chosen/before.avi"));
    QCOMPARE(Window->Text("lineEditExportVideo"), QStringLiteral("/chosen/before.avi"));
    Choose("pushButtonSourceVideo", source);
    QCOMPARE(Window->Text("lineEditSourceVideo"), source);
    QCOMPARE(Window->Text("lineEditExportVideo"),
             InHome(QStringLiteral("Molvane/Start/")) + exported);
}

void ChoosersTest::ExportNameFollowsIntoTheProject()
{
    Choose("pushButtonSourceVideo", QStringLiteral("/videos/clip.mov"));
    Trigger("actionsave_project");
    QCOMPARE(ReadObject(StartProjectPath()).value("ExportFile").toString(),
             InHome(QStringLiteral("Molvane/Start/clip.mp4")));
}

void ChoosersTest::ExportNameStaysWithoutANewSource()
{
    for (const char* button : {"pushButtonTrackingFile", "pushButtonStabilizeFile"})
    {
        Choose(button, QStringLiteral("/data/other.dat"));
    }
    QCOMPARE(Window->Text("lineEditExportVideo"),
             InHome(QStringLiteral("Molvane/Start/Export.mp4")));
}

QTEST_MAIN(ChoosersTest)
#include "choosers_test.moc"
