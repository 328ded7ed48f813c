#pragma once

#include "serial/SerialInfo.h"

#include <qt_windows.h>

#include <optional>

#include <setupapi.h>

/// The record of the port that @p device of the list @p devices is; nothing if it has no port name
/// or is a printer port.
std::optional<SerialInfo> readSetupPort(HDEVINFO devices, SP_DEVINFO_DATA &device);
