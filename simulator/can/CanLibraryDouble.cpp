// A double of the CAN maker's library: the eight functions that a program calls, each handed over
// to the simulated bus through a socket. It is found in the real library's place by a program that
// is started with its directory in LD_LIBRARY_PATH, or on Windows in PATH.

#include "simulator/can/BusLine.h"

#include <algorithm>
#include <cstring>

#ifdef _WIN32
#define ZDR_EXPORT extern "C" __declspec(dllexport)
#else
#define ZDR_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

using namespace simulator;

/// The line to the simulated bus, which every call uses. Programs call from one thread.
BusLine &busLine()
{
    static BusLine line;
    return line;
}

CanAnswer execute(const CanCall &call)
{
    return busLine().execute(call);
}

template <typename... Arguments>
CanCall callOf(CanFunction function, Arguments... arguments)
{
    CanCall call;
    call.function = function;
    call.arguments = {static_cast<std::int64_t>(arguments)...};
    return call;
}

} // namespace

ZDR_EXPORT void canInitializeLibrary()
{
    // Comes before each opening. The line of an earlier one goes on, unless its bus is gone.
    const CanCall call = callOf(CanFunction::InitializeLibrary);
    if (execute(call).result < 0) {
        busLine() = BusLine::connect();
        execute(call);
    }
}

ZDR_EXPORT int canOpenChannel(int channel, int flags)
{
    return execute(callOf(CanFunction::OpenChannel, channel, flags)).result;
}

ZDR_EXPORT int canClose(int handle)
{
    return execute(callOf(CanFunction::Close, handle)).result;
}

ZDR_EXPORT int canSetBusParams(int handle, long code, unsigned int timeSegment1,
                               unsigned int timeSegment2, unsigned int jumpWidth,
                               unsigned int samples, unsigned int syncMode)
{
    return execute(callOf(CanFunction::SetBusParams, handle, code, timeSegment1, timeSegment2,
                          jumpWidth, samples, syncMode))
        .result;
}

ZDR_EXPORT int canBusOn(int handle)
{
    return execute(callOf(CanFunction::BusOn, handle)).result;
}

ZDR_EXPORT int canBusOff(int handle)
{
    return execute(callOf(CanFunction::BusOff, handle)).result;
}

ZDR_EXPORT int canWrite(int handle, long identifier, void *data, unsigned int length,
                        unsigned int flags)
{
    CanCall call = callOf(CanFunction::Write, handle, identifier, length, flags);
    std::memcpy(call.data.data(), data, std::min<std::size_t>(length, maxFrameLength));
    return execute(call).result;
}

ZDR_EXPORT int canRead(int handle, long *identifier, void *data, unsigned int *length,
                       unsigned int *flags, unsigned long *time)
{
    const CanAnswer answer =
        execute(callOf(CanFunction::Read, handle, flags != nullptr, time != nullptr));
    if (answer.result == 0) {
        *identifier = answer.frame.identifier;
        *length = answer.frame.length;
        std::memcpy(data, answer.frame.data.data(), answer.frame.length);
    }
    return answer.result;
}
