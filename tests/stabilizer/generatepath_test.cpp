// SPDX-License-Identifier: MIT
#include "batch/resultcodes.h"
#include "project/project.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/doublelists.h"

#include <QtTest>

/** The measured motion handed to the four camera paths of the process. */
class GeneratePathTest : public QObject
{
    Q_OBJECT

private slots:
    void WithoutMotion();
    void EachAxisGetsItsMotion();
};

void GeneratePathTest::WithoutMotion()
{
    PosRotStabilizer stabilizer;
    QCOMPARE(stabilizer.TypeId(), 1);
    PathHorizontal.DetectedShakiness = {1.0, 2.0};
    QCOMPARE(stabilizer.GeneratePath(), ResultNoData);
    QVERIFY(!stabilizer.PathGenerated);
    QCOMPARE(Difference(PathHorizontal.DetectedShakiness, {1.0, 2.0}), QString());
}

void GeneratePathTest::EachAxisGetsItsMotion()
{
    Project project;
    project.FlowH.AvgPathOrder = 1;
    project.FlowH.AvgPathImages = 3;
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        path->Configure(&project, &project.FlowH, 0);
    }
    PosRotStabilizer stabilizer;
    stabilizer.FrameWidth = 1280;
    stabilizer.FrameHeight = 720;
    stabilizer.FrameRate = 29;
    stabilizer.MotionX = {1, 2, 3, 4, 5, 6};
    stabilizer.MotionY = {2, 3, 4, 5, 6, 7};
    stabilizer.MotionAngle = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6};
    stabilizer.MotionDegrees = {3, 4, 5, 6, 7, 8};
    stabilizer.StabilizeLoaded = true;
    QCOMPARE(stabilizer.GeneratePath(), ResultOk);
    QVERIFY(stabilizer.PathGenerated);
    QCOMPARE(Difference(PathHorizontal.DetectedShakiness, stabilizer.MotionX), QString());
    QCOMPARE(Difference(PathVertical.DetectedShakiness, stabilizer.MotionY), QString());
    QCOMPARE(Difference(PathRotation.DetectedShakiness, stabilizer.MotionAngle), QString());
    QCOMPARE(Difference(PathRotationDegrees.DetectedShakiness, stabilizer.MotionDegrees),
             QString());
    QCOMPARE(PathHorizontal.FrameSize, 1280.0);
    QCOMPARE(PathVertical.FrameSize, 720.0);
    QCOMPARE(PathRotation.FrameSize, 0.5);
    QCOMPARE(PathRotationDegrees.FrameSize, 90.0);
    for (const CameraPath* path :
         {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        QCOMPARE(path->FramesPerSecond, 29.0);
        QVERIFY(path->HasValidData());
        QCOMPARE(path->Result.Correction.size(), 6);
    }
}

QTEST_APPLESS_MAIN(GeneratePathTest)
#include "generatepath_test.moc"
