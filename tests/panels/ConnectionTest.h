#pragma once

#include "PanelTest.h"

/// What the panels that connect and disconnect do alike, tested on each of them. Where a panel is
/// handed over, it is ready to connect.
namespace ConnectionTest {

using PanelTest::Shown;

template <typename Panel>
bool ready(const Shown<Panel> &panel)
{
    return panel.enabled("btnConnect") && !panel.enabled("btnDisconnect");
}

template <typename Panel>
bool connected(const Shown<Panel> &panel)
{
    return !panel.enabled("btnConnect") && panel.enabled("btnDisconnect");
}

/// For panels with the slot deviceClosed(). Whoever shows a state needn't look at a list of
/// devices.
template <typename Panel>
void states()
{
    const Shown<Panel> panel;
    QSignalSpy opened(panel.get(), &Panel::openDevice);
    QSignalSpy closed(panel.get(), &Panel::closeDevice);
    panel->showConnected();
    QVERIFY(connected(panel));
    panel->showDisconnected();
    QVERIFY(ready(panel));
    panel->showConnected();
    panel->deviceClosed();
    QVERIFY(ready(panel));
    QVERIFY(opened.isEmpty());
    QVERIFY(closed.isEmpty());
}

template <typename Panel>
void failedOpenReturnsToReady(const Shown<Panel> &panel)
{
    QObject::connect(panel.get(), &Panel::openDevice, panel.get(), &Panel::showDisconnected);
    panel.click("btnConnect");
    QVERIFY(ready(panel));
}

template <typename Panel>
void disconnectAsksToClose(const Shown<Panel> &panel)
{
    panel.click("btnConnect");
    bool readyBefore = false;
    QObject::connect(panel.get(), &Panel::closeDevice, panel.get(),
                     [&] { readyBefore = ready(panel); });
    QSignalSpy closed(panel.get(), &Panel::closeDevice);
    panel.click("btnDisconnect");
    QCOMPARE(closed.count(), 1);
    QVERIFY(readyBefore);
    QVERIFY(ready(panel));
    panel.click("btnDisconnect"); // disabled by now
    QCOMPARE(closed.count(), 1);
}

} // namespace ConnectionTest
