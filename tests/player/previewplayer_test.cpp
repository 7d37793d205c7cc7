// SPDX-License-Identifier: MIT
#include "batch/jobstate.h"
#include "graphs/gridandpos.h"
#include "player/loneplayertest.h"
#include "support/testhome.h"
#include "support/testvideo.h"

#include <QAbstractButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

namespace
{
const TestHome Home;

const QStringList AllAreas{"PlaySrc", "PlayExport", "H", "V"};
const QStringList SourceAlone{"PlaySrc"};
const QString Time = QStringLiteral("Time [min:sec:ms]");
const QString Number = QStringLiteral("Frame No.");
}  // namespace

/** Job states, views and graphs, and what an opened video sets. */
class PreviewPlayerTest : public LonePlayerTest
{
    Q_OBJECT

private slots:
    void JobStates_data();
    void JobStates();
    void Views_data();
    void Views();
    void UnknownViewChangesNothing();
    void JobStopsPlay_data();
    void JobStopsPlay();
    void GraphsFollowTheBoxes();
    void GraphsGoBackToFrameNumbers();
    void ViewAllDrawsTheGraphs_data();
    void ViewAllDrawsTheGraphs();
    void OpenSetsTheControls_data();
    void OpenSetsTheControls();
    void OpenGoesToTheStart();
    void OpenEndsPlay();
    void MissingVideo();
    void TextMax_data();
    void TextMax();

private:
    [[nodiscard]] QString NewClip(int frames, double fps);
};

/** A clip whose header promises @p frames; one frame can be read. */
QString PreviewPlayerTest::NewClip(int frames, double fps)
{
    const QString path = Clips.filePath(QStringLiteral("%1at%2.avi").arg(frames).arg(fps));
    return TestVideo::WriteShortClip(path, {32, 24, 1, fps}, frames) ? path : QString();
}

void PreviewPlayerTest::JobStates_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("isOn");
    QTest::addColumn<QStringList>("areas");
    QTest::newRow("no job: source alone") << int(JobNone) << true << SourceAlone;
    QTest::newRow("1 bears no name: busy") << 1 << false << SourceAlone;
    QTest::newRow("analysis") << int(JobAnalyse) << false << SourceAlone;
    QTest::newRow("stabilization") << int(JobStabilize) << false << SourceAlone;
    QTest::newRow("export: busy, with a path") << int(JobExport) << false << AllAreas;
    QTest::newRow("all") << int(JobGenerateAll) << false << SourceAlone;
    QTest::newRow("read tracking") << int(JobReadTracking) << false << SourceAlone;
    QTest::newRow("read all") << int(JobReadAll) << false << SourceAlone;
    QTest::newRow("tracking ready: no path yet") << int(JobTrackingReady) << true << SourceAlone;
    QTest::newRow("path ready") << int(JobPathReady) << true << AllAreas;
    QTest::newRow("path calculated") << int(JobPathCalculated) << true << AllAreas;
    QTest::newRow("11 bears no name: busy") << 11 << false << SourceAlone;
}

void PreviewPlayerTest::JobStates()
{
    QFETCH(int, state);
    QFETCH(bool, isOn);
    QFETCH(QStringList, areas);
    for (int before : {int(JobPathReady), int(JobAnalyse)})
    {
        Player->Player().JobStateChanged(before);
        Player->Player().JobStateChanged(state);
        QCOMPARE((*Player)->Find<QAbstractButton>("pushButtonReset")->isEnabled(), isOn);
        QCOMPARE((*Player)->Find<QAbstractButton>("pushButtonPlayPause")->isEnabled(), isOn);
        QCOMPARE((*Player)->Areas(), areas);
    }
}

void PreviewPlayerTest::Views_data()
{
    QTest::addColumn<int>("view");
    QTest::addColumn<QStringList>("areas");
    QTest::newRow("all") << 0 << AllAreas;
    QTest::newRow("source") << 1 << QStringList("PlaySrc");
    QTest::newRow("export") << 2 << QStringList("PlayExport");
    QTest::newRow("graph") << 3 << QStringList{"H", "V"};
    QTest::newRow("source and graph") << 4 << QStringList{"PlaySrc", "H", "V"};
    QTest::newRow("export and graph") << 5 << QStringList{"PlayExport", "H", "V"};
}

void PreviewPlayerTest::Views()
{
    QFETCH(int, view);
    QFETCH(QStringList, areas);
    Player->Show();
    (*Player)->ChooseView(view);
    QCOMPARE((*Player)->Areas(), SourceAlone);  // nothing else to show without a path
    for (int state : {int(JobPathReady), int(JobPathCalculated), int(JobExport)})
    {
        Player->Player().JobStateChanged(state);
        QCOMPARE((*Player)->Areas(), areas);
        Player->Player().JobStateChanged(JobNone);
        QCOMPARE((*Player)->Areas(), SourceAlone);
    }
    Player->Player().JobStateChanged(JobPathReady);
    (*Player)->ChooseView(view == 3 ? 2 : 3);
    (*Player)->ChooseView(view);
    QCOMPARE((*Player)->Areas(), areas);
}

void PreviewPlayerTest::UnknownViewChangesNothing()
{
    Player->Player().JobStateChanged(JobPathReady);
    Player->Player().View(ViewExport);
    Player->Player().View(static_cast<ViewType>(6));
    QCOMPARE((*Player)->Areas(), QStringList("PlayExport"));
    Player->Player().JobStateChanged(JobNone);
    Player->Player().View(static_cast<ViewType>(6));
    QCOMPARE((*Player)->Areas(), SourceAlone);
}

void PreviewPlayerTest::JobStopsPlay_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("stops");
    QTest::newRow("analysis stops") << int(JobAnalyse) << true;
    QTest::newRow("export stops") << int(JobExport) << true;
    QTest::newRow("read stops") << int(JobReadAll) << true;
    QTest::newRow("a calculated path lets it play") << int(JobPathCalculated) << false;
    QTest::newRow("a ready path lets it play") << int(JobPathReady) << false;
    QTest::newRow("no job by itself lets it play") << int(JobNone) << false;
}

void PreviewPlayerTest::JobStopsPlay()
{
    QFETCH(int, state);
    QFETCH(bool, stops);
    Player->Show();
    Player->Player().Open();
    (*Player)->Type("spinBoxIdx", 4);
    (*Player)->Click("pushButtonPlayPause");
    QVERIFY((*Player)->IsPlaying());
    Player->Player().JobStateChanged(state);
    QCOMPARE((*Player)->IsPlaying(), !stops);
    QCOMPARE((*Player)->Number("spinBoxIdx"), stops ? 0 : 4);  // a closed video stands at its start
}

void PreviewPlayerTest::GraphsFollowTheBoxes()
{
    Player->Proj.FlowH.EnableManualPath = false;
    Player->Show();
    Player->ShowPaths(10);
    const QStringList path{"Shakiness Path", "Smoothed Path"};
    for (const char* area : {"scrollAreaH", "scrollAreaV"})
    {
        QCOMPARE((*Player)->Curves(area), path);  // neither shakiness nor margins
        QVERIFY((*Player)->Grid(area).ShowMarginBand);
    }
    (*Player)->Click("checkBoxMargin");
    for (const char* area : {"scrollAreaH", "scrollAreaV"})
    {
        QCOMPARE((*Player)->Curves(area), path);
        QVERIFY(!(*Player)->Grid(area).ShowMarginBand);
    }
    Player->Player().JobStateChanged(JobPathCalculated);
    QVERIFY(!(*Player)->Grid("scrollAreaH").ShowMarginBand);
    QVERIFY(!(*Player)->Grid("scrollAreaV").ShowMarginBand);
    (*Player)->Click("checkBoxMargin");
    QVERIFY((*Player)->Grid("scrollAreaH").ShowMarginBand);
    QVERIFY((*Player)->Grid("scrollAreaV").ShowMarginBand);
}

/** Deliberate: the button for the time never is checked, so each job state undoes it. */
void PreviewPlayerTest::GraphsGoBackToFrameNumbers()
{
    Player->Show();
    Player->ShowPaths(10);
    const auto titles = [this] {
        return QStringList{(*Player)->XTitle("scrollAreaH"), (*Player)->XTitle("scrollAreaV")};
    };
    QCOMPARE(titles(), (QStringList{Number, Number}));
    (*Player)->Click("pushButtonTime");
    QCOMPARE(titles(), (QStringList{Time, Time}));
    Player->Player().JobStateChanged(JobPathCalculated);
    QCOMPARE(titles(), (QStringList{Number, Number}));
    QVERIFY((*Player)->Find<QWidget>("spinBoxIdx")->isHidden());  // the controls keep to the time
    (*Player)->Click("pushButtonTime");
    QCOMPARE(titles(), (QStringList{Number, Number}));
    (*Player)->Click("pushButtonTime");
    QCOMPARE(titles(), (QStringList{Time, Time}));
}

void PreviewPlayerTest::ViewAllDrawsTheGraphs_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("view");
    QTest::addColumn<bool>("draws");
    QTest::newRow("all draws") << int(JobPathReady) << 0 << true;
    QTest::newRow("graph only shows") << int(JobPathReady) << 3 << false;
    QTest::newRow("source and graph only shows") << int(JobPathReady) << 4 << false;
    QTest::newRow("an overruled view draws nothing") << int(JobTrackingReady) << 0 << false;
}

void PreviewPlayerTest::ViewAllDrawsTheGraphs()
{
    QFETCH(int, state);
    QFETCH(int, view);
    QFETCH(bool, draws);
    Player->Show();
    Player->ShowPaths(10);
    Player->Player().JobStateChanged(state);
    (*Player)->ChooseView(1);
    (*Player)->Click("pushButtonTime");
    Player->Player().View(static_cast<ViewType>(view));
    QCOMPARE((*Player)->XTitle("scrollAreaH"), draws ? Number : Time);
    QCOMPARE((*Player)->XTitle("scrollAreaV"), draws ? Number : Time);
}

void PreviewPlayerTest::OpenSetsTheControls_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("shownRate");
    QTest::newRow("25 frames per second") << 10 << 25.0 << 25;
    QTest::newRow("the rate of the form") << 300 << 30.0 << 30;
    QTest::newRow("decimals of the rate are cut off") << 120 << 29.97 << 29;
    QTest::newRow("one frame") << 1 << 50.0 << 50;
}

void PreviewPlayerTest::OpenSetsTheControls()
{
    QFETCH(int, frames);
    QFETCH(double, rate);
    QFETCH(int, shownRate);
    Player->SetSource(NewClip(frames, rate));
    Player->Player().Open();
    for (const char* field : {"spinBoxIdx", "spinBoxMin", "spinBoxSec"})
    {
        QCOMPARE((*Player)->Number(field), 0);
    }
    QCOMPARE((*Player)->Find<QSpinBox>("spinBoxIdx")->maximum(), frames - 1);
    QCOMPARE((*Player)->Find<QSlider>("horizontalSlider")->maximum(), frames - 1);
    QCOMPARE((*Player)->Find<QSpinBox>("spinBoxIdx")->minimum(), 0);
    QCOMPARE((*Player)->Find<QSlider>("horizontalSlider")->minimum(), 0);
    QCOMPARE((*Player)->Max(), QStringLiteral("/%1").arg(frames - 1));
    QCOMPARE((*Player)->Number("spinBoxFPS"), shownRate);
    QVERIFY(!(*Player)->IsPlaying());
    QCOMPARE((*Player)->TakeFrames(), QVector<int>());  // the first frame waits for play or seek
}

void PreviewPlayerTest::OpenGoesToTheStart()
{
    Player->Show();
    Player->Player().Open();
    (*Player)->Type("spinBoxIdx", 7);
    Player->Player().Open();
    QCOMPARE((*Player)->Number("spinBoxIdx"), 0);
    QCOMPARE((*Player)->Slider(), 0);
    QCOMPARE((*Player)->Markers(), 0.0);
    static_cast<void>((*Player)->TakeFrames());
    (*Player)->Type("spinBoxIdx", 3);  // connected once Open is through
    QCOMPARE((*Player)->TakeFrames(), QVector<int>{3});
}

void PreviewPlayerTest::OpenEndsPlay()
{
    Player->Show();
    (*Player)->Click("pushButtonPlayPause");
    QVERIFY((*Player)->IsPlaying());
    Player->Player().Open();
    QVERIFY(!(*Player)->IsPlaying());
}

/** Then a good one: the told least frame 0 is back. */
void PreviewPlayerTest::MissingVideo()
{
    Player->SetSource(QStringLiteral("gone.avi"));
    Player->Player().Open();
    QCOMPARE((*Player)->Find<QSpinBox>("spinBoxIdx")->maximum(), -1);
    QCOMPARE((*Player)->Find<QSlider>("horizontalSlider")->maximum(), -1);
    QCOMPARE((*Player)->Max(), QStringLiteral("/-1"));
    QVERIFY(!(*Player)->Capture.IsOpen());
    Player->SetSource(Clip);
    Player->Player().Open();
    QCOMPARE((*Player)->Find<QSpinBox>("spinBoxIdx")->minimum(), 0);
    QCOMPARE((*Player)->Find<QSlider>("horizontalSlider")->minimum(), 0);
    QCOMPARE((*Player)->Number("spinBoxIdx"), 0);
    QCOMPARE((*Player)->Slider(), 0);
    QCOMPARE((*Player)->Max(), QStringLiteral("/9"));
    QCOMPARE((*Player)->Number("spinBoxFPS"), 25);
}

void PreviewPlayerTest::TextMax_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<double>("rate");
    QTest::addColumn<QString>("time");
    QTest::newRow("5400 frames at 30") << 5400 << 30.0 << "/2:59";  // 5399 frames, 179.97 s
    QTest::newRow("5401 frames at 30") << 5401 << 30.0 << "/3:0";
    QTest::newRow("neither number is padded") << 126 << 2.0 << "/1:2";              // 62.5 s
    QTest::newRow("a rate with decimals counts whole") << 1801 << 29.97 << "/1:0";  // 60.06 s
    QTest::newRow("one frame") << 1 << 25.0 << "/0:0";
    QTest::newRow("minutes do not wrap into hours") << 7201 << 2.0 << "/60:0";
}

void PreviewPlayerTest::TextMax()
{
    QFETCH(int, frames);
    QFETCH(double, rate);
    QFETCH(QString, time);
    const QString number = QStringLiteral("/%1").arg(frames - 1);
    Player->Show();
    Player->SetSource(NewClip(frames, rate));
    Player->Player().Open();
    QCOMPARE(Player->Player().TextMax(), number);
    (*Player)->Click("pushButtonTime");
    QCOMPARE(Player->Player().TextMax(), time);
    QCOMPARE((*Player)->Max(), time);
    Player->Player().Open();  // keeps to the time
    QCOMPARE((*Player)->Max(), time);
    (*Player)->Click("pushButtonTime");
    QCOMPARE((*Player)->Max(), number);
    QVERIFY((*Player)->Find<QWidget>("spinBoxIdx")->isVisible());
}

QTEST_MAIN(PreviewPlayerTest)
#include "previewplayer_test.moc"
