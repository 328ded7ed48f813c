// The handlers sleep 10 ms between two looks at the line. A campaign has no time for that: in this
// program a sleep takes a tenth of what was asked for. Stands before the function of the C library,
// since a program's own functions are found first.

#include <cerrno>
#include <ctime>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr long Divisor = 10;
constexpr long NanosecondsPerSecond = 1'000'000'000;

timespec shortened(const timespec &duration)
{
    const long nanoseconds = (duration.tv_sec * NanosecondsPerSecond + duration.tv_nsec) / Divisor;
    return {nanoseconds / NanosecondsPerSecond, nanoseconds % NanosecondsPerSecond};
}

} // namespace

extern "C" int nanosleep(const timespec *duration, timespec *remaining)
{
    const timespec shorter = shortened(*duration);
    return int(::syscall(SYS_nanosleep, &shorter, remaining));
}

extern "C" int clock_nanosleep(clockid_t clock, int flags, const timespec *duration,
                               timespec *remaining)
{
    const timespec shorter = (flags & TIMER_ABSTIME) != 0 ? *duration : shortened(*duration);
    return ::syscall(SYS_clock_nanosleep, clock, flags, &shorter, remaining) == 0 ? 0 : errno;
}
