#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <qt_windows.h>

/// What a device's keys say of it. An empty text stands for a value that isn't there.
struct Device
{
    QString portName = {};
    QString friendlyName = {};
    QString description = {};
    QString manufacturer = {};
    QString location = {};
    QString service = {};
    QStringList hardwareIds = {};
    /// Ports; wine wants the braces and any case.
    QString classId = QStringLiteral("{4D36E978-E325-11CE-BFC1-08002BE10318}");
    QString className = QStringLiteral("Ports");
};

/// The keys of a device in the registry while the object lives, which make it a present one to the
/// set-up functions of wine.
class DeviceKey
{
public:
    /// @param path below the key of all devices: "USB\\VID_16D0&PID_0650\\0001"
    DeviceKey(const QString &path, const Device &device);
    ~DeviceKey();
    DeviceKey(const DeviceKey &) = delete;
    DeviceKey &operator=(const DeviceKey &) = delete;

    /// Changes a value of the device's key.
    void set(const QString &name, const QString &text) const;
    /// Sets a value beside "PortName", of any type.
    void setParameter(const QString &name, DWORD type, const QByteArray &data) const;

private:
    void setIfAny(const QString &name, const QString &text) const;

    const QString m_path;
};

/// Writes below the services' key, as Windows does when a driver starts or stops.
void touchServices();
/// Gives the service @p name an image path while the object lives.
class ServiceKey
{
public:
    ServiceKey(const QString &name, const QString &imagePath, DWORD type = REG_EXPAND_SZ);
    ~ServiceKey();
    ServiceKey(const ServiceKey &) = delete;
    ServiceKey &operator=(const ServiceKey &) = delete;

private:
    const QString m_path;
};
