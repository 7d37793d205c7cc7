// SPDX-License-Identifier: MIT
#include "project/axisfiltersettings_json.h"
#include "project/project.h"
#include "project/projectfields.h"
#include "support/files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
/** The axis as it comes from an object of that text, over a record of other values. */
Project WithAxis(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
    {
        qFatal("no object: %s", json.constData());
    }
    Project project = UnusualProject();
    project.FlowH.ReadJson(document.object(), 12, 3);
    return project;
}

QByteArray Compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}
}  // namespace

/** Ignore sections and manual paths on their way from and to a file. */
class ProjectSectionsTest : public QObject
{
    Q_OBJECT

private slots:
    void IgnoreSections_data();
    void IgnoreSections();
    void ManualPath_data();
    void ManualPath();
    void DefaultsArePassedIn();
    void SortKeysAreNotStored();
    void GlobalSectionsAreTheirOwn();
    void WritesAllKeys();
    void WritesBesideOtherKeys();
    void WritesIgnoreSections();
    void WritesPointsInOrder();
    void EmptyListsStayEmpty();
};

void ProjectSectionsTest::IgnoreSections_data()
{
    QTest::addColumn<QByteArray>("array");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* array, const char* expected)
    { QTest::newRow(name) << QByteArray(array) << QString(expected); };
    row("empty", "[]", "");
    row("all keys", R"([{"Start": 3, "End": 9, "Offset": 0.5}])", "(3, 9, 0.5)");
    row("no key", "[{}]", "(0, 1, 0)");
    row("Start only", R"([{"Start": 3}])", "(3, 1, 0)");
    row("End only", R"([{"End": 0}])", "(0, 0, 0)");
    row("Offset only", R"([{"Offset": -4}])", "(0, 1, -4)");
    row("other types", R"([{"Start": "3", "End": true, "Offset": "1"}])", "(0, 1, 0)");
    row("fractions are 0", R"([{"Start": 3.5, "End": 8.5, "Offset": 1.5}])", "(0, 0, 1.5)");
    row("beyond 32 bits", R"([{"Start": 4294967299, "End": -4294967299}])", "(0, 0, 0)");
    row("in the order of the file", R"([{"Start": 9, "End": 2}, {"Start": 1}, {"Start": 5}])",
        "(9, 2, 0) (1, 1, 0) (5, 1, 0)");
    row("overlapping and negative", R"([{"Start": -5, "End": -9}, {"Start": -5, "End": 90}])",
        "(-5, -9, 0) (-5, 90, 0)");
    row("elements that are no objects", R"([1, null, "x", [{"Start": 4}], {"Start": 4}])",
        "(0, 1, 0) (0, 1, 0) (0, 1, 0) (0, 1, 0) (4, 1, 0)");
    row("an object is no array", R"({"Start": 3})", "");
    row("null is no array", "null", "");
    row("a number is no array", "3", "");
}

void ProjectSectionsTest::IgnoreSections()
{
    QFETCH(QByteArray, array);
    QFETCH(QString, expected);
    QTemporaryDir directory;
    QString path = directory.filePath("p.mvprj");
    const QByteArray key = "{\"IgnoreSections\": " + array + "}";
    for (const QString axis : {"FlowH", "FlowV", "FlowAngle"})
    {
        WriteBytes(path, "{\"" + axis.toLatin1() + "\": " + key + "}");
        Project project = UnusualProject();
        QVERIFY(project.Load(path, true));
        QCOMPARE(FieldsOf(project)[axis + ".IgnoreSections"], expected);
        QCOMPARE(FieldsOf(project)["IgnoreSections"], QString());
    }
    WriteBytes(path, key);
    Project project = UnusualProject();
    QVERIFY(project.Load(path, true));
    QCOMPARE(FieldsOf(project)["IgnoreSections"], expected);
    QCOMPARE(FieldsOf(project)["FlowH.IgnoreSections"], QString());
}

void ProjectSectionsTest::ManualPath_data()
{
    QTest::addColumn<QByteArray>("array");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* array, const char* expected)
    { QTest::newRow(name) << QByteArray(array) << QString(expected); };
    row("empty", "[]", "");
    row("a section without points", R"([{"Point": []}])", "[]");
    row("a section without the key", "[{}]", "[]");
    row("all keys", R"([{"Point": [{"FrameNr": 10, "Value": 2.5}]}])", "[(10, 2.5)]");
    row("no Value", R"([{"Point": [{"FrameNr": 10}]}])", "[(10, -1)]");
    row("no FrameNr", R"([{"Point": [{"Value": 0.25}]}])", "[(0, 0.25)]");
    row("neither", R"([{"Point": [{}]}])", "[(0, -1)]");
    row("other types", R"([{"Point": [{"FrameNr": "7", "Value": null}]}])", "[(0, -1)]");
    row("a fraction", R"([{"Point": [{"FrameNr": 7.5, "Value": 7.5}]}])", "[(0, 7.5)]");
    row("points in the order of the file",
        R"([{"Point": [{"FrameNr": 9}, {"FrameNr": 1}, {"FrameNr": 9, "Value": 3}]}])",
        "[(9, -1) (1, -1) (9, 3)]");
    row("sections in the order of the file",
        R"([{"Point": [{"FrameNr": 9}]}, {"Point": []}, {"Point": [{"FrameNr": 1}]}])",
        "[(9, -1)] [] [(1, -1)]");
    row("sections that are no objects", R"([1, null, [], {"Point": [{"FrameNr": 1}]}])",
        "[] [] [] [(1, -1)]");
    row("Point that is no array", R"([{"Point": {"FrameNr": 1}}, {"Point": 3}])", "[] []");
    row("points that are no objects", R"([{"Point": [5, null, {"FrameNr": 5}]}])",
        "[(0, -1) (0, -1) (5, -1)]");
    row("an object is no array", R"({"Point": [{"FrameNr": 1}]})", "");
    row("null is no array", "null", "");
}

void ProjectSectionsTest::ManualPath()
{
    QFETCH(QByteArray, array);
    QFETCH(QString, expected);
    const Project project = WithAxis("{\"ManualPath\": " + array + "}");
    QCOMPARE(FieldsOf(project)["FlowH.ManualPath"], expected);
    QCOMPARE(FieldsOf(project)["FlowH.IgnoreSections"], QString());
}

void ProjectSectionsTest::DefaultsArePassedIn()
{
    AxisFilterSettings settings;
    settings.ReadJson(QJsonObject(), 21, 4);
    QCOMPARE(settings.AvgPathImages, 21);
    QCOMPARE(settings.AvgPathOrder, 4);
    QCOMPARE(settings.IgnoreStartFramesMargin, 5);
    settings.ReadJson({{"AvgPathImages", 1}, {"AvgPathOrder", 2}}, 21, 4);
    QCOMPARE(settings.AvgPathImages, 1);
    QCOMPARE(settings.AvgPathOrder, 2);
}

void ProjectSectionsTest::SortKeysAreNotStored()
{
    AxisFilterSettings settings;
    settings.ManualPath.resize(1);
    QCOMPARE(settings.ManualPath[0].SortKey, std::int64_t(-1));
    settings.ManualPath[0].SortKey = 5;
    QJsonObject obj;
    settings.WriteJson(obj);
    QCOMPARE(obj["ManualPath"].toArray(), (QJsonArray{QJsonObject{{"Point", QJsonArray()}}}));
}

void ProjectSectionsTest::GlobalSectionsAreTheirOwn()
{
    QTemporaryDir directory;
    QString path = directory.filePath("p.mvprj");
    Project project;
    project.GlobalIgnoreSections = {{1, 2, 3.0}};
    project.FlowV.IgnoreSections = {{4, 5, 6.0}};
    project.Save(path);
    Project read;
    QVERIFY(read.Load(path, true));
    QCOMPARE(FieldsOf(read)["IgnoreSections"], QString("(1, 2, 3)"));
    QCOMPARE(FieldsOf(read)["FlowH.IgnoreSections"], QString());
    QCOMPARE(FieldsOf(read)["FlowV.IgnoreSections"], QString("(4, 5, 6)"));
    QCOMPARE(FieldsOf(read)["FlowAngle.IgnoreSections"], QString());
}

void ProjectSectionsTest::WritesAllKeys()
{
    AxisFilterSettings settings;
    settings.UseStartValue = true;
    settings.EnableManualPath = true;
    settings.AvgPathImages = 40;
    settings.AvgPathOrder = 5;
    settings.EndValue = 0.1;
    QJsonObject obj;
    settings.WriteJson(obj);
    QCOMPARE(Compact(obj),
             QByteArray(R"({"AvgPathImages":40,"AvgPathOrder":5,"EnableIgnoreSections":false,)"
                        R"("EnableManualPath":true,"EndValue":0.1,"IgnoreStartFramesMargin":0,)"
                        R"("Lock":false,"StartValue":0,"UseEndValue":false,"UseModified":false,)"
                        R"("UseStartValue":true})"));
}

void ProjectSectionsTest::WritesBesideOtherKeys()
{
    QJsonObject obj{{"other", 1}, {"Lock", "old"}};
    AxisFilterSettings().WriteJson(obj);
    QCOMPARE(obj["other"], QJsonValue(1));
    QCOMPARE(obj["Lock"], QJsonValue(false));
    QCOMPARE(obj.size(), 12);
}

void ProjectSectionsTest::WritesIgnoreSections()
{
    AxisFilterSettings settings;
    settings.IgnoreSections = {{9, -1, 0.0}, {-2147483647 - 1, 2147483647, 1e-10}};
    QJsonObject obj;
    settings.WriteJson(obj);
    QCOMPARE(Compact({{"s", obj["IgnoreSections"]}}),
             QByteArray(R"({"s":[{"End":-1,"Offset":0,"Start":9},)"
                        R"({"End":2147483647,"Offset":1e-10,"Start":-2147483648}]})"));
    QVERIFY(!obj.contains("ManualPath"));
}

void ProjectSectionsTest::WritesPointsInOrder()
{
    AxisFilterSettings settings;
    settings.ManualPath.resize(2);
    settings.ManualPath[0].Points = {{30, 1.5}, {10, -2.0}};
    QJsonObject obj;
    settings.WriteJson(obj);
    QCOMPARE(Compact({{"p", obj["ManualPath"]}}),
             QByteArray(R"({"p":[{"Point":[{"FrameNr":30,"Value":1.5},)"
                        R"({"FrameNr":10,"Value":-2}]},{"Point":[]}]})"));
    QVERIFY(!obj.contains("IgnoreSections"));
}

void ProjectSectionsTest::EmptyListsStayEmpty()
{
    QJsonObject obj;
    WriteIgnoreSections({}, obj);
    QVERIFY(obj.isEmpty());
    WriteIgnoreSections({{1, 2, 0.0}}, obj);
    QCOMPARE(ReadIgnoreSections(obj).size(), std::size_t(1));
    QVERIFY(ReadIgnoreSections(QJsonObject()).empty());
}

QTEST_APPLESS_MAIN(ProjectSectionsTest)
#include "projectsections_test.moc"
