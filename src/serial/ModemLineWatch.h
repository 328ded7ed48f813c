#pragma once

#include "serial/AbstractSerial.h"

#include <functional>

/// Tells whether one of the modem lines CTS, DSR and RI changed since it was last looked at.
///
/// A line that simply is low or high when the watch starts is no change.
class ModemLineWatch
{
public:
    /// Answers the lines of the port, LineErr if they can't be read.
    using Reader = std::function<AbstractSerial::LineStatus()>;

    explicit ModemLineWatch(Reader reader);

    /// Takes the lines as they are now for the ones last seen. False if they can't be read:
    /// there is nothing to watch then.
    bool start();

    /// Whether a line changed since the last look. Lines that can't be read didn't change.
    bool hasChanged();

private:
    Reader m_reader;
    AbstractSerial::LineStatus m_last;
};
