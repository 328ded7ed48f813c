#pragma once

#include "simulator/plugged/Testbed.h"

#include <QByteArray>
#include <QString>

#include <map>

/// What a USB device says of itself. An empty text doesn't exist at all.
struct UsbDevice
{
    QByteArray vendor = "16d0";
    QByteArray manufacturer = "Moravint";
    QByteArray product = "ZDRM-7710";
    QByteArray driver = "cdc_acm";
};

/// The machine that the list of ports is read from, with ports that can be listed, opened and
/// pulled out. The test has to be started under tests/support/umockdev-launcher, and only one
/// machine may live at a time.
class UsbMachine
{
public:
    /// Plugs in @p device as the port @p name ("ttyACM0"), behind which is @p terminal.
    void plugIn(const QString &name, const UsbDevice &device, const QString &terminal);
    /// Takes the port away from the list. Whoever has it open sees nothing of that.
    void pullOut(const QString &name);
    /// Takes all ports away.
    void pullOutAll();

private:
    simulator::Testbed m_testbed;
    std::map<QString, simulator::SerialDevice> m_plugged;
};
