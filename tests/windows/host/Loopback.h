#pragma once

#include "simulator/serving/FileDescriptor.h"

/// Stream sockets between the programs of one machine.
namespace Loopback {

/// Listens at a free TCP port; none if the system has none.
simulator::FileDescriptor listen();
/// The number of the port that @p listener listens at.
int portOf(const simulator::FileDescriptor &listener);
/// Waits for the next program; none when @p listener has been shut down.
simulator::FileDescriptor accept(const simulator::FileDescriptor &listener);

/// Reads exactly @p size bytes. False if the other end has gone before.
bool readAll(int socket, void *data, std::size_t size);
/// Writes all of @p size bytes. False if the other end has gone.
bool writeAll(int socket, const void *data, std::size_t size);

} // namespace Loopback
