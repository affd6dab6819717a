#include "tracks/HistoryPlay.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace corvane {
/// After so many seconds of silence nothing about a member changes any more: its course is its heading, it is stale or
/// never will be, and its alerts stand or have ended.
static double SecondsToSettle(const TrackOptions& options) noexcept
{
    constexpr double Confirmation = 4;
    return std::max(CourseSeconds, static_cast<double>(options.StaleSeconds)) + Confirmation;
}

HistoryPlay::HistoryPlay(TrafficMonitor& monitor, EventSink sink, MinimumAltitudeUpdate update)
    : m_monitor(monitor), m_sink(std::move(sink)), m_update(std::move(update))
{
}

void HistoryPlay::Refresh(double now)
{
    const TrackOptions& options = m_monitor.Options();
    const double settled = SecondsToSettle(options);
    std::erase_if(m_members,
                  [&](const auto& entry) { return options.StaleSeconds > 0 && now - entry.second.Reported > settled; });
    std::vector<const PlayerRecord*> pilots;
    pilots.reserve(m_members.size());
    for (auto& [key, member] : m_members) {
        if (m_update)
            m_update(member.Record, pilots.size());
        pilots.push_back(&member.Record);
    }
    for (const AlertEvent& event : m_monitor.Refresh(pilots, now))
        m_sink(event);
}

void HistoryPlay::RefreshBefore(double time)
{
    const double settled = m_lastTime + SecondsToSettle(m_monitor.Options());
    for (; NextRefresh() < time; ++m_refreshes) {
        if (NextRefresh() > settled) {
            m_refreshes = static_cast<std::int64_t>(std::ceil(time - m_firstTime));
            return;
        }
        Refresh(NextRefresh());
    }
}

void HistoryPlay::TakeReport(PlayerRecord&& record, double now)
{
    if (!EligiblePilot(record, HistoryOwnId, m_ownName))
        return;
    m_monitor.Report(record, now);
    MemberKey key{record.PlayerId, record.Name};
    m_members.insert_or_assign(std::move(key), Member{std::move(record), now});
}

void HistoryPlay::Play(HistoryLine line)
{
    assert(std::abs(line.Time) <= LatestHistoryTime && (!m_begun || line.Time >= m_lastTime));
    if (!std::exchange(m_begun, true))
        m_firstTime = line.Time;
    else
        RefreshBefore(line.Time);
    m_lastTime = line.Time;
    for (const PlayerRecord& player : line.Players)
        if (player.PlayerId == HistoryOwnId)
            m_ownName = player.Name;
    for (PlayerRecord& player : line.Players)
        TakeReport(std::move(player), line.Time);
}

void HistoryPlay::Finish()
{
    if (m_begun && NextRefresh() <= m_lastTime)
        Refresh(NextRefresh());
}
} // namespace corvane
