// The picture of bench_chart by QCustomPlot. Prints the microseconds of one drawing, for the faster
// of lines and dots.

#include "benchmarks/ChartPicture.h"

#include <QApplication>
#include <qcustomplot.h>

#include <cstdio>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QCustomPlot plot;
    plot.resize(ChartPicture::size());
    plot.setViewport(QRect(QPoint(), ChartPicture::size()));
    plot.legend->setVisible(true);
    plot.xAxis->setRange(0, ChartPicture::SampleCount);
    plot.yAxis->setRange(ChartPicture::LeastValue, ChartPicture::LargestValue);
    QVector<double> times(ChartPicture::SampleCount);
    QVector<double> values(ChartPicture::SampleCount);
    for (int curve = 0; curve < ChartPicture::CurveCount; ++curve) {
        for (int i = 0; i < ChartPicture::SampleCount; ++i) {
            times[i] = i;
            values[i] = ChartPicture::sample(curve, i);
        }
        QCPGraph *graph = plot.addGraph();
        graph->setName(QStringLiteral("curve %1").arg(curve));
        graph->setPen(QPen(ChartPicture::Colors.at(static_cast<size_t>(curve))));
        graph->setData(times, values, true);
    }

    // Only the drawing into its own buffer counts, not what brings that to the screen.
    const auto replot = [&plot] { plot.replot(); };
    const double asLines = ChartPicture::paintUsecs(replot);
    for (int curve = 0; curve < ChartPicture::CurveCount; ++curve) {
        plot.graph(curve)->setLineStyle(QCPGraph::lsNone);
        plot.graph(curve)->setScatterStyle(QCPScatterStyle::ssDot);
    }
    const double asDots = ChartPicture::paintUsecs(replot);
    std::fprintf(stderr, "QCustomPlot: lines %.1f, dots %.1f us\n", asLines, asDots);
    std::printf("%f\n", std::min(asLines, asDots));
    return 0;
}
