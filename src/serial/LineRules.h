#pragma once

#include "serial/AbstractSerial.h"

/// Which line parameters go together, and what follows from them. No platform takes part.
namespace LineRules {

/// Whether the data bits @p value may be asked for while the stop bits are @p stopBits: not 5
/// with two stop bits, not 6 to 8 with one and a half. An undefined value may not.
bool acceptsDataBits(int value, int stopBits);

/// Whether @p value is a defined parity.
bool acceptsParity(int value);

/// Whether the stop bits @p value may be asked for in the present state of the line.
///
/// The state decides, not the new value: the call is refused with 5 data bits whenever the stop
/// bits are two now, and with 6 to 8 whenever they are one and a half now. So 8 data bits and a
/// wish for one and a half pass, and then this call alone can't leave that state any more. That
/// is kept by design.
bool acceptsStopBits(int value, int dataBits, int stopBits);

/// Whether @p value is a defined flow control.
bool acceptsFlowControl(int value);

/// The rate in @p direction, in baud. Anything but one single direction means both together:
/// the rate that they share, or 0 if they differ.
int rateInDirection(AbstractSerial::BaudRateDirection direction, int inputRate, int outputRate);

/// The time in milliseconds that a block of 256 characters takes with the 255 gaps between them.
///
/// The rate is positive, in baud; the gap in microseconds; data bits, parity and stop bits are
/// enumerated values. Unknown data bits count as 8; one and a half stop bits count as one.
int blockTimeout(int rate, int dataBits, int parity, int stopBits, int gap);

} // namespace LineRules
