#include "app/ModuleScript.h"

#include "comm/ByteText.h"
#include "panels/AxisParameter.h"

using namespace Qt::StringLiterals;

ModuleScript::ModuleScript(const QString &fileName)
    : m_file(fileName)
{
    // Not as text: no system is to make its own line ends of the line feeds. Without a name there
    // is nothing to open, of which the toolkit would warn.
    if (!fileName.isEmpty()) {
        m_file.open(QIODevice::WriteOnly);
    }
}

QString ModuleScript::sapLine(char type, int value, const QString &comment)
{
    constexpr int MotorBank = 0;
    return u"SAP %1, %2, %3 %4\n"_s.arg(unsignedByte(type)).arg(MotorBank).arg(value).arg(comment);
}

void ModuleScript::writeHeading(QStringView heading)
{
    if (!m_isFirstHeading) {
        write(u"\n"_s);
    }
    m_isFirstHeading = false;
    write(u"//=== %1 ===\n"_s.arg(heading));
}

void ModuleScript::write(const QString &text)
{
    if (m_file.isOpen()) {
        m_file.write(text.toLatin1());
    }
}

void ModuleScript::writeWaitForClosedLoop()
{
    writeHeading(u"wait for end of closed loop initialization");
    write(u"ClInit:  GAP %1, 0\n"_s.arg(AxisParameters::ClosedLoopInitialisationFlag.number));
    write(u"         JC ZE, ClInit\n"_s);
}
