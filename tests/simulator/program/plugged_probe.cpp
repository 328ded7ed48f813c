// What a started program sees of the testbed that it was started in. The first argument says what
// to do; what is found goes to the standard output, a line each.

#include "simulator/RawPort.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTextStream>
#include <QThread>

#include <memory>

#include <libudev.h>
#include <poll.h>

using namespace Qt::StringLiterals;

namespace {

template <auto Unref>
struct Unreferencing
{
    template <typename Object>
    void operator()(Object *object) const
    {
        Unref(object);
    }
};

using Udev = std::unique_ptr<udev, Unreferencing<udev_unref>>;
using Device = std::unique_ptr<udev_device, Unreferencing<udev_device_unref>>;
using Enumerate = std::unique_ptr<udev_enumerate, Unreferencing<udev_enumerate_unref>>;
using Monitor = std::unique_ptr<udev_monitor, Unreferencing<udev_monitor_unref>>;

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

QString text(const char *value)
{
    return value ? QString::fromUtf8(value) : u"-"_s;
}

// One line for each serial port.
int list()
{
    const Udev context(udev_new());
    const Enumerate ports(udev_enumerate_new(context.get()));
    udev_enumerate_add_match_subsystem(ports.get(), "tty");
    udev_enumerate_scan_devices(ports.get());
    udev_list_entry *entry = nullptr;
    udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(ports.get()))
    {
        const Device port(
            udev_device_new_from_syspath(context.get(), udev_list_entry_get_name(entry)));
        // Belongs to the port.
        udev_device *usb =
            udev_device_get_parent_with_subsystem_devtype(port.get(), "usb", "usb_device");
        if (!usb) {
            continue;
        }
        const QStringList words{text(udev_device_get_devnode(port.get())),
                                text(udev_device_get_property_value(port.get(), "ID_VENDOR_ID")),
                                text(udev_device_get_property_value(port.get(), "ID_MODEL_ID")),
                                text(udev_device_get_property_value(port.get(), "ID_MODEL")),
                                text(udev_device_get_sysattr_value(usb, "idVendor")),
                                text(udev_device_get_sysattr_value(usb, "idProduct")),
                                text(udev_device_get_sysattr_value(usb, "manufacturer")),
                                text(udev_device_get_sysattr_value(usb, "product"))};
        out() << words.join(u'|') << Qt::endl;
    }
    return 0;
}

// "ready", then one line for each event of a serial port, and whether its node can be opened.
int watch(int count)
{
    const Udev context(udev_new());
    const Monitor monitor(udev_monitor_new_from_netlink(context.get(), "udev"));
    udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), "tty", nullptr);
    udev_monitor_enable_receiving(monitor.get());
    out() << "ready" << Qt::endl;
    for (int i = 0; i < count; ++i) {
        pollfd waiting{udev_monitor_get_fd(monitor.get()), POLLIN, 0};
        if (::poll(&waiting, 1, 30000) <= 0) {
            return 1;
        }
        const Device port(udev_monitor_receive_device(monitor.get()));
        const QString node = text(udev_device_get_devnode(port.get()));
        out() << text(udev_device_get_action(port.get())) << ' ' << node << ' '
              << (RawPort(node).isOpen() ? "opens" : "is gone") << Qt::endl;
    }
    return 0;
}

// "ready" once the port is open; ends when the port has been pulled out.
int hold(const QString &node)
{
    RawPort port(node);
    out() << (port.isOpen() ? "ready" : "failed") << Qt::endl;
    if (!port.waitForHangUp(30000)) {
        return 1;
    }
    port.waiting(); // must come back, whatever it says
    out() << "hung up" << Qt::endl;
    return 0;
}

// Prints the answer to each request, given as hexadecimal digits. Waits for the port.
int exchange(const QString &node, int baudRate, const QStringList &requests)
{
    RawPort port(node);
    for (const QDeadlineTimer deadline(30000); !port.isOpen() && !deadline.hasExpired();) {
        QThread::msleep(10);
        port.reopen();
    }
    if (!port.setLine(baudRate)) {
        return 1;
    }
    for (const QString &request : requests) {
        port.send(QByteArray::fromHex(request.toLatin1()));
        out() << port.receive(9, 1000).toHex() << Qt::endl;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString what = arguments.value(1);
    if (what == u"list") {
        return list();
    }
    if (what == u"watch") {
        return watch(arguments.value(2).toInt());
    }
    if (what == u"hold") {
        return hold(arguments.value(2));
    }
    if (what == u"exchange") {
        return exchange(arguments.value(2), arguments.value(3).toInt(), arguments.mid(4));
    }
    return what == u"exit" ? arguments.value(2).toInt() : 2;
}
