#include "follow/FollowedPump.h"

#include <utility>

namespace corvane {
FollowedPump::FollowedPump(SessionState& session, PlayerTable& players, const MagVarGrid& magVar, SessionEvents& events,
                           std::string password)
    : m_session(session),
      m_reporter(events, std::move(password)),
      m_pump(session, players, magVar, m_reporter, m_reporter)
{
}

void FollowedPump::Start(std::int64_t nowMs)
{
    m_pump.Start();
    m_upkeep.Start(nowMs);
}

Result<void> FollowedPump::Tick(std::int64_t nowMs)
{
    if (m_pumpTimer.Due(nowMs))
        m_pump.PumpTick();
    if (m_memberCheck.Due(nowMs))
        LookForChangedMembers();
    if (m_upkeep.Due(nowMs))
        m_pump.UpkeepTick();
    if (m_reporter.SessionIsOver())
        return m_pump.LastError().value_or(Fail("session", m_reporter.LastNotice()));
    return {};
}

/// A log shows within seconds who came and went, where a person can wait for the next upkeep. Whoever has just come
/// may not be admitted yet, and answers only later.
void FollowedPump::LookForChangedMembers()
{
    constexpr int ChecksUntilAdmitted = 3;
    const auto members = m_session.SessionPeer->GetDPEnumPlayers();
    if (!members)
        return;
    const bool changed = std::exchange(m_memberCount, members->size()) != members->size();
    const bool secondLook = m_checksToSecondLook > 0 && --m_checksToSecondLook == 0;
    if (changed)
        m_checksToSecondLook = ChecksUntilAdmitted;
    if (changed || secondLook)
        m_pump.UpkeepTick();
}
} // namespace corvane
