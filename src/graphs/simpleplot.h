// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/plotcurve.h"

#include <QPen>
#include <QPolygon>
#include <QRectF>
#include <QVector>

#include <qwt_plot.h>

class GridAndPos;
class QwtPlotMagnifier;
class QwtPlotPanner;
class QwtPlotPicker;

/**
 * A plot of named curves with legend, grid, position marker, band, click line and mouse tools. It
 * knows nothing of stabilization. Every sample is drawn; none is thinned. User interface thread
 * only.
 */
class SimplePlot : public QwtPlot
{
    Q_OBJECT

public:
    explicit SimplePlot(QWidget* parent);
    ~SimplePlot() override;
    SimplePlot(const SimplePlot&) = delete;
    SimplePlot& operator=(const SimplePlot&) = delete;

    /** Brings axes and curves in step with the samples and paints; does nothing while hidden. */
    virtual void Refresh();

    // Curves. An index beyond the curves is ignored.

    /** Adds a curve without samples. @param xStep x distance of samples that are appended */
    void AddCurve(QString title, QColor colour, double xStep);

    /**
     * Replaces the samples by the pairs of @p x and @p y; of lists of two lengths nothing is taken.
     * @param x  rising, frame numbers
     */
    void SetCurveData(int index, QVector<double> y, QVector<double> x);

    /**
     * Appends @p count of the @p values from @p first on, or nothing when there are not so many.
     * Beyond PlotCurve::MaxSamples the oldest samples fall out.
     */
    void AppendCurveData(int index, QVector<double> values, int first, int count);

    void ClearCurves();   ///< removes all curves, the click line and the band
    void DetachCurves();  ///< takes the curves off the plot and keeps their samples

    /**
     * Scales the axes to all samples and draws the curves anew.
     *
     * Deliberate: a curve without samples counts as the point 0, 0 and pulls both axes there.
     */
    void Rescale();

    // Grid, marker, band and line.

    /** Shows or hides the lines of the grid, the position marker and the line of clicked points. */
    void SetGrid(bool enable, bool position, bool line);

    /** Moves the marker to frame @p x and paints at once; scales and curves stay as they are. */
    void SetPosition(double x);

    /** Stores a band: per frame a stroke of @p halfHeight above and below its centre. */
    void SetBand(QVector<double> centres, double halfHeight, QPen pen);
    void ShowBand(bool on);  ///< a band without centres stays off
    void ClearLine();        ///< forgets the clicked points

    // Axes.

    void SetXTitle(QString text);  ///< below the x axis
    void SetYTitle(QString text);  ///< turns the labels of the axis, too, along the axis

    /**
     * Labels the x axis with times.
     * @param msPerFrame  above 0.0 and at most 100000.0; else the labels are frame numbers
     */
    void SetTimeScale(double msPerFrame);

    void SetScaleEngines(bool logX, bool logY);                          ///< logarithmic or linear
    void SetLimits(double minX, double maxX, double minY, double maxY);  ///< clamps of Rescale

    // Mouse.

    /**
     * @param mode  0 pans and shows coordinates, 1 clicks points, 2 drags; others change nothing
     */
    void SetMouseMode(int mode);

    /**
     * Sends clicked points and dragged rectangles, in plot coordinates, to two slots.
     * @param pointSlot, rectSlot  as made by SLOT(), for a QPointF and a QRectF
     */
    void ConnectPickers(QObject* receiver, const char* pointSlot, const char* rectSlot);

    // The order of signals and slots is part of the design.
signals:
    void LeftClickPoint(QPointF pos);  ///< never sent: listeners come through ConnectPickers
    void RectDraged(QRectF rect);      ///< never sent

public slots:
    void Show(bool on);                ///< shows or hides the plot
    void ZoomHorizontal(bool Enable);  ///< whether the mouse wheel zooms the x axis
    void ZoomVertical(bool Enalbe);    ///< whether the mouse wheel zooms the y axis
    void LeftClick(QPointF pos);       ///< adds a point to the click line
    void pointsSelected(QRectF rect);  ///< a line for the log
    void Line(QPolygon poly);          ///< makes @p poly the click line, with a line for the log

protected:
    void showEvent(QShowEvent* e) override;  ///< the axes of what was plotted while hidden

private:
    void MakePickers();
    void DrawCurve(PlotCurve& curve);

    // Field order is part of the design.
    GridAndPos* Grid;            ///< the plot deletes it with its items
    QVector<PlotCurve*> Curves;  ///< owned; in the order of drawing and legend
    QPen TrackerPen;             ///< of the coordinates beside the mouse
    QPen PickerPen;              ///< the same while clicking and dragging
    // Children of the canvas.
    QwtPlotMagnifier* Magnifier;
    QwtPlotPanner* Panner;
    QwtPlotPicker* TrackerPicker;
    QwtPlotPicker* ClickPicker;
    QwtPlotPicker* RectPicker;
    // Clamps of the automatic scale.
    double MinX;
    double MaxX;
    double MinY;
    double MaxY;
};
