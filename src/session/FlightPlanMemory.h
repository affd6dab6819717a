#pragma once

#include "session/PlayerTable.h"

#include <map>
#include <span>
#include <string>

namespace corvane {
/// Whether a flight plan has been entered for a pilot.
bool HasFlightPlan(const PlayerRecord& pilot) noexcept;

/// Flight plans by the pilots' names, from one session to the next: entries themselves go with their members.
class FlightPlanMemory {
public:
    /// Keeps the plans that have been entered; of two pilots of one name the later one's.
    void Keep(std::span<const PlayerRecord> players);
    /// Gives a pilot that has come without a plan the one kept under its name.
    void Restore(PlayerRecord& pilot) const;

private:
    std::map<std::string, PlayerRecord, std::less<>> m_plans;
};
} // namespace corvane
