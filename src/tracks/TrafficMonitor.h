#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "session/PlayerTable.h"
#include "tracks/AlertMonitor.h"
#include "tracks/TrackTable.h"

#include <optional>
#include <span>
#include <vector>

namespace corvane {
/// Watches the members of a session: their tracks and the alerts between them. Everything that a display with trails,
/// stale marks and alerts needs besides the player table. The clock is the caller's: seconds that do not go back.
class TrafficMonitor {
public:
    /// The grid is borrowed.
    explicit TrafficMonitor(const MagVarGrid& variation) : m_variation(variation) {}

    void SetOptions(const TrackOptions& tracks, const AlertOptions& alerts);
    [[nodiscard]] const TrackOptions& Options() const noexcept { return m_tracks.Options(); }
    /// The airports around which conflict alerts are silent, and which flights have as destinations.
    void SetArea(const AreaModel& area) { m_airports = AirportIndex(area); }
    [[nodiscard]] const AirportIndex& Airports() const noexcept { return m_airports; }

    /// A member has reported the position that its record holds.
    void Report(const PlayerRecord& member, double now);
    /// Takes over who is still there and finds the alerts, once a second.
    ///
    /// pilots  those whom the scope shows; a member that is not among them is forgotten with its alerts
    /// Returns what began and what ended.
    std::vector<AlertEvent> Refresh(std::span<const PlayerRecord* const> pilots, double now);

    /// Nothing for a member that has not reported.
    [[nodiscard]] std::optional<TrackState> Find(const PlayerRecord& member, double now) const;
    [[nodiscard]] std::optional<TrackState> Find(const MemberKey& member, double now) const
    {
        return m_tracks.Find(member, now);
    }
    /// The latest first.
    [[nodiscard]] std::vector<LatLon> HistoryDots(const PlayerRecord& member) const;
    /// The alerts that stand: violations first, then low altitudes, then predictions by their time.
    [[nodiscard]] std::span<const Alert> Alerts() const noexcept { return m_alerts.Standing(); }
    /// By its place in Alerts().
    void Acknowledge(std::size_t index) { m_alerts.Acknowledge(index); }
    void AcknowledgeAll() { m_alerts.AcknowledgeAll(); }
    void Clear() noexcept;

private:
    const MagVarGrid& m_variation;
    AirportIndex m_airports;
    TrackTable m_tracks;
    AlertMonitor m_alerts;
    AlertOptions m_alertOptions;
};
} // namespace corvane
