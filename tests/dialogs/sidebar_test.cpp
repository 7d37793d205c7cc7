// SPDX-License-Identifier: MIT
#include "dialogs/dialogguard.h"
#include "dialogs/quickdirectories.h"
#include "userhands/answermodal.h"

#include <QFileDialog>
#include <QTemporaryDir>
#include <QTest>

/** What the words of an entry become in the sidebar of the file dialogs. */
class SidebarTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void Words_data();
    void Words();
    void StaysUntilTheNextOk();
    void ShowsInFileDialogs();

private:
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QuickDirectoriesDialog> Quick;
};

void SidebarTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Quick = std::make_unique<QuickDirectoriesDialog>();
}

void SidebarTest::cleanup()
{
    Quick.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void SidebarTest::Words_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("path");  // of the project, the source and the export alike
    QTest::addColumn<QString>("shown");
    QTest::newRow("no word") << "/plain/dir"
                             << "/v/P/f.x"
                             << "/plain/dir";
    QTest::newRow("one level above the project's directory") << "#ProjectFilesDir"
                                                             << "/v/P/P.mvprj"
                                                             << "/v";
    QTest::newRow("a project at depth one") << "#ProjectFilesDir"
                                            << "/P.mvprj"
                                            << "";
    QTest::newRow("a project in a directory of the root") << "#ProjectFilesDir"
                                                          << "/P/P.mvprj"
                                                          << "";
    QTest::newRow("a project without a directory") << "#ProjectFilesDir"
                                                   << "P.mvprj"
                                                   << "";
    QTest::newRow("the source's directory") << "#SrcVideoFileDir"
                                            << "/v/in/a.mov"
                                            << "/v/in";
    QTest::newRow("a source without a directory") << "#SrcVideoFileDir"
                                                  << "Source.mp4"
                                                  << "";
    QTest::newRow("the export's directory") << "#ExportVideoFileDir"
                                            << "/v/out/a.mp4"
                                            << "/v/out";
    QTest::newRow("an export without a directory") << "#ExportVideoFileDir"
                                                   << "Export.mp4"
                                                   << "";
    QTest::newRow("backslashes") << "#SrcVideoFileDir"
                                 << "/v\\in\\a.mov"
                                 << "/v/in";
    QTest::newRow("double backslashes") << "#SrcVideoFileDir"
                                        << "/v\\\\in\\\\a.mov"
                                        << "/v/in";
    QTest::newRow("three backslashes are a double and a single one") << "#SrcVideoFileDir"
                                                                     << "/v\\\\\\in\\a.mov"
                                                                     << "/v//in";
    QTest::newRow("backslashes of a project") << "#ProjectFilesDir"
                                              << "/v\\P\\P.mvprj"
                                              << "/v";
    QTest::newRow("a sub-directory behind the word") << "#ExportVideoFileDir/cut"
                                                     << "/v/out/a.mp4"
                                                     << "/v/out/cut";
    QTest::newRow("text on both sides") << "/mnt#SrcVideoFileDir/raw"
                                        << "/v/in/a.mov"
                                        << "/mnt/v/in/raw";
    QTest::newRow("backslashes around the word stay") << "#SrcVideoFileDir\\raw"
                                                      << "/v/in/a.mov"
                                                      << "/v/in\\raw";
    QTest::newRow("the project's word goes first") << "#SrcVideoFileDir#ProjectFilesDir"
                                                   << "/v/in/a.mov"
                                                   << "#SrcVideoFileDir/v";
    QTest::newRow("the source's word goes before the export's")
        << "/x#ExportVideoFileDir#SrcVideoFileDir"
        << "/v/in/a.mov"
        << "/x#ExportVideoFileDir/v/in";
    QTest::newRow("case counts") << "/x/#srcvideofiledir"
                                 << "/v/in/a.mov"
                                 << "/x/#srcvideofiledir";
}

void SidebarTest::Words()
{
    QFETCH(QString, entry);
    QFETCH(QString, path);
    QFETCH(QString, shown);
    // Only the path that the word asks for has it; the others would show.
    const bool isProject = entry.contains(QLatin1String("#ProjectFilesDir"));
    const bool isSource = !isProject && entry.contains(QLatin1String("#SrcVideoFileDir"));
    const QString other = QStringLiteral("/other/other/other");
    Quick->Config.ProjectFile = isProject ? path : other;
    Quick->Project.SourceFile = isSource ? path : other;
    Quick->Project.ExportFile = isProject || isSource ? other : path;
    Quick->Fill({entry});
    Quick->Press(QDialogButtonBox::Ok);
    QCOMPARE(Quick->Config.DirList, QStringList(entry));
    QCOMPARE(SidebarUrls.size(), 1);
    QCOMPARE(SidebarUrls.first(), QUrl::fromLocalFile(shown));
    QCOMPARE(SidebarUrls.first().isEmpty(), shown.isEmpty());
}

void SidebarTest::StaysUntilTheNextOk()
{
    Quick->Project.SourceFile = QStringLiteral("/before/a.mov");
    Quick->Fill({"#SrcVideoFileDir"});
    Quick->Press(QDialogButtonBox::Ok);
    Quick->Project.SourceFile = QStringLiteral("/behind/a.mov");
    Quick->Show();
    Quick->Press(QDialogButtonBox::Cancel);
    QCOMPARE(SidebarUrls, QList<QUrl>{QUrl::fromLocalFile("/before")});
    Quick->Press(QDialogButtonBox::Ok);
    QCOMPARE(SidebarUrls, QList<QUrl>{QUrl::fromLocalFile("/behind")});
}

void SidebarTest::ShowsInFileDialogs()
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    Quick->Project.ExportFile = second.filePath(QStringLiteral("a.mp4"));
    Quick->Fill({first.path(), "#ExportVideoFileDir"});
    Quick->Press(QDialogButtonBox::Ok);
    QList<QUrl> shown;
    const auto dialog = AnswerModal::FileDialog(
        QString(), [&shown](const QFileDialog& seen) { shown = seen.sidebarUrls(); });
    QString path = first.path();
    QVERIFY(!ChooseFile(path, QStringLiteral("Any"), QString()));
    QVERIFY(dialog.WasAnswered());
    const QList<QUrl> expected = {QUrl::fromLocalFile(second.path()),
                                  QUrl::fromLocalFile(first.path())};
    QCOMPARE(shown, expected);
}

QTEST_MAIN(SidebarTest)
#include "sidebar_test.moc"
