#pragma once

#include <QImage>
#include <QSize>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <ctime>

/// The picture that every chart of the comparison draws, and how its drawing is timed. For Qt 5 and
/// Qt 6: one of the peers has no newer toolkit.
namespace ChartPicture {

constexpr int CurveCount = 2;
constexpr int SampleCount = 10000;
constexpr int LeastValue = 0;
constexpr int LargestValue = 100;
constexpr std::array<Qt::GlobalColor, CurveCount> Colors = {Qt::blue, Qt::red};

inline QSize size()
{
    return {800, 250};
}

inline QImage canvas()
{
    return QImage(size(), QImage::Format_ARGB32_Premultiplied);
}

/// Two waves with some noise, as of a motor that follows its target.
inline int sample(int curve, int i)
{
    return static_cast<int>(50 + 40 * std::sin(i / 40.0 + curve)) + i % 7 * 3 % 7;
}

/// CPU time of one call of @p paint in microseconds, the least of many.
template <typename Paint>
double paintUsecs(Paint paint)
{
    constexpr int WarmUps = 20;
    constexpr int Paints = 200;
    const auto cpuTime = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
    };
    double least = 1e9;
    for (int i = 0; i < WarmUps + Paints; ++i) {
        const double before = cpuTime();
        paint();
        if (i >= WarmUps) {
            least = std::min(least, cpuTime() - before);
        }
    }
    return least;
}

} // namespace ChartPicture
