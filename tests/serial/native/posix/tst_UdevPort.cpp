#include "serial/SerialDeviceEnumerator.h"
#include "serial/SerialTestbed.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Which devices of udev are listed as ports, and what is read of them.
class tst_UdevPort : public TestCase
{
    Q_OBJECT

private slots:
    void answersAllFields();
    void keepsCaseOfIds();
    void takesIdsFromUdev();
    void takesNoIdsForNames();
    void namesPort_data();
    void namesPort();
    void namesPortWithoutUsb();
    void listsPortsWithDeviceBehind();
    void listsNodeInDirectoryByPath();
    void listsNoPhantomUart_data();
    void listsNoPhantomUart();
};

void tst_UdevPort::answersAllFields()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {.bcdDevice = "0105"});
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"ttyACM0"_s);

    QCOMPARE(ports.name(), u"ttyACM0"_s);
    QVERIFY(ports.isExists());
    QCOMPARE(ports.portName(), u"ttyACM0"_s);
    QCOMPARE(ports.deviceObject(), QString::fromLatin1(SerialTestbed::portPath("ttyACM0")));
    QCOMPARE(ports.deviceClass(), u"tty"_s);
    QCOMPARE(ports.locationInfo(), u"pci-0000:00:14.0-usb-0:1:1.0"_s);
    QCOMPARE(ports.driverPath(), u"/sys/bus/usb/drivers/cdc_acm"_s);
    QCOMPARE(ports.friendlyName(), u"Moravint ZDRM-7710"_s);
    QCOMPARE(ports.description(), u"ZDRM-7710"_s);
    QCOMPARE(ports.hardwareIds(),
             (QStringList{u"USB\\VID_16D0&PID_0001&REV_0105"_s, u"USB\\VID_16D0&PID_0001"_s}));
    QCOMPARE(ports.vendorId(), u"16d0"_s);
    QCOMPARE(ports.productId(), u"0001"_s);
    QCOMPARE(ports.manufacturer(), u"Moravint"_s);
    QCOMPARE(ports.service(), u"cdc_acm"_s);
    QCOMPARE(ports.busName(), u"usb"_s);
    QCOMPARE(ports.reserved(), QString());
}

void tst_UdevPort::keepsCaseOfIds()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {.idVendor = "16D0", .idProduct = "06c9"});
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"ttyACM0"_s);

    QCOMPARE(ports.vendorId(), u"16D0"_s);
    QCOMPARE(ports.productId(), u"06c9"_s);
    QCOMPARE(ports.hardwareIds(), QStringList{u"USB\\VID_16D0&PID_06C9"_s});
}

void tst_UdevPort::takesIdsFromUdev()
{
    // A port that is handed on from another machine may lack its USB device, but not udev's word.
    SerialTestbed machine;
    machine.add("P: /devices/platform/vhci\nE: SUBSYSTEM=platform\n\n");
    machine.add(
        "P: /devices/platform/vhci/tty/ttyACM7\nN: ttyACM7\nE: SUBSYSTEM=tty\n"
        "E: DEVNAME=/dev/ttyACM7\nE: ID_BUS=usb\nE: ID_VENDOR_ID=16d0\n"
        "E: ID_MODEL_ID=06c9\nE: ID_VENDOR=Moravint\nE: ID_MODEL=_Moravint__ZDRM-7711_\n\n");
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"ttyACM7"_s);

    QCOMPARE(ports.vendorId(), u"16d0"_s);
    QCOMPARE(ports.productId(), u"06c9"_s);
    QCOMPARE(ports.friendlyName(), u"Moravint ZDRM-7711"_s);
    QCOMPARE(ports.busName(), u"platform"_s);
    QCOMPARE(ports.hardwareIds(), QStringList());
}

void tst_UdevPort::takesNoIdsForNames()
{
    // This is how udev describes a device that has no names.
    SerialTestbed machine;
    machine.add("P: /devices/platform/vhci\nE: SUBSYSTEM=platform\n\n");
    machine.add("P: /devices/platform/vhci/tty/ttyACM7\nE: SUBSYSTEM=tty\n"
                "E: DEVNAME=/dev/ttyACM7\nE: ID_VENDOR_ID=16d0\nE: ID_MODEL_ID=06c9\n"
                "E: ID_VENDOR=16d0\nE: ID_MODEL=06c9\n\n");
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"ttyACM7"_s);

    QVERIFY(ports.isExists());
    QCOMPARE(ports.manufacturer(), QString());
    QCOMPARE(ports.description(), QString());
    QCOMPARE(ports.friendlyName(), QString());
    QCOMPARE(ports.driverPath(), QString());
}

void tst_UdevPort::namesPort_data()
{
    QTest::addColumn<QByteArray>("maker");
    QTest::addColumn<QByteArray>("product");
    QTest::addColumn<QString>("friendlyName");

    const auto row = [](const char *name, const QByteArray &maker, const QByteArray &product,
                        const QString &friendlyName) {
        QTest::newRow(name) << maker << product << friendlyName;
    };
    row("both", "Moravint", "ZDRM-7710", u"Moravint ZDRM-7710"_s);
    row("maker in the product", "Moravint", "Moravint ZDRM-7710", u"Moravint ZDRM-7710"_s);
    row("in other letters", "MORAVINT", "Moravint ZDRM-7710", u"Moravint ZDRM-7710"_s);
    row("product is the maker", "Moravint", "Moravint", u"Moravint"_s);
    row("maker begins a word", "FT", "FT232R USB UART", u"FT FT232R USB UART"_s);
    row("maker inside", "Moravint", "New Moravint", u"Moravint New Moravint"_s);
    row("no maker", {}, "Moravint ZDRM-7710", u"Moravint ZDRM-7710"_s);
    row("empty maker", "", "ZDRM-7710", u"ZDRM-7710"_s);
    row("no product", "Moravint", {}, u"Moravint"_s);
    row("no names: the driver's", {}, {}, u"cdc_acm"_s);
    row("blanks only", "  ", "\t \n", u"cdc_acm"_s);
    row("blanks around", "  Moravint ", " ZDRM-7710 \n", u"Moravint ZDRM-7710"_s);
    row("control characters", "Mora\x1b\x07vint", "ZDRM\n7710\x7f", u"Mora vint ZDRM 7710"_s);
    row("turned direction", "Moravint",
        "ZDRM\xe2\x80\xae"
        "7710",
        u"Moravint ZDRM 7710"_s);
    row("UTF-8", "M\xc3\xb6ravint",
        "\xc2\xb5"
        "7710",
        u"Möravint µ7710"_s);
    row("bad UTF-8", "Moravint", "ZD\xff\xfeM", u"Moravint ZD\uFFFD\uFFFDM"_s);
    row("cut UTF-8", "Moravint", "7710\xc3", u"Moravint 7710\uFFFD"_s);
    row("very long", {}, QByteArray(3000, 'x'), QString(256, u'x'));
    row("cut at a blank", {}, QByteArray(255, 'x') + " y", QString(255, u'x'));
    row("cut in a character", {}, QByteArray(255, 'x') + "\xf0\x9f\x98\x80", QString(255, u'x'));
    row("cut in a character behind a blank", {}, QByteArray(254, 'x') + " \xf0\x9f\x98\x80",
        QString(254, u'x'));
}

void tst_UdevPort::namesPort()
{
    QFETCH(QByteArray, maker);
    QFETCH(QByteArray, product);
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {.manufacturer = maker, .product = product});
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"ttyACM0"_s);
    QTEST(ports.friendlyName(), "friendlyName");
}

void tst_UdevPort::namesPortWithoutUsb()
{
    SerialTestbed machine;
    machine.add("P: /devices/pci0000:00/0000:03:00.0\nE: SUBSYSTEM=pci\nE: DRIVER=serial\n"
                "L: driver=../../../bus/pci/drivers/serial\n\n");
    machine.add("P: /devices/pci0000:00/0000:03:00.0/tty/ttyS4\nN: ttyS4\nE: SUBSYSTEM=tty\n"
                "E: DEVNAME=/dev/ttyS4\nA: type=4\nE: ID_VENDOR_FROM_DATABASE=Exar Corp.\n"
                "E: ID_MODEL_FROM_DATABASE=XR17V352 Dual UART\n"
                "E: ID_BUS=pci\nE: ID_VENDOR_ID=0x13a8\nE: ID_MODEL_ID=0x0352\n"
                "E: ID_VENDOR=0x13a8\n\n");
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"ttyS4"_s);

    QCOMPARE(ports.friendlyName(), u"Exar Corp. XR17V352 Dual UART"_s);
    QCOMPARE(ports.manufacturer(), u"Exar Corp."_s);
    QCOMPARE(ports.description(), u"XR17V352 Dual UART"_s);
    QCOMPARE(ports.busName(), u"pci"_s);
    QCOMPARE(ports.service(), u"serial"_s);
    QCOMPARE(ports.driverPath(), u"/sys/bus/pci/drivers/serial"_s);
    QCOMPARE(ports.locationInfo(), u"0000:03:00.0"_s);
    QCOMPARE(ports.vendorId(), QString());
    QCOMPARE(ports.productId(), QString());
    QCOMPARE(ports.hardwareIds(), QStringList());
}

void tst_UdevPort::listsPortsWithDeviceBehind()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {});
    machine.plugIn("ttyACM10", {});
    machine.plugIn("ttyLPT0", {}); // by its name a printer port
    // An RS485 adapter: its driver puts a device of its own between interface and port.
    machine.add("P: /devices/pci0000:00/usb2/2-1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n"
                "A: idVendor=0403\\n\nA: idProduct=6001\\n\nA: manufacturer=FTDI\\n\n"
                "A: product=FT232R USB UART\\n\n\n");
    machine.add("P: /devices/pci0000:00/usb2/2-1/2-1:1.0\nE: SUBSYSTEM=usb\n"
                "E: DEVTYPE=usb_interface\nE: DRIVER=ftdi_sio\n\n");
    machine.add(
        "P: /devices/pci0000:00/usb2/2-1/2-1:1.0/ttyUSB0\nE: SUBSYSTEM=usb-serial\n"
        "E: DRIVER=ftdi_sio\nL: driver=../../../../../../bus/usb-serial/drivers/ftdi_sio\n\n");
    machine.add("P: /devices/pci0000:00/usb2/2-1/2-1:1.0/ttyUSB0/tty/ttyUSB0\nN: ttyUSB0\n"
                "E: SUBSYSTEM=tty\nE: DEVNAME=/dev/ttyUSB0\n\n");
    for (const QByteArray name :
         {"console", "ptmx", "tty", "tty0", "ptyp0", "ttyp0", "ttyprintk"}) {
        machine.add("P: /devices/virtual/tty/" + name + "\nE: SUBSYSTEM=tty\nE: DEVNAME=/dev/"
                    + name + "\n\n");
    }
    SerialDeviceEnumerator ports;

    QCOMPARE(ports.devicesAvailable(), (QStringList{u"ttyACM0"_s, u"ttyACM10"_s, u"ttyUSB0"_s}));
    ports.setDeviceName(u"ttyUSB0"_s);
    QCOMPARE(ports.vendorId(), u"0403"_s);
    QCOMPARE(ports.friendlyName(), u"FTDI FT232R USB UART"_s);
    QCOMPARE(ports.service(), u"ftdi_sio"_s);
    QCOMPARE(ports.driverPath(), u"/sys/bus/usb-serial/drivers/ftdi_sio"_s);
    QCOMPARE(ports.busName(), u"usb"_s);
    QCOMPARE(ports.locationInfo(), u"2-1"_s);
}

void tst_UdevPort::listsNodeInDirectoryByPath()
{
    SerialTestbed machine;
    machine.add("P: /devices/platform/board\nE: SUBSYSTEM=platform\n\n");
    machine.add("P: /devices/platform/board/tty/ttyXR!0\nE: SUBSYSTEM=tty\n"
                "E: DEVNAME=/dev/ttyXR/0\n\n");
    SerialDeviceEnumerator ports;
    QCOMPARE(ports.devicesAvailable(), QStringList{u"/dev/ttyXR/0"_s});
}

void tst_UdevPort::listsNoPhantomUart_data()
{
    QTest::addColumn<bool>("serialBase");
    QTest::newRow("port right on the device") << false;
    QTest::newRow("with the levels of newer kernels") << true;
}

void tst_UdevPort::listsNoPhantomUart()
{
    QFETCH(bool, serialBase);
    SerialTestbed machine;
    const auto addUart = [&](const QByteArray &device, const QByteArray &name,
                             const QByteArray &type) {
        QByteArray path = "/devices/" + device;
        if (serialBase) {
            for (const QByteArray level : {":0", ":0.0"}) {
                path += '/' + name + level;
                machine.add("P: " + path + "\nE: SUBSYSTEM=serial-base\n\n");
            }
        }
        machine.add("P: " + path + "/tty/" + name + "\nN: " + name
                    + "\nE: SUBSYSTEM=tty\nE: DEVNAME=/dev/" + name + "\nA: type=" + type
                    + "\\n\n\n");
    };
    machine.add("P: /devices/pnp0/00:01\nE: SUBSYSTEM=pnp\nE: DRIVER=serial\n"
                "L: driver=../../../bus/pnp/drivers/serial\n\n");
    machine.add("P: /devices/platform/serial8250\nE: SUBSYSTEM=platform\nE: DRIVER=serial8250\n"
                "L: driver=../../../bus/platform/drivers/serial8250\n\n");
    addUart("pnp0/00:01", "ttyS0", "4");
    addUart("platform/serial8250", "ttyS1", "0");
    addUart("platform/serial8250", "ttyS2", "4");
    SerialDeviceEnumerator ports;

    QCOMPARE(ports.devicesAvailable(), (QStringList{u"ttyS0"_s, u"ttyS2"_s}));
    ports.setDeviceName(u"ttyS0"_s);
    QCOMPARE(ports.busName(), u"pnp"_s);
    QCOMPARE(ports.service(), u"serial"_s);
    QCOMPARE(ports.friendlyName(), u"serial"_s);
    QCOMPARE(ports.locationInfo(), u"00:01"_s);
    QCOMPARE(ports.vendorId(), QString());
    QCOMPARE(ports.productId(), QString());
    QCOMPARE(ports.hardwareIds(), QStringList());
}

QTEST_GUILESS_MAIN(tst_UdevPort)
#include "tst_UdevPort.moc"
