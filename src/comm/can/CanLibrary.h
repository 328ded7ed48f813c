#pragma once

#include <QtGlobal>

/// The calling convention of a CAN library's functions: that of the platform's libraries.
#if defined(Q_OS_WIN) && defined(Q_PROCESSOR_X86_32)
#define CANLIB_API __stdcall
#else
#define CANLIB_API
#endif

/// What stands in for a function that a library lacks, and for all of them before a library is
/// loaded: it does nothing and answers as a failure, so that nobody calls a null pointer.
namespace MissingCanEntry {

constexpr int Answer = -1;

inline void CANLIB_API initialize() { }

template <typename... Arguments>
int CANLIB_API fail(Arguments...)
{
    return Answer;
}

} // namespace MissingCanEntry

/// The eight functions of CANlib through which the bus is reached, or of whatever takes its place.
/// Each field carries the name of the library's entry. All but canRead() answer 0 or above on
/// success and a negative code on failure, and none of them blocks.
///
/// Identifiers and the bit rate code are long. That is the 32 bits of the records on Windows; on a
/// platform with a wider long, a library that writes an identifier of either width finds room.
struct CanLibrary
{
    /// Prepares the library. To be called before the others; again does no harm.
    void(CANLIB_API *canInitializeLibrary)() = MissingCanEntry::initialize;
    /// Opens channel @p channel, counted from 0. Answers a handle.
    int(CANLIB_API *canOpenChannel)(int channel, int flags) = MissingCanEntry::fail;
    /// Closes the channel.
    int(CANLIB_API *canClose)(int handle) = MissingCanEntry::fail;
    /// Sets the speed of the bus by a predefined code (see CanBitRate.h), which leaves the five
    /// timing arguments unused.
    int(CANLIB_API *canSetBusParams)(int handle, long code, unsigned int timeSegment1,
                                     unsigned int timeSegment2, unsigned int jumpWidth,
                                     unsigned int samples,
                                     unsigned int syncMode) = MissingCanEntry::fail;
    /// Takes the channel on the bus.
    int(CANLIB_API *canBusOn)(int handle) = MissingCanEntry::fail;
    /// Takes the channel off the bus.
    int(CANLIB_API *canBusOff)(int handle) = MissingCanEntry::fail;
    /// Queues one frame of @p length bytes and returns at once. @p flags 0 is a standard frame.
    int(CANLIB_API *canWrite)(int handle, long identifier, void *data, unsigned int length,
                              unsigned int flags) = MissingCanEntry::fail;
    /// Takes one received frame and answers 0. Any other answer: there was none, and nothing is
    /// written. @p data has room for 8 bytes; @p flags and @p time may be null.
    int(CANLIB_API *canRead)(int handle, long *identifier, void *data, unsigned int *length,
                             unsigned int *flags, unsigned long *time) = MissingCanEntry::fail;
};

/// The one table of the process. Before the first successful loadCanLibrary() every function in it
/// answers as a failure.
const CanLibrary &canLibrary();

/// Loads the machine's CAN library by its name and fills the table. May be called again at each
/// open, which just loads again. False, if the machine has no CAN software at all; the table then
/// stays as it was.
bool loadCanLibrary();

/// Empties the table and unloads the library. Nothing calls it: the library stays loaded until the
/// process ends, since its driver may have threads that are under way.
void unloadCanLibrary();
