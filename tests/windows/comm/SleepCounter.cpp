#include "comm/SleepCounter.h"

#include "support/ImportedFunction.h"

namespace {

thread_local SleepCounter *current = nullptr;

void WINAPI notedSleep(DWORD msecs)
{
    SleepCounter::note(std::chrono::milliseconds(msecs));
    Sleep(msecs);
}

} // namespace

SleepCounter::SleepCounter()
{
    static const ImportedFunction sleepOfTheToolkit(L"Qt6Core.dll", "Sleep",
                                                    reinterpret_cast<void *>(&notedSleep));
    current = this;
}

SleepCounter::~SleepCounter()
{
    current = nullptr;
}

bool SleepCounter::hasSeenPauses(std::size_t count) const
{
    using namespace std::chrono_literals;
    return m_sleeps == std::vector<std::chrono::nanoseconds>(count, 10ms);
}

void SleepCounter::note(std::chrono::nanoseconds duration)
{
    if (current) {
        current->m_sleeps.push_back(duration);
    }
}
