// Painting a chart with two curves: with a short history against long ones, and against two
// plotting libraries that show as many samples. Adding samples to a full history.

#include "benchmarks/ChartPicture.h"
#include "benchmarks/Figure.h"
#include "charts/ChartLine.h"
#include "charts/DrawerArea.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <cstdlib>
#include <limits>
#include <memory>
#include <vector>

namespace {

constexpr double SameGoal = 1.1;
constexpr double PeerGoal = 0.5;
constexpr int Rounds = 5;

/// A chart with the picture's curves.
class Chart
{
public:
    explicit Chart(int history)
    {
        m_area.resize(ChartPicture::size());
        m_area.setMaxSamples(history);
        m_area.setTitle(QStringLiteral("Velocity"));
        for (int curve = 0; curve < ChartPicture::CurveCount; ++curve) {
            m_lines.push_back(std::make_unique<ChartLine>(
                quint8(1), quint8(0), quint8(6), static_cast<quint8>(curve),
                QStringLiteral("curve %1").arg(curve),
                QColor(ChartPicture::Colors.at(static_cast<size_t>(curve)))));
            m_area.addChartLine(m_lines.back().get());
            for (int i = 0; i < history; ++i) {
                // Counted from the newest, so that every history shows the same.
                m_lines.back()->addValue(ChartPicture::sample(curve, history - i));
            }
        }
    }

    /// The least of its measured paints so far, in microseconds.
    double paintUsecs()
    {
        m_usecs = std::min(m_usecs, ChartPicture::paintUsecs([this] { m_area.render(&m_canvas); }));
        return m_usecs;
    }

private:
    std::vector<std::unique_ptr<ChartLine>> m_lines;
    DrawerArea m_area;
    QImage m_canvas = ChartPicture::canvas();
    double m_usecs = std::numeric_limits<double>::max();
};

/// What a peer's program measures as its fastest style, in microseconds; negative if it fails.
double peerUsecs(const QString &program)
{
    QProcess process;
    process.start(program, {});
    if (!process.waitForFinished(-1) || process.exitCode() != EXIT_SUCCESS) {
        return -1;
    }
    return process.readAllStandardOutput().trimmed().toDouble();
}

/// The paint of the picture; prints the rows for the histories on the way.
double measureHistories()
{
    Chart least(1000);
    Chart normal(ChartPicture::SampleCount);
    Chart large(1000000);
    for (int round = 0; round < Rounds; ++round) { // in turns: the machine is shared
        least.paintUsecs();
        normal.paintUsecs();
        large.paintUsecs();
    }
    const QString unit = QStringLiteral("us");
    Figure{QStringLiteral("chart, 10,000 samples against 1,000"), normal.paintUsecs(),
           least.paintUsecs(), unit, SameGoal}
        .print();
    Figure{QStringLiteral("chart, 1,000,000 samples against 1,000"), large.paintUsecs(),
           least.paintUsecs(), unit, SameGoal}
        .print();
    return normal.paintUsecs();
}

bool measurePeer(const QString &name, const QString &program, double ours)
{
    if (program.isEmpty()) {
        return true; // this build has none
    }
    const double usecs = peerUsecs(program);
    Figure{QStringLiteral("chart, against ") + name, ours, usecs, QStringLiteral("us"), PeerGoal}
        .print();
    return usecs > 0;
}

void measureAdding()
{
    constexpr int Million = 1000000;
    constexpr int Millions = 10;
    constexpr int AtEachEnd = 3;
    DrawerArea area;
    area.setMaxSamples(ChartPicture::SampleCount);
    ChartLine line(1, 0, 6, 1, QStringLiteral("line"), Qt::blue);
    area.addChartLine(&line);
    const auto addMillion = [&area] {
        const auto before = threadCpuTime();
        for (int i = 0; i < Million; ++i) {
            area.addValue(1, 0, 6, 1, i);
        }
        return static_cast<double>((threadCpuTime() - before).count()) / Million;
    };
    // The least of some, at both ends: the machine is shared.
    double first = std::numeric_limits<double>::max();
    double last = first;
    for (int i = 0; i < Millions; ++i) {
        const double nsecs = addMillion();
        first = i < AtEachEnd ? std::min(first, nsecs) : first;
        last = i >= Millions - AtEachEnd ? std::min(last, nsecs) : last;
    }
    Figure{QStringLiteral("add a sample, the last of 10 million"), last, first,
           QStringLiteral("ns"), SameGoal}
        .print();
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const double ours = measureHistories();
    const bool done =
        measurePeer(QStringLiteral("QCustomPlot"), QStringLiteral(ZDR_QCUSTOMPLOT_PEER), ours)
        && measurePeer(QStringLiteral("Qwt"), QStringLiteral(ZDR_QWT_PEER), ours);
    measureAdding();
    return done ? EXIT_SUCCESS : EXIT_FAILURE;
}
