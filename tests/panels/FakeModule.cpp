#include "FakeModule.h"

#include "comm/ByteText.h"
#include "panels/ParameterPanel.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

void FakeModule::attach(ParameterPanel *panel)
{
    m_panels.append(panel);
    connect(panel, &ParameterPanel::requestValue, this,
            [this](char address, char motorBank, char type) {
                enter(u"get %1 %2 %3"_s.arg(unsignedByte(address))
                          .arg(unsignedByte(motorBank))
                          .arg(unsignedByte(type)));
                answer(address, motorBank, type);
            });
    connect(panel, &ParameterPanel::changeValue, this,
            [this](char address, char motorBank, char type, int value) {
                const int number = unsignedByte(type);
                enter(u"set %1 %2 %3 %4"_s.arg(unsignedByte(address))
                          .arg(unsignedByte(motorBank))
                          .arg(number)
                          .arg(value));
                if (answering) {
                    values[number] = std::min(value, largest.value(number, value));
                }
                answer(address, motorBank, type);
            });
}

QStringList FakeModule::takeLog()
{
    return std::exchange(m_log, {});
}

void FakeModule::enter(const QString &line)
{
    m_log.append(line);
    if (m_log.size() > 1000) {
        qFatal("panel and module go on for ever: %s", qPrintable(line));
    }
}

void FakeModule::answer(char address, char motorBank, char type)
{
    if (!answering) {
        return;
    }
    const int value = values.value(unsignedByte(type));
    for (ParameterPanel *panel : std::as_const(m_panels)) {
        panel->requestedValue(address, motorBank, type, value);
    }
}
