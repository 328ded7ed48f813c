#include "ConnectionTest.h"
#include "PanelTest.h"
#include "panels/WCANConnection.h"
#include "support/DebugLog.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using ConnectionTest::connected;
using ConnectionTest::ready;

using Panel = Shown<WCANConnection>;

class tst_WCANConnection : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void properties_data();
    void properties() { compareProperty(WCANConnection()); }
    void initialBitrates();
    void bitratesOfTheTool();
    void addBitrateIgnoresLocale();
    void setTitle();
    void layoutFits();
    void labels();
    void connectSendsChoice_data();
    void connectSendsChoice();
    void typedIdentifiers();
    void connectWithoutBitrate();
    void failedOpenReturnsToReady() { ConnectionTest::failedOpenReturnsToReady(Panel()); }
    void disconnectAsksToClose() { ConnectionTest::disconnectAsksToClose(Panel()); }
    void states() { ConnectionTest::states<WCANConnection>(); }
    void keyboard();
};

namespace {

QStringList bitrates(const Panel &panel)
{
    const auto *list = panel.child<QComboBox>("cmbBitrate");
    QStringList texts;
    for (int i = 0; i < list->count(); ++i) {
        texts.append(list->itemText(i));
    }
    return texts;
}

} // namespace

void tst_WCANConnection::signalsAndSlots()
{
    const QMetaObject &metaObject = WCANConnection::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(
        ownMethods(metaObject, QMetaMethod::Signal),
        (QStringList{u"openDevice(int bitrate, int sendID, int receiveID)"_s, u"closeDevice()"_s}));
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             (QStringList{u"on_btnConnect_clicked()"_s, u"on_btnDisconnect_clicked()"_s,
                          u"deviceClosed()"_s}));
}

void tst_WCANConnection::properties_data()
{
    addPropertyColumns();
    addPropertyRow("panel", "WCANConnection", "size", QSize(198, 160));
    addPropertyRow("panel", "WCANConnection", "maximumSize", QSize(240, 160));
    addPropertyRow("gbConnection", "QGroupBox", "title", u"CAN"_s);
    addPropertyRow("lblBitrate", "QLabel", "text", u"Bitrate [kBit/s]"_s);
    addPropertyRow("cmbBitrate", "QComboBox", "editable", false);
    addPropertyRow("cmbBitrate", "QComboBox", "currentIndex", 0);
    addPropertyRow("lblSendId", "QLabel", "text", u"Send ID"_s);
    addSpinBoxRows("sbSendId", 0, 255, 1, true);
    addPropertyRow("lblRecvId", "QLabel", "text", u"Receive ID"_s);
    addSpinBoxRows("sbReceiveId", 0, 255, 2, true);
    addPropertyRow("btnConnect", "QPushButton", "text", u"Connect"_s);
    addPropertyRow("btnConnect", "QPushButton", "enabled", true);
    addPropertyRow("btnDisconnect", "QPushButton", "text", u"Disconnect"_s);
    addPropertyRow("btnDisconnect", "QPushButton", "enabled", false);
}

void tst_WCANConnection::initialBitrates()
{
    QCOMPARE(bitrates(Panel()),
             (QStringList{u"1000"_s, u"500"_s, u"250"_s, u"125"_s, u"100"_s, u"50"_s, u"20"_s,
                          u"10"_s}));
}

void tst_WCANConnection::bitratesOfTheTool()
{
    const Panel panel;
    auto *list = panel.child<QComboBox>("cmbBitrate");
    list->setCurrentIndex(3);
    panel->clearBitrates();
    QCOMPARE(list->count(), 0);
    for (const int kbit : {1000, 500, 250, 125, 100, 50, 10}) {
        panel->addBitrate(kbit);
    }
    QCOMPARE(bitrates(panel),
             (QStringList{u"1000"_s, u"500"_s, u"250"_s, u"125"_s, u"100"_s, u"50"_s, u"10"_s}));
    QCOMPARE(list->currentText(), u"1000"_s);
    QVERIFY(!list->itemData(0).isValid());
    QVERIFY(ready(panel));
}

void tst_WCANConnection::addBitrateIgnoresLocale()
{
    const DefaultLocale defaultLocale(u"de_DE"_s);
    const Panel panel;
    panel->addBitrate(1234567);
    QCOMPARE(bitrates(panel).first(), u"1000"_s);
    QCOMPARE(bitrates(panel).last(), u"1234567"_s);
}

void tst_WCANConnection::setTitle()
{
    const Panel panel;
    panel->setTitle(u"CAN connection"_s);
    QCOMPARE(panel.child<QGroupBox>("gbConnection")->title(), u"CAN connection"_s);
}

void tst_WCANConnection::layoutFits()
{
    const Panel panel;
    panel->setTitle(u"CAN connection"_s);
    QVERIFY(panel->minimumSizeHint().width() <= 198);
    QVERIFY(panel->minimumSizeHint().height() <= 160);
    QCOMPARE(panel.clipped(), QStringList());
}

void tst_WCANConnection::labels()
{
    const Panel panel;
    QCOMPARE(panel.child<QLabel>("lblBitrate")->buddy(), panel.child("cmbBitrate"));
    QCOMPARE(panel.child<QLabel>("lblSendId")->buddy(), panel.child("sbSendId"));
    QCOMPARE(panel.child<QLabel>("lblRecvId")->buddy(), panel.child("sbReceiveId"));
}

void tst_WCANConnection::connectSendsChoice_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("bitrate");
    const int rates[] = {1000, 500, 250, 125, 100, 50, 20, 10};
    for (const char *locale : {"C", "de_DE"}) {
        for (int index = 0; index < 8; ++index) {
            QTest::addRow("%s %d", locale, rates[index])
                << QString::fromLatin1(locale) << index << rates[index];
        }
    }
}

void tst_WCANConnection::connectSendsChoice()
{
    QFETCH(QString, locale);
    QFETCH(int, index);
    QFETCH(int, bitrate);
    const DefaultLocale defaultLocale(locale);
    const Panel panel;
    panel.child<QComboBox>("cmbBitrate")->setCurrentIndex(index);
    panel.child<QSpinBox>("sbSendId")->setValue(200 + index);
    panel.child<QSpinBox>("sbReceiveId")->setValue(100 + index);
    bool connectedBefore = false;
    connect(panel.get(), &WCANConnection::openDevice, this,
            [&] { connectedBefore = connected(panel); });
    QSignalSpy opened(panel.get(), &WCANConnection::openDevice);
    const DebugLog log;
    panel.click("btnConnect");
    QCOMPARE(opened, (QList<QVariantList>{{bitrate, 200 + index, 100 + index}}));
    QVERIFY(connectedBefore);
    QVERIFY(connected(panel));
    QCOMPARE(log.lines(), QStringList());
}

void tst_WCANConnection::typedIdentifiers()
{
    const Panel panel;
    QSignalSpy opened(panel.get(), &WCANConnection::openDevice);
    panel.type("sbSendId", u"0"_s);
    panel.type("sbReceiveId", u"0"_s);
    panel.click("btnConnect");
    panel->showDisconnected();
    panel.type("sbSendId", u"255"_s);
    panel.type("sbReceiveId", u"254"_s);
    panel.click("btnConnect");
    QCOMPARE(opened, (QList<QVariantList>{{1000, 0, 0}, {1000, 255, 254}}));
}

void tst_WCANConnection::connectWithoutBitrate()
{
    // The text of no item reads as 0; who opens the channel decides about it.
    const Panel panel;
    panel->clearBitrates();
    QSignalSpy opened(panel.get(), &WCANConnection::openDevice);
    panel.click("btnConnect");
    QCOMPARE(opened, (QList<QVariantList>{{0, 1, 2}}));
}

void tst_WCANConnection::keyboard()
{
    const Panel panel;
    QCOMPARE(panel.tabOrder("cmbBitrate"),
             (QStringList{u"cmbBitrate"_s, u"sbSendId"_s, u"sbReceiveId"_s, u"btnConnect"_s}));
    QTest::keyClick(panel.child("cmbBitrate"), Qt::Key_Down);
    QTest::keyClick(panel.child("sbSendId"), Qt::Key_Up);
    QTest::keyClick(panel.child("sbReceiveId"), Qt::Key_Down);
    QSignalSpy opened(panel.get(), &WCANConnection::openDevice);
    QSignalSpy closed(panel.get(), &WCANConnection::closeDevice);
    panel.child("btnConnect")->setFocus();
    QTest::keyClick(panel.child("btnConnect"), Qt::Key_Space);
    QCOMPARE(opened, (QList<QVariantList>{{500, 2, 1}}));
    // The focus goes on to the other button, not out of the panel.
    QCOMPARE(QApplication::focusWidget(), panel.child("btnDisconnect"));
    QTest::keyClick(panel.child("btnDisconnect"), Qt::Key_Space);
    QCOMPARE(closed.count(), 1);
}

QTEST_MAIN(tst_WCANConnection)
#include "tst_WCANConnection.moc"
