#include "UdevPort.h"

#include <algorithm>

#include <libudev.h>

using namespace Qt::StringLiterals;

namespace {

/// The longest name that is taken from a device. USB itself ends at 126 characters.
constexpr qsizetype MaxTextLength = 256;

/// The kernel's type number of a UART that isn't there (PORT_UNKNOWN).
constexpr QLatin1String PhantomUart("0");

/// Maker and product, in the words of one source.
struct Names
{
    QString maker;
    QString product;

    bool isEmpty() const { return maker.isEmpty() && product.isEmpty(); }
};

/// Text from outside, decoded, without control and format characters (which could turn the
/// direction of a line), with single blanks, and cut to a sensible length.
QString cleaned(const char *text)
{
    QString result = QString::fromUtf8(text);
    std::replace_if(
        result.begin(), result.end(),
        [](QChar c) {
            return c.category() == QChar::Other_Control || c.category() == QChar::Other_Format;
        },
        u' ');
    result = result.simplified().left(MaxTextLength);
    if (!result.isEmpty() && result.back().isHighSurrogate()) {
        result.chop(1);
    }
    return result.trimmed();
}

QString attribute(udev_device *device, const char *name)
{
    return device ? cleaned(udev_device_get_sysattr_value(device, name)) : QString();
}

QString property(udev_device *device, const char *name)
{
    return cleaned(udev_device_get_property_value(device, name));
}

/// One of the USB ids that udev's rules know. The same properties hold the ids of other buses, too,
/// which would pass for those of a USB device.
QString usbId(udev_device *tty, const char *name)
{
    return property(tty, "ID_BUS") == "usb"_L1 ? property(tty, name) : QString();
}

/// @p preferred, or @p fallback if that is empty.
QString either(const QString &preferred, const QString &fallback)
{
    return preferred.isEmpty() ? fallback : preferred;
}

/// The device behind the port. Since Linux 6.5 ports of a UART have two more levels between, which
/// stand for the driver's own bookkeeping.
udev_device *deviceBehind(udev_device *tty)
{
    udev_device *device = udev_device_get_parent(tty);
    while (device && qstrcmp(udev_device_get_subsystem(device), "serial-base") == 0) {
        device = udev_device_get_parent(device);
    }
    return device;
}

/// The names that the USB device gives itself. Where it gives none, those that udev's rules and its
/// database know. The two sources are not mixed: the database knows the owner of a vendor id, and
/// small makers share one.
Names namesOf(udev_device *tty, udev_device *usb)
{
    Names own{attribute(usb, "manufacturer"), attribute(usb, "product")};
    if (!own.isEmpty()) {
        return own;
    }
    Names database{property(tty, "ID_VENDOR_FROM_DATABASE"),
                   property(tty, "ID_MODEL_FROM_DATABASE")};
    if (!database.isEmpty()) {
        return database;
    }
    // udev puts the bare ids here if the device has no names, and underscores for the blanks.
    Names rules{property(tty, "ID_VENDOR"), property(tty, "ID_MODEL")};
    if (rules.maker == property(tty, "ID_VENDOR_ID")) {
        rules.maker.clear();
    }
    if (rules.product == property(tty, "ID_MODEL_ID")) {
        rules.product.clear();
    }
    return {rules.maker.replace(u'_', u' ').simplified(),
            rules.product.replace(u'_', u' ').simplified()};
}

/// Maker and product in one line, the maker's name once: many products begin with it themselves.
QString friendlyName(const Names &names)
{
    const qsizetype length = names.maker.size();
    const bool named = names.product.startsWith(names.maker, Qt::CaseInsensitive)
        && (names.product.size() == length || !names.product.at(length).isLetterOrNumber());
    return named || names.maker.isEmpty() ? names.product
                                          : (names.maker + u' ' + names.product).trimmed();
}

/// The ids by which a USB device's driver is found, in the form that they have on Windows.
QStringList hardwareIds(const SerialInfo &info, udev_device *usb)
{
    if (!usb || info.vendorId.isEmpty() || info.productId.isEmpty()) {
        return {};
    }
    const QString id =
        "USB\\VID_"_L1 + info.vendorId.toUpper() + "&PID_"_L1 + info.productId.toUpper();
    const QString revision = attribute(usb, "bcdDevice");
    return revision.isEmpty() ? QStringList{id} : QStringList{id + "&REV_"_L1 + revision, id};
}

/// Name of the port: the device's, which stands in /dev under the same name. A name with
/// directories in it is given from the root, since a bare port name has no slash.
QString portName(udev_device *tty)
{
    const QString name = QString::fromUtf8(udev_device_get_sysname(tty));
    return name.contains(u'/') ? QString::fromUtf8(udev_device_get_devnode(tty)) : name;
}

} // namespace

std::optional<SerialInfo> readUdevPort(udev_device *tty)
{
    udev_device *const parent = deviceBehind(tty);
    if (!parent || attribute(tty, "type") == PhantomUart) {
        return std::nullopt;
    }
    SerialInfo info;
    info.portName = portName(tty);
    if (!isSerialPortName(info.portName)) {
        return std::nullopt;
    }

    udev_device *const usb =
        udev_device_get_parent_with_subsystem_devtype(tty, "usb", "usb_device");
    const QString subsystem = QString::fromUtf8(udev_device_get_subsystem(parent));
    const Names names = namesOf(tty, usb);

    info.busName = usb ? u"usb"_s : subsystem;
    info.description = names.product;
    info.service = QString::fromUtf8(udev_device_get_driver(parent));
    info.friendlyName = either(friendlyName(names), info.service);
    info.vendorId = either(attribute(usb, "idVendor"), usbId(tty, "ID_VENDOR_ID"));
    info.productId = either(attribute(usb, "idProduct"), usbId(tty, "ID_MODEL_ID"));
    info.hardwareIds = hardwareIds(info, usb);
    info.locationInfo = either(property(tty, "ID_PATH"),
                               QString::fromUtf8(udev_device_get_sysname(usb ? usb : parent)));
    info.manufacturer = names.maker;
    info.deviceClass = QString::fromUtf8(udev_device_get_subsystem(tty));
    if (!info.service.isEmpty()) {
        info.driverPath = "/sys/bus/"_L1 + subsystem + "/drivers/"_L1 + info.service;
    }
    info.deviceObject = QString::fromUtf8(udev_device_get_syspath(tty));
    return info;
}
