#include "SerialDeviceEnumeratorPrivate.h"

#include "PortNode.h"
#include "UdevPort.h"
#include "serial/SerialDeviceEnumerator.h"

#include <fcntl.h>
#include <libudev.h>
#include <unistd.h>

namespace {

/// The subsystem that every serial port belongs to.
constexpr char Subsystem[] = "tty";

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

struct EnumerateUnref
{
    void operator()(udev_enumerate *object) const { udev_enumerate_unref(object); }
};

struct DeviceUnref
{
    void operator()(udev_device *object) const { udev_device_unref(object); }
};

using Device = std::unique_ptr<udev_device, DeviceUnref>;

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
    const std::unique_ptr<udev_enumerate, EnumerateUnref> list(udev_enumerate_new(context.get()));
    if (!list || udev_enumerate_add_match_subsystem(list.get(), Subsystem) < 0
        || udev_enumerate_scan_devices(list.get()) < 0) {
        return ports;
    }

    udev_list_entry *entry = nullptr;
    udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(list.get()))
    {
        // Null if the device has gone since it was listed.
        const Device tty(
            udev_device_new_from_syspath(context.get(), udev_list_entry_get_name(entry)));
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
