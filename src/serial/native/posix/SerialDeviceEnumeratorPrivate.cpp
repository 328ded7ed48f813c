#include "SerialDeviceEnumeratorPrivate.h"

#include "PortNode.h"
#include "UdevPort.h"
#include "serial/SerialDeviceEnumerator.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <libudev.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// The subsystem that every serial port belongs to.
constexpr char Subsystem[] = "tty";
constexpr QLatin1String PortFolder("/sys/class/tty");

/// Subscribes to the events that udev sends when it has done its part, so that a new node has its
/// rights when it is told of. Null if that can't be had.
udev_monitor *makeMonitor(udev *context)
{
    udev_monitor *monitor = context ? udev_monitor_new_from_netlink(context, "udev") : nullptr;
    if (!monitor) {
        return nullptr;
    }
    if (udev_monitor_filter_add_match_subsystem_devtype(monitor, Subsystem, nullptr) < 0
        || udev_monitor_enable_receiving(monitor) < 0) {
        udev_monitor_unref(monitor);
        return nullptr;
    }
    return monitor;
}

struct DeviceUnref
{
    void operator()(udev_device *object) const { udev_device_unref(object); }
};

using Device = std::unique_ptr<udev_device, DeviceUnref>;

/// Consoles and pseudo-terminals, some seventy of them on every system, hang in a branch of their
/// own. Told by where the link of a port leads, which costs next to nothing: udev would read three
/// files of each.
bool hasDeviceBehind(const QFileInfo &port)
{
    return !port.symLinkTarget().contains("/devices/virtual/"_L1);
}

} // namespace

void SerialDeviceEnumeratorPrivate::Unref::operator()(udev *object) const
{
    udev_unref(object);
}

void SerialDeviceEnumeratorPrivate::Unref::operator()(udev_monitor *object) const
{
    udev_monitor_unref(object);
}

SerialDeviceEnumeratorPrivate::SerialDeviceEnumeratorPrivate(SerialDeviceEnumerator *owner)
    : q(owner)
    , context(udev_new())
    , monitor(makeMonitor(context.get()))
{
}

SerialDeviceEnumeratorPrivate::~SerialDeviceEnumeratorPrivate() = default;

void SerialDeviceEnumeratorPrivate::makeNotifier()
{
    if (notifier || !monitor) {
        return;
    }
    notifier = std::make_unique<QSocketNotifier>(udev_monitor_get_fd(monitor.get()),
                                                 QSocketNotifier::Read, q);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, q,
                     &SerialDeviceEnumerator::_q_processWatcher);
}

bool SerialDeviceEnumeratorPrivate::canWatch() const
{
    return notifier != nullptr;
}

void SerialDeviceEnumeratorPrivate::acceptEvents()
{
    while (Device(udev_monitor_receive_device(monitor.get()))) { }
}

SerialInfoMap SerialDeviceEnumeratorPrivate::scan() const
{
    SerialInfoMap ports;
    for (const QFileInfo &entry :
         QDir(PortFolder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!hasDeviceBehind(entry)) {
            continue;
        }
        // Null if the device has gone since it was listed.
        const Device tty(udev_device_new_from_syspath(
            context.get(), QFile::encodeName(entry.filePath()).constData()));
        const auto port = tty ? readUdevPort(tty.get()) : std::nullopt;
        if (port) {
            ports.insert(port->portName, *port);
        }
    }
    return ports;
}

// The modem lines move no more than the opening moves them.
bool SerialDeviceEnumeratorPrivate::isPortBusy() const
{
    const int port = PortNode::open(currentName, O_RDWR);
    if (port == -1) {
        return true;
    }
    const bool busy = !PortNode::lock(port);
    ::close(port);
    return busy;
}
