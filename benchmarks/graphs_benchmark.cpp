// SPDX-License-Identifier: MIT
#include "longvideo.h"

#include "graphs/flowplot.h"
#include "graphs/simpleplot.h"
#include "project/project.h"
#include "stabilizer/camerapath.h"

#include <qwt_plot_canvas.h>

#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace
{
constexpr QSize PlotSize(900, 500);

/** A plot of one axis that has been calculated: type 5, which shows four curves. */
class LongGraph
{
public:
    explicit LongGraph(int frames)
    {
        Proj.ExportSettings.CropFactor = 1.1;
        Proj.FlowH.AvgPathOrder = 5;
        Proj.FlowH.AvgPathImages = 12;
        Proj.FlowH.EnableManualPath = true;
        Path.Configure(&Proj, &Proj.FlowH, 0);
        Path.Generate(ShakyMotion(frames), 1920.0, 30.0);
        Flow.GetPlot()->resize(PlotSize);
        Flow.SetGrid(true, false, true);
    }

    /** The curves of the camera's flow, without those of the deviation. */
    void ShowFlow(bool band)
    {
        Flow.SetShowMarginShadow(band);
        Flow.SetFlags(true, false, false, false);
        Flow.GetPlot()->replot();
    }

    /** Paints everything on the canvas once, as the canvas does for its backing store. */
    void Paint()
    {
        Canvas.fill(Qt::white);
        QPainter painter(&Canvas);
        painter.setClipRect(Flow.GetPlot()->canvas()->contentsRect(), Qt::IntersectClip);
        DrawCanvas::Of(*Flow.GetPlot(), painter);
    }

    Project Proj;
    CameraPath Path{true};
    FlowPlot Flow{&Proj, &Path, QString()};

private:
    /** The way to the plot's own drawing of its canvas. */
    struct DrawCanvas : SimplePlot
    {
        static void Of(SimplePlot& plot, QPainter& painter)
        {
            (plot.*&DrawCanvas::drawCanvas)(&painter);
        }
    };

    QImage Canvas{PlotSize, QImage::Format_ARGB32_Premultiplied};
};

/** One update of a hidden plot: text, axes, and all curves anew. Argument: frames. */
void RebuildCurves(benchmark::State& state)
{
    LongGraph graph(static_cast<int>(state.range(0)));
    graph.ShowFlow(true);
    graph.Flow.GetPlot()->hide();
    for (auto unused : state)
    {
        static_cast<void>(unused);
        graph.Flow.Update();
    }
}
BENCHMARK(RebuildCurves)
    ->ArgName("frames")
    ->Arg(1800)
    ->Arg(18000)
    ->Arg(108000)
    ->Arg(216000)
    ->Unit(benchmark::kMillisecond);

/** One painting of four curves. Arguments: frames, with the band. */
void PaintCurves(benchmark::State& state)
{
    LongGraph graph(static_cast<int>(state.range(0)));
    graph.ShowFlow(state.range(1) != 0);
    for (auto unused : state)
    {
        static_cast<void>(unused);
        graph.Paint();
    }
}
BENCHMARK(PaintCurves)
    ->ArgNames({"frames", "band"})
    ->ArgsProduct({{1800, 18000, 108000, 216000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
}  // namespace
