#include "serial/native/windows/HardwareId.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_HardwareId : public TestCase
{
    Q_OBJECT

private slots:
    void picksPatternBySystem_data();
    void picksPatternBySystem();
    void findsVendorAndProduct_data();
    void findsVendorAndProduct();
    void searchesFirstIdOnly();
    void findsNothingWithoutIds();
};

namespace {

const QString oldPattern = u"Vid_(\\w+)&Pid_(\\w+)"_s;
const QString newPattern = u"VID_(\\w+)&PID_(\\w+)"_s;

} // namespace

void tst_HardwareId::picksPatternBySystem_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QString>("pattern");

    QTest::newRow("NT") << 16 << oldPattern;
    QTest::newRow("2000") << 32 << oldPattern;
    QTest::newRow("XP") << 48 << oldPattern;
    QTest::newRow("2003") << 64 << oldPattern;
    QTest::newRow("Vista") << 128 << newPattern;
    QTest::newRow("Windows 7") << 144 << newPattern;
    QTest::newRow("before the table") << 0 << QString();
    QTest::newRow("between 2003 and Vista") << 80 << QString();
    QTest::newRow("next to a version") << 145 << QString();
    QTest::newRow("after the table") << 160 << QString();
    QTest::newRow("negative") << -1 << QString();
}

void tst_HardwareId::picksPatternBySystem()
{
    QFETCH(int, version);
    QTEST(HardwareId::pattern(version), "pattern");
}

void tst_HardwareId::findsVendorAndProduct_data()
{
    QTest::addColumn<QString>("hardwareId");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("vendorId");
    QTest::addColumn<QString>("productId");

    QTest::newRow("new") << u"USB\\VID_16D0&PID_06C9&REV_0100"_s << newPattern << u"16D0"_s
                         << u"06C9"_s;
    QTest::newRow("old") << u"USB\\Vid_16d0&Pid_06c9&Rev_0100"_s << oldPattern << u"16d0"_s
                         << u"06c9"_s;
    QTest::newRow("keeps mixed case")
        << u"USB\\VID_16d0&PID_06C9"_s << newPattern << u"16d0"_s << u"06C9"_s;
    QTest::newRow("takes word characters on")
        << u"USB\\VID_16D0&PID_06C9_X&MI_00"_s << newPattern << u"16D0"_s << u"06C9_X"_s;
    QTest::newRow("old id, new pattern")
        << u"USB\\Vid_16d0&Pid_06c9"_s << newPattern << QString() << QString();
    QTest::newRow("new id, old pattern")
        << u"USB\\VID_16D0&PID_06C9"_s << oldPattern << QString() << QString();
    QTest::newRow("no vendor") << u"USB\\PID_06C9"_s << newPattern << QString() << QString();
    QTest::newRow("no product") << u"USB\\VID_16D0"_s << newPattern << QString() << QString();
    QTest::newRow("empty product")
        << u"USB\\VID_16D0&PID_"_s << newPattern << QString() << QString();
    QTest::newRow("neither") << u"ACPI\\PNP0501"_s << newPattern << QString() << QString();
    QTest::newRow("empty id") << QString() << newPattern << QString() << QString();
    QTest::newRow("system outside the table")
        << u"USB\\VID_16D0&PID_06C9"_s << HardwareId::pattern(160) << QString() << QString();
}

void tst_HardwareId::findsVendorAndProduct()
{
    QFETCH(QString, hardwareId);
    QFETCH(QString, pattern);
    const HardwareId found = HardwareId::parse({hardwareId}, pattern);
    QTEST(found.vendorId, "vendorId");
    QTEST(found.productId, "productId");
}

void tst_HardwareId::searchesFirstIdOnly()
{
    const QString module = u"USB\\VID_16D0&PID_06C9"_s;
    const QString other = u"USB\\VID_0403&PID_6001"_s;

    QCOMPARE(HardwareId::parse({other, module}, newPattern).vendorId, u"0403"_s);
    QCOMPARE(HardwareId::parse({u"USB\\Class_02"_s, module}, newPattern).vendorId, QString());
}

void tst_HardwareId::findsNothingWithoutIds()
{
    const HardwareId found = HardwareId::parse({}, newPattern);
    QCOMPARE(found.vendorId, QString());
    QCOMPARE(found.productId, QString());
}

QTEST_GUILESS_MAIN(tst_HardwareId)
#include "tst_HardwareId.moc"
