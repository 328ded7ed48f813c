#include "simulator/axis/EncoderCounter.h"

namespace simulator {

void EncoderCounter::setResolution(double perMicrostep, double place)
{
    m_count = valueAt(place);
    m_from = place;
    m_perMicrostep = perMicrostep;
}

void EncoderCounter::clearAt(double place)
{
    m_count = 0;
    m_from = place;
}

} // namespace simulator
