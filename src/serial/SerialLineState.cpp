#include "serial/SerialLineState.h"

#include "serial/LineRules.h"

bool SerialLineState::setBaudRate(int rate, AbstractSerial::BaudRateDirection direction)
{
    if (direction != AbstractSerial::AllBaud || rate < 1) {
        return false;
    }
    settings.baudRate = rate;
    if (!applySettings()) {
        return false;
    }
    inputBaudRate = outputBaudRate = rate;
    updateComputedTimeout();
    return true;
}

bool SerialLineState::setDataBits(AbstractSerial::DataBits value)
{
    if (!LineRules::acceptsDataBits(value, stopBits)) {
        return false;
    }
    settings.setDataBits(value);
    if (!applySettings()) {
        return false;
    }
    dataBits = value;
    updateComputedTimeout();
    return true;
}

bool SerialLineState::setParity(AbstractSerial::Parity value)
{
    if (!LineRules::acceptsParity(value)) {
        return false;
    }
    settings.setParity(value);
    if (!applySettings()) {
        return false;
    }
    parity = value;
    updateComputedTimeout();
    return true;
}

bool SerialLineState::setStopBits(AbstractSerial::StopBits value)
{
    if (!LineRules::acceptsStopBits(value, dataBits, stopBits)) {
        return false;
    }
    settings.setStopBits(value);
    if (!applySettings()) {
        return false;
    }
    stopBits = value;
    updateComputedTimeout();
    return true;
}

bool SerialLineState::setFlowControl(AbstractSerial::Flow value)
{
    if (!LineRules::acceptsFlowControl(value)) {
        return false;
    }
    settings.setFlowControl(value);
    if (!applySettings()) {
        return false;
    }
    // Flow control doesn't change the length of a character: the computed timeout stays.
    flow = value;
    return true;
}

void SerialLineState::setCharIntervalTimeout(int usecs)
{
    charIntervalTimeout = usecs;
    updateComputedTimeout();
}

void SerialLineState::setTotalReadTimeout(int msecs)
{
    autoReadTotalTimeout = msecs == -1;
    if (autoReadTotalTimeout) {
        updateComputedTimeout();
        return;
    }
    readTotalTimeout = msecs;
    applyTimeouts();
}

void SerialLineState::readBackSettings()
{
    inputBaudRate = outputBaudRate = settings.baudRate;
    dataBits = settings.enumeratedDataBits();
    parity = settings.enumeratedParity();
    stopBits = settings.enumeratedStopBits();
    flow = settings.enumeratedFlowControl();
}

void SerialLineState::updateComputedTimeout()
{
    if (!autoReadTotalTimeout || inputBaudRate != outputBaudRate || inputBaudRate < 1) {
        return;
    }
    const int computed =
        LineRules::blockTimeout(inputBaudRate, dataBits, parity, stopBits, charIntervalTimeout);
    if (computed == readTotalTimeout) {
        return;
    }
    readTotalTimeout = computed;
    applyTimeouts();
}
