#include "session/FlightPlanMemory.h"

namespace corvane {
bool HasFlightPlan(const PlayerRecord& pilot) noexcept
{
    return pilot.FlightRules != 0 || pilot.CruiseAltitude != 0 || !pilot.DepartureIcao.empty() ||
           !pilot.DestinationIcao.empty();
}

void FlightPlanMemory::Keep(std::span<const PlayerRecord> players)
{
    for (const PlayerRecord& player : players) {
        if (HasFlightPlan(player))
            m_plans.insert_or_assign(player.Name, player);
    }
}

void FlightPlanMemory::Restore(PlayerRecord& pilot) const
{
    const auto kept = m_plans.find(pilot.Name);
    if (kept == m_plans.end() || HasFlightPlan(pilot))
        return;
    pilot.FlightRules = kept->second.FlightRules;
    pilot.DepartureIcao = kept->second.DepartureIcao;
    pilot.DestinationIcao = kept->second.DestinationIcao;
    pilot.CruiseAltitude = kept->second.CruiseAltitude;
}
} // namespace corvane
