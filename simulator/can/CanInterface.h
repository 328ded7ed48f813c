#pragma once

#include "simulator/serving/FileDescriptor.h"

#include <string>

namespace simulator {

/// A new non-blocking socket that carries the frames of the kernel's CAN interface @p name as
/// struct can_frame; an invalid one with errno set, if there is no such interface.
FileDescriptor openCanInterface(const std::string &name);

} // namespace simulator
