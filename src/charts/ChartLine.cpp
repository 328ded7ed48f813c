#include "charts/ChartLine.h"

#include <algorithm>
#include <utility>

namespace {

/// The smoothed value moves by this part of its distance to a new sample.
constexpr double SmoothingDivisor = 5;

} // namespace

ChartLine::ChartLine(quint8 address, quint8 motorBank, quint8 command, quint8 type, QString name,
                     const QColor &color)
    : m_address(address)
    , m_motorBank(motorBank)
    , m_command(command)
    , m_type(type)
    , m_name(std::move(name))
    , m_color(color)
{
}

bool ChartLine::hasKey(quint8 address, quint8 motorBank, quint8 command, quint8 type) const
{
    return address == m_address && motorBank == m_motorBank && command == m_command
        && type == m_type;
}

void ChartLine::addValue(double value)
{
    m_samples.append(value);
    m_smoothed = m_smoothed - m_smoothed / SmoothingDivisor + value / SmoothingDivisor;
    trim();
}

void ChartLine::clearValues()
{
    m_samples.clear();
}

void ChartLine::setMaxSamples(int maxSamples)
{
    if (m_maxSamples > 0) {
        m_maxSamples = maxSamples;
        trim();
    }
}

void ChartLine::trim()
{
    // Taking from the front only moves the list's begin: no sample is copied.
    const qsizetype surplus = m_samples.size() - std::max(m_maxSamples, 0);
    if (surplus > 0) {
        m_samples.remove(0, surplus);
    }
}
