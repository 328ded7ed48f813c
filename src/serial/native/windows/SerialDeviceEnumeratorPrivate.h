#pragma once

#include "EventHandle.h"
#include "RegistryKey.h"
#include "serial/SerialInfo.h"

#include <QString>
#include <QWinEventNotifier>

#include <memory>

class SerialDeviceEnumerator;

/// What SerialDeviceEnumerator needs of Windows: the set-up functions list the ports, and the
/// registry tells of changes. Without the registry key there is no watch, and the list stays empty.
class SerialDeviceEnumeratorPrivate
{
public:
    /// Opens the key that is watched. @p owner is not owned and outlives this object.
    explicit SerialDeviceEnumeratorPrivate(SerialDeviceEnumerator *owner);
    virtual ~SerialDeviceEnumeratorPrivate();
    SerialDeviceEnumeratorPrivate(const SerialDeviceEnumeratorPrivate &) = delete;
    SerialDeviceEnumeratorPrivate &operator=(const SerialDeviceEnumeratorPrivate &) = delete;

    /// Makes #notifier if there is an event to watch and no notifier yet.
    void makeNotifier();
    /// Whether all that the watch needs exists.
    bool canWatch() const;
    /// Nothing is to be taken: the event resets itself.
    void acceptEvents() { }
    /// Makes the watch ready for the next change. It holds for one, so this comes after every scan,
    /// whatever that has found.
    void armWatch();
    /// The ports that are there now. A class of devices that can't be listed ends the scan with
    /// what was found by then.
    SerialInfoMap scan() const;
    /// Test opening of #currentName, which is not empty.
    bool isPortBusy() const;

    SerialDeviceEnumerator *const q;
    SerialInfoMap infoMap; ///< the last scan
    QString currentName; ///< the chosen port
    SerialInfo current; ///< record of the chosen port, as it was when it was chosen
    EventHandle eventHandle; ///< that the registry signals
    std::unique_ptr<RegistryKey> keyHandle; ///< null if there is no event, or it can't be opened
    /// Tells of changes. It stands last to go before the event that it watches.
    std::unique_ptr<QWinEventNotifier> notifier;
};
