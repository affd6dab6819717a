#pragma once

#include <cstdint>
#include <functional>

namespace corvane {
/// Milliseconds since any moment, never going back.
using MillisecondClock = std::function<std::int64_t()>;

/// The computer's own clock.
MillisecondClock SteadyMilliseconds();
} // namespace corvane
