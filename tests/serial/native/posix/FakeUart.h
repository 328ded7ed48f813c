#pragma once

#include <QList>

#include <asm/termbits.h>

/// What a pseudo-terminal hasn't: modem lines, a break, an output queue, a driver with limits.
///
/// A program that links this has its calls of ioctl answered as the driver of an on-board port
/// would, for every descriptor; bytes, and whatever isn't named here, still go to the
/// pseudo-terminal. One object at a time switches it on while it lives.
class FakeUart
{
public:
    FakeUart();
    ~FakeUart();
    FakeUart(const FakeUart &) = delete;
    FakeUart &operator=(const FakeUart &) = delete;

    int modemLines = 0; ///< TIOCM bits; output lines are set by the code under test
    bool hasModemLines = true;
    int looks = 0; ///< how often the modem lines were asked for
    bool breakHeld = false;
    int breaks = 0; ///< how often a break began
    tcflag_t ignoredControl = 0; ///< bits of c_cflag that the driver leaves out in silence
    bool refusesSettings = false; ///< TCSETS2 fails
    bool refusesExclusiveUse = false; ///< TIOCEXCL and TIOCGEXCL fail
    bool refusesBreak = false; ///< TIOCSBRK fails
    int queued = 0; ///< bytes in the output queue
    int drainedPerLook = 0; ///< bytes that leave it between two looks
    int shifting = 0; ///< looks at the transmitter until its last byte is out
    QList<int> dropped; ///< queues that were dropped, by TCFLSH
    int interruptions = 0; ///< calls that a signal interrupts before one goes through
};
