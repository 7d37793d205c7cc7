// SPDX-License-Identifier: MIT
#include "player/playerhands.h"

#include "graphs/gridandpos.h"
#include "graphs/simpleplot.h"
#include "player/imageviewer.h"
#include "support/buttonclick.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <opencv2/imgproc.hpp>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollArea>
#include <QSlider>
#include <QSpinBox>
#include <QStyleOptionSlider>
#include <QTest>

PlayerHands::PlayerHands(PreviewPlayer& player)
    : Player(player), Capture(*player.findChild<PlayerCapture*>())
{
    connect(&Capture, &PlayerCapture::frameReady, this,
            [this](const cv::Mat& frame, int /*index*/)
            {
                SawFrame = SawFrame || !frame.empty();
                Frames.append(frame.empty() ? -1 : TestVideo::NumberOf(frame));
            });
    connect(&Capture, &PlayerCapture::Position, this,
            [this](int frame) { Positions.append(frame); });
}

void PlayerHands::Click(const char* button) const
{
    ClickOn(Find<QAbstractButton>(button));
}

void PlayerHands::Type(const char* field, int number) const
{
    auto* box = Find<QSpinBox>(field);
    QVERIFY2(box->isVisible() && box->isEnabled(), field);
    box->selectAll();
    QTest::keyClicks(box, QString::number(number));
}

void PlayerHands::TypeZoom(double zoom) const
{
    auto* box = Find<QDoubleSpinBox>("doubleSpinBoxZoom");
    QVERIFY(box->isVisible() && box->isEnabled());
    box->selectAll();
    QTest::keyClicks(box, box->textFromValue(zoom));
    QCOMPARE(box->value(), zoom);
}

void PlayerHands::ChooseView(int index) const
{
    auto* box = Find<QComboBox>("comboBoxView");
    QVERIFY(box->isVisible() && box->isEnabled());
    const int steps = index - box->currentIndex();
    for (int i = 0; i < qAbs(steps); ++i)
    {
        QTest::keyClick(box, steps > 0 ? Qt::Key_Down : Qt::Key_Up);
    }
    QCOMPARE(box->currentIndex(), index);
}

QSlider& PlayerHands::TheSlider() const
{
    return *Find<QSlider>("horizontalSlider");
}

QPoint PlayerHands::Handle(int value) const
{
    const QSlider& slider = TheSlider();
    QStyleOptionSlider option;
    option.initFrom(&slider);
    option.orientation = slider.orientation();
    option.state |= QStyle::State_Horizontal;
    option.minimum = slider.minimum();
    option.maximum = slider.maximum();
    option.sliderPosition = value;
    option.sliderValue = value;
    option.subControls = QStyle::SC_All;
    return slider.style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider)
        .center();
}

void PlayerHands::TakeSlider() const
{
    QVERIFY(TheSlider().isVisible() && TheSlider().isEnabled());
    QTest::mousePress(&TheSlider(), Qt::LeftButton, Qt::NoModifier, Handle(Slider()));
    QVERIFY(TheSlider().isSliderDown());
}

void PlayerHands::MoveSlider(int value) const
{
    const QPoint pos = Handle(value);
    QMouseEvent move(QEvent::MouseMove, pos, TheSlider().mapToGlobal(pos), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&TheSlider(), &move);
    QCOMPARE(Slider(), value);
}

void PlayerHands::LetSliderGo(int value) const
{
    QTest::mouseRelease(&TheSlider(), Qt::LeftButton, Qt::NoModifier, Handle(value));
    QVERIFY(!TheSlider().isSliderDown());
}

int PlayerHands::Number(const char* spinBox) const
{
    return Find<QSpinBox>(spinBox)->value();
}

int PlayerHands::Slider() const
{
    return TheSlider().value();
}

QString PlayerHands::Max() const
{
    return Find<QLabel>("labelMax")->text();
}

QStringList PlayerHands::Areas() const
{
    QStringList names;
    for (const char* name :
         {"scrollAreaPlaySrc", "scrollAreaPlayExport", "scrollAreaH", "scrollAreaV"})
    {
        if (!Find<QScrollArea>(name)->isHidden())
        {
            names.append(QString::fromLatin1(name).mid(10));
        }
    }
    return names;
}

QImage PlayerHands::Source() const
{
    return Find<QScrollArea>("scrollAreaPlaySrc")->widget()->property("image").value<QImage>();
}

QImage PlayerHands::Stabilized() const
{
    return Find<QScrollArea>("scrollAreaPlayExport")->widget()->property("image").value<QImage>();
}

int PlayerHands::SourceNumber() const
{
    const QImage image = Source().convertToFormat(QImage::Format_BGR888);
    if (image.isNull())
    {
        return -1;
    }
    QImage bits = image.copy();
    return TestVideo::NumberOf(cv::Mat(bits.height(), bits.width(), CV_8UC3, bits.bits(),
                                       static_cast<std::size_t>(bits.bytesPerLine())));
}

SimplePlot& PlayerHands::Plot(const char* area) const
{
    return *qobject_cast<SimplePlot*>(Find<QScrollArea>(area)->widget());
}

GridAndPos& PlayerHands::Grid(const char* area) const
{
    return *dynamic_cast<GridAndPos*>(Plot(area).itemList(QwtPlotItem::Rtti_PlotGrid).constFirst());
}

QStringList PlayerHands::Curves(const char* area) const
{
    QStringList titles;
    for (const QwtPlotItem* item : Plot(area).itemList(QwtPlotItem::Rtti_PlotCurve))
    {
        titles.append(item->title().text());
    }
    return titles;
}

QString PlayerHands::XTitle(const char* area) const
{
    return Plot(area).axisTitle(QwtPlot::xBottom).text();
}

double PlayerHands::Markers() const
{
    const double position = Grid("scrollAreaH").Position;
    return position == Grid("scrollAreaV").Position ? position : -2.0;
}

QVector<int> PlayerHands::TakeFrames()
{
    const QVector<int> taken = Frames;
    Frames.clear();
    return taken;
}

QVector<int> PlayerHands::TakePositions()
{
    const QVector<int> taken = Positions;
    Positions.clear();
    return taken;
}

void PlayerHands::ExpectEnd(MessageGuard& guard) const
{
    if (SawFrame)
    {
        guard.Expect(QtWarningMsg, QStringLiteral("QMutex: destroying locked mutex"));
    }
}
