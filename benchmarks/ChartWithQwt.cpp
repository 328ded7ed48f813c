// The picture of bench_chart by Qwt, on Qt 5, for which Debian builds it. Prints the microseconds
// of one drawing, for the faster of lines and dots.

#include "benchmarks/ChartPicture.h"

#include <QApplication>
#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>

#include <cstdio>
#include <vector>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QwtPlot plot;
    plot.setTitle(QStringLiteral("Velocity"));
    plot.setCanvasBackground(Qt::white);
    plot.setAxisScale(QwtPlot::xBottom, 0, ChartPicture::SampleCount);
    plot.setAxisScale(QwtPlot::yLeft, ChartPicture::LeastValue, ChartPicture::LargestValue);
    plot.insertLegend(new QwtLegend);
    // A copy of the canvas would be one drawing more.
    static_cast<QwtPlotCanvas *>(plot.canvas())
        ->setPaintAttribute(QwtPlotCanvas::BackingStore, false);
    std::vector<QwtPlotCurve *> curves;
    for (int curve = 0; curve < ChartPicture::CurveCount; ++curve) {
        QVector<QPointF> samples;
        for (int i = 0; i < ChartPicture::SampleCount; ++i) {
            samples.append(QPointF(i, ChartPicture::sample(curve, i)));
        }
        auto *item = new QwtPlotCurve(QStringLiteral("curve %1").arg(curve));
        item->setPen(QPen(ChartPicture::Colors.at(static_cast<size_t>(curve))));
        item->setRenderHint(QwtPlotItem::RenderAntialiased);
        item->setSamples(samples);
        item->attach(&plot);
        curves.push_back(item);
    }
    plot.resize(ChartPicture::size());

    QImage canvas = ChartPicture::canvas();
    const auto paint = [&plot, &canvas] {
        plot.replot();
        plot.render(&canvas);
    };
    const double asLines = ChartPicture::paintUsecs(paint);
    for (QwtPlotCurve *curve : curves) {
        curve->setStyle(QwtPlotCurve::Dots);
    }
    const double asDots = ChartPicture::paintUsecs(paint);
    std::fprintf(stderr, "Qwt: lines %.1f, dots %.1f us\n", asLines, asDots);
    std::printf("%f\n", std::min(asLines, asDots));
    return 0;
}
