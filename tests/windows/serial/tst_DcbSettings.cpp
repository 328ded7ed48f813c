#include "DcbSettings.h"
#include "support/TestCase.h"

#include <QTest>

#include <cstring>

/// The settings of a line in the record of Windows, field by field.
class tst_DcbSettings : public TestCase
{
    Q_OBJECT

private slots:
    void storesAndLoads_data();
    void storesAndLoads();
    void leavesTheRestAlone();
    void makesTransparent();
};

Q_DECLARE_METATYPE(LineSettings)

namespace {

DCB filled(int byte)
{
    DCB dcb;
    std::memset(&dcb, byte, sizeof dcb);
    return dcb;
}

} // namespace

void tst_DcbSettings::storesAndLoads_data()
{
    QTest::addColumn<LineSettings>("settings");

    QTest::newRow("default") << LineSettings{};
    QTest::newRow("rate") << LineSettings{.baudRate = 300000};
    QTest::newRow("data bits") << LineSettings{.byteSize = 5};
    for (int parity = 0; parity <= 4; ++parity) {
        QTest::addRow("parity %d", parity)
            << LineSettings{.checksParity = parity != 0, .parity = parity};
    }
    QTest::newRow("one and a half stop bits") << LineSettings{.stopBits = 1};
    QTest::newRow("two stop bits") << LineSettings{.stopBits = 2};
    QTest::newRow("hardware flow")
        << LineSettings{.ctsFlow = true, .rtsControl = LineSettings::RtsHandshake};
    QTest::newRow("RTS simply on, as it is often found") << LineSettings{.rtsControl = 1};
    QTest::newRow("RTS of a bus of two wires") << LineSettings{.rtsControl = 3};
    QTest::newRow("software flow") << LineSettings{.outX = true, .inX = true};
}

void tst_DcbSettings::storesAndLoads()
{
    QFETCH(LineSettings, settings);
    for (const int before : {0x00, 0xff}) {
        DCB dcb = filled(before);
        DcbSettings::store(settings, dcb);
        QCOMPARE(int(dcb.BaudRate), settings.baudRate);
        QCOMPARE(int(dcb.ByteSize), settings.byteSize);
        QCOMPARE(int(dcb.Parity), settings.parity);
        QCOMPARE(bool(dcb.fParity), settings.checksParity);
        QCOMPARE(int(dcb.StopBits), settings.stopBits);
        QCOMPARE(bool(dcb.fOutxCtsFlow), settings.ctsFlow);
        QCOMPARE(int(dcb.fRtsControl), settings.rtsControl);
        QCOMPARE(bool(dcb.fOutX), settings.outX);
        QCOMPARE(bool(dcb.fInX), settings.inX);
        QVERIFY(DcbSettings::load(dcb) == settings);
    }
}

void tst_DcbSettings::leavesTheRestAlone()
{
    DCB dcb = filled(0xff);
    DcbSettings::store({}, dcb);
    QCOMPARE(int(dcb.fOutxDsrFlow), 1);
    QCOMPARE(int(dcb.fDtrControl), 3);
    QCOMPARE(int(dcb.fErrorChar), 1);
    QCOMPARE(int(dcb.fAbortOnError), 1);
    QCOMPARE(int(dcb.XonLim), 0xffff);
    QCOMPARE(dcb.XonChar, char(0xff));
}

void tst_DcbSettings::makesTransparent()
{
    DCB dcb = filled(0xff);
    dcb.fBinary = FALSE;
    DcbSettings::makeTransparent(dcb);
    QCOMPARE(int(dcb.fBinary), 1);
    QCOMPARE(int(dcb.fOutX), 0);
    QCOMPARE(int(dcb.fInX), 0);
    QCOMPARE(int(dcb.fNull), 0);
    QCOMPARE(int(dcb.fAbortOnError), 0);
    // Nothing else is touched.
    QCOMPARE(int(dcb.fParity), 1);
    QCOMPARE(int(dcb.fOutxCtsFlow), 1);
    QCOMPARE(int(dcb.fRtsControl), 3);
    QCOMPARE(int(dcb.fErrorChar), 1);
}

QTEST_GUILESS_MAIN(tst_DcbSettings)
#include "tst_DcbSettings.moc"
