#include "FakeUart.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>

#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

FakeUart *uart = nullptr;

int fail(int error)
{
    errno = error;
    return -1;
}

int modemControl(unsigned long request, int *lines)
{
    uart->looks += request == TIOCMGET ? 1 : 0;
    if (!uart->hasModemLines) {
        return fail(ENOTTY);
    }
    if (request == TIOCMGET) {
        *lines = uart->modemLines;
    } else if (request == TIOCMBIS) {
        uart->modemLines |= *lines;
    } else {
        uart->modemLines &= ~*lines;
    }
    return 0;
}

int breakControl(bool hold)
{
    if (uart->refusesBreak) {
        return fail(EIO);
    }
    uart->breakHeld = hold;
    uart->breaks += hold ? 1 : 0;
    return 0;
}

int outputQueue(int *count)
{
    *count = uart->queued;
    uart->queued = std::max(0, uart->queued - uart->drainedPerLook);
    return 0;
}

int transmitter(unsigned int *state)
{
    *state = uart->shifting == 0 ? TIOCSER_TEMT : 0;
    uart->shifting = std::max(0, uart->shifting - 1);
    return 0;
}

long pass(int descriptor, unsigned long request, void *argument)
{
    return ::syscall(SYS_ioctl, descriptor, request, argument);
}

long setSettings(int descriptor, const termios2 *settings)
{
    if (uart->refusesSettings) {
        return fail(EINVAL);
    }
    termios2 taken = *settings;
    taken.c_cflag &= ~uart->ignoredControl;
    return pass(descriptor, TCSETS2, &taken);
}

long answer(int descriptor, unsigned long request, void *argument)
{
    switch (request) {
    case TIOCMGET:
    case TIOCMBIS:
    case TIOCMBIC:
        return modemControl(request, static_cast<int *>(argument));
    case TIOCSBRK:
    case TIOCCBRK:
        return breakControl(request == TIOCSBRK);
    case TIOCOUTQ:
        return outputQueue(static_cast<int *>(argument));
    case TIOCSERGETLSR:
        return transmitter(static_cast<unsigned int *>(argument));
    case TCSETS2:
        return setSettings(descriptor, static_cast<const termios2 *>(argument));
    case TIOCEXCL:
    case TIOCGEXCL:
        return uart->refusesExclusiveUse ? fail(ENOTTY) : pass(descriptor, request, argument);
    case TCFLSH:
        uart->dropped.append(int(reinterpret_cast<intptr_t>(argument)));
        return pass(descriptor, request, argument);
    default:
        return pass(descriptor, request, argument);
    }
}

} // namespace

FakeUart::FakeUart()
{
    uart = this;
}

FakeUart::~FakeUart()
{
    uart = nullptr;
}

// Stands before the one of the C library, since a program's own functions are found first.
extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (!uart) {
        return int(pass(descriptor, request, argument));
    }
    if (uart->interruptions > 0) {
        --uart->interruptions;
        return fail(EINTR);
    }
    return int(answer(descriptor, request, argument));
}
