#include "benchmarks/Figure.h"

#include <QTextStream>

#include <ctime>

namespace {

std::chrono::nanoseconds clockTime(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

void Figure::print() const
{
    QTextStream(stdout) << QStringLiteral("%1  %2 %4  against %3 %4  ratio %5  %6\n")
                               .arg(name, -44)
                               .arg(measured, 10, 'f', 3)
                               .arg(comparedWith, 0, 'f', 3)
                               .arg(unit)
                               .arg(measured / comparedWith, 0, 'f', 4)
                               .arg(goal ? QStringLiteral("goal <= %1").arg(*goal)
                                         : QStringLiteral("for the record"));
}

std::chrono::nanoseconds threadCpuTime()
{
    return clockTime(CLOCK_THREAD_CPUTIME_ID);
}

std::chrono::nanoseconds processCpuTime()
{
    return clockTime(CLOCK_PROCESS_CPUTIME_ID);
}
