// SPDX-License-Identifier: MIT
#include "dialogs/homefiles.h"
#include "dialogs/projectwindow.h"
#include "endtoend/shownsettings.h"
#include "graphs/graphtabhands.h"
#include "graphs/plothands.h"
#include "player/playerhands.h"
#include "stabilizer/camerapath.h"
#include "support/files.h"
#include "support/testvideo.h"
#include "userhands/answermodal.h"

#include <qwt_interval.h>

#include <QDir>
#include <QFile>
#include <QScrollArea>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

namespace
{
const TestHome OuterHome;

constexpr TestVideo::Format ClipFormat{320, 180, 60, 25.0};
constexpr int JobTime = 120000;    // milliseconds, far more than any job here takes
constexpr int SecondUpdate = 400;  // milliseconds until the second update of a graph is over

/** What the user chooses on a graph tab. */
struct AxisChoice
{
    int Tab = 0;
    const char* Area = nullptr;  ///< scroll area of the graph
    int Type = 0;                ///< of the filter, 1 to 5
    int Frames = 0;              ///< strength of the filter
    int IgnoreMode = 0;          ///< what the drag draws, an item of the box
    const char* Tree = nullptr;  ///< where it shows
    int From = 0;                ///< first frame of the drag
    int To = 0;                  ///< last frame of the drag
};

constexpr AxisChoice Choices[] = {
    {HorizontalTab, "scrollAreaXAxis", 2, 9, PlotHands::LocalIgnore, LocalTree, 30, 34},
    {VerticalTab, "scrollAreaYAxis", 5, 6, PlotHands::LocalIgnore, LocalTree, 40, 43},
    {RotationTab, "scrollAreaAngle", 3, 7, PlotHands::GlobalIgnore, GlobalTree, 50, 52}};
}  // namespace

/**
 * One project from its making to its third start, by mouse and keys: what was shaped, stored and
 * exported once comes back as it was.
 */
class WholeProjectTest : public ProjectWindowTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void ComesBackAsItWas();

private:
    void MakeProject();
    void TypeSettings();
    void Analyse();
    void Shape();
    void ShapeAxis(const AxisChoice& choice);
    void Play();
    void ExportFirst();
    void SaveFirst();
    void Leave();
    void ComesBackByItself();
    void ComesBackByArgument();

    void Start(const QString& argument);
    void TypeNumber(const char* name, const QString& number);
    void RunJob(const char* button, const QString& word);
    void ReadAndCalculate();
    void Calculate();
    void ExportAgain();
    void SaveAgain();
    [[nodiscard]] QString InProject(const char* name) const
    {
        return InHome(QStringLiteral("projects/Trip/") + QString::fromLatin1(name));
    }
    [[nodiscard]] QString ProjectFile() const { return InProject("Trip.mvprj"); }
    [[nodiscard]] static QVector<QVector<double>> Corrections();

    std::unique_ptr<PlayerHands> Player;  ///< of the window
    QTemporaryDir Clips;
    QString Clip;                               ///< path
    QStringList Settings;                       ///< as the first window showed them last
    QVector<QVector<double>> FirstCorrections;  ///< of the shaped path, per axis
    QByteArray FirstExport;                     ///< content
    QByteArray FirstProject;                    ///< content
};

void WholeProjectTest::initTestCase()
{
    Clip = Clips.filePath(QStringLiteral("street walk.avi"));
    QVERIFY(!TestVideo::WriteStreetClip(Clip, ClipFormat).empty());
}

void WholeProjectTest::ComesBackAsItWas()
{
    const auto steps = {&WholeProjectTest::MakeProject,
                        &WholeProjectTest::TypeSettings,
                        &WholeProjectTest::Analyse,
                        &WholeProjectTest::Shape,
                        &WholeProjectTest::Play,
                        &WholeProjectTest::ExportFirst,
                        &WholeProjectTest::SaveFirst,
                        &WholeProjectTest::Leave,
                        &WholeProjectTest::ComesBackByItself,
                        &WholeProjectTest::Leave,
                        &WholeProjectTest::ComesBackByArgument,
                        &WholeProjectTest::Leave};
    for (const auto step : steps)
    {
        (this->*step)();
        if (QTest::currentTestFailed())
        {
            return;
        }
    }
}

/** A start of the program in the home as it is. */
void WholeProjectTest::Start(const QString& argument)
{
    if (Window == nullptr)
    {
        Window = std::make_unique<TestWindow>(argument);
    }
    Player = std::make_unique<PlayerHands>(*Window->Find<PreviewPlayer>("PreviewPlayer"));
}

void WholeProjectTest::MakeProject()
{
    Start(QString());
    QVERIFY(QDir().mkpath(InHome(QStringLiteral("projects"))));
    NewProject(InHome(QStringLiteral("projects/Trip")));
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
    QVERIFY(NewLines().contains(QStringLiteral("Run      Project file written!")));
    QCOMPARE(RecentProjects(), QStringList({StartProjectPath(), ProjectFile()}));
    const auto dialog = AnswerModal::FileDialog(Clip);
    Window->Click("pushButtonSourceVideo");
    QVERIFY(dialog.WasAnswered());
    const QString expected[] = {Clip, InProject("Tracking.dat"), InProject("Stabilize.dat"),
                                InProject("street walk.mp4")};
    for (int i = 0; i < 4; ++i)
    {
        QCOMPARE(Window->Text(PathFields[i]), expected[i]);
    }
}

void WholeProjectTest::TypeSettings()
{
    const QVector<QPair<const char*, QString>> numbers = {{"spinBoxMaxTrackingPoints", "300"},
                                                          {"doubleSpinBoxZoom", "125"},
                                                          {"spinBoxExpOffsetH", "4"},
                                                          {"spinBoxExpOffsetV", "-6"}};
    for (const auto& number : numbers)
    {
        TypeNumber(number.first, number.second);
    }
}

void WholeProjectTest::TypeNumber(const char* name, const QString& number)
{
    auto* field = Window->Find<QAbstractSpinBox>(name);
    field->selectAll();
    QTest::keyClicks(field, number);
    QTest::keyClick(field, Qt::Key_Tab);
    QCOMPARE(Window->Number(name), number.toDouble());
}

void WholeProjectTest::RunJob(const char* button, const QString& word)
{
    Window->ClickTab(SettingsTab);
    Window->Click(button);
    QCOMPARE((*Window)->windowTitle(), word + QStringLiteral(" Trip.mvprj @ Molvane"));
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
}

void WholeProjectTest::Analyse()
{
    static_cast<void>(NewLines());
    RunJob("pushButtonAnalyseTrack", QStringLiteral("BUSY"));
    const QStringList expected = {"Run      Input: Frames= 60 h=320 v=180 fps=25",
                                  "Run      Tracking file written!",
                                  "Run      Stabilizing file written!"};
    QCOMPARE(NewLines(), expected);
    Calculate();
}

void WholeProjectTest::Calculate()
{
    Window->Click("pushButtonCalculateTrack");
    QCOMPARE(NewLines(), QStringList("Run      Generate Smoothing Path"));
    QVERIFY(PathHorizontal.HasValidData());
}

void WholeProjectTest::Shape()
{
    for (const AxisChoice& choice : Choices)
    {
        ShapeAxis(choice);
        if (QTest::currentTestFailed())
        {
            return;
        }
    }
    FirstCorrections = Corrections();
}

/** Each step with a calculation of its own, so that it is seen to shape the path. */
void WholeProjectTest::ShapeAxis(const AxisChoice& choice)
{
    Window->ClickTab(choice.Tab);
    const GraphTab tab(*Window, choice.Tab);
    const PlotHands plot(
        *qobject_cast<GraphWindow*>(Window->Find<QScrollArea>(choice.Area)->widget()));
    const CameraPath& path = PathOfTab(choice.Tab);
    QVector<double> before = path.Result.Correction;
    const auto calculate = [&]
    {
        tab.Click("pushButtonCalc");
        QTest::qWait(SecondUpdate);  // the axes may move once more
        QCOMPARE(NewLines(), QStringList("Run      Generate Smoothing Path"));
        QVERIFY(path.Result.Correction != before);
        before = path.Result.Correction;
    };
    tab.Type("spinBoxAvgOrder", choice.Type);
    tab.Type("spinBoxAvgFrames", choice.Frames);
    calculate();

    const QwtInterval range = plot.Plot().axisInterval(QwtPlot::yLeft);
    const double middle = (range.minValue() + range.maxValue()) / 2.0;
    const auto place = [&](int frame) { return plot.PixelAt(frame + 0.5, middle); };
    plot.ChooseMode(choice.IgnoreMode);
    plot.Drag(place(choice.From), place(choice.To));
    QCOMPARE(tab.Rows(choice.Tree),
             QStringList(QStringLiteral("%1,%2,0").arg(choice.From).arg(choice.To)));
    calculate();

    plot.ChooseMode(PlotHands::ManualPoints);
    plot.Click(place(10));
    plot.Click(place(20));
    QCOMPARE(tab.Rows(ManualTree).size(), 3);  // a section with two points
    calculate();
}

void WholeProjectTest::Play()
{
    const PlayerHands& player = *Player;
    Window->ClickTab(PlayerTab);
    auto* frame = player.Find<QSpinBox>("spinBoxIdx");
    player.Click("pushButtonPlayPause");
    QVERIFY(player.IsPlaying());
    QTRY_VERIFY(frame->value() >= 4);
    player.Click("pushButtonPlayPause");
    QVERIFY(!player.IsPlaying());
    QVERIFY(!player.Source().isNull());
    QVERIFY(!player.Stabilized().isNull());
    QVERIFY(player.Stabilized() != player.Source());
}

void WholeProjectTest::ExportFirst()
{
    static_cast<void>(NewLines());
    RunJob("pushButtonExportVideo", QStringLiteral("EXPORTING"));
    QVERIFY(NewLines().endsWith(QStringLiteral("Run      Exporting Video finished!")));
    const std::vector<cv::Mat> frames = TestVideo::ReadAllFrames(InProject("street walk.mp4"));
    QCOMPARE(static_cast<int>(frames.size()), ClipFormat.Frames);
    QCOMPARE(frames.front().cols, 256);  // 320 / 1.25
    QCOMPARE(frames.front().rows, 144);  // 180 / 1.25
    FirstExport = ReadBytes(InProject("street walk.mp4"));
    QVERIFY(Corrections() == FirstCorrections);  // an export calculates nothing anew
}

void WholeProjectTest::SaveFirst()
{
    TypeNumber("spinBoxRescaleXAxis", QStringLiteral("640"));  // does not count, but is kept
    Trigger("actionsave_project");
    QCOMPARE(NewLines(), QStringList("Run      Project file written!"));
    FirstProject = ReadBytes(ProjectFile());
    const QJsonObject project = ReadObject(ProjectFile());
    QCOMPARE(project.value("SourceFile").toString(), Clip);
    QCOMPARE(project.value("CropFactor").toDouble(), 1.25);
    QCOMPARE(project.value("ExpResH").toInt(), 640);
    Settings = ShownSettings(*Window);
}

void WholeProjectTest::Leave()
{
    const AnswerModal question(QMessageBox::No);
    Trigger("actionexit");
    QVERIFY(question.WasAnswered());
    QVERIFY(!(*Window)->isVisible());
    QCOMPARE(ReadBytes(ProjectFile()), FirstProject);
    Player->ExpectEnd(*Guard);
    Window.reset();
    Player.reset();
}

void WholeProjectTest::ComesBackByItself()
{
    Start(QString());
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
    QCOMPARE(Window->Log(), QStringList("Run      Project file opened!"));
    QCOMPARE(WithoutRanges(ShownSettings(*Window)), WithoutRanges(Settings));
    QVERIFY(!Window->IsEnabled("pushButtonCalculateTrack"));
    ReadAndCalculate();
    ExportAgain();
    SaveAgain();
}

/** In a home that has forgotten the project. */
void WholeProjectTest::ComesBackByArgument()
{
    WriteConfiguration(InHome(QStringLiteral("gone.mvprj")), false);
    Start(ProjectFile());
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
    QCOMPARE(Window->Log(), QStringList("Run      Project file opened!"));
    QCOMPARE(WithoutRanges(ShownSettings(*Window)), WithoutRanges(Settings));
    ReadAndCalculate();
    ExportAgain();
    SaveAgain();
}

void WholeProjectTest::ReadAndCalculate()
{
    static_cast<void>(NewLines());
    RunJob("pushButtonReadTrack", QStringLiteral("BUSY"));
    const QStringList expected = {"Run      Tracking file read successfully!",
                                  "Run      Stabilizing file read successfully!"};
    QCOMPARE(Window->Log().mid(1), expected);
    static_cast<void>(NewLines());
    Window->Click("pushButtonCalculateTrack");
    QVERIFY(Corrections() == FirstCorrections);
    QCOMPARE(ShownSettings(*Window), Settings);
}

void WholeProjectTest::ExportAgain()
{
    const QString path = InProject("street walk.mp4");
    QVERIFY(QFile::remove(path));  // so that it is seen to be written
    RunJob("pushButtonExportVideo", QStringLiteral("EXPORTING"));
    const QByteArray again = ReadBytes(path);
    QVERIFY(!again.isEmpty());
    QVERIFY2(
        again == FirstExport,
        qPrintable(
            QStringLiteral("%1 bytes instead of %2").arg(again.size()).arg(FirstExport.size())));
}

void WholeProjectTest::SaveAgain()
{
    QVERIFY(QFile::exists(ProjectFile()));
    WriteBytes(ProjectFile(), QByteArray());
    Trigger("actionsave_project");
    QCOMPARE(ReadBytes(ProjectFile()), FirstProject);
}

QVector<QVector<double>> WholeProjectTest::Corrections()
{
    return {PathHorizontal.Result.Correction, PathVertical.Result.Correction,
            PathRotation.Result.Correction, PathRotationDegrees.Result.Correction};
}

QTEST_MAIN(WholeProjectTest)
#include "wholeproject_test.moc"
