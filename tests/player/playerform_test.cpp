// SPDX-License-Identifier: MIT
#include "batch/jobstate.h"
#include "graphs/gridandpos.h"
#include "graphs/simpleplot.h"
#include "player/imageviewer.h"
#include "player/loneplayer.h"
#include "support/testhome.h"

#include <QComboBox>
#include <QIcon>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>

namespace
{
const TestHome Home;

/** Methods that the class @p meta itself declares, in order. */
QStringList OwnMethods(const QMetaObject& meta)
{
    QStringList signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        signatures.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    return signatures;
}
}  // namespace

/** The player as it stands after its construction: form, slots and what the constructor sets. */
class PlayerFormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void SlotOrder();
    void Properties_data();
    void Properties();
    void ViewItems();
    void PlayPauseIcon();
    void FirstRow();
    void SecondRow();
    void PicturesBesideGraphs();
    void AreasHoldViewersAndPlots();
    void AxisTitles();
    void GridAndMarkerWithoutLine();
    void FramesCountAtFirst();
    void OnlyTheSourceShowsAtFirst();
    void WhatShowsHasTheWholeWidth();
    void EndWithoutVideo();

private:
    void ReadsFromLeftToRight(const QStringList& names);

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<LonePlayer> Player;
};

void PlayerFormTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Player = std::make_unique<LonePlayer>(QStringLiteral("gone.avi"));
}

void PlayerFormTest::cleanup()
{
    QCOMPARE(EndPlayer(Player, Guard), QStringList());
}

void PlayerFormTest::SlotOrder()
{
    const QMetaObject& meta = PreviewPlayer::staticMetaObject;
    QCOMPARE(OwnMethods(meta), (QStringList{"on_pushButtonReset_clicked()",
                                            "on_pushButtonPlayPause_clicked()",
                                            "on_pushButtonTime_clicked()",
                                            "on_checkBoxCrop_clicked(bool)",
                                            "on_checkBoxPath_clicked(bool)",
                                            "on_checkBoxMargin_clicked(bool)",
                                            "on_checkBoxShowMore_clicked(bool)",
                                            "ViewTypeUpdate(int)",
                                            "PositionUpdate(int)",
                                            "View(ViewType)",
                                            "SetFPS(int)",
                                            "SetZoom(double)",
                                            "TimeChanged(int)",
                                            "SetPosition(int)",
                                            "SetSliderPosition()",
                                            "Open()",
                                            "Close()",
                                            "Workaround()",
                                            "Ended()",
                                            "TextMax()"}));
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
    }
    QCOMPARE(meta.method(meta.methodCount() - 1).returnType(), int(QMetaType::QString));
}

void PlayerFormTest::Properties_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char* name, const char* property, const QVariant& value) {
        QTest::addRow("%s %s", name, property) << QByteArray(name) << QByteArray(property) << value;
    };
    const auto range = [&row](const char* name, QVariant minimum, QVariant maximum, QVariant value)
    {
        row(name, "minimum", minimum);
        row(name, "maximum", maximum);
        row(name, "value", value);
    };
    range("spinBoxIdx", 0, 1000000, 0);
    range("spinBoxMin", 0, 99999, 0);
    range("spinBoxSec", 0, 59, 0);
    range("spinBoxFPS", 1, 10000, 30);
    range("doubleSpinBoxZoom", 0.05, 8.0, 0.5);
    row("doubleSpinBoxZoom", "singleStep", 0.025);
    row("doubleSpinBoxZoom", "decimals", 3);
    row("pushButtonReset", "text", "Restart");
    row("pushButtonPlayPause", "text", "");
    row("pushButtonTime", "text", "Time/Frame");
    row("pushButtonTime", "checkable", false);  // what keeps the graphs from times after a job
    row("label_2", "text", "FPS");
    row("label_3", "text", "Zoom");
    row("checkBoxShowMore", "text", "More Settings");
    row("checkBoxShowMore", "checked", true);
    row("checkBoxCrop", "text", "Crop");
    row("checkBoxCrop", "checked", false);
    row("checkBoxPath", "text", "Path");
    row("checkBoxPath", "checked", true);
    row("checkBoxMargin", "text", "Margin");
    row("checkBoxMargin", "checked", true);
    row("comboBoxView", "currentIndex", 0);
    row("horizontalSlider", "orientation", Qt::Horizontal);
    for (const char* area :
         {"scrollAreaPlaySrc", "scrollAreaPlayExport", "scrollAreaH", "scrollAreaV"})
    {
        row(area, "widgetResizable", true);
    }
    for (const char* area : {"scrollAreaH", "scrollAreaV"})
    {
        row(area, "minimumWidth", 400);
        row(area, "maximumWidth", 1000);
    }
}

void PlayerFormTest::Properties()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    const QVariant actual = (*Player)->Find<QWidget>(name.constData())->property(property);
    QVERIFY(actual.isValid());
    QCOMPARE(actual.toString(), value.toString());
}

void PlayerFormTest::ViewItems()
{
    QCOMPARE(Player->Player().windowTitle(), QStringLiteral("Form"));
    const auto* box = (*Player)->Find<QComboBox>("comboBoxView");
    QStringList texts;
    for (int i = 0; i < box->count(); ++i)
    {
        texts.append(box->itemText(i));
    }
    QCOMPARE(texts, (QStringList{"View All", "View Src", "View Export", "View Graph",
                                 "View Src+Graph", "View Export+Graph"}));
    QCOMPARE(int(ViewAll), 0);
    QCOMPARE(int(ViewSrc), 1);
    QCOMPARE(int(ViewExport), 2);
    QCOMPARE(int(ViewGraph), 3);
    QCOMPARE(int(ViewSrcGraph), 4);
    QCOMPARE(int(ViewExportGraph), 5);
}

void PlayerFormTest::PlayPauseIcon()
{
    const QIcon expected(QStringLiteral(":/l/Logos/gelb_eee8aa/60h/PlayPause-2.png"));
    const QImage image = expected.pixmap(60, 60).toImage();
    QVERIFY(!image.isNull());
    const QIcon icon = (*Player)->Find<QPushButton>("pushButtonPlayPause")->icon();
    QCOMPARE(icon.pixmap(60, 60).toImage(), image);
}

void PlayerFormTest::ReadsFromLeftToRight(const QStringList& names)
{
    Player->Show();
    int right = -1;
    for (const QString& name : names)
    {
        const auto* widget = (*Player)->Find<QWidget>(qPrintable(name));
        QVERIFY2(widget->isVisible(), qPrintable(name));
        const int left = widget->mapTo(&Player->Player(), QPoint()).x();
        QVERIFY2(left > right, qPrintable(name));
        right = left + widget->width() - 1;
    }
}

void PlayerFormTest::FirstRow()
{
    ReadsFromLeftToRight({"spinBoxIdx", "labelMax", "pushButtonReset", "horizontalSlider",
                          "pushButtonPlayPause", "checkBoxShowMore"});
    (*Player)->Click("pushButtonTime");
    ReadsFromLeftToRight({"spinBoxMin", "spinBoxSec", "labelMax", "pushButtonReset"});
}

void PlayerFormTest::SecondRow()
{
    const QStringList names{"pushButtonTime", "label_2",           "spinBoxFPS",
                            "label_3",        "doubleSpinBoxZoom", "comboBoxView",
                            "checkBoxCrop",   "checkBoxPath",      "checkBoxMargin"};
    ReadsFromLeftToRight(names);
    const auto* row = (*Player)->Find<QWidget>("verticalWidget");
    for (const QString& name : names)
    {
        QVERIFY2(row->isAncestorOf((*Player)->Find<QWidget>(qPrintable(name))), qPrintable(name));
    }
    QVERIFY(!row->isAncestorOf((*Player)->Find<QWidget>("checkBoxShowMore")));
}

void PlayerFormTest::PicturesBesideGraphs()
{
    Player->ShowPaths(10);
    Player->Show();
    const auto place = [this](const char* name)
    {
        const auto* widget = (*Player)->Find<QWidget>(name);
        return QRect(widget->mapTo(&Player->Player(), QPoint()), widget->size());
    };
    QVERIFY(place("scrollAreaPlaySrc").bottom() < place("scrollAreaPlayExport").top());
    QVERIFY(place("scrollAreaH").bottom() < place("scrollAreaV").top());
    QVERIFY(place("scrollAreaPlaySrc").right() < place("scrollAreaH").left());
}

void PlayerFormTest::AreasHoldViewersAndPlots()
{
    QList<QWidget*> held;
    for (const char* area : {"scrollAreaPlaySrc", "scrollAreaPlayExport"})
    {
        auto* viewer = qobject_cast<ImageViewer*>((*Player)->Find<QScrollArea>(area)->widget());
        QVERIFY2(viewer != nullptr, area);
        QVERIFY(viewer->GetImage().isNull());
        held.append(viewer);
    }
    QVERIFY(held.at(0) != held.at(1));
    for (const char* area : {"scrollAreaH", "scrollAreaV"})
    {
        auto* plot = qobject_cast<SimplePlot*>((*Player)->Find<QScrollArea>(area)->widget());
        QVERIFY2(plot != nullptr, area);
    }
}

void PlayerFormTest::AxisTitles()
{
    QCOMPARE((*Player)->Plot("scrollAreaH").axisTitle(QwtPlot::yLeft).text(),
             QStringLiteral("right <- Horiz. pixel movem. -> left"));
    QCOMPARE((*Player)->Plot("scrollAreaV").axisTitle(QwtPlot::yLeft).text(),
             QStringLiteral("down <- Vert. pixel movem. -> up"));
}

void PlayerFormTest::GridAndMarkerWithoutLine()
{
    for (const char* area : {"scrollAreaH", "scrollAreaV"})
    {
        const GridAndPos& grid = (*Player)->Grid(area);
        QVERIFY(grid.xEnabled() && grid.yEnabled());
        QVERIFY(grid.ShowPosition);
        QVERIFY(!grid.ShowLine);
        QCOMPARE(grid.Position, 0.0);
    }
}

/** The largest number of the form stands there until a video is opened. */
void PlayerFormTest::FramesCountAtFirst()
{
    QVERIFY(!(*Player)->Find<QWidget>("spinBoxIdx")->isHidden());
    QVERIFY((*Player)->Find<QWidget>("spinBoxMin")->isHidden());
    QVERIFY((*Player)->Find<QWidget>("spinBoxSec")->isHidden());
    QCOMPARE((*Player)->Max(), QStringLiteral("/1000000"));
    QVERIFY(!(*Player)->Find<QWidget>("verticalWidget")->isHidden());
    QVERIFY(!(*Player)->IsPlaying());
    QVERIFY(!(*Player)->Capture.IsOpen());
}

void PlayerFormTest::OnlyTheSourceShowsAtFirst()
{
    QCOMPARE((*Player)->Areas(), QStringList("PlaySrc"));
}

/** But for the margins; graphs are never wider than they may be. */
void PlayerFormTest::WhatShowsHasTheWholeWidth()
{
    Player->Show();
    Player->Player().resize(990, 640);
    QTRY_COMPARE(Player->Player().size(), QSize(990, 640));
    const auto width = [this](const char* area)
    { return Player->Player().findChild<QScrollArea*>(QString::fromLatin1(area))->width(); };
    Player->Player().JobStateChanged(JobPathReady);
    Player->Player().View(ViewAll);
    QTRY_VERIFY2(width("scrollAreaPlaySrc") < 600, "beside the graphs");
    Player->Player().View(ViewSrc);
    QTRY_VERIFY2(width("scrollAreaPlaySrc") >= 970, "the source alone");
    Player->Player().View(ViewGraph);
    QTRY_VERIFY2(width("scrollAreaH") >= 970, "the graphs alone");
}

void PlayerFormTest::EndWithoutVideo()
{
    Player->Player().Open();
    Player->Player().Close();
    Player->Player().Close();
    QCOMPARE((*Player)->Number("spinBoxFPS"), 1);  // a missing video has the rate 0; 1 is the least
}

QTEST_MAIN(PlayerFormTest)
#include "playerform_test.moc"
