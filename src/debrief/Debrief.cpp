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
    if (!UnhinderedS)
        return std::nullopt;
    if (ReadyS && TookOffS)
        return std::max(0.0, *TookOffS - *ReadyS - *UnhinderedS);
    if (!LandedS || Track.empty())
        return std::nullopt;
    return std::max(0.0, *LandedS - Track.front().TimeS - *UnhinderedS);
}

std::optional<DebriefMoment> Debrief::MomentOf(double timeS) const
{
    for (const DebriefRecording& recording : Recordings)
        if (timeS >= recording.BeginS && timeS <= recording.EndS)
            return DebriefMoment{recording.File, timeS - recording.BeginS};
    return std::nullopt;
}
} // namespace corvane
