#pragma once

#include "serial/SerialInfo.h"

#include <optional>

struct udev_device;

/// Reads one device of the subsystem "tty". Nothing if it is no port to list: consoles, pseudo
/// terminals and other virtual ones have no device behind them, and an 8250 driver keeps nodes
/// for slots that hold no UART.
///
/// All texts that come from the device itself are cleaned: a broken device must not put control
/// characters, endless names or bad encodings before the user.
std::optional<SerialInfo> readUdevPort(udev_device *tty);
