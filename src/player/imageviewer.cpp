// SPDX-License-Identifier: MIT
#include "player/imageviewer.h"

#include <QDebug>
#include <QPainter>

#include <cstring>

void ImageViewer::setImage(QImage img)
{
    if (!Painted)
    {
        qDebug() << "Viewer dropped frame!";
    }
    const bool fits = !img.isNull() && img.size() == Image.size() &&
                      img.format() == Image.format() && img.bytesPerLine() == Image.bytesPerLine();
    if (fits)
    {
        std::memcpy(Image.bits(), img.constBits(), static_cast<std::size_t>(img.sizeInBytes()));
    }
    else
    {
        Image = img.copy();
    }
    Painted = false;
    if (size() != Image.size())
    {
        setFixedSize(Image.size());
    }
    update();
}

void ImageViewer::paintEvent(QPaintEvent* event)
{
    static_cast<void>(event);  // the whole picture is new
    if (Image.isNull())
    {
        return;
    }
    setAttribute(Qt::WA_OpaquePaintEvent);
    QPainter painter(this);
    painter.drawImage(0, 0, Image);
    Painted = true;
}
