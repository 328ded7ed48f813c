// The description that the system gives of a port: properties that udev's rules made, and
// attributes that the device itself sent. The functions of libudev stand here once more and answer
// from the input, a line for each: "a name=value" is an attribute of the USB device, "t ..." one of
// the port's, "p ..." a property; "n=name" is the port's own name, "u" makes the device no USB
// device, "v" takes the device away, "s" puts the levels of a UART's bookkeeping between.

#include "fuzz/Require.h"
#include "serial/native/posix/UdevPort.h"

#include <QByteArray>
#include <QHash>

#include <cstddef>
#include <cstdint>
#include <optional>

#include <libudev.h>

using namespace Qt::StringLiterals;

struct udev_device
{
    QHash<QByteArray, QByteArray> attributes;
    QHash<QByteArray, QByteArray> properties;
    QByteArray name;
    QByteArray subsystem;
    QByteArray driver;
    udev_device *parent = nullptr;
};

namespace {

const char *valueOf(const QHash<QByteArray, QByteArray> &values, const char *name)
{
    const auto found = values.constFind(QByteArray(name));
    return found == values.cend() ? nullptr : found->constData();
}

const char *textOrNothing(const QByteArray &text)
{
    return text.isNull() ? nullptr : text.constData();
}

struct Machine
{
    udev_device usb{{}, {}, "1-1", "usb", "usb", nullptr};
    udev_device bookkeeping{{}, {}, "port0", "serial-base", {}, &usb};
    udev_device tty{{}, {}, "ttyACM0", "tty", {}, &usb};

    explicit Machine(const QByteArray &description)
    {
        for (const QByteArray &line : description.split('\n')) {
            apply(line);
        }
    }

    void apply(const QByteArray &line)
    {
        const qsizetype equals = line.indexOf('=');
        const QByteArray name = line.mid(2, std::max<qsizetype>(equals - 2, 0));
        const QByteArray value = line.mid(equals + 1);
        switch (line.isEmpty() ? '\0' : line.front()) {
        case 'a':
            usb.attributes[name] = value;
            break;
        case 't':
            tty.attributes[name] = value;
            break;
        case 'p':
            tty.properties[name] = value;
            break;
        case 'n':
            tty.name = value;
            break;
        case 'u':
            usb.subsystem = value;
            break;
        case 'v':
            tty.parent = nullptr;
            break;
        case 's':
            tty.parent = &bookkeeping;
            break;
        default:
            break;
        }
    }
};

void requireClean(const QString &text)
{
    require(text.size() <= 600); // two names with a blank between
    require(text == text.trimmed());
    for (const QChar c : text) {
        require(c.category() != QChar::Other_Control && c.category() != QChar::Other_Format);
    }
}

} // namespace

const char *udev_device_get_sysattr_value(udev_device *device, const char *name)
{
    return valueOf(device->attributes, name);
}

const char *udev_device_get_property_value(udev_device *device, const char *name)
{
    return valueOf(device->properties, name);
}

const char *udev_device_get_sysname(udev_device *device)
{
    return textOrNothing(device->name);
}

const char *udev_device_get_devnode(udev_device *device)
{
    return textOrNothing(device->name);
}

const char *udev_device_get_syspath(udev_device *device)
{
    return textOrNothing(device->name);
}

const char *udev_device_get_subsystem(udev_device *device)
{
    return textOrNothing(device->subsystem);
}

const char *udev_device_get_driver(udev_device *device)
{
    return textOrNothing(device->driver);
}

udev_device *udev_device_get_parent(udev_device *device)
{
    return device->parent;
}

udev_device *udev_device_get_parent_with_subsystem_devtype(udev_device *device,
                                                           const char *subsystem, const char *)
{
    udev_device *parent = device->parent;
    while (parent && parent->subsystem != subsystem) {
        parent = parent->parent;
    }
    return parent;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Machine machine(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    const std::optional<SerialInfo> info = readUdevPort(&machine.tty);
    if (!info) {
        return 0;
    }
    require(machine.tty.parent != nullptr);
    require(isSerialPortName(info->portName));
    for (const QString &text : {info->friendlyName, info->description, info->manufacturer,
                                info->vendorId, info->productId, info->locationInfo}) {
        requireClean(text);
    }
    for (const QString &id : info->hardwareIds) {
        require(id.startsWith("USB\\VID_"_L1));
    }
    return 0;
}
