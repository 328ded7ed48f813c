#pragma once

#include "simulator/plugged/Testbed.h"

namespace simulator {

/// The module's own USB port, "ttyACM0".
SerialDevice usbModuleDevice();

/// A USB adapter for RS485 of some other maker, "ttyUSB0".
SerialDevice rs485AdapterDevice();

} // namespace simulator
