// SPDX-License-Identifier: MIT
#include "project/project.h"
#include "project/projectfields.h"
#include "project/settingsfiles.h"
#include "support/files.h"
#include "support/loglines.h"
#include "support/messageguard.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>
#include <memory>

namespace
{
const char* const Written = "1 Project file written!";

/** A file as it was written by hand: fields in all types, one section of each kind. */
const char* const HandMade = R"({
    "CropFactor": 1.25,
    "EnGlobalIgnoreList": true,
    "EnRescale": true,
    "EnableCrop": false,
    "ExpAngle": -0.1,
    "ExpOffH": -3,
    "ExpOffV": 4,
    "ExpResH": 1280,
    "ExpResV": 720,
    "ExportFile": "/e/out.mp4",
    "FlowAngle": {
        "AvgPathImages": 0,
        "AvgPathOrder": 0,
        "EnableIgnoreSections": false,
        "EnableManualPath": false,
        "EndValue": 0,
        "IgnoreSections": [
            {
                "End": -1,
                "Offset": 0.5,
                "Start": 12
            }
        ],
        "IgnoreStartFramesMargin": 0,
        "Lock": false,
        "ManualPath": [
            {
                "Point": [
                    {
                        "FrameNr": 9,
                        "Value": 2.5
                    },
                    {
                        "FrameNr": 3,
                        "Value": -1
                    }
                ]
            },
            {
                "Point": [
                ]
            }
        ],
        "StartValue": 0,
        "UseEndValue": false,
        "UseModified": false,
        "UseStartValue": false
    },
    "FlowH": {
        "AvgPathImages": 25,
        "AvgPathOrder": 4,
        "EnableIgnoreSections": false,
        "EnableManualPath": true,
        "EndValue": 1e+20,
        "IgnoreStartFramesMargin": 6,
        "Lock": true,
        "StartValue": 0.3333333333333333,
        "UseEndValue": true,
        "UseModified": false,
        "UseStartValue": true
    },
    "FlowV": {
        "AvgPathImages": 0,
        "AvgPathOrder": 0,
        "EnableIgnoreSections": false,
        "EnableManualPath": false,
        "EndValue": 0,
        "IgnoreStartFramesMargin": 0,
        "Lock": false,
        "StartValue": 0,
        "UseEndValue": false,
        "UseModified": false,
        "UseStartValue": false
    },
    "IgnoreSections": [
        {
            "End": 200,
            "Offset": 0,
            "Start": 100
        },
        {
            "End": 1,
            "Offset": 0,
            "Start": 0
        }
    ],
    "MaxTrackingPoints": 500,
    "SourceFile": "/s//\"in\".mov",
    "StabilizationFile": "s.dat",
    "StabilizeType": 1,
    "TrackingFile": "ä.dat",
    "UseFlowRotSettings": false,
    "UseFlowVSettings": true
}
)";

/** The project of HandMade. */
Project HandMadeProject()
{
    Project project;
    project.SourceFile = "/s//\"in\".mov";
    project.ExportFile = "/e/out.mp4";
    project.TrackingFile = QString::fromUtf8("ä.dat");
    project.StabilizationFile = "s.dat";
    project.StabilizeType = 1;
    project.TrackingParameters.MaxTrackingPoints = 500;
    project.FlowH.Lock = true;
    project.FlowH.UseStartValue = true;
    project.FlowH.UseEndValue = true;
    project.FlowH.EnableManualPath = true;
    project.FlowH.AvgPathImages = 25;
    project.FlowH.AvgPathOrder = 4;
    project.FlowH.IgnoreStartFramesMargin = 6;
    project.FlowH.StartValue = 1.0 / 3.0;
    project.FlowH.EndValue = 1e20;
    project.FlowAngle.IgnoreSections = {{12, -1, 0.5}};
    project.FlowAngle.ManualPath.resize(2);
    project.FlowAngle.ManualPath[0].Points = {{9, 2.5}, {3, -1.0}};
    project.UseFlowVSettings = true;
    project.UseFlowRotSettings = false;
    project.EnGlobalIgnoreList = true;
    project.GlobalIgnoreSections = {{100, 200, 0.0}, {0, 1, 0.0}};
    project.ExportSettings = {false, true, 1.25, -0.1, 1280, 720, -3, 4};
    return project;
}
}  // namespace

/** Projects on their way to a file and back. */
class ProjectSaveTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void FileByteForByte();
    void ReadsTheHandMadeFile();
    void EmptyListsAreLeftOut();
    void ReplacesAFile();
    void NamesStandAsTheyAre();
    void FileThatCannotBeWritten();
    void RoundTrip_data();
    void RoundTrip();
    void NothingIsChecked();
    void SavingChangesNothing();

private:
    [[nodiscard]] QString Path(const QString& name) const { return Directory->filePath(name); }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;
    std::unique_ptr<LogLines> Messages;
};

void ProjectSaveTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    QVERIFY(Directory->isValid());
    Messages = std::make_unique<LogLines>();
}

void ProjectSaveTest::cleanup()
{
    Messages.reset();
    QCOMPARE(Guard->TakeUnexpected(), QStringList());
}

void ProjectSaveTest::FileByteForByte()
{
    HandMadeProject().Save(Path("p.mvprj"));
    // Line by line first: that shows where they differ.
    QCOMPARE(QString::fromUtf8(ReadBytes(Path("p.mvprj"))).split('\n'),
             QString::fromUtf8(HandMade).split('\n'));
    QCOMPARE(ReadBytes(Path("p.mvprj")), QByteArray(HandMade));
    QCOMPARE(Messages->Take(), QStringList(Written));
}

void ProjectSaveTest::ReadsTheHandMadeFile()
{
    QString path = Path("p.mvprj");
    WriteBytes(path, HandMade);
    Project project;
    QVERIFY(project.Load(path, true));
    QCOMPARE(Lines(FieldsOf(project)), Lines(FieldsOf(HandMadeProject())));
}

void ProjectSaveTest::EmptyListsAreLeftOut()
{
    QString path = Path("p.mvprj");
    Project().Save(path);
    const QJsonObject root = ReadObject(path);
    QCOMPARE(root.size(), 20);  // of 21 keys
    QVERIFY(!root.contains("IgnoreSections"));
    for (const QString axis : {"FlowH", "FlowV", "FlowAngle"})
    {
        QCOMPARE(root[axis].toObject().size(), 11);  // of 13 keys
        QVERIFY(!root[axis].toObject().contains("IgnoreSections"));
        QVERIFY(!root[axis].toObject().contains("ManualPath"));
    }
    Project project = UnusualProject();
    QVERIFY(project.Load(path, true));
    for (const AxisFilterSettings* axis : {&project.FlowH, &project.FlowV, &project.FlowAngle})
    {
        QVERIFY(axis->IgnoreSections.empty() && axis->ManualPath.empty());
    }
    QVERIFY(project.GlobalIgnoreSections.empty());
}

void ProjectSaveTest::ReplacesAFile()
{
    WriteBytes(Path("p.mvprj"), QByteArray(100000, 'x'));
    HandMadeProject().Save(Path("p.mvprj"));
    QCOMPARE(ReadBytes(Path("p.mvprj")), QByteArray(HandMade));
}

void ProjectSaveTest::NamesStandAsTheyAre()
{
    const QStringList names{"p.json", "p", QString::fromUtf8("ü %1.mvprj")};
    for (const QString& name : names)
    {
        HandMadeProject().Save(Path(name));
        QCOMPARE(ReadBytes(Path(name)), QByteArray(HandMade));
    }
    QCOMPARE(QDir(Directory->path()).entryList(QDir::Files).size(), names.size());
}

void ProjectSaveTest::FileThatCannotBeWritten()
{
    HandMadeProject().Save(Path("missing/p.mvprj"));
    QCOMPARE(Messages->Take(), QStringList(Written));
    HandMadeProject().Save(Directory->path());
    QCOMPARE(Messages->Take(), QStringList(Written));
    QVERIFY(QDir(Directory->path()).isEmpty());
}

void ProjectSaveTest::RoundTrip_data()
{
    QTest::addColumn<bool>("useUnusual");
    QTest::addColumn<bool>("reportErrors");
    QTest::newRow("every field off its default") << true << true;
    QTest::newRow("every field off its default, not reported") << true << false;
    QTest::newRow("as constructed") << false << true;
}

void ProjectSaveTest::RoundTrip()
{
    QFETCH(bool, useUnusual);
    QFETCH(bool, reportErrors);
    const Project project = useUnusual ? UnusualProject() : Project();
    if (useUnusual)
    {
        const FieldMap defaults = LoadDefaults();
        const FieldMap fields = FieldsOf(project);
        for (auto field = fields.cbegin(); field != fields.cend(); ++field)
        {
            QVERIFY2(field.value() != defaults[field.key()], qPrintable(field.key()));
        }
    }
    QString path = Path("p.mvprj");
    project.Save(path);
    Project read = useUnusual ? Project() : UnusualProject();
    QVERIFY(read.Load(path, reportErrors));
    QCOMPARE(Lines(FieldsOf(read)), Lines(FieldsOf(project)));
    QCOMPARE(Messages->Take(), QStringList({Written, "1 Project file opened!"}));
    // A second save writes the same bytes.
    const QByteArray bytes = ReadBytes(path);
    read.Save(path);
    QCOMPARE(ReadBytes(path), bytes);
}

void ProjectSaveTest::NothingIsChecked()
{
    Project project;
    project.ExportSettings.CropFactor = -1e308;
    project.ExportSettings.ExpResH = std::numeric_limits<std::int32_t>::min();
    project.ExportSettings.ExpResV = std::numeric_limits<std::int32_t>::max();
    project.ExportFile = "/e//out";
    project.Save(Path("p.mvprj"));
    const QJsonObject root = ReadObject(Path("p.mvprj"));
    QCOMPARE(root["CropFactor"], QJsonValue(-1e308));
    QCOMPARE(root["ExpResH"], QJsonValue(-2147483648.0));
    QCOMPARE(root["ExpResV"], QJsonValue(2147483647));
    QCOMPARE(root["ExportFile"], QJsonValue("/e//out"));
}

void ProjectSaveTest::SavingChangesNothing()
{
    const Project project = UnusualProject();
    project.Save(Path("p.mvprj"));
    QCOMPARE(Lines(FieldsOf(project)), Lines(FieldsOf(UnusualProject())));
    // FileNames wait for SyncFileNames.
    QCOMPARE(project.FileNames.TrackingFile, "");
}

QTEST_MAIN(ProjectSaveTest)
#include "projectsave_test.moc"
