#pragma once

#include <QString>

#include <chrono>
#include <optional>

/// One measured figure against what it is compared with, printed as one row of a Markdown table:
/// name, measured value, floor or peer, ratio, goal.
struct Figure
{
    QString name;
    double measured;
    double comparedWith;
    QString unit;
    std::optional<double> goal; ///< the ratio that is aimed at, at most; none: for the record

    void print() const;
};

/// CPU time that the calling thread has used.
std::chrono::nanoseconds threadCpuTime();
/// CPU time that the whole process has used.
std::chrono::nanoseconds processCpuTime();
