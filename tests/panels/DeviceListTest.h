#pragma once

#include "ConnectionTest.h"
#include "PanelTest.h"
#include "support/DebugLog.h"

#include <QComboBox>

/// What the panels with a list of devices do alike, tested on either of them.
namespace DeviceListTest {

using namespace Qt::StringLiterals;
using namespace PanelTest;
using ConnectionTest::connected;
using ConnectionTest::ready;

template <typename Panel>
bool noDevice(const Shown<Panel> &panel)
{
    return !panel.enabled("btnConnect") && !panel.enabled("btnDisconnect");
}

template <typename Panel>
void add(const Shown<Panel> &panel, const QString &port, const QString &description = {})
{
    const DebugLog quiet;
    panel->addDevice(port, description);
}

template <typename Panel>
void remove(const Shown<Panel> &panel, const QString &port)
{
    const DebugLog quiet;
    panel->removeDevice(port);
}

inline void addDevice_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("text");
    QTest::newRow("first word") << u"COM7"_s << u"Virtual COM Port"_s << u"COM7 [Virtual]"_s;
    QTest::newRow("no description") << u"COM7"_s << QString() << u"COM7"_s;
    QTest::newRow("one word") << u"ttyACM0"_s << u"ZDRM-7710"_s << u"ttyACM0 [ZDRM-7710]"_s;
    QTest::newRow("leading blank") << u"COM7"_s << u" Virtual"_s << u"COM7 []"_s;
    QTest::newRow("one blank") << u"COM7"_s << u" "_s << u"COM7 []"_s;
    QTest::newRow("two blanks") << u"COM7"_s << u"Virtual  Port"_s << u"COM7 [Virtual]"_s;
    QTest::newRow("a tab is no blank") << u"COM7"_s << u"A\tB C"_s << u"COM7 [A\tB]"_s;
    QTest::newRow("beyond ASCII") << u"COM7"_s << u"Gerät Ä"_s << u"COM7 [Gerät]"_s;
    QTest::newRow("empty port") << QString() << u"Virtual"_s << u" [Virtual]"_s;
}

template <typename Panel>
void addDevice()
{
    QFETCH(QString, port);
    QFETCH(QString, description);
    QFETCH(QString, text);
    const Shown<Panel> panel;
    add(panel, u"other"_s);
    DebugLog log;
    panel->addDevice(port, description);

    QString line;
    QDebug(&line).nospace() << Panel::staticMetaObject.className() << "::addDevice(" << port << ", "
                            << description << ")";
    QCOMPARE(log.lines(), QStringList{line});
    auto *devices = panel.template child<QComboBox>("cmbDevices");
    QCOMPARE(devices->count(), 2);
    QCOMPARE(devices->itemText(1), text);
    QCOMPARE(QByteArray(devices->itemData(1, Qt::UserRole).typeName()), QByteArray("QVariantList"));
    QCOMPARE(devices->itemData(1, Qt::UserRole).toList(), (QVariantList{port, description}));
    QCOMPARE(devices->currentIndex(), 0);
}

template <typename Panel>
void firstDeviceEnablesConnect()
{
    const Shown<Panel> panel;
    QVERIFY(noDevice(panel));
    add(panel, u"COM7"_s);
    QVERIFY(ready(panel));
}

template <typename Panel>
void laterDeviceLeavesButtons()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s);
    panel->showConnected();
    add(panel, u"COM8"_s);
    QVERIFY(connected(panel));
}

template <typename Panel>
void firstDeviceAfterClearEnablesConnect()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s);
    panel->showConnected();
    panel->clearDevices();
    add(panel, u"COM8"_s);
    QVERIFY(panel.enabled("btnConnect"));
    QVERIFY(panel.enabled("btnDisconnect"));
}

template <typename Panel>
void samePortTwice()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s);
    add(panel, u"COM7"_s);
    QCOMPARE(panel.template child<QComboBox>("cmbDevices")->count(), 2);
}

template <typename Panel>
void removeLast()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s, u"Virtual COM Port"_s);
    panel->showConnected();
    DebugLog log;
    panel->removeDevice(u"COM7"_s);
    QCOMPARE(
        log.lines(),
        (QStringList{u"removeDevice(\"COM7\")"_s, u"item[0]: (\"COM7\", \"Virtual COM Port\")"_s,
                     u"port: \"COM7\" description: \"Virtual COM Port\""_s}));
    QCOMPARE(panel.template child<QComboBox>("cmbDevices")->count(), 0);
    QVERIFY(noDevice(panel));
}

template <typename Panel>
void removeCurrentWhileConnected()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s);
    add(panel, u"COM8"_s);
    panel.click("btnConnect");
    QVERIFY(connected(panel));
    // The buttons are ready before the item goes: asked at the moment of its going.
    bool readyBefore = false;
    QObject::connect(panel.template child<QComboBox>("cmbDevices")->model(),
                     &QAbstractItemModel::rowsAboutToBeRemoved, panel.get(),
                     [&] { readyBefore = ready(panel); });
    QSignalSpy closed(panel.get(), &Panel::closeDevice);
    remove(panel, u"COM7"_s);
    QVERIFY(readyBefore);
    QVERIFY(ready(panel));
    QVERIFY(closed.isEmpty());
    QCOMPARE(panel.template child<QComboBox>("cmbDevices")->currentText(), u"COM8"_s);
}

template <typename Panel>
void removeOther()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s);
    add(panel, u"COM8"_s);
    panel->showConnected();
    remove(panel, u"COM8"_s);
    QVERIFY(connected(panel));
    QCOMPARE(panel.template child<QComboBox>("cmbDevices")->count(), 1);
    QCOMPARE(panel.template child<QComboBox>("cmbDevices")->currentText(), u"COM7"_s);
}

template <typename Panel>
void removeOnlyFirstOfSamePort()
{
    const Shown<Panel> panel;
    add(panel, u"COM6"_s);
    add(panel, u"COM7"_s, u"first"_s);
    add(panel, u"COM7"_s, u"second"_s);
    DebugLog log;
    panel->removeDevice(u"COM7"_s);
    // The walk ends at the hit.
    QCOMPARE(
        log.lines(),
        (QStringList{u"removeDevice(\"COM7\")"_s, u"item[0]: (\"COM6\", \"\")"_s,
                     u"port: \"COM6\" description: \"\""_s, u"item[1]: (\"COM7\", \"first\")"_s,
                     u"port: \"COM7\" description: \"first\""_s}));
    auto *devices = panel.template child<QComboBox>("cmbDevices");
    QCOMPARE(devices->count(), 2);
    QCOMPARE(devices->itemText(0), u"COM6"_s);
    QCOMPARE(devices->itemText(1), u"COM7 [second]"_s);
}

template <typename Panel>
void removeUnknown()
{
    const Shown<Panel> panel;
    remove(panel, u"COM7"_s);
    QVERIFY(noDevice(panel));
    add(panel, u"COM7"_s, u"Virtual"_s);
    panel->showConnected();
    for (const QString &port : {u"com7"_s, u"COM"_s, u"COM77"_s, u"COM7 [Virtual]"_s, QString()}) {
        remove(panel, port);
    }
    QCOMPARE(panel.template child<QComboBox>("cmbDevices")->count(), 1);
    QVERIFY(connected(panel));
}

template <typename Panel>
void removeStepsOverForeignItems()
{
    const Shown<Panel> panel;
    panel.template child<QComboBox>("cmbDevices")->addItem(u"COM7"_s);
    add(panel, u"COM7"_s);
    QVERIFY(noDevice(panel)); // the list had an item already
    DebugLog log;
    panel->removeDevice(u"COM7"_s);
    QCOMPARE(log.lines(),
             (QStringList{u"removeDevice(\"COM7\")"_s, u"item[0]: ()"_s,
                          u"item[1]: (\"COM7\", \"\")"_s, u"port: \"COM7\" description: \"\""_s}));
    QCOMPARE(panel.template child<QComboBox>("cmbDevices")->count(), 1);
}

template <typename Panel>
void clearDevices()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s);
    add(panel, u"COM8"_s);
    DebugLog log;
    panel->clearDevices();
    QCOMPARE(panel.template child<QComboBox>("cmbDevices")->count(), 0);
    QVERIFY(ready(panel));
    panel->showConnected();
    panel->clearDevices();
    QVERIFY(connected(panel));
    QCOMPARE(log.lines(), QStringList());
}

template <typename Panel>
void connectIgnoresShownText()
{
    const Shown<Panel> panel;
    add(panel, u"COM 7 [x]"_s, u"Virtual"_s);
    panel.template child<QComboBox>("cmbDevices")->setItemText(0, u"something else"_s);
    QSignalSpy opened(panel.get(), &Panel::openDevice);
    panel.click("btnConnect");
    QCOMPARE(opened.value(0).value(0), QVariant(u"COM 7 [x]"_s));
}

template <typename Panel>
void connectWithEmptyPort()
{
    // The user data holds elements, so the item counts as chosen.
    const Shown<Panel> panel;
    add(panel, QString());
    QSignalSpy opened(panel.get(), &Panel::openDevice);
    panel.click("btnConnect");
    QCOMPARE(opened.count(), 1);
    QCOMPARE(opened.value(0).value(0), QVariant(QString()));
}

template <typename Panel>
void connectWithoutSelection()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s);
    panel.template child<QComboBox>("cmbDevices")->setCurrentIndex(-1);
    QSignalSpy opened(panel.get(), &Panel::openDevice);
    DebugLog log;
    panel.click("btnConnect");
    QVERIFY(opened.isEmpty());
    QVERIFY(ready(panel));
    QCOMPARE(log.lines(), QStringList());
}

template <typename Panel>
void failedOpenReturnsToReady()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s);
    ConnectionTest::failedOpenReturnsToReady(panel);
}

template <typename Panel>
void disconnectAsksToClose()
{
    const Shown<Panel> panel;
    add(panel, u"COM7"_s);
    ConnectionTest::disconnectAsksToClose(panel);
}

template <typename Panel>
void toolTips()
{
    // The narrow list shows one word of the description; the tool tip tells all.
    const Shown<Panel> panel;
    auto *devices = panel.template child<QComboBox>("cmbDevices");
    add(panel, u"COM7"_s, u"Virtual COM Port"_s);
    add(panel, u"COM8"_s);
    QCOMPARE(devices->toolTip(), u"COM7\nVirtual COM Port"_s);
    QCOMPARE(devices->itemData(1, Qt::ToolTipRole).toString(), u"COM8"_s);
    devices->setCurrentIndex(1);
    QCOMPARE(devices->toolTip(), u"COM8"_s);
    panel->clearDevices();
    QCOMPARE(devices->toolTip(), QString());
}

} // namespace DeviceListTest
