#include "NativeSerialEnginePrivate.h"

#include "TermiosSettings.h"

using namespace Qt::StringLiterals;

NativeSerialEnginePrivate::NativeSerialEnginePrivate()
{
    deviceName = u"ttyS0"_s;
}

bool NativeSerialEnginePrivate::takeOver()
{
    const std::optional<termios2> found = port.settings();
    if (!found) {
        return false;
    }
    m_found = m_line = *found;
    oldSettingsSaved = true;
    settings = TermiosSettings::load(m_found);
    settings.outX = settings.inX = false;

    TermiosSettings::makeRaw(m_line);
    // A read answers as soon as there is one byte, and poll tells of one byte.
    m_line.c_cc[VMIN] = 1;
    m_line.c_cc[VTIME] = 0;
    readTotalTimeout = 0;
    autoReadTotalTimeout = false;
    // What came before the opening, perhaps at another rate, isn't for this program.
    if (!applySettings() || !port.drop(TCIFLUSH)) {
        return false;
    }
    readBackSettings();
    return true;
}

// The line settings stay as the program left them, as the only things that are not given back.
// That is by design: the next program finds the line as the module was last spoken to.
void NativeSerialEnginePrivate::restoreTimeouts()
{
    std::optional<termios2> line = port.settings();
    if (!line) {
        return;
    }
    line->c_cc[VMIN] = m_found.c_cc[VMIN];
    line->c_cc[VTIME] = m_found.c_cc[VTIME];
    port.setSettings(*line);
}

bool NativeSerialEnginePrivate::applySettings()
{
    termios2 wanted = m_line;
    TermiosSettings::store(settings, wanted);
    if (!port.setSettings(wanted)) {
        return false;
    }
    // A driver leaves out what it can't do and reports success all the same.
    const auto medium =
        port.isPseudoTerminal() ? TermiosSettings::Medium::Pseudo : TermiosSettings::Medium::Wire;
    const std::optional<termios2> taken = port.settings();
    if (!taken || !TermiosSettings::isTaken(wanted, *taken, medium)) {
        port.setSettings(m_line);
        return false;
    }
    m_line = wanted;
    return true;
}

// The kernel has no such timeouts: the engine reads the limit afresh for each transfer.
void NativeSerialEnginePrivate::applyTimeouts() { }
