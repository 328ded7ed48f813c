#pragma once

#include "simulator/axis/TimeSource.h"

#include <cstdint>
#include <optional>

namespace simulator {

/// How a detection of the encoder goes.
enum class EncoderFate : std::uint8_t {
    Found,
    NotFound,
    Endless, ///< the detection never comes to a result
};

/// The state of the encoder detection, AP 132. Times come from the caller.
class EncoderDetection
{
public:
    /// Values of AP 132.
    enum State : std::int32_t { NotPerformed = 0, Running = 1, Succeeded = 2, Failed = 3 };

    /// Time that a detection takes unless chosen otherwise.
    static constexpr std::chrono::milliseconds usualDuration{2000};

    /// Chooses how detections go, one that runs included, and how long they take.
    void choose(EncoderFate fate, std::chrono::milliseconds duration);
    EncoderFate fate() const { return m_fate; }
    std::chrono::milliseconds duration() const { return m_duration; }

    /// Begins a detection at @p now.
    void start(TimePoint now);
    /// When the one that runs ends; nothing if none runs, or if it never ends.
    std::optional<TimePoint> endsAt() const;
    /// The one that runs has had its time.
    void finish();
    /// Puts an end to whatever is: AP 132 now has the value @p state.
    void reset(std::int32_t state) { m_state = state; }

    bool isRunning() const { return m_state == Running; }
    /// The value of AP 132.
    std::int32_t state() const { return m_state; }

private:
    EncoderFate m_fate = EncoderFate::Found;
    std::chrono::milliseconds m_duration = usualDuration;
    std::int32_t m_state = NotPerformed;
    TimePoint m_start;
};

} // namespace simulator
