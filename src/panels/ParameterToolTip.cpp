#include "panels/ParameterToolTip.h"

#include "comm/ByteText.h"

using namespace Qt::StringLiterals;

QString parameterToolTip(char number)
{
    return "AP: "_L1 + QString::number(unsignedByte(number));
}
