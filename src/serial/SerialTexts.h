#pragma once

#include "serial/AbstractSerial.h"

#include <QMap>
#include <QString>

/// The texts of the serial port's enumerations and statuses, and the rates behind the baud rate
/// values. All texts but those of the debug output are translated in the context "QObject".
namespace SerialTexts {

/// Rate in baud of @p value, -1 for the undefined value and any that has no rate.
int rate(AbstractSerial::BaudRate value);

/// The text "%1 baud" with @p rate, whether or not the table of texts has that rate.
QString rateText(int rate);

/// Enumeration value to text, with the undefined value -1. Of the rates only those in use today.
QMap<int, QString> baudRates();
QMap<int, QString> dataBits(); ///< AbstractSerial::DataBits to text, with the undefined value
QMap<int, QString> parities(); ///< AbstractSerial::Parity to text, with the undefined value
QMap<int, QString> stopBits(); ///< AbstractSerial::StopBits to text, with the undefined value
QMap<int, QString> flows(); ///< AbstractSerial::Flow to text, with the undefined value

/// Message of @p status; a number that is no status has one, too, which names the number.
QString message(AbstractSerial::Status status);

} // namespace SerialTexts
