#include "TermiosSettings.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

namespace {

/// The bits of the data bits 5 to 8.
constexpr std::array<tcflag_t, 4> Sizes{CS5, CS6, CS7, CS8};

/// The bits of the parities 0 to 4; PARENB stands apart, as checksParity does.
constexpr std::array<tcflag_t, 5> Parities{0, PARODD, 0, PARODD | CMSPAR, CMSPAR};
constexpr tcflag_t ParityBits = PARODD | CMSPAR;

constexpr tcflag_t FlowByCharacters = IXON | IXOFF;

/// A rate may be off by one in this many: a receiver bears 2 % over the ten bits of a character.
constexpr qint64 RateTolerance = 50;

void assign(tcflag_t &field, tcflag_t bits, bool set)
{
    field = set ? field | bits : field & ~bits;
}

int parityNumber(tcflag_t control)
{
    const tcflag_t bits = control & ParityBits;
    if (bits == 0) {
        return control & PARENB ? AbstractSerial::ParityEven : AbstractSerial::ParityNone;
    }
    return int(std::distance(Parities.begin(), std::find(Parities.begin(), Parities.end(), bits)));
}

} // namespace

void TermiosSettings::store(const LineSettings &settings, termios2 &line)
{
    // An input rate of its own (the bits above IBSHIFT) isn't wanted: the output's counts for both.
    line.c_cflag &= ~(CBAUD | CBAUD << IBSHIFT | CSIZE | ParityBits);
    line.c_cflag |= BOTHER;
    line.c_ispeed = line.c_ospeed = speed_t(settings.baudRate);

    line.c_cflag |= Sizes.at(size_t(settings.byteSize - LineSettings::SmallestByteSize));
    line.c_cflag |= Parities.at(size_t(settings.parity));
    assign(line.c_cflag, PARENB, settings.checksParity);
    assign(line.c_cflag, CSTOPB, settings.stopBits != AbstractSerial::StopBits1);
    assign(line.c_cflag, CRTSCTS, settings.ctsFlow);
    assign(line.c_iflag, IXON, settings.outX);
    assign(line.c_iflag, IXOFF, settings.inX);
}

LineSettings TermiosSettings::load(const termios2 &line)
{
    LineSettings settings;
    settings.baudRate = int(line.c_ospeed);
    settings.byteSize = LineSettings::SmallestByteSize
        + int(std::distance(Sizes.begin(),
                            std::find(Sizes.begin(), Sizes.end(), line.c_cflag & CSIZE)));
    settings.checksParity = line.c_cflag & PARENB;
    settings.parity = parityNumber(line.c_cflag);
    if (line.c_cflag & CSTOPB) {
        settings.stopBits = settings.byteSize == LineSettings::SmallestByteSize
            ? AbstractSerial::StopBits1_5
            : AbstractSerial::StopBits2;
    }
    settings.ctsFlow = line.c_cflag & CRTSCTS;
    settings.rtsControl = settings.ctsFlow ? LineSettings::RtsHandshake : LineSettings::RtsDisabled;
    settings.outX = line.c_iflag & IXON;
    settings.inX = line.c_iflag & IXOFF;
    return settings;
}

void TermiosSettings::makeRaw(termios2 &line)
{
    line.c_iflag &= ~tcflag_t(IGNBRK | BRKINT | IGNPAR | PARMRK | INPCK | ISTRIP | INLCR | IGNCR
                              | ICRNL | IUCLC | IXANY | IMAXBEL | FlowByCharacters);
    line.c_oflag &= ~tcflag_t(OPOST);
    line.c_lflag &= ~tcflag_t(ECHO | ECHONL | ICANON | ISIG | IEXTEN);
    // CLOCAL: a missing carrier is for the reader of the modem lines and doesn't hang up.
    line.c_cflag |= CREAD | CLOCAL;
}

bool TermiosSettings::isTaken(const termios2 &wanted, const termios2 &taken, Medium medium)
{
    tcflag_t compared = CSTOPB | CRTSCTS;
    if (medium == Medium::Wire) {
        compared |= CSIZE | PARENB;
        // Without a parity bit nothing asks which one it would be.
        compared |= wanted.c_cflag & PARENB ? ParityBits : 0;
    }
    const qint64 rate = wanted.c_ospeed;
    const qint64 miss = std::abs(qint64(taken.c_ospeed) - rate);
    return ((wanted.c_cflag ^ taken.c_cflag) & compared) == 0
        && ((wanted.c_iflag ^ taken.c_iflag) & FlowByCharacters) == 0
        && miss * RateTolerance <= rate;
}
