#include "comm/can/CanLibrary.h"

#include "comm/can/CanLibraryLoader.h"

#include <utility>

namespace {

LoadedCanLibrary &shared()
{
    static LoadedCanLibrary library;
    return library;
}

} // namespace

const CanLibrary &canLibrary()
{
    return shared().entries;
}

bool loadCanLibrary()
{
    const std::optional<LoadedCanLibrary> loaded = loadPlatformCanLibrary();
    if (loaded) {
        shared() = *loaded;
    }
    return loaded.has_value();
}

void unloadCanLibrary()
{
    if (void *module = std::exchange(shared(), {}).module) {
        unloadPlatformModule(module);
    }
}
