// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <filesystem>
#include <memory>

// A request for more memory than there is must reach the code as a null pointer, as without the
// address sanitizer.
extern "C" const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}

namespace
{
const TrackingParameters Parameters;  // 200 points

/** The bytes of Parameters. */
QByteArray Payload()
{
    return Hex("c8000000 00000000 ffffffff");
}

/** A matching file of a video of 1920 by 1080 at 29 frames per second. */
QByteArray Matching(const QByteArray& sourcePath, const QByteArray& payload)
{
    return PathField(sourcePath) + Hex("80070000 38040000 1d000000") + payload;
}

QByteArray With(QByteArray bytes, int offset, char value)
{
    bytes[offset] = value;
    return bytes;
}
}  // namespace

/** The small files that tie tracking and stabilization data to a video and its settings. */
class MatchingFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void BytesOfAFile();
    void NothingStaysOfALongerFile();
    void Check_data();
    void Check();
    void TruncatedFiles_data();
    void TruncatedFiles();
    void MissingFile();
    void NoMemory();
    void LongSourcePaths_data();
    void LongSourcePaths();
    void PathsThatDifferInTheLastKeptByte();
    void CannotBeWritten_data();
    void CannotBeWritten();
    void NeverWritesOverTheSource_data();
    void NeverWritesOverTheSource();
    void FolderInPlaceOfAFile();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void MatchingFileTest::BytesOfAFile()
{
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    SetField(stabilizer.FileNames.SourceFile, "/v/a.avi");
    stabilizer.FrameWidth = 1920;
    stabilizer.FrameHeight = 1080;
    stabilizer.FrameRate = 29;
    const QString path = setup.Path("a.cfg");
    QCOMPARE(stabilizer.WriteMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 0);
    const QByteArray expected = Hex("2f762f612e617669") + Zeros(248) +
                                Hex("80070000 38040000 1d000000 c8000000 00000000 ffffffff");
    QCOMPARE(expected.size(), 280);
    QCOMPARE(ReadBytes(path).toHex(), expected.toHex());

    const qint32 typeId = 1;
    QCOMPARE(stabilizer.WriteMatchingFile(qPrintable(path), &typeId, sizeof(typeId)), 0);
    QCOMPARE(ReadBytes(path).size(), 272);
    QCOMPARE(ReadBytes(path).mid(268).toHex(), QByteArray("01000000"));
    QCOMPARE(setup.Lines.All(), QStringList());
}

void MatchingFileTest::NothingStaysOfALongerFile()
{
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    SetField(stabilizer.FileNames.SourceFile, "/v/a.avi");
    const QString path = setup.Path("a.cfg");
    WriteBytes(path, QByteArray(1000, 'x'));
    QCOMPARE(stabilizer.WriteMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 0);
    QCOMPARE(ReadBytes(path).size(), 280);
}

void MatchingFileTest::Check_data()
{
    const QByteArray good = Matching("/v/a.avi", Payload());
    const QStringList none;
    const QStringList otherPath{"3 Out of date!"};
    const QStringList otherPayload{"3 Data file out of date!"};
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("result");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<bool>("takesSize");
    QTest::newRow("the same") << good << 0 << none << true;
    QTest::newRow("bytes behind the payload do not count") << good + "more" << 0 << none << true;
    QTest::newRow("another size and rate are taken over")
        << PathField("/v/a.avi") + Hex("a0000000 78000000 00000000") + Payload() << 0 << none
        << true;
    QTest::newRow("first byte of the path") << With(good, 0, 'x') << 2 << otherPath << false;
    QTest::newRow("shorter path") << Matching("/v/a.av", Payload()) << 2 << otherPath << false;
    QTest::newRow("longer path") << Matching("/v/a.avix", Payload()) << 2 << otherPath << false;
    QTest::newRow("the same video in another folder")
        << Matching("/w/a.avi", Payload()) << 2 << otherPath << false;
    QTest::newRow("a byte behind the path's end") << With(good, 9, 'x') << 2 << otherPath << false;
    QTest::newRow("the last of the 256 bytes") << With(good, 255, 'x') << 2 << otherPath << false;
    QTest::newRow("first byte of the payload") << With(good, 268, 1) << 2 << otherPayload << true;
    QTest::newRow("byte that is never assigned") << With(good, 272, 1) << 2 << otherPayload << true;
    QTest::newRow("last byte of the payload") << With(good, 279, 0) << 2 << otherPayload << true;
    QTest::newRow("path and payload")
        << With(With(good, 0, 'x'), 279, 0) << 2 << otherPath << false;
}

void MatchingFileTest::Check()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, result);
    QFETCH(QStringList, lines);
    QFETCH(bool, takesSize);
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    SetField(stabilizer.FileNames.SourceFile, "/v/a.avi");
    stabilizer.FrameWidth = -7;
    stabilizer.FrameHeight = -8;
    stabilizer.FrameRate = -9;
    const QString path = setup.Path("a.cfg");
    WriteBytes(path, bytes);
    QCOMPARE(stabilizer.CheckMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)),
             result);
    QCOMPARE(setup.Lines.All(), lines);
    // The numbers come from the file before the payload is looked at, but only behind an equal
    // path.
    const QByteArray numbers =
        Int(stabilizer.FrameWidth) + Int(stabilizer.FrameHeight) + Int(stabilizer.FrameRate);
    QCOMPARE(numbers.toHex(),
             (takesSize ? bytes.mid(256, 12) : Int(-7) + Int(-8) + Int(-9)).toHex());
    QCOMPARE(ReadBytes(path), bytes);
}

void MatchingFileTest::TruncatedFiles_data()
{
    QTest::addColumn<int>("length");
    for (int length = 0; length < 280; ++length)
    {
        QTest::addRow("%d bytes", length) << length;
    }
}

void MatchingFileTest::TruncatedFiles()
{
    QFETCH(int, length);
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    SetField(stabilizer.FileNames.SourceFile, "/v/a.avi");
    const QString path = setup.Path("a.cfg");
    WriteBytes(path, Matching("/v/a.avi", Payload()).left(length));
    QCOMPARE(stabilizer.CheckMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 2);
    QCOMPARE(setup.Lines.All().size(), 1);
    if (length < 8)
    {
        QCOMPARE(setup.Lines.All(), QStringList({"3 Out of date!"}));  // the path itself is cut
    }
    if (length >= 256)
    {
        QCOMPARE(setup.Lines.All(), QStringList({"3 Data file out of date!"}));
    }
    if (length >= 268)
    {
        QCOMPARE(stabilizer.FrameWidth, 1920);
        QCOMPARE(stabilizer.FrameHeight, 1080);
        QCOMPARE(stabilizer.FrameRate, 29);
    }
}

void MatchingFileTest::MissingFile()
{
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    const QString path = setup.Path("missing.cfg");
    QCOMPARE(stabilizer.CheckMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Could not open matching file (.cfg)!"}));
    QVERIFY(!QFile::exists(path));
}

void MatchingFileTest::NoMemory()
{
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    SetField(stabilizer.FileNames.SourceFile, "/v/a.avi");
    const QString path = setup.Path("a.cfg");
    WriteBytes(path, Matching("/v/a.avi", Payload()));
    const std::size_t tooMuch = std::size_t{1} << 62;
    QCOMPARE(stabilizer.CheckMatchingFile(qPrintable(path), &Parameters, tooMuch), -1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Out of memory!"}));
}

void MatchingFileTest::LongSourcePaths_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("255 characters just fit") << 255;
    QTest::newRow("256 characters are cut") << 256;
    QTest::newRow("300 characters are cut") << 300;
    QTest::newRow("511 characters are cut") << 511;
}

void MatchingFileTest::LongSourcePaths()
{
    QFETCH(int, length);
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    QByteArray source = "/";
    while (source.size() < length)
    {
        source.append(static_cast<char>('a' + source.size() % 26));
    }
    SetField(stabilizer.FileNames.SourceFile, QString::fromLatin1(source));
    const QString path = setup.Path("a.cfg");
    QCOMPARE(stabilizer.WriteMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 0);
    const QByteArray bytes = ReadBytes(path);
    QCOMPARE(bytes.size(), 280);
    QCOMPARE(bytes.left(256), PathField(source.left(255)));
    QCOMPARE(bytes.mid(268), Payload());
    QCOMPARE(stabilizer.CheckMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 0);
    QCOMPARE(setup.Lines.All(), QStringList());
}

void MatchingFileTest::PathsThatDifferInTheLastKeptByte()
{
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    SetField(stabilizer.FileNames.SourceFile, QString(300, QLatin1Char('a')));
    const QString path = setup.Path("a.cfg");
    QCOMPARE(stabilizer.WriteMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 0);
    stabilizer.FileNames.SourceFile[255] = 'b';  // cut away on both sides
    QCOMPARE(stabilizer.CheckMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 0);
    stabilizer.FileNames.SourceFile[254] = 'b';
    QCOMPARE(stabilizer.CheckMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 2);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Out of date!"}));
}

void MatchingFileTest::CannotBeWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("folder that does not exist") << "nowhere/a.cfg";
    QTest::newRow("path is a folder") << "folder";
    QTest::newRow("empty path") << QString();
}

void MatchingFileTest::CannotBeWritten()
{
    QFETCH(QString, name);
    BatchSetup setup;
    QVERIFY(QDir(setup.Folder.path()).mkdir("folder"));
    PosRotStabilizer stabilizer;
    const QString path = name.isEmpty() ? name : setup.Folder.filePath(name);
    QCOMPARE(stabilizer.WriteMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Could not write matching file (.cfg)!"}));
}

void MatchingFileTest::NeverWritesOverTheSource_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the path itself") << "source.avi";
    QTest::newRow("written in another way") << "./source.avi";
    QTest::newRow("symbolic link") << "symlink.cfg";
    QTest::newRow("hard link") << "hardlink.cfg";
}

void MatchingFileTest::NeverWritesOverTheSource()
{
    QFETCH(QString, name);
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    const QString source = setup.Path("source.avi");
    WriteBytes(source, "the video");
    std::filesystem::create_symlink(qPrintable(source), qPrintable(setup.Path("symlink.cfg")));
    std::filesystem::create_hard_link(qPrintable(source), qPrintable(setup.Path("hardlink.cfg")));
    const QString path = setup.Folder.path() + "/" + name;
    QCOMPARE(stabilizer.WriteMatchingFile(qPrintable(path), &Parameters, sizeof(Parameters)), 1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Could not write matching file (.cfg)!"}));
    QCOMPARE(ReadBytes(source), QByteArray("the video"));
}

void MatchingFileTest::FolderInPlaceOfAFile()
{
    BatchSetup setup;
    PosRotStabilizer stabilizer;
    SetField(stabilizer.FileNames.SourceFile, "/v/a.avi");
    const QByteArray path = setup.Folder.path().toLocal8Bit();
    // The system may refuse to open a folder, or to read from it.
    const int result =
        stabilizer.CheckMatchingFile(path.constData(), &Parameters, sizeof(Parameters));
    const QStringList expected{result == 1 ? "3 Could not open matching file (.cfg)!"
                                           : "3 Out of date!"};
    QVERIFY2(result == 1 || result == 2, qPrintable(QString::number(result)));
    QCOMPARE(setup.Lines.All(), expected);
}

QTEST_MAIN(MatchingFileTest)
#include "matchingfile_test.moc"
