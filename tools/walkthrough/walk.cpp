// SPDX-License-Identifier: MIT
#include "walk.h"

#include "graphwalk.h"
#include "manualpictures.h"
#include "playerwalk.h"
#include "report.h"
#include "userhands/answermodal.h"
#include "walkthrough/shakemeter.h"

#include <QAction>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <opencv2/videoio.hpp>

#include <algorithm>
#include <limits>

namespace
{
constexpr int Forever = std::numeric_limits<int>::max();  ///< milliseconds; a job always ends
constexpr int RepeatedAtEnd =
    3;  ///< motions at the end of an export between repeats of one picture
constexpr int SecondUpdate = 400;  ///< milliseconds until the second update of a graph is over

/** What a player would show of a video file. */
struct VideoFacts
{
    int Frames = 0;  ///< as reported
    double Fps = 0.0;
    cv::Size Size;
    int Codec = 0;
};

VideoFacts FactsOf(const QString& file)
{
    const cv::VideoCapture video(file.toStdString());
    return {static_cast<int>(video.get(cv::CAP_PROP_FRAME_COUNT)), video.get(cv::CAP_PROP_FPS),
            cv::Size(static_cast<int>(video.get(cv::CAP_PROP_FRAME_WIDTH)),
                     static_cast<int>(video.get(cv::CAP_PROP_FRAME_HEIGHT))),
            static_cast<int>(video.get(cv::CAP_PROP_FOURCC))};
}

int CroppedSize(int size, double cropFactor)
{
    const int cropped = static_cast<int>(size / cropFactor);
    return cropped - cropped % 2;
}
}  // namespace

Walk::Walk(const QDir& out, const QString& video, Report& report)
    : Out(out), Video(video), Story(report), Window(nullptr, QString())
{
    Window.resize(1018, 755);
    Window.show();
    Story.Step(QTest::qWaitForWindowExposed(&Window), QStringLiteral("the window is shown"));
}

template <typename Widget>
Widget* Walk::Find(const char* name)
{
    // Some names stand on several tabs; the walk means those of the first.
    const QWidget* settings =
        Window.findChild<QTabWidget*>(QStringLiteral("tabWidgetMain"))->widget(0);
    const QString objectName = QString::fromLatin1(name);
    auto* widget = settings->findChild<Widget*>(objectName);
    widget = widget != nullptr ? widget : Window.findChild<Widget*>(objectName);
    if (widget == nullptr)
    {
        qFatal("the window has no %s", name);
    }
    return widget;
}

void Walk::CheckField(const char* lineEdit, const QString& text)
{
    const QString shown = Find<QLineEdit>(lineEdit)->text();
    Story.Step(shown == text, QStringLiteral("%1 shows %2").arg(lineEdit, shown));
}

QString Walk::LastAction()
{
    return Find<QLabel>("labelLog")->text();
}

QString Walk::ProjectFile() const
{
    return Out.absoluteFilePath(QStringLiteral("project/project.mvprj"));
}

QString Walk::ExportFile() const
{
    const QString name = QFileInfo(Video).completeBaseName() + QStringLiteral(".mp4");
    return Out.absoluteFilePath(QStringLiteral("project/") + name);
}

void Walk::MakeProject()
{
    {
        const AnswerModal question(QMessageBox::No);
        // The dialog would enter a directory that is there: take the project of an earlier walk by
        // its file.
        const QString directory = Out.absoluteFilePath(QStringLiteral("project"));
        const auto dialog =
            AnswerModal::FileDialog(QFile::exists(directory) ? ProjectFile() : directory);
        Find<QAction>("actionnew_project")->trigger();
        Story.Step(question.WasAnswered() && dialog.WasAnswered() && QFile::exists(ProjectFile()),
                   QStringLiteral("a new project is made by its dialogs"));
    }
    Story.Step(Window.windowTitle() == QStringLiteral("IDLE project.mvprj @ Molvane"),
               QStringLiteral("the title says \"%1\"").arg(Window.windowTitle()));
    {
        const auto dialog = AnswerModal::FileDialog(Video);
        QTest::mouseClick(Find<QPushButton>("pushButtonSourceVideo"), Qt::LeftButton);
        Story.Step(dialog.WasAnswered(), QStringLiteral("the source is chosen by its dialog"));
    }
    CheckField("lineEditSourceVideo", Video);
    CheckField("lineEditTrackingPathFile",
               Out.absoluteFilePath(QStringLiteral("project/Tracking.dat")));
    CheckField("lineEditStabilizeFile",
               Out.absoluteFilePath(QStringLiteral("project/Stabilize.dat")));
    CheckField("lineEditExportVideo", ExportFile());
}

void Walk::SaveProject()
{
    Find<QAction>("actionsave_project")->trigger();
    Story.Step(LastAction() == QStringLiteral("Project file written!"),
               QStringLiteral("the project is saved"));
}

void Walk::OpenRecentProject()
{
    const AnswerModal question(QMessageBox::No);
    QAction* recent = nullptr;
    for (QAction* entry : Find<QMenu>("menumain")->actions())
    {
        const QList<QAction*> projects =
            entry->menu() != nullptr ? entry->menu()->actions() : QList<QAction*>();
        for (QAction* project : projects)
        {
            recent = project->text() == ProjectFile() ? project : recent;
        }
    }
    if (Story.Step(recent != nullptr, QStringLiteral("the recent menu has the project")))
    {
        recent->trigger();
        Story.Step(question.WasAnswered(),
                   QStringLiteral("the question about the old project is answered"));
        CheckField("lineEditSourceVideo", Video);
    }
}

/** Presses a job button and waits until the title says that the job has come and gone. */
bool Walk::RunJob(const char* button, const QString& titleWord)
{
    auto* push = Find<QPushButton>(button);
    const QString name = push->text();
    if (!Story.Step(push->isEnabled(), QStringLiteral("\"%1\" can be pressed").arg(name)))
    {
        return false;
    }
    QElapsedTimer clock;
    clock.start();
    QTest::mouseClick(push, Qt::LeftButton);
    Story.Step(Window.windowTitle().startsWith(titleWord),
               QStringLiteral("the title says %1").arg(titleWord));
    const bool ended = QTest::qWaitFor(
        [this] { return Window.windowTitle().startsWith(QStringLiteral("IDLE")); }, Forever);
    JobTime = clock.elapsed();
    return Story.Step(ended, QStringLiteral("\"%1\" ended with \"%2\"").arg(name, LastAction()));
}

void Walk::Analyse()
{
    RunJob("pushButtonAnalyseTrack", QStringLiteral("BUSY"));
    Story.Step(LastAction() == QStringLiteral("Stabilizing file written!"),
               QStringLiteral("the data files are written"));
    const int frames = std::max(FactsOf(Video).Frames, 1);
    Story.Fact(QStringLiteral("frames: %1").arg(frames));
    Story.Fact(
        QStringLiteral("analysis: %1 ms per frame").arg(double(JobTime) / frames, 0, 'f', 2));
}

void Walk::ReadAnalysedData()
{
    RunJob("pushButtonReadTrack", QStringLiteral("BUSY"));
    Story.Step(LastAction() == QStringLiteral("Stabilizing file read successfully!"),
               QStringLiteral("the analysed data are back"));
}

void Walk::CalculatePath()
{
    auto* button = Find<QPushButton>("pushButtonCalculateTrack");
    Story.Step(button->isEnabled(), QStringLiteral("the camera path can be calculated"));
    QTest::mouseClick(button, Qt::LeftButton);
    Story.Step(LastAction() == QStringLiteral("Generate Smoothing Path"),
               QStringLiteral("the camera path is calculated"));
}

void Walk::Export()
{
    RunJob("pushButtonExportVideo", QStringLiteral("EXPORTING"));
    Story.Step(LastAction() == QStringLiteral("Exporting Video finished!"),
               QStringLiteral("the video is exported"));
    const int frames = std::max(FactsOf(Video).Frames, 1);
    Story.Fact(QStringLiteral("export: %1 ms per frame").arg(double(JobTime) / frames, 0, 'f', 2));
}

void Walk::CheckExport()
{
    const VideoFacts source = FactsOf(Video);
    const VideoFacts result = FactsOf(ExportFile());
    const double factor = Find<QDoubleSpinBox>("doubleSpinBoxZoom")->value() / 100.0;
    const cv::Size size(CroppedSize(source.Size.width, factor),
                        CroppedSize(source.Size.height, factor));
    Story.Step(result.Frames == source.Frames,
               QStringLiteral("it has %1 frames").arg(source.Frames));
    Story.Step(std::abs(result.Fps - source.Fps) < 0.001 * source.Fps,
               QStringLiteral("it runs at %1 frames per second").arg(source.Fps));
    Story.Step(result.Size == size,
               QStringLiteral("it is %1 by %2 pixels").arg(size.width).arg(size.height));
    Story.Step(result.Codec == cv::VideoWriter::fourcc('m', 'p', '4', 'v'),
               QStringLiteral("its codec is mp4v"));
}

void Walk::TakeScreenshots()
{
    auto* tabs = Find<QTabWidget>("tabWidgetMain");
    for (int index = tabs->count() - 1; index >= 0; --index)
    {
        QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier,
                          tabs->tabBar()->tabRect(index).center());
        QTest::qWait(SecondUpdate);
        const QString file = QStringLiteral("tab-%1.png").arg(tabs->widget(index)->objectName());
        Story.Step(tabs->currentIndex() == index && Window.grab().save(Out.filePath(file)),
                   QStringLiteral("screenshot %1").arg(file));
    }
}

void Walk::WatchPlayer()
{
    PlayerWalk player(Window, Out, Story);
    player.Seek();
    player.ShowViews();
    player.PlayAndPause();
    player.PlayToTheEnd();
    player.StartJobDuringPlay();
}

void Walk::ShapePath()
{
    GraphWalk graphs(Window, Out, Story);
    graphs.TakePictures(1920, 1080, QStringLiteral("maximized"));
    graphs.Shape({1, 2, 20});
    graphs.Shape({2, 5, 12});
    graphs.Shape({3, 4, 8});
}

void Walk::IllustrateManual(const QDir& pictures)
{
    QTest::mouseClick(Find<QPushButton>("pushButtonClear"), Qt::LeftButton);
    RunJob("pushButtonReadTrack", QStringLiteral("BUSY"));
    CalculatePath();
    ManualPictures manual(Window, pictures, Story);
    manual.ShowPlayer();  // first: graphs that are calculated out of sight keep an empty scale
    manual.ShowSettings();
    manual.ShowGraphs();
    manual.ShowSections();
}

void Walk::CompareShake(double atMost)
{
    const Shake source = MeasureShake(MeasureMotion(Video), RepeatedAtEnd);
    const Shake result = MeasureShake(MeasureMotion(ExportFile()), RepeatedAtEnd);
    const auto describe = [](const Shake& shake)
    {
        return QStringLiteral("%1 pixels, %2 degrees")
            .arg(shake.Shift, 0, 'f', 3)
            .arg(shake.Degrees, 0, 'f', 4);
    };
    Story.Fact(QStringLiteral("shake of the source, RMS per frame: %1").arg(describe(source)));
    Story.Fact(QStringLiteral("shake of the result, RMS per frame: %1").arg(describe(result)));
    Story.Step(result.Shift <= atMost * source.Shift,
               QStringLiteral("at most %1 of the shake is left").arg(atMost));
}
