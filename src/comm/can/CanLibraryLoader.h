#pragma once

#include "comm/can/CanLibrary.h"

#include <optional>
#include <type_traits>

/// A filled table, with what it came from.
struct LoadedCanLibrary
{
    CanLibrary entries;
    void *module = nullptr; ///< the platform's handle of the loaded file; null if there is none
};

/// The platform's own way of finding a CAN library; nothing, if there is none. There is one source
/// for each platform.
std::optional<LoadedCanLibrary> loadPlatformCanLibrary();
/// Gives back one load of @p module.
void unloadPlatformModule(void *module);

/// Looks up the eight functions. @p find gets the name of an entry and returns its address as a
/// void pointer, or null; a function that isn't found keeps its stand-in.
template <typename Find>
CanLibrary lookUpCanLibrary(Find find)
{
    CanLibrary library;
    const auto lookUp = [&find](auto &entry, const char *name) {
        if (void *address = find(name)) {
            entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(address);
        }
    };
    lookUp(library.canInitializeLibrary, "canInitializeLibrary");
    lookUp(library.canOpenChannel, "canOpenChannel");
    lookUp(library.canClose, "canClose");
    lookUp(library.canSetBusParams, "canSetBusParams");
    lookUp(library.canBusOn, "canBusOn");
    lookUp(library.canBusOff, "canBusOff");
    lookUp(library.canWrite, "canWrite");
    lookUp(library.canRead, "canRead");
    return library;
}
