#include "tracks/AlertMonitor.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <unordered_set>
#include <utility>

namespace corvane {
static constexpr std::int16_t AirborneKt = 40;

static bool CountsForAlerts(const AlertTarget& target) noexcept
{
    return target.Track.Last.GroundSpeedKt >= AirborneKt && !target.Track.Stale;
}

static Alert ConflictOf(const AlertTarget& one, const AlertTarget& other, const Conflict& conflict)
{
    const bool inOrder = std::pair(one.PlayerId, one.Track.Id) < std::pair(other.PlayerId, other.Track.Id);
    const AlertTarget& first = inOrder ? one : other;
    const AlertTarget& second = inOrder ? other : one;
    Alert alert;
    alert.First = first.Track.Id;
    alert.Second = second.Track.Id;
    alert.FirstId = first.PlayerId;
    alert.SecondId = second.PlayerId;
    alert.Violated = conflict.Violated;
    alert.SecondsToClosest = conflict.SecondsToClosest;
    alert.ClosestNm = conflict.ClosestNm;
    alert.ClosestFt = conflict.ClosestFt;
    return alert;
}

void AlertMonitor::Saw(const Alert& alert)
{
    m_seen.insert_or_assign({alert.Kind, alert.First, alert.Second}, alert);
}

void AlertMonitor::FindConflicts(std::span<const AlertTarget> targets, const AirportIndex& airports,
                                 const AlertOptions& options)
{
    std::vector<const AlertTarget*> flying;
    std::vector<Mover> movers;
    for (const AlertTarget& target : targets) {
        if (!CountsForAlerts(target))
            continue;
        const TrackReport& last = target.Track.Last;
        flying.push_back(&target);
        movers.push_back(MakeMover(last.Position, target.Track.Course, last.GroundSpeedKt, last.AltitudeFt,
                                   target.Track.ClimbFtPerMin));
    }
    for (const ConflictPair& pair : m_search.Find(movers, options)) {
        const Mover& one = movers[pair.First];
        const Mover& other = movers[pair.Second];
        if (!airports.SharePattern(one.Position, one.AltitudeFt, other.Position, other.AltitudeFt))
            Saw(ConflictOf(*flying[pair.First], *flying[pair.Second], pair.What));
    }
}

void AlertMonitor::FindLowAltitudes(std::span<const AlertTarget> targets, const AirportIndex& airports)
{
    constexpr std::int64_t ToleratedFt = 100;
    constexpr double DestinationNm = 5;
    for (const AlertTarget& target : targets) {
        const TrackReport& last = target.Track.Last;
        const bool low = target.Ifr && target.MinimumAltitudeFt != 0 && CountsForAlerts(target) &&
                         last.AltitudeFt < target.MinimumAltitudeFt - ToleratedFt;
        if (!low || airports.IsNear(target.DestinationIcao, last.Position, DestinationNm))
            continue;
        Alert alert;
        alert.Kind = AlertKind::LowAltitude;
        alert.First = target.Track.Id;
        alert.FirstId = target.PlayerId;
        alert.AltitudeFt = last.AltitudeFt;
        alert.MinimumAltitudeFt = target.MinimumAltitudeFt;
        Saw(alert);
    }
}

/// seen  the alert as this refresh found it; null where its reason does not hold
void AlertMonitor::Judge(Watch& watch, const Alert* seen, double now, std::vector<AlertEvent>& events)
{
    constexpr unsigned LastThree = 7;
    constexpr int Confirmed = 2;
    watch.Refreshes =
        static_cast<std::uint8_t>((unsigned{watch.Refreshes} << 1U | (seen != nullptr ? 1U : 0U)) & LastThree);
    if (watch.Stands && watch.Refreshes == 0) {
        watch.Stands = false;
        events.push_back({now, false, watch.What});
    }
    if (!seen)
        return;
    const bool comesTrue = watch.Stands && seen->Violated && !watch.What.Violated;
    if (comesTrue)
        events.push_back({now, false, watch.What});
    const bool begins = comesTrue || (!watch.Stands && std::popcount(watch.Refreshes) >= Confirmed);
    const Alert before = std::exchange(watch.What, *seen);
    if (begins) {
        watch.Stands = true;
        watch.What.Began = now;
        events.push_back({now, true, watch.What});
    } else if (watch.Stands) {
        watch.What.Began = before.Began;
        watch.What.Acknowledged = before.Acknowledged;
        watch.What.Violated = before.Violated;
    }
}

void AlertMonitor::ListStanding()
{
    m_standing.clear();
    for (const auto& [key, watch] : m_watches)
        if (watch.Stands)
            m_standing.push_back(watch.What);
    const auto urgency = [](const Alert& alert) {
        const int rank = alert.Violated ? 0 : alert.Kind == AlertKind::LowAltitude ? 1 : 2;
        return std::tuple(rank, alert.SecondsToClosest, alert.FirstId, alert.SecondId, alert.First, alert.Second);
    };
    std::ranges::sort(m_standing, {}, urgency);
}

std::vector<AlertEvent> AlertMonitor::Refresh(std::span<const AlertTarget> targets, const AirportIndex& airports,
                                              const AlertOptions& options, double now)
{
    m_seen.clear();
    if (options.ConflictAlert)
        FindConflicts(targets, airports, options);
    if (options.LowAltitudeAlert)
        FindLowAltitudes(targets, airports);
    for (const auto& [key, alert] : m_seen)
        m_watches.try_emplace(key);

    std::unordered_set<TrackId> present;
    for (const AlertTarget& target : targets)
        present.insert(target.Track.Id);
    std::vector<AlertEvent> events;
    for (auto entry = m_watches.begin(); entry != m_watches.end();) {
        auto& [key, watch] = *entry;
        const auto seen = m_seen.find(key);
        const auto& [kind, first, second] = key;
        const bool isOn = kind == AlertKind::Conflict ? options.ConflictAlert : options.LowAltitudeAlert;
        const bool isThere = present.contains(first) && (kind != AlertKind::Conflict || present.contains(second));
        if (!isOn || !isThere)
            watch.Refreshes = 0; // ends at once
        Judge(watch, seen == m_seen.end() ? nullptr : &seen->second, now, events);
        entry = watch.Refreshes == 0 ? m_watches.erase(entry) : std::next(entry);
    }
    ListStanding();
    return events;
}

void AlertMonitor::Acknowledge(std::size_t index)
{
    assert(index < m_standing.size());
    Alert& alert = m_standing[index];
    alert.Acknowledged = true;
    if (const auto watch = m_watches.find({alert.Kind, alert.First, alert.Second}); watch != m_watches.end())
        watch->second.What.Acknowledged = true;
}

void AlertMonitor::AcknowledgeAll()
{
    for (std::size_t i = 0; i < m_standing.size(); ++i)
        Acknowledge(i);
}

void AlertMonitor::Clear() noexcept
{
    m_seen.clear();
    m_watches.clear();
    m_standing.clear();
}
} // namespace corvane
