// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "player/exportedpicture.h"
#include "player/exportwindow.h"
#include "player/shownplayer.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <opencv2/core.hpp>

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QTest>

#include <memory>
#include <vector>

namespace
{
const TestHome Home;

constexpr int Frames = 100;
constexpr int EnoughSeeks = 200;
constexpr int MostExports = 20;  // a fast computer needs some for as many seeks
constexpr double CropFactor = 1.25;
}  // namespace

/** A user who looks at other frames while the worker exports: neither disturbs the other. */
class ExportSeeksTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void PreviewHasAMatrixOfItsOwn();
    void SeeksLeaveTheExportAlone();

private:
    void Act();
    void ComparePictures(const Corrections& path) const;

    QTemporaryDir Clips;
    QString Clip;                  ///< path
    std::vector<cv::Mat> Sources;  ///< its frames
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<ExportWindow> Window;
    std::unique_ptr<ShownPlayer> Player;  ///< of the window
    QRandomGenerator Dice;
};

void ExportSeeksTest::initTestCase()
{
    // A picture that comes before the last was painted is told there each time.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    Clip = Clips.filePath(QStringLiteral("street.avi"));
    QVERIFY(!TestVideo::WriteStreetClip(Clip, {320, 180, Frames, 25.0}, 2).empty());
    Sources = TestVideo::ReadAllFrames(Clip);
    QCOMPARE(static_cast<int>(Sources.size()), Frames);
}

void ExportSeeksTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Window = std::make_unique<ExportWindow>();
    Dice.seed(20);
}

void ExportSeeksTest::cleanup()
{
    if (Player != nullptr)  // the gate of its converter was closed by the first frame
    {
        Guard->Expect(QtWarningMsg, QStringLiteral("QMutex: destroying locked mutex"));
    }
    Player.reset();
    Window.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

/** One action in pause: mostly a seek, else a zoom between 0.175 and 0.9. */
void ExportSeeksTest::Act()
{
    const int frame = Dice.bounded(Frames);
    switch (Dice.bounded(6))
    {
        case 0:
            Player->DragSlider(frame);
            return;
        case 1:
            Player->PressZoom(Player->Zoom() < 0.9 ? Qt::Key_Up : Qt::Key_PageDown);
            return;
        case 2:
            Player->PressZoom(Player->Zoom() > 0.2 ? Qt::Key_Down : Qt::Key_PageUp);
            return;
        case 3:
            Player->StepFrame();
            return;
        default:
            (*Player)->Type("spinBoxIdx", frame);
            return;
    }
}

/** The pictures on show are those of the frame in the field. */
void ExportSeeksTest::ComparePictures(const Corrections& path) const
{
    const int frame = (*Player)->Number("spinBoxIdx");
    const double zoom = Player->Zoom();
    const cv::Mat source = Scaled(Sources[static_cast<std::size_t>(frame)], zoom);
    const cv::Mat whole = Warped(source, path, frame, zoom);
    const int width = static_cast<int>(whole.cols / CropFactor) / 2 * 2;
    const int height = static_cast<int>(whole.rows / CropFactor) / 2 * 2;
    const cv::Rect crop((whole.cols - width) / 2, (whole.rows - height) / 2, width, height);
    QVERIFY(LargestDifference(Player->Source(), source) <= Rounding);
    QVERIFY(LargestDifference(Player->Stabilized(), whole(crop)) <= Rounding);
}

/** On two threads the moment between filling a matrix and its use is too short to be met. */
void ExportSeeksTest::PreviewHasAMatrixOfItsOwn()
{
    PathHorizontal.Result.Correction = {3.0, 40.0};
    PathVertical.Result.Correction = {-2.0, 50.0};
    PathRotation.Result.Correction = {0.0, 0.5};
    PosRotStabilizer stabilizer;
    cv::Mat exported;
    cv::Mat shown;
    stabilizer.WarpFrame(Sources[0], exported, 0);
    stabilizer.WarpFrameScaled(Sources[1], shown, 1, 0.5);
    const cv::Mat expected = (cv::Mat_<double>(2, 3) << 1.0, 0.0, 3.0, 0.0, 1.0, -2.0);
    QCOMPARE(cv::norm(stabilizer.Transform, expected, cv::NORM_INF), 0.0);
    QVERIFY(LargestDifference(shown, Warped(Sources[1], Corrections(), 1, 0.5)) <= Rounding);
}

void ExportSeeksTest::SeeksLeaveTheExportAlone()
{
    Window->SetCrop(CropFactor * 100.0, 0, 0);
    Window->SetOutputSize(7680, 4320);  // so that the job takes its time
    Window->Analyse(Clip);
    const Corrections path;
    Window->StartExport(QStringLiteral("Alone.mp4"));
    Window->WaitForEnd();
    const QByteArray alone = Window->Bytes(QStringLiteral("Alone.mp4"));
    QVERIFY(!alone.isEmpty());
    Player = std::make_unique<ShownPlayer>(*Window);
    Player->OpenVideo();
    Player->SetChecked("checkBoxCrop", true);
    int seeks = 0;
    int exports = 0;
    while (exports < MostExports && seeks < EnoughSeeks)
    {
        const QString name = QStringLiteral("Disturbed%1.mp4").arg(exports);
        Window->StartExport(name);
        Window->ClickTab(PlayerTab);
        (*Player)->TakePositions();
        while (Window->Word() == QLatin1String("EXPORTING"))
        {
            Act();
            ComparePictures(path);
            QVERIFY(!QTest::currentTestFailed());
            QCoreApplication::processEvents();
        }
        const int seeksHere = (*Player)->TakePositions().size();
        QVERIFY(seeksHere > 0);
        seeks += seeksHere;
        ++exports;
        QVERIFY(Window->Bytes(name) == alone);
    }
    qInfo("%d seeks in %d exports", seeks, exports);
    QVERIFY(seeks >= EnoughSeeks);
}

QTEST_MAIN(ExportSeeksTest)
#include "exportseeks_test.moc"
