#pragma once

#include "tracks/AirportIndex.h"
#include "tracks/Alerts.h"
#include "tracks/ConflictSearch.h"

#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <tuple>
#include <vector>

namespace corvane {
/// A member as the alerts see it; borrowed for one call.
struct AlertTarget {
    std::int32_t PlayerId = 0;
    TrackState Track;
    bool Ifr = false;
    std::int32_t MinimumAltitudeFt = 0; ///< 0: none
    std::string_view DestinationIcao;
};

/// Turns what is true at single refreshes into alerts that stand.
///
/// An alert begins when its reason held at two of the last three refreshes, and ends when it did not at three in a row,
/// or when its member is gone. Targets below 40 kt and stale ones give no reason. A predicted conflict that comes true
/// ends and begins anew, as a violation.
class AlertMonitor {
public:
    /// targets  every member that is there, each track once
    /// Returns  ends and begins in the order of kind and tracks; an end comes before the begin that replaces it
    std::vector<AlertEvent> Refresh(std::span<const AlertTarget> targets, const AirportIndex& airports,
                                    const AlertOptions& options, double now);

    /// Violations first, then low altitudes, then predictions by their time.
    [[nodiscard]] std::span<const Alert> Standing() const noexcept { return m_standing; }
    /// index  below Standing().size()
    void Acknowledge(std::size_t index);
    void AcknowledgeAll();
    void Clear() noexcept;

private:
    using Key = std::tuple<AlertKind, TrackId, TrackId>;
    struct Watch {
        std::uint8_t Refreshes = 0; ///< the last three, the latest as bit 0: whether the reason held
        bool Stands = false;
        Alert What;
    };

    void FindConflicts(std::span<const AlertTarget> targets, const AirportIndex& airports, const AlertOptions& options);
    void FindLowAltitudes(std::span<const AlertTarget> targets, const AirportIndex& airports);
    void Saw(const Alert& alert);
    static void Judge(Watch& watch, const Alert* seen, double now, std::vector<AlertEvent>& events);
    void ListStanding();

    ConflictSearch m_search;
    std::map<Key, Alert> m_seen; ///< by this refresh
    std::map<Key, Watch> m_watches;
    std::vector<Alert> m_standing;
};
} // namespace corvane
