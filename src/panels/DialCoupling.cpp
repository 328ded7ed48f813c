#include "panels/DialCoupling.h"

#include "panels/SaturatedInt.h"

#include <QDial>
#include <QSignalBlocker>
#include <QSpinBox>

#include <cmath>

namespace {

/// @p value in decades times the scale factor; 0 for all that has no logarithm.
double logarithmicSteps(int value)
{
    return value > 0 ? DialCoupling::ScaleFactor * std::log10(value) : 0.0;
}

/// The value of a step, rounded; beyond the range of int it is the largest one.
int valueOfStep(int step)
{
    const double value = std::pow(10.0, static_cast<double>(step) / DialCoupling::ScaleFactor) - 1;
    return value < SaturatedInt::Largest ? qRound(value) : SaturatedInt::Largest;
}

} // namespace

DialCoupling::DialCoupling(QDial *dial, QSpinBox *spinBox)
    : m_dial(dial)
    , m_spinBox(spinBox)
{
}

void DialCoupling::setLogarithmic(bool logarithmic)
{
    m_logarithmic = logarithmic;
    const QSignalBlocker blocker(m_dial);
    m_dial->setMaximum(dialMaximum());
    turnDial(m_spinBox->value());
}

void DialCoupling::setLimit(int limit)
{
    m_limit = limit;
    m_spinBox->setMaximum(limit);
    m_dial->setMaximum(dialMaximum());
}

void DialCoupling::turnDial(int value) const
{
    const QSignalBlocker blocker(m_dial);
    m_dial->setValue(m_logarithmic ? qRound(logarithmicSteps(value)) : value);
}

void DialCoupling::setSpinBox(int step) const
{
    const QSignalBlocker blocker(m_spinBox);
    m_spinBox->setValue(m_logarithmic ? valueOfStep(step) : step);
}

int DialCoupling::dialMaximum() const
{
    if (!m_logarithmic) {
        return m_limit;
    }
    return m_limit > 0 ? qRound(logarithmicSteps(m_limit) + 1) : 0;
}
