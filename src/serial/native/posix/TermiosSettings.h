#pragma once

#include "serial/LineSettings.h"

// The kernel's own header: only its termios2 carries any rate. It can't stand beside <termios.h>.
#include <asm/termbits.h>

/// Line settings as the bits of a terminal.
///
/// | LineSettings             | termios2                                               |
/// |--------------------------|--------------------------------------------------------|
/// | baudRate                 | BOTHER, c_ispeed and c_ospeed                           |
/// | byteSize 5 to 8          | CS5 to CS8                                             |
/// | checksParity             | PARENB                                                 |
/// | parity 0, 1, 2, 3, 4     | none, PARODD, even, CMSPAR with PARODD, CMSPAR alone   |
/// | stopBits 0, 1, 2         | one: no CSTOPB, others: CSTOPB                         |
/// | ctsFlow, rtsControl 2    | CRTSCTS                                                |
/// | outX, inX                | IXON, IXOFF                                            |
///
/// The bit CSTOPB means one and a half stop bits with 5 data bits and two with any other number:
/// that is what the hardware sends. One and a half with 8 data bits, which may be asked for, goes
/// out as two.
namespace TermiosSettings {

/// Writes @p settings into @p line and leaves its other bits alone.
void store(const LineSettings &settings, termios2 &line);

/// The settings that @p line holds. Its rate is the one of the output.
LineSettings load(const termios2 &line);

/// Makes @p line carry every byte as it is: no line editing, no signals, no translation, nothing
/// dropped on an error, and no flow control by characters. Rate, size, parity, stop bits and flow
/// control by lines stay as they are.
void makeRaw(termios2 &line);

/// What carries the characters.
enum class Medium {
    Wire, ///< a line on which the form of a character shows
    Pseudo ///< a pseudo-terminal: it hands over bytes, which have neither size nor parity
};

/// Whether a driver that was given @p wanted and now answers @p taken uses those settings. It may
/// miss the rate by the little that its divider can't reach. Of a pseudo-terminal size and parity
/// aren't compared: it answers 8 data bits without parity to everything.
bool isTaken(const termios2 &wanted, const termios2 &taken, Medium medium);

} // namespace TermiosSettings
