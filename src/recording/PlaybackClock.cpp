#include "recording/PlaybackClock.h"

#include <algorithm>

namespace corvane {
void PlaybackClock::Open(std::int64_t lengthMs, std::int64_t beginMs) noexcept
{
    m_lengthMs = std::max<std::int64_t>(lengthMs, 0);
    m_positionMs = std::clamp<std::int64_t>(beginMs, 0, m_lengthMs);
    m_paused = false;
    m_open = true;
    m_begun = false;
}

void PlaybackClock::Begin()
{
    if (m_begun)
        return;
    m_begun = true;
    m_advancedMs = m_now();
}

void PlaybackClock::SetSpeed(int speed)
{
    Advance();
    m_speed = std::clamp(speed, MinSpeed, MaxSpeed);
}

void PlaybackClock::SetPaused(bool paused)
{
    Advance();
    m_paused = paused;
}

std::int64_t PlaybackClock::PositionMs()
{
    Advance();
    return m_positionMs;
}

void PlaybackClock::Advance()
{
    if (!m_open || !m_begun)
        return;
    const std::int64_t now = m_now();
    const std::int64_t passed = std::max<std::int64_t>(now - m_advancedMs, 0);
    m_advancedMs = now;
    if (m_paused)
        return;
    // The length bounds what is multiplied: the clock may have run on for years.
    m_positionMs += std::min(std::min(passed, m_lengthMs) * m_speed, m_lengthMs - m_positionMs);
}
} // namespace corvane
