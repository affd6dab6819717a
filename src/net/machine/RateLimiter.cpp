#include "net/machine/RateLimiter.h"

namespace corvane::directplay {
bool RateLimiter::Allow(std::uint32_t ip, Millis now)
{
    constexpr Millis Window{1000};
    constexpr std::size_t MaxSources = 1024;
    if (m_sources.size() >= MaxSources)
        std::erase_if(m_sources, [&](const auto& entry) { return now - entry.second.Start >= Window; });
    if (m_sources.size() >= MaxSources && !m_sources.contains(ip))
        return false;
    Second& second = m_sources.try_emplace(ip, Second{now, 0}).first->second;
    if (now - second.Start >= Window)
        second = {now, 0};
    return ++second.Count <= MaxAnswersPerSecond;
}
} // namespace corvane::directplay
