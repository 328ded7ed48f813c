#pragma once

#include <QString>
#include <QtGlobal>

class AbstractSerialEngineReceiver;

/// What every platform's engine keeps about its port. A platform's engine derives its own state
/// from it.
class AbstractSerialEnginePrivate
{
public:
    /// No port is open.
    static constexpr qintptr InvalidDescriptor = -1;

    virtual ~AbstractSerialEnginePrivate() = default;

    QString deviceName;
    /// Rates in baud. The start value is the number of the enumeration value for 9600 that stands
    /// in a field of baud, so a rate reads 12 until a port is opened. That is kept by design.
    int inputBaudRate = 12;
    int outputBaudRate = 12;
    int dataBits = 3; ///< an AbstractSerial::DataBits
    int parity = 0; ///< an AbstractSerial::Parity
    int stopBits = 0; ///< an AbstractSerial::StopBits
    int flow = 0; ///< an AbstractSerial::Flow
    int charIntervalTimeout = 0; ///< in microseconds
    int spareInt = 0; ///< nothing reads or writes it after construction
    bool oldSettingsSaved = false; ///< the settings found on opening are held
    qintptr descriptor = InvalidDescriptor;
    AbstractSerialEngineReceiver *receiver = nullptr; ///< not owned
    bool autoReadTotalTimeout = false; ///< the total read timeout is computed
};
