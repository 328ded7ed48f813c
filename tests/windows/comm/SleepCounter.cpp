#include "comm/SleepCounter.h"

#include <qt_windows.h>

#include <cstdint>
#include <cstring>

namespace {

thread_local SleepCounter *current = nullptr;

void WINAPI notedSleep(DWORD msecs)
{
    SleepCounter::note(std::chrono::milliseconds(msecs));
    Sleep(msecs);
}

/// Lets the functions of the toolkit's core that call Sleep() call notedSleep().
bool redirectToolkitsSleep()
{
    auto *const core = reinterpret_cast<std::uint8_t *>(GetModuleHandleW(L"Qt6Core.dll"));
    const auto *dos = reinterpret_cast<const IMAGE_DOS_HEADER *>(core);
    const auto *headers = reinterpret_cast<const IMAGE_NT_HEADERS *>(core + dos->e_lfanew);
    const auto &imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    bool done = false;
    for (auto *library =
             reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR *>(core + imports.VirtualAddress);
         library->Name != 0; ++library) {
        auto *name = reinterpret_cast<const IMAGE_THUNK_DATA *>(core + library->OriginalFirstThunk);
        auto *entry = reinterpret_cast<IMAGE_THUNK_DATA *>(core + library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++entry) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) {
                continue;
            }
            const auto *function =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME *>(core + name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char *>(function->Name), "Sleep") == 0) {
                DWORD protection = 0;
                VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection);
                entry->u1.Function = reinterpret_cast<std::uintptr_t>(&notedSleep);
                VirtualProtect(entry, sizeof *entry, protection, &protection);
                done = true;
            }
        }
    }
    return done;
}

} // namespace

SleepCounter::SleepCounter()
{
    static const bool redirected = redirectToolkitsSleep();
    current = redirected ? this : nullptr;
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
