#pragma once

#include <QString>

/// The node of a terminal in /dev, and who may use it.
namespace PortNode {

/// Opens the node @p name, a path or the bare name of a node in /dev, without waiting for a
/// carrier. @p access is O_RDONLY, O_WRONLY or O_RDWR. Returns a descriptor that the caller has to
/// close, -1 on failure.
int open(const QString &name, int access);

/// Takes the lock of the node that @p descriptor has open, and returns whether the port is free:
/// false if someone else has the lock, or keeps others out without it. The lock ends with
/// the descriptor. Nothing else about the port is asked or changed.
bool lock(int descriptor);

} // namespace PortNode
