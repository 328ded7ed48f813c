// The handler with a library that has nothing but canOpenChannel().

#include "comm/CANKvaserCommandHandler.h"
#include "comm/can/CanLibrary.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_CanLibraryIncomplete : public TestCase
{
    Q_OBJECT

private slots:
    void missingFunctionsFail();
    void openFailsAtTheFirstThatCounts();
};

void tst_CanLibraryIncomplete::missingFunctionsFail()
{
    QVERIFY(loadCanLibrary());
    const CanLibrary &library = canLibrary();
    QCOMPARE(library.canOpenChannel(0, 8), 5);
    library.canInitializeLibrary();
    long identifier = 0;
    unsigned int length = 0;
    unsigned char data[8] = {};
    QVERIFY(library.canClose(5) < 0);
    QVERIFY(library.canSetBusParams(5, -1, 0, 0, 0, 0, 0) < 0);
    QVERIFY(library.canBusOn(5) < 0);
    QVERIFY(library.canBusOff(5) < 0);
    QVERIFY(library.canWrite(5, 1, data, 8, 0) < 0);
    QVERIFY(library.canRead(5, &identifier, data, &length, nullptr, nullptr) < 0);
}

void tst_CanLibraryIncomplete::openFailsAtTheFirstThatCounts()
{
    CANKvaserCommandHandler handler;
    const DebugLog log;
    QVERIFY(!handler.openDevice(500));
    QVERIFY(!handler.isConnected());
    QVERIFY(!handler.closeDevice());
    QVERIFY(!handler.isConnected());
    QCOMPARE(log.lines(),
             QStringList({u"CANKvaserCommandHandler::canSetBusParams -> failed! status=-1"_s,
                          u"CANKvaserCommandHandler::canBusOn -> failed! status=-1"_s,
                          u"CANKvaserCommandHandler::closeDevice"_s,
                          u"CANKvaserCommandHandler::canBusOff -> failed! status=-1"_s}));
}

QTEST_GUILESS_MAIN(tst_CanLibraryIncomplete)
#include "tst_CanLibraryIncomplete.moc"
