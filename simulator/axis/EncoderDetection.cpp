#include "simulator/axis/EncoderDetection.h"

namespace simulator {

void EncoderDetection::choose(EncoderFate fate, std::chrono::milliseconds duration)
{
    m_fate = fate;
    m_duration = duration;
}

void EncoderDetection::start(TimePoint now)
{
    m_state = Running;
    m_start = now;
}

std::optional<TimePoint> EncoderDetection::endsAt() const
{
    if (!isRunning() || m_fate == EncoderFate::Endless) {
        return std::nullopt;
    }
    return m_start + m_duration;
}

void EncoderDetection::finish()
{
    m_state = m_fate == EncoderFate::Found ? Succeeded : Failed;
}

} // namespace simulator
