// SPDX-License-Identifier: MIT
#include "project/project.h"

#include <QtTest>

#include <cstring>

namespace
{
/** A field as it is, all 512 bytes. */
QByteArray Field(const char (&field)[FileNameSize])
{
    return QByteArray(field, FileNameSize);
}

/** @p text and zeros behind it, 512 bytes. */
QByteArray Padded(const QByteArray& text)
{
    return text + QByteArray(512 - text.size(), '\0');
}
}  // namespace

/** How the project's paths become the bytes that the worker gets. */
class FileNamesTest : public QObject
{
    Q_OBJECT

private slots:
    void StartValues();
    void OneRulePerCharacter_data();
    void OneRulePerCharacter();
    void MatchingFiles();
    void MatchingFileOfALongPath();
    void MatchingFileOfACutPath();
    void PercentSignsStay();
    void NothingStaysOfALongerPath();
    void EachPathHasItsField();
};

void FileNamesTest::StartValues()
{
    const Project project;
    QVERIFY(project.SourceFile.isEmpty() && project.ExportFile.isEmpty());
    QVERIFY(project.TrackingFile.isEmpty() && project.StabilizationFile.isEmpty());
    QCOMPARE(project.TrackingParameters.MaxTrackingPoints, 200);
    QCOMPARE(project.ExportSettings.CropFactor, 1.0);
    QCOMPARE(Field(project.FileNames.SourceFile), Padded(""));
    QCOMPARE(Field(project.FileNames.TrackingMatchingFile), Padded(""));
}

void FileNamesTest::OneRulePerCharacter_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("bytes");
    const QString folder = QStringLiteral("/a/");
    QTest::newRow("empty") << QString() << QByteArray();
    QTest::newRow("ASCII") << QStringLiteral("/home/a b/v.mp4") << QByteArray("/home/a b/v.mp4");
    QTest::newRow("Latin-1 is one byte each")
        << folder + QChar(0xE4) + QChar(0xFF) << QByteArray("/a/\xE4\xFF");
    QTest::newRow("U+0080") << folder + QChar(0x80) << QByteArray("/a/\x80");
    QTest::newRow("U+0100 cuts") << folder + QChar(0x100) + "rest" << QByteArray("/a/");
    QTest::newRow("U+0141 cuts, and is no A")
        << folder + QChar(0x141) + "rest" << QByteArray("/a/");
    QTest::newRow("U+4E2D cuts") << folder + QChar(0x4E2D) + "rest" << QByteArray("/a/");
    QTest::newRow("a pair of surrogates cuts")
        << folder + QString::fromUcs4(U"\U0001F3A5", 1) + "rest" << QByteArray("/a/");
    QTest::newRow("a zero character cuts") << folder + QChar(0) + "rest" << QByteArray("/a/");
    QTest::newRow("510 characters") << QString(510, 'x') << QByteArray(510, 'x');
    QTest::newRow("511 characters are the most") << QString(511, 'x') << QByteArray(511, 'x');
    QTest::newRow("512 characters") << QString(512, 'x') << QByteArray(511, 'x');
    QTest::newRow("2000 characters") << QString(2000, 'x') << QByteArray(511, 'x');
}

void FileNamesTest::OneRulePerCharacter()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, bytes);
    Project project;
    project.SourceFile = path;
    project.SyncFileNames();
    const QByteArray field = Field(project.FileNames.SourceFile);
    // As a string: what stands behind its end is nobody's business.
    QCOMPARE(QByteArray(field.constData()), bytes);
    QCOMPARE(field.at(511), '\0');
    QCOMPARE(project.FileNames.End, '\0');
    QCOMPARE(project.SourceFile, path);
}

void FileNamesTest::MatchingFiles()
{
    Project project;
    project.TrackingFile = QStringLiteral("/d/Tracking.dat");
    project.StabilizationFile = QStringLiteral("/d/Stabilize.dat");
    project.SyncFileNames();
    QCOMPARE(project.FileNames.TrackingFile, "/d/Tracking.dat");
    QCOMPARE(project.FileNames.TrackingMatchingFile, "/d/Tracking.dat.cfg");
    QCOMPARE(project.FileNames.StabilizationFile, "/d/Stabilize.dat");
    QCOMPARE(project.FileNames.StabilizationMatchingFile, "/d/Stabilize.dat.cfg");
}

void FileNamesTest::MatchingFileOfALongPath()
{
    Project project;
    project.TrackingFile = QString(509, 'x');
    project.SyncFileNames();
    QCOMPARE(QByteArray(project.FileNames.TrackingFile), QByteArray(509, 'x'));
    QCOMPARE(QByteArray(project.FileNames.TrackingMatchingFile), QByteArray(509, 'x') + ".c");
}

void FileNamesTest::MatchingFileOfACutPath()
{
    Project project;
    project.TrackingFile = QStringLiteral("/d/") + QChar(0x3B1) + QStringLiteral("/Tracking.dat");
    project.SyncFileNames();
    // Each string is cut on its own, the matching file's before its ".cfg".
    QCOMPARE(project.FileNames.TrackingFile, "/d/");
    QCOMPARE(project.FileNames.TrackingMatchingFile, "/d/");
}

void FileNamesTest::PercentSignsStay()
{
    Project project;
    project.StabilizationFile = QStringLiteral("/d/%1 %2.dat");
    project.SyncFileNames();
    QCOMPARE(project.FileNames.StabilizationMatchingFile, "/d/%1 %2.dat.cfg");
}

void FileNamesTest::NothingStaysOfALongerPath()
{
    Project project;
    project.SourceFile = QString(511, 'x');
    project.TrackingFile = QString(500, 'y');
    project.SyncFileNames();
    project.SourceFile = QStringLiteral("/a.avi");
    project.TrackingFile = QStringLiteral("/t");
    project.SyncFileNames();
    QCOMPARE(Field(project.FileNames.SourceFile), Padded("/a.avi"));
    QCOMPARE(Field(project.FileNames.TrackingFile), Padded("/t"));
    QCOMPARE(Field(project.FileNames.TrackingMatchingFile), Padded("/t.cfg"));
}

void FileNamesTest::EachPathHasItsField()
{
    Project project;
    project.SourceFile = QStringLiteral("source");
    project.ExportFile = QStringLiteral("export");
    project.TrackingFile = QStringLiteral("tracking");
    project.StabilizationFile = QStringLiteral("stabilization");
    project.SyncFileNames();
    char whole[sizeof(FileNames)];
    std::memcpy(whole, &project.FileNames, sizeof(whole));
    QCOMPARE(QByteArray(whole, sizeof(whole)),
             Padded("source") + Padded("export") + Padded("tracking") + Padded("tracking.cfg") +
                 Padded("stabilization") + Padded("stabilization.cfg") + '\0');
}

QTEST_APPLESS_MAIN(FileNamesTest)
#include "filenames_test.moc"
