#include "support/UsbMachine.h"

#include <QtGlobal>

namespace {

QByteArray attribute(const char *name, const QByteArray &value)
{
    return value.isEmpty() ? QByteArray() : QByteArray("A: ") + name + '=' + value + "\\n\n";
}

} // namespace

void UsbMachine::plugIn(const QString &name, const UsbDevice &device, const QString &terminal)
{
    const QByteArray node = name.toLatin1();
    const QByteArray usb = "/devices/pci0000:00/0000:00:14.0/usb1/usb-" + node;
    const QByteArray interface = usb + "/usb-" + node + ":1.0";
    const QByteArray tty = interface + "/tty/" + node;
    const QByteArray number = QByteArray::number(qsizetype(m_plugged.size()));
    const QByteArray driver =
        device.driver.isEmpty() ? QByteArray() : "E: DRIVER=" + device.driver + '\n';

    const QByteArray description = "P: " + usb + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n"
        + attribute("idVendor", device.vendor) + attribute("manufacturer", device.manufacturer)
        + attribute("product", device.product) + "\nP: "
        + interface + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n" + driver + "\nP: " + tty
        + "\nE: SUBSYSTEM=tty\nE: DEVNAME=/dev/" + node + "\nA: dev=166:" + number + "\n\n";
    const simulator::SerialDevice port{
        node.toStdString(),
        "166:" + number.toStdString(),
        description.toStdString(),
        {"/sys" + tty.toStdString(), "/sys" + interface.toStdString(), "/sys" + usb.toStdString()}};

    const std::string failure = m_testbed.plug(port, terminal.toStdString());
    if (!failure.empty()) {
        qFatal("%s", failure.c_str());
    }
    m_plugged.emplace(name, port);
}

void UsbMachine::pullOut(const QString &name)
{
    const auto port = m_plugged.extract(name);
    m_testbed.unplug(port.mapped());
}

void UsbMachine::pullOutAll()
{
    while (!m_plugged.empty()) {
        pullOut(QString(m_plugged.begin()->first));
    }
}
