#include "serial/ModemLineWatch.h"

#include <utility>

namespace {

constexpr AbstractSerial::LineStatus WatchedLines =
    AbstractSerial::LineCTS | AbstractSerial::LineDSR | AbstractSerial::LineRI;

} // namespace

ModemLineWatch::ModemLineWatch(Reader reader)
    : m_reader(std::move(reader))
{
}

bool ModemLineWatch::start()
{
    m_last = m_reader();
    return !m_last.testFlag(AbstractSerial::LineErr);
}

bool ModemLineWatch::hasChanged()
{
    const AbstractSerial::LineStatus now = m_reader();
    if (now.testFlag(AbstractSerial::LineErr)) {
        return false;
    }
    const bool changed = ((now ^ m_last) & WatchedLines) != 0;
    m_last = now;
    return changed;
}
