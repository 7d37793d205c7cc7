// SPDX-License-Identifier: MIT
#include "app/testwindow.h"
#include "batch/exportsettings.h"
#include "dialogs/dialogguard.h"
#include "dialogs/homefiles.h"
#include "dialogs/showndialogs.h"
#include "dialogs/startedwindow.h"
#include "stabilizer/camerapath.h"
#include "support/files.h"
#include "support/testhome.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QTest>

namespace
{
const TestHome OuterHome;
}  // namespace

/** The window after a start that opens no project. */
class NoProjectTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void FormShowsItsStartValues();
    void TitleShowsTheStoredPath_data();
    void TitleShowsTheStoredPath();
    void EmptyArgumentIsNoArgument();
    void FormBecomesTheProject();
    void SavingWritesTheForm();
    void SavingWithoutAFileAsksForOne();
    void SourceHasNoProjectDirectory();

private:
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestHome> Home;
    QString Last;        ///< path of the project that the configuration names
    QByteArray Content;  ///< of its file
};

void NoProjectTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Home = std::make_unique<TestHome>();
    Last = Home->Path(QStringLiteral("Last/Last.mvprj"));
    WriteObject(Last, SmallProject(QStringLiteral("/videos/last.mov")));
    WriteConfiguration(Last, false);
    Content = ReadBytes(Last);
}

void NoProjectTest::cleanup()
{
    Home.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void NoProjectTest::FormShowsItsStartValues()
{
    const StartedWindow window;
    QCOMPARE(window.Log(), QStringList());
    for (const char* field : {"lineEditSourceVideo", "lineEditTrackingPathFile",
                              "lineEditStabilizeFile", "lineEditExportVideo"})
    {
        QCOMPARE(window.Text(field), QString());
    }
    QCOMPARE(window.Number("spinBoxMaxTrackingPoints"), 200.0);
    QCOMPARE(window.Number("doubleSpinBoxZoom"), 100.0);
    QCOMPARE(window.Number("spinBoxRescaleXAxis"), 99.0);
    QCOMPARE(window.Number("spinBoxRescaleYAxis"), 99.0);
    QCOMPARE(window.Number("spinBoxExpOffsetH"), 0.0);
    QCOMPARE(window.Number("spinBoxExpOffsetV"), 0.0);
    QCOMPARE(window.Number("doubleSpinBoxExpRot"), 0.0);
    QCOMPARE(ReadBytes(Last), Content);
    QVERIFY(!QFile::exists(StartProjectPath()));
}

void NoProjectTest::TitleShowsTheStoredPath_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("title");
    QTest::newRow("of a file that is there") << "Last/Last.mvprj"
                                             << "IDLE Last.mvprj @ Molvane";
    QTest::newRow("of a file that is gone") << "gone/gone.mvprj"
                                            << "IDLE gone.mvprj @ Molvane";
    QTest::newRow("nothing") << QString() << "IDLE  @ Molvane";
}

void NoProjectTest::TitleShowsTheStoredPath()
{
    QFETCH(QString, stored);
    QFETCH(QString, title);
    const QString path = stored.isEmpty() ? QString() : Home->Path(stored);
    WriteConfiguration(path, false);
    const StartedWindow window;
    QCOMPARE(window.Title(), title);
    QCOMPARE(window.Log(), QStringList());
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), path);
    QCOMPARE(ReadObject(ConfigurationPath()).value("AutoLoadLastProject"), QJsonValue(false));
    QVERIFY(!QFile::exists(Home->Path(QStringLiteral("gone"))));
    QVERIFY(!QFile::exists(Home->Path(QStringLiteral("Molvane/Start"))));
}

void NoProjectTest::EmptyArgumentIsNoArgument()
{
    const StartedWindow window(QStringLiteral(""));
    QCOMPARE(window.Log(), QStringList());
}

void NoProjectTest::FormBecomesTheProject()
{
    const TestWindow window;
    // The camera paths are bound to the settings of the window's project.
    const ExportSettings* settings = PathHorizontal.Export;
    QVERIFY(settings != nullptr);
    QCOMPARE(settings->ExpResH, 99);
    QCOMPARE(settings->ExpResV, 99);
    QCOMPARE(settings->CropFactor, 1.0);
    QVERIFY(!settings->EnableCrop);
    QVERIFY(!settings->EnRescale);
    const auto* warp = window.Find<QComboBox>("comboBoxWarpType");
    QCOMPARE(warp->currentText(), QStringLiteral("Position & Rotate"));
    QVERIFY(!warp->isEnabled());
}

void NoProjectTest::SavingWritesTheForm()
{
    const TestWindow window;
    window.Find<QAction>("actionsave_project")->trigger();
    QCOMPARE(window.Log(), QStringList("Run      Project file written!"));
    const QJsonObject written = ReadObject(Last);
    const QJsonObject expected = {
        {"SourceFile", ""},   {"TrackingFile", ""},      {"ExportFile", ""},    {"ExpResH", 99},
        {"ExpResV", 99},      {"EnRescale", false},      {"EnableCrop", false}, {"CropFactor", 1},
        {"StabilizeType", 1}, {"MaxTrackingPoints", 200}};
    for (const QString& key : expected.keys())
    {
        QVERIFY2(written.value(key) == expected.value(key), qPrintable(key));
    }
}

void NoProjectTest::SavingWithoutAFileAsksForOne()
{
    WriteConfiguration(Home->Path(QStringLiteral("gone.mvprj")), false);
    const TestWindow window;
    const ShownQuestion shown =
        CancelledQuestion([&window] { window.Find<QAction>("actionsave_project")->trigger(); });
    QCOMPARE(shown.Title, QStringLiteral("Save as new Project"));
    QCOMPARE(window.Log(), QStringList("Error    Could not save project file"));
}

void NoProjectTest::SourceHasNoProjectDirectory()
{
    const TestWindow window;
    const QString clip = Home->Path(QStringLiteral("clip.mov"));
    const auto dialog = AnswerModal::FileDialog(clip);
    window.Click("pushButtonSourceVideo");
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(window.Text("lineEditSourceVideo"), clip);
    QCOMPARE(window.Text("lineEditExportVideo"), QStringLiteral("/clip.mp4"));
}

QTEST_MAIN(NoProjectTest)
#include "noproject_test.moc"
