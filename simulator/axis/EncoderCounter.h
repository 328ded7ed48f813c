#pragma once

namespace simulator {

/// The counter of the encoder on the shaft. A change of the resolution doesn't change what was
/// counted before.
class EncoderCounter
{
public:
    /// Counts @p perMicrostep positions a microstep from now on, where the shaft is at @p place.
    void setResolution(double perMicrostep, double place);
    /// Makes @p place of the shaft the count 0.
    void clearAt(double place);
    /// The count with the shaft at @p place, in encoder positions.
    double valueAt(double place) const { return m_count + (place - m_from) * m_perMicrostep; }

private:
    double m_count = 0; // at m_from
    double m_from = 0;
    double m_perMicrostep = 0;
};

} // namespace simulator
