// SPDX-License-Identifier: MIT
#include "player/shownplayer.h"

#include <opencv2/imgproc.hpp>

#include <QAbstractButton>
#include <QDoubleSpinBox>
#include <QSpinBox>
#include <QTest>

namespace
{
cv::Mat BlueFirst(const QImage& image)
{
    cv::Mat picture;
    if (!image.isNull())
    {
        QImage rgb = image.convertToFormat(QImage::Format_RGB888);
        const cv::Mat header(rgb.height(), rgb.width(), CV_8UC3, rgb.bits(),
                             static_cast<std::size_t>(rgb.bytesPerLine()));
        cv::cvtColor(header, picture, cv::COLOR_RGB2BGR);
    }
    return picture;
}
}  // namespace

ShownPlayer::ShownPlayer(const TestWindow& window) : Hands(*window->findChild<PreviewPlayer*>())
{
    window.ClickTab(PlayerTab);
}

void ShownPlayer::OpenVideo() const
{
    Hands.Click("pushButtonPlayPause");
    QVERIFY(Hands.IsPlaying());
    Hands.Click("pushButtonPlayPause");
    QVERIFY(!Hands.IsPlaying());
    Hands.Click("pushButtonReset");  // for nothing: the first frame of all is dropped
    Hands.Click("pushButtonReset");
}

void ShownPlayer::SetChecked(const char* box, bool isChecked) const
{
    const auto* widget = Hands.Find<QAbstractButton>(box);
    if (widget->isChecked() != isChecked)
    {
        Hands.Click(box);
    }
    QCOMPARE(widget->isChecked(), isChecked);
}

void ShownPlayer::StepFrame() const
{
    QTest::keyClick(Hands.Find<QSpinBox>("spinBoxIdx"), Qt::Key_Up);
}

void ShownPlayer::DragSlider(int frame) const
{
    Hands.TakeSlider();
    Hands.MoveSlider(frame);
    Hands.LetSliderGo(frame);
}

void ShownPlayer::PressZoom(Qt::Key key) const
{
    QTest::keyClick(Hands.Find<QDoubleSpinBox>("doubleSpinBoxZoom"), key);
}

double ShownPlayer::Zoom() const
{
    return Hands.Find<QDoubleSpinBox>("doubleSpinBoxZoom")->value();
}

cv::Mat ShownPlayer::Source() const
{
    return BlueFirst(Hands.Source());
}

cv::Mat ShownPlayer::Stabilized() const
{
    return BlueFirst(Hands.Stabilized());
}
