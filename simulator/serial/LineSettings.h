#pragma once

#include <optional>
#include <string>

namespace simulator {

/// How a serial line is set.
struct LineSettings
{
    int baudRate = 0; ///< bits per second; 0 in a module means: any settings will do
    int dataBits = 8;
    char parity = 'N'; ///< 'N' none, 'E' even, 'O' odd, 'M' mark, 'S' space
    int stopBits = 1;

    bool operator==(const LineSettings &) const = default;

    /// The usual short form, "115200 8N1".
    std::string toText() const;
};

/// The real settings of the terminal @p fd, those of the slave if it is the master of a
/// pseudo-terminal; nothing, if they can't be read. A pseudo-terminal keeps every speed and the
/// number of stop bits, but the kernel holds it at 8 data bits without parity.
std::optional<LineSettings> readLineSettings(int fd);

/// Makes the terminal @p fd a line for bytes, without echo or line editing: @p baudRate 8N1, with 0
/// at the rate that it has, whatever the modem lines say, and with nothing received so far.
/// @return false, if the kernel refuses it
bool makeByteLine(int fd, int baudRate);

} // namespace simulator
