// SPDX-License-Identifier: MIT
#include "project/project.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/hostilesettings.h"
#include "support/fuzzrun.h"
#include "support/memorylimit.h"
#include "support/samebits.h"

#include <QtTest>

#include <algorithm>
#include <future>
#include <new>

namespace
{
bool HasStage(const PathFilterStage& actual, const PathFilterStage& expected)
{
    return HasBitsOf(actual.Path, expected.Path) &&
           HasBitsOf(actual.Correction, expected.Correction) &&
           HasBitsOf(actual.Margin, expected.Margin) && HasBitsOf(actual.Weight, expected.Weight);
}

/** Compares all that belongs to the enabled stages. */
bool HasPath(const CameraPath& actual, const CameraPath& expected)
{
    return HasBitsOf(actual.DetectedShakiness, expected.DetectedShakiness) &&
           HasBitsOf(actual.UsedShakiness, expected.UsedShakiness) &&
           HasBitsOf(actual.ShakinessPath, expected.ShakinessPath) &&
           HasBitsOf(actual.ModifiedPath, expected.ModifiedPath) &&
           HasStage(actual.Base, expected.Base) &&
           actual.SuperSmooth.Enabled == expected.SuperSmooth.Enabled &&
           (!actual.SuperSmooth.Enabled || HasStage(actual.SuperSmooth, expected.SuperSmooth)) &&
           HasStage(actual.Result, expected.Result);
}

bool HasLength(const PathFilterStage& stage, int frames)
{
    return stage.Path.size() == frames && stage.Correction.size() == frames &&
           stage.Margin.size() == frames && stage.Weight.size() == frames;
}

/** Shares of a blend, from 0 to a whole ramp. */
bool HasShares(const PathFilterStage& stage, std::int32_t blendFrames)
{
    return std::all_of(stage.Weight.cbegin(), stage.Weight.cend(),
                       [=](std::int32_t share) { return share >= 0 && share <= blendFrames; });
}

/** Each frame keeps its motion or loses it; the path is their sum. */
bool IsUsedMotion(const CameraPath& path)
{
    double sum = 0.0;
    QVector<double> sums;
    bool isOwn = true;
    for (int f = 0; f < path.UsedShakiness.size(); ++f)
    {
        const double used = path.UsedShakiness.at(f);
        sum += used;
        sums.append(sum);
        isOwn = isOwn && (used == 0.0 || IsSameValue(used, path.DetectedShakiness.at(f)));
    }
    return isOwn && HasBitsOf(sums, path.ShakinessPath);
}

bool IsLockFree()
{
    const auto tryLock = []
    {
        const bool locked = EngineLock.try_lock();
        if (locked)
        {
            EngineLock.unlock();
        }
        return locked;
    };
    return std::async(std::launch::async, tryLock).get();
}

/** The input of one calculation. */
struct PathInput
{
    explicit PathInput(std::uint32_t number)
    {
        HostileSettings random;
        random.Begin(number);
        Motion = random.Motion();
        random.Fill(Proj, Proj.FlowH, Motion.size());
        Offset = random.Whole(Motion.size());
        FrameSize = random.OneIn(4) ? random.Number() : 1920.0;
        Fps = random.Whole(Motion.size());
    }
    void Run(CameraPath& path)
    {
        path.Configure(&Proj, &Proj.FlowH, Offset);
        path.Generate(Motion, FrameSize, Fps);
    }
    [[nodiscard]] bool HasKnownType() const
    {
        return Proj.FlowH.AvgPathOrder >= 1 && Proj.FlowH.AvgPathOrder <= 5;
    }
    /** No list can hold its padding. */
    [[nodiscard]] bool IsTooStrong() const { return Proj.FlowH.AvgPathImages >= 1 << 30; }

    QVector<double> Motion;
    Project Proj;
    std::int32_t Offset = 0;
    double FrameSize = 0.0;
    double Fps = 0.0;
};
}  // namespace

/**
 * The camera path from settings and motion that only damaged or hand-written files hold: all lists
 * have one entry for each frame, and nothing of an earlier calculation shows in them.
 */
class PathFuzzTest : public QObject
{
    Q_OBJECT

private slots:
    void SameNumberSameInput();
    void TooLittleMemory_data();
    void TooLittleMemory();
    void Paths();

private:
    void TryPath(std::uint32_t number, CameraPath& used);
};

void PathFuzzTest::SameNumberSameInput()
{
    CameraPath first(true);
    CameraPath second(true);
    int tooStrong = 0;
    int adaptive = 0;
    int frames = 0;
    for (std::uint32_t number = 0; number < 400; ++number)
    {
        PathInput input(number);
        tooStrong += input.HasKnownType() && input.IsTooStrong() ? 1 : 0;
        adaptive += input.Proj.FlowH.AvgPathOrder == 5 ? 1 : 0;
        frames += input.Motion.size();
    }
    // By chance 1 of 32 times 5 of 6, 1 of 6, and 30 frames to 79 each.
    QVERIFY2(tooStrong > 4 && tooStrong < 20, qPrintable(QString::number(tooStrong)));
    QVERIFY2(adaptive > 45 && adaptive < 90, qPrintable(QString::number(adaptive)));
    QVERIFY2(frames > 400 * 40, qPrintable(QString::number(frames)));

    PathInput(8).Run(first);
    PathInput(8).Run(second);
    QVERIFY(HasPath(first, second));
    QVERIFY(!HasBitsOf(PathInput(9).Motion, PathInput(8).Motion));
}

void PathFuzzTest::TooLittleMemory_data()
{
    QTest::addColumn<int>("strength");
    QTest::newRow("gigabytes") << 20000000;
    QTest::newRow("as much as a machine has") << 100000000;
    QTest::newRow("the most that a list can hold") << 1073741823;
}

void PathFuzzTest::TooLittleMemory()
{
    if (!MemoryLimit::IsPossible())
    {
        QSKIP("A sanitizer ends the process without memory");
    }
    QFETCH(int, strength);
    Project project;
    project.FlowH.AvgPathOrder = 1;
    project.FlowH.AvgPathImages = strength;
    CameraPath path(true);
    path.Configure(&project, &project.FlowH, 0);
    const QVector<double> motion(1, 1.0);
    {
        const MemoryLimit limit(200U << 20U);
        QVERIFY_EXCEPTION_THROWN(path.Generate(motion, 1920.0, 25.0), std::bad_alloc);
    }
    QVERIFY(IsLockFree());
}

void PathFuzzTest::TryPath(std::uint32_t number, CameraPath& used)
{
    PathInput input(number);
    CameraPath path(true);
    if (input.HasKnownType() && input.IsTooStrong())
    {
        QVERIFY_EXCEPTION_THROWN(input.Run(path), std::bad_alloc);
        QVERIFY(IsLockFree());
        return;
    }
    input.Run(path);
    const int frames = input.Motion.size();
    QVERIFY(HasBitsOf(path.DetectedShakiness, input.Motion));
    for (const QVector<double>* list :
         {&path.UsedShakiness, &path.ShakinessPath, &path.ModifiedPath})
    {
        QCOMPARE(list->size(), frames);
    }
    QVERIFY(IsUsedMotion(path));
    QVERIFY(path.Result.Enabled && HasLength(path.Result, frames));
    for (const PathFilterStage* stage : {&path.Base, &path.SuperSmooth})
    {
        QVERIFY(!stage->Enabled || HasLength(*stage, frames));
        QVERIFY(!stage->Enabled || path.BlendFrames < 0 || HasShares(*stage, path.BlendFrames));
    }
    QVERIFY(path.SuperSmooth.Delay == path.Base.Delay && path.ThirdStage.Delay == path.Base.Delay);
    QCOMPARE(path.Base.Enabled, input.HasKnownType());
    QCOMPARE(path.HasValidData(), frames >= 5);

    // A type that does not exist keeps the stages of the last input.
    input.Run(used);
    QVERIFY(HasLength(used.Result, frames));
    QVERIFY(!input.HasKnownType() || HasPath(used, path));
}

void PathFuzzTest::Paths()
{
    CameraPath used(true);
    RunFuzz([&](std::uint32_t number) { TryPath(number, used); });
}

QTEST_APPLESS_MAIN(PathFuzzTest)
#include "pathfuzz_test.moc"
