#include "comm/Answers.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/ScriptedPort.h"
#include "comm/SignalLog.h"
#include "support/TestCase.h"

#include <QTest>

#include <atomic>
#include <cstdarg>
#include <utility>

#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Once, one byte more than there is is told of. No healthy driver does that, so it is done for it.
std::atomic<bool> tellsOneTooMany = false;
/// Sends a whole reply once it has been asked again how much there is, which was nothing.
ScriptedPort *repliesToTheNextQuestion = nullptr;

} // namespace

// Stands before the one of the C library, since a program's own functions are found first.
extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    const long result = ::syscall(SYS_ioctl, descriptor, request, argument);
    if (request != FIONREAD || result != 0) {
        return int(result);
    }
    int &count = *static_cast<int *>(argument);
    if (count == 8 && tellsOneTooMany.exchange(false)) {
        count = 9;
    } else if (count == 0 && !tellsOneTooMany && repliesToTheNextQuestion) {
        std::exchange(repliesToTheNextQuestion, nullptr)->send(Answer7);
    }
    return 0;
}

/// The device says that nine bytes are there, and the read ends with fewer.
class tst_QSerialCommandHandlerShortRead : public TestCase
{
    Q_OBJECT

private slots:
    void isNoReplyAndItsBytesAreGone();
};

void tst_QSerialCommandHandlerShortRead::isNoReplyAndItsBytesAreGone()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    const SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));

    // The read waits its 5 s for the ninth byte. The reply that follows is read from its first byte
    // on, which it wouldn't be if one of the eight were still there.
    tellsOneTooMany = true;
    repliesToTheNextQuestion = &port;
    port.addAnswer("02 01 64 06 00 00 01 2c");
    handler.getAxisParameter(1, 0, 4);

    QVERIFY(!tellsOneTooMany);
    QCOMPARE(emitted.lines(), QStringList(u"requestedValue(1, 0, 4, 7)"_s));
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandlerShortRead)
#include "tst_QSerialCommandHandlerShortRead.moc"
