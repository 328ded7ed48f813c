#include "serial/LineRules.h"

namespace {

/// Characters of the block whose time limits a read.
constexpr qint64 BlockSize = 256;

bool isDefined(int value, int last)
{
    return value >= 0 && value <= last;
}

} // namespace

bool LineRules::acceptsDataBits(int value, int stopBits)
{
    if (!isDefined(value, AbstractSerial::DataBits8)) {
        return false;
    }
    return stopBits
        != (value == AbstractSerial::DataBits5 ? AbstractSerial::StopBits2
                                               : AbstractSerial::StopBits1_5);
}

bool LineRules::acceptsParity(int value)
{
    return isDefined(value, AbstractSerial::ParitySpace);
}

bool LineRules::acceptsStopBits(int value, int dataBits, int stopBits)
{
    if (!isDefined(value, AbstractSerial::StopBits2)) {
        return false;
    }
    // Data bits that aren't known forbid nothing: the guard names 5 to 8 only.
    return !isDefined(dataBits, AbstractSerial::DataBits8) || acceptsDataBits(dataBits, stopBits);
}

bool LineRules::acceptsFlowControl(int value)
{
    return isDefined(value, AbstractSerial::FlowXonXoff);
}

int LineRules::rateInDirection(AbstractSerial::BaudRateDirection direction, int inputRate,
                               int outputRate)
{
    if (direction == AbstractSerial::InputBaud) {
        return inputRate;
    }
    if (direction == AbstractSerial::OutputBaud) {
        return outputRate;
    }
    return inputRate == outputRate ? inputRate : 0;
}

int LineRules::blockTimeout(int rate, int dataBits, int parity, int stopBits, int gap)
{
    constexpr int StartBits = 1;
    const bool known = isDefined(dataBits, AbstractSerial::DataBits8);
    const int bits = (known ? 5 + dataBits : 8) + (parity != AbstractSerial::ParityNone ? 1 : 0)
        + (stopBits == AbstractSerial::StopBits2 ? 2 : 1) + StartBits;
    // In 64 bits, since a long gap times the 255 leaves 32; the quotients fit again.
    return int(bits * BlockSize * 1000 / rate + (BlockSize - 1) * gap / 1000);
}
