#pragma once

#include "follow/EventReporter.h"
#include "session/MessagePump.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace corvane {
/// A timer of the program where there is no event loop: due when its interval has passed since it was due last.
class Interval {
public:
    explicit Interval(std::int64_t lengthMs) noexcept : m_lengthMs(lengthMs) {}

    void Start(std::int64_t nowMs) noexcept { m_nextMs = nowMs + m_lengthMs; }
    /// Once for each pass; ticks that were missed are not made up for.
    bool Due(std::int64_t nowMs) noexcept
    {
        if (nowMs < m_nextMs)
            return false;
        Start(nowMs);
        return true;
    }

private:
    std::int64_t m_lengthMs;
    std::int64_t m_nextMs = 0;
};

/// The message pump of a session that is followed without windows: what it finds becomes events, and its timers are
/// driven by Tick.
class FollowedPump {
public:
    /// password  the answer to the question for one, should the session be joined through Boxes()
    FollowedPump(SessionState& session, PlayerTable& players, const MagVarGrid& magVar, SessionEvents& events,
                 std::string password = {});

    /// The session has been entered at a time on a clock that never goes back.
    void Start(std::int64_t nowMs);
    /// Does what is due. An Error says why the session is over; leaving it is left to the caller.
    Result<void> Tick(std::int64_t nowMs);
    [[nodiscard]] MessageBoxes& Boxes() noexcept { return m_reporter; }

private:
    void LookForChangedMembers();

    SessionState& m_session;
    EventReporter m_reporter;
    MessagePump m_pump;
    Interval m_pumpTimer{PumpIntervalMs};
    Interval m_upkeep{UpkeepIntervalMs};
    Interval m_memberCheck{1000};
    std::size_t m_memberCount = 0;
    int m_checksToSecondLook = 0; ///< 0: none is due
};
} // namespace corvane
