#pragma once

#include <chrono>
#include <functional>

namespace simulator {

/// A moment of the module's life.
using TimePoint = std::chrono::steady_clock::time_point;

/// A stretch of time in seconds, with fractions.
using Seconds = std::chrono::duration<double>;

/// Tells the present moment. Never goes back.
using TimeSource = std::function<TimePoint()>;

} // namespace simulator
