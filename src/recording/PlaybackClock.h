#pragma once

#include "core/MillisecondClock.h"

#include <cstdint>

namespace corvane {
/// How far a recording has played: at 1 to 60 times the speed of a clock, or standing still. Whole milliseconds
/// throughout, so that nothing is ever lost by rounding.
class PlaybackClock {
public:
    static constexpr int MinSpeed = 1;
    static constexpr int MaxSpeed = 60;

    explicit PlaybackClock(MillisecondClock now) : m_now(std::move(now)) {}

    /// A recording is opened: it stands where playing is to begin until Begin, at the speed set before.
    /// beginMs  since the recording's beginning; the nearest time inside where it is outside
    void Open(std::int64_t lengthMs, std::int64_t beginMs = 0) noexcept;
    void Begin();
    void Close() noexcept { m_open = false; }

    /// A speed outside the limits becomes the nearest inside.
    void SetSpeed(int speed);
    void SetPaused(bool paused);
    [[nodiscard]] int Speed() const noexcept { return m_speed; }
    [[nodiscard]] bool IsPaused() const noexcept { return m_paused; }

    [[nodiscard]] bool IsOpen() const noexcept { return m_open; }
    [[nodiscard]] bool HasBegun() const noexcept { return m_begun; }
    [[nodiscard]] std::int64_t LengthMs() const noexcept { return m_lengthMs; }
    /// Recorded milliseconds since the recording's beginning, never more than its length.
    [[nodiscard]] std::int64_t PositionMs();

private:
    void Advance();

    MillisecondClock m_now;
    std::int64_t m_lengthMs = 0;
    std::int64_t m_positionMs = 0;
    std::int64_t m_advancedMs = 0; ///< on the clock
    int m_speed = MinSpeed;
    bool m_paused = false;
    bool m_open = false;
    bool m_begun = false;
};
} // namespace corvane
