// SPDX-License-Identifier: MIT
#include "app/jobclips.h"
#include "batch/jobstate.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "endtoend/shownstate.h"
#include "endtoend/soakhands.h"
#include "endtoend/soakledger.h"
#include "graphs/graphtabhands.h"
#include "player/playerwindow.h"
#include "stabilizer/camerapath.h"
#include "support/environment.h"
#include "support/processfigures.h"
#include "support/testvideo.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QLoggingCategory>
#include <QPixmapCache>
#include <QTest>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace
{
const TestHome OuterHome;

constexpr int AbortTime = 10000;  // milliseconds; an abort takes one frame and 10 ms

QByteArray HashOf(const QString& path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}

/** Of a crop that leaves the frame; the player says so too, at each frame. */
bool IsOfTheCrop(const QString& line)
{
    return line.startsWith(QLatin1String("Error    Offset "));
}

bool IsOfFailedOpening(const QString& line)
{
    return line.startsWith(QLatin1String("Error    Open "));
}

/** Without what the user's hands may have added. */
QStringList LinesOfJob(const QStringList& log)
{
    QStringList lines;
    for (const QString& line : log)
    {
        if (!IsOfTheCrop(line) && line != QLatin1String("Run      Project file written!"))
        {
            lines.append(line);
        }
    }
    return lines;
}

// What a job leaves behind adds up: of the smallest frame here, 57 600 bytes a job, the fifteen
// jobs of half the shortest soak keep 860 kB. What stays of good jobs is below 100 kB: the lists of
// points have room for the most that there ever were.
constexpr qint64 AllowedHeapGrowth = 400LL * 1000;  // bytes

// The video library asks its camera library for what it cannot open as a file, and keeps some
// 161 kB each time: OpenCV 4.6 alone does so in a loop.
constexpr qint64 LostByFailedOpening = 165LL * 1000;  // bytes

// The heap need not give back what lies between two living blocks, and the process brings in pages
// of its libraries late.
constexpr qint64 AllowedResidentGrowth = 32LL * 1000 * 1000;  // bytes
}  // namespace

/** Days in the hands of a restless user, in short: jobs of all kinds, many of them aborted. */
class JobSoakTest : public PlayerWindowTest
{
    Q_OBJECT

private slots:
    void Jobs();

private:
    void WriteClips();
    [[nodiscard]] bool IsIdle() const { return Window->Word() == QLatin1String("IDLE"); }
    void ChooseVideo(int video);
    void Press(const SoakJob& job) const;
    [[nodiscard]] SoakButton Possible(const SoakJob& job) const;
    void Run(const SoakJob& job);
    void WaitForAbort(const SoakJob& job) const;
    [[nodiscard]] bool Abort() const;
    void Compare(SoakButton button, const SoakSettings& settings, int stateBefore, bool isAborted);
    void CompareFiles(const SoakSettings& settings, const SoakEnd& end);
    void CompareWithFirst(const QString& name, const QByteArray& hash);
    [[nodiscard]] QByteArray DataFiles() const;
    [[nodiscard]] ProcessFigures UndisturbedFigures();

    std::unique_ptr<SoakLedger> Ledger;
    std::unique_ptr<SoakHands> Hands;
    int Chosen = -1;                   ///< video
    QHash<QString, QByteArray> First;  ///< hashes of what was written first, by its name
    QByteArray Data;                   ///< hash of the data files before the job
    int Progress = 0;                  ///< lines since the start of the job
    bool HasHands = false;             ///< during the job; what they say may hide a line
    int Ended[4] = {};                 ///< jobs by their result
    int Aborts = 0;
    int FailedOpenings = 0;  ///< of the player and of jobs
    int Again = 0;           ///< files that were like the first of their name
    int Overtaken = 0;       ///< aborted jobs that showed the state before
};

void JobSoakTest::WriteClips()
{
    const QString usual = Clips.filePath(QStringLiteral("usual.avi"));
    const QString other = Clips.filePath(QStringLiteral("other.avi"));
    const QString black = Clips.filePath(QStringLiteral("black.avi"));
    QVERIFY(!TestVideo::WriteStreetClip(usual, {240, 180, 200, 25.0}).empty());
    QVERIFY(!TestVideo::WriteStreetClip(other, {160, 120, 140, 30.0}, 2).empty());
    QVERIFY(TestVideo::WriteBlackClip(black, {160, 120, 80, 25.0}));
    const std::array<SoakClip, VideoCount> clips{{
        {usual, QStringLiteral("Run      Input: Frames= 200 h=240 v=180 fps=25"), 200},
        {other, QStringLiteral("Run      Input: Frames= 140 h=160 v=120 fps=30"), 140},
        {black, QStringLiteral("Run      Input: Frames= 80 h=160 v=120 fps=25"), 80},
        {Clips.filePath(QStringLiteral("gone.avi")), QString(), 0},
    }};
    Ledger = std::make_unique<SoakLedger>(clips);
}

/** By the button, which opens it in the player too, unless it is chosen already. */
void JobSoakTest::ChooseVideo(int video)
{
    Window->ClickTab(SettingsTab);
    if (video == Chosen)
    {
        return;
    }
    Chosen = video;
    const QString path = Ledger->Clip(video).Path;
    ChooseSource(path);
    FailedOpenings += video == GoneVideo ? 1 : 0;
    Window->SetPaths(path, Directory->path());
}

/** What can be pressed when the button that was wanted is off. */
SoakButton JobSoakTest::Possible(const SoakJob& job) const
{
    if (job.Button == SoakButton::Export && !Window->IsEnabled(ButtonName(job.Button)))
    {
        return SoakButton::GenerateAll;
    }
    return job.Button;
}

void JobSoakTest::Press(const SoakJob& job) const
{
    const SoakButton button = Possible(job);
    const bool isOff = !Window->IsEnabled(ButtonName(button));
    if (button == SoakButton::Calculate && (isOff || job.IsOnGraphTab))
    {
        Window->ClickTab(HorizontalTab);
        GraphTab(*Window, HorizontalTab).Click("pushButtonCalc");  // is never off
        Window->ClickTab(SettingsTab);
        return;
    }
    Window->Click(ButtonName(button));
}

void JobSoakTest::WaitForAbort(const SoakJob& job) const
{
    if (job.AbortLines > 0)
    {
        QVERIFY(QTest::qWaitFor([&] { return IsIdle() || Progress >= job.AbortLines; }, JobTime));
    }
    else if (job.AbortMs > 0)
    {
        static_cast<void>(QTest::qWaitFor([this] { return IsIdle(); }, job.AbortMs));
    }
}

/** @return whether there was something to abort */
bool JobSoakTest::Abort() const
{
    Window->ClickTab(SettingsTab);
    if (IsIdle())
    {
        return false;
    }
    QElapsedTimer clock;
    clock.start();
    Window->Click("pushButtonAbort");
    if (clock.elapsed() > AbortTime)
    {
        QTest::qFail("the abort took too long", __FILE__, __LINE__);
    }
    return true;
}

void JobSoakTest::Run(const SoakJob& job)
{
    for (const SoakHand& hand : job.Before)
    {
        Hands->Do(hand);
    }
    ChooseVideo(job.Settings.Video);
    Hands->Enter(job.Settings);
    const SoakButton button = Possible(job);
    Data = DataFiles();
    Window->Click("pushButtonClear");
    Progress = 0;
    HasHands = !job.During.empty();
    const int stateBefore = ProgramHost.GetState();
    Press(job);
    QCOMPARE(ShownState(*Window), ShownStateOf(StateAfterPress(button)));
    QVERIFY(button == SoakButton::Calculate || !Player->IsPlaying());
    bool isAborted = false;
    if (button != SoakButton::Calculate)
    {
        for (const SoakHand& hand : job.During)
        {
            if (!IsIdle())
            {
                Hands->Do(hand);
            }
        }
        if (job.HasAbort())
        {
            WaitForAbort(job);
            isAborted = Abort();
        }
        QVERIFY(QTest::qWaitFor([this] { return IsIdle(); }, JobTime));
        Window->ClickTab(SettingsTab);
    }
    Aborts += isAborted ? 1 : 0;
    Compare(button, job.Settings, stateBefore, isAborted);
}

/** What the window shows and what the log says against the ends that there are. */
void JobSoakTest::Compare(SoakButton button, const SoakSettings& settings, int stateBefore,
                          bool isAborted)
{
    const QStringList log = Window->Log();
    FailedOpenings += static_cast<int>(std::count_if(log.cbegin(), log.cend(), IsOfFailedOpening));
    const QStringList lines = LinesOfJob(log);
    const std::vector<SoakEnd> ends = Ledger->Ends(button, settings, stateBefore, isAborted);
    const auto end = std::find_if(ends.cbegin(), ends.cend(),
                                  [&lines](const SoakEnd& e) { return e.Lines == lines; });
    QVERIFY2(end != ends.cend(), qPrintable(QStringLiteral("%1\ninstead of\n%2")
                                                .arg(lines.join(QLatin1Char('\n')),
                                                     ends.front().Lines.join(QLatin1Char('\n')))));
    const bool isWhole = end->Result == SoakResult::Whole;
    if (isWhole && settings.Look == OutsideLook && button == SoakButton::Export &&
        settings.Video != GoneVideo)
    {
        QVERIFY(std::any_of(log.cbegin(), log.cend(), IsOfTheCrop));
    }
    QVERIFY2(!isWhole || Progress == end->Progress || (HasHands && Progress < end->Progress),
             qPrintable(QString::number(Progress)));
    QString wanted = ShownStateOf(end->State);
    if (isAborted && ShownState(*Window) != wanted)
    {
        // The abort puts the state before back just as the worker ends, in the blink between the
        // worker's storing of its result and its telling of it.
        wanted = ShownStateOf(stateBefore);
        ++Overtaken;
    }
    QCOMPARE(ShownState(*Window), wanted);
    QVERIFY(wanted != ShownStateOf(JobNone) || !PathHorizontal.HasValidData());
    QTRY_VERIFY(!ProgramHost.GetThread()->isRunning());
    Ledger->Note(button, settings, *end);
    ++Ended[static_cast<int>(end->Result)];
    CompareFiles(settings, *end);
}

/** All data files in one. */
QByteArray JobSoakTest::DataFiles() const
{
    QByteArray hashes;
    for (const char* name :
         {"Tracking.dat", "Tracking.dat.cfg", "Stabilize.dat", "Stabilize.dat.cfg"})
    {
        hashes += HashOf(Directory->filePath(QString::fromLatin1(name)));
    }
    return hashes;
}

void JobSoakTest::CompareFiles(const SoakSettings& settings, const SoakEnd& end)
{
    if (end.HasDataFiles)
    {
        CompareWithFirst(Ledger->NameOfData(), DataFiles());
    }
    else
    {
        QVERIFY(DataFiles() == Data);
    }
    if (end.HasExport)
    {
        const QString path = Directory->filePath(QStringLiteral("Export.mp4"));
        CompareWithFirst(Ledger->NameOfExport(settings), HashOf(path));
    }
}

void JobSoakTest::CompareWithFirst(const QString& name, const QByteArray& hash)
{
    QVERIFY(!hash.isEmpty());
    if (name.isEmpty())
    {
        return;
    }
    Again += First.contains(name) ? 1 : 0;
    QVERIFY2(First.value(name, hash) == hash, qPrintable(name));
    First.insert(name, hash);
}

/**
 * Analyses and exports the usual video with the usual settings: its files are the same each time.
 * @return what the process uses afterwards, the player in its usual look
 */
ProcessFigures JobSoakTest::UndisturbedFigures()
{
    Chosen = -1;  // is opened anew in any case
    for (const SoakButton button : {SoakButton::Analyse, SoakButton::Export})
    {
        SoakJob job;
        job.Button = button;
        Run(job);
    }
    Window->Click("pushButtonClear");
    Hands->TakeUsualLook();
    Window->ClickTab(SettingsTab);
    QTest::qWait(200);      // the last thread is on its way out
    QPixmapCache::clear();  // of the style, which fills it up to its limit
    return TakeFigures();
}

void JobSoakTest::Jobs()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const int seed = NumberFromEnvironment("MOLVANE_SOAK_SEED", 1);
    const int count = NumberFromEnvironment("MOLVANE_SOAK_JOBS", 30);
    qInfo("%d jobs of seed %d", count, seed);
    WriteClips();
    Hands = std::make_unique<SoakHands>(*Window, *Player);
    connect(ProgramHost.GetThread(), &OpCVThread::SignalLogEntry, this,
            [this] { Progress += Window->LastAction().startsWith(QLatin1String("Frame: ")); });
    const std::vector<SoakJob> jobs = DrawSoakJobs(static_cast<std::uint32_t>(seed), count);
    const ProcessFigures start = UndisturbedFigures();
    QCOMPARE(CountFrames(Directory->filePath(QStringLiteral("Export.mp4"))),
             Ledger->Clip(UsualVideo).Frames);
    ProcessFigures half = start;
    int failedInFirstHalf = 0;
    for (int i = 0; i < count; ++i)
    {
        Run(jobs.at(std::size_t(i)));
        QVERIFY2(!QTest::currentTestFailed(), qPrintable(QStringLiteral("in job %1").arg(i)));
        if (i + 1 == count / 2)
        {
            half = UndisturbedFigures();
            failedInFirstHalf = FailedOpenings;
        }
    }
    const ProcessFigures end = UndisturbedFigures();
    qInfo(
        "%d whole, %d aborted in the analysis, %d in the export, %d before they began; %d "
        "aborts, %d overtaken; %d files as before",
        Ended[0], Ended[1], Ended[2], Ended[3], Aborts, Overtaken, Again);
    qInfo(
        "heap %lld %lld %lld, resident %lld %lld %lld bytes; threads %d %d %d, files %d %d %d; "
        "%d and %d failed openings",
        start.Heap, half.Heap, end.Heap, start.Resident, half.Resident, end.Resident, start.Threads,
        half.Threads, end.Threads, start.OpenFiles, half.OpenFiles, end.OpenFiles,
        failedInFirstHalf, FailedOpenings - failedInFirstHalf);
    QVERIFY(count < 30 || Ended[1] + Ended[2] > 0);
    QVERIFY(count < 100 || (Ended[1] > 0 && Ended[2] > 0));
    QVERIFY(Overtaken <= 1);
    const qint64 lost = (FailedOpenings - failedInFirstHalf) * LostByFailedOpening;
    QVERIFY(end.Heap - half.Heap < AllowedHeapGrowth + lost);
    QVERIFY(IsSanitized || end.Resident - half.Resident < AllowedResidentGrowth);
    QCOMPARE(end.Threads, start.Threads);
    QCOMPARE(end.OpenFiles, start.OpenFiles);
}

QTEST_MAIN(JobSoakTest)
#include "jobsoak_test.moc"
