#include "core/MillisecondClock.h"

#include <chrono>

namespace corvane {
MillisecondClock SteadyMilliseconds()
{
    return [] {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return std::int64_t{std::chrono::duration_cast<std::chrono::milliseconds>(now).count()};
    };
}
} // namespace corvane
