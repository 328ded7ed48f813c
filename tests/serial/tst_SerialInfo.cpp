#include "serial/SerialInfo.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_SerialInfo : public TestCase
{
    Q_OBJECT

private slots:
    void holdsFieldsInOrder();
    void differsInAnyText();
    void differsInHardwareIds();
    void namesSerialPorts_data();
    void namesSerialPorts();
};

namespace {

const SerialInfo full{u"port"_s,     u"object"_s,      u"class"_s,  u"location"_s, u"driver"_s,
                      u"friendly"_s, u"description"_s, {u"id 1"_s}, u"vendor"_s,   u"product"_s,
                      u"maker"_s,    u"service"_s,     u"bus"_s,    u"reserved"_s};

} // namespace

void tst_SerialInfo::holdsFieldsInOrder()
{
    const auto &[portName, deviceObject, deviceClass, locationInfo, driverPath, friendlyName,
                 description, hardwareIds, vendorId, productId, manufacturer, service, busName,
                 reserved] = full;

    QCOMPARE(&portName, &full.portName);
    QCOMPARE(&deviceObject, &full.deviceObject);
    QCOMPARE(&deviceClass, &full.deviceClass);
    QCOMPARE(&locationInfo, &full.locationInfo);
    QCOMPARE(&driverPath, &full.driverPath);
    QCOMPARE(&friendlyName, &full.friendlyName);
    QCOMPARE(&description, &full.description);
    QCOMPARE(&hardwareIds, &full.hardwareIds);
    QCOMPARE(&vendorId, &full.vendorId);
    QCOMPARE(&productId, &full.productId);
    QCOMPARE(&manufacturer, &full.manufacturer);
    QCOMPARE(&service, &full.service);
    QCOMPARE(&busName, &full.busName);
    QCOMPARE(&reserved, &full.reserved);
}

void tst_SerialInfo::differsInAnyText()
{
    QVERIFY(SerialInfo(full) == full);
    for (const auto field :
         {&SerialInfo::portName, &SerialInfo::deviceObject, &SerialInfo::deviceClass,
          &SerialInfo::locationInfo, &SerialInfo::driverPath, &SerialInfo::friendlyName,
          &SerialInfo::description, &SerialInfo::vendorId, &SerialInfo::productId,
          &SerialInfo::manufacturer, &SerialInfo::service, &SerialInfo::busName,
          &SerialInfo::reserved}) {
        SerialInfo other = full;
        other.*field = (full.*field).toUpper();
        QVERIFY2(other != full, qPrintable(full.*field));
        QVERIFY2((SerialInfoMap{{full.portName, other}} != SerialInfoMap{{full.portName, full}}),
                 qPrintable(full.*field));
    }
}

void tst_SerialInfo::differsInHardwareIds()
{
    SerialInfo two = full;
    two.hardwareIds = {u"id 1"_s, u"id 2"_s};
    QVERIFY(two != full);

    SerialInfo turned = full;
    turned.hardwareIds = {u"id 2"_s, u"id 1"_s};
    QVERIFY(turned != two);
}

void tst_SerialInfo::namesSerialPorts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("listed");

    QTest::newRow("COM") << u"COM3"_s << true;
    QTest::newRow("tty") << u"ttyACM0"_s << true;
    QTest::newRow("LPT") << u"LPT1"_s << false;
    QTest::newRow("LPT inside") << u"xLPT1"_s << false;
    QTest::newRow("in small letters") << u"lpt1"_s << true;
    QTest::newRow("no name") << QString() << false;
}

void tst_SerialInfo::namesSerialPorts()
{
    QFETCH(QString, name);
    QTEST(isSerialPortName(name), "listed");
}

QTEST_GUILESS_MAIN(tst_SerialInfo)
#include "tst_SerialInfo.moc"
