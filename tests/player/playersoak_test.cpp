// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "app/testwindow.h"
#include "player/shownplayer.h"
#include "stabilizer/camerapath.h"
#include "support/processfigures.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <QEventLoop>
#include <QLoggingCategory>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace
{
const TestHome Home;

constexpr int JobTime = 120000;  // milliseconds, far more than any job here takes
constexpr int PlayTime = 60000;  // milliseconds, far more than one pass over the clip takes
constexpr int LongPlay = 10000;  // frames
constexpr int WarmUp = 2000;     // frames until all buffers have had their largest size
constexpr int Frames = TestVideo::MaxNumberedFrames;
constexpr int FastestFps = 10000;
constexpr int BetweenActions = 200;  // milliseconds of play

// The heap need not give back what lies between two living blocks, and the process brings in pages
// of its libraries late. A leak of one picture per frame is far above: 160 by 120 pixels of three
// bytes in each of 8000 frames are 460 MB, and even 1 kB per frame shows.
constexpr qint64 AllowedGrowth = 8LL * 1024 * 1024;  // bytes

/** The number that a picture shows; -1 also without a picture. */
int NumberIn(const cv::Mat& picture)
{
    return picture.empty() ? -1 : TestVideo::NumberOf(picture);
}

/**
 * Looks at each frame on its way, and at the pictures that come of it: all show the same number,
 * and in play the numbers follow each other.
 */
class FrameWatch : public QObject
{
public:
    explicit FrameWatch(ShownPlayer& player) : Player(player)
    {
        // The player connected its own receivers first: the pictures are there already.
        connect(&player->Capture, &PlayerCapture::frameReady, this, &FrameWatch::See);
    }

    int Frames = 0;              ///< seen
    int Number = -1;             ///< of the last one
    QString FirstWrong;          ///< in words; empty while all is well
    std::function<void()> Seen;  ///< called after each frame

private:
    void See(const cv::Mat& frame, int index)
    {
        const int number = NumberIn(frame);
        const int source = NumberIn(Player.Source());
        const int stabilized = NumberIn(Player.Stabilized());
        const bool isNext = number == Number + 1;
        const bool isSought = number == index || number == Number;
        const bool isRight = number >= 0 && source == number && stabilized == number &&
                             (Player->IsPlaying() ? isNext : isSought);
        if (!isRight && FirstWrong.isEmpty())
        {
            FirstWrong = QStringLiteral("frame %1: index %2, number %3 after %4, pictures %5 %6")
                             .arg(Frames)
                             .arg(index)
                             .arg(number)
                             .arg(Number)
                             .arg(source)
                             .arg(stabilized);
        }
        ++Frames;
        Number = number;
        if (Seen)
        {
            Seen();
        }
    }

    ShownPlayer& Player;
};
}  // namespace

/** Hours in the hands of a restless user, in short: long plays, and jobs that come in between. */
class PlayerSoakTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void LongPlayStaysRightAndSmall();
    void JobStopsPlay_data();
    void JobStopsPlay();

private:
    void WaitForEnd() const;
    void OpenPlayer();
    void Play(int frames);
    [[nodiscard]] int DrawFrame();
    void Seek();
    void ChangeLook();
    [[nodiscard]] qint64 BytesInUsualLook();

    QTemporaryDir Clips;
    QString Clip;  ///< path
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;  ///< of the data files and the export
    std::unique_ptr<TestWindow> Window;
    std::unique_ptr<ShownPlayer> Player;  ///< of the window
    std::unique_ptr<FrameWatch> Watch;    ///< on the player
    QRandomGenerator Dice;
    int LastSought = -1;  ///< frame number
    int Seeks = 0;
};

void PlayerSoakTest::initTestCase()
{
    // A picture that comes before the last was painted is told there each time.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    Clip = Clips.filePath(QStringLiteral("numbered.avi"));
    QVERIFY(TestVideo::WriteNumberedClip(Clip, {160, 120, Frames, 25.0}));
}

void PlayerSoakTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    Window = std::make_unique<TestWindow>();
    Dice.seed(6);
    LastSought = -1;
    Seeks = 0;
}

void PlayerSoakTest::cleanup()
{
    Watch.reset();
    Player.reset();
    Guard->Expect(QtWarningMsg, QStringLiteral("QMutex: destroying locked mutex"));
    Window.reset();
    Directory.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

void PlayerSoakTest::WaitForEnd() const
{
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
}

/** With a path that moves nothing, as plain frames have no corners, and the fastest play. */
void PlayerSoakTest::OpenPlayer()
{
    Window->SetPaths(Clip, Directory->path());
    Window->SetNumber("doubleSpinBoxZoom", 125.0);  // a crop that fits at any zoom of the player
    Window->Click("pushButtonAnalyseTrack");
    WaitForEnd();
    Window->Click("pushButtonCalculateTrack");
    QVERIFY(PathHorizontal.HasValidData());
    Player = std::make_unique<ShownPlayer>(*Window);
    Player->OpenVideo();
    (*Player)->Type("spinBoxFPS", FastestFps);
    Watch = std::make_unique<FrameWatch>(*Player);
    (*Player)->Click("pushButtonReset");
    QCOMPARE(Watch->Number, 0);
}

/** Plays @p frames frames, or to the end of the clip, while the look changes now and then. */
void PlayerSoakTest::Play(int frames)
{
    QEventLoop loop;
    QTimer hand;
    QTimer::singleShot(PlayTime, &loop, [&loop] { loop.exit(1); });
    connect(&(*Player)->Capture, &PlayerCapture::Ended, &loop,
            [&]
            {
                hand.stop();
                loop.quit();
            });
    const int end = Watch->Frames + frames;
    Watch->Seen = [&]
    {
        if (Watch->Frames >= end)
        {
            loop.quit();
        }
    };
    connect(&hand, &QTimer::timeout, &loop, [this] { ChangeLook(); });
    hand.start(BetweenActions);
    (*Player)->Click("pushButtonPlayPause");
    QVERIFY((*Player)->IsPlaying());
    QCOMPARE(loop.exec(), 0);
    Watch->Seen = nullptr;
    if ((*Player)->IsPlaying())
    {
        (*Player)->Click("pushButtonPlayPause");
    }
    QVERIFY(!(*Player)->IsPlaying());
}

/** Zoom, view or crop, in pause or in play. */
void PlayerSoakTest::ChangeLook()
{
    switch (Dice.bounded(5))
    {
        case 0:
            Player->PressZoom(Player->Zoom() < 1.0 ? Qt::Key_PageUp : Qt::Key_PageDown);
            return;
        case 1:
            Player->PressZoom(Player->Zoom() > 0.4 ? Qt::Key_PageDown : Qt::Key_PageUp);
            return;
        case 2:
            Player->PressZoom(Player->Zoom() < 1.0 ? Qt::Key_Up : Qt::Key_Down);
            return;
        case 3:
            (*Player)->ChooseView(Dice.bounded(6));
            return;
        default:
            (*Player)->Click("checkBoxCrop");
            return;
    }
}

/**
 * Some frame with others behind it that slider and field would seek: not the frame that was sought
 * last, nor the one that the field shows. "Reset" may have sought the first one.
 */
int PlayerSoakTest::DrawFrame()
{
    int frame = 0;
    while (frame == 0 || frame == LastSought || frame == (*Player)->Number("spinBoxIdx"))
    {
        frame = Dice.bounded(Frames - 1);
    }
    return frame;
}

/** By slider, by field or back to the start. */
void PlayerSoakTest::Seek()
{
    int frame = 0;
    switch (Dice.bounded(5))
    {
        case 0:
            (*Player)->Click("pushButtonReset");
            break;
        case 1:
        case 2:
            frame = LastSought = DrawFrame();
            Player->DragSlider(frame);
            break;
        default:
            frame = LastSought = DrawFrame();
            (*Player)->Type("spinBoxIdx", frame);
            break;
    }
    ++Seeks;
    QCOMPARE(Watch->Number, frame);
}

/** What the process occupies; the same zoom, view and frame each time. */
qint64 PlayerSoakTest::BytesInUsualLook()
{
    (*Player)->Click("pushButtonReset");
    (*Player)->TypeZoom(0.5);
    (*Player)->ChooseView(0);
    Player->SetChecked("checkBoxCrop", true);
    QCoreApplication::processEvents();
    return TakeFigures().Resident;
}

void PlayerSoakTest::LongPlayStaysRightAndSmall()
{
    OpenPlayer();
    const int logLines = Window->Log().size();
    qint64 warm = 0;
    int warmFrames = 0;
    while (Watch->Frames < LongPlay)
    {
        Seek();
        ChangeLook();
        Play(20 + Dice.bounded(180));
        QVERIFY2(Watch->FirstWrong.isEmpty(), qPrintable(Watch->FirstWrong));
        QVERIFY(!QTest::currentTestFailed());
        if (warm == 0 && Watch->Frames >= WarmUp)
        {
            warm = BytesInUsualLook();
            warmFrames = Watch->Frames;
        }
    }
    const qint64 growth = BytesInUsualLook() - warm;
    qInfo("%d frames, %d seeks; %lld bytes more than after %d frames", Watch->Frames, Seeks,
          static_cast<long long>(growth), warmFrames);
    QCOMPARE(Window->Log().size(), logLines);  // nothing is told that grows with the frames
    QVERIFY(Seeks >= LongPlay / 200);
    QVERIFY(warm > 0);
    if (!IsSanitized)  // which holds freed memory back
    {
        QVERIFY2(growth < AllowedGrowth, qPrintable(QString::number(growth)));
    }
}

void PlayerSoakTest::JobStopsPlay_data()
{
    QTest::addColumn<QByteArray>("button");
    for (const char* button : {"pushButtonAnalyseTrack", "pushButtonReadTrack",
                               "pushButtonExportVideo", "pushButtonGenerateAll"})
    {
        QTest::newRow(button) << QByteArray(button);
    }
}

void PlayerSoakTest::JobStopsPlay()
{
    QFETCH(QByteArray, button);
    OpenPlayer();
    auto* play = (*Player)->Find<QPushButton>("pushButtonPlayPause");
    (*Player)->Click("pushButtonPlayPause");
    QTRY_VERIFY(Watch->Frames > 10);
    Window->ClickTab(0);
    QVERIFY((*Player)->IsPlaying());  // goes on behind another tab
    Window->Click(button.constData());
    QVERIFY(!(*Player)->IsPlaying());
    QVERIFY(!play->isEnabled());
    const int frames = Watch->Frames;
    WaitForEnd();
    QVERIFY(!(*Player)->IsPlaying());
    QVERIFY(play->isEnabled());
    QCOMPARE(Watch->Frames, frames);
    QVERIFY2(Watch->FirstWrong.isEmpty(), qPrintable(Watch->FirstWrong));
    // The play was ended and not paused: until the source is opened anew there is nothing to play.
    Window->ClickTab(PlayerTab);
    (*Player)->Click("pushButtonPlayPause");
    QTRY_VERIFY(!(*Player)->IsPlaying());
    QCOMPARE(Watch->Frames, frames);
}

QTEST_MAIN(PlayerSoakTest)
#include "playersoak_test.moc"
