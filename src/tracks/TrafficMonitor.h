#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "session/PlayerTable.h"
#include "tracks/Alerts.h"
#include "tracks/TrackTable.h"

#include <optional>
#include <span>
#include <vector>

namespace corvane {
/// Watches the members of a session: their tracks and the alerts between them. Everything that a display with trails,
/// stale marks and alerts needs besides the player table. The clock is the caller's.
class TrafficMonitor {
public:
    /// The grid is borrowed.
    explicit TrafficMonitor(const MagVarGrid& variation) : m_variation(variation) {}

    void SetOptions(const TrackOptions& tracks, const AlertOptions& alerts);
    /// The airports around which conflict alerts are silent, and which flights have as destinations.
    void SetArea(const AreaModel& area);

    /// A member has reported the position that its record holds.
    void Report(const PlayerRecord& member, double now);
    /// Takes over who is still there and finds the alerts, once a second.
    ///
    /// pilots  those whom the scope shows; a member that is not among them is forgotten with its alerts
    /// Returns what began and what ended.
    std::vector<AlertEvent> Refresh(std::span<const PlayerRecord* const> pilots, double now);

    [[nodiscard]] std::optional<TrackState> Find(const PlayerRecord& member, double now) const;
    [[nodiscard]] std::vector<LatLon> HistoryDots(const PlayerRecord& member) const;
    /// The alerts that stand: violations first, then the nearest in time.
    [[nodiscard]] std::span<const Alert> Alerts() const noexcept;
    /// By its place in Alerts().
    void Acknowledge(std::size_t index);
    void AcknowledgeAll();
    void Clear();

private:
    const MagVarGrid& m_variation;
    TrackTable m_tracks;
};
} // namespace corvane
