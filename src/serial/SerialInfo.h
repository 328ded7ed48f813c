#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// What a scan found out about one serial port. A field that the platform doesn't supply is empty.
struct SerialInfo
{
    QString portName; ///< name by which the port is opened ("ttyACM0", "COM3")
    QString deviceObject; ///< the platform's own name of the device
    QString deviceClass; ///< class or subsystem of the device
    QString locationInfo; ///< where the device is plugged in
    QString driverPath; ///< path of the driver
    QString friendlyName; ///< maker and product, as an engineer knows them
    QString description; ///< the product
    QStringList hardwareIds; ///< ids that the driver was found by, the most exact one first
    QString vendorId; ///< hexadecimal USB vendor id, in the case that the system gave
    QString productId; ///< hexadecimal USB product id, in the case that the system gave
    QString manufacturer; ///< the maker
    QString service; ///< name of the driver
    QString busName; ///< bus that the device sits on ("usb", "pci"; "USB" on Windows)
    QString reserved; ///< filled by nothing, always empty

    /// Two records differ if any field does; the hardware ids count as a list, with their order.
    bool operator==(const SerialInfo &) const = default;
};

/// The ports of one scan, sorted by the port name that is their key.
using SerialInfoMap = QMap<QString, SerialInfo>;

/// Whether a port of that name belongs into the list: it has a name, and is no printer port, which
/// systems keep in the same class of devices. The test looks at capitals only.
inline bool isSerialPortName(const QString &portName)
{
    return !portName.isEmpty() && !portName.contains(QLatin1String("LPT"));
}
