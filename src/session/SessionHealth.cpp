#include "session/SessionHealth.h"

#include "core/NumberText.h"

#include <algorithm>

namespace corvane {
HealthReport SessionHealth::Report(std::size_t members, std::int64_t nowMs)
{
    constexpr std::int64_t MsPerSecond = 1000;
    const bool alone = members <= 1;
    m_hadOthers = m_hadOthers || !alone;
    if (alone)
        return m_hadOthers ? HealthReport{HealthLevel::Over, "Everybody else has left the session."}
                           : HealthReport{HealthLevel::Well, "Nobody else is here yet."};
    const std::int64_t silentMs = std::max<std::int64_t>(nowMs - m_lastHeardMs, 0);
    const std::string seconds = NumberText(silentMs / MsPerSecond) + " s";
    if (silentMs >= OverMs)
        return {HealthLevel::Over, "Nobody has been heard for " + seconds + ". The host may be gone."};
    const std::string count = NumberText(static_cast<std::int64_t>(members)) + " members, ";
    if (silentMs >= QuietMs)
        return {HealthLevel::Quiet, count + "nothing heard for " + seconds};
    return {HealthLevel::Well, count + "heard " + seconds + " ago"};
}
} // namespace corvane
