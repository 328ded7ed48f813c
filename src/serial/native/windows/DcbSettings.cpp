#include "DcbSettings.h"

LineSettings DcbSettings::load(const DCB &dcb)
{
    LineSettings settings;
    settings.baudRate = static_cast<int>(dcb.BaudRate);
    settings.byteSize = dcb.ByteSize;
    settings.checksParity = dcb.fParity;
    settings.parity = dcb.Parity;
    settings.stopBits = dcb.StopBits;
    settings.ctsFlow = dcb.fOutxCtsFlow;
    settings.rtsControl = dcb.fRtsControl;
    settings.outX = dcb.fOutX;
    settings.inX = dcb.fInX;
    return settings;
}

void DcbSettings::store(const LineSettings &settings, DCB &dcb)
{
    dcb.BaudRate = static_cast<DWORD>(settings.baudRate);
    dcb.ByteSize = static_cast<BYTE>(settings.byteSize);
    dcb.fParity = settings.checksParity;
    dcb.Parity = static_cast<BYTE>(settings.parity);
    dcb.StopBits = static_cast<BYTE>(settings.stopBits);
    dcb.fOutxCtsFlow = settings.ctsFlow;
    dcb.fRtsControl = static_cast<DWORD>(settings.rtsControl) & RTS_CONTROL_TOGGLE; // two bits
    dcb.fOutX = settings.outX;
    dcb.fInX = settings.inX;
}

void DcbSettings::makeTransparent(DCB &dcb)
{
    dcb.fBinary = TRUE;
    dcb.fOutX = FALSE;
    dcb.fInX = FALSE;
    dcb.fNull = FALSE;
    dcb.fAbortOnError = FALSE;
}
