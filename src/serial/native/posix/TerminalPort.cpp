#include "TerminalPort.h"

#include "PortNode.h"
#include "Uninterrupted.h"

#include <QDeadlineTimer>
#include <QThread>

#include <cerrno>

#include <fcntl.h>
#include <linux/major.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace {

/// Pause between two looks at an output queue that is running empty.
constexpr unsigned long DrainPollInterval = 1; // ms

int accessMode(QIODevice::OpenMode mode)
{
    if (!mode.testFlag(QIODevice::WriteOnly)) {
        return O_RDONLY;
    }
    return mode.testFlag(QIODevice::ReadOnly) ? O_RDWR : O_WRONLY;
}

} // namespace

TerminalPort::~TerminalPort()
{
    close();
}

bool TerminalPort::open(const QString &name, QIODevice::OpenMode mode)
{
    m_descriptor = PortNode::open(name, accessMode(mode));
    if (isOpen() && !claim()) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
    return isOpen();
}

// Nothing is changed before the lock is had: the port may be someone else's.
bool TerminalPort::claim()
{
    if (!settings() || !PortNode::lock(m_descriptor)) {
        return false;
    }
    // Keeps out those who don't look at the lock. A node that refuses it is held by the lock alone.
    control(TIOCEXCL, 0);
    return true;
}

void TerminalPort::close()
{
    if (!isOpen()) {
        return;
    }
    // The mark outlives this descriptor on a terminal that another one keeps alive.
    control(TIOCNXCL, 0);
    ::close(m_descriptor);
    m_descriptor = -1;
}

bool TerminalPort::isPseudoTerminal() const
{
    struct stat node
    {
    };
    return ::fstat(m_descriptor, &node) == 0 && S_ISCHR(node.st_mode)
        && major(node.st_rdev) >= UNIX98_PTY_SLAVE_MAJOR
        && major(node.st_rdev) < UNIX98_PTY_SLAVE_MAJOR + UNIX98_PTY_MAJOR_COUNT;
}

std::optional<termios2> TerminalPort::settings() const
{
    termios2 line{};
    if (!control(TCGETS2, &line)) {
        return {};
    }
    return line;
}

bool TerminalPort::setSettings(const termios2 &settings)
{
    return control(TCSETS2, &settings);
}

qint64 TerminalPort::bytesAvailable() const
{
    int count = 0;
    return control(FIONREAD, &count) ? count : -1;
}

qint64 TerminalPort::read(char *data, qint64 size, int msecs)
{
    return transfer(POLLIN, size, msecs, [&](qint64 done) {
        return ::read(m_descriptor, data + done, size_t(size - done));
    });
}

qint64 TerminalPort::write(const char *data, qint64 size, int msecs)
{
    return transfer(POLLOUT, size, msecs, [&](qint64 done) {
        return ::write(m_descriptor, data + done, size_t(size - done));
    });
}

/// Moves @p size bytes by @p step, a call of the kernel that is told how many were moved before.
/// When the kernel has none, or no room, it waits for @p event.
template <typename Step>
qint64 TerminalPort::transfer(short event, qint64 size, int msecs, Step step) const
{
    const QDeadlineTimer deadline(msecs);
    qint64 done = 0;
    while (done < size) {
        const qint64 count = uninterrupted([&] { return step(done); });
        if (count > 0) {
            done += count;
            continue;
        }
        const bool mayGoOn = count == -1 && errno == EAGAIN;
        if (!mayGoOn || !(wait(event, int(deadline.remainingTime())) & event)) {
            break;
        }
    }
    return done;
}

short TerminalPort::wait(short events, int msecs) const
{
    const QDeadlineTimer deadline(msecs);
    pollfd watched{m_descriptor, events, 0};
    const int count =
        uninterrupted([&] { return ::poll(&watched, 1, int(deadline.remainingTime())); });
    return count > 0 ? watched.revents : short(0);
}

// Not tcdrain, which waits for ever on a line that flow control holds up.
bool TerminalPort::waitUntilSent(int msecs) const
{
    const QDeadlineTimer deadline(msecs);
    while (true) {
        int queued = 0;
        if (!control(TIOCOUTQ, &queued)) {
            return false;
        }
        // The last bytes stand in the shift register; a terminal without one refuses the question.
        unsigned int transmitter = TIOCSER_TEMT;
        control(TIOCSERGETLSR, &transmitter);
        if (queued == 0 && (transmitter & TIOCSER_TEMT)) {
            return true;
        }
        if (deadline.hasExpired()) {
            return false;
        }
        QThread::msleep(DrainPollInterval);
    }
}

bool TerminalPort::drop(int queue)
{
    return control(TCFLSH, queue);
}

std::optional<int> TerminalPort::modemLines() const
{
    int lines = 0;
    if (!control(TIOCMGET, &lines)) {
        return {};
    }
    return lines;
}

bool TerminalPort::setModemLines(int bits, bool on)
{
    return control(on ? TIOCMBIS : TIOCMBIC, &bits);
}

bool TerminalPort::setBreak(bool hold)
{
    return control(hold ? TIOCSBRK : TIOCCBRK, 0);
}

template <typename Argument>
bool TerminalPort::control(unsigned long request, Argument argument) const
{
    return uninterrupted([&] { return ::ioctl(m_descriptor, request, argument); }) != -1;
}
