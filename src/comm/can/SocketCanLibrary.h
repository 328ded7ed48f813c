#pragma once

#include "comm/can/CanLibrary.h"

/// The eight functions over the kernel's own CAN sockets, for a machine without the maker's
/// library. They share one channel, over the first CAN interface that there is when it is opened.
CanLibrary socketCanLibrary();
