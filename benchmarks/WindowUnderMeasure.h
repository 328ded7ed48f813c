#pragma once

#include "app/Stepper.h"
#include "tests/support/SimulatedPort.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>

/// The window's central widget, shown, with a simulated module on a serial port to connect to.
class WindowUnderMeasure
{
public:
    WindowUnderMeasure()
    {
        m_stepper.resize(1000, 500);
        m_stepper.show();
        m_stepper.handleAttachedUsbDevice(m_port.portName(), QStringLiteral("simulated"));
        auto *devices = child<QComboBox>("cmbDevices", "wUsbConnection");
        devices->setCurrentIndex(devices->findText(m_port.portName(), Qt::MatchStartsWith));
        QApplication::processEvents();
    }

    /// Clicks on "Connect"; returns when the tabs are enabled.
    void connectOverUsb() const { child<QPushButton>("btnConnect", "wUsbConnection")->click(); }

    /// The descendant @p name of the descendant @p parent, which must exist.
    template <typename Widget>
    Widget *child(const char *name, const char *parent) const
    {
        return m_stepper.findChild<QWidget *>(QLatin1String(parent))
            ->findChild<Widget *>(QLatin1String(name));
    }

    Stepper &stepper() { return m_stepper; }
    SimulatedPort &port() { return m_port; }

private:
    SimulatedPort m_port;
    Stepper m_stepper{nullptr};
};
