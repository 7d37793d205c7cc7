// SPDX-License-Identifier: MIT
#include "project/project.h"
#include "project/projectfields.h"
#include "project/settingsfiles.h"
#include "support/files.h"
#include "support/loglines.h"
#include "support/messageguard.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{
const char* const SourceError = "3 Source video file access error!";
const char* const ProjectError = "3 Project file access error!";
const char* const Opened = "1 Project file opened!";

const QJsonObject Content{{"CropFactor", 1.5}, {"extra", QJsonArray{1}}};

FieldMap ContentFields()
{
    FieldMap fields = LoadDefaults();
    fields["CropFactor"] = "1.5";
    return fields;
}
}  // namespace

/** Which files a project touches, and what its user hears of it. */
class ProjectFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void Failures_data();
    void Failures();
    void FreshProjectHearsTheSame();
    void MissingFileChangesNothing();
    void SourceVideoIsNotLookedAt();
    void MovesJson_data();
    void MovesJson();
    void MovesWhatIsNoJson();
    void MovesAMissingFileAsEmpty();
    void OverwritesTheNewName();
    void NewNameThatCannotBeWritten_data();
    void NewNameThatCannotBeWritten();
    void LeavesOtherNames_data();
    void LeavesOtherNames();
    void Checks_data();
    void Checks();
    void ChecksNames();
    void CheckTouchesNothing();

private:
    [[nodiscard]] QString Path(const QString& name) const { return Directory->filePath(name); }
    [[nodiscard]] QStringList Files() const
    {
        return QDir(Directory->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;
    std::unique_ptr<LogLines> Messages;
};

void ProjectFilesTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    QVERIFY(Directory->isValid());
    Messages = std::make_unique<LogLines>();
}

void ProjectFilesTest::cleanup()
{
    Messages.reset();
    QCOMPARE(Guard->TakeUnexpected(), QStringList());
}

void ProjectFilesTest::Failures_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("reportErrors");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("empty name, reported") << "" << true << QStringList{SourceError, Opened};
    QTest::newRow("empty name") << "" << false << QStringList{Opened};
    QTest::newRow("missing file") << "missing.mvprj" << false << QStringList{Opened};
    for (const bool reportErrors : {true, false})
    {
        for (const char* name :
             {"bad.mvprj", "empty.mvprj", "array.mvprj", "folder", "wrong.mvprj"})
        {
            QTest::addRow("%s%s", name, reportErrors ? ", reported" : "")
                << name << reportErrors << QStringList{Opened};
        }
    }
}

void ProjectFilesTest::Failures()
{
    QFETCH(QString, name);
    QFETCH(bool, reportErrors);
    QFETCH(QStringList, messages);
    WriteBytes(Path("bad.mvprj"), "{\"CropFactor\": 1.5, ");
    WriteBytes(Path("empty.mvprj"), "");
    WriteBytes(Path("array.mvprj"), "[{\"CropFactor\": 1.5}]");
    WriteBytes(Path("wrong.mvprj"), "{\"CropFactor\": \"1.5\"}");
    QVERIFY(QDir(Directory->path()).mkdir("folder"));
    const QStringList files = Files();

    QString file = name.isEmpty() ? QString() : Path(name);
    const QString given = file;
    Project project = UnusualProject();
    QVERIFY(project.Load(file, reportErrors));
    QCOMPARE(Lines(FieldsOf(project)), Lines(LoadDefaults()));
    QCOMPARE(project.FileNames.SourceFile, "Source.mp4");
    QCOMPARE(file, given);
    QCOMPARE(Messages->Take(), messages);
    QCOMPARE(Files(), files);
}

void ProjectFilesTest::FreshProjectHearsTheSame()
{
    Project project;
    QString none;
    QVERIFY(project.Load(none, true));
    QCOMPARE(none, QString());
    QCOMPARE(Lines(FieldsOf(project)), Lines(LoadDefaults()));
    QCOMPARE(Messages->Take(), QStringList({SourceError, Opened}));
}

void ProjectFilesTest::MissingFileChangesNothing()
{
    for (const QString name : {"missing.mvprj", "missing.json", "missing/p.json"})
    {
        Project project = UnusualProject();
        project.SyncFileNames();
        QString file = Path(name);
        QVERIFY(!project.Load(file, true));
        QCOMPARE(file, Path(name));
        QCOMPARE(Lines(FieldsOf(project)), Lines(FieldsOf(UnusualProject())));
        QCOMPARE(project.FileNames.TrackingFile, "t");
        QCOMPARE(Messages->Take(), QStringList(ProjectError));
        QCOMPARE(Files(), QStringList());
    }
}

void ProjectFilesTest::SourceVideoIsNotLookedAt()
{
    QString file = Path("p.mvprj");
    WriteObject(file, {{"SourceFile", "/missing/video.mov"}});
    Project project;
    QVERIFY(project.Load(file, true));
    QCOMPARE(Messages->Take(), QStringList(Opened));
}

void ProjectFilesTest::MovesJson_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("moved");
    QTest::newRow("at the end") << "p.json"
                                << "p.mvprj";
    QTest::newRow("in the middle") << "p.json.bak"
                                   << "p.mvprj.bak";
    QTest::newRow("in front of letters") << "p.jsonx"
                                         << "p.mvprjx";
    QTest::newRow("twice") << "p.json.json"
                           << "p.mvprj.mvprj";
    QTest::newRow("nothing else") << ".json"
                                  << ".mvprj";
    QTest::newRow("directory") << "d.json/p.txt"
                               << "d.mvprj/p.txt";
    QTest::newRow("directory and name") << "d.json/p.json"
                                        << "d.mvprj/p.mvprj";
}

void ProjectFilesTest::MovesJson()
{
    QFETCH(QString, name);
    QFETCH(QString, moved);
    for (const bool reportErrors : {true, false})
    {
        QDir(Directory->path()).mkpath("d.json");
        QDir(Directory->path()).mkpath("d.mvprj");
        WriteObject(Path(name), Content);
        const QByteArray bytes = ReadBytes(Path(name));
        QString file = Path(name);
        Project project = UnusualProject();
        QVERIFY(project.Load(file, reportErrors));
        QCOMPARE(file, Path(moved));
        QCOMPARE(Lines(FieldsOf(project)), Lines(ContentFields()));
        QCOMPARE(ReadBytes(Path(name)), bytes);
        QCOMPARE(ReadBytes(Path(moved)), QByteArray("{\n"
                                                    "    \"CropFactor\": 1.5,\n"
                                                    "    \"extra\": [\n"
                                                    "        1\n"
                                                    "    ]\n"
                                                    "}\n"));
        QCOMPARE(Messages->Take(), QStringList(Opened));
        QVERIFY(QFile::remove(Path(moved)));
    }
}

void ProjectFilesTest::MovesWhatIsNoJson()
{
    QString file = Path("bad.json");
    WriteBytes(file, "no project");
    Project project;
    QVERIFY(project.Load(file, true));
    QCOMPARE(file, Path("bad.mvprj"));
    QCOMPARE(ReadBytes(Path("bad.mvprj")), QByteArray("{\n}\n"));
    QCOMPARE(ReadBytes(Path("bad.json")), QByteArray("no project"));
    QCOMPARE(Messages->Take(), QStringList(Opened));
}

void ProjectFilesTest::MovesAMissingFileAsEmpty()
{
    QString file = Path("missing.json");
    Project project = UnusualProject();
    QVERIFY(project.Load(file, false));
    QCOMPARE(file, Path("missing.mvprj"));
    QCOMPARE(Files(), QStringList("missing.mvprj"));
    QCOMPARE(ReadBytes(file), QByteArray("{\n}\n"));
    QCOMPARE(Lines(FieldsOf(project)), Lines(LoadDefaults()));
    QCOMPARE(Messages->Take(), QStringList(Opened));
}

void ProjectFilesTest::OverwritesTheNewName()
{
    WriteObject(Path("p.json"), {{"ExpResH", 1}});
    WriteObject(Path("p.mvprj"), {{"ExpResH", 2}, {"ExpResV", 3}});
    QString file = Path("p.json");
    Project project;
    QVERIFY(project.Load(file, true));
    QCOMPARE(project.ExportSettings.ExpResH, 1);
    QCOMPARE(project.ExportSettings.ExpResV, 1080);
    QCOMPARE(ReadObject(Path("p.mvprj")), (QJsonObject{{"ExpResH", 1}}));
}

void ProjectFilesTest::NewNameThatCannotBeWritten_data()
{
    QTest::addColumn<bool>("reportErrors");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("reported") << true << QStringList{SourceError, Opened};
    QTest::newRow("not reported") << false << QStringList{Opened};
}

void ProjectFilesTest::NewNameThatCannotBeWritten()
{
    QFETCH(bool, reportErrors);
    QFETCH(QStringList, messages);
    // The directory's name is changed too, and there is no directory of that name.
    QVERIFY(QDir(Directory->path()).mkdir("d.json"));
    QString file = Path("d.json/p.json");
    WriteObject(file, Content);
    Project project = UnusualProject();
    QVERIFY(project.Load(file, reportErrors));
    QCOMPARE(file, Path("d.mvprj/p.mvprj"));
    QCOMPARE(Lines(FieldsOf(project)), Lines(ContentFields()));
    QCOMPARE(Messages->Take(), messages);
    QCOMPARE(Files(), QStringList("d.json"));
    QCOMPARE(ReadObject(Path("d.json/p.json")), Content);
}

void ProjectFilesTest::LeavesOtherNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the proper one") << "p.mvprj";
    QTest::newRow("capitals") << "p.JSON";
    QTest::newRow("one capital") << "p.Json";
    QTest::newRow("no dot") << "json";
    QTest::newRow("another dot") << "p.jso.n";
    QTest::newRow("no extension") << "p";
}

void ProjectFilesTest::LeavesOtherNames()
{
    QFETCH(QString, name);
    WriteObject(Path(name), Content);
    const QByteArray bytes = ReadBytes(Path(name));
    QString file = Path(name);
    Project project;
    QVERIFY(project.Load(file, true));
    QCOMPARE(file, Path(name));
    QCOMPARE(Lines(FieldsOf(project)), Lines(ContentFields()));
    QCOMPARE(Files(), QStringList(name));
    QCOMPARE(ReadBytes(Path(name)), bytes);
    QCOMPARE(Messages->Take(), QStringList(Opened));
}

void ProjectFilesTest::Checks_data()
{
    QTest::addColumn<QJsonObject>("root");
    QTest::addColumn<bool>("expected");
    const QJsonObject full{{"TrackingFile", ""},  {"StabilizeType", 0.5}, {"MaxTrackingPoints", -1},
                           {"EnableCrop", false}, {"CropFactor", 0},      {"EnRescale", false}};
    QTest::newRow("the six keys are enough") << full << true;
    QJsonObject others = full;
    for (const char* key : {"SourceFile", "ExportFile", "FlowH", "ExpResH", "IgnoreSections"})
    {
        others[key] = QJsonValue();
    }
    QTest::newRow("other keys do not count") << others << true;
    QTest::newRow("none") << QJsonObject() << false;
    for (const QString& key : full.keys())
    {
        QJsonObject root = full;
        root.remove(key);
        QTest::newRow("without " + key.toLatin1()) << root << false;
        const QJsonValue samples[] = {QJsonValue(), true, 1, "1", QJsonArray{1}, QJsonObject()};
        for (const QJsonValue& sample : samples)
        {
            root[key] = sample;
            QTest::addRow("%s of type %d", qPrintable(key), sample.type())
                << root << (sample.type() == full[key].type());
        }
    }
}

void ProjectFilesTest::Checks()
{
    QFETCH(QJsonObject, root);
    QFETCH(bool, expected);
    WriteObject(Path("p.mvprj"), root);
    QCOMPARE(Project::CheckFile(Path("p.mvprj")), expected);
    QVERIFY(Messages->All().isEmpty());
}

void ProjectFilesTest::ChecksNames()
{
    Project().Save(Path("p.mvprj"));
    Project().Save(Path("p.json"));
    Project().Save(Path("video.mov"));
    QVERIFY(Project::CheckFile(Path("p.mvprj")));
    QVERIFY(Project::CheckFile(Path("p.json")));
    QVERIFY(Project::CheckFile(Path("video.mov")));  // the content counts
    WriteBytes(Path("bad.mvprj"), "{");
    QVERIFY(!Project::CheckFile(Path("bad.mvprj")));
    QVERIFY(!Project::CheckFile(QString()));
    QVERIFY(!Project::CheckFile(""));
    QVERIFY(!Project::CheckFile(Path("missing.mvprj")));
    QVERIFY(!Project::CheckFile(Directory->path()));
    WriteBytes(Path("array.mvprj"), '[' + ReadBytes(Path("p.mvprj")) + ']');
    QVERIFY(!Project::CheckFile(Path("array.mvprj")));
}

void ProjectFilesTest::CheckTouchesNothing()
{
    WriteBytes(Path("p.json"), "{}");
    QVERIFY(!Project::CheckFile(Path("p.json")));
    QCOMPARE(Files(), QStringList("p.json"));
    QCOMPARE(ReadBytes(Path("p.json")), QByteArray("{}"));
    QVERIFY(Messages->All().isEmpty());
}

QTEST_MAIN(ProjectFilesTest)
#include "projectfiles_test.moc"
