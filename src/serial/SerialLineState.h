#pragma once

#include "serial/AbstractSerial.h"
#include "serial/AbstractSerialEnginePrivate.h"
#include "serial/LineSettings.h"

/// The state of a platform's engine with the rules of its setters, which every platform shares.
/// A platform adds only how settings and timeouts reach its driver.
///
/// A setter writes its value into the settings, applies them whole, and takes the enumerated
/// value over on success alone. A value that the driver refused stays in the settings, so the
/// next setter sends it again and fails as well until the value is replaced. That is by design.
class SerialLineState : public AbstractSerialEnginePrivate
{
public:
    /// What the next apply sends, refused values included.
    LineSettings settings;
    /// Limit of one transfer of a read in milliseconds, 0 for none.
    int readTotalTimeout = 0;

    /// Each answers false if the value isn't allowed or the driver refused the settings.
    bool setBaudRate(int rate, AbstractSerial::BaudRateDirection direction);
    bool setDataBits(AbstractSerial::DataBits value);
    bool setParity(AbstractSerial::Parity value);
    bool setStopBits(AbstractSerial::StopBits value);
    bool setFlowControl(AbstractSerial::Flow value);

    /// The gap allowed between two characters, in microseconds.
    void setCharIntervalTimeout(int usecs);
    /// In milliseconds; -1 has the limit computed from the line, now and at each later change.
    void setTotalReadTimeout(int msecs);

    /// Takes the enumerated values over from the settings, -1 where none stands for them.
    void readBackSettings();

protected:
    /// Hands the settings to the driver. Answers whether it took all of them.
    virtual bool applySettings() = 0;
    /// Hands the timeouts to the driver; nothing looks at the outcome.
    virtual void applyTimeouts() = 0;

private:
    void updateComputedTimeout();
};
