// SPDX-License-Identifier: MIT
#include "endtoend/soakhands.h"

#include "app/testwindow.h"
#include "batch/jobstate.h"
#include "graphs/graphtabhands.h"
#include "player/playerhands.h"

#include <QAction>
#include <QCheckBox>
#include <QSpinBox>
#include <QTest>

#include <iterator>

namespace
{
constexpr int BriefPlay = 100;  // milliseconds
}

int StateAfterPress(SoakButton button)
{
    switch (button)
    {
        case SoakButton::Analyse:
            return JobAnalyse;
        case SoakButton::Read:
            return JobReadAll;
        case SoakButton::Export:
            return JobExport;
        case SoakButton::GenerateAll:
            return JobGenerateAll;
        case SoakButton::Calculate:
            break;
    }
    return JobPathCalculated;
}

const char* ButtonName(SoakButton button)
{
    switch (button)
    {
        case SoakButton::Analyse:
            return "pushButtonAnalyseTrack";
        case SoakButton::Read:
            return "pushButtonReadTrack";
        case SoakButton::Export:
            return "pushButtonExportVideo";
        case SoakButton::GenerateAll:
            return "pushButtonGenerateAll";
        case SoakButton::Calculate:
            break;
    }
    return "pushButtonCalculateTrack";
}

void SoakHands::Enter(const SoakSettings& settings) const
{
    Window.ClickTab(HorizontalTab);
    GraphTab(Window, HorizontalTab).Type("spinBoxAvgFrames", settings.Strength);
    Window.ClickTab(SettingsTab);
    const bool isScaled = settings.Look == ScaledLook;
    Window.SetNumber("spinBoxMaxTrackingPoints", settings.MaxPoints);
    Window.SetChecked("checkBoxEnableZoom", settings.Look != PlainLook);
    Window.SetNumber("doubleSpinBoxZoom", isScaled ? 150.0 : 125.0);
    Window.SetNumber("spinBoxExpOffsetH", settings.Look == OutsideLook ? 4000 : isScaled ? 3 : 0);
    Window.SetChecked("checkBoxRescale", isScaled);
    Window.SetNumber("spinBoxRescaleXAxis", 200);
    Window.SetNumber("spinBoxRescaleYAxis", 120);
}

void SoakHands::Do(const SoakHand& hand) const
{
    constexpr double zooms[] = {0.25, 0.5, 0.725, 1.0};
    Window.ClickTab(PlayerTab);
    switch (hand.Act)
    {
        case SoakAct::PlayOrPause:
            PlayOrPause();
            break;
        case SoakAct::Reset:
            Reset();
            break;
        case SoakAct::DragSlider:
            DragSlider(hand.Number);
            break;
        case SoakAct::TypeFrame:
            TypeFrame(hand.Number);
            break;
        case SoakAct::ChangeZoom:
            Player.TypeZoom(zooms[hand.Number % int(std::size(zooms))]);
            break;
        case SoakAct::ChooseView:
            Player.ChooseView(hand.Number % 6);
            break;
        case SoakAct::ToggleCrop:
            Player.Click("checkBoxCrop");
            break;
        case SoakAct::VisitGraph:
            Window.ClickTab(GraphTabs[hand.Number % int(std::size(GraphTabs))]);
            break;
        case SoakAct::SaveProject:
            Window.Find<QAction>("actionsave_project")->trigger();
            break;
        case SoakAct::Watch:
            QTest::qWait(hand.Number % BriefPlay);
            break;
    }
    QCoreApplication::processEvents();
}

void SoakHands::PlayOrPause() const
{
    if (Player.Find<QWidget>("pushButtonPlayPause")->isEnabled())
    {
        Player.Click("pushButtonPlayPause");
        QTest::qWait(BriefPlay);
    }
}

void SoakHands::Reset() const
{
    if (Player.Find<QWidget>("pushButtonReset")->isEnabled())
    {
        Player.Click("pushButtonReset");
    }
}

void SoakHands::DragSlider(int number) const
{
    const int frames = Player.Find<QSpinBox>("spinBoxIdx")->maximum() + 1;
    if (frames > 1)
    {
        const int frame = number % frames;
        Player.TakeSlider();
        Player.MoveSlider(frame);
        Player.LetSliderGo(frame);
    }
}

void SoakHands::TypeFrame(int number) const
{
    const int frames = Player.Find<QSpinBox>("spinBoxIdx")->maximum() + 1;
    if (frames > 1)
    {
        Player.Type("spinBoxIdx", number % frames);
    }
}

void SoakHands::TakeUsualLook() const
{
    Window.ClickTab(PlayerTab);
    if (Player.IsPlaying())
    {
        PlayOrPause();
    }
    if (Player.Find<QCheckBox>("checkBoxCrop")->isChecked())
    {
        Player.Click("checkBoxCrop");
    }
    Player.TypeZoom(0.5);
    Player.ChooseView(0);
    Player.Type("spinBoxIdx", 1);
    Reset();
    QCoreApplication::processEvents();
}
