// The CAN library on Linux: the maker's, if it is installed. Otherwise the kernel, which drives the
// same interfaces itself.

#include "comm/can/CanLibraryLoader.h"
#include "comm/can/KernelCanLink.h"
#include "comm/can/SocketCanLibrary.h"

#include <dlfcn.h>

std::optional<LoadedCanLibrary> loadPlatformCanLibrary()
{
    if (void *module = dlopen("libcanlib.so.1", RTLD_NOW | RTLD_LOCAL)) {
        const auto find = [module](const char *name) { return dlsym(module, name); };
        return LoadedCanLibrary{lookUpCanLibrary(find), module};
    }
    if (kernelHasCan()) {
        return LoadedCanLibrary{socketCanLibrary(), nullptr};
    }
    return std::nullopt;
}

void unloadPlatformModule(void *module)
{
    dlclose(module);
}
