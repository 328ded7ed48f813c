// The handlers sleep 10 ms between two looks at the line, half a second for a module that is
// silent, and in a campaign most are. In this program the first sleeps of a wait are just long
// enough for a module to answer, and the others take no time. Stands before the function of the C
// library, since a program's own functions are found first.

#include <chrono>
#include <ctime>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr int RealSleeps = 8;
constexpr timespec RealSleep{0, 100'000};
/// A longer time since the last sleep means that this is another wait.
constexpr auto LongestLook = 100us;

} // namespace

extern "C" int nanosleep(const timespec *, timespec *)
{
    thread_local Clock::time_point lastSleep;
    thread_local int sleeps = 0;
    sleeps = Clock::now() - lastSleep > LongestLook ? 1 : sleeps + 1;
    if (sleeps <= RealSleeps) {
        ::syscall(SYS_nanosleep, &RealSleep, nullptr);
    }
    lastSleep = Clock::now();
    return 0;
}
