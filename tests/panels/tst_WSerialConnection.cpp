#include "DeviceListTest.h"
#include "PanelTest.h"
#include "panels/WSerialConnection.h"
#include "support/DebugLog.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace DeviceListTest;

using Panel = Shown<WSerialConnection>;

class tst_WSerialConnection : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void constructors();
    void properties_data();
    void properties() { compareProperty(WSerialConnection()); }
    void baudrates();
    void setTitle();
    void layoutFits();
    void labels();
    void connectSendsChoice_data();
    void connectSendsChoice();
    void typedAddress_data();
    void typedAddress();
    void states();
    void keyboard();

    void addDevice_data() { DeviceListTest::addDevice_data(); }
    void addDevice() { DeviceListTest::addDevice<WSerialConnection>(); }
    void firstDeviceEnablesConnect()
    {
        DeviceListTest::firstDeviceEnablesConnect<WSerialConnection>();
    }
    void laterDeviceLeavesButtons()
    {
        DeviceListTest::laterDeviceLeavesButtons<WSerialConnection>();
    }
    void firstDeviceAfterClearEnablesConnect()
    {
        DeviceListTest::firstDeviceAfterClearEnablesConnect<WSerialConnection>();
    }
    void samePortTwice() { DeviceListTest::samePortTwice<WSerialConnection>(); }
    void removeLast() { DeviceListTest::removeLast<WSerialConnection>(); }
    void removeCurrentWhileConnected()
    {
        DeviceListTest::removeCurrentWhileConnected<WSerialConnection>();
    }
    void removeOther() { DeviceListTest::removeOther<WSerialConnection>(); }
    void removeOnlyFirstOfSamePort()
    {
        DeviceListTest::removeOnlyFirstOfSamePort<WSerialConnection>();
    }
    void removeUnknown() { DeviceListTest::removeUnknown<WSerialConnection>(); }
    void removeStepsOverForeignItems()
    {
        DeviceListTest::removeStepsOverForeignItems<WSerialConnection>();
    }
    void clearDevices() { DeviceListTest::clearDevices<WSerialConnection>(); }
    void connectIgnoresShownText() { DeviceListTest::connectIgnoresShownText<WSerialConnection>(); }
    void connectWithEmptyPort() { DeviceListTest::connectWithEmptyPort<WSerialConnection>(); }
    void connectWithoutSelection() { DeviceListTest::connectWithoutSelection<WSerialConnection>(); }
    void failedOpenReturnsToReady()
    {
        DeviceListTest::failedOpenReturnsToReady<WSerialConnection>();
    }
    void disconnectAsksToClose() { DeviceListTest::disconnectAsksToClose<WSerialConnection>(); }
    void toolTips() { DeviceListTest::toolTips<WSerialConnection>(); }
};

void tst_WSerialConnection::signalsAndSlots()
{
    const QMetaObject &metaObject = WSerialConnection::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             (QStringList{u"openDevice(QString port, int baudrate, int address)"_s,
                          u"closeDevice()"_s}));
    // No deviceClosed() here, unlike the other two panels.
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             (QStringList{u"on_btnConnect_clicked()"_s, u"on_btnDisconnect_clicked()"_s}));
}

void tst_WSerialConnection::constructors()
{
    QWidget window;
    const WSerialConnection child(&window);
    QCOMPARE(child.parentWidget(), &window);
    const WSerialConnection titled(u"Any title"_s);
    QVERIFY(!titled.parentWidget());
    QCOMPARE(titled.findChild<QGroupBox *>(u"gbSerialConnection"_s)->title(), u"Any title"_s);
}

void tst_WSerialConnection::properties_data()
{
    addPropertyColumns();
    addPropertyRow("panel", "WSerialConnection", "size", QSize(198, 173));
    addPropertyRow("panel", "WSerialConnection", "maximumSize", QSize(300, 173));
    addPropertyRow("gbSerialConnection", "QGroupBox", "title", u"Serial Connection"_s);
    addPropertyRow("lblPort", "QLabel", "text", u"Port:"_s);
    addPropertyRow("lblBaudrate", "QLabel", "text", u"Baudrate:"_s);
    addPropertyRow("lblAddress", "QLabel", "text", u"Address:"_s);
    for (const char *label : {"lblPort", "lblBaudrate", "lblAddress"}) {
        addPropertyRow(label, "QLabel", "minimumWidth", 50);
        addPropertyRow(label, "QLabel", "maximumWidth", 50);
    }
    addPropertyRow("cmbDevices", "QComboBox", "count", 0);
    addPropertyRow("cmbDevices", "QComboBox", "editable", false);
    addPropertyRow("cmbBaudrates", "QComboBox", "editable", false);
    addPropertyRow("cmbBaudrates", "QComboBox", "currentIndex", 1);
    addPropertyRow("cmbBaudrates", "QComboBox", "currentText", u"9600"_s);
    addSpinBoxRows("sbAddress", 0, 255, 1, true);
    addPropertyRow("sbAddress", "QSpinBox", "minimumWidth", 60);
    addPropertyRow("btnConnect", "QPushButton", "text", u"Connect"_s);
    addPropertyRow("btnConnect", "QPushButton", "enabled", false);
    addPropertyRow("btnDisconnect", "QPushButton", "text", u"Disconnect"_s);
    addPropertyRow("btnDisconnect", "QPushButton", "enabled", false);
}

void tst_WSerialConnection::baudrates()
{
    const Panel panel;
    const auto *baudrates = panel.child<QComboBox>("cmbBaudrates");
    QStringList texts;
    for (int i = 0; i < baudrates->count(); ++i) {
        texts.append(baudrates->itemText(i));
    }
    QCOMPARE(texts,
             (QStringList{u"4800"_s, u"9600"_s, u"14400"_s, u"19200"_s, u"38400"_s, u"57600"_s,
                          u"115200"_s}));
}

void tst_WSerialConnection::setTitle()
{
    const Panel panel;
    panel->setTitle(u"Serial connection"_s);
    QCOMPARE(panel.child<QGroupBox>("gbSerialConnection")->title(), u"Serial connection"_s);
}

void tst_WSerialConnection::layoutFits()
{
    const Panel panel;
    panel->setTitle(u"Serial connection"_s);
    add(panel, u"a-port-with-a-name-far-wider-than-the-panel"_s, u"Description"_s);
    QVERIFY(panel->minimumSizeHint().width() <= 198);
    QVERIFY(panel->minimumSizeHint().height() <= 173);
    QCOMPARE(panel.clipped(), QStringList());
}

void tst_WSerialConnection::labels()
{
    const Panel panel;
    const QList<std::pair<const char *, const char *>> buddies = {
        {"lblPort", "cmbDevices"}, {"lblBaudrate", "cmbBaudrates"}, {"lblAddress", "sbAddress"}};
    for (const auto &[label, field] : buddies) {
        QCOMPARE(panel.child<QLabel>(label)->buddy(), panel.child(field));
        // The letters are narrowed where the font is too wide for the fixed width.
        QVERIFY(panel.child(label)->sizeHint().width() <= 50);
        QCOMPARE(panel.child(label)->font(), panel.child("lblPort")->font());
    }
}

void tst_WSerialConnection::connectSendsChoice_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("baudrate");
    const int baudrates[] = {4800, 9600, 14400, 19200, 38400, 57600, 115200};
    for (const char *locale : {"C", "de_DE"}) {
        for (int index = 0; index < 7; ++index) {
            QTest::addRow("%s %d", locale, baudrates[index])
                << QString::fromLatin1(locale) << index << baudrates[index];
        }
    }
}

void tst_WSerialConnection::connectSendsChoice()
{
    QFETCH(QString, locale);
    QFETCH(int, index);
    QFETCH(int, baudrate);
    const DefaultLocale defaultLocale(locale);
    const Panel panel;
    add(panel, u"COM7"_s, u"Virtual COM Port"_s);
    panel.child<QComboBox>("cmbBaudrates")->setCurrentIndex(index);
    panel.child<QSpinBox>("sbAddress")->setValue(200 + index);
    bool connectedBefore = false;
    connect(panel.get(), &WSerialConnection::openDevice, this,
            [&] { connectedBefore = connected(panel); });
    QSignalSpy opened(panel.get(), &WSerialConnection::openDevice);
    DebugLog log;
    panel.click("btnConnect");
    QCOMPARE(opened, (QList<QVariantList>{{u"COM7"_s, baudrate, 200 + index}}));
    QVERIFY(connectedBefore);
    QVERIFY(connected(panel));
    QCOMPARE(log.lines(), QStringList{u"connect to: \"COM7\""_s});
}

void tst_WSerialConnection::typedAddress_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("address");
    QTest::newRow("least") << u"0"_s << 0;
    QTest::newRow("largest") << u"255"_s << 255;
    QTest::newRow("too large") << u"256"_s << 25; // the last digit isn't accepted
    QTest::newRow("negative") << u"-7"_s << 7; // nor is the sign
}

void tst_WSerialConnection::typedAddress()
{
    QFETCH(QString, text);
    QFETCH(int, address);
    const Panel panel;
    add(panel, u"COM7"_s);
    panel.type("sbAddress", text);
    QSignalSpy opened(panel.get(), &WSerialConnection::openDevice);
    panel.click("btnConnect");
    QCOMPARE(opened, (QList<QVariantList>{{u"COM7"_s, 9600, address}}));
}

void tst_WSerialConnection::states()
{
    const Panel panel;
    QSignalSpy opened(panel.get(), &WSerialConnection::openDevice);
    QSignalSpy closed(panel.get(), &WSerialConnection::closeDevice);
    // Whoever shows a state needn't look at the list.
    panel->showConnected();
    QVERIFY(connected(panel));
    panel->showDisconnected();
    QVERIFY(ready(panel));
    QVERIFY(opened.isEmpty());
    QVERIFY(closed.isEmpty());
}

void tst_WSerialConnection::keyboard()
{
    const Panel panel;
    add(panel, u"COM7"_s);
    add(panel, u"COM8"_s);
    QCOMPARE(panel.tabOrder("cmbDevices"),
             (QStringList{u"cmbDevices"_s, u"cmbBaudrates"_s, u"sbAddress"_s, u"btnConnect"_s}));
    QTest::keyClick(panel.child("cmbDevices"), Qt::Key_Down);
    QTest::keyClick(panel.child("cmbBaudrates"), Qt::Key_End);
    QTest::keyClick(panel.child("sbAddress"), Qt::Key_Up);
    QSignalSpy opened(panel.get(), &WSerialConnection::openDevice);
    QSignalSpy closed(panel.get(), &WSerialConnection::closeDevice);
    panel.child("btnConnect")->setFocus();
    QTest::keyClick(panel.child("btnConnect"), Qt::Key_Space);
    QCOMPARE(opened, (QList<QVariantList>{{u"COM8"_s, 115200, 2}}));
    // The focus goes on to the other button, not out of the panel.
    QCOMPARE(QApplication::focusWidget(), panel.child("btnDisconnect"));
    QTest::keyClick(panel.child("btnDisconnect"), Qt::Key_Space);
    QCOMPARE(closed.count(), 1);
}

QTEST_MAIN(tst_WSerialConnection)
#include "tst_WSerialConnection.moc"
