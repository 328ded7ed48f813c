#pragma once

#include "ChartTest.h"

/// A chart whose places are known numbers.
namespace FixedChart {

// What follows from a chart of 400 x 250: width and height less 1 are 399 and 249.
inline constexpr int BaseY = 235; // 249 - 14
inline constexpr int PlotHeight = 210; // 249 - 39
inline constexpr int RightEnd = 380; // 399 - 119 + 100
inline constexpr int NewestX = 378;
inline constexpr int Columns = 280;

/// A chart of 400 x 250 with the fixed scale 0 to 100, so that 1 is 2.1 pixels.
class Chart : public DrawerArea
{
public:
    Chart()
    {
        resize(400, 250);
        doManualScaling();
        setMaxSamples(1000);
    }
    void setScale(int min, int max)
    {
        setMinValue(min);
        setMaxValue(max);
    }
};

} // namespace FixedChart
