// The handler on a machine without any CAN software: the maker's library can't be loaded, and the
// kernel knows no CAN. And before a library is loaded at all.

#include "comm/CANKvaserCommandHandler.h"
#include "comm/can/CanLibrary.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QTest>

#include <cerrno>

#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// Takes the place of the system's own in this program: there is no CAN, whatever the machine has.
extern "C" int socket(int domain, int type, int protocol) noexcept
{
    if (domain == PF_CAN) {
        errno = EAFNOSUPPORT;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_socket, domain, type, protocol));
}

class tst_CanLibraryMissing : public TestCase
{
    Q_OBJECT

private slots:
    void closeBeforeAnyOpen();
    void speedBeforeAnyOpen();
    void openFails();
};

void tst_CanLibraryMissing::closeBeforeAnyOpen()
{
    CANKvaserCommandHandler handler;
    const DebugLog log;
    QVERIFY(!handler.closeDevice());
    QVERIFY(!handler.isConnected());
    QCOMPARE(log.lines(),
             QStringList({u"CANKvaserCommandHandler::closeDevice"_s,
                          u"CANKvaserCommandHandler::canBusOff -> failed! status=-1"_s}));
}

void tst_CanLibraryMissing::speedBeforeAnyOpen()
{
    CANKvaserCommandHandler handler;
    const DebugLog log;
    handler.setBaudrate(500);
    QCOMPARE(handler.baudrate(), 500);
    QVERIFY(!handler.isConnected());
    QCOMPARE(log.lines(),
             QStringList(u"CANKvaserCommandHandler::canSetBusParams -> failed! status=-1"_s));
}

void tst_CanLibraryMissing::openFails()
{
    QVERIFY(!loadCanLibrary());

    CANKvaserCommandHandler handler;
    DebugLog log;
    QVERIFY(!handler.openDevice(500));
    QVERIFY(!handler.isConnected());
    QCOMPARE(handler.baudrate(), 1000);
    QCOMPARE(log.lines(),
             QStringList(u"CANKvaserCommandHandler::canInitializeLibrary -> failed"_s));

    handler.setDebugOutput(true);
    log.clear();
    QVERIFY(!handler.reopenDevice());
    QCOMPARE(log.lines(),
             QStringList({u"CANKvaserCommandHandler::openDevice(\"1000\")"_s,
                          u"CANKvaserCommandHandler::canInitializeLibrary -> failed"_s}));

    // The rest of the program carries on: the handler does nothing.
    log.clear();
    QCOMPARE(handler.versionText(1), QString());
    handler.getAxisParameter(1, 0, 1);
    QCOMPARE(log.lines().filter(u"canRead"_s), QStringList());
}

QTEST_GUILESS_MAIN(tst_CanLibraryMissing)
#include "tst_CanLibraryMissing.moc"
