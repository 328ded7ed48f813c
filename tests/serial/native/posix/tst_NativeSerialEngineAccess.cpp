#include "serial/AbstractSerialEngine.h"
#include "serial/PtyPair.h"
#include "support/TestCase.h"

#include <QFile>
#include <QScopeGuard>
#include <QTemporaryFile>
#include <QTest>

#include <functional>
#include <memory>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// Which ports the engine opens and which it refuses: names, kinds, permissions and other users.
class tst_NativeSerialEngineAccess : public TestCase
{
    Q_OBJECT

private slots:
    void bareNamesAreNodesOfDev();
    void missingPort_data();
    void missingPort();
    void noTerminal();
    void forbiddenPort();
    void portInUseByThisProcess();
    void portInUseByAnotherProcess();
    void portHeldWithoutTheLock();
    void closedPortIsFreeForAll();
    void engineFreesThePortWhenItGoes();
};

namespace {

constexpr auto ReadWrite = QIODevice::ReadWrite;
/// A user without rights.
constexpr uid_t Nobody = 65534;

/// The exit code of @p action, run in a process of its own.
int inChildProcess(const std::function<bool()> &action)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(action() ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Gives up the rights of root, which pass by permissions and exclusive use.
bool becomeOrdinaryUser()
{
    return ::getuid() != 0 || ::setresuid(Nobody, Nobody, Nobody) == 0;
}

std::unique_ptr<AbstractSerialEngine> engineOn(const QString &name)
{
    std::unique_ptr<AbstractSerialEngine> engine(AbstractSerialEngine::createEngine());
    engine->setDeviceName(name);
    return engine;
}

} // namespace

void tst_NativeSerialEngineAccess::bareNamesAreNodesOfDev()
{
    // "pts/3" has a slash, so it is a path; only a link gives a pty a bare name.
    PtyPair pty;
    const QString bare = u"ttyZdrTest%1"_s.arg(::getpid());
    if (::getuid() == 0) {
        QVERIFY(QFile::link(pty.portName(), "/dev/"_L1 + bare));
        const auto remove = qScopeGuard([bare] { QFile::remove("/dev/"_L1 + bare); });
        const auto engine = engineOn(bare);
        QVERIFY(engine->open(ReadWrite));
        QCOMPARE(engine->write("w", 1), qint64(1));
        QTRY_COMPARE(pty.received(), "w");
    }
    QVERIFY(!engineOn(bare)->open(ReadWrite));
    QVERIFY(!engineOn(pty.portName().mid(5))->open(ReadWrite));
}

void tst_NativeSerialEngineAccess::missingPort_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("bare name") << u"ttyNoSuchPort"_s;
    QTest::newRow("path") << u"/dev/pts/999999"_s;
    QTest::newRow("empty") << QString();
    QTest::newRow("folder") << u"/dev/"_s;
    QTest::newRow("Windows name") << u"\\\\.\\COM1"_s;
    QTest::newRow("too long") << QString(100000, u'x');
}

void tst_NativeSerialEngineAccess::missingPort()
{
    QFETCH(QString, name);
    for (const QIODevice::OpenMode mode : {QIODevice::ReadOnly, QIODevice::ReadWrite}) {
        const auto engine = engineOn(name);
        QVERIFY(!engine->open(mode));
        QCOMPARE(engine->descriptor(), qintptr(-1));
        QCOMPARE(engine->baudRate(AbstractSerial::AllBaud), 12);
        QVERIFY(engine->close());
    }
}

void tst_NativeSerialEngineAccess::noTerminal()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    QVERIFY(!engineOn(file.fileName())->open(ReadWrite));
    QVERIFY(!engineOn(u"/dev/null"_s)->open(ReadWrite));
    QVERIFY(!engineOn(u"null"_s)->open(ReadWrite));
    const QString fifo = file.fileName() + ".fifo"_L1;
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const auto remove = qScopeGuard([fifo] { QFile::remove(fifo); });
    QVERIFY(!engineOn(fifo)->open(ReadWrite));
    QVERIFY(!engineOn(fifo)->open(QIODevice::ReadOnly));
    QVERIFY(!engineOn(fifo)->open(QIODevice::WriteOnly));
}

void tst_NativeSerialEngineAccess::forbiddenPort()
{
    PtyPair pty;
    const QByteArray path = QFile::encodeName(pty.portName());
    const auto opens = [&] {
        return becomeOrdinaryUser() && engineOn(pty.portName())->open(ReadWrite);
    };
    QCOMPARE(::chmod(path.constData(), 0666), 0);
    QCOMPARE(inChildProcess(opens), 0);
    QCOMPARE(::chmod(path.constData(), 0), 0);
    QCOMPARE(inChildProcess(opens), 1);
}

void tst_NativeSerialEngineAccess::portInUseByThisProcess()
{
    PtyPair pty;
    const auto first = engineOn(pty.portName());
    const auto second = engineOn(pty.portName());
    QVERIFY(first->open(ReadWrite));
    QVERIFY(pty.send("kept"));
    QTRY_COMPARE(first->bytesAvailable(), qint64(4));
    QVERIFY(!second->open(ReadWrite));
    QVERIFY(!second->open(QIODevice::ReadOnly));
    QCOMPARE(second->descriptor(), qintptr(-1));
    // The failed opening took nothing from the one who has the port.
    QCOMPARE(first->bytesAvailable(), qint64(4));
    QVERIFY(first->close());
    QVERIFY(second->open(ReadWrite));
}

void tst_NativeSerialEngineAccess::portInUseByAnotherProcess()
{
    PtyPair pty;
    const QByteArray path = QFile::encodeName(pty.portName());
    int told[2];
    int ended[2];
    QCOMPARE(::pipe(told), 0);
    QCOMPARE(::pipe(ended), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ended[1]);
        const int port = ::open(path.constData(), O_RDWR | O_NOCTTY);
        char byte = ::flock(port, LOCK_EX | LOCK_NB) == 0 ? 'y' : 'n';
        // Holds the port until the test closes its end of the pipe.
        const bool done = ::write(told[1], &byte, 1) == 1 && ::read(ended[0], &byte, 1) == 0;
        ::_exit(done ? 0 : 1);
    }
    char answer = 0;
    QCOMPARE(::read(told[0], &answer, 1), ssize_t(1));
    const auto engine = engineOn(pty.portName());
    const bool openedWhileHeld = engine->open(ReadWrite);
    for (const int end : {told[0], told[1], ended[0], ended[1]}) {
        ::close(end);
    }
    int status = -1;
    QCOMPARE(::waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    QCOMPARE(answer, 'y');
    QVERIFY(!openedWhileHeld);
    QVERIFY(engine->open(ReadWrite));
}

// As programs hold it that know nothing of the lock. Root gets through the opening itself.
void tst_NativeSerialEngineAccess::portHeldWithoutTheLock()
{
    PtyPair pty;
    const QByteArray path = QFile::encodeName(pty.portName());
    const int port = ::open(path.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY(port != -1);
    const auto close = qScopeGuard([port] { ::close(port); });
    QCOMPARE(::ioctl(port, TIOCEXCL), 0);
    const termios2 before = pty.line();
    const auto engine = engineOn(pty.portName());
    QVERIFY(!engine->open(ReadWrite));
    QCOMPARE(engine->descriptor(), qintptr(-1));
    // Nothing of it was changed, the mark that holds it least of all.
    QCOMPARE(pty.line().c_lflag, before.c_lflag);
    QCOMPARE(pty.line().c_oflag, before.c_oflag);
    QVERIFY(!engine->open(ReadWrite));
    QCOMPARE(::flock(port, LOCK_EX | LOCK_NB), 0);
    QCOMPARE(::flock(port, LOCK_UN), 0);
    QCOMPARE(::ioctl(port, TIOCNXCL), 0);
    QVERIFY(engine->open(ReadWrite));
}

void tst_NativeSerialEngineAccess::closedPortIsFreeForAll()
{
    PtyPair pty;
    const QByteArray path = QFile::encodeName(pty.portName());
    QCOMPARE(::chmod(path.constData(), 0666), 0);
    // An ordinary user is kept out of an open port even without looking at the lock, and the mark
    // that does it is gone after the closing, though the terminal lives on with the far end.
    const auto opensPlainly = [&] {
        const int port = ::open(path.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        return port != -1 && ::close(port) == 0;
    };
    QCOMPARE(inChildProcess([&] {
                 const auto engine = engineOn(pty.portName());
                 return becomeOrdinaryUser() && opensPlainly() && engine->open(ReadWrite)
                     && !opensPlainly() && engine->close() && opensPlainly()
                     && engine->open(ReadWrite);
             }),
             0);
}

void tst_NativeSerialEngineAccess::engineFreesThePortWhenItGoes()
{
    PtyPair pty;
    auto first = engineOn(pty.portName());
    QVERIFY(first->open(ReadWrite));
    first.reset();
    QVERIFY(engineOn(pty.portName())->open(ReadWrite));
}

QTEST_GUILESS_MAIN(tst_NativeSerialEngineAccess)
#include "tst_NativeSerialEngineAccess.moc"
