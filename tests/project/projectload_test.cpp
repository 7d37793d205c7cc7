// SPDX-License-Identifier: MIT
#include "project/project.h"
#include "project/projectfields.h"
#include "project/settingsfiles.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{
/** One key with a value of its type, and what the field reads then. */
struct Key
{
    const char* Name;
    QJsonValue Value;
    const char* Text;
};

const Key RootKeys[] = {{"SourceFile", "/v/a.mov", "/v/a.mov"},
                        {"ExportFile", "", ""},
                        {"TrackingFile", "t.dat", "t.dat"},
                        {"StabilizationFile", "../s.dat", "../s.dat"},
                        {"StabilizeType", 4, "4"},
                        {"MaxTrackingPoints", 20, "20"},
                        {"IgnoreSections", QJsonArray{QJsonObject()}, "(0, 1, 0)"},
                        {"EnGlobalIgnoreList", false, "false"},
                        {"UseFlowVSettings", false, "false"},
                        {"UseFlowRotSettings", false, "false"},
                        {"EnableCrop", false, "false"},
                        {"CropFactor", 1.25, "1.25"},
                        {"EnRescale", true, "true"},
                        {"ExpResH", 640, "640"},
                        {"ExpResV", 360, "360"},
                        {"ExpOffH", -12, "-12"},
                        {"ExpOffV", 34, "34"},
                        {"ExpAngle", -0.5, "-0.5"}};

const Key AxisKeys[] = {{"UseModified", true, "true"},
                        {"UseStartValue", true, "true"},
                        {"UseEndValue", true, "true"},
                        {"EnableIgnoreSections", false, "false"},
                        {"EnableManualPath", false, "false"},
                        {"Lock", true, "true"},
                        {"AvgPathImages", 30, "30"},
                        {"AvgPathOrder", 5, "5"},
                        {"IgnoreStartFramesMargin", 9, "9"},
                        {"StartValue", 1.5, "1.5"},
                        {"EndValue", -2.5, "-2.5"},
                        {"ManualPath", QJsonArray{QJsonObject()}, "[]"},
                        {"IgnoreSections", QJsonArray{QJsonObject()}, "(0, 1, 0)"}};

/** The key as it should be, as every other type, and whole numbers at their limits. */
void AddRowsOf(const Key& key, const QString& axis)
{
    const QString field = axis.isEmpty() ? key.Name : axis + '.' + key.Name;
    const QByteArray name = field.toLatin1();
    const auto row = [&](const char* claim, const QJsonValue& value, const QString& text)
    { QTest::newRow(name + claim) << axis << key.Name << value << field << text; };

    row(" given", key.Value, key.Text);
    const QString defaultText = LoadDefaults()[field];
    const QJsonValue samples[] = {
        QJsonValue(), defaultText != "true",     7,
        "7",          QJsonArray{QJsonObject()}, QJsonObject{{key.Name, key.Value}}};
    const char* const names[] = {" is null",     " is a bool",   " is a number",
                                 " is a string", " is an array", " is an object"};
    for (std::size_t i = 0; i < std::size(samples); ++i)
    {
        if (samples[i].type() != key.Value.type())
        {
            row(names[i], samples[i], defaultText);
        }
    }
    if (key.Value.type() == QJsonValue::Double && !QString(key.Text).contains('.'))
    {
        row(" has a zero as fraction", 7.0, "7");
        row(" at the limit", 2147483647, "2147483647");
        row(" is a fraction", 800.5, "0");
        row(" is beyond 32 bits", 2147483648.0, "0");
    }
}

QJsonObject RootOf(const QString& axis, const QString& key, const QJsonValue& value)
{
    const QJsonObject object{{key, value}};
    return axis.isEmpty() ? object : QJsonObject{{axis, object}};
}
}  // namespace

/** What each key of a project file means. */
class ProjectLoadTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ConstructedValues();
    void NothingGivenIsDefault();
    void EachKey_data();
    void EachKey();
    void AxisThatIsNoObject_data();
    void AxisThatIsNoObject();
    void AllKeysTogether();
    void SourceFileKeepsDoubleSlashes();
    void OtherPathsLoseDoubleSlashes_data();
    void OtherPathsLoseDoubleSlashes();
    void PathsStandAsTheyAre();
    void LongPathsStayWhole();
    void FileNamesFollow();
    void FieldsThatAreNotStored();

private:
    /** Loads a file of that content into a project whose fields all differ from the defaults. */
    [[nodiscard]] Project Loaded(const QJsonObject& root) const;

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;
};

void ProjectLoadTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    QVERIFY(Directory->isValid());
}

void ProjectLoadTest::cleanup()
{
    QCOMPARE(Guard->TakeUnexpected(), QStringList());
}

Project ProjectLoadTest::Loaded(const QJsonObject& root) const
{
    QString path = Directory->filePath("p.mvprj");
    WriteObject(path, root);
    Project project = UnusualProject();
    if (!project.Load(path, true) || path != Directory->filePath("p.mvprj"))
    {
        qFatal("the project was not loaded");
    }
    return project;
}

void ProjectLoadTest::ConstructedValues()
{
    const Project project;
    const FieldMap fields = FieldsOf(project);
    for (auto field = fields.cbegin(); field != fields.cend(); ++field)
    {
        const QMap<QString, QString> others{{"MaxTrackingPoints", "200"},
                                            {"CropFactor", "1"},
                                            {"EnableCrop", "false"},
                                            {"EnRescale", "false"},
                                            {"ExpResH", "1920"},
                                            {"ExpResV", "1080"},
                                            {"ExpOffH", "0"},
                                            {"ExpOffV", "0"}};
        // The switches of the project and the type mean nothing until the first Load.
        const QStringList open{"StabilizeType", "UseFlowVSettings", "UseFlowRotSettings",
                               "EnGlobalIgnoreList", "ExpAngle"};
        if (others.contains(field.key()))
        {
            QCOMPARE(field.key() + '=' + field.value(), field.key() + '=' + others[field.key()]);
        }
        else if (!open.contains(field.key()))
        {
            const QStringList zero{"", "0", "false"};
            QVERIFY2(zero.contains(field.value()), qPrintable(field.key()));
        }
    }
    QCOMPARE(project.RadianSettings.AvgPathImages, 0);
    QVERIFY(!project.RadianSettings.EnableManualPath);
}

void ProjectLoadTest::NothingGivenIsDefault()
{
    QCOMPARE(Lines(FieldsOf(Loaded(QJsonObject()))), Lines(LoadDefaults()));
    QCOMPARE(Lines(FieldsOf(Loaded({{"unknown", 1}, {"cropfactor", 3}}))), Lines(LoadDefaults()));
}

void ProjectLoadTest::EachKey_data()
{
    QTest::addColumn<QString>("axis");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    for (const Key& key : RootKeys)
    {
        AddRowsOf(key, QString());
    }
    for (const QString axis : {"FlowH", "FlowV", "FlowAngle"})
    {
        for (const Key& key : AxisKeys)
        {
            AddRowsOf(key, axis);
        }
    }
}

void ProjectLoadTest::EachKey()
{
    QFETCH(QString, axis);
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    QFETCH(QString, field);
    QFETCH(QString, text);
    FieldMap expected = LoadDefaults();
    QVERIFY(expected.contains(field));
    expected[field] = text;
    QCOMPARE(Lines(FieldsOf(Loaded(RootOf(axis, key, value)))), Lines(expected));
}

void ProjectLoadTest::AxisThatIsNoObject_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::newRow("null") << QJsonValue();
    QTest::newRow("number") << QJsonValue(3);
    QTest::newRow("array of an object") << QJsonValue(QJsonArray{QJsonObject{{"Lock", true}}});
    QTest::newRow("empty object") << QJsonValue(QJsonObject());
}

void ProjectLoadTest::AxisThatIsNoObject()
{
    QFETCH(QJsonValue, value);
    QCOMPARE(Lines(FieldsOf(Loaded({{"FlowH", value}, {"FlowV", value}, {"FlowAngle", value}}))),
             Lines(LoadDefaults()));
}

void ProjectLoadTest::AllKeysTogether()
{
    QJsonObject root;
    FieldMap expected;
    for (const Key& key : RootKeys)
    {
        root[key.Name] = key.Value;
        expected[key.Name] = key.Text;
    }
    for (const QString axis : {"FlowH", "FlowV", "FlowAngle"})
    {
        QJsonObject object;
        for (const Key& key : AxisKeys)
        {
            object[key.Name] = key.Value;
            expected[axis + '.' + key.Name] = key.Text;
        }
        root[axis] = object;
    }
    QCOMPARE(expected.size(), LoadDefaults().size());  // no key is left out of the tables
    QCOMPARE(Lines(FieldsOf(Loaded(root))), Lines(expected));
}

void ProjectLoadTest::SourceFileKeepsDoubleSlashes()
{
    // Only what stood there before loses them, and the file's value, or the default, replaces it.
    QCOMPARE(Loaded({{"SourceFile", "/v//a///b.mov"}}).SourceFile, QString("/v//a///b.mov"));
    QCOMPARE(Loaded(QJsonObject()).SourceFile, QString("Source.mp4"));
    Project project;
    project.SourceFile = "/v//old.mov";
    QString missing = Directory->filePath("missing.mvprj");
    QVERIFY(!project.Load(missing, true));
    QCOMPARE(project.SourceFile, QString("/v//old.mov"));
}

void ProjectLoadTest::OtherPathsLoseDoubleSlashes_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("two") << "/a//b"
                         << "/a/b";
    QTest::newRow("several pairs") << "//a//b//"
                                   << "/a/b/";
    QTest::newRow("three are a pair and one") << "/a///b"
                                              << "/a//b";
    QTest::newRow("four are two pairs") << "/a////b"
                                        << "/a//b";
    QTest::newRow("single ones stay") << "/a/b/"
                                      << "/a/b/";
    QTest::newRow("back slashes stay") << "a\\\\b"
                                       << "a\\\\b";
}

void ProjectLoadTest::OtherPathsLoseDoubleSlashes()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    const Project project =
        Loaded({{"ExportFile", path}, {"TrackingFile", path}, {"StabilizationFile", path}});
    QCOMPARE(project.ExportFile, expected);
    QCOMPARE(project.TrackingFile, expected);
    QCOMPARE(project.StabilizationFile, expected);
}

void ProjectLoadTest::PathsStandAsTheyAre()
{
    const QString path = QString::fromUtf8("../x/./%1 ä.json");
    const Project project = Loaded({{"SourceFile", path}, {"ExportFile", path}});
    QCOMPARE(project.SourceFile, path);
    QCOMPARE(project.ExportFile, path);
}

void ProjectLoadTest::LongPathsStayWhole()
{
    const QString path(600, 'x');
    const Project project = Loaded({{"SourceFile", path}});
    QCOMPARE(project.SourceFile, path);
    QCOMPARE(QByteArray(project.FileNames.SourceFile), QByteArray(511, 'x'));
    project.Save(Directory->filePath("saved.mvprj"));
    QCOMPARE(ReadObject(Directory->filePath("saved.mvprj"))["SourceFile"], QJsonValue(path));
}

void ProjectLoadTest::FileNamesFollow()
{
    const Project project = Loaded({{"SourceFile", "/s//s"},
                                    {"ExportFile", "/e//e"},
                                    {"TrackingFile", "/t//t"},
                                    {"StabilizationFile", "/b//b"}});
    QCOMPARE(project.FileNames.SourceFile, "/s//s");
    QCOMPARE(project.FileNames.ExportFile, "/e/e");
    QCOMPARE(project.FileNames.TrackingFile, "/t/t");
    QCOMPARE(project.FileNames.TrackingMatchingFile, "/t/t.cfg");
    QCOMPARE(project.FileNames.StabilizationFile, "/b/b");
    QCOMPARE(project.FileNames.StabilizationMatchingFile, "/b/b.cfg");
    QCOMPARE(Loaded(QJsonObject()).FileNames.TrackingMatchingFile, "Tracking.dat.cfg");
}

void ProjectLoadTest::FieldsThatAreNotStored()
{
    Project project;
    project.RadianSettings.AvgPathImages = 77;
    project.RadianSettings.IgnoreSections.resize(2);
    QString path = Directory->filePath("p.mvprj");
    WriteObject(path, {{"RadianSettings", QJsonObject{{"AvgPathImages", 5}}}});
    QVERIFY(project.Load(path, true));
    QCOMPARE(project.RadianSettings.AvgPathImages, 77);
    QCOMPARE(project.RadianSettings.IgnoreSections.size(), std::size_t(2));
    QCOMPARE(project.TrackingParameters.Reserved, 0);
    QCOMPARE(project.TrackingParameters.Marker, -1);
}

QTEST_APPLESS_MAIN(ProjectLoadTest)
#include "projectload_test.moc"
