// SPDX-License-Identifier: MIT
#include "player/loneplayer.h"

#include "batch/jobstate.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"

#include <QTest>

LonePlayer::LonePlayer(const QString& clip)
    : Window(std::make_unique<PreviewPlayer>(nullptr, &Proj)), Hands(*Window)
{
    QString noFile;
    static_cast<void>(Proj.Load(noFile, false));  // the defaults of a new project
    SetSource(clip);
    ProgramHost.SelectStabilizer(PosRotStabilizer::Type, &Proj);
    PathHorizontal.Configure(&Proj, &Proj.FlowH, 0);
    PathVertical.Configure(&Proj, &Proj.FlowH, 0);
    PathRotation.Configure(&Proj, &Proj.RadianSettings, 0);
}

void LonePlayer::SetSource(const QString& clip)
{
    Proj.SourceFile = clip;
    Proj.SyncFileNames();
}

void LonePlayer::CalculatePaths(int frames, double fps)
{
    PathHorizontal.Generate(QVector<double>(frames, 0.5), 160.0, fps);
    PathVertical.Generate(QVector<double>(frames, 0.25), 120.0, fps);
    PathRotation.Generate(QVector<double>(frames, 0.0), 1.0, fps);
}

void LonePlayer::ShowPaths(int frames, double fps)
{
    CalculatePaths(frames, fps);
    Window->JobStateChanged(JobPathCalculated);
}

void LonePlayer::Show()
{
    Window->show();
    QVERIFY(QTest::qWaitForWindowExposed(Window.get()));
}

QStringList EndPlayer(std::unique_ptr<LonePlayer>& player, std::unique_ptr<MessageGuard>& guard)
{
    (*player)->ExpectEnd(*guard);
    player.reset();
    return EndGuard(guard);
}
