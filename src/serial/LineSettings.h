#pragma once

#include "serial/AbstractSerial.h"

/// The settings of a line as a driver takes them: whole, and in one step.
///
/// They are kept apart from the enumerated values that the getters of an engine answer, since a
/// driver may hold a combination that no enumerated value stands for, and since a value that the
/// driver refused stays here until another one takes its place.
struct LineSettings
{
    /// What the driver does with RTS. Only these two are ever set; others may be found.
    enum RtsControl { RtsDisabled = 0, RtsHandshake = 2 };

    /// The data bits of AbstractSerial::DataBits5, the first of the enumeration.
    static constexpr int SmallestByteSize = 5;

    int baudRate = 0; ///< in baud
    int byteSize = 8; ///< data bits a character
    bool checksParity = false; ///< a parity bit is sent and awaited
    int parity = 0; ///< 0 none, 1 odd, 2 even, 3 mark, 4 space
    int stopBits = 0; ///< 0 one, 1 one and a half, 2 two
    bool ctsFlow = false; ///< sending waits for CTS
    int rtsControl = RtsDisabled; ///< an RtsControl
    bool outX = false; ///< sending heeds XON and XOFF
    bool inX = false; ///< XON and XOFF are sent

    /// Each of the four takes a defined value only; the caller refuses the others first.
    void setDataBits(AbstractSerial::DataBits value);
    void setParity(AbstractSerial::Parity value);
    void setStopBits(AbstractSerial::StopBits value);
    void setFlowControl(AbstractSerial::Flow value);

    /// The enumerated value, or the undefined one (-1) if none stands for what is held.
    AbstractSerial::DataBits enumeratedDataBits() const;
    AbstractSerial::Parity enumeratedParity() const;
    AbstractSerial::StopBits enumeratedStopBits() const;
    AbstractSerial::Flow enumeratedFlowControl() const;

    bool operator==(const LineSettings &) const = default;
};
