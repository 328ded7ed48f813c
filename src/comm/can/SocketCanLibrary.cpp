#include "comm/can/SocketCanLibrary.h"

#include "comm/can/KernelCanLink.h"
#include "comm/can/SocketCanChannel.h"

namespace {

std::unique_ptr<CanLink> findLink()
{
    const QString name = firstCanInterface();
    return name.isEmpty() ? nullptr : std::make_unique<KernelCanLink>(name);
}

/// The table holds plain functions, so what they work on belongs to the process.
SocketCanChannel &channel()
{
    static SocketCanChannel theChannel(findLink);
    return theChannel;
}

} // namespace

CanLibrary socketCanLibrary()
{
    CanLibrary library; // canInitializeLibrary stays as it is: there is nothing to prepare
    library.canOpenChannel = [](int number, int) { return channel().open(number); };
    library.canClose = [](int handle) { return channel().close(handle); };
    library.canSetBusParams = [](int handle, long code, unsigned int, unsigned int, unsigned int,
                                 unsigned int,
                                 unsigned int) { return channel().setBusParams(handle, code); };
    library.canBusOn = [](int handle) { return channel().busOn(handle); };
    library.canBusOff = [](int handle) { return channel().busOff(handle); };
    library.canWrite = [](int handle, long identifier, void *data, unsigned int length,
                          unsigned int) {
        return channel().write(handle, identifier, data, length);
    };
    library.canRead = [](int handle, long *identifier, void *data, unsigned int *length,
                         unsigned int *, unsigned long *) {
        return channel().read(handle, identifier, data, length);
    };
    return library;
}
