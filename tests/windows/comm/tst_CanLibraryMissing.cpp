// The handler on a machine without the CAN maker's library, or with a broken file in its place.

#include "comm/CANKvaserCommandHandler.h"
#include "comm/can/CanLibrary.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_CanLibraryMissing : public TestCase
{
    Q_OBJECT

private slots:
    void openFails();
    void unloadOfNothing();
};

void tst_CanLibraryMissing::openFails()
{
    QVERIFY(!loadCanLibrary());

    CANKvaserCommandHandler handler;
    const DebugLog log;
    QVERIFY(!handler.openDevice(500));
    QVERIFY(!handler.isConnected());
    QCOMPARE(handler.baudrate(), 1000);
    QCOMPARE(log.lines(),
             QStringList(u"CANKvaserCommandHandler::canInitializeLibrary -> failed"_s));
    // The rest of the program carries on: the handler does nothing.
    QCOMPARE(handler.versionText(1), QString());
}

void tst_CanLibraryMissing::unloadOfNothing()
{
    unloadCanLibrary();
    QVERIFY(canLibrary().canOpenChannel(0, 8) < 0);
}

QTEST_GUILESS_MAIN(tst_CanLibraryMissing)
#include "tst_CanLibraryMissing.moc"
