#include "DeviceListTest.h"
#include "PanelTest.h"
#include "panels/WConnection.h"
#include "support/DebugLog.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QComboBox>
#include <QGroupBox>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace DeviceListTest;

using Panel = Shown<WConnection>;

class tst_WConnection : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void constructors();
    void properties_data();
    void properties() { compareProperty(WConnection()); }
    void setTitle();
    void layoutFits();
    void connectSendsPort();
    void states() { ConnectionTest::states<WConnection>(); }
    void keyboard();

    void addDevice_data() { DeviceListTest::addDevice_data(); }
    void addDevice() { DeviceListTest::addDevice<WConnection>(); }
    void firstDeviceEnablesConnect() { DeviceListTest::firstDeviceEnablesConnect<WConnection>(); }
    void laterDeviceLeavesButtons() { DeviceListTest::laterDeviceLeavesButtons<WConnection>(); }
    void firstDeviceAfterClearEnablesConnect()
    {
        DeviceListTest::firstDeviceAfterClearEnablesConnect<WConnection>();
    }
    void samePortTwice() { DeviceListTest::samePortTwice<WConnection>(); }
    void removeLast() { DeviceListTest::removeLast<WConnection>(); }
    void removeCurrentWhileConnected()
    {
        DeviceListTest::removeCurrentWhileConnected<WConnection>();
    }
    void removeOther() { DeviceListTest::removeOther<WConnection>(); }
    void removeOnlyFirstOfSamePort() { DeviceListTest::removeOnlyFirstOfSamePort<WConnection>(); }
    void removeUnknown() { DeviceListTest::removeUnknown<WConnection>(); }
    void removeStepsOverForeignItems()
    {
        DeviceListTest::removeStepsOverForeignItems<WConnection>();
    }
    void clearDevices() { DeviceListTest::clearDevices<WConnection>(); }
    void connectIgnoresShownText() { DeviceListTest::connectIgnoresShownText<WConnection>(); }
    void connectWithEmptyPort() { DeviceListTest::connectWithEmptyPort<WConnection>(); }
    void connectWithoutSelection() { DeviceListTest::connectWithoutSelection<WConnection>(); }
    void failedOpenReturnsToReady() { DeviceListTest::failedOpenReturnsToReady<WConnection>(); }
    void disconnectAsksToClose() { DeviceListTest::disconnectAsksToClose<WConnection>(); }
    void toolTips() { DeviceListTest::toolTips<WConnection>(); }
};

void tst_WConnection::signalsAndSlots()
{
    const QMetaObject &metaObject = WConnection::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             (QStringList{u"openDevice(QString port)"_s, u"closeDevice()"_s}));
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             (QStringList{u"on_btnConnect_clicked()"_s, u"on_btnDisconnect_clicked()"_s,
                          u"deviceClosed()"_s}));
}

void tst_WConnection::constructors()
{
    QWidget window;
    const WConnection child(&window);
    QCOMPARE(child.parentWidget(), &window);
    const WConnection titled(u"Any title"_s);
    QVERIFY(!titled.parentWidget());
    QCOMPARE(titled.findChild<QGroupBox *>(u"gbConnection"_s)->title(), u"Any title"_s);
}

void tst_WConnection::properties_data()
{
    addPropertyColumns();
    addPropertyRow("panel", "WConnection", "size", QSize(198, 106));
    addPropertyRow("gbConnection", "QGroupBox", "title", u"Connection"_s);
    addPropertyRow("cmbDevices", "QComboBox", "count", 0);
    addPropertyRow("cmbDevices", "QComboBox", "editable", false);
    addPropertyRow("cmbDevices", "QComboBox", "enabled", true);
    addPropertyRow("cmbDevices", "QComboBox", "accessibleName", u"Device"_s);
    addPropertyRow("btnConnect", "QPushButton", "text", u"Connect"_s);
    addPropertyRow("btnConnect", "QPushButton", "enabled", false);
    addPropertyRow("btnDisconnect", "QPushButton", "text", u"Disconnect"_s);
    addPropertyRow("btnDisconnect", "QPushButton", "enabled", false);
}

void tst_WConnection::setTitle()
{
    const Panel panel;
    panel->setTitle(u"USB connection"_s);
    QCOMPARE(panel.child<QGroupBox>("gbConnection")->title(), u"USB connection"_s);
}

void tst_WConnection::connectSendsPort()
{
    const Panel panel;
    add(panel, u"COM7"_s, u"Virtual COM Port"_s);
    add(panel, u"COM8"_s, u"Other"_s);
    panel.child<QComboBox>("cmbDevices")->setCurrentIndex(1);
    bool connectedBefore = false;
    connect(panel.get(), &WConnection::openDevice, this,
            [&] { connectedBefore = connected(panel); });
    QSignalSpy opened(panel.get(), &WConnection::openDevice);
    DebugLog log;
    panel.click("btnConnect");
    QCOMPARE(opened, QList<QVariantList>{{u"COM8"_s}});
    QVERIFY(connectedBefore);
    QVERIFY(connected(panel));
    QCOMPARE(log.lines(), QStringList{u"connect to: \"COM8\""_s});
}

void tst_WConnection::layoutFits()
{
    const Panel panel;
    panel->setTitle(u"USB connection"_s);
    add(panel, u"a-port-with-a-name-far-wider-than-the-panel"_s, u"Description"_s);
    QVERIFY(panel->minimumSizeHint().width() <= 198);
    QVERIFY(panel->minimumSizeHint().height() <= 106);
    QCOMPARE(panel.clipped(), QStringList());
}

void tst_WConnection::keyboard()
{
    const Panel panel;
    add(panel, u"COM7"_s);
    add(panel, u"COM8"_s);
    QCOMPARE(panel.tabOrder("cmbDevices"), (QStringList{u"cmbDevices"_s, u"btnConnect"_s}));
    QTest::keyClick(panel.child("cmbDevices"), Qt::Key_Down);
    QSignalSpy opened(panel.get(), &WConnection::openDevice);
    QSignalSpy closed(panel.get(), &WConnection::closeDevice);
    panel.child("btnConnect")->setFocus();
    QTest::keyClick(panel.child("btnConnect"), Qt::Key_Space);
    QCOMPARE(opened, QList<QVariantList>{{u"COM8"_s}});
    // The focus goes on to the other button, not out of the panel.
    QCOMPARE(QApplication::focusWidget(), panel.child("btnDisconnect"));
    QTest::keyClick(panel.child("btnDisconnect"), Qt::Key_Space);
    QCOMPARE(closed.count(), 1);
}

QTEST_MAIN(tst_WConnection)
#include "tst_WConnection.moc"
