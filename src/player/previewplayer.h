// SPDX-License-Identifier: MIT
#pragma once

#include "batch/jobstate.h"
#include "graphs/flowplot.h"
#include "player/playercapture.h"
#include "player/playerconverter.h"

#include <QString>
#include <QWidget>

#include <cstdint>

class ImageViewer;

namespace Ui
{
class PreviewPlayer;
}

/** Items of comboBoxView. */
enum ViewType : std::int32_t
{
    ViewAll = 0,
    ViewSrc = 1,
    ViewExport = 2,
    ViewGraph = 3,
    ViewSrcGraph = 4,
    ViewExportGraph = 5,
};

/**
 * The player tab: plays source and stabilized picture one above the other, beside the graphs of the
 * horizontal and the vertical path. It has no thread of its own; a job stops its play. User
 * interface thread only.
 *
 * The controls that seek are connected while the player stands; while it plays they only follow.
 */
class PreviewPlayer : public QWidget
{
    Q_OBJECT

public:
    /** @param project  not owned, outlives the player */
    PreviewPlayer(QWidget* parent, Project* project);
    ~PreviewPlayer() override;
    PreviewPlayer(const PreviewPlayer&) = delete;
    PreviewPlayer& operator=(const PreviewPlayer&) = delete;

    /** Brings buttons, view and graphs in step with @p state, a JobState; a busy one stops play. */
    void JobStateChanged(int state);

    // The order of the slots is part of the design.
public slots:
    // Slots of the widgets, connected by name.

    void on_pushButtonReset_clicked();
    void on_pushButtonPlayPause_clicked();
    void on_pushButtonTime_clicked();
    void on_checkBoxCrop_clicked(bool checked);
    void on_checkBoxPath_clicked(bool checked);
    void on_checkBoxMargin_clicked(bool checked);
    void on_checkBoxShowMore_clicked(bool checked);

    void ViewTypeUpdate(int val);  ///< View and, in pause, the picture anew. @param val  a ViewType

    /**
     * Moves the controls to a frame. Deliberate: with the margin band on, the markers of the graphs
     * stay during play; painting the band takes too long.
     */
    void PositionUpdate(int FrameNr);

    /**
     * Chooses what shows. Deliberate: before there is a path it is the source, whatever @p Type.
     */
    void View(ViewType Type);

    void SetFPS(int FPS);     ///< pace of the play, frames per second
    void SetZoom(double f);   ///< size of both pictures over that of the frame, above 0.0
    void TimeChanged(int n);  ///< seeks to the minutes and seconds on show
    /**
     * Seeks to a frame. Deliberate: not to the one that was sought last, even when a play has moved
     * on since, as the controls are connected several times over.
     */
    void SetPosition(int n);
    void SetSliderPosition();  ///< the same for the slider

    void Open();   ///< the project's source; a video that does not open counts 0 frames
    void Close();  ///< ends the play and closes the video; frame 0 is the position then

    /**
     * Opens the source unless it plays, and draws the graphs while frame 0 shows; nothing is
     * connected to it.
     */
    void Workaround();

    void Ended();       ///< into pause
    QString TextMax();  ///< the end of the video, as frame or as minutes and seconds

private:
    void ConnectControls();
    void DisconnectControls();
    void Seek(int frame);
    void UpdateTimeMode();
    void UpdateGraphs();

    // Field order is part of the design.
    Ui::PreviewPlayer* ui;  ///< owned
    Project* Proj;          ///< not owned
    FlowPlot FlowHorizontal;
    FlowPlot FlowVertical;
    PlayerCapture Capture;
    PlayerConverter Converter;
    ImageViewer* SrcViewer;        ///< of its scroll area
    ImageViewer* ExpViewer;        ///< of its scroll area
    std::int32_t State = JobNone;  ///< the last JobState
    bool TimeMode = false;         ///< minutes and seconds instead of frames
    std::int32_t LastSeek = -1;    ///< frame number
};
