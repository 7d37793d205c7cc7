// SPDX-License-Identifier: MIT
#pragma once

#include "player/playercapture.h"
#include "player/previewplayer.h"

#include <QImage>
#include <QObject>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QVector>

class GridAndPos;
class MessageGuard;
class QSlider;
class SimplePlot;

/** A player and the user's hands on it. Also notes what its frame source hands on. */
class PlayerHands : public QObject
{
public:
    /** @param player  outlives this object's use */
    explicit PlayerHands(PreviewPlayer& player);

    template <typename Object>
    [[nodiscard]] Object* Find(const char* name) const
    {
        auto* object = Player.findChild<Object*>(QString::fromLatin1(name));
        if (object == nullptr)
        {
            qFatal("the player has no %s", name);
        }
        return object;
    }

    void Click(const char* button) const;  ///< also a check box; on show, enabled
    void Type(const char* field, int number) const;
    void TypeZoom(double zoom) const;
    void ChooseView(int index) const;  ///< with the arrow keys

    // A drag of the slider, step by step.
    void TakeSlider() const;
    void MoveSlider(int value) const;
    void LetSliderGo(int value) const;

    [[nodiscard]] bool IsPlaying() const { return Capture.IsPlaying(); }
    [[nodiscard]] int Number(const char* spinBox) const;
    [[nodiscard]] int Slider() const;         ///< value
    [[nodiscard]] QString Max() const;        ///< text of the label
    [[nodiscard]] QStringList Areas() const;  ///< scroll areas that are not hidden, by name
    [[nodiscard]] QImage Source() const;
    [[nodiscard]] QImage Stabilized() const;
    [[nodiscard]] int SourceNumber() const;  ///< of a numbered clip; -1 without a picture

    [[nodiscard]] SimplePlot& Plot(const char* area) const;
    [[nodiscard]] GridAndPos& Grid(const char* area) const;
    [[nodiscard]] QStringList Curves(const char* area) const;  ///< titles
    [[nodiscard]] QString XTitle(const char* area) const;
    /** Where the markers of both plots stand; -2 when they differ. */
    [[nodiscard]] double Markers() const;

    QVector<int> TakeFrames();     ///< numbers that the frames on their way show; forgets them
    QVector<int> TakePositions();  ///< all that were reported; forgets them

    /** Announces what the end of the converter says when it has seen a frame. */
    void ExpectEnd(MessageGuard& guard) const;

    PreviewPlayer& Player;
    PlayerCapture& Capture;

private:
    [[nodiscard]] QPoint Handle(int value) const;  ///< its middle
    [[nodiscard]] QSlider& TheSlider() const;

    QVector<int> Frames;
    QVector<int> Positions;
    bool SawFrame = false;
};
