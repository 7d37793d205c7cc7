// SPDX-License-Identifier: MIT
#include "project/configuration.h"
#include "project/configurationfields.h"
#include "project/project.h"
#include "project/projectfields.h"
#include "project/settingsmutator.h"
#include "support/files.h"
#include "support/fuzzrun.h"
#include "support/testhome.h"

#include <QDir>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>

namespace
{
const TestHome Home;

QList<QByteArray> SeedFiles()
{
    const QDir directory(MOLVANE_FUZZ_SEEDS);
    QList<QByteArray> files;
    for (const QString& name : directory.entryList(QDir::Files, QDir::Name))
    {
        files += ReadBytes(directory.filePath(name));
    }
    return files;
}

bool IsDefined(const bool& value)
{
    unsigned char byte = 0;
    std::memcpy(&byte, &value, 1);
    return byte <= 1;
}

/** Flags are 0 or 1, and no list is longer than its file. */
bool IsSane(const AxisFilterSettings& axis, int fileSize)
{
    const std::size_t most = static_cast<std::size_t>(fileSize);
    std::size_t points = 0;
    for (const ManualPathSection& section : axis.ManualPath)
    {
        points += section.Points.size();
    }
    return IsDefined(axis.Lock) && IsDefined(axis.UseModified) && IsDefined(axis.UseStartValue) &&
           IsDefined(axis.UseEndValue) && IsDefined(axis.EnableIgnoreSections) &&
           IsDefined(axis.EnableManualPath) && axis.IgnoreSections.size() <= most &&
           axis.ManualPath.size() <= most && points <= most;
}

bool IsSane(const Project& project, int fileSize)
{
    const ::FileNames& names = project.FileNames;
    for (const char* field :
         {names.SourceFile, names.ExportFile, names.TrackingFile, names.TrackingMatchingFile,
          names.StabilizationFile, names.StabilizationMatchingFile})
    {
        if (field[FileNameSize - 1] != '\0')
        {
            return false;
        }
    }
    return IsSane(project.FlowH, fileSize) && IsSane(project.FlowV, fileSize) &&
           IsSane(project.FlowAngle, fileSize) && IsDefined(project.UseFlowVSettings) &&
           IsDefined(project.UseFlowRotSettings) && IsDefined(project.EnGlobalIgnoreList) &&
           IsDefined(project.ExportSettings.EnableCrop) &&
           IsDefined(project.ExportSettings.EnRescale) &&
           project.GlobalIgnoreSections.size() <= static_cast<std::size_t>(fileSize) &&
           names.End == '\0';
}

/** Whether a file has what every project file has, by Qt alone. */
bool LooksLikeAProject(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
    {
        return false;
    }
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    return root["TrackingFile"].isString() && root["StabilizeType"].isDouble() &&
           root["MaxTrackingPoints"].isDouble() && root["EnableCrop"].isBool() &&
           root["CropFactor"].isDouble() && root["EnRescale"].isBool();
}
}  // namespace

/**
 * Damaged and unlikely settings files: whatever they hold, the fields have defined values that
 * depend on nothing else, and survive a file.
 */
class SettingsFuzzTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { QDir().mkpath(Home.Path("Molvane")); }
    void SeedsAreAsMeant();
    void SameNumberSameFile();
    void Projects();
    void Configurations();

private:
    void TryProject(const QByteArray& bytes, bool hasOldName);
    void TryConfiguration(const QByteArray& bytes);
    void TryProjectOf(std::uint32_t number);
    void TryConfigurationOf(std::uint32_t number);

    QTemporaryDir Directory;
    SettingsMutator Mutator{SeedFiles()};
};

void SettingsFuzzTest::initTestCase()
{
    QVERIFY(Directory.isValid());
    QVERIFY(SeedFiles().size() >= 8);
}

void SettingsFuzzTest::SeedsAreAsMeant()
{
    int projects = 0;
    for (const QByteArray& seed : SeedFiles())
    {
        QVERIFY2(QJsonDocument::fromJson(seed).isObject() || seed.startsWith('['),
                 seed.constData());
        for (const bool hasOldName : {false, true})
        {
            TryProject(seed, hasOldName);
        }
        TryConfiguration(seed);
        WriteBytes(Directory.filePath("seed"), seed);
        projects += Project::CheckFile(Directory.filePath("seed")) ? 1 : 0;
    }
    QVERIFY(projects >= 2);
}

void SettingsFuzzTest::SameNumberSameFile()
{
    const QByteArray fifth = Mutator.File(5);
    QVERIFY(Mutator.File(6) != fifth);
    QCOMPARE(Mutator.File(5), fifth);
    // Enough of them still are files that a reader goes into.
    int objects = 0;
    for (std::uint32_t number = 0; number < 200; ++number)
    {
        objects += QJsonDocument::fromJson(Mutator.File(number)).object().isEmpty() ? 0 : 1;
    }
    QVERIFY2(objects >= 60 && objects <= 180, qPrintable(QString::number(objects)));
}

void SettingsFuzzTest::TryProject(const QByteArray& bytes, bool hasOldName)
{
    const QString given = Directory.filePath(hasOldName ? "p.json" : "p.mvprj");
    const QString moved = Directory.filePath("p.mvprj");
    const QString saved = Directory.filePath("saved.mvprj");
    QFile::remove(moved);
    QFile::remove(saved);
    RenewFile(given, bytes);
    QCOMPARE(Project::CheckFile(given), LooksLikeAProject(given));

    QString file = given;
    Project first;
    QVERIFY(first.Load(file, true));
    QCOMPARE(file, moved);
    QVERIFY(IsSane(first, bytes.size()));
    QCOMPARE(ReadBytes(given), bytes);

    // What was there before does not show, errors told or not.
    for (const bool reportErrors : {false, true})
    {
        Project other = UnusualProject();
        QVERIFY(other.Load(file, reportErrors));
        QCOMPARE(Lines(FieldsOf(other)), Lines(FieldsOf(first)));
    }

    first.Save(saved);
    QVERIFY(Project::CheckFile(saved));
    Project read = UnusualProject();
    file = saved;
    QVERIFY(read.Load(file, true));
    // Three slashes lose one more at each reading.
    FieldMap expected = FieldsOf(first);
    for (const char* path : {"ExportFile", "TrackingFile", "StabilizationFile"})
    {
        expected[path].replace("//", "/");
    }
    QCOMPARE(Lines(FieldsOf(read)), Lines(expected));
}

void SettingsFuzzTest::TryConfiguration(const QByteArray& bytes)
{
    const QString file = Home.Path("Molvane/.MolvaneConfiguration.json");
    RenewFile(file, bytes);
    GlobalConfiguration first;
    first.Load();
    QVERIFY(IsDefined(first.AutoLoadLastProject));
    QVERIFY(!first.RecentList.isEmpty() && first.RecentList.size() <= 10);
    QCOMPARE(first.RecentList.constLast(), first.ProjectFile);
    QVERIFY(first.DirList.size() <= bytes.size());

    GlobalConfiguration other = UnusualConfiguration();
    other.Load();
    QCOMPARE(FieldsOf(other), FieldsOf(first));

    QFile::remove(file);
    first.Save();
    QCOMPARE(FieldsOf(first), FieldsOf(other));
    GlobalConfiguration read = UnusualConfiguration();
    read.Load();
    QCOMPARE(FieldsOf(read), FieldsOf(first));
}

void SettingsFuzzTest::TryProjectOf(std::uint32_t number)
{
    const QByteArray bytes = Mutator.File(number);
    // Qt writes a key without the byte order mark at its start, which it did not know when it
    // read it: a file that is moved over then means something else. Such files keep their name.
    TryProject(bytes, number % 2 == 0 && !bytes.contains("\xEF\xBB\xBF"));
}

void SettingsFuzzTest::TryConfigurationOf(std::uint32_t number)
{
    TryConfiguration(Mutator.File(number));
}

void SettingsFuzzTest::Projects()
{
    RunFuzz([this](std::uint32_t number) { TryProjectOf(number); });
}

void SettingsFuzzTest::Configurations()
{
    RunFuzz([this](std::uint32_t number) { TryConfigurationOf(number); });
}

QTEST_APPLESS_MAIN(SettingsFuzzTest)
#include "settingsfuzz_test.moc"
