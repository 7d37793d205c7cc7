// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QWidget>

/** Shows a frame in its own size. User interface thread only. */
class ImageViewer : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QImage image READ GetImage WRITE setImage)

public:
    ImageViewer() = default;  ///< without parent and image
    ImageViewer(const ImageViewer&) = delete;
    ImageViewer& operator=(const ImageViewer&) = delete;

    [[nodiscard]] QImage GetImage() const { return Image; }  ///< the last one; null at first

public slots:
    /**
     * Copies @p img, whose bits the sender may overwrite at once, and paints it with the next turn
     * of the event loop. An image that comes before the last was painted replaces it.
     */
    void setImage(QImage img);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // Field order is part of the design.
    bool Painted = true;  ///< the last image has been seen
    QImage Image;         ///< its own bits
};
