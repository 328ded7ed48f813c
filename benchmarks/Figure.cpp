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
    QTextStream(stdout) << QStringLiteral("| %1 | %2 %4 | %3 %4 | %5 | %6 |\n")
                               .arg(name)
                               .arg(measured, 0, 'g', 4)
                               .arg(comparedWith, 0, 'g', 4)
                               .arg(unit)
                               .arg(measured / comparedWith, 0, 'g', 3)
                               .arg(goal ? QStringLiteral("at most %1").arg(*goal)
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
