// The CAN library on Windows: the maker's, if its driver package is installed.

#include "comm/can/CanLibraryLoader.h"

#include <qt_windows.h>

std::optional<LoadedCanLibrary> loadPlatformCanLibrary()
{
    const HMODULE module = LoadLibraryW(L"canlib32.dll");
    if (!module) {
        return std::nullopt;
    }
    const auto find = [module](const char *name) {
        return reinterpret_cast<void *>(GetProcAddress(module, name));
    };
    return LoadedCanLibrary{lookUpCanLibrary(find), module};
}

void unloadPlatformModule(void *module)
{
    FreeLibrary(static_cast<HMODULE>(module));
}
