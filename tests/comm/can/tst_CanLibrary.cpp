#include "comm/can/CanLibrary.h"
#include "support/SimulatedCanBus.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_CanLibrary : public TestCase
{
    Q_OBJECT

private slots:
    void failsBeforeAnyLoad();
    void loadFillsTheTable();
    void loadsAgain();
    void unloadEmptiesTheTable();
};

void tst_CanLibrary::failsBeforeAnyLoad()
{
    long identifier = 0;
    unsigned int length = 0;
    unsigned char data[8] = {};
    const CanLibrary &library = canLibrary();
    library.canInitializeLibrary(); // does nothing, and doesn't crash
    QVERIFY(library.canOpenChannel(0, 8) < 0);
    QVERIFY(library.canClose(0) < 0);
    QVERIFY(library.canSetBusParams(0, -1, 0, 0, 0, 0, 0) < 0);
    QVERIFY(library.canBusOn(0) < 0);
    QVERIFY(library.canBusOff(0) < 0);
    QVERIFY(library.canWrite(0, 1, data, 8, 0) < 0);
    QVERIFY(library.canRead(0, &identifier, data, &length, nullptr, nullptr) < 0);
}

void tst_CanLibrary::loadFillsTheTable()
{
    SimulatedCanBus bus;
    QVERIFY(loadCanLibrary());

    const CanLibrary &library = canLibrary();
    library.canInitializeLibrary();
    QCOMPARE(library.canOpenChannel(0, 8), 1);
    QCOMPARE(library.canSetBusParams(1, -1, 10, 20, 30, 40, 50), 0);
    QCOMPARE(library.canBusOn(1), 0);
    unsigned char data[8] = {6, 1, 0, 0, 0, 0, 0, 3};
    QCOMPARE(library.canWrite(1, 1, data, 8, 0), 0);
    long identifier = -1;
    unsigned int length = 0;
    unsigned int flags = 0;
    unsigned long time = 0;
    QCOMPARE(library.canRead(1, &identifier, data, &length, &flags, &time), 0);
    QCOMPARE(identifier, 2L);
    QCOMPARE(length, 8U);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(data), 8).toHex(' '),
             QByteArray("01 64 06 00 00 00 00 03"));
    QCOMPARE(library.canBusOff(1), 0);
    QCOMPARE(library.canClose(1), 0);

    QCOMPARE(bus.calls(),
             QStringList({u"canInitializeLibrary() = 0"_s, u"canOpenChannel(0, 8) = 1"_s,
                          u"canSetBusParams(1, -1, 10, 20, 30, 40, 50) = 0"_s, u"canBusOn(1) = 0"_s,
                          u"canWrite(1, 1, 06 01 00 00 00 00 00 03, 8, 0) = 0"_s,
                          u"canRead(1, flags, time) = 0"_s, u"canBusOff(1) = 0"_s,
                          u"canClose(1) = 0"_s}));
}

void tst_CanLibrary::loadsAgain()
{
    QVERIFY(loadCanLibrary());
    const auto canRead = canLibrary().canRead;
    QVERIFY(loadCanLibrary());
    QVERIFY(canLibrary().canRead == canRead);
}

void tst_CanLibrary::unloadEmptiesTheTable()
{
    QVERIFY(loadCanLibrary());
    QVERIFY(canLibrary().canRead != CanLibrary().canRead);

    unloadCanLibrary();
    QVERIFY(canLibrary().canRead == CanLibrary().canRead);
    QVERIFY(canLibrary().canBusOff(0) < 0);

    unloadCanLibrary(); // nothing is left to unload
    QVERIFY(loadCanLibrary());
    QVERIFY(canLibrary().canRead != CanLibrary().canRead);
}

QTEST_GUILESS_MAIN(tst_CanLibrary)
#include "tst_CanLibrary.moc"
