#pragma once

#include <QByteArray>

#include <memory>

struct _UMockdevTestbed;

/// A machine's serial ports as a test wants them: libudev, the device nodes and the hot-plug events
/// of this process come from here while the object lives. The test has to be started under
/// tests/support/umockdev-launcher. Only one may live at a time.
class SerialTestbed
{
public:
    /// What a USB device says of itself. An attribute left null doesn't exist at all.
    struct UsbDevice
    {
        QByteArray idVendor = "16d0";
        QByteArray idProduct = "0001";
        QByteArray manufacturer = "Moravint";
        QByteArray product = "ZDRM-7710";
        QByteArray bcdDevice = {};
    };

    SerialTestbed();
    ~SerialTestbed();
    SerialTestbed(const SerialTestbed &) = delete;
    SerialTestbed &operator=(const SerialTestbed &) = delete;

    /// Plugs in @p device as the port @p name ("ttyACM0"). It has no node in /dev: umockdev lets a
    /// node be added only once, and ports come and go.
    void plugIn(const QByteArray &name, const UsbDevice &device);
    /// Takes a port that plugIn() made away again, its USB device included.
    void pullOut(const QByteArray &name);
    /// Adds devices in umockdev's own format, parents first.
    void add(const QByteArray &description);
    /// Changes an attribute of a plugged-in USB device, without an event.
    void setUsbAttribute(const QByteArray &name, const char *attribute, const QByteArray &value);
    /// Sends a "change" event for a port.
    void touch(const QByteArray &name);

    /// Path of a plugged-in port in /sys.
    static QByteArray portPath(const QByteArray &name);
    /// Path of a port's USB device in /sys.
    static QByteArray usbPath(const QByteArray &name);

private:
    static QByteArray interfacePath(const QByteArray &name);

    struct Unref
    {
        void operator()(_UMockdevTestbed *testbed) const;
    };

    std::unique_ptr<_UMockdevTestbed, Unref> m_testbed;
};
