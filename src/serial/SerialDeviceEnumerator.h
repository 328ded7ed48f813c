#pragma once

#include <QObject>
#include <QStringList>

#include <memory>

class SerialDeviceEnumeratorPrivate;

/// Knows which serial ports the machine has now, tells when that set changes, and answers
/// questions about one port that is chosen by name.
///
/// There is one enumerator in the process, instance(). It lives on the main thread; a scan runs
/// within its event handler. Nothing is reported on failure: what can't be found out is empty, and
/// without the platform's means to watch for changes the list stays empty for good, rather than
/// show ports that are long gone.
class SerialDeviceEnumerator : public QObject
{
    Q_OBJECT

public:
    /// Scans at once, so hasChanged() fires here, before anyone can have connected to it: ask for
    /// devicesAvailable() after connecting.
    explicit SerialDeviceEnumerator(QObject *parent = nullptr);
    ~SerialDeviceEnumerator() override;

    /// The enumerator of the process, made at the first call, which has to come from the main
    /// thread with the application object made. It is never destroyed.
    static SerialDeviceEnumerator *instance();

    /// Turns the watch on or off; turning it on scans at once. Without the platform's means to
    /// watch nothing happens.
    void setEnabled(bool enable);
    /// Whether changes are watched for.
    bool isEnabled() const;

    /// The port names of the last scan, sorted.
    QStringList devicesAvailable() const;

    /// Chooses the port that the accessors below speak of. They answer from a copy of its record,
    /// which later scans don't refresh, or with empty values if the last scan has no such port.
    void setDeviceName(const QString &name);
    /// The name given to setDeviceName(), known or not.
    QString name() const;

    QString portName() const; ///< SerialInfo::portName of the chosen port
    QString deviceObject() const; ///< SerialInfo::deviceObject of the chosen port
    QString deviceClass() const; ///< SerialInfo::deviceClass of the chosen port
    QString locationInfo() const; ///< SerialInfo::locationInfo of the chosen port
    QString driverPath() const; ///< SerialInfo::driverPath of the chosen port
    QString friendlyName() const; ///< SerialInfo::friendlyName of the chosen port
    QString description() const; ///< SerialInfo::description of the chosen port
    QStringList hardwareIds() const; ///< SerialInfo::hardwareIds of the chosen port
    QString vendorId() const; ///< SerialInfo::vendorId of the chosen port
    QString productId() const; ///< SerialInfo::productId of the chosen port
    QString manufacturer() const; ///< SerialInfo::manufacturer of the chosen port
    QString service() const; ///< SerialInfo::service of the chosen port
    QString busName() const; ///< SerialInfo::busName of the chosen port
    QString reserved() const; ///< always empty

    /// Whether the last scan has the chosen port. Unlike the accessors above this is up to date.
    bool isExists() const;
    /// Opens the chosen port for a moment to see whether someone holds it. A port that can't be
    /// opened for whatever reason, a missing one included, answers true; no chosen port, false.
    bool isBusy() const;

signals:
    /// A scan differs from the one before, in its ports or in any field of one.
    /// @p list holds the names of all ports there are now, sorted.
    void hasChanged(QStringList list);

public slots:
    /// Scans and emits hasChanged() for a real difference; run whenever the platform's watch fires.
    void _q_processWatcher();

private:
    std::unique_ptr<SerialDeviceEnumeratorPrivate> d;
};
