#pragma once

#include <QtGlobal>

/// How bytes go through a port, whatever the platform.
namespace PortTransfer {

constexpr qint64 ReadBlockSize = 256; ///< bytes that one transfer reads at most
constexpr qint64 WriteBlockSize = 512; ///< bytes that one transfer writes at most
/// How long one transfer may take, in milliseconds. The interval timeout between two characters,
/// 65535 ms, is longer and therefore never ends one.
constexpr int TransferLimit = 5000;

/// What a wait for a port's events has found.
struct Events
{
    bool toRead = false; ///< a character came
    bool toWrite = false; ///< the port takes more
};

} // namespace PortTransfer
