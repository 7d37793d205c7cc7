// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/croprectangle.h"

#include <QBasicTimer>
#include <QImage>
#include <QMutex>
#include <QObject>

#include <opencv2/core/mat.hpp>

#include <cstdint>

struct ExportSettings;

/**
 * Makes the two pictures of the preview from each frame: the source, scaled, and the stabilized
 * frame, scaled and either with the crop drawn in or cut to it. It scales first, so that warp and
 * colours work on the small frame, and works right in the bits of its images. User interface thread
 * only.
 *
 * A receiver of an image copies it at once: the next frame overwrites its bits.
 */
class PlayerConverter : public QObject
{
    Q_OBJECT

    /** Converts every frame as it comes; without it, only the newest when the event loop runs. */
    Q_PROPERTY(bool processAll MEMBER processAll)

public:
    /** @param settings  not owned, outlive the object; read for the crop factor and offsets */
    PlayerConverter(QObject* parent, ExportSettings* settings);
    PlayerConverter(const PlayerConverter&) = delete;
    PlayerConverter& operator=(const PlayerConverter&) = delete;

    // The order of signals and slots is part of the design.
signals:
    void SrcImageReady(QImage img);  ///< the source, scaled
    void ExpImageReady(QImage img);  ///< the stabilized frame, scaled

public slots:
    /** @param frame  8-bit BGR; empty frames are ignored. @param index  its frame number */
    void processFrame(cv::Mat frame, int index);

    void SetZoom(double f);       ///< shown size divided by frame size, above 0.0
    void SetCrop(bool Enable);    ///< true cuts to the crop, false draws it in
    void NewStabilizationData();  ///< the next frame reads the settings anew

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void Process(const cv::Mat& frame, int index);
    void Queue(const cv::Mat& frame, int index);
    void PrepareBuffers(const cv::Mat& frame);
    [[nodiscard]] bool Stabilized(int index);
    void SendStabilized();

    // Field order is part of the design.
    ::ExportSettings* Export;  ///< not owned
    QBasicTimer QueueTimer;
    QImage SrcImage;  ///< RGB888, as the next two
    QImage ExpImage;
    QImage CropImage;
    cv::Mat PendingFrame;  ///< waits for QueueTimer
    cv::Mat SrcMat;        ///< header over the bits of SrcImage
    cv::Mat ExpMat;        ///< header over the bits of ExpImage
    cv::Mat CropMat;       ///< header over the bits of CropImage
    cv::Mat RoiMat;        ///< the crop, a part of ExpMat
    CropRectangle Crop;    ///< scaled pixels; valid while the buffers fit zoom and settings
    bool NewData = false;  ///< the next frame prepares the buffers anew
    /// Deliberate: locked by the first frame, which is dropped, and never unlocked; each later
    /// frame waits 10 ms for it.
    QMutex Gate;
    std::int32_t PendingIndex = 0;  ///< frame number of PendingFrame
    bool processAll = true;
    bool ShowCrop = true;  ///< cut to the crop
    double Zoom = 0.5;     ///< shown size divided by frame size
};
