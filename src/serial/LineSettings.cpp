#include "serial/LineSettings.h"

void LineSettings::setDataBits(AbstractSerial::DataBits value)
{
    byteSize = SmallestByteSize + value;
}

void LineSettings::setParity(AbstractSerial::Parity value)
{
    parity = value;
    checksParity = value != AbstractSerial::ParityNone;
}

void LineSettings::setStopBits(AbstractSerial::StopBits value)
{
    stopBits = value;
}

void LineSettings::setFlowControl(AbstractSerial::Flow value)
{
    ctsFlow = value == AbstractSerial::FlowHardware;
    rtsControl = ctsFlow ? RtsHandshake : RtsDisabled;
    outX = inX = value == AbstractSerial::FlowXonXoff;
}

AbstractSerial::DataBits LineSettings::enumeratedDataBits() const
{
    const bool defined = byteSize >= SmallestByteSize && byteSize <= 8;
    return defined ? AbstractSerial::DataBits(byteSize - SmallestByteSize)
                   : AbstractSerial::DataBitsUndefined;
}

AbstractSerial::Parity LineSettings::enumeratedParity() const
{
    const bool defined = parity >= AbstractSerial::ParityNone
        && parity <= AbstractSerial::ParitySpace
        && checksParity == (parity != AbstractSerial::ParityNone);
    return defined ? AbstractSerial::Parity(parity) : AbstractSerial::ParityUndefined;
}

AbstractSerial::StopBits LineSettings::enumeratedStopBits() const
{
    const bool defined =
        stopBits >= AbstractSerial::StopBits1 && stopBits <= AbstractSerial::StopBits2;
    return defined ? AbstractSerial::StopBits(stopBits) : AbstractSerial::StopBitsUndefined;
}

AbstractSerial::Flow LineSettings::enumeratedFlowControl() const
{
    if (ctsFlow && rtsControl == RtsHandshake && !inX && !outX) {
        return AbstractSerial::FlowHardware;
    }
    if (!ctsFlow && rtsControl == RtsDisabled && inX == outX) {
        return inX ? AbstractSerial::FlowXonXoff : AbstractSerial::FlowDisable;
    }
    return AbstractSerial::FlowUndefined;
}
