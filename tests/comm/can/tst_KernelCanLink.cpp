// A CAN interface of the machine. The calls to the kernel are answered by the test, so that it
// needs no CAN in the kernel, and never touches an interface of the machine it runs on.

#include "comm/can/CanLibrary.h"
#include "comm/can/KernelCanLink.h"
#include "comm/can/SocketCanLibrary.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <cstdarg>
#include <cstring>

#include <fcntl.h>
#include <linux/can.h>
#include <linux/can/netlink.h>
#include <linux/can/raw.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// What the kernel knows of the one interface that it has, and what it was asked for.
struct Kernel
{
    bool hasCan = true;
    bool permits = true;
    QByteArray interface = "can7";
    int index = 42;
    short flags = IFF_NOARP;
    unsigned int bitRate = 125000;

    int socketType = 0;
    int socketProtocol = 0;
    sockaddr_can bound{};
};

Kernel kernel;

bool isKnown(const char *name)
{
    return kernel.interface == name;
}

int fail(int error)
{
    errno = error;
    return -1;
}

int answer(unsigned long request, ifreq *record)
{
    if (!isKnown(record->ifr_name)) {
        return fail(ENODEV);
    }
    switch (request) {
    case SIOCGIFFLAGS:
        record->ifr_flags = kernel.flags;
        return 0;
    case SIOCSIFFLAGS:
        if (!kernel.permits) {
            return fail(EPERM);
        }
        kernel.flags = record->ifr_flags;
        return 0;
    case SIOCGIFINDEX:
        record->ifr_ifindex = kernel.index;
        return 0;
    default:
        return fail(EINVAL);
    }
}

} // namespace

extern "C" {

// These take the place of the system's own, and of libsocketcan's, in this program.

int socket(int domain, int type, int protocol) noexcept
{
    if (domain != PF_CAN) {
        return static_cast<int>(::syscall(SYS_socket, domain, type, protocol));
    }
    kernel.socketType = type;
    kernel.socketProtocol = protocol;
    return kernel.hasCan ? ::open("/dev/null", O_RDWR | O_CLOEXEC) : fail(EAFNOSUPPORT);
}

int bind(int fd, const sockaddr *address, socklen_t length) noexcept
{
    if (address->sa_family != AF_CAN) {
        return static_cast<int>(::syscall(SYS_bind, fd, address, length));
    }
    std::memcpy(&kernel.bound, address, sizeof kernel.bound);
    return length == sizeof kernel.bound && kernel.permits ? 0 : fail(EPERM);
}

int ioctl(int fd, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (request != SIOCGIFFLAGS && request != SIOCSIFFLAGS && request != SIOCGIFINDEX) {
        return static_cast<int>(::syscall(SYS_ioctl, fd, request, argument));
    }
    return fd < 0 ? fail(EBADF) : answer(request, static_cast<ifreq *>(argument));
}

int can_get_bittiming(const char *name, struct can_bittiming *timing)
{
    timing->bitrate = kernel.bitRate;
    return isKnown(name) ? 0 : -1;
}

int can_set_bitrate(const char *name, __u32 bitRate)
{
    if (!isKnown(name) || !kernel.permits || (kernel.flags & IFF_UP) != 0) {
        return -1;
    }
    kernel.bitRate = bitRate;
    return 0;
}

} // extern "C"

class tst_KernelCanLink : public TestCase
{
    Q_OBJECT

private slots:
    void init();

    void firstInterfaceOfTheNames();
    void noInterface();
    void kernelWithAndWithoutCan();
    void upAndDown();
    void withoutPermission();
    void interfaceThatIsGone();
    void socketIsBoundToTheInterface();
    void noSocket();
    void bitRate();
    void standsInForTheMakersLibrary();
};

void tst_KernelCanLink::init()
{
    TestCase::init();
    kernel = Kernel();
}

void tst_KernelCanLink::firstInterfaceOfTheNames()
{
    QTemporaryDir directory;
    const auto add = [&directory](const QString &name, const QByteArray &type) {
        QVERIFY(QDir(directory.path()).mkdir(name));
        QFile file(directory.filePath(name + "/type"_L1));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(type), type.size());
    };
    add(u"can1"_s, "280\n");
    add(u"can0"_s, "280\n");
    add(u"eth0"_s, "1\n");
    add(u"an"_s, "1\n");
    add(u"lo"_s, "772\n");
    QCOMPARE(firstCanInterface(directory.path()), u"can0"_s);

    add(u"axisbus"_s, "280\n"); // an interface may have any name
    QCOMPARE(firstCanInterface(directory.path()), u"axisbus"_s);
}

void tst_KernelCanLink::noInterface()
{
    QTemporaryDir directory;
    QCOMPARE(firstCanInterface(directory.path()), QString());
    QVERIFY(QDir(directory.path()).mkdir(u"can0"_s)); // no file "type" in it
    QCOMPARE(firstCanInterface(directory.path()), QString());
    QCOMPARE(firstCanInterface(directory.filePath(u"nowhere"_s)), QString());
}

void tst_KernelCanLink::kernelWithAndWithoutCan()
{
    QVERIFY(kernelHasCan());
    kernel.hasCan = false;
    QVERIFY(!kernelHasCan());
}

void tst_KernelCanLink::upAndDown()
{
    KernelCanLink link(u"can7"_s);
    QVERIFY(!link.isUp());
    QVERIFY(link.setUp(true));
    QVERIFY(link.isUp());
    QCOMPARE(int(kernel.flags), IFF_NOARP | IFF_UP); // its other flags are kept
    QVERIFY(link.setUp(false));
    QVERIFY(!link.isUp());
    QCOMPARE(int(kernel.flags), int(IFF_NOARP));
}

void tst_KernelCanLink::withoutPermission()
{
    kernel.permits = false;
    KernelCanLink link(u"can7"_s);
    QVERIFY(!link.setUp(true));
    QVERIFY(!link.isUp());
    QVERIFY(!link.setBitRate(500000));
    QCOMPARE(kernel.bitRate, 125000U);
    QCOMPARE(link.openSocket(), -1);
}

void tst_KernelCanLink::interfaceThatIsGone()
{
    KernelCanLink link(u"can8"_s);
    QVERIFY(!link.isUp());
    QVERIFY(!link.setUp(true));
    QVERIFY(!link.bitRate());
    QVERIFY(!link.setBitRate(500000));
    QCOMPARE(link.openSocket(), -1);

    KernelCanLink longName(QString(100, u'x'));
    QVERIFY(!longName.isUp());
    QCOMPARE(longName.openSocket(), -1);
}

void tst_KernelCanLink::socketIsBoundToTheInterface()
{
    KernelCanLink link(u"can7"_s);
    const int fd = link.openSocket();
    QVERIFY(fd >= 0);
    QCOMPARE(::fcntl(fd, F_GETFD), FD_CLOEXEC); // still open
    ::close(fd);
    QCOMPARE(kernel.socketType, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC);
    QCOMPARE(kernel.socketProtocol, CAN_RAW);
    QCOMPARE(int(kernel.bound.can_family), AF_CAN);
    QCOMPARE(kernel.bound.can_ifindex, 42);
}

void tst_KernelCanLink::noSocket()
{
    kernel.hasCan = false;
    KernelCanLink link(u"can7"_s);
    QCOMPARE(link.openSocket(), -1);
    QVERIFY(!link.isUp());
    QVERIFY(!link.setUp(true));
}

void tst_KernelCanLink::bitRate()
{
    KernelCanLink link(u"can7"_s);
#ifdef ZDR_HAVE_LIBSOCKETCAN
    QCOMPARE(link.bitRate().value_or(0), 125000U);
    QVERIFY(link.setBitRate(250000));
    QCOMPARE(link.bitRate().value_or(0), 250000U);
    QVERIFY(link.setUp(true));
    QVERIFY(!link.setBitRate(500000)); // only while it is down
#else
    QVERIFY(!link.bitRate());
    QVERIFY(!link.setBitRate(250000));
#endif
}

void tst_KernelCanLink::standsInForTheMakersLibrary()
{
    // The test is started so that the maker's library can't be loaded.
    kernel.hasCan = false;
    QVERIFY(!loadCanLibrary());
    QVERIFY(canLibrary().canRead == CanLibrary().canRead);

    kernel.hasCan = true;
    QVERIFY(loadCanLibrary());
    QVERIFY(canLibrary().canRead != CanLibrary().canRead);
    QVERIFY(canLibrary().canRead == socketCanLibrary().canRead);

    // A later load that fails leaves the table as it was.
    kernel.hasCan = false;
    QVERIFY(!loadCanLibrary());
    QVERIFY(canLibrary().canRead == socketCanLibrary().canRead);
    unloadCanLibrary();
    QVERIFY(canLibrary().canRead == CanLibrary().canRead);
}

QTEST_GUILESS_MAIN(tst_KernelCanLink)
#include "tst_KernelCanLink.moc"
