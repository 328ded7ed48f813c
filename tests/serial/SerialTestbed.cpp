#define QT_NO_KEYWORDS // glib has a member that is named "signals"
#include "SerialTestbed.h"

#include <QtGlobal>

#include <utility>

#include <umockdev.h>

void SerialTestbed::Unref::operator()(_UMockdevTestbed *testbed) const
{
    g_object_unref(testbed);
}

SerialTestbed::SerialTestbed()
    : m_testbed(umockdev_testbed_new())
{
}

SerialTestbed::~SerialTestbed() = default;

QByteArray SerialTestbed::usbPath(const QByteArray &name)
{
    return "/sys/devices/pci0000:00/0000:00:14.0/usb1/usb-" + name;
}

QByteArray SerialTestbed::interfacePath(const QByteArray &name)
{
    return usbPath(name) + "/usb-" + name + ":1.0";
}

QByteArray SerialTestbed::portPath(const QByteArray &name)
{
    return interfacePath(name) + "/tty/" + name;
}

void SerialTestbed::plugIn(const QByteArray &name, const UsbDevice &device)
{
    const QByteArray usb = usbPath(name).mid(4);
    add("P: " + usb + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n\n");
    const std::pair<const char *, QByteArray> attributes[] = {
        {"idVendor", device.idVendor},         {"idProduct", device.idProduct},
        {"manufacturer", device.manufacturer}, {"product", device.product},
        {"bcdDevice", device.bcdDevice},
    };
    for (const auto &[attribute, value] : attributes) {
        if (!value.isNull()) {
            setUsbAttribute(name, attribute, value);
        }
    }
    add("P: " + interfacePath(name).mid(4) + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n"
        + "E: DRIVER=cdc_acm\nL: driver=../../../../../../bus/usb/drivers/cdc_acm\n\n");
    add("P: " + portPath(name).mid(4) + "\nE: SUBSYSTEM=tty\nE: DEVNAME=/dev/" + name
        + "\nE: ID_PATH=pci-0000:00:14.0-usb-0:1:1.0" + "\n\n");
}

void SerialTestbed::pullOut(const QByteArray &name)
{
    // umockdev can't tell of a device that is gone. The event is looked at later, by the event
    // loop.
    umockdev_testbed_uevent(m_testbed.get(), portPath(name).constData(), "remove");
    for (const QByteArray &device : {portPath(name), interfacePath(name), usbPath(name)}) {
        umockdev_testbed_remove_device(m_testbed.get(), device.constData());
    }
}

void SerialTestbed::add(const QByteArray &description)
{
    GError *error = nullptr;
    if (!umockdev_testbed_add_from_string(m_testbed.get(), description.constData(), &error)) {
        qFatal("%s", error->message);
    }
}

void SerialTestbed::setUsbAttribute(const QByteArray &name, const char *attribute,
                                    const QByteArray &value)
{
    umockdev_testbed_set_attribute(m_testbed.get(), usbPath(name).constData(), attribute,
                                   value.constData());
}

void SerialTestbed::touch(const QByteArray &name)
{
    umockdev_testbed_uevent(m_testbed.get(), portPath(name).constData(), "change");
}
