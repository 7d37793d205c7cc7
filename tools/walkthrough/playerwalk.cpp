// SPDX-License-Identifier: MIT
#include "playerwalk.h"

#include "player/imageviewer.h"
#include "player/playercapture.h"
#include "report.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <limits>

namespace
{
constexpr int PlayerTab = 4;
constexpr int Forever = std::numeric_limits<int>::max();  ///< milliseconds; a play always ends
constexpr int SecondUpdate = 400;  ///< milliseconds until the second update of a graph is over
constexpr int PlayFor = 3000;      ///< milliseconds
const char* const Views[] = {"all", "source", "export", "graph", "source-graph", "export-graph"};

/** Drags the handle of a slider to @p value with the left button. */
void DragTo(QSlider* slider, int value)
{
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    option.sliderPosition = slider->sliderPosition();
    option.sliderValue = slider->value();
    option.orientation = slider->orientation();
    const auto handle = [&]
    {
        return slider->style()
            ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider)
            .center();
    };
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, handle());
    option.sliderPosition = value;
    const QPoint place = handle();
    QMouseEvent move(QEvent::MouseMove, place, slider->mapToGlobal(place), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(slider, &move);
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, place);
}
}  // namespace

PlayerWalk::PlayerWalk(QWidget& window, const QDir& out, Report& report)
    : Window(window), Out(out), Story(report)
{
    EnterTab();
}

template <typename Widget>
Widget* PlayerWalk::Find(const char* name) const
{
    auto* widget = Page->findChild<Widget*>(QString::fromLatin1(name));
    if (widget == nullptr)
    {
        qFatal("the player tab has no %s", name);
    }
    return widget;
}

void PlayerWalk::EnterTab()
{
    auto* tabs = Window.findChild<QTabWidget*>(QStringLiteral("tabWidgetMain"));
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier,
                      tabs->tabBar()->tabRect(PlayerTab).center());
    Page = tabs->currentWidget();
}

void PlayerWalk::Tick(const char* checkBox)
{
    auto* box = Find<QCheckBox>(checkBox);
    const bool before = box->isChecked();
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(10, box->height() / 2));
    Story.Step(box->isChecked() != before, QStringLiteral("\"%1\" changes").arg(box->text()));
}

void PlayerWalk::SetNumber(const char* spinBox, double value)
{
    auto* box = Find<QAbstractSpinBox>(spinBox);
    box->selectAll();
    QTest::keyClicks(box, box->locale().toString(value));
    QTest::keyClick(box, Qt::Key_Return);
    Story.Step(box->property("value").toDouble() == value,
               QStringLiteral("%1 shows %2").arg(spinBox).arg(value));
}

void PlayerWalk::PressPlay()
{
    QTest::mouseClick(Find<QPushButton>("pushButtonPlayPause"), Qt::LeftButton);
}

bool PlayerWalk::IsPlaying() const
{
    return Page->findChild<PlayerCapture*>()->IsPlaying();
}

int PlayerWalk::Frame() const
{
    return Find<QSpinBox>("spinBoxIdx")->value();
}

void PlayerWalk::CheckFrame(int frame, const QString& how)
{
    Story.Step(Frame() == frame, QStringLiteral("%1 shows frame %2").arg(how).arg(Frame()));
}

void PlayerWalk::ShowFrame(int frame, double zoom)
{
    SetNumber("doubleSpinBoxZoom", zoom);
    SetNumber("spinBoxIdx", frame);
    CheckFrame(frame, QStringLiteral("a typed frame number"));
}

void PlayerWalk::Seek()
{
    QTest::mouseClick(Find<QPushButton>("pushButtonReset"), Qt::LeftButton);
    SetNumber("spinBoxIdx", 20);
    CheckFrame(20, QStringLiteral("a typed frame number"));
    auto* slider = Find<QSlider>("horizontalSlider");
    DragTo(slider, slider->maximum() / 2);
    CheckFrame(slider->value(), QStringLiteral("the slider"));
    QTest::mouseClick(Find<QPushButton>("pushButtonTime"), Qt::LeftButton);
    SetNumber("spinBoxSec", 1);
    Story.Step(
        Find<QSpinBox>("spinBoxSec")->isVisible() && !Find<QSpinBox>("spinBoxIdx")->isVisible(),
        QStringLiteral("the time takes the place of the frame number"));
    Story.Fact(QStringLiteral("one second is frame %1, the end is %2")
                   .arg(Frame())
                   .arg(Find<QLabel>("labelMax")->text()));
    QTest::qWait(SecondUpdate);
    TakePicture(QStringLiteral("time"));
    QTest::mouseClick(Find<QPushButton>("pushButtonTime"), Qt::LeftButton);
    Tick("checkBoxShowMore");
    Tick("checkBoxShowMore");
}

void PlayerWalk::ShowViews()
{
    auto* zoom = Find<QDoubleSpinBox>("doubleSpinBoxZoom");
    SetNumber("doubleSpinBoxZoom", 0.75);
    const auto* source = Find<QScrollArea>("scrollAreaPlaySrc");
    Story.Fact(QStringLiteral("zoom 0.75: a picture of %1 by %2 pixels")
                   .arg(source->widget()->width())
                   .arg(source->widget()->height()));
    auto* view = Find<QComboBox>("comboBoxView");
    for (int index = 0; index < view->count(); ++index)
    {
        QTest::keyClick(view, Qt::Key_Home);
        for (int i = 0; i < index; ++i)
        {
            QTest::keyClick(view, Qt::Key_Down);
        }
        QTest::qWait(SecondUpdate);
        Story.Step(view->currentIndex() == index, view->currentText());
        TakePicture(QString::fromLatin1(Views[index]));
    }
    QTest::keyClick(view, Qt::Key_Home);
    Tick("checkBoxCrop");
    Tick("checkBoxPath");
    Tick("checkBoxMargin");
    QTest::qWait(SecondUpdate);
    TakePicture(QStringLiteral("crop"));
    Tick("checkBoxCrop");
    Tick("checkBoxPath");
    zoom->selectAll();
    SetNumber("doubleSpinBoxZoom", 0.5);
}

void PlayerWalk::PlayAndPause()
{
    QTest::mouseClick(Find<QPushButton>("pushButtonReset"), Qt::LeftButton);
    QElapsedTimer clock;
    clock.start();
    PressPlay();
    Story.Step(IsPlaying(), QStringLiteral("it plays"));
    QTest::qWait(PlayFor);
    PressPlay();
    const double seconds = static_cast<double>(clock.elapsed()) / 1000.0;
    Story.Step(!IsPlaying(), QStringLiteral("it pauses"));
    Story.Fact(QStringLiteral("%1 frames in %2 seconds: %3 frames per second")
                   .arg(Frame())
                   .arg(seconds, 0, 'f', 2)
                   .arg(Frame() / seconds, 0, 'f', 1));
}

void PlayerWalk::PlayToTheEnd()
{
    SetNumber("spinBoxFPS", 60);
    DragTo(Find<QSlider>("horizontalSlider"), Find<QSpinBox>("spinBoxIdx")->maximum() - 10);
    PressPlay();
    const bool ended = QTest::qWaitFor([this] { return !IsPlaying(); }, Forever);
    Story.Step(ended, QStringLiteral("the clip runs to its end, frame %1 %2")
                          .arg(Frame())
                          .arg(Find<QLabel>("labelMax")->text()));
}

void PlayerWalk::StartJobDuringPlay()
{
    QTest::mouseClick(Find<QPushButton>("pushButtonReset"), Qt::LeftButton);
    PressPlay();
    Story.Step(IsPlaying(), QStringLiteral("it plays again"));
    auto* read = Window.findChild<QPushButton*>(QStringLiteral("pushButtonReadTrack"));
    QTest::mouseClick(read, Qt::LeftButton);
    Story.Step(!IsPlaying() && !Find<QPushButton>("pushButtonPlayPause")->isEnabled(),
               QStringLiteral("a job stops the play"));
    const bool ended = QTest::qWaitFor([read] { return read->isEnabled(); }, Forever);
    Story.Step(ended && Find<QPushButton>("pushButtonPlayPause")->isEnabled(),
               QStringLiteral("after the job the player is free again"));
}

void PlayerWalk::TakePicture(const QString& name)
{
    const QString file = QStringLiteral("player-%1.png").arg(name);
    Story.Step(Window.grab().save(Out.filePath(file)), QStringLiteral("screenshot %1").arg(file));
}
