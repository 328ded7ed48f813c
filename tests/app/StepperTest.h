#pragma once

#include "app/Stepper.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QComboBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>

#include <memory>

class SimulatedCanBus;
class SimulatedPort;

/// Base of the tests of the central widget: a shown one for each test function, driven as a user
/// does. Debug lines are collected.
class StepperTest : public TestCase
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    /// The descendant @p name of the descendant @p parent. A missing one ends the test program.
    template <typename Widget>
    Widget *child(const char *name, const char *parent = nullptr) const;

    /// Clicks on a button of a panel.
    void click(const char *panel, const char *button);
    /// Chooses the port on the USB page, which is told of it first if it doesn't list it, and
    /// clicks "Connect".
    void connectOverUsb(const QString &port);
    void connectOverSerial(const QString &port, int baudrate, int address);
    void connectOverCan(int kiloBitsPerSecond, int sendId, int receiveId);
    /// Waits for a pass of the polling, stops it for sure, and forgets what crossed the wire.
    void stopPolling(SimulatedPort &module);
    /// The same over CAN.
    void stopPolling(SimulatedCanBus &bus);
    /// The requests that the module on the bus got.
    static QStringList requestsOf(const SimulatedCanBus &bus);
    void sendDirectCommand(const QString &command, int type);
    /// Whether the panel offers to connect, and nothing else.
    bool isReady(const char *panel) const;
    bool moduleTabsAreEnabled() const;
    bool moduleTabsAreDisabled() const;

    std::unique_ptr<DebugLog> m_log;
    std::unique_ptr<Stepper> m_stepper;

private:
    /// Waits for the end of a pass, stops the polling, and waits for the end of its last tick.
    void stopPollingAfterPass();
    int enabledModuleTabs() const;
};

template <typename Widget>
Widget *StepperTest::child(const char *name, const char *parent) const
{
    const QWidget *root = m_stepper.get();
    if (parent) {
        root = root->findChild<QWidget *>(QLatin1String(parent));
    }
    auto *widget = root ? root->findChild<Widget *>(QLatin1String(name)) : nullptr;
    if (!widget) {
        qFatal("no %s in %s", name, parent ? parent : "the window");
    }
    return widget;
}
