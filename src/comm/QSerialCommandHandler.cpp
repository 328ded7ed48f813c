#include "comm/QSerialCommandHandler.h"

#include "comm/Reply.h"
#include "serial/AbstractSerial.h"
#include "serial/SerialDeviceEnumerator.h"

#include <QDebug>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A port is a USB module's if its vendor id starts so, in either case.
constexpr auto ModuleVendorId = "16d0"_L1;
/// Hardware ids of a module on another system, of the present and of the former vendor. Nothing
/// looks for them: the vendor id alone decides.
[[maybe_unused]] constexpr auto ModuleHardwareId = "VID_16D0&PID_"_L1;
[[maybe_unused]] constexpr auto FormerModuleHardwareId = "VID_0AB4&PID_0010"_L1;
/// Part of a module's friendly name that the user needn't see.
constexpr auto MakerPrefix = "Moravint "_L1;

constexpr struct
{
    int rate;
    AbstractSerial::BaudRate value;
} BaudRates[] = {
    {4800, AbstractSerial::BaudRate4800},     {9600, AbstractSerial::BaudRate9600},
    {14400, AbstractSerial::BaudRate14400},   {19200, AbstractSerial::BaudRate19200},
    {38400, AbstractSerial::BaudRate38400},   {57600, AbstractSerial::BaudRate57600},
    {115200, AbstractSerial::BaudRate115200},
};

/// The members of @p list that @p others lacks, in order.
QStringList without(const QStringList &list, const QStringList &others)
{
    QStringList rest;
    std::copy_if(list.cbegin(), list.cend(), std::back_inserter(rest),
                 [&others](const QString &port) { return !others.contains(port); });
    return rest;
}

QString inParentheses(const QStringList &list)
{
    QStringList quoted;
    for (const QString &item : list) {
        quoted.append(u'"' + item + u'"');
    }
    return u'(' + quoted.join(", "_L1) + u')';
}

/// The model's name alone out of "Moravint ZDRM-7710 (COM7)".
QString modelName(QString friendlyName)
{
    if (friendlyName.startsWith(MakerPrefix)) {
        friendlyName.remove(MakerPrefix);
    }
    return friendlyName.split(u' ').constFirst();
}

} // namespace

QSerialCommandHandler::QSerialCommandHandler()
    : m_enumerator(SerialDeviceEnumerator::instance())
{
    connect(m_enumerator, &SerialDeviceEnumerator::hasChanged, this,
            &QSerialCommandHandler::changedSerialDevices);
}

// --- The port ---------------------------------------------------------------------------------

bool QSerialCommandHandler::openDevice(const QString &port)
{
    // Worked out once for the process here and once in waitForReply(), so that a handler that is
    // named later doesn't change its way of reading.
    static const bool usbConstruct = isUsbConstruct();

    qDebug().nospace() << "QSerialCommandHandler::openDevice(" << port << ")";
    if (!m_device) {
        createDevice();
    }
    m_device->setDeviceName(port); // without effect while the device is open
    qDebug() << (m_device->isOpen() ? "QSerialCommandHandler::Device is open!"
                                    : "QSerialCommandHandler::Device not open!");

    QIODevice::OpenMode mode = QIODevice::ReadWrite;
    if (!usbConstruct) {
        mode |= QIODevice::Unbuffered;
    }
    if (!m_device->open(mode)) {
        qDebug().nospace() << "QSerialCommandHandler::Serial device by default: "
                           << m_device->deviceName() << " open failed!";
        m_enumerator->setDeviceName(port);
        qDebug() << (m_enumerator->isBusy() ? "QSerialCommandHandler::Device is busy!"
                                            : "QSerialCommandHandler::Device not busy!");
        m_device->close();
        setConnected(false);
        return false;
    }

    m_portName = port;
    qDebug().nospace() << "QSerialCommandHandler::Serial device " << m_device->deviceName()
                       << " opened. :" << m_device;
    setConnected(true);
    return true;
}

void QSerialCommandHandler::createDevice()
{
    m_device = new AbstractSerial(this);
    connect(m_device, &AbstractSerial::readyRead, this, &QSerialCommandHandler::slotRead);
    connect(m_device, &AbstractSerial::exception, this, &QSerialCommandHandler::slotException);
    connect(m_device, &AbstractSerial::ctsChanged, this, &QSerialCommandHandler::slotCts);
    connect(m_device, &AbstractSerial::dsrChanged, this, &QSerialCommandHandler::slotDsr);
    connect(m_device, &AbstractSerial::ringChanged, this, &QSerialCommandHandler::slotRing);
}

bool QSerialCommandHandler::closeDevice()
{
    if (!m_device) {
        qDebug("QSerialCommandHandler::closeDevice(): device == NULL");
    } else if (m_device->isOpen()) {
        qDebug().nospace() << "QSerialCommandHandler::closeDevice(): " << m_device;
        m_device->close();
    }
    setConnected(false);
    return true;
}

bool QSerialCommandHandler::reopenDevice()
{
    qDebug() << "QSerialCommandHandler::reopenDevice()" << m_device;
    return openDevice(m_portName);
}

void QSerialCommandHandler::setBaudrate(int baudrate)
{
    storeBaudrate(baudrate);
    qDebug().nospace() << "QSerialCommandHandler::setBaudrate(" << QString::number(baudrate) << ")";
    if (!m_device) {
        return;
    }
    for (const auto &known : BaudRates) {
        if (known.rate == baudrate) {
            m_device->setBaudRate(known.value, AbstractSerial::AllBaud);
        }
    }
    m_device->setDataBits(AbstractSerial::DataBits8);
    m_device->setParity(AbstractSerial::ParityNone);
    m_device->setStopBits(AbstractSerial::StopBits1);
    m_device->setFlowControl(AbstractSerial::FlowDisable);
}

bool QSerialCommandHandler::isUsbConstruct() const
{
    return objectName().contains("USB construct"_L1);
}

bool QSerialCommandHandler::isDeviceOpen() const
{
    return m_device && m_device->isOpen();
}

qint64 QSerialCommandHandler::bytesAvailable() const
{
    return m_device ? m_device->bytesAvailable() : 0;
}

// --- The list of ports ------------------------------------------------------------------------

SerialDeviceEnumerator *QSerialCommandHandler::deviceEnumerator()
{
    return SerialDeviceEnumerator::instance();
}

void QSerialCommandHandler::reportAvailableDevices()
{
    changedSerialDevices(m_enumerator->devicesAvailable());
}

bool QSerialCommandHandler::isUsbModule(const QString &port)
{
    m_enumerator->setDeviceName(port);
    return m_enumerator->vendorId().toLower().startsWith(ModuleVendorId);
}

void QSerialCommandHandler::changedSerialDevices(QStringList list)
{
    qDebug().nospace().noquote() << "\n ===> Serial devices: " << inParentheses(list) << " "
                                 << sender();
    QStringList usbNow;
    QStringList serialNow;
    for (const QString &port : std::as_const(list)) {
        (isUsbModule(port) ? usbNow : serialNow).append(port);
    }

    const QStringList addedUsb = without(usbNow, m_usbDevices);
    const QStringList removedUsb = without(m_usbDevices, usbNow);
    m_usbDevices = usbNow;
    // The port's name is compared whether or not it is open: one that was used and closed earlier
    // is reported, too, when it goes away.
    for (const QString &port : removedUsb) {
        if (port == m_portName) {
            closeDevice();
            qDebug() << " QSerialCommandHandler::changedSerialDevices" << port;
            emit handleDetachedDevice(port);
        }
    }
    for (const QString &port : addedUsb) {
        m_enumerator->setDeviceName(port);
        emit handleAttachedUsbDevice(port, modelName(m_enumerator->friendlyName()));
    }

    const QStringList addedSerial = without(serialNow, m_serialDevices);
    const QStringList removedSerial = without(m_serialDevices, serialNow);
    m_serialDevices = serialNow;
    for (const QString &port : removedSerial) {
        if (port == m_portName) {
            closeDevice();
            emit handleDetachedDevice(port);
        }
    }
    for (const QString &port : addedSerial) {
        m_enumerator->setDeviceName(port);
        emit handleAttachedSerialDevice(port, u"unknown"_s);
    }
}

void QSerialCommandHandler::slotRead()
{
    // Nothing is read here: the data is fetched by waitForReply() alone.
    if (bytesAvailable() > Reply::Size) {
        qDebug() << "Slot: Rx ready notifier." << bytesAvailable() << m_device;
    }
}

void QSerialCommandHandler::slotWrite()
{
    qDebug("Slot: Tx empty notifier.");
}

void QSerialCommandHandler::slotException()
{
    qDebug("Slot: Exception notifier.");
}

void QSerialCommandHandler::slotCts(bool value)
{
    setConnected(value);
}

void QSerialCommandHandler::slotDsr(bool value)
{
    qDebug().nospace() << "Slot: Dsr notifier. Value: " << value;
}

void QSerialCommandHandler::slotRing(bool value)
{
    qDebug().nospace() << "Slot: Ring notifier. Value: " << value;
}
