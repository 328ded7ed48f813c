#pragma once

#include "serial/AbstractSerial.h"

/// A device whose reading and writing can be called past the checks of QIODevice.
class ExposedSerial : public AbstractSerial
{
public:
    using AbstractSerial::AbstractSerial;
    using AbstractSerial::readData;
    using AbstractSerial::readLineData;
    using AbstractSerial::writeData;
};
