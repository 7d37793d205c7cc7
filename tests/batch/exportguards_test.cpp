// SPDX-License-Identifier: MIT
#include "batch/exportsetup.h"
#include "batch/filefields.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QFile>
#include <QtTest>

#include <filesystem>
#include <memory>

/** An export that would destroy the source or has no path for each frame ends before it writes. */
class ExportGuardsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void NeverWritesOverTheSource_data();
    void NeverWritesOverTheSource();
    void AnotherNameForAnotherFile();
    void ExistingExportIsReplaced();
    void CorrectionsMissing_data();
    void CorrectionsMissing();
    void MotionThatWasNeverRead();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void ExportGuardsTest::NeverWritesOverTheSource_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the path itself") << "source.avi";
    QTest::newRow("written in another way") << "../%1/./source.avi";
    QTest::newRow("symbolic link") << "symlink.mp4";
    QTest::newRow("hard link") << "hardlink.mp4";
}

void ExportGuardsTest::NeverWritesOverTheSource()
{
    QFETCH(QString, name);
    ExportSetup setup;
    const QString source = setup.Path("source.avi");
    const QByteArray bytes = ReadBytes(source);
    std::filesystem::create_symlink(qPrintable(source), qPrintable(setup.Path("symlink.mp4")));
    std::filesystem::create_hard_link(qPrintable(source), qPrintable(setup.Path("hardlink.mp4")));
    const QString folder = setup.Folder.path();
    setup.Proj.ExportFile =
        folder + "/" + name.replace("%1", folder.mid(folder.lastIndexOf('/') + 1));
    QVERIFY(QFile::exists(setup.Proj.ExportFile));
    setup.GivePaths(setup.Object);
    QCOMPARE(setup.Run(), -1);
    QCOMPARE(setup.Lines.All().constLast(), QString("3 Exporting failed!"));
    QCOMPARE(setup.Lines.OfLevel(3).size(), 1);
    QCOMPARE(setup.Object.Calls, QStringList());
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(ReadBytes(source) == bytes);
}

void ExportGuardsTest::AnotherNameForAnotherFile()
{
    ExportSetup setup;
    QVERIFY(QFile::copy(setup.Path("source.avi"), setup.Path("export.mp4")));  // equal bytes
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.ShownNumbers(), QVector<int>({0, 1, 2, 2, 2}));
}

void ExportGuardsTest::ExistingExportIsReplaced()
{
    ExportSetup setup;
    WriteBytes(setup.Path("export.mp4"), QByteArray(1 << 20, 'x'));
    QCOMPARE(setup.Run(), 0);
    QVERIFY(ReadBytes(setup.Path("export.mp4")).size() < (1 << 20));
    QCOMPARE(setup.ShownNumbers(), QVector<int>({0, 1, 2, 2, 2}));
}

void ExportGuardsTest::CorrectionsMissing_data()
{
    QTest::addColumn<int>("horizontal");
    QTest::addColumn<int>("vertical");
    QTest::addColumn<int>("rotation");
    QTest::addColumn<bool>("isEnough");
    QTest::newRow("as many as frames") << 5 << 5 << 5 << true;
    QTest::newRow("more than frames") << 9 << 9 << 9 << true;
    QTest::newRow("none at all") << 0 << 0 << 0 << false;
    QTest::newRow("one horizontal is missing") << 4 << 5 << 5 << false;
    QTest::newRow("one vertical is missing") << 5 << 4 << 5 << false;
    QTest::newRow("one of the rotation is missing") << 5 << 5 << 4 << false;
}

void ExportGuardsTest::CorrectionsMissing()
{
    QFETCH(int, horizontal);
    QFETCH(int, vertical);
    QFETCH(int, rotation);
    QFETCH(bool, isEnough);
    ExportSetup setup;
    WriteBytes(setup.Path("export.mp4"), "an earlier export");
    PathHorizontal.Result.Correction.resize(horizontal);
    PathVertical.Result.Correction.resize(vertical);
    PathRotation.Result.Correction.resize(rotation);
    QCOMPARE(setup.Run(), isEnough ? 0 : -1);
    QCOMPARE(setup.Lines.All().constLast(),
             QString(isEnough ? "1 Exporting Video finished!" : "3 Exporting failed!"));
    if (!isEnough)
    {
        QCOMPARE(setup.Object.Calls, QStringList());
        QCOMPARE(setup.Object.JobStatus, int{JobEnded});
        QCOMPARE(ReadBytes(setup.Path("export.mp4")), QByteArray("an earlier export"));
    }
}

void ExportGuardsTest::MotionThatWasNeverRead()
{
    // A stabilization file with a count outside the reader's range counts as read and brings none.
    ExportSetup setup;
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    WriteBytes(setup.Path("Stabilize.dat.cfg"), PathField(setup.Path("source.avi").toLatin1()) +
                                                    Hex("40000000 40000000 19000000 01000000"));
    WriteBytes(setup.Path("Stabilize.dat"), Int(1));
    QCOMPARE(stabilizer.ReadStabilizeFile(), 0);
    stabilizer.TrackingLoaded = true;
    QCOMPARE(stabilizer.ExportJob(setup.Settings), -1);
    QCOMPARE(setup.Lines.All().constLast(), QString("3 Exporting failed!"));
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

QTEST_MAIN(ExportGuardsTest)
#include "exportguards_test.moc"
