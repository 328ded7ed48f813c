#pragma once

#include "serial/SerialInfo.h"

#include <QSocketNotifier>
#include <QString>

#include <memory>

struct udev;
struct udev_monitor;

class SerialDeviceEnumerator;

/// What SerialDeviceEnumerator needs of Linux: udev lists the ports and tells of changes.
///
/// Without udev, or without its netlink socket (some sandboxes forbid it), there is no watch, and
/// the port list stays empty.
class SerialDeviceEnumeratorPrivate
{
public:
    /// Opens udev and subscribes to its events. @p owner is not owned and outlives this object.
    explicit SerialDeviceEnumeratorPrivate(SerialDeviceEnumerator *owner);
    virtual ~SerialDeviceEnumeratorPrivate();
    SerialDeviceEnumeratorPrivate(const SerialDeviceEnumeratorPrivate &) = delete;
    SerialDeviceEnumeratorPrivate &operator=(const SerialDeviceEnumeratorPrivate &) = delete;

    /// Makes #notifier if udev's events can be had and there is none yet.
    void makeNotifier();
    /// Whether all that the watch needs exists.
    bool canWatch() const;
    /// Takes all pending events off the socket, so that one scan answers them all. This comes
    /// before the scan: an event that arrives during it brings about another.
    void acceptEvents();
    /// Makes the watch ready for the next event. udev's needs nothing; others fire only once.
    void armWatch() { }
    /// The ports that are there now. Empty if udev can't list them.
    SerialInfoMap scan() const;
    /// Test opening of #currentName, which is not empty.
    bool isPortBusy() const;

    struct Unref
    {
        void operator()(udev *object) const;
        void operator()(udev_monitor *object) const;
    };

    SerialDeviceEnumerator *const q;
    SerialInfoMap infoMap; ///< the last scan
    QString currentName; ///< the chosen port
    SerialInfo current; ///< record of the chosen port, as it was when it was chosen
    std::unique_ptr<udev, Unref> context; ///< null if udev can't be used
    std::unique_ptr<udev_monitor, Unref> monitor; ///< null if udev's events can't be had
    /// Tells of pending events. It stands last to go before the socket that it watches.
    std::unique_ptr<QSocketNotifier> notifier;
};
