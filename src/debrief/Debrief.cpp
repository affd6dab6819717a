#include "debrief/Debrief.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvane {
const char* NameOf(DebriefKind kind) noexcept
{
    constexpr std::array Names{"separation",     "low altitude", "wake turbulence", "go-around", "refused",
                               "not understood", "unanswered",   "waited",          "fuel"};
    return Names[static_cast<std::size_t>(kind)];
}

std::optional<double> DebriefFlight::DelayS() const
{
    if (!LandedS || !UnhinderedS || Track.empty())
        return std::nullopt;
    return std::max(0.0, *LandedS - Track.front().TimeS - *UnhinderedS);
}
} // namespace corvane
