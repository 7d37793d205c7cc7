// SPDX-License-Identifier: MIT
#include "stabilizer/camerapath.h"
#include "project/project.h"
#include "stabilizer/int32ends.h"
#include "stabilizer/pathsettings.h"
#include "support/doublelists.h"

#include <QtTest>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <future>
#include <mutex>
#include <new>
#include <vector>

namespace
{
/** An enabled stage whose lists all have @p length entries. */
PathFilterStage CompleteStage(int length)
{
    PathFilterStage stage;
    stage.Enabled = true;
    stage.Path.resize(length);
    stage.Correction.resize(length);
    stage.Margin.resize(length);
    stage.Weight.resize(length);
    return stage;
}

/** True when @p work does not end while this thread holds the engine lock, and ends afterwards. */
template <typename Work>
bool WaitsForTheEngineLock(Work work)
{
    EngineLock.lock();
    std::future<void> running = std::async(std::launch::async, work);
    const bool waits =
        running.wait_for(std::chrono::milliseconds(100)) == std::future_status::timeout;
    EngineLock.unlock();
    running.wait();
    return waits;
}
}  // namespace

/** What a camera path is and offers, apart from the numbers that it calculates. */
class CameraPathTest : public QObject
{
    Q_OBJECT

private slots:
    void NewObject();
    void ProcessWideObjects();
    void ValidDataNeedsFiveFrames();
    void ValidDataNeedsCompleteStages();
    void ShakinessAtHoldsTheFrame();
    void ClearKeepsTheStages();
    void ListsAreCopied();
    void EngineLockIsRecursive();
    void EngineLockIsWaitedFor();
    void EngineLockIsReleasedWithoutMemory();
};

void CameraPathTest::NewObject()
{
    const CameraPath path(true);
    QVERIFY(path.IsPixelAxis);
    QVERIFY(path.Settings == nullptr);
    QCOMPARE(path.FrameSize, 0.0);
    QCOMPARE(path.FramesPerSecond, -1.0);
    QVERIFY(!path.HasValidData());
    for (const PathFilterStage* stage :
         {&path.Base, &path.SuperSmooth, &path.ThirdStage, &path.Result})
    {
        QCOMPARE(stage->WindowLength, std::uint64_t{20});
        QCOMPARE(stage->Order, std::uint64_t{3});
        QVERIFY(!stage->Enabled);
    }
}

void CameraPathTest::ProcessWideObjects()
{
    QVERIFY(PathHorizontal.IsPixelAxis);
    QVERIFY(PathVertical.IsPixelAxis);
    QVERIFY(!PathRotation.IsPixelAxis);
    QVERIFY(!PathRotationDegrees.IsPixelAxis);
}

void CameraPathTest::ValidDataNeedsFiveFrames()
{
    CameraPath path(true);
    path.DetectedShakiness.resize(4);
    path.ShakinessPath.resize(4);
    QVERIFY(!path.HasValidData());
    path.DetectedShakiness.resize(5);
    QVERIFY(!path.HasValidData());
    path.ShakinessPath.resize(5);
    QVERIFY(path.HasValidData());
    path.ShakinessPath.resize(6);
    QVERIFY(!path.HasValidData());

    Project project;
    project.FlowH = Settings(3, 3);
    path.Configure(&project, &project.FlowH, 0);
    path.Generate(QVector<double>(4, 1.0), 1920.0, 25.0);
    QVERIFY(!path.HasValidData());
    path.Generate(QVector<double>(5, 1.0), 1920.0, 25.0);
    QVERIFY(path.HasValidData());
}

void CameraPathTest::ValidDataNeedsCompleteStages()
{
    CameraPath path(true);
    path.DetectedShakiness.resize(6);
    path.ShakinessPath.resize(6);
    for (PathFilterStage* stage : {&path.Base, &path.SuperSmooth, &path.ThirdStage})
    {
        *stage = CompleteStage(6);
        QVERIFY(path.HasValidData());
        for (QVector<double>* list : {&stage->Path, &stage->Correction, &stage->Margin})
        {
            list->resize(5);
            QVERIFY(!path.HasValidData());
            list->resize(6);
        }
        stage->Weight.resize(7);
        QVERIFY(!path.HasValidData());
        stage->Enabled = false;
        QVERIFY(path.HasValidData());
        *stage = CompleteStage(6);
    }
    path.Result = CompleteStage(3);
    QVERIFY(path.HasValidData());
}

void CameraPathTest::ShakinessAtHoldsTheFrame()
{
    CameraPath path(true);
    QCOMPARE(path.ShakinessAt(0), 0.0);
    QCOMPARE(path.ShakinessAt(-1), 0.0);
    QCOMPARE(path.ShakinessAt(3), 0.0);
    path.ShakinessPath = {1.5, 2.5, 3.5};
    QCOMPARE(path.ShakinessAt(0), 1.5);
    QCOMPARE(path.ShakinessAt(1), 2.5);
    QCOMPARE(path.ShakinessAt(2), 3.5);
    QCOMPARE(path.ShakinessAt(-1), 1.5);
    QCOMPARE(path.ShakinessAt(Lowest), 1.5);
    QCOMPARE(path.ShakinessAt(3), 3.5);
    QCOMPARE(path.ShakinessAt(6), 3.5);
    QCOMPARE(path.ShakinessAt(Highest), 3.5);
}

void CameraPathTest::ClearKeepsTheStages()
{
    Project project;
    project.FlowH = Settings(5, 3);
    CameraPath path(true);
    path.Configure(&project, &project.FlowH, 0);
    path.Generate(QVector<double>(8, 1.0), 1920.0, 25.0);
    QVERIFY(path.HasValidData());
    path.Clear();
    QVERIFY(!path.HasValidData());
    QVERIFY(path.DetectedShakiness.isEmpty());
    QVERIFY(path.ShakinessPath.isEmpty());
    QVERIFY(path.UsedShakiness.isEmpty());
    QVERIFY(path.ModifiedPath.isEmpty());
    QCOMPARE(path.Base.Path.size(), 8);
    QCOMPARE(path.SuperSmooth.Weight.size(), 8);
    QCOMPARE(path.Result.Correction.size(), 8);
    QVERIFY(path.Result.Enabled);
}

void CameraPathTest::ListsAreCopied()
{
    CameraPath path(true);
    std::vector<ManualPathSection> manual(2);
    path.GetManualPath(manual);
    QVERIFY(manual.empty());

    Project project;
    project.FlowV.ManualPath = {{{{4, 1.5}, {9, 2.5}}, 7}};
    project.FlowV.IgnoreSections = {{10, 20, 0.5}};
    path.Configure(&project, &project.FlowV, 0);
    path.GetManualPath(manual);
    QCOMPARE(manual.size(), std::size_t{1});
    QCOMPARE(manual.at(0).Points.back().FrameNr, 9);
    QCOMPARE(manual.at(0).Points.back().Value, 2.5);
    QCOMPARE(manual.at(0).SortKey, std::int64_t{7});

    std::vector<IgnoreSection> ignore(3);
    path.GetIgnoreSections(ignore);
    QCOMPARE(ignore.size(), std::size_t{1});
    QCOMPARE(ignore.at(0).Start, 10);
    ignore.push_back({30, 40, 1.25});
    QCOMPARE(project.FlowV.IgnoreSections.size(), std::size_t{1});
    path.SetIgnoreSections(ignore);
    QCOMPARE(project.FlowV.IgnoreSections.size(), std::size_t{2});
    QCOMPARE(project.FlowV.IgnoreSections.at(1).End, 40);
    QCOMPARE(project.FlowV.IgnoreSections.at(1).Offset, 1.25);
    QVERIFY(project.FlowH.IgnoreSections.empty());
}

void CameraPathTest::EngineLockIsRecursive()
{
    Project project;
    project.FlowH = Settings(3, 3);
    CameraPath path(true);
    path.Configure(&project, &project.FlowH, 0);
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    path.Generate(QVector<double>(8, 1.0), 1920.0, 25.0);
    QVERIFY(path.HasValidData());
}

void CameraPathTest::EngineLockIsWaitedFor()
{
    Project project;
    project.FlowH = Settings(3, 3);
    CameraPath path(true);
    path.Configure(&project, &project.FlowH, 0);
    const QVector<double> motion(8, 1.0);
    QVERIFY(WaitsForTheEngineLock([&path, &motion] { path.Generate(motion, 1920.0, 25.0); }));
    QCOMPARE(path.Result.Path.size(), 8);
    QVERIFY(WaitsForTheEngineLock([&path] { static_cast<void>(path.HasValidData()); }));
}

void CameraPathTest::EngineLockIsReleasedWithoutMemory()
{
    // Only a hand-written project file asks for a padding that no list can hold.
    Project project;
    project.FlowH = Settings(1, Highest);
    CameraPath path(true);
    path.Configure(&project, &project.FlowH, 0);
    QVERIFY_EXCEPTION_THROWN(path.Generate(QVector<double>(8, 1.0), 1920.0, 25.0), std::bad_alloc);
    const auto isFree = []
    {
        const bool locked = EngineLock.try_lock();
        if (locked)
        {
            EngineLock.unlock();
        }
        return locked;
    };
    QVERIFY(std::async(std::launch::async, isFree).get());
}

QTEST_APPLESS_MAIN(CameraPathTest)
#include "camerapath_test.moc"
