// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

#include <initializer_list>

class CameraPath;
class QLabel;
class SimplePlot;
struct Project;

/**
 * The curves of one axis of the camera path on a plot: which there are, what feeds them, the axis
 * titles, the margin text and the margin band. Each change rebuilds all curves from the path, at
 * once and, if it is announced, once more 300 ms later.
 *
 * User interface thread only; an update takes the engine lock.
 */
class FlowPlot : public QObject
{
    Q_OBJECT

public:
    /** @param project, path not owned; outlive the object. @param yTitle title of the left axis */
    FlowPlot(Project* project, CameraPath* path, QString yTitle);
    ~FlowPlot() override;
    FlowPlot(const FlowPlot&) = delete;
    FlowPlot& operator=(const FlowPlot&) = delete;

    /** Rebuilds label, axes and curves. @return false when there is nothing to show */
    bool Update();

    /** Update; when there is something to show, announces it and updates once more 300 ms later. */
    bool UpdateAndAnnounce();

    // Each stores its flag, then does as UpdateAndAnnounce.
    void SetShowCameraFlow(bool on);
    void SetShowDeviation(bool on);
    void SetShowCorrection(bool on);
    void SetShowMargin(bool on);
    void SetShowMarginShadow(bool on);
    void SetTimeAxis(bool on);
    void SetFlags(bool cameraFlow, bool deviation, bool margin, bool timeAxis);

    /** @param label gets the margin text; not owned, null for none */
    void SetMarginLabel(QLabel* label);

    void SetPosition(double frame);                                    ///< moves the marker
    [[nodiscard]] double GetPosition() const { return PlayPosition; }  ///< as last set, frames
    [[nodiscard]] double GetFps() const;  ///< of the path; -1 before the first one

    /**
     * The widget. It stays owned by this object, which must go before the widget that the plot is
     * put into.
     */
    [[nodiscard]] SimplePlot* GetPlot() const { return Plot; }

    // Handed on to the plot.
    void SetGrid(bool enable, bool position, bool line);
    void SetMouseMode(int mode);
    void ConnectPickers(QObject* receiver, const char* pointSlot, const char* rectSlot);
    void ClearLine();

    // The order of signals and slots is part of the design.
signals:
    void UpdateAvailable();  ///< new curves stand, after UpdateAndAnnounce

public slots:
    void WorkAround();                 ///< the second update of a change
    void ZoomHorizontal(bool Enable);  ///< whether the mouse wheel zooms the x axis
    void ZoomVertical(bool Enalbe);    ///< whether the mouse wheel zooms the y axis

private:
    struct CurveSource;

    [[nodiscard]] QString MarginText() const;
    void SetUpAxes();

    void RebuildCurves();

    /** Adds the curves that show, from @p index on. @return the index behind the last one */
    int AddCurves(int index, std::initializer_list<CurveSource> sources);
    void SetUpBand();

    // Field order is part of the design.
    Project* Proj;           ///< not owned
    SimplePlot* Plot;        ///< owned
    CameraPath* Path;        ///< not owned
    QVector<double> Frames;  ///< 0, 1, 2, ...: x of all curves
    bool ShowCameraFlow = true;
    bool ShowDeviation = true;
    bool ShowCorrection = false;
    bool ShowMargin = false;
    bool ShowMarginShadow = true;
    bool TimeAxis = false;
    QTimer RedrawTimer;
    QLabel* MarginLabel = nullptr;  ///< not owned
    QString YTitle;                 ///< title of the left axis, kept for nobody
    double PlayPosition = 0.0;      ///< frames
};
