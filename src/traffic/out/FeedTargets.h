#pragma once

#include "core/MagVarGrid.h"
#include "session/PlayerTable.h"
#include "traffic/TrafficDetails.h"
#include "traffic/feeds/FeedReport.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace corvane {
/// The targets of a session as BaseStation text: a line for each that has moved, once a second, and now and then one
/// for those that stand still, since readers forget after a minute. Observers are no targets, nor is who has not
/// reported a position, such as the controller itself.
class FeedTargets {
public:
    /// details  of the members, where a source has told more of them than their records hold; may be null
    FeedTargets(const MagVarGrid& magVar, const TrafficDetailsTable* details) : m_magVar(magVar), m_details(details) {}

    /// The lines that are due at a time on a clock that never goes back.
    /// time  as the lines show it: "2026/11/23,08:59:16.493"
    std::string Due(std::span<const PlayerRecord> players, std::int64_t nowMs, std::string_view time);
    /// Somebody has come who knows nothing yet: all are due.
    void RepeatAll() noexcept { m_repeatAll = true; }

private:
    struct Target {
        FeedAddress Address = 0;
        FeedReport Said; ///< last
        std::int64_t SaidMs = 0;
        std::uint64_t Round = 0;
    };

    [[nodiscard]] FeedReport Describe(const PlayerRecord& player, FeedAddress address) const;
    Target& TargetOf(const PlayerRecord& player);
    FeedAddress AddressFor(std::string_view name);
    void ForgetGone();

    const MagVarGrid& m_magVar;
    const TrafficDetailsTable* m_details;
    std::unordered_map<std::string, Target> m_targets; ///< by id and name
    std::unordered_set<FeedAddress> m_addresses;       ///< of m_targets
    std::int64_t m_nextMs = 0;
    std::uint64_t m_round = 0;
    bool m_repeatAll = false;
};

/// The present time, UTC, as BaseStation text shows it.
std::string BaseStationTime();
} // namespace corvane
