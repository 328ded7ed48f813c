#include "serial/SerialDeviceEnumerator.h"
#include "support/TestCase.h"

#include <QTest>

#include <array>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// The test opening of SerialDeviceEnumerator::isBusy() on a port of the machine itself, with
/// holders in and out of this process.
class tst_SerialDeviceEnumeratorBusy : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void isFreeWithoutName();
    void isFreeAgainAndAgain();
    void isBusyWithoutPort();
    void isBusyIfNotOpened();
    void isBusyAfterHangUp();
    void seesLockOfThisProcess_data();
    void seesLockOfThisProcess();
    void seesLockOfOtherProcess();
    void seesExclusivePort();
    void leavesLineAlone();

private:
    int openPort() const;

    int m_farEnd = -1;
    QByteArray m_path;
    std::unique_ptr<SerialDeviceEnumerator> m_ports; ///< asked for the port of m_path
};

namespace {

int waitingBytes(int port)
{
    int count = -1;
    return ::ioctl(port, FIONREAD, &count) == 0 ? count : -1;
}

/// A second process that holds the lock of a port while the object lives.
class LockingProcess
{
public:
    explicit LockingProcess(const QByteArray &path)
    {
        if (::pipe2(m_ready.data(), O_CLOEXEC) != 0 || ::pipe2(m_end.data(), O_CLOEXEC) != 0) {
            qFatal("no pipe");
        }
        m_process = ::fork();
        if (m_process != 0) {
            return;
        }
        ::close(m_end[1]);
        const int port = ::open(path.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        char byte = ::flock(port, LOCK_EX | LOCK_NB) == 0 ? 'y' : 'n';
        if (::write(m_ready[1], &byte, 1) == 1) {
            while (::read(m_end[0], &byte, 1) > 0) { } // until the other side closes its end
        }
        ::_exit(0);
    }
    ~LockingProcess()
    {
        ::close(m_end[1]);
        ::waitpid(m_process, nullptr, 0);
        for (const int end : {m_ready[0], m_ready[1], m_end[0]}) {
            ::close(end);
        }
    }
    LockingProcess(const LockingProcess &) = delete;
    LockingProcess &operator=(const LockingProcess &) = delete;

    /// Waits until the process has tried; whether it holds the lock.
    bool holds() const
    {
        char answer = 0;
        return ::read(m_ready[0], &answer, 1) == 1 && answer == 'y';
    }

private:
    std::array<int, 2> m_ready{};
    std::array<int, 2> m_end{};
    pid_t m_process = -1;
};

} // namespace

void tst_SerialDeviceEnumeratorBusy::init()
{
    TestCase::init();
    m_farEnd = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY(m_farEnd >= 0);
    QCOMPARE(::grantpt(m_farEnd), 0);
    QCOMPARE(::unlockpt(m_farEnd), 0);
    std::array<char, 64> path{};
    QCOMPARE(::ptsname_r(m_farEnd, path.data(), path.size()), 0);
    m_path = path.data();

    m_ports = std::make_unique<SerialDeviceEnumerator>();
    m_ports->setDeviceName(QString::fromLatin1(m_path));
}

void tst_SerialDeviceEnumeratorBusy::cleanup()
{
    m_ports.reset();
    ::close(m_farEnd);
}

int tst_SerialDeviceEnumeratorBusy::openPort() const
{
    return ::open(m_path.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
}

void tst_SerialDeviceEnumeratorBusy::isFreeWithoutName()
{
    m_ports->setDeviceName(QString());
    QVERIFY(!m_ports->isBusy());
}

void tst_SerialDeviceEnumeratorBusy::isFreeAgainAndAgain()
{
    // A pseudo terminal is in no list of ports; the opening needs the name alone.
    QVERIFY(!m_ports->isExists());
    for (int i = 0; i < 3; ++i) {
        QVERIFY(!m_ports->isBusy());
    }

    // Nothing is left behind that would keep the port from its user.
    const int port = openPort();
    QVERIFY(port >= 0);
    QCOMPARE(::flock(port, LOCK_EX | LOCK_NB), 0);
    ::close(port);
}

void tst_SerialDeviceEnumeratorBusy::isBusyWithoutPort()
{
    m_ports->setDeviceName(u"ttyNoSuchPort0"_s);
    QVERIFY(m_ports->isBusy());
    m_ports->setDeviceName(u"/no/such/port"_s);
    QVERIFY(m_ports->isBusy());
}

void tst_SerialDeviceEnumeratorBusy::isBusyIfNotOpened()
{
    m_ports->setDeviceName(u"/"_s); // exists, but can't be opened for writing
    QVERIFY(m_ports->isBusy());
}

void tst_SerialDeviceEnumeratorBusy::isBusyAfterHangUp()
{
    QVERIFY(!m_ports->isBusy());
    ::close(std::exchange(m_farEnd, -1));
    QVERIFY(m_ports->isBusy());
}

void tst_SerialDeviceEnumeratorBusy::seesLockOfThisProcess_data()
{
    QTest::addColumn<int>("lock");
    QTest::newRow("exclusive") << LOCK_EX;
    QTest::newRow("shared") << LOCK_SH;
}

void tst_SerialDeviceEnumeratorBusy::seesLockOfThisProcess()
{
    QFETCH(int, lock);
    const int port = openPort();
    QVERIFY(!m_ports->isBusy()); // open alone, without a lock: anyone may still take it

    QCOMPARE(::flock(port, lock | LOCK_NB), 0);
    QVERIFY(m_ports->isBusy());
    QVERIFY(m_ports->isBusy());
    ::close(port);
    QVERIFY(!m_ports->isBusy());
}

void tst_SerialDeviceEnumeratorBusy::seesLockOfOtherProcess()
{
    {
        const LockingProcess holder(m_path);
        QVERIFY(holder.holds());
        QVERIFY(m_ports->isBusy());
    }
    QVERIFY(!m_ports->isBusy());
}

void tst_SerialDeviceEnumeratorBusy::seesExclusivePort()
{
    // As programs hold it that know nothing of the lock. Root gets through the opening itself.
    const int port = openPort();
    QCOMPARE(::ioctl(port, TIOCEXCL), 0);
    QVERIFY(m_ports->isBusy());
    QCOMPARE(::ioctl(port, TIOCNXCL), 0);
    QVERIFY(!m_ports->isBusy());
    ::close(port);
}

void tst_SerialDeviceEnumeratorBusy::leavesLineAlone()
{
    // Bytes that wait for the port's user stay, and so do the settings.
    const int port = openPort();
    termios before{};
    QCOMPARE(::tcgetattr(port, &before), 0);
    ::cfmakeraw(&before);
    ::cfsetspeed(&before, B19200);
    QCOMPARE(::tcsetattr(port, TCSANOW, &before), 0);
    QCOMPARE(::tcgetattr(port, &before), 0); // what the line really took
    QCOMPARE(::write(m_farEnd, "reply", 5), 5);
    QTRY_COMPARE(waitingBytes(port), 5);

    QVERIFY(!m_ports->isBusy());

    termios after{};
    QCOMPARE(::tcgetattr(port, &after), 0);
    QCOMPARE(after.c_cflag, before.c_cflag);
    QCOMPARE(after.c_lflag, before.c_lflag);
    QCOMPARE(after.c_iflag, before.c_iflag);
    QCOMPARE(after.c_oflag, before.c_oflag);
    QCOMPARE(waitingBytes(port), 5);
    ::close(port);
}

QTEST_GUILESS_MAIN(tst_SerialDeviceEnumeratorBusy)
#include "tst_SerialDeviceEnumeratorBusy.moc"
