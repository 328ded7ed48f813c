#include "serial/native/windows/HardwareId.h"
#include "serial/native/windows/WindowsVersion.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Which number a system has, and by that the form of its hardware ids.
class tst_WindowsVersion : public TestCase
{
    Q_OBJECT

private slots:
    void numberOfSystem_data();
    void numberOfSystem();
    void laterSystemsFindTheIds();
};

void tst_WindowsVersion::numberOfSystem_data()
{
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::addColumn<int>("number");

    QTest::newRow("95") << 3 << 95 << 0;
    QTest::newRow("none") << 0 << 0 << 0;
    QTest::newRow("NT") << 4 << 0 << 16;
    QTest::newRow("98, which calls itself 4.10") << 4 << 10 << 16;
    QTest::newRow("2000") << 5 << 0 << 32;
    QTest::newRow("XP") << 5 << 1 << 48;
    QTest::newRow("2003") << 5 << 2 << 64;
    QTest::newRow("Vista") << 6 << 0 << 128;
    QTest::newRow("7") << 6 << 1 << 144;
    QTest::newRow("8") << 6 << 2 << 144;
    QTest::newRow("8.1") << 6 << 3 << 144;
    QTest::newRow("10 and 11") << 10 << 0 << 144;
    QTest::newRow("some day") << 1000 << 7 << 144;
}

void tst_WindowsVersion::numberOfSystem()
{
    QFETCH(int, major);
    QFETCH(int, minor);
    QTEST(windowsVersionNumber(major, minor), "number");
}

void tst_WindowsVersion::laterSystemsFindTheIds()
{
    const QStringList ids{u"USB\\VID_16D0&PID_0650&REV_0100"_s};
    const auto id = HardwareId::parse(ids, HardwareId::pattern(windowsVersionNumber(10, 0)));
    QCOMPARE(id.vendorId, u"16D0"_s);
    QCOMPARE(id.productId, u"0650"_s);
    // The table itself knows no such system.
    QCOMPARE(HardwareId::pattern(160), QString());
}

QTEST_GUILESS_MAIN(tst_WindowsVersion)
#include "tst_WindowsVersion.moc"
