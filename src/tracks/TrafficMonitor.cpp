#include "tracks/TrafficMonitor.h"

#include "core/Geodesy.h"

#include <unordered_set>

namespace corvane {
static MemberKey KeyOf(const PlayerRecord& member)
{
    return {member.PlayerId, member.Name};
}

void TrafficMonitor::SetOptions(const TrackOptions& tracks, const AlertOptions& alerts)
{
    m_tracks.SetOptions(tracks);
    m_alertOptions = alerts;
}

void TrafficMonitor::Report(const PlayerRecord& member, double now)
{
    const double trueHeading = TrueFromMagnetic(m_variation, member.MagHeading, {member.Latitude, member.Longitude});
    m_tracks.Report(KeyOf(member), {.Time = now,
                                    .Position = {member.Latitude, member.Longitude},
                                    .AltitudeFt = member.AltitudeFt,
                                    .GroundSpeedKt = member.GroundSpeedKt,
                                    .TrueHeading = trueHeading});
}

std::vector<AlertEvent> TrafficMonitor::Refresh(std::span<const PlayerRecord* const> pilots, double now)
{
    constexpr std::uint8_t InstrumentFlightRules = 1;
    std::vector<MemberKey> members;
    members.reserve(pilots.size());
    for (const PlayerRecord* pilot : pilots)
        members.push_back(KeyOf(*pilot));
    m_tracks.KeepOnly(members);
    std::vector<AlertTarget> targets;
    targets.reserve(pilots.size());
    std::unordered_set<TrackId> taken; // a member may stand in the table twice
    for (std::size_t i = 0; i < pilots.size(); ++i) {
        const PlayerRecord& pilot = *pilots[i];
        if (const auto track = m_tracks.Find(members[i], now); track && taken.insert(track->Id).second)
            targets.push_back({.PlayerId = pilot.PlayerId,
                               .Track = *track,
                               .Ifr = pilot.FlightRules == InstrumentFlightRules,
                               .MinimumAltitudeFt = pilot.MinimumAltitudeFt,
                               .DestinationIcao = pilot.DestinationIcao});
    }
    return m_alerts.Refresh(targets, m_airports, m_alertOptions, now);
}

std::optional<TrackState> TrafficMonitor::Find(const PlayerRecord& member, double now) const
{
    return m_tracks.Find(KeyOf(member), now);
}

std::vector<LatLon> TrafficMonitor::HistoryDots(const PlayerRecord& member) const
{
    return m_tracks.HistoryDots(KeyOf(member));
}

void TrafficMonitor::Clear() noexcept
{
    m_tracks.Clear();
    m_alerts.Clear();
}
} // namespace corvane
